// A Double taken apart into a binary mantissa and exponent, and put together.
#pragma once

#include <cstdint>

namespace brindle::math {

struct FloatParts {
    double mantissa; // 0.5 <= |mantissa| < 1, or 0, or the value itself when it is not finite
    int exponent;    // value = mantissa * 2^exponent; 0 for 0, infinities and NaN
};

// frexp, with the same answer on every platform for infinities and NaN
// (returned as the mantissa, exponent 0).
FloatParts float_parts(double value) noexcept;

// mantissa * 2^exponent (ldexp): exact unless it overflows (an infinity) or
// falls among or below the denormals (rounded to nearest).
double from_float_parts(double mantissa, int exponent) noexcept;

} // namespace brindle::math
