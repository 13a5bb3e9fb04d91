#include "datetime/calendar.h"

namespace brindle::datetime {

int32_t month_length(int64_t year, int32_t month) {
    static constexpr int32_t kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12)
        return 0;
    return month == 2 && is_leap_year(year) ? 29 : kLengths[month - 1];
}

bool valid_date(int32_t year, int32_t month, int32_t day) {
    return month >= 1 && month <= 12 && day >= 1 && day <= month_length(year, month);
}

bool valid_time(int32_t, int32_t minute, int32_t second) {
    // Tested as unsigned so that a negative field fails too.
    return static_cast<uint32_t>(minute) < 60u && static_cast<uint32_t>(second) < 60u;
}

int64_t scalar_from_date(int32_t year, int32_t month, int32_t day) {
    int64_t n = days_in_years(int64_t{year} - 1) + days_before_month(month) + day;
    // The month formula assumes a 30-day February.
    if (month > 2)
        n -= is_leap_year(year) ? 1 : 2;
    return n;
}

Date date_from_scalar(int64_t n) {
    // A first guess from the mean year of 146097 / 400 days, then forward to
    // the year that holds day n. For a positive n the guess is never past
    // that year and at most one or two short of it (64-bit, so no product
    // overflows); for other n the loop still ends within a step or two.
    int64_t year = n * 400 / 146097;
    while (days_in_years(year) < n)
        ++year;
    int64_t doy = n - days_in_years(year - 1);
    if (doy > 59) {
        // Back to the 30-day-February numbering of days_before_month, so the
        // 60th day of a leap year stays 29 February.
        doy += 2;
        if (is_leap_year(year))
            doy -= doy > 62 ? 1 : 2;
    }
    const int64_t month = (doy * 100 + 3007) / 3057;
    const int64_t day = doy - days_before_month(month);
    return Date{static_cast<int32_t>(year), static_cast<int32_t>(month), static_cast<int32_t>(day)};
}

int64_t scalar_from_time(int32_t hour, int32_t minute, int32_t second) {
    return (int64_t{hour} * 60 + minute) * 60 + second;
}

void time_from_scalar(int32_t seconds, int32_t &hour, int32_t &minute, int32_t &second) {
    hour = seconds / 3600;
    minute = (seconds - hour * 3600) / 60;
    second = seconds % 60;
}

int32_t day_of_year(int32_t year, int32_t month, int32_t day) {
    return static_cast<int32_t>(scalar_from_date(year, month, day) - scalar_from_date(year, 1, 1) + 1);
}

int32_t day_of_week(int64_t scalar, int32_t mode) {
    if (mode == 0)
        return static_cast<int32_t>(scalar % 7);
    if (mode == 1)
        return static_cast<int32_t>((scalar - 1) % 7 + 1);
    return static_cast<int32_t>((scalar - 1) % 7);
}

int32_t week_of_year(int32_t year, int32_t month, int32_t day, int32_t mode) {
    const int64_t d = day_of_year(year, month, day);
    const int64_t j = (scalar_from_date(year, 1, 1) - (mode != 0 ? 1 : 0)) % 7;
    int64_t week = (j + d - 1) / 7;
    if (mode == 0)
        return static_cast<int32_t>(week + 1);
    if (j < 4)
        ++week;
    // The week of 31 December has d >= 365, so this recursion ends at once.
    if (mode == 1 && week == 0)
        return week_of_year(year, 12, 31, 1);
    return static_cast<int32_t>(week);
}

int32_t days_in_month_windowed(int32_t year, int32_t month) {
    if (month == 2)
        return is_leap_year(window_year(year)) ? 29 : 28;
    if (month < 1 || month > 12)
        return -1;
    return month_length(2001, month);
}

uint32_t pack_date_hour(int64_t scalar, int32_t minutes, int32_t user) {
    const uint32_t days = static_cast<uint32_t>(scalar + kDateHourBias) & 0xFFFFu;
    return days << 16 | (static_cast<uint32_t>(minutes) & 0x7FFu) << 5 | (static_cast<uint32_t>(user) & 31u);
}

DateHour unpack_date_hour(uint32_t value) {
    return DateHour{static_cast<int32_t>(value >> 16) + kDateHourBase, static_cast<int32_t>(value >> 5 & 0x7FFu),
                    static_cast<int32_t>(value & 31u)};
}

} // namespace brindle::datetime
