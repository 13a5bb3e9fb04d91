// Divisor arithmetic on Longs.
#pragma once

#include <cstdint>

namespace brindle::math {

// The sum of the divisors of n below n (6 gives 1 + 2 + 3 = 6, a prime 1);
// 0 when n < 2. Pairs d, n / d are found for d up to the square root.
int32_t sum_proper_divisors(int32_t n) noexcept;

// The greatest common divisor of |a| and |b| by Euclid's algorithm; 0 when a
// or b is 0. The one result beyond a Long, 2^31 (both -2^31), wraps to -2^31.
int32_t greatest_common_divisor(int32_t a, int32_t b) noexcept;

} // namespace brindle::math
