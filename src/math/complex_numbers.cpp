#include "math/complex_numbers.h"

#include <cfloat>
#include <cmath>

namespace brindle::math {

ComplexValue complex_add(ComplexValue a, ComplexValue b) noexcept { return {a.re + b.re, a.im + b.im}; }

ComplexValue complex_sub(ComplexValue a, ComplexValue b) noexcept { return {a.re - b.re, a.im - b.im}; }

ComplexValue complex_mul(ComplexValue a, ComplexValue b) noexcept {
    return {a.re * b.re - a.im * b.im, a.im * b.re + a.re * b.im};
}

ComplexValue complex_div(ComplexValue a, ComplexValue b) noexcept {
    const double d = b.re * b.re + b.im * b.im;
    return {(a.re * b.re + a.im * b.im) / d, (a.im * b.re - a.re * b.im) / d};
}

ComplexValue complex_conjugate(ComplexValue z) noexcept { return {z.re, -z.im}; }

double complex_modulus(ComplexValue z) noexcept {
    const double s = z.re * z.re + z.im * z.im;
    // The plain formula wherever it is exact to rounding; a sum that
    // overflowed or fell below the normal range (where the squares lost
    // their digits) is recomputed without squaring. A NaN part gives NaN
    // either way.
    if (s >= DBL_MIN && s <= DBL_MAX)
        return std::sqrt(s);
    return std::hypot(z.re, z.im);
}

double complex_argument(ComplexValue z) noexcept { return std::atan(z.im / z.re); }

ComplexValue complex_power(ComplexValue z, int16_t n) noexcept {
    const double power = static_cast<double>(n);
    const double r = std::pow(complex_modulus(z), power);
    const double t = power * complex_argument(z);
    return {r * std::cos(t), r * std::sin(t)};
}

ComplexValue complex_sqrt(ComplexValue z) noexcept {
    const double m = complex_modulus(z);
    return {std::sqrt((m + z.re) / 2.0), std::sqrt((m - z.re) / 2.0)};
}

} // namespace brindle::math
