// Character classes against the C library's <cctype> in the "C" locale, over
// every byte value; whole-string tests and palindromes.
#include "strings/char_classes.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

using namespace brindle::strings;

TEST(CharClassesEngine, EveryByteAsCctypeSeesIt) {
    struct Case {
        CharClass cls;
        int (*test)(int);
    };
    const Case cases[] = {
        {CharClass::Digit, [](int v) { return std::isdigit(v); }},
        {CharClass::Alpha, [](int v) { return std::isalpha(v); }},
        {CharClass::Lower, [](int v) { return std::islower(v); }},
        {CharClass::Upper, [](int v) { return std::isupper(v); }},
        {CharClass::Xdigit, [](int v) { return std::isxdigit(v); }},
        {CharClass::Alnum, [](int v) { return std::isalnum(v); }},
        {CharClass::Punct, [](int v) { return std::ispunct(v); }},
        {CharClass::Space, [](int v) { return std::isspace(v); }},
    };
    for (const auto &c : cases)
        for (int v = 0; v < 256; ++v) {
            // Outside 0..127 the "C" locale puts a byte in no class.
            const bool expected = v < 128 && c.test(v) != 0;
            EXPECT_EQ(in_class(c.cls, static_cast<unsigned char>(v)), expected)
                << static_cast<int>(c.cls) << " " << v;
        }
    for (int v = 0; v < 256; ++v) {
        EXPECT_EQ(in_class(CharClass::Ascii, static_cast<unsigned char>(v)), v < 128);
        EXPECT_EQ(in_class(CharClass::Csym, static_cast<unsigned char>(v)), v < 128 && std::isalnum(v));
        EXPECT_EQ(in_class(CharClass::Csymf, static_cast<unsigned char>(v)), v < 128 && std::isalpha(v));
    }
}

TEST(CharClassesEngine, WholeStrings) {
    EXPECT_TRUE(all_in_class("0123456789", CharClass::Digit));
    EXPECT_FALSE(all_in_class("12a", CharClass::Digit));
    EXPECT_FALSE(all_in_class("", CharClass::Ascii));
    EXPECT_TRUE(all_in_class(" \t\r\n\v\f", CharClass::Space));
    EXPECT_TRUE(all_in_class("name2", CharClass::Csym));
    // A failing byte followed by "_" is consumed with it, and a consumed pair
    // always ends in false.
    EXPECT_FALSE(all_in_class("a+_", CharClass::Csym));
    EXPECT_FALSE(all_in_class("+_", CharClass::Csymf));
}

TEST(CharClassesEngine, PalindromeIsItsOwnReverse) {
    for (const std::string s : {"a", "abba", "abcba", "ab", "Abba", "a b a", "never odd or even", "abca"}) {
        const std::string reversed(s.rbegin(), s.rend());
        EXPECT_EQ(is_palindrome(s), s == reversed) << s;
    }
    EXPECT_FALSE(is_palindrome(""));
}
