// The DT family's exports: working days, quarters, DOS/FAT words,
// centiseconds, moving dates with carries and borrows, differences,
// validation and the tests against the clock. Day numbers, weekdays and
// AddDays are walked against the reference calendar in dt_calendar_test.
#include "support/ole_helpers.h"

#include <cstdint>
#include <span>

namespace {

struct Pair {
    int32_t in, out;
};

// Each row's values both ways through `to` and `from`.
template <class To, class From> void both_ways(To to, From from, std::span<const Pair> rows) {
    for (const Pair &r : rows) {
        EXPECT_EQ(to(r.in), r.out) << r.in;
        EXPECT_EQ(from(r.out), r.in) << r.out;
    }
}

// 20 November 2026 is a Friday.
TEST(DtDates, WorkingDaysSkipTheWeekend) {
    const struct {
        int32_t date, next, prev;
    } rows[] = {
        {20261116, 20261117, 20261113}, {20261119, 20261120, 20261118}, // Monday, Thursday
        {20261120, 20261123, 20261119}, {20261121, 20261123, 20261120}, // Friday, Saturday
        {20261122, 20261123, 20261120},                                 // Sunday
        {20261231, 20270101, 20261230}, {20270101, 20270104, 20261231}, // across the year both ways
        {20000225, 20000228, 20000224}, {20000301, 20000302, 20000229}, // around a leap day
    };
    for (const auto &r : rows) {
        EXPECT_EQ(cDT_NextWeekDay(r.date), r.next) << r.date;
        EXPECT_EQ(cDT_PrevWeekDay(r.date), r.prev) << r.date;
    }
    // Modes 0 and 1 are walked against the reference; any other mode
    // counts from Monday too.
    EXPECT_EQ(cDT_DayOfWeek(20000102, -1), 6);
    EXPECT_EQ(cDT_DayOfWeek(20000103, 7), 0);
}

TEST(DtDates, QuartersAndMonthsOutsideTheTable) {
    const Pair quarters[] = {{20000101, 1}, {20000331, 1}, {20000401, 2}, {20000630, 2},
                             {20000701, 3}, {20000930, 3}, {20001001, 4}, {20001231, 4}};
    for (const Pair &r : quarters)
        EXPECT_EQ(cDT_YearQuarter(r.in), r.out) << r.in;
    // No table entry for these months: no day of the year, and no crash.
    for (int32_t date : {20001301, 20000001, -20000101})
        EXPECT_EQ(cDT_JulianDate(date), 0) << date;
}

TEST(DtDates, PackedDosDatesAndTimes) {
    const Pair dates[] = {
        {19810101, (1 << 9) | (1 << 5) | 1},     {19991231, (19 << 9) | (12 << 5) | 31},
        {20000229, (20 << 9) | (2 << 5) | 29},   {20261121, (46 << 9) | (11 << 5) | 21},
        {21071231, (127 << 9) | (12 << 5) | 31},
    };
    both_ways(cDT_PackDate, cDT_UnpackDate, dates);
    // The year field 0 (1980) unpacks as 2080; callers rely on it.
    EXPECT_EQ(cDT_PackDate(19800101), 0x0021);
    EXPECT_EQ(cDT_UnpackDate(0x0021), 20800101);
    // Only the low 16 bits count: a date VB holds in a negative Integer.
    EXPECT_EQ(cDT_UnpackDate(static_cast<int16_t>(0xFF9F)), 21071231);
    EXPECT_EQ(cDT_UnpackDate(0x7FFF0000 | 0x2C35), cDT_UnpackDate(0x2C35));

    const Pair times[] = {{0, 0}, {23595800, (23 << 11) | (59 << 5) | 29}, {12300400, (12 << 11) | (30 << 5) | 2}};
    both_ways(cDT_PackTime, cDT_UnpackTime, times);
    // Odd seconds are halved and hundredths dropped.
    EXPECT_EQ(cDT_UnpackTime(cDT_PackTime(10203199)), 10203000);
    EXPECT_EQ(cDT_UnpackTime(static_cast<int16_t>(0xBF7D)), 23595800);
}

TEST(DtDates, Centiseconds) {
    const Pair rows[] = {{0, 0},           {1, 1},           {100, 100},       {10000, 6000},
                         {1000000, 360000}, {23595999, 8639999}, {12345678, 4529678}};
    both_ways(cDT_TimeToCentiSecs, cDT_CentiSecsToTime, rows);
    EXPECT_EQ(cDT_CentiSecsToTime(8640000), 24000000) << "past a day, the hours keep counting";
}

struct MoveRow {
    int32_t date, time, days, centisecs;
    int32_t want_date, want_time;
};

// Moves each row's date and time in place with `move` (cDT_FutureDate or
// cDT_PastDate): the returned time and both outputs must be the wanted ones.
template <class Move> void check_moves(Move move, std::span<const MoveRow> rows) {
    for (const MoveRow &r : rows) {
        int32_t date = r.date, time = r.time;
        EXPECT_EQ(move(&date, &time, r.days, r.centisecs), r.want_time) << r.date << " " << r.time;
        EXPECT_EQ(date, r.want_date) << r.date << " " << r.time;
        EXPECT_EQ(time, r.want_time) << r.date << " " << r.time;
    }
}

TEST(DtDates, FutureCarriesAndPastBorrowsWholeDays) {
    const MoveRow future[] = {
        {20011231, 23000000, 0, 360000, 20020101, 0},   {20011231, 23000000, 0, 359999, 20011231, 23595999},
        {20000228, 12000000, 2, 0, 20000301, 12000000}, {20000101, 0, 0, 3 * 8640000 + 1, 20000104, 1},
        {20000101, 23595999, 0, 1, 20000102, 0},        {19991231, 10000000, 366, 4320000, 20001231, 22000000},
    };
    check_moves(cDT_FutureDate, future);
    const MoveRow past[] = {
        {20020101, 0, 0, 1, 20011231, 23595999},        {20020101, 0, 0, 8640000, 20011231, 0},
        {20020101, 0, 0, 8640001, 20011230, 23595999},  {20000301, 12000000, 1, 0, 20000229, 12000000},
        {20000301, 12000000, 0, 4320000, 20000301, 0},  {20000301, 12000000, 0, 4320001, 20000229, 23595999},
        {20001231, 22000000, 366, 4320000, 19991231, 10000000},
    };
    check_moves(cDT_PastDate, past);
    // A null reference leaves everything alone.
    int32_t date = 20000101;
    EXPECT_EQ(cDT_FutureDate(&date, nullptr, 1, 0), 0);
    EXPECT_EQ(cDT_PastDate(nullptr, &date, 1, 0), 0);
    EXPECT_EQ(date, 20000101);
}

// Date and time both 0 start from now: one day on is tomorrow at the same
// time (within the second or so the test takes, and unless midnight passes).
TEST(DtDates, FutureAndPastFromNow) {
    const int32_t today = cDT_DateNow();
    int32_t date = 0, time = 0, back_date = 0, back_time = 0;
    cDT_FutureDate(&date, &time, 1, 0);
    cDT_PastDate(&back_date, &back_time, 1, 0);
    if (cDT_DateNow() != today)
        GTEST_SKIP() << "midnight passed during the test";
    EXPECT_EQ(date, cDT_NextDay(today));
    EXPECT_EQ(back_date, cDT_PrevDay(today));
    EXPECT_EQ(cDT_ValidTime(time), -1);
    EXPECT_LE(cDT_TimeToCentiSecs(time), cDT_TimeToCentiSecs(cDT_TimeNow()));
}

TEST(DtDates, DateDiffIsNotNormalised) {
    const struct {
        int32_t d1, t1, d2, t2;
        int32_t want_days, want_cs;
    } rows[] = {
        {20000301, 0, 20000228, 0, 2, 0},
        {20000228, 0, 20000301, 0, -2, 0},
        {20010101, 100, 20000101, 12000000, 366, 100 - 4320000},
        {20000101, 23595999, 20000101, 0, 0, 8639999},
        {20261121, 0, 19000101, 0, 46345, 0},
    };
    for (const auto &r : rows) {
        int32_t days = 12345, cs = 12345;
        EXPECT_EQ(cDT_DateDiff(r.d1, r.t1, r.d2, r.t2, &days, &cs), r.want_days);
        EXPECT_EQ(days, r.want_days) << r.d1 << " - " << r.d2;
        EXPECT_EQ(cs, r.want_cs) << r.t1 << " - " << r.t2;
    }
    EXPECT_EQ(cDT_DateDiff(20000102, 0, 20000101, 0, nullptr, nullptr), 1);
}

TEST(DtDates, Validation) {
    // 1900 and 2100 pass: the leap test reads the two-digit year.
    const Pair dates[] = {{0, -1},       {20011231, -1}, {20010229, 0}, {20000229, -1}, {19000229, -1}, {21000229, -1},
                          {19990229, 0}, {20000230, 0},  {20000431, 0}, {20000430, -1}, {20001301, 0},  {20000001, 0},
                          {20000100, 0}, {20000132, 0},  {-20000101, 0}, {101, -1}};
    for (const Pair &r : dates)
        EXPECT_EQ(cDT_ValidDate(r.in), r.out) << r.in;
    // A negative time passes: only upper bounds are checked.
    const Pair times[] = {{0, -1}, {23595999, -1}, {24000000, 0}, {23600000, 0}, {23596000, 0}, {12000099, -1}, {-1, -1}};
    for (const Pair &r : times)
        EXPECT_EQ(cDT_ValidTime(r.in), r.out) << r.in;
}

// Against the clock: far dates are settled by the date alone; today is
// settled by the time, with the ends of the day as the safe values.
TEST(DtDates, FutureAndPastAgainstTheClock) {
    const int32_t today = cDT_DateNow(), now = cDT_TimeNow();
    ASSERT_EQ(cDT_ValidDate(today), -1);
    ASSERT_EQ(cDT_ValidTime(now), -1);
    ASSERT_GT(today, 20200101);
    const bool near_midnight = now == 0 || now >= 23595999 || cDT_DateNow() != today;
    const struct {
        int32_t date, time;
        int16_t future, past;
    } rows[] = {
        {cDT_NextDay(today), 0, -1, 0}, {cDT_PrevDay(today), 23595999, 0, -1},
        {20991231, 0, -1, 0},           {19991231, 0, 0, -1},
        {today, 23595999, -1, 0},       {today, 0, 0, -1},
    };
    for (const auto &r : rows) {
        if (r.date == today && near_midnight)
            continue;
        EXPECT_EQ(cDT_DateIsFuture(r.date, r.time), r.future) << r.date << " " << r.time;
        EXPECT_EQ(cDT_DateIsPast(r.date, r.time), r.past) << r.date << " " << r.time;
    }
}

// Arithmetic does not validate, but no Long makes it fail.
TEST(DtDates, ExtremeValuesReturn) {
    for (const int32_t v : {INT32_MIN, INT32_MIN + 1, -1, 0, 99999999, INT32_MAX}) {
        int32_t date = v, time = v, days = 0, cs = 0;
        (void)cDT_FutureDate(&date, &time, INT32_MAX, INT32_MAX);
        date = v, time = v;
        (void)cDT_PastDate(&date, &time, INT32_MIN, INT32_MIN);
        (void)cDT_DateDiff(v, v, INT32_MIN, INT32_MAX, &days, &cs);
        (void)cDT_AddDays(v, v);
        for (auto f : {cDT_WeekOfYear, cDT_NextWeekDay, cDT_PrevWeekDay, cDT_DaysToDate, cDT_CentiSecsToTime})
            (void)f(v);
        const int w = cDT_DayOfWeek(v, 0);
        EXPECT_TRUE(w >= 0 && w <= 6) << v << ": weekday " << w;
        EXPECT_TRUE(cDT_PackDate(v) >= 0 && cDT_PackDate(v) <= 0xFFFF) << v;
        EXPECT_TRUE(cDT_PackTime(v) >= 0 && cDT_PackTime(v) <= 0xFFFF) << v;
    }
}

} // namespace
