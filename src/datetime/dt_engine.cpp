#include "datetime/dt_engine.h"

#include "platform/clock.h"

namespace brindle::datetime::dt {

namespace {

// Month lengths with February at 29; the leap rule trims it.
constexpr int kMonthLength[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int kDaysBefore[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

constexpr int64_t kDayNumberOffset = 1721119; // day number of 0000-03-00 on the March-based count

// Results are Longs: keep the low 32 bits as the caller's integer would.
int32_t to_long(int64_t value) noexcept { return static_cast<int32_t>(static_cast<uint32_t>(value)); }

// The March-based year: January and February belong to the previous year,
// which is split into century and two-digit year with the borrow done on the
// two-digit part (yy 0 becomes 99 of the century before).
struct MarchYear {
    int64_t century;
    int64_t yy;
    int64_t month; // March 0 .. February 11
};

MarchYear march_year(const DateFields &f) noexcept {
    MarchYear r{f.year / 100, f.year % 100, f.month};
    if (f.month < 3) {
        r.month += 9;
        if (r.yy == 0) {
            r.yy = 99;
            --r.century;
        } else {
            --r.yy;
        }
    } else {
        r.month -= 3;
    }
    return r;
}

int64_t floor_mod7(int64_t v) noexcept { return ((v % 7) + 7) % 7; }

} // namespace

DateFields split_date(int32_t date) noexcept {
    const int64_t v = date;
    return DateFields{v / 10000, (v % 10000) / 100, v % 100};
}

int32_t make_date(int64_t year, int64_t month, int64_t day) noexcept {
    return to_long(year * 10000 + month * 100 + day);
}

int64_t two_digit_year(int32_t date) noexcept { return (static_cast<int64_t>(date) % 1000000) / 10000; }

TimeFields split_time(int32_t time) noexcept {
    const int64_t v = time;
    return TimeFields{v / 1000000, (v % 1000000) / 10000, (v % 10000) / 100, v % 100};
}

int32_t make_time(int64_t hours, int64_t minutes, int64_t seconds, int64_t hundredths) noexcept {
    return to_long(hours * 1000000 + minutes * 10000 + seconds * 100 + hundredths);
}

bool is_leap(int64_t year) noexcept { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int32_t date_to_days(int32_t date) noexcept {
    const MarchYear my = march_year(split_date(date));
    const int64_t day = split_date(date).day;
    return to_long((146097 * my.century) / 4 + (1461 * my.yy) / 4 + (153 * my.month + 2) / 5 + day +
                   kDayNumberOffset);
}

// The inverse of date_to_days: peel off 400-year periods (146097 days),
// then 4-year periods (1461 days), then 5-month periods (153 days) of the
// March-based year.
int32_t days_to_date(int64_t days) noexcept {
    int64_t j = days - kDayNumberOffset;
    int64_t century = (4 * j - 1) / 146097;
    j = 4 * j - 1 - 146097 * century;
    int64_t d = j / 4;
    int64_t yy = (4 * d + 3) / 1461;
    d = 4 * d + 3 - 1461 * yy;
    d = (d + 4) / 4;
    int64_t month = (5 * d - 3) / 153;
    d = 5 * d - 3 - 153 * month;
    d = (d + 5) / 5;
    int64_t year = 100 * century + yy;
    if (month < 10) {
        month += 3;
    } else {
        month -= 9;
        ++year;
    }
    return make_date(year, month, d);
}

// Zeller's congruence with March as month 1 of the year: the +77 keeps the
// sum positive for ordinary centuries; the remainder is taken as 0..6 in
// every case so that far years still name a real weekday.
int day_of_week(int32_t date) noexcept {
    const DateFields f = split_date(date);
    const MarchYear my = march_year(f);
    const int64_t m = my.month + 1; // March 1 .. February 12
    const int64_t w = f.day + (13 * m - 1) / 5 + my.yy + my.yy / 4 + my.century / 4 - 2 * my.century + 77;
    return static_cast<int>(floor_mod7(w));
}

int32_t day_of_year(int32_t date) noexcept {
    const DateFields f = split_date(date);
    if (f.month < 1 || f.month > 12)
        return 0;
    const int64_t leap_day = f.month >= 3 && is_leap(two_digit_year(date)) ? 1 : 0;
    return to_long(kDaysBefore[f.month - 1] + f.day + leap_day);
}

// k is the weekday (0 Sunday) of the day before 1 January, counted from 1501
// with C's truncating division, so weeks run Sunday to Saturday and the days
// before the first Sunday are week 0. The 400-year term only steps at 2201
// and 2601, so from 2001 to 2200 (and 2401 to 2600) k is one less than that
// weekday and weeks begin on Mondays instead; callers have long relied on
// these numbers, so the formula stays exactly as it is.
int32_t week_of_year(int32_t date) noexcept {
    const int64_t y = split_date(date).year - 1501;
    const int64_t k = ((y - 300) / 400 + 365 * y - y / 100 + y / 4 - 29867) % 7;
    return to_long((day_of_year(date) + k) / 7);
}

int32_t quarter(int32_t date) noexcept { return to_long((split_date(date).month - 1) / 3 + 1); }

int32_t next_week_day(int32_t date) noexcept {
    const int w = day_of_week(date);
    const int step = w == 5 ? 3 : w == 6 ? 2 : 1;
    return days_to_date(static_cast<int64_t>(date_to_days(date)) + step);
}

int32_t prev_week_day(int32_t date) noexcept {
    const int w = day_of_week(date);
    const int step = w == 1 ? 3 : w == 0 ? 2 : 1;
    return days_to_date(static_cast<int64_t>(date_to_days(date)) - step);
}

bool valid_date(int32_t date) noexcept {
    if (date == 0)
        return true;
    const DateFields f = split_date(date);
    if (f.month < 1 || f.month > 12 || f.day < 1 || f.day > kMonthLength[f.month - 1])
        return false;
    return !(f.month == 2 && f.day == 29 && !is_leap(two_digit_year(date)));
}

bool valid_time(int32_t time) noexcept {
    const TimeFields t = split_time(time);
    return t.hours < 24 && t.minutes < 60 && t.seconds < 60;
}

int32_t time_to_centiseconds(int32_t time) noexcept {
    const TimeFields t = split_time(time);
    return to_long(t.hundredths + (t.seconds + (t.minutes + t.hours * 60) * 60) * 100);
}

int32_t centiseconds_to_time(int64_t v) noexcept {
    return make_time(v / 360000, (v % 360000) / 6000, (v % 6000) / 100, v % 100);
}

int32_t pack_date(int32_t date) noexcept {
    const DateFields f = split_date(date);
    return to_long((((f.year - 1980) & 0x7F) << 9) | ((f.month & 0x0F) << 5) | (f.day & 0x1F));
}

int32_t unpack_date(int32_t packed) noexcept {
    const int64_t field = (packed >> 9) & 0x7F;
    const int64_t century = field + 80 <= 80 ? 20 : 19;
    return make_date(century * 100 + field + 80, (packed >> 5) & 0x0F, packed & 0x1F);
}

int32_t pack_time(int32_t time) noexcept {
    const TimeFields t = split_time(time);
    return to_long(((t.hours & 0x1F) << 11) | ((t.minutes & 0x3F) << 5) | ((t.seconds / 2) & 0x1F));
}

int32_t unpack_time(int32_t packed) noexcept {
    return make_time((packed >> 11) & 0x1F, (packed >> 5) & 0x3F, 2 * (packed & 0x1F), 0);
}

Moment future(Moment from, int32_t days, int32_t centiseconds) noexcept {
    if (from.date == 0 && from.time == 0)
        from = now();
    int64_t day_number = static_cast<int64_t>(date_to_days(from.date)) + days;
    int64_t cs = static_cast<int64_t>(time_to_centiseconds(from.time)) + centiseconds;
    if (cs >= kCentisecondsPerDay) {
        day_number += cs / kCentisecondsPerDay;
        cs %= kCentisecondsPerDay;
    }
    return Moment{days_to_date(day_number), centiseconds_to_time(cs)};
}

Moment past(Moment from, int32_t days, int32_t centiseconds) noexcept {
    if (from.date == 0 && from.time == 0)
        from = now();
    int64_t day_number = static_cast<int64_t>(date_to_days(from.date)) - days;
    const int64_t start = time_to_centiseconds(from.time);
    int64_t cs = start - centiseconds;
    if (cs < 0) {
        const int64_t borrowed = (static_cast<int64_t>(centiseconds) - start + kCentisecondsPerDay - 1) /
                                 kCentisecondsPerDay;
        day_number -= borrowed;
        cs += borrowed * kCentisecondsPerDay;
    }
    return Moment{days_to_date(day_number), centiseconds_to_time(cs)};
}

namespace {

int32_t date_of(const platform::LocalTime &t) noexcept { return make_date(t.year, t.month, t.day); }

int32_t time_of(const platform::LocalTime &t) noexcept {
    return make_time(t.hour, t.minute, t.second, t.millisecond / 10);
}

} // namespace

int32_t today() noexcept { return date_of(platform::local_now()); }

int32_t time_now() noexcept { return time_of(platform::local_now()); }

// One reading of the clock, so that a call at midnight cannot pair
// yesterday's date with today's time.
Moment now() noexcept {
    const platform::LocalTime t = platform::local_now();
    return Moment{date_of(t), time_of(t)};
}

} // namespace brindle::datetime::dt
