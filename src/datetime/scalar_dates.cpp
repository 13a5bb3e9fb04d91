// Calendar and scalar dates: the exports over the calendar core.
//
// Integer arguments are VB Integers (16-bit, sign-extended); results written
// through ByRef Integers are the low 16 bits. A null ByRef pointer is simply
// not written.
#include "datetime/calendar.h"
#include "datetime/local_clock.h"
#include "frame/frame.h"

using namespace brindle::datetime;
using brindle::frame::guarded;
using brindle::frame::vb_bool;

namespace {

int16_t low16(int64_t value) { return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint64_t>(value))); }

void put(int16_t *target, int64_t value) {
    if (target != nullptr)
        *target = low16(value);
}

// Day of week, day of year and week of year answer -1 for an invalid date.
constexpr int16_t kInvalid = -1;

int16_t scalar_component(int32_t scalar, int32_t Date::*field) { return low16(date_from_scalar(scalar).*field); }

} // namespace

BRINDLE_EXPORT(int32_t) cDateToScalar(int16_t Year, int16_t Month, int16_t Day) {
    if (!valid_date(Year, Month, Day))
        return -1;
    return static_cast<int32_t>(scalar_from_date(Year, Month, Day));
}

// No validation: any day number gives the date the formulas produce.
BRINDLE_EXPORT(int16_t) cScalarToDate(int32_t Scalar, int16_t *Year, int16_t *Month, int16_t *Day) {
    const Date d = date_from_scalar(Scalar);
    put(Year, d.year);
    put(Month, d.month);
    put(Day, d.day);
    return low16(d.day);
}

BRINDLE_EXPORT(int32_t) cTimeToScalar(int16_t Hour, int16_t Minute, int16_t Second) {
    if (!valid_time(Hour, Minute, Second))
        return -1;
    return static_cast<int32_t>(scalar_from_time(Hour, Minute, Second));
}

BRINDLE_EXPORT(int16_t) cScalarToTime(int32_t Scalar, int16_t *Hour, int16_t *Minute, int16_t *Second) {
    int32_t h = 0, m = 0, s = 0;
    time_from_scalar(Scalar, h, m, s);
    put(Hour, h);
    put(Minute, m);
    put(Second, s);
    return low16(s);
}

// An invalid date counts as day number -1, so it gives the low 16 bits of
// -1 - 761793 like any other date would.
BRINDLE_EXPORT(int16_t) cDateToInt(int16_t Year, int16_t Month, int16_t Day) {
    const int64_t scalar = valid_date(Year, Month, Day) ? scalar_from_date(Year, Month, Day) : -1;
    return low16(scalar - kIntegerDateOffset);
}

BRINDLE_EXPORT(int16_t) cIntToDate(int16_t IntDate, int16_t *Year, int16_t *Month, int16_t *Day) {
    return cScalarToDate(int32_t{IntDate} + kIntegerDateOffset, Year, Month, Day);
}

BRINDLE_EXPORT(int16_t) cDayOfWeek(int16_t Year, int16_t Month, int16_t Day, int16_t Mode) {
    if (!valid_date(Year, Month, Day))
        return kInvalid;
    return low16(day_of_week(scalar_from_date(Year, Month, Day), Mode));
}

BRINDLE_EXPORT(int16_t) cDayOfYear(int16_t Year, int16_t Month, int16_t Day) {
    if (!valid_date(Year, Month, Day))
        return kInvalid;
    return low16(day_of_year(Year, Month, Day));
}

BRINDLE_EXPORT(int16_t) cWeekOfYear(int16_t Year, int16_t Month, int16_t Day, int16_t Mode) {
    if (!valid_date(Year, Month, Day))
        return kInvalid;
    return low16(week_of_year(Year, Month, Day, Mode));
}

BRINDLE_EXPORT(int16_t) cDaysInMonth(int16_t Year, int16_t Month) { return low16(days_in_month_windowed(Year, Month)); }

BRINDLE_EXPORT(int16_t) cIsLeapYear(int16_t Year) { return vb_bool(is_leap_year(Year)); }

BRINDLE_EXPORT(int16_t) cScalarYear(int32_t Scalar) { return scalar_component(Scalar, &Date::year); }
BRINDLE_EXPORT(int16_t) cScalarMonth(int32_t Scalar) { return scalar_component(Scalar, &Date::month); }
BRINDLE_EXPORT(int16_t) cScalarDay(int32_t Scalar) { return scalar_component(Scalar, &Date::day); }

