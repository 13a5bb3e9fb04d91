#include "frame/records.h"

#include "frame/string_results.h"

#include <cstring>

namespace brindle::frame {

std::string field_name(const char *field, size_t width) {
    size_t n = 0;
    while (n < width && field[n] != ' ' && field[n] != '\0')
        ++n;
    return std::string(field, n);
}

void put_field(char *field, size_t width, std::string_view value) noexcept {
    const size_t n = value.size() < width ? value.size() : width;
    std::memcpy(field, value.data(), n);
    std::memset(field + n, ' ', width - n);
}

void put_string_field(BSTR *field, std::string_view value) {
    BSTR fresh = value.empty() ? nullptr : new_string(value);
    SysFreeString(*field);
    *field = fresh;
}

} // namespace brindle::frame
