// Calendar and scalar dates through the exported interface.
#include "support/ole_helpers.h"

#include <cstdint>

namespace {

struct Ymd {
    int16_t y, m, d;
};

Ymd to_date(int32_t scalar) {
    Ymd r{-7, -7, -7};
    const int16_t day = cScalarToDate(scalar, &r.y, &r.m, &r.d);
    EXPECT_EQ(day, r.d) << "the result is the day";
    return r;
}

} // namespace

TEST(ScalarDates, KnownDayNumbers) {
    struct Row {
        int16_t y, m, d;
        int32_t scalar;
    } rows[] = {
        {1, 1, 1, 1},           {1900, 1, 1, 693596},  {2086, 9, 19, 761793}, {2000, 2, 29, 730179},
        {2000, 3, 1, 730180},   {1997, 1, 1, 729025},  {2176, 6, 6, 794560},  {9999, 12, 31, 3652059},
        {2079, 6, 6, 693596 + 65535},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(cDateToScalar(r.y, r.m, r.d), r.scalar) << r.y << "-" << r.m << "-" << r.d;
        const Ymd back = to_date(r.scalar);
        EXPECT_EQ(back.y, r.y);
        EXPECT_EQ(back.m, r.m);
        EXPECT_EQ(back.d, r.d);
        EXPECT_EQ(cScalarYear(r.scalar), r.y);
        EXPECT_EQ(cScalarMonth(r.scalar), r.m);
        EXPECT_EQ(cScalarDay(r.scalar), r.d);
    }
}

TEST(ScalarDates, InvalidDatesGiveMinusOneEverywhere) {
    const Ymd bad[] = {{1900, 2, 29}, {2001, 2, 29}, {2000, 2, 30}, {2000, 4, 31}, {2000, 0, 1},
                       {2000, 13, 1}, {2000, 1, 0},  {2000, 1, -1}, {2000, -1, 5}, {2000, 12, 32}};
    for (const Ymd &b : bad) {
        EXPECT_EQ(cDateToScalar(b.y, b.m, b.d), -1) << b.y << "-" << b.m << "-" << b.d;
        EXPECT_EQ(cDayOfWeek(b.y, b.m, b.d, 0), -1);
        EXPECT_EQ(cDayOfYear(b.y, b.m, b.d), -1);
        EXPECT_EQ(cWeekOfYear(b.y, b.m, b.d, 1), -1);
        // An invalid date counts as day -1 in the compact forms.
        EXPECT_EQ(cDateToInt(b.y, b.m, b.d), static_cast<int16_t>((-1 - 761793) & 0xFFFF));
        EXPECT_EQ(static_cast<uint32_t>(cDateHourToLong(b.y, b.m, b.d, 0, 0, 0)) >> 16,
                  static_cast<uint32_t>(-1 + 27300));
    }
    // The year itself is never checked.
    EXPECT_NE(cDateToScalar(0, 2, 29), -1) << "year 0 is leap";
    EXPECT_NE(cDateToScalar(-400, 2, 29), -1);
}

TEST(ScalarDates, LeapDaysAtTheSixtiethDay) {
    const int32_t start2000 = cDateToScalar(2000, 1, 1);
    Ymd d60 = to_date(start2000 + 59), d61 = to_date(start2000 + 60);
    EXPECT_EQ(d60.m, 2);
    EXPECT_EQ(d60.d, 29);
    EXPECT_EQ(d61.m, 3);
    EXPECT_EQ(d61.d, 1);
    const int32_t start1900 = cDateToScalar(1900, 1, 1);
    d60 = to_date(start1900 + 59);
    EXPECT_EQ(d60.m, 3);
    EXPECT_EQ(d60.d, 1);
    EXPECT_EQ(cDayOfYear(2000, 12, 31), 366);
    EXPECT_EQ(cDayOfYear(1900, 12, 31), 365);
    EXPECT_EQ(cDayOfYear(2000, 3, 1), 61);
    EXPECT_EQ(cScalarDayOfYear(cDateToScalar(2004, 3, 1)), 61);
}

TEST(ScalarDates, ScalarTimes) {
    EXPECT_EQ(cTimeToScalar(0, 0, 0), 0);
    EXPECT_EQ(cTimeToScalar(23, 59, 59), 86399);
    EXPECT_EQ(cTimeToScalar(30, 0, 0), 108000) << "hours are not checked";
    EXPECT_EQ(cTimeToScalar(-1, 0, 0), -3600);
    for (int16_t bad : {int16_t{60}, int16_t{-1}, int16_t{-32768}, int16_t{32767}}) {
        EXPECT_EQ(cTimeToScalar(1, bad, 0), -1) << bad;
        EXPECT_EQ(cTimeToScalar(1, 0, bad), -1) << bad;
    }
    int16_t h = -9, m = -9, s = -9;
    EXPECT_EQ(cScalarToTime(45296, &h, &m, &s), 56);
    EXPECT_EQ(h, 12);
    EXPECT_EQ(m, 34);
    EXPECT_EQ(s, 56);
    EXPECT_EQ(cScalarToTime(108000 + 61, &h, &m, &s), 1);
    EXPECT_EQ(h, 30);
    EXPECT_EQ(m, 1);
    // Any Long is taken apart without a fault; null references are skipped.
    EXPECT_EQ(cScalarToTime(INT32_MIN, nullptr, nullptr, nullptr), static_cast<int16_t>(INT32_MIN % 60));
    EXPECT_EQ(cScalarToTime(INT32_MAX, &h, &m, &s), INT32_MAX % 60);
}

