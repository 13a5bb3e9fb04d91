// Regional settings read from strftime patterns, the way POSIX locales
// describe them. Portable: no system call.
#include "platform/locale.h"

#include <cctype>
#include <cstring>

namespace brindle::platform {

namespace {

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

} // namespace

LocaleSettings settings_from_strftime(const char *time_pattern, const char *date_pattern, char decimal_point) {
    LocaleSettings s{':', '/', ',', '0', '0'};

    PatternFacts time;
    scan_pattern(time_pattern != nullptr ? time_pattern : "", time);
    if (time.first_literal != '\0')
        s.time_separator = time.first_literal;
    s.clock_type = time.conversions.find_first_of("Il") != std::string::npos ? '0' : '1';

    PatternFacts date;
    scan_pattern(date_pattern != nullptr ? date_pattern : "", date);
    if (date.first_literal != '\0')
        s.date_separator = date.first_literal;
    const size_t first = date.conversions.find_first_of("mdyYbBh");
    if (first != std::string::npos) {
        const char c = date.conversions[first];
        s.date_order = c == 'd' ? '1' : (c == 'y' || c == 'Y') ? '2' : '0';
    }

    s.list_separator = decimal_point == ',' ? ';' : ',';
    return s;
}

} // namespace brindle::platform
