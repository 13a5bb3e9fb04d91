#include "math/base_conversion.h"

#include "runtime/crt_strtol.h"

#include <algorithm>

namespace brindle::math {

std::string format_in_base(int32_t value, int base) {
    const bool minus = base == 10 && value < 0;
    uint32_t magnitude = static_cast<uint32_t>(value);
    if (minus)
        magnitude = 0u - magnitude;
    std::string out;
    do {
        const uint32_t d = magnitude % static_cast<uint32_t>(base);
        out += static_cast<char>(d < 10 ? '0' + d : 'a' + (d - 10));
        magnitude /= static_cast<uint32_t>(base);
    } while (magnitude != 0);
    if (minus)
        out += '-';
    std::reverse(out.begin(), out.end());
    return out;
}

std::string convert_base(std::string_view text, int from, int to) {
    if (from < kLowestBase || from > kHighestBase || to < kLowestBase || to > kHighestBase)
        return {};
    const int32_t value = runtime::crt_strtol(text, from);
    if (value == 0)
        return {};
    return format_in_base(value, to);
}

} // namespace brindle::math
