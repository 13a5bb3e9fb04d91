// The date and time pictures: any picture with any date or time gives text
// that grows at most linearly with the picture (the longest piece a picture
// letter prints is a long name or a number of a Long's digits); the date 0
// gives the empty string; a picture that escapes every character prints the
// characters themselves. Layout of an input: four bytes of date or time
// (least significant first), one byte choosing the date (even) or the time
// picture (odd), then the picture.
#include "datetime/dt_picture.h"
#include "fuzz_target.h"

#include <cstdint>
#include <string>
#include <string_view>

using namespace brindle::datetime::dt;

BRINDLE_FUZZ_TARGET(dt_picture) {
    if (size < 5)
        return 0;
    const int32_t value = static_cast<int32_t>(static_cast<uint32_t>(data[0]) | static_cast<uint32_t>(data[1]) << 8 |
                                               static_cast<uint32_t>(data[2]) << 16 |
                                               static_cast<uint32_t>(data[3]) << 24);
    const bool time = (data[4] & 1) != 0;
    const std::string_view picture(reinterpret_cast<const char *>(data) + 5, size - 5);
    const auto format = [&](std::string_view p) { return time ? format_time_picture(p, value) : format_date_picture(p, value); };

    const std::string out = format(picture);
    FUZZ_CHECK(out.size() <= 12 * picture.size());
    if (!time && value == 0)
        FUZZ_CHECK(out.empty());
    if (time || value != 0) {
        std::string escaped;
        for (const char c : picture) {
            escaped += '\\';
            escaped += c;
        }
        FUZZ_CHECK(format(escaped) == picture);
    }
    return 0;
}
