// The DT family's exports: working days, quarters, DOS/FAT words,
// centiseconds, moving dates with carries and borrows, differences,
// validation and the tests against the clock.
#include "support/ole_helpers.h"

#include <cstdint>

namespace {

struct DateRow {
    int32_t date;
    int32_t want;
};

// Every single day step is checked against the reference calendar; these
// are the steps over months, leap days and century years by AddDays.
TEST(DtDates, AddDaysAcrossLeapDaysAndCenturies) {
    const DateRow next[] = {
        {20000228, 20000229}, {20000229, 20000301}, {19000228, 19000301},
        {21000228, 21000301}, {20011231, 20020101}, {20240430, 20240501},
    };
    for (const DateRow &r : next) {
        EXPECT_EQ(cDT_AddDays(r.date, 1), r.want) << r.date;
        EXPECT_EQ(cDT_AddDays(r.want, -1), r.date) << r.want;
    }
    EXPECT_EQ(cDT_AddDays(20000101, 366), 20010101);
    EXPECT_EQ(cDT_AddDays(20000101, 0), 20000101);
}

// 20 November 2026 is a Friday.
TEST(DtDates, WorkingDaysSkipTheWeekend) {
    const DateRow next[] = {
        {20261116, 20261117}, // Monday -> Tuesday
        {20261119, 20261120}, // Thursday -> Friday
        {20261120, 20261123}, // Friday -> Monday
        {20261121, 20261123}, // Saturday -> Monday
        {20261122, 20261123}, // Sunday -> Monday
        {20261231, 20270101}, // Thursday -> Friday, across the year
        {20000225, 20000228}, // Friday -> Monday before a leap day
    };
    for (const DateRow &r : next)
        EXPECT_EQ(cDT_NextWeekDay(r.date), r.want) << r.date;
    const DateRow prev[] = {
        {20261124, 20261123}, // Tuesday -> Monday
        {20261123, 20261120}, // Monday -> Friday
        {20261122, 20261120}, // Sunday -> Friday
        {20261121, 20261120}, // Saturday -> Friday
        {20270101, 20261231}, // Friday -> Thursday, across the year
        {20000301, 20000229}, // Wednesday -> Tuesday, the leap day
    };
    for (const DateRow &r : prev)
        EXPECT_EQ(cDT_PrevWeekDay(r.date), r.want) << r.date;
}

TEST(DtDates, DayOfWeekModes) {
    EXPECT_EQ(cDT_DayOfWeek(20000101, 0), 6); // Saturday from Sunday
    EXPECT_EQ(cDT_DayOfWeek(20000101, 1), 5); // Saturday from Monday
    EXPECT_EQ(cDT_DayOfWeek(20000102, 0), 0);
    EXPECT_EQ(cDT_DayOfWeek(20000102, -1), 6); // Sunday is last from Monday
    EXPECT_EQ(cDT_DayOfWeek(20000103, 7), 0);
}

TEST(DtDates, QuartersAndDayOfYear) {
    const DateRow quarters[] = {{20000101, 1}, {20000331, 1}, {20000401, 2}, {20000630, 2},
                                {20000701, 3}, {20000930, 3}, {20001001, 4}, {20001231, 4}};
    for (const DateRow &r : quarters)
        EXPECT_EQ(cDT_YearQuarter(r.date), r.want) << r.date;
    // The two-digit leap test: 1900 and 2100 have a 29 February here.
    const DateRow days[] = {{20000301, 61}, {20010301, 60}, {19000301, 61}, {21001231, 366}};
    for (const DateRow &r : days)
        EXPECT_EQ(cDT_JulianDate(r.date), r.want) << r.date;
    // No table entry for these months: no day of the year, and no crash.
    EXPECT_EQ(cDT_JulianDate(20001301), 0);
    EXPECT_EQ(cDT_JulianDate(20000001), 0);
    EXPECT_EQ(cDT_JulianDate(-20000101), 0);
}

struct PackRow {
    int32_t date;
    int32_t packed;
};

TEST(DtDates, PackedDosDates) {
    const PackRow rows[] = {
        {19810101, (1 << 9) | (1 << 5) | 1},
        {19991231, (19 << 9) | (12 << 5) | 31},
        {20000229, (20 << 9) | (2 << 5) | 29},
        {20261121, (46 << 9) | (11 << 5) | 21},
        {21071231, (127 << 9) | (12 << 5) | 31},
    };
    for (const PackRow &r : rows) {
        EXPECT_EQ(cDT_PackDate(r.date), r.packed) << r.date;
        EXPECT_EQ(cDT_UnpackDate(r.packed), r.date) << r.packed;
    }
    // The year field 0 (1980) unpacks as 2080; callers rely on it.
    EXPECT_EQ(cDT_PackDate(19800101), 0x0021);
    EXPECT_EQ(cDT_UnpackDate(0x0021), 20800101);
    // Only the low 16 bits count: a date VB holds in a negative Integer.
    EXPECT_EQ(cDT_UnpackDate(static_cast<int16_t>(0xFF9F)), 21071231);
    EXPECT_EQ(cDT_UnpackDate(0x7FFF0000 | 0x2C35), cDT_UnpackDate(0x2C35));
}

TEST(DtDates, PackedDosTimes) {
    const PackRow rows[] = {
        {0, 0},
        {23595800, (23 << 11) | (59 << 5) | 29},
        {12300400, (12 << 11) | (30 << 5) | 2},
    };
    for (const PackRow &r : rows) {
        EXPECT_EQ(cDT_PackTime(r.date), r.packed) << r.date;
        EXPECT_EQ(cDT_UnpackTime(r.packed), r.date) << r.packed;
    }
    // Odd seconds are halved and hundredths dropped.
    EXPECT_EQ(cDT_UnpackTime(cDT_PackTime(10203199)), 10203000);
    EXPECT_EQ(cDT_UnpackTime(static_cast<int16_t>(0xBF7D)), 23595800);
}

TEST(DtDates, Centiseconds) {
    const DateRow rows[] = {{0, 0},       {1, 1},         {100, 100},       {10000, 6000},
                            {1000000, 360000}, {23595999, 8639999}, {12345678, 4529678}};
    for (const DateRow &r : rows) {
        EXPECT_EQ(cDT_TimeToCentiSecs(r.date), r.want) << r.date;
        EXPECT_EQ(cDT_CentiSecsToTime(r.want), r.date) << r.want;
    }
    // Past a day, the hours simply keep counting.
    EXPECT_EQ(cDT_CentiSecsToTime(8640000), 24000000);
}

struct MoveRow {
    int32_t date, time, days, centisecs;
    int32_t want_date, want_time;
};

TEST(DtDates, FutureDateCarriesWholeDays) {
    const MoveRow rows[] = {
        {20011231, 23000000, 0, 360000, 20020101, 0},
        {20011231, 23000000, 0, 359999, 20011231, 23595999},
        {20000228, 12000000, 2, 0, 20000301, 12000000},
        {20000101, 0, 0, 3 * 8640000 + 1, 20000104, 1},
        {20000101, 23595999, 0, 1, 20000102, 0},
        {19991231, 10000000, 366, 4320000, 20001231, 22000000},
    };
    for (const MoveRow &r : rows) {
        int32_t date = r.date, time = r.time;
        EXPECT_EQ(cDT_FutureDate(&date, &time, r.days, r.centisecs), r.want_time) << r.date << " " << r.time;
        EXPECT_EQ(date, r.want_date) << r.date << " " << r.time;
        EXPECT_EQ(time, r.want_time) << r.date << " " << r.time;
    }
}

TEST(DtDates, PastDateBorrowsWholeDays) {
    const MoveRow rows[] = {
        {20020101, 0, 0, 1, 20011231, 23595999},
        {20020101, 0, 0, 8640000, 20011231, 0},
        {20020101, 0, 0, 8640001, 20011230, 23595999},
        {20000301, 12000000, 1, 0, 20000229, 12000000},
        {20000301, 12000000, 0, 4320000, 20000301, 0},
        {20000301, 12000000, 0, 4320001, 20000229, 23595999},
        {20001231, 22000000, 366, 4320000, 19991231, 10000000},
    };
    for (const MoveRow &r : rows) {
        int32_t date = r.date, time = r.time;
        EXPECT_EQ(cDT_PastDate(&date, &time, r.days, r.centisecs), r.want_time) << r.date << " " << r.time;
        EXPECT_EQ(date, r.want_date) << r.date << " " << r.time;
        EXPECT_EQ(time, r.want_time) << r.date << " " << r.time;
    }
}

// Date and time both 0 start from now: one day on is tomorrow at the same
// time (within the second or so the test takes, and unless midnight passes).
TEST(DtDates, FutureAndPastFromNow) {
    const int32_t today = cDT_DateNow();
    int32_t date = 0, time = 0;
    cDT_FutureDate(&date, &time, 1, 0);
    int32_t back_date = 0, back_time = 0;
    cDT_PastDate(&back_date, &back_time, 1, 0);
    if (cDT_DateNow() != today)
        GTEST_SKIP() << "midnight passed during the test";
    EXPECT_EQ(date, cDT_NextDay(today));
    EXPECT_EQ(back_date, cDT_PrevDay(today));
    EXPECT_EQ(cDT_ValidTime(time), -1);
    EXPECT_LE(cDT_TimeToCentiSecs(time), cDT_TimeToCentiSecs(cDT_TimeNow()));
}

TEST(DtDates, NullReferencesAreLeftAlone) {
    int32_t date = 20000101;
    EXPECT_EQ(cDT_FutureDate(&date, nullptr, 1, 0), 0);
    EXPECT_EQ(cDT_PastDate(nullptr, &date, 1, 0), 0);
    EXPECT_EQ(date, 20000101);
    EXPECT_EQ(cDT_DateDiff(20000102, 0, 20000101, 0, nullptr, nullptr), 1);
}

TEST(DtDates, DateDiffIsNotNormalised) {
    struct Row {
        int32_t d1, t1, d2, t2;
        int32_t want_days, want_cs;
    } rows[] = {
        {20000301, 0, 20000228, 0, 2, 0},
        {20000228, 0, 20000301, 0, -2, 0},
        {20010101, 100, 20000101, 12000000, 366, 100 - 4320000},
        {20000101, 23595999, 20000101, 0, 0, 8639999},
        {20261121, 0, 19000101, 0, 46345, 0},
    };
    for (const Row &r : rows) {
        int32_t days = 12345, cs = 12345;
        EXPECT_EQ(cDT_DateDiff(r.d1, r.t1, r.d2, r.t2, &days, &cs), r.want_days);
        EXPECT_EQ(days, r.want_days) << r.d1 << " - " << r.d2;
        EXPECT_EQ(cs, r.want_cs) << r.t1 << " - " << r.t2;
    }
}

TEST(DtDates, Validation) {
    const DateRow dates[] = {
        {0, -1},        {20011231, -1}, {20010229, 0},  {20000229, -1}, {19000229, -1}, {21000229, -1},
        {19990229, 0},  {20000230, 0},  {20000431, 0},  {20000430, -1}, {20001301, 0},  {20000001, 0},
        {20000100, 0},  {20000132, 0},  {-20000101, 0}, {101, -1},
    };
    for (const DateRow &r : dates)
        EXPECT_EQ(cDT_ValidDate(r.date), r.want) << r.date;
    const DateRow times[] = {
        {0, -1},       {23595999, -1}, {24000000, 0}, {23600000, 0},
        {23596000, 0}, {12000099, -1}, {-1, -1},  // a negative time passes: only upper bounds are checked
    };
    for (const DateRow &r : times)
        EXPECT_EQ(cDT_ValidTime(r.date), r.want) << r.date;
}

// Against the clock: far dates are settled by the date alone; today is
// settled by the time, with the ends of the day as the safe values.
TEST(DtDates, FutureAndPastAgainstTheClock) {
    const int32_t today = cDT_DateNow();
    ASSERT_EQ(cDT_ValidDate(today), -1);
    ASSERT_GT(today, 20200101);
    EXPECT_EQ(cDT_DateIsFuture(cDT_NextDay(today), 0), -1);
    EXPECT_EQ(cDT_DateIsPast(cDT_NextDay(today), 0), 0);
    EXPECT_EQ(cDT_DateIsPast(cDT_PrevDay(today), 23595999), -1);
    EXPECT_EQ(cDT_DateIsFuture(cDT_PrevDay(today), 23595999), 0);
    EXPECT_EQ(cDT_DateIsFuture(20991231, 0), -1);
    EXPECT_EQ(cDT_DateIsPast(19991231, 0), -1);
    const int32_t now = cDT_TimeNow();
    if (now == 0 || now >= 23595999 || cDT_DateNow() != today)
        GTEST_SKIP() << "too close to midnight";
    EXPECT_EQ(cDT_DateIsFuture(today, 23595999), -1);
    EXPECT_EQ(cDT_DateIsPast(today, 0), -1);
    EXPECT_EQ(cDT_DateIsFuture(today, 0), 0);
    EXPECT_EQ(cDT_DateIsPast(today, 23595999), 0);
}

TEST(DtDates, NowIsAValidDateAndTime) {
    EXPECT_EQ(cDT_ValidDate(cDT_DateNow()), -1);
    EXPECT_EQ(cDT_ValidTime(cDT_TimeNow()), -1);
    EXPECT_NE(cDT_DateNow(), 0);
}

// Arithmetic does not validate, but no Long makes it fail.
TEST(DtDates, ExtremeValuesReturn) {
    const int32_t values[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 99999999, INT32_MAX};
    for (const int32_t v : values) {
        int32_t date = v, time = v;
        (void)cDT_FutureDate(&date, &time, INT32_MAX, INT32_MAX);
        date = v, time = v;
        (void)cDT_PastDate(&date, &time, INT32_MIN, INT32_MIN);
        int32_t days = 0, cs = 0;
        (void)cDT_DateDiff(v, v, INT32_MIN, INT32_MAX, &days, &cs);
        const int w = cDT_DayOfWeek(v, 0);
        EXPECT_GE(w, 0) << v;
        EXPECT_LE(w, 6) << v;
        (void)cDT_WeekOfYear(v);
        (void)cDT_NextWeekDay(v);
        (void)cDT_PrevWeekDay(v);
        (void)cDT_AddDays(v, v);
        (void)cDT_DaysToDate(v);
        (void)cDT_CentiSecsToTime(v);
        EXPECT_LE(cDT_PackDate(v), 0xFFFF);
        EXPECT_GE(cDT_PackDate(v), 0);
        EXPECT_LE(cDT_PackTime(v), 0xFFFF);
        EXPECT_GE(cDT_PackTime(v), 0);
    }
}

} // namespace
