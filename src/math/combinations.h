// Binomial coefficients in Doubles.
#pragma once

namespace brindle::math {

// C(n, k): -1.0 unless 0 <= k <= n. With k the smaller of k and n - k,
// 1.0 for k = 0, else r = 1 and r = r * (n - i + 1) / i for i = 1..k, each
// step rounded in double precision (so large coefficients are near, not
// exact, and beyond the largest double they are infinite).
double combination(int n, int k) noexcept;

} // namespace brindle::math
