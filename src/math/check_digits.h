// Check digits of texts: weighted sums modulo 10 and 11.
#pragma once

#include <string_view>

namespace brindle::math {

enum class Direction { from_first, from_last };

// The weighted check digit over the hexadecimal characters of `text` (the
// others are skipped and do not use up a weight), weights 2, 1, 2, 1 ... in
// the given direction. A character's value is its code - 48 below code 65
// (digits 0..9), else its code - 64 (A..F give 1..6, a..f 33..38: lower case
// is not folded). Result (m - sum mod m) mod m for the modulus m (10 or 11);
// -1 for an empty text.
int weighted_hex_check(std::string_view text, int modulus, Direction direction) noexcept;

// The check digit with the weights 1, 3, 7, 1, 3, 7 ... in the given
// direction over every character, each counted as its signed 8-bit code;
// (10 - sum mod 10) mod 10, -1 for an empty text. The sums are exact (64-bit)
// whatever the text's length.
int check_137(std::string_view text, Direction direction) noexcept;

} // namespace brindle::math