// The scalar forms turn the day number into a date (16-bit fields, as the
// date forms receive them) and go through the date forms' validation.
BRINDLE_EXPORT(int16_t) cScalarDayOfWeek(int32_t Scalar, int16_t Mode) {
    const Date d = date_from_scalar(Scalar);
    return cDayOfWeek(low16(d.year), low16(d.month), low16(d.day), Mode);
}

BRINDLE_EXPORT(int16_t) cScalarDayOfYear(int32_t Scalar) {
    const Date d = date_from_scalar(Scalar);
    return cDayOfYear(low16(d.year), low16(d.month), low16(d.day));
}

BRINDLE_EXPORT(int16_t) cScalarWeekOfYear(int32_t Scalar, int16_t Mode) {
    const Date d = date_from_scalar(Scalar);
    return cWeekOfYear(low16(d.year), low16(d.month), low16(d.day), Mode);
}

BRINDLE_EXPORT(int32_t) cActualDateInScalar() {
    const LocalTime now = local_now();
    return static_cast<int32_t>(scalar_from_date(now.year, now.month, now.day));
}

// An invalid date packs day number -1.
BRINDLE_EXPORT(int32_t)
cDateHourToLong(int16_t Year, int16_t Month, int16_t Day, int16_t Hour, int16_t Minute, int16_t UserValue) {
    const int64_t scalar = valid_date(Year, Month, Day) ? scalar_from_date(Year, Month, Day) : -1;
    return static_cast<int32_t>(pack_date_hour(scalar, int32_t{Hour} * 60 + Minute, UserValue));
}

BRINDLE_EXPORT(int16_t)
cLongToDateHour(int32_t DateHour, int16_t *Year, int16_t *Month, int16_t *Day, int16_t *Hour, int16_t *Minute,
                int16_t *UserValue) {
    const brindle::datetime::DateHour v = unpack_date_hour(static_cast<uint32_t>(DateHour));
    const Date d = date_from_scalar(v.scalar);
    put(Year, d.year);
    put(Month, d.month);
    put(Day, d.day);
    put(Hour, v.minutes / 60);
    put(Minute, v.minutes % 60);
    put(UserValue, v.user);
    return low16(v.user);
}

BRINDLE_EXPORT(int32_t) cDateHourToLongExt(int32_t Scalar, int16_t Minutes) {
    return static_cast<int32_t>(pack_date_hour(Scalar, Minutes, 0));
}

// The Integer receives the low word shifted right by 5: the minutes with the
// user value dropped.
BRINDLE_EXPORT(int16_t) cLongToDateHourExt(int32_t DateHour, int32_t *Scalar, int16_t *Word) {
    const brindle::datetime::DateHour v = unpack_date_hour(static_cast<uint32_t>(DateHour));
    if (Scalar != nullptr)
        *Scalar = v.scalar;
    put(Word, (static_cast<uint32_t>(DateHour) & 0xFFFFu) >> 5);
    return low16(v.minutes);
}

// The eight fields of the local system time, in the system's own order.
BRINDLE_EXPORT(void)
cGetLocalDateTime(int16_t *Year, int16_t *Month, int16_t *DayOfWeek, int16_t *Day, int16_t *Hour, int16_t *Minute,
                  int16_t *Second, int16_t *Milliseconds) {
    const LocalTime now = local_now();
    put(Year, now.year);
    put(Month, now.month);
    put(DayOfWeek, now.day_of_week);
    put(Day, now.day);
    put(Hour, now.hour);
    put(Minute, now.minute);
    put(Second, now.second);
    put(Milliseconds, now.millisecond);
}

BRINDLE_EXPORT(int16_t)
cSetLocalDateTime(int16_t Year, int16_t Month, int16_t Day, int16_t Hour, int16_t Minute, int16_t Second,
                  int16_t Milliseconds) {
    return guarded(int16_t{0}, [&] {
        return vb_bool(set_local_fields(LocalTimeFields{Year, Month, Day, Hour, Minute, Second, Milliseconds}));
    });
}

// Only the time of day; the milliseconds are always set to 250.
BRINDLE_EXPORT(int16_t) cSetLocalTime(int16_t Hour, int16_t Minute, int16_t Second) {
    return guarded(int16_t{0},
                   [&] { return vb_bool(set_local_fields(LocalTimeFields{0, 0, 0, Hour, Minute, Second, 250})); });
}
