// Text and number conversions, through the exported interface.
#include "support/ole_helpers.h"

#include <cmath>
#include <string>

using namespace brindle::test;

namespace {

template <class F> std::string call(F f, std::string_view text) {
    Bstr t(text);
    return str(f(t.ref()));
}

std::string roman(int32_t n) {
    Variant v = Variant::of_long(n);
    return str(cArabicToRoman(v.ptr()));
}

int32_t arabic(std::string_view text) {
    Bstr t(text);
    VARIANT v = cRomanToArabic(t.ref());
    EXPECT_EQ(V_VT(&v), VT_I4);
    return V_I4(&v);
}

std::string all_bytes() {
    std::string s;
    for (int i = 0; i < 256; ++i)
        s += static_cast<char>(i);
    return s;
}

} // namespace

TEST(InterestFactors, DiscreteAndContinuousFormulas) {
    const double e = 2.718281828459; // the constant the factors use
    for (double i : {0.1, 0.05, -0.02}) {
        for (int16_t n : {1, 2, 12, 360}) {
            const double d = std::pow(1 + i, n), k = std::pow(e, i * n), ei = std::pow(e, i) - 1;
            EXPECT_DOUBLE_EQ(cPtoF(i, n), d);
            EXPECT_DOUBLE_EQ(cFtoP(i, n), 1 / d);
            EXPECT_DOUBLE_EQ(cAtoF(i, n), (d - 1) / i);
            EXPECT_DOUBLE_EQ(cFtoA(i, n), i / (d - 1));
            EXPECT_DOUBLE_EQ(cAtoP(i, n), (d - 1) / i / d);
            EXPECT_DOUBLE_EQ(cPtoA(i, n), d / ((d - 1) / i));
            EXPECT_DOUBLE_EQ(cPtoFC(i, n), k);
            EXPECT_DOUBLE_EQ(cFtoPC(i, n), 1 / k);
            EXPECT_DOUBLE_EQ(cAtoFC(i, n), (k - 1) / ei);
            EXPECT_DOUBLE_EQ(cFtoAC(i, n), ei / (k - 1));
            EXPECT_DOUBLE_EQ(cAtoPC(i, n), (k - 1) / ei / k);
            EXPECT_DOUBLE_EQ(cPtoAC(i, n), k / ((k - 1) / ei));
        }
    }
    EXPECT_DOUBLE_EQ(cPtoF(0.1, 2), 1.21);
    EXPECT_DOUBLE_EQ(cAtoF(0.1, 2), 2.1);
    // The rounded constant is used, not the exact e.
    EXPECT_EQ(cPtoFC(1.0, 1), 2.718281828459);
}

TEST(InterestFactors, ZeroRateOrNoPeriodsGiveMinusOne) {
    double(BRINDLE_CALL *const all[])(double, int16_t) = {cAtoF, cAtoP, cFtoA, cFtoP, cPtoA, cPtoF,
                                              cAtoFC, cAtoPC, cFtoAC, cFtoPC, cPtoAC, cPtoFC};
    for (auto f : all) {
        EXPECT_EQ(f(0.0, 10), -1.0);
        EXPECT_EQ(f(0.1, 0), -1.0);
        EXPECT_EQ(f(0.1, -5), -1.0);
    }
}

TEST(Hexadecimal, BytesToDigitsAndBack) {
    EXPECT_EQ(call(cToHexa, std::string("\x00\x1f\xa0\xff", 4)), "001FA0FF");
    EXPECT_EQ(call(cToHexa, ""), "");
    EXPECT_EQ(call(cFromHexa, "001FA0FF"), std::string("\x00\x1f\xa0\xff", 4));
    EXPECT_EQ(call(cFromHexa, "4a6B"), "Jk");  // either case
    EXPECT_EQ(call(cFromHexa, "414"), "A");    // a last odd digit is ignored
    EXPECT_EQ(call(cFromHexa, "4"), "");
    EXPECT_EQ(call(cFromHexa, ""), "");
    // Unchecked digits: "G" is 16, "g" is 16, "/" is -1; modulo 256.
    EXPECT_EQ(call(cFromHexa, "1G"), std::string(1, static_cast<char>(0x20)));
    EXPECT_EQ(call(cFromHexa, "g0"), std::string(1, static_cast<char>(0x00)));
    EXPECT_EQ(call(cFromHexa, "0/"), std::string(1, static_cast<char>(0xFF)));
    const std::string every = all_bytes();
    EXPECT_EQ(call(cFromHexa, call(cToHexa, every)), every);
}

TEST(Hexadecimal, NumbersFromText) {
    struct Row {
        const char *text;
        int16_t i;
        int32_t l;
    } rows[] = {
        {"0", 0, 0},       {"7f", 127, 127},    {"FFFF", -1, 65535},  {"8000", -32768, 32768},
        {"1G", 1, 1},      {"G1", 0, 0},        {"12345", 0, 0x12345}, {"", 0, 0},
        {"ffffffff", 0, -1}, {"123456789", 0, 0}, {"a b", 10, 10},
    };
    for (const Row &r : rows) {
        Bstr t(r.text);
        EXPECT_EQ(cH2I(t.val()), r.i) << r.text;
        EXPECT_EQ(cH2L(t.val()), r.l) << r.text;
    }
    EXPECT_EQ(cH2I(nullptr), 0);
    // The length counts every byte, even past a zero.
    Bstr z(std::string("1\0" "234", 5));
    EXPECT_EQ(cH2I(z.val()), 0);
    EXPECT_EQ(cH2L(z.val()), 1);
}

