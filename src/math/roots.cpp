#include "math/roots.h"

#include <cmath>

namespace brindle::math {

double nth_root(double x, int n) noexcept {
    if (n < 1)
        return 0.0;
    if (n == 1)
        return x;
    const bool odd = (n % 2) != 0;
    if (x < 0 && !odd)
        return 0.0;
    if (n == 2)
        return std::sqrt(x);
    const double a = std::fabs(x);
    double r = std::pow(a, 1.0 / n);
    if (std::isfinite(r) && r > 0.0) {
        // Newton on r^n = a: r - (r^n - a) / (n r^(n-1)) = r - r (1 - a / r^n) / n.
        const double power = std::pow(r, n);
        if (std::isfinite(power) && power > 0.0)
            r -= r * (1.0 - a / power) / n;
    }
    return std::signbit(x) ? -r : r;
}

} // namespace brindle::math
