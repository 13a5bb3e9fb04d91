#include "runtime/crt_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace brindle::runtime {

namespace {

// Drops the zeros at the end of `text` from position `from` on, never the
// decimal point before them.
void strip_trailing_zeros(std::string &text, size_t from) {
    size_t end = text.size();
    while (end > from && text[end - 1] == '0')
        --end;
    text.erase(end);
}

} // namespace

std::string crt_gcvt(double value, int digits) {
    const bool negative = std::signbit(value);
    std::string out = negative ? "-" : "";
    if (std::isinf(value))
        return out + "1.#INF";
    if (std::isnan(value))
        return out + "1.#QNAN";

    const int wanted = std::clamp(digits, 1, 400);
    const int produced = std::min(wanted, 17);

    // The runtime first renders 17 significant digits (correctly rounded,
    // from the locale-independent scientific form "d.ddde+xx") and then
    // rounds that digit string half away from zero: _gcvt(2.5, 1) is "3.",
    // where a correctly rounding printf would give "2".
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific, 16);
    const std::string_view sci(buffer, static_cast<size_t>(result.ptr - buffer));
    const size_t e = sci.find('e');
    std::string significant;
    for (size_t i = 0; i < e; ++i)
        if (sci[i] != '.')
            significant += sci[i];
    int exponent = std::atoi(std::string(sci.substr(e + 1)).c_str());
    if (produced < 17) {
        const bool up = significant[static_cast<size_t>(produced)] >= '5';
        significant.resize(static_cast<size_t>(produced));
        if (up) {
            size_t i = significant.size();
            while (i > 0 && significant[i - 1] == '9')
                significant[--i] = '0';
            if (i == 0) {
                significant.insert(significant.begin(), '1');
                significant.pop_back();
                ++exponent;
            } else {
                ++significant[i - 1];
            }
        }
    }
    significant.resize(static_cast<size_t>(wanted), '0');

    if (exponent < -1 || exponent > wanted - 1) {
        out += significant[0];
        out += '.';
        out.append(significant, 1, std::string::npos);
        strip_trailing_zeros(out, out.find('.') + 1);
        out += exponent < 0 ? "e-" : "e+";
        std::string power = std::to_string(std::abs(exponent));
        if (power.size() < 3)
            power.insert(0, 3 - power.size(), '0');
        return out + power;
    }
    if (exponent == -1) {
        out += "0.";
        out += significant;
    } else {
        const size_t whole = static_cast<size_t>(exponent) + 1;
        out.append(significant, 0, whole);
        out += '.';
        out.append(significant, whole, std::string::npos);
    }
    strip_trailing_zeros(out, out.find('.') + 1);
    return out;
}

} // namespace brindle::runtime
