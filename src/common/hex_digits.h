// Hexadecimal digits for the families that show bytes or numbers as text
// (plain C++, for engines as well as exports).
#pragma once

namespace brindle::common {

inline constexpr char kHexDigits[] = "0123456789ABCDEF";

// The value of a hexadecimal digit of either case; -1 for any other byte.
constexpr int hex_digit_value(char ch) {
    const auto c = static_cast<unsigned char>(ch);
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace brindle::common
