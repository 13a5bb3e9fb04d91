// Rounding of Doubles to decimals and to steps, and the place of the decimal
// point.
#pragma once

#include <cstdint>

namespace brindle::math {

// floor(value * 10^digits + 0.5) / 10^digits, halves towards plus infinity.
// 10^digits is the double nearest the exact power. When it, or the scaled
// value, is not finite there is nothing left to round and `value` comes back;
// when it underflows to 0 the result is 0.
double round_to_digits(double value, int digits) noexcept;

// floor((step * 0.5 + value) / step) * step; 0 when step is 0.
double round_to_step(double value, int32_t step) noexcept;

// 0 when value has no fractional part (integers, infinities, NaN); otherwise
// the count of digits before the decimal point of value written with 17
// significant digits (the decimal exponent plus 1), plus 1: 123.45 gives 4,
// 0.5 gives 1, 0.05 gives 0. The sign does not count.
int32_t decimal_position(double value) noexcept;

} // namespace brindle::math
