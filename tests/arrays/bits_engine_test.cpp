// The bit engines against plain transcriptions of their definitions: a bit
// string expanded into one bool per bit, and the second numbering done the
// way it was first written, through binary text.
#include "arrays/bit_string.h"
#include "arrays/number_bits.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

using namespace brindle::arrays;

namespace {

// Bit n of the string is byte n / 8 under the mask 128 >> (n mod 8).
std::vector<bool> expand(const std::string &s) {
    std::vector<bool> bits;
    for (unsigned char c : s)
        for (int k = 7; k >= 0; --k)
            bits.push_back(((c >> k) & 1) != 0);
    return bits;
}

// Runs of equal bytes make long stretches without the bit sought.
std::string random_bits(std::mt19937 &rng, size_t max_len) {
    std::string s(rng() % (max_len + 1), '\0');
    const int kind = static_cast<int>(rng() % 3);
    for (char &c : s)
        c = static_cast<char>(kind == 0 ? rng() : kind == 1 ? (rng() % 50 == 0 ? rng() : 0) : (rng() % 50 == 0 ? rng() : 255));
    return s;
}

unsigned char *data(std::string &s) { return reinterpret_cast<unsigned char *>(s.data()); }

// The second numbering as it was defined: the value's binary text (32-bit
// two's complement for a negative one), left-padded with "0" to the width,
// and the character standing for bit n mod width counted from the right.
std::string text_of(uint32_t v) {
    std::string t;
    do {
        t.insert(t.begin(), static_cast<char>('0' + (v & 1)));
        v >>= 1;
    } while (v != 0);
    return t;
}
bool text_bit(uint32_t value, int width, int32_t n) {
    std::string t = text_of(value);
    if (t.size() < static_cast<size_t>(width))
        t.insert(0, static_cast<size_t>(width) - t.size(), '0');
    return t[t.size() - 1 - static_cast<size_t>(n % width)] == '1';
}
uint32_t text_set(uint32_t value, int32_t n, bool on) {
    std::string t = text_of(value);
    t.insert(0, 32 - t.size(), '0');
    t[31 - static_cast<size_t>(n % 32)] = on ? '1' : '0';
    uint32_t v = 0;
    for (char c : t)
        v = v * 2 + static_cast<uint32_t>(c - '0');
    return v;
}

} // namespace

TEST(BitStringEngine, FindAndPalindromeAgreeWithTheExpandedBits) {
    std::mt19937 rng(20261124);
    for (int round = 0; round < 400; ++round) {
        const std::string s = random_bits(rng, 40);
        const std::vector<bool> bits = expand(s);
        const auto total = static_cast<int64_t>(bits.size());
        for (int64_t start = -2; start <= total + 1; ++start) {
            for (bool on : {true, false}) {
                int64_t want = -1;
                for (int64_t i = start; start >= 0 && i < total; ++i)
                    if (bits[static_cast<size_t>(i)] == on) {
                        want = i;
                        break;
                    }
                ASSERT_EQ(find_bit(s, start, on), want) << "round " << round << " start " << start;
            }
        }
        std::vector<bool> reversed(bits.rbegin(), bits.rend());
        EXPECT_EQ(is_bit_palindrome(s), !s.empty() && reversed == bits) << round;
        std::string r = s;
        reverse_bits(data(r), r.size());
        EXPECT_EQ(expand(r), reversed) << round;
        // A string followed by its own reversal always reads the same both ways.
        EXPECT_EQ(is_bit_palindrome(s + r), !s.empty()) << round;
    }
}

TEST(BitStringEngine, IndexesAtTheLimitsOfTheTypes) {
    // No 8 x size is ever formed: for this size it would wrap to 0 on any
    // word size.
    EXPECT_TRUE(bit_in_range(SIZE_MAX / 4 + 1, 16));
    EXPECT_TRUE(bit_in_range(size_t{1} << 29, INT32_MAX));
    EXPECT_FALSE(bit_in_range(1, 8));
    EXPECT_FALSE(bit_in_range(0, 0));
    EXPECT_FALSE(bit_in_range(SIZE_MAX, -1));
    EXPECT_FALSE(bit_in_range(SIZE_MAX, INT64_MIN));
    EXPECT_FALSE(put_bit(nullptr, 4, 0, true));
    EXPECT_EQ(toggle_bit(nullptr, 4, 0), 0);
}

TEST(NumberBitsEngine, SecondSchemeMatchesItsTextDefinition) {
    const uint32_t values[] = {0, 1, 0x80, 0xFF, 0x7FFF, 0xFFFF8000u, 0xFFFFFFFFu, 0x12345678, 0x80000000u, 0xA5};
    for (uint32_t v : values)
        for (int32_t n = 0; n < 100; ++n) {
            // A Byte holds 8 bits and an Integer arrives sign-extended, as
            // the exports pass them.
            const uint32_t as_byte = v & 0xFF;
            const uint32_t as_int = static_cast<uint32_t>(int32_t{static_cast<int16_t>(v)});
            EXPECT_EQ(second_scheme_bit(as_byte, 8, n), text_bit(as_byte, 8, n)) << v << " " << n;
            EXPECT_EQ(second_scheme_bit(as_int, 16, n), text_bit(as_int, 16, n)) << v << " " << n;
            EXPECT_EQ(second_scheme_bit(v, 32, n), text_bit(v, 32, n)) << v << " " << n;
            for (bool on : {true, false})
                EXPECT_EQ(second_scheme_set(v, n, on), text_set(v, n, on)) << v << " " << n;
        }
}
