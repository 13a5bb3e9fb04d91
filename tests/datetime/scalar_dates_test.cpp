// Calendar and scalar dates through the exported interface. The day
// arithmetic itself is compared with Python in the calendar engine test;
// here the exports' own rules: validation, modes, 16-bit forms and packing.
#include "support/ole_helpers.h"

#include <array>
#include <cstdint>

namespace {

using Ymd = std::array<int16_t, 3>;
using Fields = std::array<int16_t, 6>;

Ymd to_date(int32_t scalar) {
    Ymd r{-7, -7, -7};
    const int16_t day = cScalarToDate(scalar, &r[0], &r[1], &r[2]);
    EXPECT_EQ(day, r[2]) << "the result is the day";
    return r;
}

Fields date_hour(int32_t packed) {
    Fields f{-7, -7, -7, -7, -7, -7};
    const int16_t user = cLongToDateHour(packed, &f[0], &f[1], &f[2], &f[3], &f[4], &f[5]);
    EXPECT_EQ(user, f[5]) << "the result is the user value";
    return f;
}

} // namespace

TEST(ScalarDates, KnownDayNumbersBothWays) {
    const struct {
        Ymd ymd;
        int32_t scalar;
    } rows[] = {
        {{1, 1, 1}, 1},           {{1900, 1, 1}, 693596},  {{2086, 9, 19}, 761793},      {{2000, 2, 29}, 730179},
        {{2000, 3, 1}, 730180},   {{1997, 1, 1}, 729025},  {{9999, 12, 31}, 3652059},    {{2079, 6, 6}, 693596 + 65535},
    };
    for (const auto &r : rows) {
        EXPECT_EQ(cDateToScalar(r.ymd[0], r.ymd[1], r.ymd[2]), r.scalar) << r.scalar;
        EXPECT_EQ(to_date(r.scalar), r.ymd) << r.scalar;
        EXPECT_EQ((Ymd{cScalarYear(r.scalar), cScalarMonth(r.scalar), cScalarDay(r.scalar)}), r.ymd) << r.scalar;
    }
    EXPECT_EQ(cDayOfYear(2000, 12, 31), 366);
    EXPECT_EQ(cScalarDayOfYear(cDateToScalar(2004, 3, 1)), 61);
}

TEST(ScalarDates, InvalidDatesGiveMinusOneEverywhere) {
    const Ymd bad[] = {{1900, 2, 29}, {2001, 2, 29}, {2000, 2, 30}, {2000, 4, 31}, {2000, 0, 1},
                       {2000, 13, 1}, {2000, 1, 0},  {2000, 1, -1}, {2000, -1, 5}, {2000, 12, 32}};
    for (const Ymd &b : bad) {
        EXPECT_EQ(cDateToScalar(b[0], b[1], b[2]), -1) << b[0] << "-" << b[1] << "-" << b[2];
        EXPECT_EQ(cDayOfWeek(b[0], b[1], b[2], 0), -1);
        EXPECT_EQ(cDayOfYear(b[0], b[1], b[2]), -1);
        EXPECT_EQ(cWeekOfYear(b[0], b[1], b[2], 1), -1);
        // An invalid date counts as day -1 in the compact forms.
        EXPECT_EQ(cDateToInt(b[0], b[1], b[2]), static_cast<int16_t>((-1 - 761793) & 0xFFFF));
        EXPECT_EQ(static_cast<uint32_t>(cDateHourToLong(b[0], b[1], b[2], 0, 0, 0)) >> 16,
                  static_cast<uint32_t>(-1 + 27300));
    }
    // The year itself is never checked.
    EXPECT_NE(cDateToScalar(0, 2, 29), -1) << "year 0 is leap";
    EXPECT_NE(cDateToScalar(-400, 2, 29), -1);
}

