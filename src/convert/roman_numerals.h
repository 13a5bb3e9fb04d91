// Roman numerals in lower case, both ways, as this library has always written
// and read them (stored numerals depend on both quirks below).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::convert {

// Numbers from this one up are refused: they need 256 or more "m"s, which
// the original 256-byte buffer could never hold.
inline constexpr int32_t kRomanLimit = 256000;

// The numeral of a number from 1 to kRomanLimit - 1, greedy from "m" down;
// the 40 step writes "xx", not "xl" (40 is "xx", 49 "xxix"). Other numbers
// give the empty string.
std::string roman_numeral(int32_t number);

// The value of a numeral read left to right over lower-case letters; the
// pairs cm, cd, xc, xl, iv, ix and also "vx" (9) count as one step, other
// characters add nothing. The sum wraps modulo 2^32.
int32_t roman_value(std::string_view text);

} // namespace brindle::convert
