// Regional settings from POSIX time patterns.
#include "platform/locale.h"

#include <gtest/gtest.h>


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
    for (const Row &r : rows) {
        const LocaleSettings s = settings_from_strftime(r.time, r.date, r.decimal);
        EXPECT_EQ(s.time_separator, r.expected.time_separator) << r.time;
        EXPECT_EQ(s.date_separator, r.expected.date_separator) << r.date;
        EXPECT_EQ(s.list_separator, r.expected.list_separator) << r.decimal;
        EXPECT_EQ(s.date_order, r.expected.date_order) << r.date;
        EXPECT_EQ(s.clock_type, r.expected.clock_type) << r.time;
    }
    const LocaleSettings none = settings_from_strftime(nullptr, nullptr, '\0');
    EXPECT_EQ(none.time_separator, ':');
    EXPECT_EQ(none.date_separator, '/');
}
