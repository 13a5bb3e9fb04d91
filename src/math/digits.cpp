#include "math/digits.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace brindle::math {

namespace {

// |n| as decimal digits, most significant first ("0" for 0).
std::string magnitude_digits(int32_t n) {
    return std::to_string(std::llabs(static_cast<long long>(n)));
}

// Digits read back as a number, with the sign; 0 when beyond a Long.
int32_t signed_value(const std::string &digits, bool negative) {
    long long v = 0;
    for (const char c : digits)
        v = v * 10 + (c - '0');
    if (negative)
        v = -v;
    if (v < INT32_MIN || v > INT32_MAX)
        return 0;
    return static_cast<int32_t>(v);
}

} // namespace

int32_t sum_digits(int32_t n) noexcept {
    long long m = std::llabs(static_cast<long long>(n));
    int32_t sum = 0;
    for (; m > 0; m /= 10)
        sum += static_cast<int32_t>(m % 10);
    return sum;
}

int32_t sum_digits_alternating(int32_t n) noexcept {
    // The powers of ten from 10^9 down; the sign starts at the first non-zero
    // digit and flips at every power after it.
    static constexpr long long kPowers[] = {1000000000, 100000000, 10000000, 1000000, 100000,
                                            10000,      1000,      100,      10,      1};
    long long m = std::llabs(static_cast<long long>(n));
    int32_t sum = 0;
    int sign = 0;
    for (const long long p : kPowers) {
        const int digit = static_cast<int>(m / p);
        m %= p;
        if (sign == 0 && digit != 0)
            sign = 1;
        sum += sign * digit;
        sign = -sign;
    }
    return sum;
}

int32_t sort_digits(int32_t n) noexcept {
    std::string digits = magnitude_digits(n);
    std::sort(digits.begin(), digits.end());
    return signed_value(digits, n < 0);
}

int32_t rotate_digits(int32_t n, int k) noexcept {
    if (n == 0)
        return 0;
    std::string digits = magnitude_digits(n);
    const int count = static_cast<int>(digits.size());
    const int shift = ((k % count) + count) % count;
    std::rotate(digits.begin(), digits.end() - shift, digits.end());
    return signed_value(digits, n < 0);
}

} // namespace brindle::math
