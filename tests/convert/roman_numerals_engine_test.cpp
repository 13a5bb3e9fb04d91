// Roman numerals against a plain reference built digit by digit from the
// classical tables (with the library's "xx" for forty kept).
#include "convert/roman_numerals.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::convert;

namespace {

std::string classical(int n, bool library_forty) {
    static const char *const hundreds[] = {"", "c", "cc", "ccc", "cd", "d", "dc", "dcc", "dccc", "cm"};
    static const char *const tens[] = {"", "x", "xx", "xxx", "xl", "l", "lx", "lxx", "lxxx", "xc"};
    static const char *const units[] = {"", "i", "ii", "iii", "iv", "v", "vi", "vii", "viii", "ix"};
    std::string out(static_cast<size_t>(n / 1000), 'm');
    out += hundreds[n / 100 % 10];
    const int t = n / 10 % 10;
    out += library_forty && t == 4 ? "xx" : tens[t];
    out += units[n % 10];
    return out;
}

} // namespace

TEST(RomanNumeralsEngine, WritesTheClassicalNumeralExceptForty) {
    for (int n = 1; n < kRomanLimit; n += (n < 5000 ? 1 : 97))
        ASSERT_EQ(roman_numeral(n), classical(n, true)) << n;
    EXPECT_EQ(roman_numeral(kRomanLimit - 1), std::string(255, 'm') + "cmxcix");
    EXPECT_EQ(roman_numeral(kRomanLimit), "");
    EXPECT_EQ(roman_numeral(0), "");
    EXPECT_EQ(roman_numeral(-7), "");
}

TEST(RomanNumeralsEngine, ReadsEveryClassicalNumeral) {
    for (int n = 1; n < 5000; ++n)
        ASSERT_EQ(roman_value(classical(n, false)), n) << classical(n, false);
    // What the library writes reads back wherever the tens digit is not 4.
    for (int n = 1; n < 5000; ++n) {
        if (n / 10 % 10 != 4) {
            ASSERT_EQ(roman_value(roman_numeral(n)), n) << n;
        }
    }
}

TEST(RomanNumeralsEngine, LooseReading) {
    EXPECT_EQ(roman_value("vx"), 9);
    EXPECT_EQ(roman_value("M-x I"), 10); // only lower-case letters count
    EXPECT_EQ(roman_value(""), 0);
}
