#include "math/divisors.h"

#include <cstdlib>

namespace brindle::math {

int32_t sum_proper_divisors(int32_t n) noexcept {
    if (n < 2)
        return 0;
    // Divisors come in pairs d, n / d (once when equal). Walking d = 1, 2, ...
    // while d is below the last cofactor found finds the same pairs as
    // stopping at the square root, which a prime would otherwise not reach
    // before d = n. The total of all divisors of a Long fits in 64 bits; the
    // proper part fits in a Long.
    long long total = 0;
    for (long long d = 1; d * d <= n; ++d) {
        if (n % d != 0)
            continue;
        const long long q = n / d;
        total += d;
        if (q != d)
            total += q;
    }
    return static_cast<int32_t>(total - n);
}

int32_t greatest_common_divisor(int32_t a, int32_t b) noexcept {
    if (a == 0 || b == 0)
        return 0;
    unsigned long long x = std::llabs(static_cast<long long>(a));
    unsigned long long y = std::llabs(static_cast<long long>(b));
    while (y != 0) {
        const unsigned long long r = x % y;
        x = y;
        y = r;
    }
    return static_cast<int32_t>(static_cast<uint32_t>(x));
}

} // namespace brindle::math
