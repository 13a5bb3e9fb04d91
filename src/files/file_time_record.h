// File times (100-nanosecond counts since 1601-01-01 UTC) as the calendar
// record clients pass, and as the short date and 24-hour time strings of
// the user's settings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace brindle::files {

// The system's calendar time record: eight 16-bit fields.
struct CalendarTime {
    int16_t year = 0, month = 0, day_of_week = 0, day = 0, hour = 0, minute = 0, second = 0, milliseconds = 0;
};

// The record of a file time (UTC, day of week 0 = Sunday); nothing for a
// count the system cannot convert (negative, or at or past 2^63).
std::optional<CalendarTime> calendar_from_file_time(int64_t file_time) noexcept;
// The file time of a record; nothing when a field is out of range (year
// 1601 to 30827, month 1 to 12, a day the month has, hour below 24, minute
// and second below 60, milliseconds below 1000). The day of week is ignored.
std::optional<int64_t> file_time_from_calendar(const CalendarTime &t) noexcept;

// Local date and time strings of a file time: the date in the order and
// with the separator of the user's settings (day and month with two digits,
// the year with four), the time as hours, minutes and seconds with two
// digits each and the time separator, on a 24-hour clock. Empty when the
// time cannot be shown in local time.
std::string local_date_text(int64_t file_time);
std::string local_time_text(int64_t file_time);

// The DT forms of a file time in local time: year * 10000 + month * 100 +
// day, and hour * 1000000 + minute * 10000 + second * 100 + hundredths; -1
// when it cannot be shown.
int32_t local_dt_date(int64_t file_time);
int32_t local_dt_time(int64_t file_time);

} // namespace brindle::files
