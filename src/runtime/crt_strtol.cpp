#include "runtime/crt_strtol.h"

namespace brindle::runtime {

namespace {

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The value of a digit character, or 99 for none.
int digit_value(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z')
        return c - 'A' + 10;
    return 99;
}

} // namespace

int32_t crt_strtol(std::string_view text, int base) noexcept {
    if (base < 2 || base > 36)
        return 0;
    const size_t end = text.find('\0') == std::string_view::npos ? text.size() : text.find('\0');
    size_t i = 0;
    while (i < end && is_space(text[i]))
        ++i;
    bool negative = false;
    if (i < end && (text[i] == '+' || text[i] == '-'))
        negative = text[i++] == '-';
    if (base == 16 && i + 1 < end && text[i] == '0' && (text[i + 1] == 'x' || text[i + 1] == 'X'))
        i += 2;
    // The magnitude saturates just past 2^31, which is as far as either sign
    // can reach.
    constexpr uint64_t kPast = uint64_t{1} << 32;
    uint64_t value = 0;
    for (; i < end; ++i) {
        const int d = digit_value(text[i]);
        if (d >= base)
            break;
        value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(d);
        if (value > kPast)
            value = kPast;
    }
    if (negative)
        return value >= (uint64_t{1} << 31) ? INT32_MIN : -static_cast<int32_t>(value);
    return value > INT32_MAX ? INT32_MAX : static_cast<int32_t>(value);
}

} // namespace brindle::runtime
