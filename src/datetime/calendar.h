// The calendar core: the scalar date (a day number in the proleptic Gregorian
// calendar, 1 January of year 1 = day 1), the scalar time (seconds since
// midnight) and the compact encodings built on them (the integer date and the
// date-hour long). Plain C++ so that every date family can share it.
//
// Years are never range-checked and the arithmetic is done in 64 bits, so any
// 16-bit year and any 32-bit day number give a defined (if meaningless)
// answer rather than an overflow.
#pragma once

#include <cstdint>

namespace brindle::datetime {

struct Date {
    int32_t year;
    int32_t month;
    int32_t day;
};

// Divisible by 400, or by 4 and not by 100. Year 0 is leap.
constexpr bool is_leap_year(int64_t year) { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }

// Days in all whole years 1..y (C division, truncating toward zero).
constexpr int64_t days_in_years(int64_t y) { return 365 * y + y / 4 - y / 100 + y / 400; }

// Days before month m in a year whose February had 30 days: 0, 31, 61, 92, ...
constexpr int64_t days_before_month(int64_t m) { return (m * 3057 - 3007) / 100; }

// 28..31 for month 1..12 of the given year (no windowing); 0 for another month.
int32_t month_length(int64_t year, int32_t month);

// Month 1..12 and day 1..month length; the year is not checked.
bool valid_date(int32_t year, int32_t month, int32_t day);

// Minute and second 0..59; the hour is not checked.
bool valid_time(int32_t hour, int32_t minute, int32_t second);

// The day number of a date; no validation (callers check first).
int64_t scalar_from_date(int32_t year, int32_t month, int32_t day);

// The date of a day number; no validation. Exact for every positive day
// number; a day number below 1 gives the date the same formulas produce.
Date date_from_scalar(int64_t scalar);

// (hour * 60 + minute) * 60 + second.
int64_t scalar_from_time(int32_t hour, int32_t minute, int32_t second);

// Seconds since midnight back to hour (not bounded), minute and second.
void time_from_scalar(int32_t seconds, int32_t &hour, int32_t &minute, int32_t &second);

// Day of the year 1..366 of a date (no validation).
int32_t day_of_year(int32_t year, int32_t month, int32_t day);

// Mode 0: scalar mod 7 (0 Sunday .. 6 Saturday); mode 1: 1 Monday .. 7 Sunday;
// any other mode: 0 Monday .. 6 Sunday.
int32_t day_of_week(int64_t scalar, int32_t mode);

// Week of the year. Mode 0: weeks start on Sunday and the week holding
// 1 January is week 1. Any other mode: weeks start on Monday and week 1 is
// the first with four days of the new year; in mode 1 a week 0 becomes the
// week of 31 December of the same year (deliberately not the previous year),
// and week 53 is never folded into the next year.
int32_t week_of_year(int32_t year, int32_t month, int32_t day, int32_t mode);

// Two-digit years in the windowing that the February length and the date
// check use: 0..50 is 2000..2050, 51..99 is 1951..1999, others unchanged.
constexpr int32_t window_year(int32_t year) {
    return year >= 0 && year <= 50 ? year + 2000 : year >= 51 && year <= 99 ? year + 1900 : year;
}

// 28..31; February follows the windowed year's leap rule; -1 for a month
// outside 1..12.
int32_t days_in_month_windowed(int32_t year, int32_t month);

// The integer date: a 16-bit day number whose 0 is 19 September 2086.
inline constexpr int32_t kIntegerDateOffset = 761793;
// Bits 31..16 of a date-hour long count days from 1 January 1900; that day's
// scalar is 693596 = 11 * 65536 - 27300.
inline constexpr int32_t kDateHourBase = 693596;
inline constexpr int32_t kDateHourBias = 27300;

// Packs a day number, minutes of day (11 bits) and a 5-bit user value.
uint32_t pack_date_hour(int64_t scalar, int32_t minutes, int32_t user);

struct DateHour {
    int32_t scalar;
    int32_t minutes; // 0 .. 2047
    int32_t user;    // 0 .. 31
};
DateHour unpack_date_hour(uint32_t value);

} // namespace brindle::datetime