TEST(ScalarDates, IntegerDatesKeepTheirOffset) {
    EXPECT_EQ(cDateToInt(2086, 9, 19), 0);
    EXPECT_EQ(cDateToInt(1997, 1, 1), -32768);
    EXPECT_EQ(cDateToInt(2176, 6, 6), 32767);
    EXPECT_EQ(cDateToInt(2176, 6, 7), -32768) << "one day later wraps around";
    EXPECT_EQ(cDateToInt(2000, 1, 1), static_cast<int16_t>(730120 - 761793));
    struct Row {
        int16_t value, y, m, d;
    } rows[] = {{0, 2086, 9, 19}, {-32768, 1997, 1, 1}, {32767, 2176, 6, 6}, {-1, 2086, 9, 18}};
    for (const Row &r : rows) {
        Ymd out{};
        EXPECT_EQ(cIntToDate(r.value, &out.y, &out.m, &out.d), r.d);
        EXPECT_EQ(out.y, r.y) << r.value;
        EXPECT_EQ(out.m, r.m) << r.value;
        EXPECT_EQ(out.d, r.d) << r.value;
    }
}

TEST(ScalarDates, DayOfWeekModes) {
    // 1 January 2000 was a Saturday, 2 January a Sunday, 3 January a Monday.
    struct Row {
        int16_t d, mode, expected;
    } rows[] = {
        {1, 0, 6}, {2, 0, 0}, {3, 0, 1}, //  0 Sunday .. 6 Saturday
        {1, 1, 6}, {2, 1, 7}, {3, 1, 1}, //  1 Monday .. 7 Sunday
        {1, 2, 5}, {2, 2, 6}, {3, 2, 0}, //  0 Monday .. 6 Sunday
        {2, -1, 6}, {3, 99, 0},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(cDayOfWeek(2000, 1, r.d, r.mode), r.expected) << r.d << " mode " << r.mode;
        EXPECT_EQ(cScalarDayOfWeek(cDateToScalar(2000, 1, r.d), r.mode), r.expected);
    }
    EXPECT_EQ(cDateToScalar(2000, 1, 2) % 7, 0) << "scalar mod 7 = 0 is a Sunday";
}

TEST(ScalarDates, WeekOfYearKeepsTheSameYearRule) {
    // 1 January 2005 is a Saturday: week 0 in mode 1 becomes the week of
    // 31 December 2005 (52), not the last week of 2004 (53).
    EXPECT_EQ(cWeekOfYear(2005, 1, 1, 1), 52);
    EXPECT_EQ(cWeekOfYear(2005, 1, 2, 1), 52);
    EXPECT_EQ(cWeekOfYear(2005, 1, 3, 1), 1);
    EXPECT_EQ(cWeekOfYear(2005, 1, 1, 2), 0);
    EXPECT_EQ(cWeekOfYear(2005, 1, 1, 0), 1);
    EXPECT_EQ(cWeekOfYear(2005, 1, 2, 0), 2) << "Sunday starts week 2";
    EXPECT_EQ(cScalarWeekOfYear(cDateToScalar(2005, 1, 1), 1), 52);
    EXPECT_EQ(cScalarWeekOfYear(cDateToScalar(2005, 1, 1), 2), 0);
    // 2004 began on a Thursday: its 31 December is in week 53, never folded.
    EXPECT_EQ(cWeekOfYear(2004, 12, 31, 1), 53);
    EXPECT_EQ(cWeekOfYear(2004, 1, 1, 1), 1);
    // 2008 ends on a Wednesday: ISO would call 29..31 December week 1 of 2009.
    EXPECT_EQ(cWeekOfYear(2008, 12, 31, 1), 53);
}

TEST(ScalarDates, DaysInMonthAndLeapYears) {
    struct Row {
        int16_t y, m, days;
    } rows[] = {
        {0, 2, 29},    {50, 2, 28},   {51, 2, 28},   {96, 2, 29},  {99, 2, 28},   {1900, 2, 28}, {2000, 2, 29},
        {2100, 2, 28}, {100, 2, 28},  {400, 2, 29},  {-4, 2, 29},  {1999, 1, 31}, {1999, 4, 30}, {1999, 12, 31},
        {99, 13, -1},  {2000, 0, -1}, {2000, -2, -1},
    };
    for (const Row &r : rows)
        EXPECT_EQ(cDaysInMonth(r.y, r.m), r.days) << r.y << "/" << r.m;
    const struct {
        int16_t y;
        bool leap;
    } years[] = {{0, true}, {4, true}, {100, false}, {400, true}, {1900, false}, {2000, true},
                 {2024, true}, {2023, false}, {-4, true}, {-100, false}, {32767, false}};
    for (const auto &y : years)
        EXPECT_EQ(cIsLeapYear(y.y), y.leap ? -1 : 0) << y.y;
}

