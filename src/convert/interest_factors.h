// Compound-interest factors for a rate i per period and n periods: the
// discrete factor D = (1 + i)^n and the continuous factor K = e^(i n), with e
// rounded to 2.718281828459 as the factors have always been computed (the
// full constant gives slightly other values). Every function gives -1 for a
// zero rate or fewer than one period.
#pragma once

#include <cstdint>

namespace brindle::convert {

// Which factor: F future value, P present value, A a periodic amount.
enum class InterestFactor { p_to_f, f_to_p, a_to_f, f_to_a, a_to_p, p_to_a };

// The factor with discrete compounding: P to F is D, F to P is 1 / D, A to F
// is (D - 1) / i, F to A its inverse, A to P is (D - 1) / (i D), P to A its
// inverse.
double discrete_factor(InterestFactor kind, double rate, int16_t periods);

// The same factors with continuous compounding: K in place of D and
// e^i - 1 in place of i.
double continuous_factor(InterestFactor kind, double rate, int16_t periods);

} // namespace brindle::convert