TEST(ScalarDates, ScalarTimes) {
    EXPECT_EQ(cTimeToScalar(23, 59, 59), 86399);
    EXPECT_EQ(cTimeToScalar(30, 0, 0), 108000) << "hours are not checked";
    EXPECT_EQ(cTimeToScalar(-1, 0, 0), -3600);
    for (int16_t bad : {int16_t{60}, int16_t{-1}, int16_t{-32768}, int16_t{32767}}) {
        EXPECT_EQ(cTimeToScalar(1, bad, 0), -1) << bad;
        EXPECT_EQ(cTimeToScalar(1, 0, bad), -1) << bad;
    }
    for (const auto &[scalar, want] : {std::pair{45296, Ymd{12, 34, 56}}, {108000 + 61, Ymd{30, 1, 1}}}) {
        Ymd hms{-9, -9, -9};
        EXPECT_EQ(cScalarToTime(scalar, &hms[0], &hms[1], &hms[2]), want[2]) << scalar;
        EXPECT_EQ(hms, want) << scalar;
    }
    // Any Long is taken apart without a fault; null references are skipped.
    EXPECT_EQ(cScalarToTime(INT32_MIN, nullptr, nullptr, nullptr), static_cast<int16_t>(INT32_MIN % 60));
    int16_t h, m, s;
    EXPECT_EQ(cScalarToTime(INT32_MAX, &h, &m, &s), INT32_MAX % 60);
}

TEST(ScalarDates, IntegerDatesKeepTheirOffset) {
    EXPECT_EQ(cDateToInt(2176, 6, 7), -32768) << "one day later wraps around";
    const struct {
        int16_t value;
        Ymd ymd;
    } rows[] = {{0, {2086, 9, 19}}, {-32768, {1997, 1, 1}}, {32767, {2176, 6, 6}}, {-1, {2086, 9, 18}},
                {static_cast<int16_t>(730120 - 761793), {2000, 1, 1}}};
    for (const auto &r : rows) {
        EXPECT_EQ(cDateToInt(r.ymd[0], r.ymd[1], r.ymd[2]), r.value);
        Ymd out{};
        EXPECT_EQ(cIntToDate(r.value, &out[0], &out[1], &out[2]), r.ymd[2]);
        EXPECT_EQ(out, r.ymd) << r.value;
    }
}

// 1 January 2000 was a Saturday; the scalar forms must agree in every mode.
// Day of the week: mode 0 counts 0 Sunday .. 6 Saturday, mode 1 1 Monday ..
// 7 Sunday, any other mode 0 Monday .. 6 Sunday.
TEST(ScalarDates, DayAndWeekModes) {
    const int16_t days[][3] = {{1, 0, 6}, {2, 0, 0}, {3, 0, 1}, {1, 1, 6},  {2, 1, 7}, {3, 1, 1},
                               {1, 2, 5}, {2, 2, 6}, {3, 2, 0}, {2, -1, 6}, {3, 99, 0}};
    for (const auto &[d, mode, want] : days) {
        EXPECT_EQ(cDayOfWeek(2000, 1, d, mode), want) << d << " mode " << mode;
        EXPECT_EQ(cScalarDayOfWeek(cDateToScalar(2000, 1, d), mode), want) << d << " mode " << mode;
    }
    // 1 January 2005 is a Saturday: week 0 in mode 1 becomes the week of
    // 31 December 2005 (52), not the last week of 2004 (53).
    const int16_t weeks[][3] = {{1, 1, 52}, {2, 1, 52}, {3, 1, 1}, {1, 2, 0}, {1, 0, 1}, {2, 0, 2}};
    for (const auto &[d, mode, want] : weeks) {
        EXPECT_EQ(cWeekOfYear(2005, 1, d, mode), want) << d << " mode " << mode;
        EXPECT_EQ(cScalarWeekOfYear(cDateToScalar(2005, 1, d), mode), want) << d << " mode " << mode;
    }
}

