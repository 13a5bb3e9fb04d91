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

bool set_local_time(const LocalTime &value) noexcept {
    if (!is_settable(value))
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
