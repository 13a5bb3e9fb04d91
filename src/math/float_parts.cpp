#include "math/float_parts.h"

#include <cmath>

namespace brindle::math {

FloatParts float_parts(double value) noexcept {
    if (!std::isfinite(value))
        return {value, 0};
    int exponent = 0;
    const double mantissa = std::frexp(value, &exponent);
    return {mantissa, exponent};
}

double from_float_parts(double mantissa, int exponent) noexcept { return std::ldexp(mantissa, exponent); }

} // namespace brindle::math
