#include "math/rounding.h"

#include "runtime/crt_parse.h"

#include <charconv>
#include <cmath>
#include <string>

namespace brindle::math {

namespace {

// The double nearest 10^n (the text "1e<n>" read with correct rounding, so
// every platform has the same power, including those a product of smaller
// powers would round differently).
double power_of_ten(int n) {
    const std::string text = "1e" + std::to_string(n);
    return runtime::crt_strtod(text);
}

} // namespace

double round_to_digits(double value, int digits) noexcept {
    double scale;
    try {
        scale = power_of_ten(digits);
    } catch (...) {
        return value;
    }
    if (scale == 0.0)
        return 0.0;
    const double scaled = value * scale;
    if (!std::isfinite(scale) || !std::isfinite(scaled))
        return value;
    return std::floor(scaled + 0.5) / scale;
}

double round_to_step(double value, int32_t step) noexcept {
    if (step == 0)
        return 0.0;
    const double s = step;
    return std::floor((s * 0.5 + value) / s) * s;
}

int32_t decimal_position(double value) noexcept {
    double whole;
    if (!std::isfinite(value) || std::modf(value, &whole) == 0.0)
        return 0;
    // 17 significant digits, "d.dddddddddddddddde-xx": the exponent is the
    // one of the rounded value.
    char buffer[64];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific, 16);
    const std::string_view text(buffer, static_cast<size_t>(written.ptr - buffer));
    int exponent = 0;
    const size_t e = text.find('e');
    const char *first = text.data() + e + 1;
    if (*first == '+')
        ++first;
    std::from_chars(first, text.data() + text.size(), exponent);
    return exponent + 2;
}

} // namespace brindle::math
