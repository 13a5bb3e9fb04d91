// Arithmetic on the decimal digits of a Long. The sign of a negative number
// is set aside: its digits are those of its magnitude (2147483648 for the
// smallest Long).
#pragma once

#include <cstdint>

namespace brindle::math {

// The sum of the decimal digits of |n|.
int32_t sum_digits(int32_t n) noexcept;

// The digits of |n| from the most significant one, added and subtracted in
// turn (+ - + ...): 1234 gives 1 - 2 + 3 - 4 = -2, 12345 gives 3.
int32_t sum_digits_alternating(int32_t n) noexcept;

// The digits of |n| in ascending order read as a number (zeros first, so they
// vanish), with the sign of n: 3021 gives 123, -3021 gives -123. Never larger
// in magnitude than n, so it always fits.
int32_t sort_digits(int32_t n) noexcept;

// The digits of |n| rotated to the right: the last (k mod digits) digits, the
// remainder taken from 0 up so a negative k rotates left, move to the front
// (12345 by 2 gives 45123; leading zeros vanish). The sign of n is kept. 0
// for 0, and 0 when the rotated magnitude does not fit in a Long.
int32_t rotate_digits(int32_t n, int k) noexcept;

} // namespace brindle::math
