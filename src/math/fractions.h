// A Double written as a fraction.
#pragma once

namespace brindle::math {

struct Fraction {
    double numerator;   // with the sign of the value
    double denominator; // from 1
};

// The first convergent p / q of the continued fraction of |value| whose
// quotient p / q, rounded to double, is |value|, with the sign put on p;
// when rounding errors in the expansion keep every convergent off, the
// exact binary fraction m / 2^k reduced by its common powers of two, or
// |value| / 1 when 2^k would pass 2^1023 (tiny values). Either way the
// quotient is the value. 0 gives 0 / 1; an infinity or NaN gives value / 1.
Fraction fraction_of(double value) noexcept;

} // namespace brindle::math
