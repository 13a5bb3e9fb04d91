// Bytes as pairs of base-36 digits and back.
#pragma once

#include <string>
#include <string_view>

namespace brindle::convert {

// Each byte, taken as a signed 8-bit number b, as the two digits of b / 36
// and b mod 36 (truncating). A digit value v below 10 is "0" + v, any other
// the character v + 55 modulo 256, so bytes from 128 up give negative parts
// and characters outside 0-9A-Z that do not come back through
// bytes_from_base36_text.
std::string base36_text(std::string_view bytes);

// Pairs of base-36 digits to bytes, read loosely (digit_pairs.h): hi * 36 +
// lo modulo 256; a last odd character is ignored.
std::string bytes_from_base36_text(std::string_view text);

} // namespace brindle::convert
