// Complex arithmetic by the library's plain formulas. The argument is the
// plain arc tangent of Imaginary / Real (always within -pi/2 .. pi/2, never a
// four-quadrant angle), powers are built on that argument, and the square
// root never has a negative imaginary part. Callers rely on all three.
#pragma once

#include <cstdint>

namespace brindle::math {

struct ComplexValue {
    double re = 0.0;
    double im = 0.0;
};

ComplexValue complex_add(ComplexValue a, ComplexValue b) noexcept;
ComplexValue complex_sub(ComplexValue a, ComplexValue b) noexcept;
ComplexValue complex_mul(ComplexValue a, ComplexValue b) noexcept;
// Divides by the textbook formula over d = b.re^2 + b.im^2; a zero divisor
// is not checked, so (0, 0) gives not-a-number parts (or infinities).
ComplexValue complex_div(ComplexValue a, ComplexValue b) noexcept;
ComplexValue complex_conjugate(ComplexValue z) noexcept;

// sqrt(re^2 + im^2). Where the sum of squares would overflow or lose its
// precision below the normal range, the same value is taken without
// forming the squares (std::hypot).
double complex_modulus(ComplexValue z) noexcept;

// atan(im / re): (-1, 0) gives 0 (or -0), (0, 1) gives pi/2, (0, 0) NaN.
double complex_argument(ComplexValue z) noexcept;

// (r cos t, r sin t) with r = pow(modulus, n) and t = n x argument. Numbers
// with a negative real part come out in the other half-plane for odd n,
// as the argument's convention makes them.
ComplexValue complex_power(ComplexValue z, int16_t n) noexcept;

// (sqrt((m + re) / 2), sqrt((m - re) / 2)) with m the modulus: the sign of
// the imaginary part is not used, so (0, -2) gives (1, 1).
ComplexValue complex_sqrt(ComplexValue z) noexcept;

} // namespace brindle::math
