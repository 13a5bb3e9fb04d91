// Clocks on Windows: the system tick count and the local time of the system.
#include "platform/clock.h"
#include "platform/ole.h"

namespace brindle::platform {

uint32_t tick_count() noexcept { return GetTickCount(); }

LocalTime local_now() noexcept {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    return LocalTime{t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds, t.wDayOfWeek};
}

namespace {

bool leap(int year) { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }

// A real date and time in 1601..30827, checked here rather than left to the
// system: SYSTEMTIME holds 16-bit fields (a year of 67137 would wrap to
// 1601), and the clock must never be set to a date the caller did not give.
bool settable(const LocalTime &v) {
    static const int kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (v.year < 1601 || v.year > 30827 || v.month < 1 || v.month > 12 || v.day < 1)
        return false;
    const int length = v.month == 2 && leap(v.year) ? 29 : kLengths[v.month - 1];
    return v.day <= length && v.hour >= 0 && v.hour <= 23 && v.minute >= 0 && v.minute <= 59 && v.second >= 0 &&
           v.second <= 59 && v.millisecond >= 0 && v.millisecond <= 999;
}

} // namespace

bool set_local_time(const LocalTime &value) noexcept {
    if (!settable(value))
        return false;
    SYSTEMTIME t{};
    t.wYear = static_cast<WORD>(value.year);
    t.wMonth = static_cast<WORD>(value.month);
    t.wDay = static_cast<WORD>(value.day);
    t.wHour = static_cast<WORD>(value.hour);
    t.wMinute = static_cast<WORD>(value.minute);
    t.wSecond = static_cast<WORD>(value.second);
    t.wMilliseconds = static_cast<WORD>(value.millisecond);
    // Needs the system-time privilege, which an ordinary process lacks; the
    // call then fails and changes nothing.
    return SetLocalTime(&t) != 0;
}

} // namespace brindle::platform
