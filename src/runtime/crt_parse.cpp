#include "runtime/crt_parse.h"

#include "common/ascii.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>

namespace brindle::runtime {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

} // namespace

double crt_strtod(std::string_view text) noexcept {
    const size_t zero = text.find('\0');
    if (zero != std::string_view::npos)
        text = text.substr(0, zero);
    size_t i = 0;
    while (i < text.size() && common::is_c_space(text[i]))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        negative = text[i++] == '-';
    const size_t start = i;
    // The mantissa, and the decimal exponent of its first significant digit
    // (what tells an overflow from an underflow below).
    int64_t lead = 0; // digits before the point, less leading zeros; or minus the zeros after it
    bool significant = false;
    size_t digits = 0;
    while (i < text.size() && is_digit(text[i])) {
        significant = significant || text[i] != '0';
        if (significant && lead < INT32_MAX)
            ++lead;
        ++digits;
        ++i;
    }
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && is_digit(text[i])) {
            if (!significant && text[i] == '0' && lead > INT32_MIN)
                --lead;
            significant = significant || text[i] != '0';
            ++digits;
            ++i;
        }
    }
    if (digits == 0)
        return 0.0;
    size_t end = i;
    int64_t exponent = 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        size_t j = i + 1;
        bool exponent_negative = false;
        if (j < text.size() && (text[j] == '+' || text[j] == '-'))
            exponent_negative = text[j++] == '-';
        if (j < text.size() && is_digit(text[j])) {
            while (j < text.size() && is_digit(text[j])) {
                if (exponent < INT32_MAX)
                    exponent = exponent * 10 + (text[j] - '0');
                ++j;
            }
            if (exponent_negative)
                exponent = -exponent;
            end = j;
        }
    }
    const double sign = negative ? -1.0 : 1.0;
    if (!significant)
        return sign * 0.0;
    // from_chars reads the C locale's form whatever the process's locale.
    double value = 0.0;
    const std::from_chars_result r = std::from_chars(text.data() + start, text.data() + end, value,
                                                     std::chars_format::general);
    if (r.ec == std::errc::result_out_of_range)
        return lead + exponent > 0 ? sign * std::numeric_limits<double>::infinity() : sign * 0.0;
    if (r.ec != std::errc())
        return 0.0;
    return negative ? -value : value;
}

int32_t crt_atol(std::string_view text) noexcept {
    size_t i = 0;
    while (i < text.size() && common::is_c_space(text[i]))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        negative = text[i++] == '-';
    int64_t value = 0;
    const int64_t limit = negative ? -static_cast<int64_t>(std::numeric_limits<int32_t>::min())
                                   : std::numeric_limits<int32_t>::max();
    for (; i < text.size() && is_digit(text[i]); ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > limit)
            value = limit; // stays there; keeps reading the digits
    }
    return static_cast<int32_t>(negative ? -value : value);
}

} // namespace brindle::runtime
