// The locale settings the hour and date printers use: read once from the
// system default locale on first use, then kept for the life of the process.
#pragma once

#include <string>

namespace brindle::datetime {

struct LocaleState {
    char time_separator;
    char date_separator;
    char list_separator;
    char date_order;
    char clock_type;
    std::string hour_pattern; // "hh", separator, "nn"
    std::string date_pattern; // e.g. "dd.mm.yyyy", by the date order
};

const LocaleState &locale_state();

} // namespace brindle::datetime
