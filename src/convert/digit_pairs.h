// Text of digit pairs back to bytes, shared by the hexadecimal and base-36
// text conversions. The digits are read loosely, without any check: the
// character code minus 48 below "A", minus 55 from "A" below "a", minus 87
// from "a" up, so any byte gives some value.
#pragma once

#include <string>
#include <string_view>

namespace brindle::convert {

// The loose digit value of one character (see above); may be negative or
// above the base.
int loose_digit(unsigned char c);

// Each pair of characters as one byte, high digit first: hi * base + lo
// modulo 256. A last odd character is ignored; fewer than two characters
// give the empty string.
std::string bytes_from_digit_pairs(std::string_view text, int base);

} // namespace brindle::convert
