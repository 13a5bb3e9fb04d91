// The system's regional settings that the date and time printers use.
#pragma once

#include <string>

namespace brindle::platform {

// The separators and orders of the system default locale. On Windows they
// come from the system's locale information; on POSIX from the process's
// time locale (LC_TIME), falling back to the C locale's conventions for
// anything it does not say.
struct LocaleSettings {
    char time_separator; // ':' in the C locale
    char date_separator; // '/' in the C locale
    char list_separator; // ',' (';' where the decimal point is a comma)
    char date_order;     // '0' month-day-year, '1' day-month-year, '2' year-month-day
    char clock_type;     // '0' 12-hour clock, '1' 24-hour clock
};

LocaleSettings read_locale_settings();

// The settings a POSIX locale's patterns imply: the separators are the first
// literal characters of the time and date patterns (strftime's %T, %R, %r,
// %D and %F expanded), the date order is that of the first day, month or
// year conversion, a %I or %l means a 12-hour clock, and the list separator
// is ';' where the decimal point is a comma. What a pattern does not say
// keeps the C locale's value (':', '/', ',', month first, 12-hour).
LocaleSettings settings_from_strftime(const char *time_pattern, const char *date_pattern, char decimal_point);

enum class LocaleText {
    Currency,         // the local currency symbol
    LanguageAbbrev,   // three letters: the language code and one letter of the country
    Country,          // the country's name
    CountryCode,      // the international dialling code
};

// The text of one item, read afresh at every call, at most 33 bytes.
std::string read_locale_text(LocaleText item);

} // namespace brindle::platform
