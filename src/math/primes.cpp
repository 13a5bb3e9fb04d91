#include "math/primes.h"

namespace brindle::math {

bool is_prime(int32_t n) noexcept {
    if (n < 2)
        return false;
    if (n == 2 || n == 3 || n == 5 || n == 7)
        return true;
    if (n % 2 == 0 || n % 3 == 0)
        return false;
    if (n < 25)
        return true;
    for (int64_t d = 5; d * d <= n; d += 6)
        if (n % d == 0 || n % (d + 2) == 0)
            return false;
    return true;
}

} // namespace brindle::math
