// Hour, balance and current-time fields through the exported interface.
// The time separator is whatever the locale says: read through the
// library's own getter, never assumed.
#include "support/ole_helpers.h"

#include <string>

using namespace brindle::test;

namespace {

std::string sep() {
    static const std::string s = str(cGetTimeSeparator());
    return s;
}

// "12:34" with the locale's separator in place of each ':'.
std::string T(std::string text) {
    for (char &c : text)
        if (c == ':')
            c = sep()[0];
    return text;
}

std::string add_two(std::string_view a, std::string_view b) {
    Bstr x(a), y(b);
    return str(cAddTwoTimes(x.ref(), y.ref()));
}

int32_t hour_to(BSTR *text) {
    VARIANT v = cHourTo(text);
    EXPECT_EQ(V_VT(&v), VT_I4) << "a Variant holding a Long";
    const int32_t minutes = V_I4(&v);
    VariantClear(&v);
    return minutes;
}

std::string fix_hour(int32_t minutes, int16_t width, int16_t fill, int16_t decimal) {
    Variant v = Variant::of_long(minutes);
    return str(cIntoFixHour(v.ptr(), width, fill, decimal));
}

} // namespace

// Loaded before use: never the blank of an unloaded slot, and the same
// answer every time.
TEST(Locale, SeparatorsAndPatternsAgree) {
    const std::string d = str(cGetDateSeparator()), list = str(cGetListSeparator()), date = str(cGetDateFormat());
    ASSERT_TRUE(sep().size() == 1u && d.size() == 1u && list.size() == 1u) << sep() << d << list;
    EXPECT_TRUE(sep() != " " && d != " ") << sep() << d;
    EXPECT_EQ(str(cGetHourFormat()), "hh" + sep() + "nn");
    EXPECT_TRUE(date == "mm" + d + "dd" + d + "yyyy" || date == "dd" + d + "mm" + d + "yyyy" ||
                date == "yyyy" + d + "mm" + d + "dd")
        << date;
    EXPECT_EQ(str(cGetDateFormat()), date);
    for (BSTR b : {cGetCurrency(), cGetLanguage(), cGetCountry(), cGetCountryCode()}) {
        const std::string text = str(b);
        EXPECT_TRUE(!text.empty() && text.size() <= 33u) << text;
    }
}

// Two-digit years are windowed (0..50 is 2000..2050, 51..99 1951..1999);
// balances allow -9999..99999 hours.
TEST(HourChecks, DatesHoursAndBalances) {
    const int16_t dates[][4] = {{0, 2, 29, -1},    {50, 2, 29, 0},   {96, 2, 29, -1}, {99, 2, 29, 0},
                                {2000, 2, 29, -1}, {1900, 2, 29, 0}, {100, 2, 29, 0}, {2001, 4, 31, 0},
                                {2001, 12, 31, -1}, {2001, 13, 1, 0}, {2001, 0, 1, 0}, {2001, 1, 0, 0}};
    for (const auto &[y, m, d, want] : dates)
        EXPECT_EQ(cIsDate(y, m, d), want) << y << "-" << m << "-" << d;
    const int16_t hours[][4] = {{0, 0, 0, -1},  {23, 59, 59, -1}, {24, 0, 0, 0},  {-1, 0, 0, 0},
                                {12, 60, 0, 0}, {12, 0, 60, 0},   {12, -1, 0, 0}, {12, 0, -1, 0}};
    for (const auto &[h, m, s, want] : hours)
        EXPECT_EQ(cIsHour(h, m, s), want) << h << ":" << m << ":" << s;
    const int32_t balances[][4] = {{-9999, 0, 0, -1}, {99999, 59, 59, -1}, {-10000, 0, 0, 0}, {100000, 0, 0, 0},
                                   {0, 60, 0, 0},     {0, 0, 60, 0},       {5, -1, 0, 0},     {INT32_MIN, 0, 0, 0}};
    for (const auto &[h, m, s, want] : balances)
        EXPECT_EQ(cIsBalance(h, static_cast<int16_t>(m), static_cast<int16_t>(s)), want) << h << ":" << m << ":" << s;
}