TEST(ScalarDates, DateHourLongs) {
    EXPECT_EQ(cDateHourToLong(1900, 1, 1, 0, 0, 0), 0);
    int16_t y, m, d, h, mi, u;
    const int32_t last = cDateHourToLong(2079, 6, 6, 23, 59, 31);
    EXPECT_EQ(cLongToDateHour(last, &y, &m, &d, &h, &mi, &u), 31);
    EXPECT_EQ(y, 2079);
    EXPECT_EQ(m, 6);
    EXPECT_EQ(d, 6);
    EXPECT_EQ(h, 23);
    EXPECT_EQ(mi, 59);
    EXPECT_EQ(u, 31);
    const int32_t v = cDateHourToLong(2001, 12, 24, 18, 30, 17);
    EXPECT_EQ(cLongToDateHour(v, &y, &m, &d, &h, &mi, &u), 17);
    EXPECT_EQ(y, 2001);
    EXPECT_EQ(m, 12);
    EXPECT_EQ(d, 24);
    EXPECT_EQ(h, 18);
    EXPECT_EQ(mi, 30);
    EXPECT_EQ(static_cast<uint32_t>(v) >> 16, static_cast<uint32_t>(cDateToScalar(2001, 12, 24) - 693596));
    // The day after the last that fits wraps to 1900.
    EXPECT_EQ(cLongToDateHour(cDateHourToLong(2079, 6, 7, 0, 0, 0), &y, &m, &d, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(y, 1900);

    // The Ext forms take the scalar and minutes of day directly.
    const int32_t scalar = cDateToScalar(2001, 12, 24);
    const int32_t ext = cDateHourToLongExt(scalar, 18 * 60 + 30);
    EXPECT_EQ(ext, v & ~31) << "the same packing with user value 0";
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

TEST(ScalarDates, NullReferencesAreNotWritten) {
    EXPECT_EQ(cScalarToDate(693596, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(cIntToDate(0, nullptr, nullptr, nullptr), 19);
    EXPECT_EQ(cLongToDateHour(5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(cLongToDateHourExt(1 << 5, nullptr, nullptr), 1);
    cGetLocalDateTime(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

TEST(ScalarDates, DayNumbersOutsideTheCalendar) {
    // No fault and no long loop for any Long; exact past year 9999.
    for (int32_t n : {0, -1, -366, INT32_MIN, INT32_MAX}) {
        to_date(n);
        cScalarWeekOfYear(n, 1);
    }
    const Ymd beyond = to_date(3652059 + 1);
    EXPECT_EQ(beyond.y, 10000);
    EXPECT_EQ(beyond.m, 1);
    EXPECT_EQ(beyond.d, 1);
}

TEST(LocalClock, ReadsAPlausibleLocalDateAndTime) {
    int16_t y, m, wd, d, h, mi, s, ms;
    cGetLocalDateTime(&y, &m, &wd, &d, &h, &mi, &s, &ms);
    const int32_t today = cActualDateInScalar();
    // Read the date again: a midnight in between would move it by one.
    int16_t y2, m2, wd2, d2, h2, mi2, s2, ms2;
    cGetLocalDateTime(&y2, &m2, &wd2, &d2, &h2, &mi2, &s2, &ms2);
    const int32_t first = cDateToScalar(y, m, d), second = cDateToScalar(y2, m2, d2);
    EXPECT_TRUE(today == first || today == second);
    EXPECT_GE(y, 2020);
    EXPECT_EQ(cDayOfWeek(y, m, d, 0), wd) << "day of week 0 = Sunday, as the scalar's";
    EXPECT_TRUE(h >= 0 && h <= 23 && mi >= 0 && mi <= 59 && s >= 0 && s <= 59 && ms >= 0 && ms <= 999);
}

// The machine's clock is never changed here: every call below is one the
// system must refuse, and the clock must still read the same afterwards.
TEST(LocalClock, ARefusedSettingGivesFalseAndChangesNothing) {
    const int32_t before = cActualDateInScalar();
    EXPECT_EQ(cSetLocalDateTime(2001, 2, 30, -1, -1, -1, -1), 0) << "30 February";
    EXPECT_EQ(cSetLocalDateTime(2001, 13, 1, -1, -1, -1, -1), 0) << "month 13";
    EXPECT_EQ(cSetLocalDateTime(1500, 1, 1, -1, -1, -1, -1), 0) << "before 1601";
    EXPECT_EQ(cSetLocalDateTime(2001, 4, 31, 25, 61, 61, 1000), 0) << "31 April";
    const int32_t after = cActualDateInScalar();
    EXPECT_TRUE(after == before || after == before + 1) << "the date did not jump";
}
