// Digit utilities: the digital root is the sum's remainder by 9 (9 for
// nonzero multiples), and both complements undo themselves.
#include "strings/digits.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace brindle::strings;

TEST(DigitsEngine, SumsAndRoots) {
    std::mt19937 rng(17);
    for (int i = 0; i < 1000; ++i) {
        std::string text(rng() % 30, ' ');
        unsigned sum = 0;
        for (char &c : text) {
            c = "0123456789-x "[rng() % 13];
            if (c >= '0' && c <= '9')
                sum += static_cast<unsigned>(c - '0');
        }
        EXPECT_EQ(digit_sum16(text), static_cast<int16_t>(sum));
        EXPECT_EQ(digital_root(text), sum == 0 ? 0 : static_cast<int16_t>(1 + (sum - 1) % 9)) << text;
    }
    EXPECT_EQ(digit_sum16(std::string(3641, '9')), static_cast<int16_t>(3641 * 9 - 65536));
}

TEST(DigitsEngine, ComplementsUndoThemselves) {
    std::string all;
    for (int v = 0; v < 256; ++v)
        all.push_back(static_cast<char>(v));
    EXPECT_EQ(nines_complement("0123456789 x-"), "9876543210 x-");
    EXPECT_EQ(nines_complement(nines_complement(all)), all);
    const std::string inverted = byte_complement(all);
    EXPECT_EQ(byte_complement(inverted), all);
    for (int v = 0; v < 256; ++v)
        EXPECT_EQ(static_cast<unsigned char>(inverted[static_cast<size_t>(v)]) + v, 255);
}