TEST(TimeArithmetic, DifferencesWrapsAndWindows) {
    EXPECT_EQ(cTimeBetween(600, 660), 60);
    EXPECT_EQ(cTimeBetween(1380, 60), 120) << "across midnight";
    EXPECT_EQ(cTimeBetween(60, 60), 0);
    EXPECT_EQ(cTimeBetween(-32768, 32767), -1 + 1440) << "the difference is taken in 16 bits";
    EXPECT_EQ(cSecondBetween(3600, 7200), 3600);
    EXPECT_EQ(cSecondBetween(86000, 400), 800);
    EXPECT_EQ(cSecondBetween(INT32_MIN, INT32_MAX), -1 + 86400);

    const int16_t wraps[][2] = {{2900, 1460}, {1440, 0}, {1439, 1439}, {0, 0}, {-1, 1439}, {-1440, 0}, {-2000, -560}};
    for (const auto &w : wraps)
        EXPECT_EQ(cAddTime(w[0]), w[1]) << w[0];

    // 23:00 to 01:00 crosses midnight; t itself is not wrapped, start and
    // end are wrapped once first.
    const int16_t windows[][4] = {
        {1400, 1380, 60, -1}, {30, 1380, 60, -1}, {60, 1380, 60, -1}, {1380, 1380, 60, -1},
        {600, 1380, 60, 0},   {1440, 1380, 60, 0}, {600, 600, 600, -1}, {601, 600, 600, 0},
        {700, 600, 800, -1},  {599, 600, 800, 0},  {801, 600, 800, 0},  {700, 600 + 1440, 800 - 1440, -1},
    };
    for (const auto &w : windows)
        EXPECT_EQ(cCheckTime(w[0], w[1], w[2]), w[3]) << w[0] << " in " << w[1] << ".." << w[2];

    // Strictly between, after conversion to Long (4.4 becomes 4).
    Variant lo = Variant::of_long(4), hi = Variant::of_long(6), five = Variant::of_long(5);
    Variant text = Variant::of_text("5"), half = Variant::of_double(4.4);
    EXPECT_EQ(cTrueBetween(five.ptr(), lo.ptr(), hi.ptr()), -1);
    EXPECT_EQ(cTrueBetween(five.ptr(), five.ptr(), hi.ptr()), 0) << "equal to the lower bound";
    EXPECT_EQ(cTrueBetween(five.ptr(), lo.ptr(), five.ptr()), 0) << "equal to the upper bound";
    EXPECT_EQ(cTrueBetween(text.ptr(), lo.ptr(), hi.ptr()), -1);
    EXPECT_EQ(cTrueBetween(half.ptr(), lo.ptr(), hi.ptr()), 0);
}

TEST(HourText, AddTwoTimesCarriesAndWraps) {
    EXPECT_EQ(add_two("23:59:59", "00:00:01"), T("00:00:00"));
    EXPECT_EQ(add_two("10:30:45", "02:40:20"), T("13:11:05"));
    EXPECT_EQ(add_two("12:00:00", "12:00:00"), T("00:00:00"));
    EXPECT_EQ(add_two("01.02.03", "04-05-06"), T("05:07:09")) << "separator places are not examined";
    EXPECT_EQ(add_two("00:00:59", "00:00:59"), T("00:01:58"));
    EXPECT_EQ(add_two("99:99:99", "99:99:99").size(), 8u) << "nonsense stays 8 characters";
    for (auto [a, b] : {std::pair{"23:59:5", "00:00:01"}, {"23:59:59", "00:00:011"}, {"", ""}, {"23:59:59", ""}})
        EXPECT_EQ(add_two(a, b), "") << a << " + " << b;
    Bstr null_handle, ok("00:00:01");
    EXPECT_EQ(str(cAddTwoTimes(null_handle.ref(), ok.ref())), "");
    EXPECT_EQ(str(cAddTwoTimes(nullptr, nullptr)), "");
}

TEST(HourText, HourToReadsBackward) {
    const struct {
        std::string text;
        int32_t minutes;
    } rows[] = {
        {T("12:34"), 754}, {"1234", 754},  {"5", 5},     {"", 0},       {T("1:05"), 65},  {T("-1:05"), -65},
        {T("0:00"), 0},    {"-30", -30},   {T(":7"), 7}, {T("3:"), 180}, {"abcdefghijklmnop", 0},
        {T("9999999:59"), 9999999 * 60 + 5}, // 10 characters: only the first 9 count
        {T("999999:59"), 999999 * 60 + 59},
        {T("12:34:56"), 1234 * 60 + 56}, // a second separator only switches to hours again
        {T("1-2:30"), 2 * 60 + 30},      // the backward scan stops at a '-'
        {std::string("12\0" "99", 5), 12},
    };
    for (const auto &r : rows) {
        Bstr t(r.text);
        EXPECT_EQ(hour_to(t.ref()), r.minutes) << r.text;
    }
    EXPECT_EQ(hour_to(nullptr), 0) << "whatever comes in, a Long comes out";
}

