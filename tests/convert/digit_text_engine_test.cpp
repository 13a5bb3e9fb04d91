// Hexadecimal and base-36 text: loose digits against the ordinary digit
// values, round trips, and numbers against strtoul.
#include "convert/base36_text.h"
#include "convert/digit_pairs.h"
#include "convert/hex_text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

using namespace brindle::convert;

TEST(DigitPairsEngine, LooseDigitsAgreeOnRealDigits) {
    for (int v = 0; v < 36; ++v) {
        const char upper = static_cast<char>(v < 10 ? '0' + v : 'A' + v - 10);
        const char lower = static_cast<char>(v < 10 ? '0' + v : 'a' + v - 10);
        EXPECT_EQ(loose_digit(static_cast<unsigned char>(upper)), v);
        EXPECT_EQ(loose_digit(static_cast<unsigned char>(lower)), v);
    }
    EXPECT_EQ(bytes_from_digit_pairs("7", 16), "");
    EXPECT_EQ(bytes_from_digit_pairs("414", 16), "A"); // last odd character ignored
}

TEST(HexTextEngine, RoundTripOfPrintfText) {
    std::mt19937 gen(16);
    std::string bytes(300, '\0');
    for (char &b : bytes)
        b = static_cast<char>(gen());
    for (const char *form : {"%02X", "%02x"}) {
        std::string text;
        char pair[3];
        for (const char b : bytes) {
            std::snprintf(pair, sizeof pair, form, static_cast<unsigned char>(b));
            text += pair;
        }
        EXPECT_EQ(bytes_from_hex_text(text), bytes);
    }
}

TEST(HexTextEngine, NumbersAsStrtoulReadsThem) {
    for (const char *text : {"0", "7fff", "FFFF", "8000", "a", "12345678", "DEADBEEF", "ffffffff"})
        EXPECT_EQ(hex_number_prefix(text, 8), std::strtoul(text, nullptr, 16)) << text;
    EXPECT_EQ(hex_number_prefix("1g5", 8), 1u);  // stops at the first non-digit
    EXPECT_EQ(hex_number_prefix("12345", 4), 0u); // too long
    EXPECT_EQ(hex_number_prefix("", 4), 0u);
}

TEST(Base36TextEngine, SevenBitBytesRoundTrip) {
    std::string bytes;
    for (int b = 0; b < 128; ++b)
        bytes += static_cast<char>(b);
    const std::string text = base36_text(bytes);
    ASSERT_EQ(text.size(), 256u);
    EXPECT_EQ(text.substr(2 * 'A', 2), "1T"); // 65 = 1 * 36 + 29
    EXPECT_EQ(text.substr(2 * 127, 2), "3J"); // 127 = 3 * 36 + 19
    EXPECT_EQ(bytes_from_base36_text(text), bytes);
    EXPECT_EQ(bytes_from_base36_text("1t"), "A"); // either case
}
