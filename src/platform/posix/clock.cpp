#include "platform/clock.h"

#include <ctime>
#include <sys/time.h>

namespace brindle::platform {

uint32_t tick_count() noexcept {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    const uint64_t ms = static_cast<uint64_t>(ts.tv_sec) * 1000u + static_cast<uint64_t>(ts.tv_nsec) / 1000000u;
    return static_cast<uint32_t>(ms);
}

LocalTime local_now() noexcept {
    timespec ts{};
    clock_gettime(CLOCK_REALTIME, &ts);
    const time_t seconds = ts.tv_sec;
    tm parts{};
    localtime_r(&seconds, &parts);
    return LocalTime{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                     parts.tm_sec,         static_cast<int>(ts.tv_nsec / 1000000), parts.tm_wday};
}

bool set_local_time(const LocalTime &value) noexcept {
    if (!is_settable(value))
        return false;
    tm parts{};
    parts.tm_year = value.year - 1900;
    parts.tm_mon = value.month - 1;
    parts.tm_mday = value.day;
    parts.tm_hour = value.hour;
    parts.tm_min = value.minute;
    parts.tm_sec = value.second;
    parts.tm_isdst = -1;
    const time_t seconds = mktime(&parts);
    if (seconds == static_cast<time_t>(-1))
        return false;
    timeval tv{seconds, static_cast<suseconds_t>(value.millisecond) * 1000};
    return settimeofday(&tv, nullptr) == 0;
}

} // namespace brindle::platform

namespace brindle::platform {

int64_t calendar_time() noexcept { return static_cast<int64_t>(time(nullptr)); }

bool local_time_at(int64_t seconds, LocalTime &out) noexcept {
    const time_t t = static_cast<time_t>(seconds);
    if (static_cast<int64_t>(t) != seconds)
        return false;
    tm parts{};
    if (localtime_r(&t, &parts) == nullptr)
        return false;
    out = LocalTime{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                    parts.tm_sec,         0,                 parts.tm_wday};
    return true;
}

} // namespace brindle::platform