// Two-digit years are windowed: 0..50 is 2000..2050, 51..99 is 1951..1999.
TEST(ScalarDates, DaysInMonthAndLeapYears) {
    const int16_t months[][3] = {
        {0, 2, 29},    {50, 2, 28},   {51, 2, 28},   {96, 2, 29},  {99, 2, 28},   {1900, 2, 28}, {2000, 2, 29},
        {2100, 2, 28}, {100, 2, 28},  {400, 2, 29},  {-4, 2, 29},  {1999, 1, 31}, {1999, 4, 30}, {1999, 12, 31},
        {99, 13, -1},  {2000, 0, -1}, {2000, -2, -1},
    };
    for (const auto &[y, m, days] : months)
        EXPECT_EQ(cDaysInMonth(y, m), days) << y << "/" << m;
    const int16_t years[][2] = {{0, -1},    {4, -1},    {100, 0}, {400, -1},  {1900, 0},  {2000, -1},
                                {2024, -1}, {2023, 0}, {-4, -1}, {-100, 0}, {32767, 0}};
    for (const auto &[y, leap] : years)
        EXPECT_EQ(cIsLeapYear(y), leap) << y;
}

// Day numbers from 1900 in the high word, minutes of the day in 11 bits,
// a 5-bit user value.
TEST(ScalarDates, DateHourLongs) {
    EXPECT_EQ(cDateHourToLong(1900, 1, 1, 0, 0, 0), 0);
    EXPECT_EQ(date_hour(cDateHourToLong(2079, 6, 6, 23, 59, 31)), (Fields{2079, 6, 6, 23, 59, 31}));
    const int32_t v = cDateHourToLong(2001, 12, 24, 18, 30, 17);
    EXPECT_EQ(date_hour(v), (Fields{2001, 12, 24, 18, 30, 17}));
    EXPECT_EQ(static_cast<uint32_t>(v) >> 16, static_cast<uint32_t>(cDateToScalar(2001, 12, 24) - 693596));
    EXPECT_EQ(date_hour(cDateHourToLong(2079, 6, 7, 0, 0, 0)), (Fields{1900, 1, 1, 0, 0, 0}))
        << "the day after the last that fits wraps to 1900";

    // The Ext forms take the scalar and minutes of day directly.
    const int32_t scalar = cDateToScalar(2001, 12, 24);
    EXPECT_EQ(cDateHourToLongExt(scalar, 18 * 60 + 30), v & ~31) << "the same packing with user value 0";
    int32_t back = 0;
    int16_t word = 0;
    EXPECT_EQ(cLongToDateHourExt(v, &back, &word), 18 * 60 + 30);
    EXPECT_EQ(back, scalar);
    EXPECT_EQ(word, static_cast<int16_t>((v & 0xFFFF) >> 5));
    EXPECT_EQ(cLongToDateHourExt(-1, &back, nullptr), 2047);
    EXPECT_EQ(back, 65535 + 693596);
    EXPECT_EQ(cDateHourToLongExt(693596, 2048 + 3), 3 << 5) << "11 bits of minutes";
    EXPECT_EQ(cDateHourToLong(1900, 1, 1, 0, 1, 32 + 4), (1 << 5) | 4) << "5 bits of user value";
}

// Null references are not written; no day number faults or loops long, and
// the formulas stay exact past year 9999.
TEST(ScalarDates, NullReferencesAndDayNumbersOutsideTheCalendar) {
    EXPECT_EQ(cScalarToDate(693596, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(cIntToDate(0, nullptr, nullptr, nullptr), 19);
    EXPECT_EQ(cLongToDateHour(5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(cLongToDateHourExt(1 << 5, nullptr, nullptr), 1);
    cGetLocalDateTime(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    for (int32_t n : {0, -1, -366, INT32_MIN, INT32_MAX}) {
        to_date(n);
        cScalarWeekOfYear(n, 1);
    }
    EXPECT_EQ(to_date(3652059 + 1), (Ymd{10000, 1, 1}));
}
