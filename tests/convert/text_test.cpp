// Text and number conversions, through the exported interface.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <string>
#include <utility>

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

TEST(InterestFactors, PublishedTableValues) {
    // Rows of the usual compound-interest tables (four decimals), and a
    // rate of -50 % worked by hand. Columns: F/P P/F F/A A/F P/A A/P, then
    // the same for continuous compounding.
    double(BRINDLE_CALL *const all[])(double, int16_t) = {cPtoF,  cFtoP,  cAtoF,  cFtoA,  cAtoP,  cPtoA,
                                                          cPtoFC, cFtoPC, cAtoFC, cFtoAC, cAtoPC, cPtoAC};
    const struct {
        double rate;
        int16_t n;
        double f[12];
    } rows[] = {
        {0.1, 10, {2.5937, 0.3855, 15.9374, 0.0627, 6.1446, 0.1627, 2.7183, 0.3679, 16.3380, 0.0612, 6.0104, 0.1664}},
        {0.05, 1, {1.05, 0.9524, 1, 1, 0.9524, 1.05, 1.0513, 0.9512, 1, 1, 0.9512, 1.0513}},
        {-0.5, 2, {0.25, 4, 1.5, 0.6667, 6, 0.1667, 0.3679, 2.7183, 1.6065, 0.6225, 4.3670, 0.2290}},
    };
    for (const auto &r : rows)
        for (int k = 0; k < 12; ++k)
            EXPECT_NEAR(all[k](r.rate, r.n), r.f[k], 1e-4) << "column " << k << " at " << r.rate << ", " << r.n;
    EXPECT_DOUBLE_EQ(cPtoF(0.1, 2), 1.21);
    EXPECT_DOUBLE_EQ(cAtoF(0.1, 2), 2.1);
    // The rounded constant is used, not the exact e.
    EXPECT_EQ(cPtoFC(1.0, 1), 2.718281828459);
    // A zero rate or no periods: -1.
    for (auto f : all)
        for (auto [rate, n] : {std::pair<double, int16_t>{0.0, 10}, {0.1, 0}, {0.1, -5}})
            EXPECT_EQ(f(rate, n), -1.0) << rate << ", " << n;
}

TEST(TextCodes, BytesToDigitsAndBack) {
    const struct {
        BSTR(BRINDLE_CALL *f)(BSTR *);
        std::string in, out;
    } rows[] = {
        {cToHexa, {"\x00\x1f\xa0\xff", 4}, "001FA0FF"},
        {cFromHexa, "001FA0FF", {"\x00\x1f\xa0\xff", 4}},
        {cFromHexa, "4a6B", "Jk"}, // either case
        {cFromHexa, "414", "A"},   // a last odd digit is ignored
        {cFromHexa, "4", ""},
        // Unchecked digits: "G" is 16, "g" is 16, "/" is -1; modulo 256.
        {cFromHexa, "1G", "\x20"},
        {cFromHexa, "g0", {"\0", 1}},
        {cFromHexa, "0/", "\xff"},
        {cToZ9, "A", "1T"},      // 65 = 1 * 36 + 29
        {cToZ9, "\x7f", "3J"},   // 127 = 3 * 36 + 19
        {cToZ9, "\xff", "06"},   // -1: q 0, r -1 -> (255 + 55) mod 256
        {cToZ9, "\x80", "4#"},   // -128: q -3 and r -20, as 253 and 236
        {cFromZ9, "1T3J", "A\x7f"},
        {cFromZ9, "1t", "A"}, // lower case reads as the same digit
        {cFromZ9, "1", ""},
        {cFromZ9, "ZZ", std::string(1, static_cast<char>((35 * 36 + 35) % 256))},
    };
    for (const auto &r : rows)
        EXPECT_EQ(call(r.f, r.in), r.out) << r.in;
    for (auto f : {cToHexa, cFromHexa, cToZ9, cFromZ9})
        EXPECT_EQ(call(f, ""), "");
    const std::string every = all_bytes();
    EXPECT_EQ(call(cFromHexa, call(cToHexa, every)), every);
    const std::string low = every.substr(0, 128);
    EXPECT_EQ(call(cFromZ9, call(cToZ9, low)), low);
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
    const struct {
        std::string in, out;
    } rows[] = {
        {"SOS", "--- ... --- "},        {"e t", "- ~. "}, // space has no code
        {"A1?[~", "-. -.... --..-- "}, {",-./", "..--.. .---. -.-.-. .--.- "},
        {"\x01\x7f\xe9[", ""},      {"!#", "~~"},
        {{"E\0T", 3}, "- "}, // read up to the first zero byte
    };
    for (const auto &r : rows) {
        Bstr t(r.in);
        EXPECT_EQ(str(cMorse(t.val())), r.out) << r.in;
    }
    EXPECT_EQ(str(cMorse(nullptr)), "");
}

TEST(Ebcdic, InPlaceBothWaysAsDdConverts) {
    Bstr t("Hello, 123");
    EXPECT_EQ(cCnvASCIItoEBCDIC(t.ref()), -1);
    EXPECT_EQ(t.bytes(), "\xC8\x85\x93\x93\x96\x6B\x40\xF1\xF2\xF3");
    EXPECT_EQ(cCnvEBCDICtoASCII(t.ref()), -1);
    EXPECT_EQ(t.bytes(), "Hello, 123");
    Bstr empty;
    EXPECT_EQ(cCnvASCIItoEBCDIC(empty.ref()), 0);
    EXPECT_EQ(cCnvEBCDICtoASCII(empty.ref()), 0);
    // Every byte as dd conv=ebcdic converts it (tests/data/ebcdic_dd.md
    // tells how the file was made), and back.
    const std::string dd = read_whole_file(BRINDLE_TEST_DATA "/ebcdic_dd.bin");
    ASSERT_EQ(dd.size(), 256u);
    Bstr every(all_bytes());
    EXPECT_EQ(cCnvASCIItoEBCDIC(every.ref()), -1);
    EXPECT_EQ(every.bytes(), dd);
    EXPECT_EQ(cCnvEBCDICtoASCII(every.ref()), -1);
    EXPECT_EQ(every.bytes(), all_bytes());
}
