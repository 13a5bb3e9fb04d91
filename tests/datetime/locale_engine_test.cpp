// Regional settings from POSIX time patterns.
#include "platform/locale.h"

#include <gtest/gtest.h>

#include <string>

using brindle::platform::LocaleSettings;
using brindle::platform::settings_from_strftime;

TEST(LocalePatterns, SeparatorsOrdersAndClocksFromStrftimePatterns) {
    struct Row {
        const char *time, *date;
        char decimal;
        LocaleSettings expected; // time, date, list separators, date order, clock
    } rows[] = {
        {"%H:%M:%S", "%m/%d/%y", '.', {':', '/', ',', '0', '1'}},  // C
        {"%T", "%d.%m.%Y", ',', {':', '.', ';', '1', '1'}},        // German
        {"%I:%M:%S %p", "%m/%d/%Y", '.', {':', '/', ',', '0', '0'}}, // American
        {"%r", "%D", '.', {':', '/', ',', '0', '0'}},              // shorthands only
        {"%H.%M.%S", "%Y-%m-%d", ',', {'.', '-', ';', '2', '1'}},  // Finnish-like, ISO dates
        {"%Hh%M", "%F", '.', {'h', '-', ',', '2', '1'}},
        {"%OH:%OM", "%Ey. %m. %d.", '.', {':', '.', ',', '2', '1'}}, // modifiers skipped
        {"%l:%M %p", "%e/%m/%Y", '.', {':', '/', ',', '0', '0'}},   // %e is not a day-order letter here
        {"", "", '.', {':', '/', ',', '0', '1'}},                   // nothing said: C conventions
        {"%", "%", '.', {':', '/', ',', '0', '1'}},                 // a lone % at the end
        {"%%H", " %-d %b %Y", '.', {'H', '/', ',', '1', '1'}},      // %% is a literal percent
    };
    // time, date, list separators, date order, clock, as one string
    const auto text = [](const LocaleSettings &s) {
        return std::string{s.time_separator, s.date_separator, s.list_separator, s.date_order, s.clock_type};
    };
    for (const Row &r : rows)
        EXPECT_EQ(text(settings_from_strftime(r.time, r.date, r.decimal)), text(r.expected))
            << "\"" << r.time << "\" \"" << r.date << "\" " << r.decimal;
    EXPECT_EQ(text(settings_from_strftime(nullptr, nullptr, '\0')).substr(0, 2), ":/");
}
