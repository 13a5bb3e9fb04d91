// Regional settings on POSIX, from the process's current locale. The C
// locale's conventions are those of American English (12/31/99, 23:59:59),
// so that is what every item falls back to when the locale says nothing.
#include "platform/locale.h"

#include <cctype>
#include <clocale>
#include <cstring>
#include <langinfo.h>

namespace brindle::platform {

namespace {

const char *langinfo_or(nl_item item, const char *fallback) {
    const char *text = nl_langinfo(item);
    return text != nullptr && *text != '\0' ? text : fallback;
}

std::string bounded(const char *text) {
    std::string s(text);
    if (s.size() > 33)
        s.resize(33); // the 34-byte buffer of the Windows call, less its terminator
    return s;
}

} // namespace

LocaleSettings read_locale_settings() {
    return settings_from_strftime(langinfo_or(T_FMT, "%H:%M:%S"), langinfo_or(D_FMT, "%m/%d/%y"),
                                  langinfo_or(RADIXCHAR, ".")[0]);
}

std::string read_locale_text(LocaleText item) {
    switch (item) {
    case LocaleText::Currency: {
        const lconv *conv = std::localeconv();
        const char *symbol = conv != nullptr ? conv->currency_symbol : nullptr;
        return bounded(symbol != nullptr && *symbol != '\0' ? symbol : "$");
    }
    case LocaleText::LanguageAbbrev: {
#ifdef __GLIBC__
        // Two letters of the language and the first of the country, the
        // way the three-letter abbreviations read (ENU, DEU, FRA, ENG).
        const char *lang = nl_langinfo(_NL_ADDRESS_LANG_AB);
        const char *country = nl_langinfo(_NL_ADDRESS_COUNTRY_AB2);
        if (lang != nullptr && std::strlen(lang) == 2 && country != nullptr && *country != '\0') {
            std::string abbrev{lang[0], lang[1], country[0]};
            for (char &c : abbrev)
                c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
            return abbrev;
        }
#endif
        return "ENU";
    }
    case LocaleText::Country: {
#ifdef __GLIBC__
        const char *name = nl_langinfo(_NL_ADDRESS_COUNTRY_NAME);
        if (name != nullptr && *name != '\0')
            return bounded(name);
#endif
        return "United States";
    }
    case LocaleText::CountryCode: {
#ifdef __GLIBC__
        const char *prefix = nl_langinfo(_NL_TELEPHONE_INT_PREFIX);
        if (prefix != nullptr && *prefix != '\0')
            return bounded(prefix);
#endif
        return "1";
    }
    }
    return {};
}

} // namespace brindle::platform
