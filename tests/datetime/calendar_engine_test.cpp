// The calendar core against an outside oracle: Python's datetime module
// (date.toordinal() numbers days exactly as the scalar date does, 1 January
// of year 1 being day 1). The table is made at run time by python3.
#include "datetime/calendar.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace brindle::datetime;

namespace {

#ifdef _WIN32
#define popen _popen
#define pclose _pclose
#endif

std::string run_python(const char *program) {
    const std::string command = std::string("python3 -c '") + program + "'";
    std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    std::string out;
    if (!pipe)
        return out;
    char buffer[65536];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe.get())) > 0)
        out.append(buffer, n);
    return out;
}

// One row per month of years 1..9999: year, month, ordinal of its first
// day, weekday of that day (0 = Sunday), its day of the year, and the
// month's length.
const char *kMonths = R"(
import calendar, datetime
for y in range(1, 10000):
    for m in range(1, 13):
        d = datetime.date(y, m, 1)
        print(y, m, d.toordinal(), d.isoweekday() % 7, d.timetuple().tm_yday, calendar.monthrange(y, m)[1])
)";

// A fixed random sample of days: year, month, day, ordinal, ISO year and
// week, and the Sunday-based week number of strftime (%U).
const char *kSample = R"(
import datetime, random
random.seed(7)
for i in range(40000):
    d = datetime.date.fromordinal(random.randint(1, datetime.date(9999, 12, 31).toordinal()))
    print(d.year, d.month, d.day, d.toordinal(), *d.isocalendar()[:2], d.strftime("%U"))
)";

struct MonthRow {
    int year, month, first, weekday, yday, length;
};

} // namespace

// Every day of years 1..9999: the day number both ways, the day of the week
// and of the year, and the month lengths behind the date check.
TEST(CalendarOracle, EveryDayOfYears1To9999MatchesPythonOrdinals) {
    std::istringstream in(run_python(kMonths));
    std::vector<MonthRow> rows;
    for (MonthRow r{}; in >> r.year >> r.month >> r.first >> r.weekday >> r.yday >> r.length;)
        rows.push_back(r);
#ifdef _WIN32
    if (rows.empty())
        GTEST_SKIP() << "no python3 beside this Windows build; the Linux run compares with it";
#endif
    ASSERT_EQ(rows.size(), 9999u * 12u) << "python3 did not produce the table";
    int failures = 0;
    for (const MonthRow &r : rows) {
        ASSERT_EQ(month_length(r.year, r.month), r.length) << r.year << "-" << r.month;
        EXPECT_FALSE(valid_date(r.year, r.month, r.length + 1));
        EXPECT_FALSE(valid_date(r.year, r.month, 0));
        for (int d = 1; d <= r.length; ++d) {
            const int64_t n = r.first + d - 1;
            const Date back = date_from_scalar(n);
            if (!(scalar_from_date(r.year, r.month, d) == n && back.year == r.year && back.month == r.month &&
                  back.day == d && valid_date(r.year, r.month, d) && day_of_week(n, 0) == (r.weekday + d - 1) % 7 &&
                  day_of_year(r.year, r.month, d) == r.yday + d - 1) &&
                ++failures <= 5)
                ADD_FAILURE() << r.year << "-" << r.month << "-" << d << " (ordinal " << n << ") -> " << back.year
                              << "-" << back.month << "-" << back.day;
        }
    }
    EXPECT_EQ(failures, 0);
}

// Weeks of the year. Mode 2 is the ISO week inside the date's own year: the
// days ISO gives to the previous year are week 0 here and the late-December
// days ISO gives to the next year stay week 53. Mode 1 turns week 0 into the
// week of 31 December of the same year. Mode 0 counts Sunday weeks from the
// one holding 1 January (strftime's %U, plus one unless the year starts on
// a Sunday).
TEST(CalendarOracle, WeekOfYearInEveryModeMatchesASampleOfPythonWeeks) {
    std::istringstream in(run_python(kSample));
#ifdef _WIN32
    if (in.str().empty())
        GTEST_SKIP() << "no python3 beside this Windows build; the Linux run compares with it";
#endif
    int y, m, d, ordinal, iso_year, iso_week, sunday_week, rows = 0;
    while (in >> y >> m >> d >> ordinal >> iso_year >> iso_week >> sunday_week) {
        ++rows;
        ASSERT_EQ(scalar_from_date(y, m, d), ordinal);
        const bool starts_on_sunday = day_of_week(scalar_from_date(y, 1, 1), 0) == 0;
        ASSERT_EQ(week_of_year(y, m, d, 0), sunday_week + (starts_on_sunday ? 0 : 1)) << y << "-" << m << "-" << d;
        const int expected2 = iso_year == y ? iso_week : iso_year < y ? 0 : 53;
        ASSERT_EQ(week_of_year(y, m, d, 2), expected2) << y << "-" << m << "-" << d;
        ASSERT_EQ(week_of_year(y, m, d, -7), expected2) << "every mode but 0 and 1 counts like mode 2";
        const int expected1 = expected2 == 0 ? week_of_year(y, 12, 31, 2) : expected2;
        ASSERT_EQ(week_of_year(y, m, d, 1), expected1) << y << "-" << m << "-" << d;
    }
    EXPECT_EQ(rows, 40000) << "python3 did not produce the sample";
}

TEST(Calendar, DayNumbersOutsideTheCalendarStayDefined) {
    // Far beyond year 9999 and below day 1 the formulas still give a
    // bounded answer quickly; far positive numbers stay exact.
    for (int64_t n : {int64_t{5368709}, int64_t{5368710}, int64_t{INT32_MAX}}) {
        const Date d = date_from_scalar(n);
        EXPECT_EQ(scalar_from_date(d.year, d.month, d.day), n) << n;
        EXPECT_TRUE(valid_date(d.year, d.month, d.day)) << n;
    }
    for (int64_t n : {int64_t{0}, int64_t{-1}, int64_t{-365}, int64_t{INT32_MIN}}) {
        const Date d = date_from_scalar(n);
        EXPECT_LE(d.year, 1) << n;
        EXPECT_GE(d.month, 0) << n;
        EXPECT_LE(d.month, 13) << n;
    }
}
