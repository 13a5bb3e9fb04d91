// Regional settings on Windows: the system default locale's information.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include "platform/locale.h"

namespace brindle::platform {

namespace {

// The system default locale, as the date and time printers always used.
constexpr LCID kSystemDefault = 0x0800;

// One item's text, read into the 34-byte buffer the printers have always
// used (longer values are cut there); empty when the call fails.
std::string item_text(LCTYPE item) {
    char buffer[34] = {};
    if (GetLocaleInfoA(kSystemDefault, item, buffer, sizeof buffer) == 0) {
        if (GetLastError() != ERROR_INSUFFICIENT_BUFFER)
            return {};
        // Too long for the buffer: keep what fits, as the fixed buffer did.
        char large[256] = {};
        if (GetLocaleInfoA(kSystemDefault, item, large, sizeof large) == 0)
            return {};
        return std::string(large, strnlen(large, sizeof buffer - 1));
    }
    return std::string(buffer);
}

char first_or(LCTYPE item, char fallback) {
    const std::string text = item_text(item);
    return text.empty() ? fallback : text[0];
}

} // namespace

LocaleSettings read_locale_settings() {
    return LocaleSettings{first_or(LOCALE_STIME, ':'), first_or(LOCALE_SDATE, '/'), first_or(LOCALE_SLIST, ','),
                          first_or(LOCALE_IDATE, '0'), first_or(LOCALE_ITIME, '0')};
}

std::string read_locale_text(LocaleText item) {
    switch (item) {
    case LocaleText::Currency: return item_text(LOCALE_SCURRENCY);
    case LocaleText::LanguageAbbrev: return item_text(LOCALE_SABBREVLANGNAME);
    case LocaleText::Country: return item_text(LOCALE_SCOUNTRY);
    case LocaleText::CountryCode: return item_text(LOCALE_ICOUNTRY);
    }
    return {};
}

} // namespace brindle::platform
