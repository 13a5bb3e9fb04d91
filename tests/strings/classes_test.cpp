// Character classes and digit utilities, through the exported interface.
#include "support/ole_helpers.h"

#include <string>

using namespace brindle::test;

namespace {

std::string B(const char *s, size_t n) { return std::string(s, n); }

int16_t test(int16_t(BRINDLE_CALL *f)(BSTR *), std::string_view text) {
    Bstr t(text);
    return f(t.ref());
}

} // namespace

TEST(Classes, PredicatesOverEveryByte) {
    using Fn = int16_t(BRINDLE_CALL *)(BSTR *);
    struct Row {
        Fn f;
        const char *name;
        std::string yes, no;
    } rows[] = {
        {cIsDigit, "digit", "0123", "123a"},
        {cIsAlpha, "alpha", "abcXYZ", "abc1"},
        {cIsLower, "lower", "abc", "abC"},
        {cIsUpper, "upper", "ABC", "ABc"},
        {cIsXdigit, "xdigit", "09afAF", "0g"},
        {cIsAlnum, "alnum", "a1B2", "a1 "},
        {cIsPunct, "punct", "!?.,;:-_()", "!a"},
        {cIsSpace, "space", " \t\r\n\v\f", " x"},
        {cIsAscii, "ascii", B("\0\x7f a", 4), "ab\x80"},
        {cIsAlpha, "alpha beyond 127", "abc", "ab\xe9"}, // "C" locale: accented bytes are no letters
        {cIsDigit, "digit with zero byte", "12", B("1\0", 2)},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(test(r.f, r.yes), -1) << r.name;
        EXPECT_EQ(test(r.f, r.no), 0) << r.name;
        EXPECT_EQ(test(r.f, ""), 0) << r.name << " on the empty string";
    }
    for (auto f : {cIsCsym, cIsCsymf, cIsISBN, cIsPalindrome, cCheckNumericity}) {
        Bstr null_handle;
        EXPECT_EQ(f(null_handle.ref()), 0);
    }
}

TEST(Classes, IdentifierPairRule) {
    struct Row {
        const char *text;
        int16_t csym, csymf;
    } rows[] = {
        {"abc1", -1, 0},
        {"abc", -1, -1},
        {"a_b", 0, 0},  // "_" fails and the b after it is not "_"
        {"a!_", 0, 0},  // pair consumed: the walk reaches the end early and answers 0
        {"!_ab", 0, 0},
        {"ab!", 0, 0},
        {"ab_", 0, 0},  // the last byte fails with nothing after it
        {"1ab", -1, 0},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(test(cIsCsym, r.text), r.csym) << r.text;
        EXPECT_EQ(test(cIsCsymf, r.text), r.csymf) << r.text;
    }
    // A long run of pairs never reads past the end.
    std::string pairs;
    for (int k = 0; k < 1000; ++k)
        pairs += "!_";
    EXPECT_EQ(test(cIsCsym, pairs), 0);
}

TEST(Classes, IsbnAndPalindrome) {
    EXPECT_EQ(test(cIsISBN, "0-306-40615-2"), -1);
    EXPECT_EQ(test(cIsISBN, "0306406152"), -1);
    EXPECT_EQ(test(cIsISBN, "0-306-40615-3"), 0);
    EXPECT_EQ(test(cIsISBN, "0-306-40516-2"), 0);    // two digits swapped
    EXPECT_EQ(test(cIsISBN, "0-8044-2957-X"), 0);    // a final X is not a digit
    EXPECT_EQ(test(cIsISBN, "00306406152"), 0); // eleven digits
    EXPECT_EQ(test(cIsISBN, "0000000000"), -1);

    EXPECT_EQ(test(cIsPalindrome, "x"), -1);
    EXPECT_EQ(test(cIsPalindrome, "abba"), -1);
    EXPECT_EQ(test(cIsPalindrome, "abcba"), -1);
    EXPECT_EQ(test(cIsPalindrome, "abca"), 0);
    EXPECT_EQ(test(cIsPalindrome, "Abba"), 0);
    EXPECT_EQ(test(cIsPalindrome, B("a\0a", 3)), -1);
}

TEST(Digits, SumsRootsAndComplements) {
    EXPECT_EQ(test(cCheckNumericity, "0123456789"), -1);
    EXPECT_EQ(test(cCheckNumericity, "12 3"), 0);
    EXPECT_EQ(test(cAddDigit, "a1b2c3"), 6);
    EXPECT_EQ(test(cAddDigit, "xyz"), 0);
    EXPECT_EQ(test(cAddDigit, std::string(4000, '9')), -29536); // the low 16 bits
    EXPECT_EQ(test(cNumDigit, "12345"), 6);                   // 15 -> 6
    EXPECT_EQ(test(cNumDigit, "99"), 9);
    EXPECT_EQ(test(cNumDigit, "x"), 0);
    EXPECT_EQ(test(cNumDigit, "18"), 9);

    Bstr digits("a0189-"), bytes(B("\x00\x0f\xff", 3)), empty;
    EXPECT_EQ(str(cCplDigit(digits.ref())), "a9810-");
    EXPECT_EQ(str(cCplAlpha(bytes.ref())), B("\xff\xf0\x00", 3));
    EXPECT_EQ(str(cCplDigit(empty.ref())), "");
    EXPECT_EQ(str(cCplAlpha(empty.ref())), "");
}
