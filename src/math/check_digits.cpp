#include "math/check_digits.h"

#include <cstdint>

namespace brindle::math {

namespace {

// Per byte: its value (code - 48 below 65, else code - 64) when it is a
// hexadecimal digit, and whether it is one; the walk below stays free of
// branches on the text, which on arbitrary bytes the processor mispredicts.
struct HexTable {
    int8_t value[256] = {};
    int8_t counts[256] = {};
    constexpr HexTable() {
        for (int c = 0; c < 256; ++c) {
            const bool hex = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
            counts[c] = hex ? 1 : 0;
            value[c] = static_cast<int8_t>(hex ? (c < 65 ? c - 48 : c - 64) : 0);
        }
    }
};
constexpr HexTable kHex;

// Visits the characters of `text` in the direction given.
template <class Visit> void walk(std::string_view text, Direction direction, Visit &&visit) {
    if (direction == Direction::from_first)
        for (const char c : text)
            visit(c);
    else
        for (size_t i = text.size(); i-- > 0;)
            visit(text[i]);
}

// (m - sum mod m) mod m, the same for either sign of the sum.
int complement(int64_t sum, int modulus) {
    const int64_t r = sum % modulus;
    return static_cast<int>((modulus - r) % modulus);
}

} // namespace

int weighted_hex_check(std::string_view text, int modulus, Direction direction) noexcept {
    if (text.empty())
        return -1;
    int64_t sum = 0;
    int weight = 2;
    walk(text, direction, [&](char ch) {
        const auto c = static_cast<unsigned char>(ch);
        // A byte that is no digit has value 0 and leaves the weight (2 or 1) as it is.
        sum += static_cast<int64_t>(kHex.value[c]) * weight;
        weight ^= 3 * kHex.counts[c];
    });
    return complement(sum, modulus);
}

int check_137(std::string_view text, Direction direction) noexcept {
    if (text.empty())
        return -1;
    static constexpr int kWeights[] = {1, 3, 7};
    int64_t sum = 0;
    size_t position = 0;
    walk(text, direction, [&](char ch) {
        sum += static_cast<int64_t>(static_cast<signed char>(ch)) * kWeights[position];
        position = position == 2 ? 0 : position + 1;
    });
    return complement(sum, 10);
}

} // namespace brindle::math