TEST(HourText, FixedWidthPrinter) {
    const struct {
        int32_t minutes;
        int16_t width;
        bool fill, decimal;
        std::string expected;
    } rows[] = {
        {754, 5, true, false, T("12:34")},     {5, 5, true, false, T("00:05")},    {5, 5, false, false, T("  :05")},
        {5999, 5, true, false, T("99:59")},    {6000, 5, true, false, "?????"},    {6000, 6, true, false, T("100:00")},
        {-65, 6, true, false, T("-01:05")},    {-65, 6, false, false, T("- 1:05")}, {-65, 5, true, false, "-0105"},
        {-6000, 6, true, false, "??????"},     {754, 8, false, false, T("   12:34")},
        {754, 8, true, false, T("00012:34")},  {30, 5, true, true, T("00:50")},    {1, 5, true, true, T("00:02")},
        {59, 5, true, true, T("00:98")},       {4 * 60 + 45, 5, true, true, T("04:75")},
        {9, 1, true, false, "9"},              {10, 1, true, false, "?"},          {59, 2, true, false, "59"},
        {60, 2, true, false, "??"},            {599, 3, true, false, "959"},       {5999, 4, true, false, "9959"},
        {-9, 2, true, false, "-9"},            {-1, 1, true, false, "?"},
        {INT32_MAX, 11, true, false, T("35791394:07")},                            {INT32_MIN, 11, true, false, "???????????"},
        {-599999999, 11, false, false, T("-9999999:59")},
        {0, 11, false, false, T("       0:00")}, // at most 7 zeros turn into blanks
        {0, 11, true, false, T("00000000:00")},
    };
    for (const auto &r : rows) {
        const std::string got = fix_hour(r.minutes, r.width, r.fill ? -1 : 0, r.decimal ? -1 : 0);
        EXPECT_EQ(got, r.expected) << r.minutes << " width " << r.width;
        EXPECT_EQ(got.size(), static_cast<size_t>(r.width));
    }
    for (int16_t width : {int16_t{0}, int16_t{12}, int16_t{-1}, int16_t{-32768}})
        EXPECT_EQ(fix_hour(754, width, -1, 0), "") << width;
    EXPECT_EQ(fix_hour(5, 5, 1, 1), T("  :05")) << "only -1 is true for the two flags";
}

// The fixed forms, the variable width and the date fillers (nothing, or ten
// blanks for 0). A Variant that is not a number reads as 0.
TEST(HourText, FixedFormsVariableWidthAndDateFillers) {
    const struct {
        decltype(&cIntoHour) print;
        int32_t minutes;
        std::string expected;
    } rows[] = {
        {cIntoHour, 754, T("12:34")},           {cIntoHour, 6000, "?????"},
        {cIntoBalance, 754, T("   12:34")},     {cIntoBalance, -754, T("-  12:34")},
        {cIntoBalanceFill, 754, T("00012:34")}, {cIntoBalanceFill, -754, T("-0012:34")},
        {cIntoBalance, 99999 * 60 + 59, T("99999:59")}, {cIntoBalance, -(9999 * 60 + 59), T("-9999:59")},
        {cIntoBalance, -(10000 * 60), "????????"},      {cIntoVarHour, 5, T("0:05")},
        {cIntoVarHour, -5, T("-0:05")},                 {cIntoVarHour, 754, T("12:34")},
        {cIntoVarHour, -6000, T("-100:00")},            {cIntoVarHour, INT32_MAX, T("35791394:07")},
        {cIntoVarHour, INT32_MIN, T("-35791394:08")},   {cIntoDate, 730120, ""},
        {cIntoDateNull, 730120, ""},
    };
    for (const auto &r : rows) {
        Variant v = Variant::of_long(r.minutes);
        EXPECT_EQ(str(r.print(v.ptr())), r.expected) << r.minutes;
    }
    Variant junk = Variant::of_text("junk");
    EXPECT_EQ(str(cIntoVarHour(junk.ptr())), T("0:00"));
    EXPECT_EQ(str(cIntoHour(nullptr)), T("00:00"));
    EXPECT_EQ(str(cIntoDate(nullptr)), "");
    EXPECT_EQ(str(cIntoDateFill(0)), std::string(10, ' '));
    EXPECT_EQ(str(cIntoDateFill(1)) + str(cIntoDateFill(-1)), "");
}
