// The DT family's day arithmetic against an outside reference: day numbers
// and weekdays written by Python's datetime (tests/data/dt_calendar, see
// make_calendar.py there). Every day of 1601..2600 is checked, and the first
// of January and of March of every year 1..9999.
#include "support/ole_helpers.h"

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Row {
    int32_t date, day_number;
    int weekday; // 0 Sunday .. 6 Saturday
};

struct Calendar {
    std::vector<Row> months; // first of each month 1601-01 .. 2601-01
    std::vector<Row> years;  // 1 January and 1 March of 1..9999
};

const Calendar &calendar() {
    static const Calendar c = [] {
        Calendar loaded;
        std::ifstream in(BRINDLE_TEST_DATA "/dt_calendar/calendar.txt");
        std::vector<Row> *section = nullptr;
        std::string line;
        while (std::getline(in, line)) {
            Row r{};
            std::istringstream fields(line);
            if (line.rfind("# ", 0) == 0)
                section = line.rfind("# months", 0) == 0 ? &loaded.months : &loaded.years;
            else if (section != nullptr && fields >> r.date >> r.day_number >> r.weekday)
                section->push_back(r);
        }
        return loaded;
    }();
    return c;
}

// Every day of ten centuries: the day number both ways, the next and
// previous day, the weekday in both modes, the day of the year and the week
// of the year. The day counts up from 1 (one more from March in century
// years that the two-digit test takes for leap years); the week is the
// count of week starts so far, where weeks start on Sunday, except from 2001
// to 2200 and from 2401 to 2600, where the family's formula starts them on
// Monday.
TEST(DtCalendar, EveryDayOfTenCenturiesMatchesTheReference) {
    const std::vector<Row> &months = calendar().months;
    ASSERT_EQ(months.size(), 1000u * 12 + 1);
    int failures = 0;
    int32_t day_of_year = 0, week = 0;
    for (size_t i = 0; i + 1 < months.size() && failures < 10; ++i) {
        const Row &first = months[i];
        const int32_t year = first.date / 10000, month = first.date / 100 % 100;
        if (month == 1)
            day_of_year = week = 0;
        const bool two_digit_leap_differs = year % 100 == 0 && year % 400 != 0;
        const int week_start = (year > 2000 && year <= 2200) || (year > 2400 && year <= 2600) ? 1 : 0;
        const int32_t length = months[i + 1].day_number - first.day_number;
        ASSERT_TRUE(length >= 28 && length <= 31) << first.date;
        for (int32_t d = 0; d < length; ++d) {
            const int32_t date = first.date + d, jdn = first.day_number + d, sunday_based = (first.weekday + d) % 7;
            ++day_of_year;
            if (sunday_based == week_start)
                ++week;
            const int32_t want_day = day_of_year + (two_digit_leap_differs && month >= 3 ? 1 : 0);
            const bool ok = cDT_DateToDays(date) == jdn && cDT_DaysToDate(jdn) == date &&
                            cDT_DayOfWeek(date, 0) == sunday_based &&
                            cDT_DayOfWeek(date, 1) == (sunday_based + 6) % 7 &&
                            cDT_NextDay(date) == cDT_DaysToDate(jdn + 1) &&
                            cDT_PrevDay(cDT_DaysToDate(jdn + 1)) == date && cDT_JulianDate(date) == want_day &&
                            cDT_ValidDate(date) == -1 && cTS_DateToDay(date) == want_day &&
                            (two_digit_leap_differs || cDT_WeekOfYear(date) == week);
            if (!ok && ++failures <= 10)
                ADD_FAILURE() << "date " << date << " day number " << jdn << ": got " << cDT_DateToDays(date)
                              << " / " << cDT_DaysToDate(jdn) << ", weekday " << cDT_DayOfWeek(date, 0) << ", day "
                              << cDT_JulianDate(date) << " want " << want_day << ", week " << cDT_WeekOfYear(date)
                              << " want " << week;
        }
    }
}

// Far years, where Zeller's sum goes negative for high centuries.
TEST(DtCalendar, FirstOfJanuaryAndMarchOfEveryYear) {
    ASSERT_EQ(calendar().years.size(), 9999u * 2);
    int failures = 0;
    for (const Row &r : calendar().years)
        if ((cDT_DateToDays(r.date) != r.day_number || cDT_DaysToDate(r.day_number) != r.date ||
             cDT_DayOfWeek(r.date, 0) != r.weekday) &&
            ++failures <= 10)
            ADD_FAILURE() << r.date << ": day number " << cDT_DateToDays(r.date) << " want " << r.day_number
                          << ", weekday " << cDT_DayOfWeek(r.date, 0) << " want " << r.weekday;
}

// Adding days across months, years and centuries agrees with the day
// numbers of the reference.
TEST(DtCalendar, AddDaysAgreesWithReferenceDayNumbers) {
    const std::vector<Row> &months = calendar().months;
    const int32_t steps[] = {1, -1, 30, -30, 365, -365, 1461, 36524, -36524, 146097};
    for (size_t i = 0; i < months.size(); i += 97)
        for (const int32_t step : steps) {
            const int32_t got = cDT_AddDays(months[i].date, step);
            EXPECT_EQ(cDT_DateToDays(got), months[i].day_number + step) << months[i].date << " + " << step;
            EXPECT_EQ(cDT_ValidDate(got), -1) << got;
        }
}

} // namespace
