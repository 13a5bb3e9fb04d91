// Rotation of log files: whether a period has turned since a file was last
// written, the dated name it is renamed to, and whether it changed after a
// given date and time. Dates are year × 10,000 + month × 100 + day, times
// hour × 1,000,000 + minute × 10,000 + second × 100 + hundredths, both in
// local time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brindle::files {

struct StampedTime {
    int32_t date = 0;
    int32_t time = 0;
};

// The last-write date and time of an existing file, in local time.
std::optional<StampedTime> file_written(std::string_view path);
// The local clock as a StampedTime.
StampedTime local_stamp();

// Period: 0 always; 1 the hours differ (the hour alone, not the date); 2
// the days of the month differ; 3 the week numbers differ; 4 the months
// differ (not the years); anything else never.
bool period_turned(StampedTime written, StampedTime now, int16_t period);

// The rotated name of `path` last written on `date`: its directory, the
// first two characters of its name, the date's last six digits and its
// extension; when `taken` says that name is used, the extension becomes
// 000, 001, ... 999. Nothing when all are taken.
template <class Taken> std::optional<std::string> rotated_name(std::string_view path, int32_t date, Taken &&taken);

// cFileCycle: true when no rotation was needed or the file was renamed.
bool cycle_file(std::string_view path, int16_t period);

} // namespace brindle::files

#include "files/path_names.h"

#include <cstdio>

template <class Taken>
std::optional<std::string> brindle::files::rotated_name(std::string_view path, int32_t date, Taken &&taken) {
    const PathPieces p = split_path(path);
    char digits[16];
    std::snprintf(digits, sizeof digits, "%06d", static_cast<int>(date % 1000000));
    const std::string name = p.name.substr(0, 2) + digits;
    std::string candidate = make_path(p.drive, p.dir, name, p.ext);
    for (int n = 0; taken(candidate); ++n) {
        if (n > 999)
            return std::nullopt;
        char ext[12]; // room for any int, though n stays within 0 .. 999
        std::snprintf(ext, sizeof ext, "%03d", n);
        candidate = make_path(p.drive, p.dir, name, ext);
    }
    for (char &c : candidate)
        if (c == '/')
            c = '\\';
    return candidate;
}
