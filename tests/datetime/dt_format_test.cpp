// Date and time pictures, the day and month names and the asctime layout.
#include "support/ole_helpers.h"

#include <cstdint>
#include <string>

using brindle::test::Bstr;
using brindle::test::returned;
using brindle::test::str;

namespace {

std::string format_date(int32_t date, const std::string &picture) {
    Bstr p(picture);
    return str(cDT_FormatDate(date, p.ref()));
}

std::string format_time(int32_t time, const std::string &picture) {
    Bstr p(picture);
    return str(cDT_FormatTime(time, p.ref()));
}

TEST(DtNames, EveryNameInEveryForm) {
    const char *long_days[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    const char *small_days[] = {"Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"};
    for (int16_t d = 0; d < 7; ++d) {
        EXPECT_EQ(str(cGetLongDay(d)), long_days[d]);
        EXPECT_EQ(str(cGetShortDay(d)), std::string(long_days[d], 3));
        EXPECT_EQ(str(cGetSmallDay(d)), small_days[d]);
        EXPECT_EQ(str(cGetTinyDay(d)), std::string(long_days[d], 1));
    }
    const char *long_months[] = {"January", "February", "March",     "April",   "May",      "June",
                                 "July",    "August",   "September", "October", "November", "December"};
    for (int16_t m = 1; m <= 12; ++m) {
        EXPECT_EQ(str(cGetLongMonth(m)), long_months[m - 1]);
        EXPECT_EQ(str(cGetShortMonth(m)), std::string(long_months[m - 1], 3));
        EXPECT_EQ(str(cGetTinyMonth(m)), std::string(long_months[m - 1], 1));
    }
}

TEST(DtNames, NumbersOutsideTheTablesGiveEmptyStrings) {
    const int16_t days[] = {-1, 7, 8, INT16_MIN, INT16_MAX};
    for (const int16_t d : days) {
        EXPECT_EQ(str(cGetTinyDay(d)), "") << d;
        EXPECT_EQ(str(cGetSmallDay(d)), "") << d;
        EXPECT_EQ(str(cGetShortDay(d)), "") << d;
        EXPECT_EQ(str(cGetLongDay(d)), "") << d;
    }
    const int16_t months[] = {0, -1, 13, INT16_MIN, INT16_MAX};
    for (const int16_t m : months) {
        EXPECT_EQ(str(cGetTinyMonth(m)), "") << m;
        EXPECT_EQ(str(cGetShortMonth(m)), "") << m;
        EXPECT_EQ(str(cGetLongMonth(m)), "") << m;
    }
}

struct PictureRow {
    int32_t value;
    const char *picture;
    const char *want;
};

TEST(DtPictures, DatePictures) {
    const PictureRow rows[] = {
        {20000101, "dd/mm/yyyy", "01/01/2000"},
        {20000101, "d-m-yy", "1-1-00"},
        {20261121, "dddd d mmmm yyyy", "Saturday 21 November 2026"},
        {20261123, "ddd, mmm d", "Mon, Nov 23"},
        {20261124, "ddddd dddddd mmmmm", "T Tu N"},
        {20261124, "DD.MM.YYYY", "24.11.2026"},   // letters in either case
        {20261124, "Dddd MMMM", "Tuesday November"}, // names keep their own case
        {20000101, "dddddddd", "Sa01"},            // a long run splits: dddddd + dd
        {20000101, "yyy", "001"},                  // yy then y
        {20001231, "y", "366"},                    // day of the year
        {20001231, "q", "4"},                      // quarter
        {20000102, "w ww", "1 1"},                 // Sunday is weekday 1; first week
        {20000108, "w", "7"},                      // Saturday
        {19991231, "ww", "52"},
        {50101, "yyyy", "0005"},                   // four digits at least
        {123450101, "yyyy yy", "12345 45"},
        {20000101, "\"Today is\" dddd", "Today is Saturday"},
        {20000101, "\\d\\a\\y d", "day 1"},        // a backslash copies the next character
        {20000101, "dd \"rest", "01 rest"},        // an unclosed quote runs to the end
        {20000101, "dd\\", "01\\"},                 // a trailing backslash is itself
        {20000101, "\\\"dd\\\"", "\"01\""},
        {20000101, "hh:nn:ss dd", "hh:nn:ss 01"},  // time letters are text in a date
        {20000101, "at AM/PM, am/pm", "at AM/PM, am/pm"},
        {20001301, "mmm|mm|mmmm|mmmmm", "|13||"},  // no name for month 13
        {20000100, "d/dd", "0/00"},
    };
    for (const PictureRow &r : rows)
        EXPECT_EQ(format_date(r.value, r.picture), r.want) << r.value << " \"" << r.picture << "\"";
}

TEST(DtPictures, TimePictures) {
    const PictureRow rows[] = {
        {13054207, "hh:nn:ss.cc", "13:05:42.07"},
        {13054207, "h:n:s.c", "13:5:42.7"},
        {13054207, "hh:mm", "13:05"}, // m is the minute in a time
        {13054207, "HH:NN:SS", "13:05:42"},
        {13054207, "h:nn AM/PM", "1:05 PM"},
        {13054207, "h:nn am/pm", "1:05 pm"},
        {13054207, "h:nn Am/pM", "1:05 pM"},
        {13054207, "hh:nn a/p", "01:05 p"},
        {1054207, "h:nn AM/PM", "1:05 AM"},
        {0, "h:nn AM/PM", "12:00 AM"},
        {12000000, "h:nn AM/PM", "12:00 PM"},
        {23595999, "AM/PM hh", "PM 11"},       // the marker anywhere asks for 12 hours
        {0, "hh:nn:ss.cc", "00:00:00.00"},
        {13054207, "d y q w", "d y q w"},      // date letters are text in a time
        {13054207, "hh\" h \"nn", "13 h 05"},
        {1054207, "hhh", "011"},               // hh then h
        {24000000, "hh:nn", "24:00"},          // not validated
    };
    for (const PictureRow &r : rows)
        EXPECT_EQ(format_time(r.value, r.picture), r.want) << r.value << " \"" << r.picture << "\"";
}

TEST(DtPictures, NothingToFormat) {
    Bstr none;
    EXPECT_EQ(str(cDT_FormatDate(20000101, none.ref())), "");
    EXPECT_EQ(str(cDT_FormatTime(12000000, none.ref())), "");
    EXPECT_EQ(str(cDT_FormatDate(20000101, nullptr)), "");
    EXPECT_EQ(format_date(0, "dd/mm/yyyy"), ""); // 0 is no date
    EXPECT_EQ(format_time(0, "hh"), "00");       // 0 is midnight
}

TEST(DtPictures, ZeroBytesAreText) {
    EXPECT_EQ(format_date(20000101, std::string("d\0m", 3)), std::string("1\0" "1", 3));
    EXPECT_EQ(format_time(13054207, std::string("h\0n", 3)), std::string("13\0" "5", 4));
}

// The names the pictures print are those of the readers, for the weekday
// cDT_DayOfWeek gives.
TEST(DtPictures, NamesAgreeWithDayOfWeekAndReaders) {
    for (int32_t date = 20261116; date <= 20261122; ++date) {
        const int16_t w = static_cast<int16_t>(cDT_DayOfWeek(date, 0));
        EXPECT_EQ(format_date(date, "ddd|dddd|ddddd|dddddd"),
                  str(cGetShortDay(w)) + "|" + str(cGetLongDay(w)) + "|" + str(cGetTinyDay(w)) + "|" +
                      str(cGetSmallDay(w)));
    }
}

// A large picture gives an output in proportion.
TEST(DtPictures, LargePicture) {
    std::string picture;
    for (int i = 0; i < 200000; ++i)
        picture += "dd/";
    const std::string out = format_date(20000101, picture);
    EXPECT_EQ(out.size(), picture.size());
    EXPECT_EQ(out.substr(0, 6), "01/01/");
}

TEST(DtAscTime, FixedLayout) {
    const PictureRow rows[] = {
        {20000101, nullptr, "Sat Jan  1 12:30:05 2000"},
        {20261121, nullptr, "Sat Nov 21 00:00:00 2026"},
        {19991231, nullptr, "Fri Dec 31 23:59:59 1999"},
    };
    const int32_t times[] = {12300599, 0, 23595900};
    for (size_t i = 0; i < 3; ++i)
        EXPECT_EQ(str(cGetAscTime(rows[i].value, times[i])), rows[i].want);
    EXPECT_EQ(str(cGetAscTime(20001301, 0)), "");
    EXPECT_EQ(str(cGetAscTime(20010229, 0)), "");
    EXPECT_EQ(str(cGetAscTime(20000101, 24000000)), "");
    EXPECT_EQ(str(cGetAscTime(0, 12000000)), "");
}

TEST(DtAscTime, ZeroAndZeroIsNow) {
    const int32_t today = cDT_DateNow();
    const std::string now = str(cGetAscTime(0, 0));
    if (cDT_DateNow() != today)
        GTEST_SKIP() << "midnight passed during the test";
    ASSERT_EQ(now.size(), 24u);
    EXPECT_EQ(now.substr(0, 10), format_date(today, "ddd mmm ") + (today % 100 < 10 ? " " : "") +
                                     format_date(today, "d"));
    EXPECT_EQ(now.substr(20), format_date(today, "yyyy"));
}

} // namespace
