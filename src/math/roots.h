// N-th roots of Doubles.
#pragma once

namespace brindle::math {

// The real n-th root of x: sqrt for n = 2 (correctly rounded everywhere),
// otherwise pow(|x|, 1/n) refined by one Newton step (so exact powers such
// as 27 for n = 3 or 10^15 for n = 5 give exact roots, which neither pow
// nor every C library's cbrt does), with the sign of x for odd n. 0 when n < 1 or
// when x is negative and n even (no real root). Infinities and NaN pass
// through as pow would give them.
double nth_root(double x, int n) noexcept;

} // namespace brindle::math
