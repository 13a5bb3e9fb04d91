// Number spelling, through the exported interface.
#include "support/ole_helpers.h"

#include <cmath>
#include <limits>
#include <string>

using namespace brindle::test;

namespace {

std::string number(double v, int16_t digits = 2, std::string_view word = "Point") {
    Bstr w(word);
    return str(cSpellNumber(v, digits, w.val()));
}

std::string money(double v, std::string_view currency = "Dollars", std::string_view cents = "Cents") {
    Bstr c(currency), k(cents);
    return str(cSpellMoney(v, c.val(), k.val()));
}

} // namespace

TEST(SpellNumber, WholeNumbers) {
    struct Row {
        double v;
        const char *text;
    } rows[] = {
        {0, "Zero"},
        {7, "Seven"},
        {20, "Twenty"},
        {21, "Twenty-One"},
        {100, "One Hundred"},
        {115, "One Hundred Fifteen"},
        {999, "Nine Hundred Ninety-Nine"},
        {1000, "One Thousand"},
        {1001, "One Thousand One"},
        {1000000, "One Million"},
        {2000300, "Two Million Three Hundred"},
        {1234567, "One Million Two Hundred Thirty-Four Thousand Five Hundred Sixty-Seven"},
        {1e9, "One Billion"},
        {5e12, "Five Trillion"},
        {999999999999999, "Nine Hundred Ninety-Nine Trillion Nine Hundred Ninety-Nine Billion Nine Hundred "
                          "Ninety-Nine Million Nine Hundred Ninety-Nine Thousand Nine Hundred Ninety-Nine"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(number(r.v), r.text) << r.v;
}

TEST(SpellNumber, FractionDigitByDigit) {
    EXPECT_EQ(number(21.25, 2), "Twenty-One Point Two Five");
    EXPECT_EQ(number(0.5, 15), "Zero Point Five");
    EXPECT_EQ(number(3.14159, 3), "Three Point One Four Two"); // 0.142
    EXPECT_EQ(number(1.75, 1), "One Point Eight");      // rounded to one digit
    EXPECT_EQ(number(2.999, 2), "Two Point");           // the fraction rounds to "1."
    EXPECT_EQ(number(1.105, 3), "One Point One Five");  // a zero digit adds no word
    EXPECT_EQ(number(21.25, 2, ""), "Twenty-One  Two Five");
    EXPECT_EQ(number(21.25, 2, "and"), "Twenty-One and Two Five");
    // A fraction that _gcvt writes as "5.e-002" is spelled from 0.05.
    EXPECT_EQ(number(21.05, 2), "Twenty-One Point Five");
    EXPECT_EQ(number(1 + 1e-300, 15), "One"); // below the precision of a double
    EXPECT_EQ(number(1e-300, 2), "Zero Point");
}

TEST(SpellMoney, AmountsAndCents) {
    EXPECT_EQ(money(1234.5), "One Thousand Two Hundred Thirty-Four Dollars and Fifty Cents");
    EXPECT_EQ(money(0.5), "Zero Dollars and Fifty Cents");
    EXPECT_EQ(money(12), "Twelve Dollars");
    EXPECT_EQ(money(12.07), "Twelve Dollars and Seven Cents");
    EXPECT_EQ(money(3.999), "Three Dollars and One Hundred Cents"); // cents that round to 100
    EXPECT_EQ(money(12.5, "", "Cents"), "Twelve and Fifty Cents");
    EXPECT_EQ(money(12.5, "Euro", ""), "Twelve Euro and Fifty");
    EXPECT_EQ(money(12, "", ""), "Twelve");
    EXPECT_EQ(money(2.001), "Two Dollars and Cents"); // no whole cent: the group adds only its space
}

TEST(Spelling, ValuesOutsideTheClassicRange) {
    // Negative values: the magnitude after "Minus".
    EXPECT_EQ(number(-21.25), "Minus Twenty-One Point Two Five");
    EXPECT_EQ(money(-0.5), "Minus Zero Dollars and Fifty Cents");
    EXPECT_EQ(number(-0.0), "Zero");
    // 1e15 and more, infinities and NaN: the empty string.
    for (double v : {1e15, -1e15, 1e300, std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(number(v), "") << v;
        EXPECT_EQ(money(v), "") << v;
    }
}

TEST(Spelling, LongWordsAreCutSoEveryResultFitsTheOldBuffer) {
    const std::string long_word(60, 'W');
    EXPECT_EQ(number(1.5, 2, long_word), "One " + std::string(27, 'W') + " Five");
    EXPECT_EQ(money(1.5, std::string(40, 'D'), std::string(40, 'C')),
              "One " + std::string(19, 'D') + " and Fifty " + std::string(19, 'C'));
    // The longest spellings stay within 255 characters.
    const std::string longest = number(777777777777777.75, 17, std::string(60, 'P'));
    EXPECT_LE(longest.size(), 255u);
    EXPECT_EQ(longest.substr(0, 37), "Seven Hundred Seventy-Seven Trillion ");
    EXPECT_EQ(longest.substr(longest.size() - 38), std::string(27, 'P') + " Seven Five");
    const std::string fraction = number(0.7777777777777777, 17, std::string(60, 'P'));
    EXPECT_LE(fraction.size(), 255u);
    EXPECT_EQ(fraction.substr(0, 32), "Zero " + std::string(27, 'P'));
    const std::string cash = money(777777777777777.75, std::string(60, 'D'), std::string(60, 'C'));
    EXPECT_LE(cash.size(), 255u);
    EXPECT_EQ(cash.substr(cash.size() - 56), std::string(19, 'D') + " and Seventy-Five " + std::string(19, 'C'));
    // A zero byte ends a word.
    Bstr w(std::string("Po\0int", 6));
    EXPECT_EQ(str(cSpellNumber(2.5, 2, w.val())), "Two Po Five");
    EXPECT_EQ(str(cSpellNumber(2.5, 2, nullptr)), "Two  Five");
}
