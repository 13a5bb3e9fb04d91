// The portable part of the clock layer.
#include "platform/clock.h"

namespace brindle::platform {

namespace {

bool leap(int year) { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }

} // namespace

bool is_settable(const LocalTime &v) noexcept {
    static const int kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (v.year < 1601 || v.year > 30827 || v.month < 1 || v.month > 12 || v.day < 1)
        return false;
    const int length = v.month == 2 && leap(v.year) ? 29 : kLengths[v.month - 1];
    return v.day <= length && v.hour >= 0 && v.hour <= 23 && v.minute >= 0 && v.minute <= 59 && v.second >= 0 &&
           v.second <= 59 && v.millisecond >= 0 && v.millisecond <= 999;
}

} // namespace brindle::platform
