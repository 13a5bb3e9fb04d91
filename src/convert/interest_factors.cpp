#include "convert/interest_factors.h"

#include <cmath>

namespace brindle::convert {

namespace {

constexpr double kE = 2.718281828459;

// The six factors from the growth g over all periods and the one-period
// step s (i for discrete compounding, e^i - 1 for continuous).
double factor(InterestFactor kind, double g, double s) {
    switch (kind) {
    case InterestFactor::p_to_f: return g;
    case InterestFactor::f_to_p: return 1.0 / g;
    case InterestFactor::a_to_f: return (g - 1.0) / s;
    case InterestFactor::f_to_a: return s / (g - 1.0);
    case InterestFactor::a_to_p: return ((g - 1.0) / s) / g;
    case InterestFactor::p_to_a: return g / ((g - 1.0) / s);
    }
    return -1.0;
}

bool refused(double rate, int16_t periods) { return rate == 0.0 || periods < 1; }

} // namespace

double discrete_factor(InterestFactor kind, double rate, int16_t periods) {
    if (refused(rate, periods))
        return -1.0;
    return factor(kind, std::pow(1.0 + rate, periods), rate);
}

double continuous_factor(InterestFactor kind, double rate, int16_t periods) {
    if (refused(rate, periods))
        return -1.0;
    return factor(kind, std::pow(kE, rate * periods), std::pow(kE, rate) - 1.0);
}

} // namespace brindle::convert
