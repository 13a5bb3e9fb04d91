#include "frame/records.h"

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

} // namespace brindle::frame
