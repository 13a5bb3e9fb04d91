// Hexadecimal digits packed two to a byte.
#pragma once

#include <string>
#include <string_view>

namespace brindle::strings {

// The digits of text packed two to a byte, high half first; with an odd
// count the first digit makes a byte alone. A byte other than a decimal
// digit stands for (c - 55) mod 16, so letters of either case give 10..15
// and other bytes unchecked values.
std::string pack_hex_digits(std::string_view text);

} // namespace brindle::strings
