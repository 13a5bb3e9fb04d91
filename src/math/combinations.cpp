#include "math/combinations.h"

namespace brindle::math {

double combination(int n, int k) noexcept {
    if (k < 0 || n < 0 || k > n)
        return -1.0;
    if (2 * k > n)
        k = n - k;
    if (k < 1)
        return 1.0;
    double r = 1.0;
    for (int i = 1; i <= k; ++i)
        r = r * static_cast<double>(n - i + 1) / static_cast<double>(i);
    return r;
}

} // namespace brindle::math
