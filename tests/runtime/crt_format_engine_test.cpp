// The Windows runtime's number texts: the _gcvt rendering, against outputs
// of that runtime published in its documentation and knowledge base, and
// strtod's reading.
#include "runtime/crt_format.h"
#include "runtime/crt_parse.h"
#include "support/comma_locale.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

using brindle::runtime::crt_gcvt;
using brindle::runtime::crt_strtod;

TEST(CrtGcvt, KnownOutputsOfTheRuntime) {
    struct Row {
        double value;
        int digits;
        const char *text;
    } rows[] = {
        // The runtime's own sample: the decimal point stays after a whole number.
        {-3.1415e5, 7, "-314150."},
        {-1234567890.123, 12, "-1234567890.12"},
        {-12345678901.23, 12, "-12345678901.2"},
        {-123456789012.3, 12, "-123456789012."},
        {-1234567890123.0, 12, "-1.23456789012e+012"},
        {-12.3456789012, 12, "-12.3456789012"},
        {-0.123456789012, 12, "-0.123456789012"},
        {-0.0123456789012, 12, "-1.23456789012e-002"},
        {0.5, 15, "0.5"},
        {1e20, 15, "1.e+020"},
        {100, 15, "100."},
        {0.25, 2, "0.25"},
        {0.05, 2, "5.e-002"}, // 0.0x goes to exponent form whatever the precision
        {-0.0123, 20, "-1.23e-002"},
        {-0.1123, 20, "-0.1123"},
        {1e-300, 3, "1.e-300"},
        {1.7976931348623157e308, 17, "1.7976931348623157e+308"},
        {0.0, 15, "0."},
    };
    for (const Row &r : rows)
        EXPECT_EQ(crt_gcvt(r.value, r.digits), r.text) << r.value << " with " << r.digits;
}

TEST(CrtGcvt, RoundingAndTheChoiceOfForm) {
    EXPECT_EQ(crt_gcvt(0.999, 2), "1.");         // rounds up to a whole number
    EXPECT_EQ(crt_gcvt(99.96, 3), "100.");       // carries into a new digit, still fixed
    EXPECT_EQ(crt_gcvt(999.6, 3), "1.e+003");    // the carry pushes it past the digits
    EXPECT_EQ(crt_gcvt(123456, 6), "123456.");   // exponent == digits - 1: fixed
    EXPECT_EQ(crt_gcvt(1234567, 6), "1.23457e+006");
    EXPECT_EQ(crt_gcvt(0.1, 1), "0.1");
    EXPECT_EQ(crt_gcvt(0.75, 1), "0.8");
    EXPECT_EQ(crt_gcvt(0.125, 2), "0.13");       // exact ties round away from zero
    EXPECT_EQ(crt_gcvt(-0.125, 2), "-0.13");
    EXPECT_EQ(crt_gcvt(2.5, 0), "3.");           // fewer than one digit counts as one
    EXPECT_EQ(crt_gcvt(2.5, -7), "3.");
    // Past 17 digits only zeros follow, and they are dropped.
    EXPECT_EQ(crt_gcvt(0.1, 30), "0.10000000000000001");
    EXPECT_EQ(crt_gcvt(1e20, 25), "100000000000000000000.");
    EXPECT_EQ(crt_gcvt(1e300, 32767), crt_gcvt(1e300, 400));
    EXPECT_EQ(crt_gcvt(1e300, 400).size(), 302u);
}

TEST(CrtGcvt, SpecialValues) {
    EXPECT_EQ(crt_gcvt(std::numeric_limits<double>::infinity(), 15), "1.#INF");
    EXPECT_EQ(crt_gcvt(-std::numeric_limits<double>::infinity(), 15), "-1.#INF");
    EXPECT_EQ(crt_gcvt(std::numeric_limits<double>::quiet_NaN(), 15), "1.#QNAN");
    EXPECT_EQ(crt_gcvt(std::numeric_limits<double>::denorm_min(), 2), "4.9e-324");
}

// The runtime's strtod in its "C" locale: decimal digits with a full stop,
// an exponent after e or E; no hexadecimal, infinity or NaN spellings (the
// Windows runtime reads none of them), and no locale consulted.
TEST(CrtStrtod, TheRuntimesGrammarWhateverTheLocale) {
    brindle::test::CommaLocale comma; // when one can be had: a decimal comma must not matter
    struct Row {
        const char *text;
        double value;
    } rows[] = {
        {"1.5", 1.5},          {"1,5", 1},         {" \t\r\n\v\f-2.5e3xyz", -2500}, {"+.5", 0.5},
        {"5.", 5},             {".", 0},           {"-", 0},                        {"e5", 0},
        {"1e", 1},             {"1e+", 1},         {"1E-2", 0.01},                  {"0x10", 0},
        {"inf", 0},            {"-infinity", 0},   {"nan", 0},                      {"", 0},
        {"0.1", 0.1},          {"1e-400", 0},      {"4.9406564584124654e-324", 4.9406564584124654e-324},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
        {"1.7976931348623157e308", 1.7976931348623157e308},
        {"00000000000000000000000000000000000000000000000000001.25", 1.25},
        {"0e99999999999999999999", 0},
    };
    for (const Row &r : rows)
        EXPECT_EQ(crt_strtod(r.text), r.value) << r.text;
    const double huge = std::numeric_limits<double>::infinity();
    EXPECT_EQ(crt_strtod("1e400"), huge);
    EXPECT_EQ(crt_strtod("-1e99999999999999999999"), -huge);
    EXPECT_EQ(crt_strtod("1" + std::string(400, '0')), huge);
    EXPECT_TRUE(std::signbit(crt_strtod("-0")));
    // 70,000 characters: digits far beyond what a double holds still round
    // as the whole number says.
    EXPECT_EQ(crt_strtod("0." + std::string(70000, '0') + "1e70001"), 1);
    EXPECT_EQ(crt_strtod("0.1" + std::string(70000, '0') + "1"), 0.1);
    EXPECT_EQ(crt_strtod(std::string_view("12\0" "3", 4)), 12); // a zero byte ends it
    // Round trips of the shortest exact renderings, by the C library's printf.
    std::mt19937_64 rng(5);
    for (int i = 0; i < 20000; ++i) {
        const double x = std::bit_cast<double>(rng());
        if (!std::isfinite(x))
            continue;
        char text[40];
        std::snprintf(text, sizeof text, "%.17e", x);
        for (char &c : text)
            if (c == ',')
                c = '.'; // printf follows the locale
        ASSERT_EQ(crt_strtod(text), x) << text;
    }
}
