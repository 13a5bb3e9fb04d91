// Date and time pictures, the day and month names and the asctime layout.
#include "support/ole_helpers.h"

#include <cstdint>
#include <string>

using brindle::test::Bstr;
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

// Every name in every form; numbers outside the tables give empty strings.
TEST(DtNames, EveryNameInEveryForm) {
    const char *long_days[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    const char *small_days[] = {"Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"};
    for (int16_t d : {-1, 0, 1, 2, 3, 4, 5, 6, 7, INT16_MIN, INT16_MAX}) {
        const std::string name = d >= 0 && d < 7 ? long_days[d] : "";
        EXPECT_EQ(str(cGetLongDay(d)), name) << d;
        EXPECT_EQ(str(cGetShortDay(d)), name.substr(0, 3)) << d;
        EXPECT_EQ(str(cGetSmallDay(d)), d >= 0 && d < 7 ? small_days[d] : "") << d;
        EXPECT_EQ(str(cGetTinyDay(d)), name.substr(0, 1)) << d;
    }
    const char *long_months[] = {"January", "February", "March",     "April",   "May",      "June",
                                 "July",    "August",   "September", "October", "November", "December"};
    for (int16_t m : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, INT16_MIN, INT16_MAX}) {
        const std::string name = m >= 1 && m <= 12 ? long_months[m - 1] : "";
        EXPECT_EQ(str(cGetLongMonth(m)), name) << m;
        EXPECT_EQ(str(cGetShortMonth(m)), name.substr(0, 3)) << m;
        EXPECT_EQ(str(cGetTinyMonth(m)), name.substr(0, 1)) << m;
    }
}

struct PictureRow {
    int32_t value;
    const char *picture;
    const char *want;
};

TEST(DtPictures, DatePictures) {
    const PictureRow rows[] = {
        {20000101, "dd/mm/yyyy", "01/01/2000"}, {20000101, "d-m-yy", "1-1-00"}, {0, "dd/mm/yyyy", ""}, // 0 is no date
        {20261121, "dddd d mmmm yyyy", "Saturday 21 November 2026"}, {20261123, "ddd, mmm d", "Mon, Nov 23"},
        {20261124, "ddddd dddddd mmmmm", "T Tu N"},   {20261125, "dddd", "Wednesday"},
        {20261126, "ddd|dddddd", "Thu|Th"},           {20261127, "dddd|ddddd", "Friday|F"},
        {20261129, "ddd|dddddd", "Sun|Su"},           {20261124, "DD.MM.YYYY", "24.11.2026"}, // either case
        {20261124, "Dddd MMMM", "Tuesday November"},  // names keep their own case
        {20000101, "dddddddd", "Sa01"},               // a long run splits: dddddd + dd
        {20000101, "yyy", "001"},                     // yy then y
        {20001231, "y q", "366 4"},                   // day of the year, quarter
        {20000102, "w ww", "1 1"},                    // Sunday is weekday 1; first week
        {20000108, "w", "7"},                         {19991231, "ww", "52"},
        {50101, "yyyy", "0005"},                      {123450101, "yyyy yy", "12345 45"}, // four digits at least
        {20000101, "\"Today is\" dddd", "Today is Saturday"},
        {20000101, "\\d\\a\\y d", "day 1"},           // a backslash copies the next character
        {20000101, "dd \"rest", "01 rest"},           // an unclosed quote runs to the end
        {20000101, "dd\\", "01\\"},                    {20000101, "\\\"dd\\\"", "\"01\""},
        {20000101, "hh:nn:ss dd", "hh:nn:ss 01"},     // time letters are text in a date
        {20000101, "at AM/PM, am/pm", "at AM/PM, am/pm"},
        {20001301, "mmm|mm|mmmm|mmmmm", "|13||"},     // no name for month 13
        {20000100, "d/dd", "0/00"},
    };
    for (const PictureRow &r : rows)
        EXPECT_EQ(format_date(r.value, r.picture), r.want) << r.value << " \"" << r.picture << "\"";
}

