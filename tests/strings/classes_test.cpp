// Character classes and digit utilities, through the exported interface.
#include "strings/string_calls.h"

using namespace brindle::test;

namespace {
using Predicate = int16_t(BRINDLE_CALL *)(BSTR *);
}

TEST(Classes, PredicatesOverEveryByte) {
    struct Row {
        Predicate f;
        const char *name;
        std::string yes, no;
    } rows[] = {
        {cIsDigit, "digit", "0123", "123a"},          {cIsAlpha, "alpha", "abcXYZ", "abc1"},
        {cIsLower, "lower", "abc", "abC"},            {cIsUpper, "upper", "ABC", "ABc"},
        {cIsXdigit, "xdigit", "09afAF", "0g"},        {cIsAlnum, "alnum", "a1B2", "a1 "},
        {cIsPunct, "punct", "!?.,;:-_()", "!a"},      {cIsSpace, "space", " \t\r\n\v\f", " x"},
        {cIsAscii, "ascii", B("\0\x7f a", 4), "ab\x80"},
        {cIsAlpha, "alpha beyond 127", "abc", "ab\xe9"}, // "C" locale: accented bytes are no letters
        {cIsDigit, "digit with zero byte", "12", B("1\0", 2)},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(num(r.f, r.yes), -1) << r.name;
        EXPECT_EQ(num(r.f, r.no), 0) << r.name;
        EXPECT_EQ(num(r.f, ""), 0) << r.name << " on the empty string";
    }
    for (auto f : {cIsCsym, cIsCsymf, cIsISBN, cIsPalindrome, cCheckNumericity})
        EXPECT_EQ(num(f, null_handle), 0);
}

TEST(Classes, IdentifierPairRule) {
    struct Row {
        std::string text;
        int16_t csym, csymf;
    } rows[] = {
        {"abc1", -1, 0}, {"abc", -1, -1}, {"1ab", -1, 0}, {"!_ab", 0, 0}, {"ab!", 0, 0},
        {"a_b", 0, 0}, // "_" fails and the b after it is not "_"
        {"a!_", 0, 0}, // pair consumed: the walk reaches the end early and answers 0
        {"ab_", 0, 0}, // the last byte fails with nothing after it
        {repeat("!_", 1000), 0, 0}, // a long run of pairs never reads past the end
    };
    for (const Row &r : rows) {
        EXPECT_EQ(num(cIsCsym, r.text), r.csym) << r.text;
        EXPECT_EQ(num(cIsCsymf, r.text), r.csymf) << r.text;
    }
}

TEST(Classes, IsbnPalindromeAndDigits) {
    struct Row {
        Predicate f;
        std::string text;
        int16_t result;
    } rows[] = {
        {cIsISBN, "0-306-40615-2", -1}, {cIsISBN, "0306406152", -1}, {cIsISBN, "0000000000", -1},
        {cIsISBN, "0-306-40615-3", 0},  {cIsISBN, "00306406152", 0}, // eleven digits
        {cIsISBN, "0-306-40516-2", 0},  // two digits swapped
        {cIsISBN, "0-8044-2957-X", 0},  // a final X is not a digit
        {cIsPalindrome, "x", -1},       {cIsPalindrome, "abba", -1}, {cIsPalindrome, "abcba", -1},
        {cIsPalindrome, "abca", 0},     {cIsPalindrome, "Abba", 0},  {cIsPalindrome, B("a\0a", 3), -1},
        {cCheckNumericity, "0123456789", -1}, {cCheckNumericity, "12 3", 0},
        {cAddDigit, "a1b2c3", 6},       {cAddDigit, "xyz", 0},
        {cAddDigit, std::string(4000, '9'), -29536}, // the low 16 bits
        {cNumDigit, "12345", 6},        {cNumDigit, "99", 9}, {cNumDigit, "x", 0}, {cNumDigit, "18", 9},
    };
    for (const Row &r : rows)
        EXPECT_EQ(num(r.f, r.text), r.result) << r.text.substr(0, 20);

    expect_rows({{call(cCplDigit, "a0189-"), "a9810-"}, {call(cCplAlpha, B("\x00\x0f\xff", 3)), {"\xff\xf0\x00", 3}},
                 {call(cCplDigit, null_handle), ""},   {call(cCplAlpha, null_handle), ""}});
}
