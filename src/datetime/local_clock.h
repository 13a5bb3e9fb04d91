// The local clock as the date families see it: reading it, and setting it
// field by field. The reader and the setter can be replaced by tests, so the
// setting rules are exercised without touching the machine's clock.
#pragma once

#include "platform/clock.h"

#include <cstdint>

namespace brindle::datetime {

using platform::LocalTime;

// The local date and time now (the platform's, unless a test replaced it).
LocalTime local_now();

// Fields to set; each replaces the current value only when valid: year,
// month and day when above 0, hour 0..23, minute and second 0..59,
// millisecond 0..999. The rest keeps the current value.
struct LocalTimeFields {
    int32_t year, month, day, hour, minute, second, millisecond;
};
LocalTime merge_local_time(LocalTime now, const LocalTimeFields &fields);

// Sets the clock from `fields` merged into the current local time; false
// when the system refuses (nothing has changed then).
bool set_local_fields(const LocalTimeFields &fields);

// Test hooks: replace the reader and the setter (nullptr restores the
// platform's own). Not part of the exported interface.
using LocalNowFn = LocalTime (*)();
using SetLocalFn = bool (*)(const LocalTime &);
void replace_local_clock_for_tests(LocalNowFn now, SetLocalFn set);

} // namespace brindle::datetime