TEST(Base36, BytesToDigitsAndBack) {
    EXPECT_EQ(call(cToZ9, "A"), "1T");       // 65 = 1 * 36 + 29
    EXPECT_EQ(call(cToZ9, std::string(1, '\x7f')), "3J"); // 127 = 3 * 36 + 19
    EXPECT_EQ(call(cToZ9, std::string(1, '\xff')), "06"); // -1: q 0, r -1 -> (255 + 55) mod 256
    EXPECT_EQ(call(cToZ9, std::string(1, '\x80')), "4#"); // -128: q -3 and r -20, as 253 and 236
    EXPECT_EQ(call(cToZ9, ""), "");
    EXPECT_EQ(call(cFromZ9, "1T3J"), "A\x7f");
    EXPECT_EQ(call(cFromZ9, "1t"), "A"); // lower case reads as the same digit
    EXPECT_EQ(call(cFromZ9, "1"), "");
    EXPECT_EQ(call(cFromZ9, "ZZ"), std::string(1, static_cast<char>((35 * 36 + 35) % 256)));
    std::string low;
    for (int i = 0; i < 128; ++i)
        low += static_cast<char>(i);
    EXPECT_EQ(call(cFromZ9, call(cToZ9, low)), low);
}

TEST(Roman, ArabicToRoman) {
    struct Row {
        int32_t n;
        const char *text;
    } rows[] = {
        {1, "i"}, {4, "iv"}, {9, "ix"}, {14, "xiv"}, {40, "xx"}, {44, "xxiv"}, {49, "xxix"}, {90, "xc"},
        {400, "cd"}, {1999, "mcmxcix"}, {2024, "mmxxiv"}, {3888, "mmmdccclxxxviii"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(roman(r.n), r.text) << r.n;
    EXPECT_EQ(roman(0), "");
    EXPECT_EQ(roman(-5), "");
    // Other variant types are coerced to Long.
    Variant d = Variant::of_double(12.0), s = Variant::of_text("7");
    EXPECT_EQ(str(cArabicToRoman(d.ptr())), "xii");
    EXPECT_EQ(str(cArabicToRoman(s.ptr())), "vii");
}

TEST(Roman, LargeNumbersAreBounded) {
    // 255,999 needs 261 characters: built in full, no fixed buffer.
    const std::string big = roman(255999);
    EXPECT_EQ(big, std::string(255, 'm') + "cmxcix");
    EXPECT_EQ(roman(256000), "");
    EXPECT_EQ(roman(INT32_MAX), "");
}

TEST(Roman, RomanToArabic) {
    struct Row {
        const char *text;
        int32_t n;
    } rows[] = {
        {"mcmxcix", 1999}, {"xiv", 14}, {"xl", 40}, {"xx", 20}, {"xc", 90}, {"cd", 400}, {"vx", 9},
        {"XIV", 0}, {"", 0}, {"m-m", 2000}, {"iiii", 4}, {"mmxxiv", 2024}, {"ivx", 14},
    };
    for (const Row &r : rows)
        EXPECT_EQ(arabic(r.text), r.n) << r.text;
    // Every numeral without the kept "xx" for 40 reads back.
    for (int n = 1; n < 4000; ++n) {
        if (n % 100 / 10 != 4) {
            ASSERT_EQ(arabic(roman(n)), n) << roman(n);
        }
    }
}

TEST(Morse, TableAsGiven) {
    Bstr sos("SOS"), lower("e t"), mixed("A1?[~"), punct(",-./");
    EXPECT_EQ(str(cMorse(sos.val())), "--- ... --- ");
    EXPECT_EQ(str(cMorse(lower.val())), "- ~. ");   // space has no code
    EXPECT_EQ(str(cMorse(mixed.val())), "-. -.... --..-- ");
    EXPECT_EQ(str(cMorse(punct.val())), "..--.. .---. -.-.-. .--.- ");
    Bstr none(std::string("\x01\x7f\xe9[", 4)), uncoded("!#");
    EXPECT_EQ(str(cMorse(none.val())), "");
    EXPECT_EQ(str(cMorse(uncoded.val())), "~~");
    EXPECT_EQ(str(cMorse(nullptr)), "");
    Bstr zero(std::string("E\0T", 3));
    EXPECT_EQ(str(cMorse(zero.val())), "- "); // read up to the first zero byte
}

TEST(Ebcdic, InPlaceBothWays) {
    Bstr t("Hello, 123");
    EXPECT_EQ(cCnvASCIItoEBCDIC(t.ref()), -1);
    EXPECT_EQ(t.bytes(), "\xC8\x85\x93\x93\x96\x6B\x40\xF1\xF2\xF3");
    EXPECT_EQ(cCnvEBCDICtoASCII(t.ref()), -1);
    EXPECT_EQ(t.bytes(), "Hello, 123");
    Bstr empty;
    EXPECT_EQ(cCnvASCIItoEBCDIC(empty.ref()), 0);
    EXPECT_EQ(cCnvEBCDICtoASCII(empty.ref()), 0);
    Bstr every(all_bytes());
    EXPECT_EQ(cCnvASCIItoEBCDIC(every.ref()), -1);
    EXPECT_EQ(every.bytes().size(), 256u);
    EXPECT_EQ(cCnvEBCDICtoASCII(every.ref()), -1);
    EXPECT_EQ(every.bytes(), all_bytes());
}
