#include "files/log_cycle.h"

#include "datetime/dt_engine.h"
#include "platform/clock.h"
#include "platform/file.h"
#include "platform/file_info.h"

namespace brindle::files {

namespace {

StampedTime stamp(const platform::LocalTime &t) {
    return {t.year * 10000 + t.month * 100 + t.day, t.hour * 1000000 + t.minute * 10000 + t.second * 100 + t.millisecond / 10};
}

} // namespace

std::optional<StampedTime> file_written(std::string_view path) {
    platform::FileStatus st;
    if (path.empty() || platform::file_status(path, &st) != 0 || st.is_directory)
        return std::nullopt;
    const int64_t since = st.times.written - platform::kUnixEpochAsFileTime;
    const int64_t seconds = since >= 0 ? since / 10000000 : -((-since + 9999999) / 10000000);
    platform::LocalTime t{};
    if (!platform::local_time_at(seconds, t))
        return std::nullopt;
    const int64_t hundredths = ((since % 10000000) + 10000000) % 10000000 / 100000;
    StampedTime s = stamp(t);
    s.time += static_cast<int32_t>(hundredths);
    return s;
}

StampedTime local_stamp() { return stamp(platform::local_now()); }

bool period_turned(StampedTime written, StampedTime now, int16_t period) {
    switch (period) {
    case 0: return true;
    case 1: return written.time / 1000000 != now.time / 1000000;
    case 2: return written.date % 100 != now.date % 100;
    case 3: return datetime::dt::week_of_year(written.date) != datetime::dt::week_of_year(now.date);
    case 4: return written.date / 100 % 100 != now.date / 100 % 100;
    default: return false;
    }
}

bool cycle_file(std::string_view path, int16_t period) {
    const std::optional<StampedTime> written = file_written(path);
    if (!written || !period_turned(*written, local_stamp(), period))
        return true;
    const std::optional<std::string> name =
        rotated_name(path, written->date, [](const std::string &n) { return platform::file_exists(n) || platform::directory_exists(n); });
    if (!name)
        return false;
    return platform::rename_file(path, *name);
}

} // namespace brindle::files
