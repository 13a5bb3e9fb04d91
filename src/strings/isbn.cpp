#include "strings/isbn.h"

#include "common/ascii.h"

#include <cstdint>

namespace brindle::strings {

bool isbn10_valid(std::string_view text) noexcept {
    int digits = 0;
    int64_t sum = 0;
    for (const char c : text) {
        if (!common::is_ascii_digit(c))
            continue;
        ++digits;
        if (digits <= 10)
            sum += static_cast<int64_t>(c - '0') * digits;
    }
    if (digits != 10)
        return false;
    const auto sum16 = static_cast<int16_t>(static_cast<uint16_t>(sum & 0xFFFF));
    return sum16 % 11 == 0;
}

} // namespace brindle::strings
