// The C runtime's calendar time and its local-time view, on Windows.
#include "platform/clock.h"

#include <ctime>

namespace brindle::platform {

int64_t calendar_time() noexcept { return static_cast<int64_t>(_time64(nullptr)); }

bool local_time_at(int64_t seconds, LocalTime &out) noexcept {
    const __time64_t t = seconds;
    tm parts{};
    // Refuses what the runtime cannot show (before 1970, after 3000).
    if (_localtime64_s(&parts, &t) != 0)
        return false;
    out = LocalTime{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                    parts.tm_sec,         0,                 parts.tm_wday};
    return true;
}

} // namespace brindle::platform
