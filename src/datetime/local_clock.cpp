#include "datetime/local_clock.h"

namespace brindle::datetime {

namespace {

LocalTime platform_now() { return platform::local_now(); }
bool platform_set(const LocalTime &value) { return platform::set_local_time(value); }

LocalNowFn g_now = platform_now;
SetLocalFn g_set = platform_set;

} // namespace

LocalTime local_now() { return g_now(); }

LocalTime merge_local_time(LocalTime now, const LocalTimeFields &f) {
    if (f.year > 0)
        now.year = f.year;
    if (f.month > 0)
        now.month = f.month;
    if (f.day > 0)
        now.day = f.day;
    if (f.hour >= 0 && f.hour <= 23)
        now.hour = f.hour;
    if (f.minute >= 0 && f.minute <= 59)
        now.minute = f.minute;
    if (f.second >= 0 && f.second <= 59)
        now.second = f.second;
    if (f.millisecond >= 0 && f.millisecond <= 999)
        now.millisecond = f.millisecond;
    return now;
}

bool set_local_fields(const LocalTimeFields &fields) { return g_set(merge_local_time(g_now(), fields)); }

void replace_local_clock_for_tests(LocalNowFn now, SetLocalFn set) {
    g_now = now != nullptr ? now : platform_now;
    g_set = set != nullptr ? set : platform_set;
}

} // namespace brindle::datetime
