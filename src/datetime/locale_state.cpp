#include "datetime/locale_state.h"

#include "platform/locale.h"

namespace brindle::datetime {

namespace {

LocaleState load() {
    const platform::LocaleSettings s = platform::read_locale_settings();
    LocaleState state{s.time_separator, s.date_separator, s.list_separator, s.date_order, s.clock_type, {}, {}};
    const std::string sep(1, s.date_separator);
    state.hour_pattern = std::string("hh") + s.time_separator + "nn";
    if (s.date_order == '0')
        state.date_pattern = "mm" + sep + "dd" + sep + "yyyy";
    else if (s.date_order == '2')
        state.date_pattern = "yyyy" + sep + "mm" + sep + "dd";
    else
        state.date_pattern = "dd" + sep + "mm" + sep + "yyyy";
    return state;
}

} // namespace

const LocaleState &locale_state() {
    // Loaded on first use; a VB caller is single-threaded, and a C++ static
    // is initialised once even if it is not.
    static const LocaleState state = load();
    return state;
}

} // namespace brindle::datetime
