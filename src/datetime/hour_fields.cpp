// Hour, balance and current-time fields: the exports. Times of day are
// minutes of day (0..1439) or seconds of day; balances are signed minutes.
// Printers use the locale's time separator, read once on first use.
#include "datetime/calendar.h"
#include "datetime/hour_text.h"
#include "datetime/local_clock.h"
#include "datetime/locale_state.h"
#include "frame/frame.h"
#include "platform/locale.h"

#include <cstdio>

using namespace brindle::datetime;
using namespace brindle::frame;

namespace {

char time_separator() { return locale_state().time_separator; }

// Minutes of day of the calendar time now + offset seconds, in local time;
// 0 when that moment cannot be shown as local time.
bool corrected_local(int32_t offset, LocalTime &out) {
    return brindle::platform::local_time_at(brindle::platform::calendar_time() + offset, out);
}

BSTR hour_field_of(const VARIANT *minutes, int32_t width, bool fill, bool decimal) {
    return guarded_string([&] {
        return new_string(hour_field(variant_to_long(minutes), width, fill, decimal, time_separator()));
    });
}

BSTR locale_text(brindle::platform::LocaleText item) {
    return guarded_string([&] { return new_string(brindle::platform::read_locale_text(item)); });
}

BSTR one_char(char c) {
    return guarded_string([&] { return new_string(std::string_view(&c, 1)); });
}

} // namespace

// The year is windowed first: 0..50 is 2000..2050, 51..99 is 1951..1999.
BRINDLE_EXPORT(int16_t) cIsDate(int16_t Year, int16_t Month, int16_t Day) {
    return vb_bool(valid_date(window_year(Year), Month, Day));
}

BRINDLE_EXPORT(int16_t) cIsHour(int16_t Hour, int16_t Minute, int16_t Second) {
    return vb_bool(Hour >= 0 && Hour <= 23 && valid_time(Hour, Minute, Second));
}

BRINDLE_EXPORT(int16_t) cIsBalance(int32_t Hours, int16_t Minute, int16_t Second) {
    return vb_bool(Hours >= -9999 && Hours <= 99999 && valid_time(0, Minute, Second));
}

// to - from in 16 bits, one day added when that is negative.
BRINDLE_EXPORT(int16_t) cTimeBetween(int16_t FromTime, int16_t ToTime) {
    const int16_t difference = static_cast<int16_t>(static_cast<uint16_t>(ToTime - FromTime));
    return static_cast<int16_t>(difference < 0 ? difference + 1440 : difference);
}

BRINDLE_EXPORT(int32_t) cSecondBetween(int32_t FromSecond, int32_t ToSecond) {
    const int32_t difference = static_cast<int32_t>(static_cast<uint32_t>(ToSecond) - static_cast<uint32_t>(FromSecond));
    return difference < 0 ? difference + 86400 : difference;
}

// One wrap only: 2900 gives 1460.
BRINDLE_EXPORT(int16_t) cAddTime(int16_t Minutes) {
    if (Minutes < 0)
        return static_cast<int16_t>(Minutes + 1440);
    if (Minutes >= 1440)
        return static_cast<int16_t>(Minutes - 1440);
    return Minutes;
}

// Is the time inside the window start..end (both ends included)? A window
// whose start lies after its end crosses midnight.
BRINDLE_EXPORT(int16_t) cCheckTime(int16_t Minutes, int16_t StartTime, int16_t EndTime) {
    const int16_t start = cAddTime(StartTime), end = cAddTime(EndTime);
    if (start < end)
        return vb_bool(start <= Minutes && Minutes <= end);
    if (start > end)
        return vb_bool((start <= Minutes && Minutes < 1440) || (0 <= Minutes && Minutes <= end));
    return vb_bool(Minutes == start);
}

// Strictly between: a value equal to either bound is outside.
BRINDLE_EXPORT(int16_t) cTrueBetween(VARIANT *Value, VARIANT *Low, VARIANT *High) {
    const int32_t a = variant_to_long(Value), low = variant_to_long(Low), high = variant_to_long(High);
    return vb_bool(low < a && a < high);
}

BRINDLE_EXPORT(BSTR) cAddTwoTimes(BSTR *Time1, BSTR *Time2) {
    return guarded_string([&] {
        std::string sum;
        if (!add_hms_texts(StrArg::by_ref(Time1).bytes(), StrArg::by_ref(Time2).bytes(), time_separator(), sum))
            return empty_string();
        return new_string(sum);
    });
}

// A Variant holding a Long: the minutes of the hour text.
BRINDLE_EXPORT(VARIANT) cHourTo(BSTR *Txt) {
    return long_variant(guarded(int32_t{0}, [&] {
        // The text ends at a zero byte, like the C string it is read as.
        return minutes_from_hour_text(StrArg::by_ref(Txt).text(), time_separator());
    }));
}

