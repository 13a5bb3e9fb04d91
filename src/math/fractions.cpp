#include "math/fractions.h"

#include <cmath>

namespace brindle::math {

namespace {

constexpr int kMaxTerms = 64; // a double's expansion has far fewer terms

// The exact binary fraction of a finite a > 0, reduced; a / 1 when its
// denominator would pass 2^1023 (values below about 2^-970 with many bits).
Fraction binary_fraction(double a) {
    int e = 0;
    double m = std::ldexp(std::frexp(a, &e), 53); // a = m * 2^(e - 53), m an integer
    int k = 53 - e;                               // a = m / 2^k
    if (k <= 0)
        return {a, 1.0};
    while (k > 0 && std::fmod(m, 2.0) == 0.0) {
        m /= 2.0;
        --k;
    }
    if (k > 1023)
        return {a, 1.0};
    return {m, std::ldexp(1.0, k)};
}

} // namespace

Fraction fraction_of(double value) noexcept {
    if (value == 0.0)
        return {0.0, 1.0};
    if (!std::isfinite(value))
        return {value, 1.0};
    const double a = std::fabs(value);
    // Convergents p1 / q1 after p0 / q0; the remainder r of the expansion.
    double p0 = 1.0, q0 = 0.0;
    double p1 = std::floor(a), q1 = 1.0;
    double r = a - p1;
    Fraction found{p1, q1};
    bool hit = p1 == a;
    for (int i = 0; i < kMaxTerms && !hit && r != 0.0; ++i) {
        const double y = 1.0 / r;
        if (!std::isfinite(y))
            break;
        const double term = std::floor(y);
        r = y - term;
        const double p2 = term * p1 + p0, q2 = term * q1 + q0;
        if (!std::isfinite(p2) || !std::isfinite(q2))
            break;
        p0 = p1, q0 = q1, p1 = p2, q1 = q2;
        found = {p1, q1};
        hit = p1 / q1 == a;
    }
    if (!hit)
        found = binary_fraction(a);
    if (std::signbit(value))
        found.numerator = -found.numerator;
    return found;
}

} // namespace brindle::math
