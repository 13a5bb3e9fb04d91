// Hexadecimal text: digit pairs back to bytes (the bytes to pairs direction
// is the frame's hex_string result) and hexadecimal numbers of at most a
// given number of digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::convert {

// Pairs of hexadecimal digits to bytes, read loosely (digit_pairs.h): a
// character that is no digit still gives some value, and a last odd
// character is ignored.
std::string bytes_from_hex_text(std::string_view text);

// The number of the hexadecimal digits (either case) at the start of the
// text, stopping at the first character that is none; 0 for an empty text
// or one longer than max_digits characters.
uint32_t hex_number_prefix(std::string_view text, size_t max_digits);

} // namespace brindle::convert