BRINDLE_EXPORT(int32_t) cCurrentTime() {
    const LocalTime now = local_now();
    return now.hour * 60 + now.minute;
}

BRINDLE_EXPORT(int32_t) cExtCurrentTime() {
    const LocalTime now = local_now();
    return (now.hour * 60 + now.minute) * 60 + now.second;
}

BRINDLE_EXPORT(BSTR) cFmtCurrentTime() {
    return guarded_string([] {
        const LocalTime now = local_now();
        char text[32];
        std::snprintf(text, sizeof text, "%02d:%02d", now.hour, now.minute);
        return new_ztext(text);
    });
}

BRINDLE_EXPORT(BSTR) cFmtExtCurrentTime() {
    return guarded_string([] {
        const LocalTime now = local_now();
        char text[48];
        std::snprintf(text, sizeof text, "%02d:%02d:%02d", now.hour, now.minute, now.second);
        return new_ztext(text);
    });
}

BRINDLE_EXPORT(BSTR) cFmtVeryExtCurrentTime() {
    return guarded_string([] {
        const LocalTime now = local_now();
        char text[64];
        std::snprintf(text, sizeof text, "%02d:%02d:%02d.%03d", now.hour, now.minute, now.second, now.millisecond);
        return new_ztext(text);
    });
}

BRINDLE_EXPORT(int32_t) cCurrentTimeCorrected(int32_t Offset) {
    LocalTime t{};
    return corrected_local(Offset, t) ? t.hour * 60 + t.minute : 0;
}

BRINDLE_EXPORT(int32_t) cExtCurrentTimeCorrected(int32_t Offset) {
    LocalTime t{};
    return corrected_local(Offset, t) ? (t.hour * 60 + t.minute) * 60 + t.second : 0;
}

BRINDLE_EXPORT(BSTR) cIntoFixHour(VARIANT *Minutes, int16_t Width, int16_t Fill, int16_t DecimalMinutes) {
    return hour_field_of(Minutes, Width, flag16(Fill), flag16(DecimalMinutes));
}

BRINDLE_EXPORT(BSTR) cIntoHour(VARIANT *Minutes) { return hour_field_of(Minutes, 5, true, false); }
BRINDLE_EXPORT(BSTR) cIntoBalance(VARIANT *Minutes) { return hour_field_of(Minutes, 8, false, false); }
BRINDLE_EXPORT(BSTR) cIntoBalanceFill(VARIANT *Minutes) { return hour_field_of(Minutes, 8, true, false); }

BRINDLE_EXPORT(BSTR) cIntoVarHour(VARIANT *Minutes) {
    return guarded_string(
        [&] { return new_string(variable_hour_field(variant_to_long(Minutes), time_separator())); });
}

// Kept as no-ops: the argument is ignored and the result is always empty.
BRINDLE_EXPORT(BSTR) cIntoDate(VARIANT *) { return empty_string(); }
BRINDLE_EXPORT(BSTR) cIntoDateNull(VARIANT *) { return empty_string(); }

// Ten blanks (the width of a date) for "no date", else nothing.
BRINDLE_EXPORT(BSTR) cIntoDateFill(int32_t Value) {
    return guarded_string([&] { return Value == 0 ? new_string("          ") : empty_string(); });
}

BRINDLE_EXPORT(BSTR) cGetTimeSeparator() {
    return guarded_string([] { return one_char(locale_state().time_separator); });
}
BRINDLE_EXPORT(BSTR) cGetDateSeparator() {
    return guarded_string([] { return one_char(locale_state().date_separator); });
}
BRINDLE_EXPORT(BSTR) cGetListSeparator() {
    return guarded_string([] { return one_char(locale_state().list_separator); });
}
BRINDLE_EXPORT(BSTR) cGetHourFormat() {
    return guarded_string([] { return new_string(locale_state().hour_pattern); });
}
BRINDLE_EXPORT(BSTR) cGetDateFormat() {
    return guarded_string([] { return new_string(locale_state().date_pattern); });
}

// These four are read afresh at every call.
BRINDLE_EXPORT(BSTR) cGetCurrency() { return locale_text(brindle::platform::LocaleText::Currency); }
BRINDLE_EXPORT(BSTR) cGetLanguage() { return locale_text(brindle::platform::LocaleText::LanguageAbbrev); }
BRINDLE_EXPORT(BSTR) cGetCountry() { return locale_text(brindle::platform::LocaleText::Country); }
BRINDLE_EXPORT(BSTR) cGetCountryCode() { return locale_text(brindle::platform::LocaleText::CountryCode); }
