// The client's calendar time records of the file-time exports: any eight
// 16-bit fields are either refused or turned into a file time that reads
// back as the same record (with the day of week the calendar gives), and
// any 64-bit count either converts into a valid record or is refused.
// Layout of an input: 16 bytes of record fields (little-endian), then 8
// bytes of a file time.
#include "files/file_time_record.h"
#include "fuzz_target.h"

#include <cstring>

using brindle::files::CalendarTime;

BRINDLE_FUZZ_TARGET(file_time_record) {
    if (size < 16)
        return 0;
    int16_t f[8];
    for (int i = 0; i < 8; ++i)
        f[i] = static_cast<int16_t>(data[2 * i] | (data[2 * i + 1] << 8));
    const CalendarTime t{f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7]};
    if (const auto ft = brindle::files::file_time_from_calendar(t)) {
        FUZZ_CHECK(*ft >= 0);
        const auto back = brindle::files::calendar_from_file_time(*ft);
        FUZZ_CHECK(back.has_value());
        FUZZ_CHECK(back->year == t.year && back->month == t.month && back->day == t.day && back->hour == t.hour &&
                   back->minute == t.minute && back->second == t.second && back->milliseconds == t.milliseconds);
        FUZZ_CHECK(back->day_of_week >= 0 && back->day_of_week <= 6);
    }
    if (size >= 24) {
        int64_t ft = 0;
        std::memcpy(&ft, data + 16, sizeof ft);
        if (const auto r = brindle::files::calendar_from_file_time(ft)) {
            FUZZ_CHECK(ft >= 0);
            FUZZ_CHECK(r->month >= 1 && r->month <= 12 && r->day >= 1 && r->day <= 31 && r->hour >= 0 &&
                       r->hour <= 23 && r->minute >= 0 && r->minute <= 59 && r->second >= 0 && r->second <= 59);
            // Within the range records accept, the record leads back to the count.
            if (r->year <= 30827) {
                const auto again = brindle::files::file_time_from_calendar(*r);
                FUZZ_CHECK(again.has_value() && *again == ft / 10000 * 10000);
            }
        } else {
            FUZZ_CHECK(ft < 0);
        }
    }
    return 0;
}
