// The DT family's date and time engine: dates written as the decimal number
// YYYYMMDD and times as HHMMSSCC (hundredths), each in one Long, so that they
// sort and compare as plain integers. Arithmetic goes through the Julian day
// number (20000101 is day 2451545).
//
// The family keeps its own rules, independent of the library's scalar
// calendar: the day number by the March-based century formula, the day of
// the week by Zeller's congruence, a leap test on the two-digit year for the
// day of the year and for validation, and its own week-of-year formula.
//
// Nothing here validates its input: a month of 13 or a negative value goes
// through the formulas as it is (in 64-bit arithmetic, so nothing overflows;
// results are cut to 32 bits as a Long would hold them). Only table look-ups
// are guarded.
#pragma once

#include <cstdint>

namespace brindle::datetime::dt {

// Fields of a DT date by decimal division (C's truncating division).
struct DateFields {
    int64_t year;
    int64_t month;
    int64_t day;
};
DateFields split_date(int32_t date) noexcept;
int32_t make_date(int64_t year, int64_t month, int64_t day) noexcept;

// The two-digit year, (date mod 1000000) div 10000.
int64_t two_digit_year(int32_t date) noexcept;

// Fields of a DT time.
struct TimeFields {
    int64_t hours;
    int64_t minutes;
    int64_t seconds;
    int64_t hundredths;
};
TimeFields split_time(int32_t time) noexcept;
int32_t make_time(int64_t hours, int64_t minutes, int64_t seconds, int64_t hundredths) noexcept;

// Hundredths of a second in a day.
inline constexpr int64_t kCentisecondsPerDay = 8640000;

// The leap rule (divisible by 4 and not by 100, or by 400), on whatever year
// the caller gives it; the day of the year and validation give it the
// two-digit year, so 1900 and 2100 count as leap years there.
bool is_leap(int64_t year) noexcept;

// Julian day number of a date and back.
int32_t date_to_days(int32_t date) noexcept;
int32_t days_to_date(int64_t days) noexcept;

// Day of the week by Zeller's congruence: 0 Sunday .. 6 Saturday.
int day_of_week(int32_t date) noexcept;

// Day of the year 1..366: days before the month plus the day, plus one from
// March on when the two-digit year is a leap year. 0 for a month outside
// 1..12 (there is no table entry for it).
int32_t day_of_year(int32_t date) noexcept;

// Week of the year by the family's formula (see the definition).
int32_t week_of_year(int32_t date) noexcept;

// Quarter: (month - 1) div 3 + 1.
int32_t quarter(int32_t date) noexcept;

// The next or previous working day (Monday to Friday).
int32_t next_week_day(int32_t date) noexcept;
int32_t prev_week_day(int32_t date) noexcept;

// Validation: month 1..12, day 1..month length, 29 February only when the
// two-digit year is a leap year; 0 (no date) is valid. A time needs hours
// below 24 and minutes and seconds below 60; hundredths are not checked.
bool valid_date(int32_t date) noexcept;
bool valid_time(int32_t time) noexcept;

// Centiseconds since midnight and back.
int32_t time_to_centiseconds(int32_t time) noexcept;
int32_t centiseconds_to_time(int64_t centiseconds) noexcept;

// The 16-bit date and time words of a DOS/FAT directory entry. Each field is
// cut to its width when packing. Unpacking a date gives year field + 1980,
// except that the field 0 (1980) comes back as 2080: the century is chosen as
// 20 when field + 80 <= 80, else 19. Existing callers rely on that.
int32_t pack_date(int32_t date) noexcept;
int32_t unpack_date(int32_t packed) noexcept;
int32_t pack_time(int32_t time) noexcept;
int32_t unpack_time(int32_t packed) noexcept;

// A date and time moved forwards or backwards. When both are 0 they start at
// now. Centiseconds that pass midnight carry (or borrow) whole days.
struct Moment {
    int32_t date;
    int32_t time;
};
Moment future(Moment from, int32_t days, int32_t centiseconds) noexcept;
Moment past(Moment from, int32_t days, int32_t centiseconds) noexcept;

// The local date and time now.
int32_t today() noexcept;
int32_t time_now() noexcept;
Moment now() noexcept;

} // namespace brindle::datetime::dt