TEST(DtPictures, TimePictures) {
    const PictureRow rows[] = {
        {13054207, "hh:nn:ss.cc", "13:05:42.07"}, {13054207, "h:n:s.c", "13:5:42.7"},
        {13054207, "hh:mm", "13:05"},             {13054207, "HH:NN:SS", "13:05:42"}, // m is the minute in a time
        {13054207, "h:nn AM/PM", "1:05 PM"},      {13054207, "h:nn am/pm", "1:05 pm"},
        {13054207, "h:nn Am/pM", "1:05 pM"},      {13054207, "hh:nn a/p", "01:05 p"},
        {1054207, "h:nn AM/PM", "1:05 AM"},       {0, "h:nn AM/PM", "12:00 AM"},
        {12000000, "h:nn AM/PM", "12:00 PM"},     {23595999, "AM/PM hh", "PM 11"}, // the marker anywhere
        {0, "hh:nn:ss.cc", "00:00:00.00"},        {13054207, "d y q w", "d y q w"}, // date letters are text
        {13054207, "hh\" h \"nn", "13 h 05"},     {1054207, "hhh", "011"},         // hh then h
        {24000000, "hh:nn", "24:00"},             // not validated
    };
    for (const PictureRow &r : rows)
        EXPECT_EQ(format_time(r.value, r.picture), r.want) << r.value << " \"" << r.picture << "\"";
}

// No picture, zero bytes in it, and a large one, whose output is in proportion.
TEST(DtPictures, NullZeroBytesAndLargePictures) {
    Bstr none;
    EXPECT_EQ(str(cDT_FormatDate(20000101, none.ref())), "");
    EXPECT_EQ(str(cDT_FormatTime(12000000, none.ref())), "");
    EXPECT_EQ(str(cDT_FormatDate(20000101, nullptr)), "");
    EXPECT_EQ(format_date(20000101, std::string("d\0m", 3)), std::string("1\0" "1", 3));
    EXPECT_EQ(format_time(13054207, std::string("h\0n", 3)), std::string("13\0" "5", 4));
    std::string picture;
    for (int i = 0; i < 200000; ++i)
        picture += "dd/";
    const std::string out = format_date(20000101, picture);
    EXPECT_EQ(out.size(), picture.size());
    EXPECT_EQ(out.substr(out.size() - 6), "01/01/");
}

// Runs of one letter millions long: each run is taken a token at a time, and
// the whole picture must be rendered in one pass (a picture rescanned at
// every character would not finish within the test run).
TEST(DtPictures, LongRunsOfOneLetter) {
    const size_t n = 4200000; // a multiple of 2, 5 and 6
    auto repeated = [](const std::string &piece, size_t times) {
        std::string s;
        s.reserve(piece.size() * times);
        for (size_t k = 0; k < times; ++k)
            s += piece;
        return s;
    };
    EXPECT_EQ(format_date(20000101, std::string(n, 'd')), repeated("Sa", n / 6)); // dddddd, the small day
    EXPECT_EQ(format_date(20000101, std::string(n, 'M')), repeated("J", n / 5));  // mmmmm, the tiny month
    EXPECT_EQ(format_date(20000101, std::string(n, 'x')), std::string(n, 'x'));
    EXPECT_EQ(format_date(20000101, repeated("dD", n / 2)), repeated("Sa", n / 6)); // case does not cut a run
    EXPECT_EQ(format_time(13054207, std::string(n, 'n')), repeated("05", n / 2));
    EXPECT_EQ(format_time(13054207, std::string(n, 'a')), std::string(n, 'a'));
    EXPECT_EQ(format_time(13054207, std::string(n, 'h') + "AM/PM"), repeated("01", n / 2) + "PM");
}

TEST(DtAscTime, FixedLayoutAndInvalidInput) {
    const struct {
        int32_t date, time;
        const char *want;
    } rows[] = {
        {20000101, 12300599, "Sat Jan  1 12:30:05 2000"}, {20261121, 0, "Sat Nov 21 00:00:00 2026"},
        {19991231, 23595900, "Fri Dec 31 23:59:59 1999"}, {20001301, 0, ""},
        {20010229, 0, ""}, {20000101, 24000000, ""}, {0, 12000000, ""},
    };
    for (const auto &r : rows)
        EXPECT_EQ(str(cGetAscTime(r.date, r.time)), r.want) << r.date << " " << r.time;
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
