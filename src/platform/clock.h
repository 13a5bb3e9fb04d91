// Clocks: the tick counter behind every timer and wait, and the local date
// and time.
#pragma once

#include <cstdint>

namespace brindle::platform {

// Milliseconds from an arbitrary origin, truncated to 32 bits (the system
// tick count on Windows, a monotonic clock on POSIX). Elapsed times are
// unsigned differences of two readings, so a wrap of the counter is harmless.
uint32_t tick_count() noexcept;

struct LocalTime {
    int year;        // 1601 ..
    int month;       // 1 .. 12
    int day;         // 1 .. 31
    int hour;        // 0 .. 23
    int minute;      // 0 .. 59
    int second;      // 0 .. 59
    int millisecond; // 0 .. 999
    int day_of_week; // 0 = Sunday .. 6 = Saturday (ignored when setting)
};

// The local date and time now.
LocalTime local_now() noexcept;

// A real date and time in 1601..30827, the range the Windows call accepts.
// Checked before any system call: the clock must never be set to a date the
// caller did not give (mktime would turn 31 April into 1 May, and SYSTEMTIME
// holds 16-bit fields, so a year of 67137 would wrap to 1601).
bool is_settable(const LocalTime &value) noexcept;

// Sets the system's local date and time; false when the system refuses
// (an unprivileged process), in which case nothing has changed. A value that
// is not a real date and time (month 13, 30 February, hour 24, a year
// outside 1601..30827) is refused too, never normalised into another date.
bool set_local_time(const LocalTime &value) noexcept;

// The C runtime's calendar time: seconds since 1 January 1970 UTC (time()).
int64_t calendar_time() noexcept;

// Calendar time `seconds` as local time (the C runtime's localtime, to the
// second; millisecond 0); false when it cannot be represented.
bool local_time_at(int64_t seconds, LocalTime &out) noexcept;

} // namespace brindle::platform
