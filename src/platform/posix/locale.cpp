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

// The shorthand conversions of strftime that stand for a whole pattern.
const char *expand_shorthand(char conversion) {
    switch (conversion) {
    case 'T': return "%H:%M:%S";
    case 'R': return "%H:%M";
    case 'r': return "%I:%M:%S %p";
    case 'D': return "%m/%d/%y";
    case 'F': return "%Y-%m-%d";
    default: return nullptr;
    }
}

// Walks a strftime pattern: the conversion letters in order (modifiers E, O,
// flags and widths skipped, shorthands expanded) and the first literal
// character that is neither a blank nor part of a conversion.
struct PatternFacts {
    std::string conversions;
    char first_literal = '\0';
};

void scan_pattern(const char *pattern, PatternFacts &facts, int depth = 0) {
    for (const char *p = pattern; *p != '\0'; ++p) {
        if (*p != '%') {
            if (facts.first_literal == '\0' && !std::isspace(static_cast<unsigned char>(*p)))
                facts.first_literal = *p;
            continue;
        }
        ++p;
        while (*p != '\0' && (std::strchr("EO_-0^#", *p) != nullptr || std::isdigit(static_cast<unsigned char>(*p))))
            ++p;
        if (*p == '\0')
            return;
        const char *shorthand = depth == 0 ? expand_shorthand(*p) : nullptr;
        if (shorthand != nullptr)
            scan_pattern(shorthand, facts, depth + 1);
        else if (*p != '%')
            facts.conversions.push_back(*p);
    }
}

std::string bounded(const char *text) {
    std::string s(text);
    if (s.size() > 33)
        s.resize(33); // the 34-byte buffer of the Windows call, less its terminator
    return s;
}

} // namespace

LocaleSettings read_locale_settings() {
    LocaleSettings s{':', '/', ',', '0', '0'};

    PatternFacts time;
    scan_pattern(langinfo_or(T_FMT, "%H:%M:%S"), time);
    if (time.first_literal != '\0')
        s.time_separator = time.first_literal;
    s.clock_type = time.conversions.find_first_of("Il") != std::string::npos ? '0' : '1';

    PatternFacts date;
    scan_pattern(langinfo_or(D_FMT, "%m/%d/%y"), date);
    if (date.first_literal != '\0')
        s.date_separator = date.first_literal;
    const size_t first = date.conversions.find_first_of("mdyYbBh");
    if (first != std::string::npos) {
        const char c = date.conversions[first];
        s.date_order = c == 'd' ? '1' : (c == 'y' || c == 'Y') ? '2' : '0';
    }

    const char *radix = langinfo_or(RADIXCHAR, ".");
    s.list_separator = radix[0] == ',' ? ';' : ',';
    return s;
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
