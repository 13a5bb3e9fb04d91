#include "files/file_time_record.h"

#include "platform/clock.h"
#include "platform/file_info.h"
#include "platform/locale.h"

#include <cstdio>

namespace brindle::files {

namespace {

constexpr int64_t kTicksPerMs = 10000;
constexpr int64_t kMsPerDay = 86400000;

// Days from 1601-01-01 to a date of the proleptic Gregorian calendar and
// back (the civil-from-days arithmetic over 400-year eras, counted here
// from 1601, the first year of an era).
int64_t days_from_civil(int64_t y, int64_t m, int64_t d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 584694; // 584694: days from 0000-03-01 to 1601-01-01
}

void civil_from_days(int64_t z, int64_t *y, int64_t *m, int64_t *d) {
    z += 584694;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    *d = doy - (153 * mp + 2) / 5 + 1;
    *m = mp < 10 ? mp + 3 : mp - 9;
    *y = yoe + era * 400 + (*m <= 2);
}

bool leap(int64_t y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int days_in_month(int64_t y, int64_t m) {
    static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && leap(y) ? 29 : kDays[m - 1];
}

bool local_parts(int64_t file_time, platform::LocalTime &out) {
    if (file_time < platform::kUnixEpochAsFileTime)
        return false;
    const int64_t since = file_time - platform::kUnixEpochAsFileTime;
    if (!platform::local_time_at(since / 10000000, out))
        return false;
    out.millisecond = static_cast<int>(since % 10000000 / kTicksPerMs);
    return true;
}

} // namespace

std::optional<CalendarTime> calendar_from_file_time(int64_t file_time) noexcept {
    if (file_time < 0)
        return std::nullopt;
    const int64_t ms = file_time / kTicksPerMs;
    const int64_t days = ms / kMsPerDay, in_day = ms % kMsPerDay;
    int64_t y, m, d;
    civil_from_days(days, &y, &m, &d);
    CalendarTime t;
    t.year = static_cast<int16_t>(y);
    t.month = static_cast<int16_t>(m);
    t.day = static_cast<int16_t>(d);
    t.day_of_week = static_cast<int16_t>((days + 1) % 7); // 1601-01-01 was a Monday
    t.hour = static_cast<int16_t>(in_day / 3600000);
    t.minute = static_cast<int16_t>(in_day / 60000 % 60);
    t.second = static_cast<int16_t>(in_day / 1000 % 60);
    t.milliseconds = static_cast<int16_t>(in_day % 1000);
    return t;
}

std::optional<int64_t> file_time_from_calendar(const CalendarTime &t) noexcept {
    if (t.year < 1601 || t.year > 30827 || t.month < 1 || t.month > 12 || t.day < 1 ||
        t.day > days_in_month(t.year, t.month) || t.hour < 0 || t.hour > 23 || t.minute < 0 || t.minute > 59 ||
        t.second < 0 || t.second > 59 || t.milliseconds < 0 || t.milliseconds > 999)
        return std::nullopt;
    const int64_t days = days_from_civil(t.year, t.month, t.day);
    const int64_t ms = days * kMsPerDay + t.hour * 3600000LL + t.minute * 60000LL + t.second * 1000LL + t.milliseconds;
    return ms * kTicksPerMs;
}

std::string local_date_text(int64_t file_time) {
    platform::LocalTime lt;
    if (!local_parts(file_time, lt))
        return std::string();
    const platform::LocaleSettings s = platform::read_locale_settings();
    char buf[64];
    const char sep = s.date_separator;
    if (s.date_order == '1')
        std::snprintf(buf, sizeof buf, "%02d%c%02d%c%04d", lt.day, sep, lt.month, sep, lt.year);
    else if (s.date_order == '2')
        std::snprintf(buf, sizeof buf, "%04d%c%02d%c%02d", lt.year, sep, lt.month, sep, lt.day);
    else
        std::snprintf(buf, sizeof buf, "%02d%c%02d%c%04d", lt.month, sep, lt.day, sep, lt.year);
    return buf;
}

std::string local_time_text(int64_t file_time) {
    platform::LocalTime lt;
    if (!local_parts(file_time, lt))
        return std::string();
    const char sep = platform::read_locale_settings().time_separator;
    char buf[64];
    std::snprintf(buf, sizeof buf, "%02d%c%02d%c%02d", lt.hour, sep, lt.minute, sep, lt.second);
    return buf;
}

int32_t local_dt_date(int64_t file_time) {
    platform::LocalTime lt;
    return local_parts(file_time, lt) ? lt.year * 10000 + lt.month * 100 + lt.day : -1;
}

int32_t local_dt_time(int64_t file_time) {
    platform::LocalTime lt;
    return local_parts(file_time, lt) ? lt.hour * 1000000 + lt.minute * 10000 + lt.second * 100 + lt.millisecond / 10
                                      : -1;
}

} // namespace brindle::files
