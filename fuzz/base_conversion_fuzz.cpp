// Number-base conversion of client text: the C runtime's strtol as the
// library reads it, against a plain transcription of its rules here, and the
// written result read back. Layout of an input: one byte for the source base
// and one for the target base (each taken modulo 40, so refused bases come
// up too), then the text.
#include "fuzz_target.h"
#include "math/base_conversion.h"
#include "runtime/crt_strtol.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

// strtol's rules one by one: blanks, sign, "0x" for base 16, digits of the
// base, the value clamped to the 32-bit range.
int64_t reference_strtol(std::string_view text, int base) {
    size_t i = 0;
    auto at = [&](size_t k) { return k < text.size() ? text[k] : '\0'; };
    while (at(i) == ' ' || at(i) == '\t' || at(i) == '\n' || at(i) == '\v' || at(i) == '\f' || at(i) == '\r')
        ++i;
    int64_t sign = 1;
    if (at(i) == '-' || at(i) == '+')
        sign = at(i++) == '-' ? -1 : 1;
    if (base == 16 && at(i) == '0' && (at(i + 1) == 'x' || at(i + 1) == 'X'))
        i += 2;
    int64_t value = 0;
    for (;; ++i) {
        const char c = at(i);
        int d = 99;
        if (c >= '0' && c <= '9')
            d = c - '0';
        else if (c >= 'a' && c <= 'z')
            d = c - 'a' + 10;
        else if (c >= 'A' && c <= 'Z')
            d = c - 'A' + 10;
        if (d >= base)
            break;
        value = value * base + d;
        if (value > (int64_t{1} << 40))
            value = int64_t{1} << 40;
    }
    value *= sign;
    return value < INT32_MIN ? INT32_MIN : value > INT32_MAX ? INT32_MAX : value;
}

} // namespace

BRINDLE_FUZZ_TARGET(base_conversion) {
    if (size < 2)
        return 0;
    const int from = data[0] % 40, to = data[1] % 40;
    const std::string_view text(reinterpret_cast<const char *>(data) + 2, size - 2);
    const std::string out = brindle::math::convert_base(text, from, to);
    const bool usable = from >= 2 && from <= 34 && to >= 2 && to <= 34;
    if (!usable) {
        FUZZ_CHECK(out.empty());
        return 0;
    }
    const int64_t value = reference_strtol(text, from);
    FUZZ_CHECK(brindle::runtime::crt_strtol(text, from) == value);
    FUZZ_CHECK(out.empty() == (value == 0));
    for (size_t i = 0; i < out.size(); ++i) {
        const char c = out[i];
        if (i == 0 && c == '-') {
            FUZZ_CHECK(to == 10 && out.size() > 1);
            continue;
        }
        const int d = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'z' ? c - 'a' + 10 : 99;
        FUZZ_CHECK(d < to);
    }
    // Read back: the same value, except that a negative one written in
    // another base than 10 is its two's complement and reads as such.
    if (!out.empty()) {
        const int64_t back = reference_strtol(out, to);
        const int64_t expected = value < 0 && to != 10 ? std::min<int64_t>(value + (int64_t{1} << 32), INT32_MAX) : value;
        FUZZ_CHECK(back == expected);
    }
    return 0;
}
