// Day and month names and the picture language of the DT family's
// formatting exports (described for users in docs/date-pictures.md).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brindle::datetime::dt {

// The forms of a name: tiny (one letter: "S", "J"), small (two letters,
// days only: "Su"), short (three letters: "Sun", "Jan") and long ("Sunday").
enum class NameForm { Tiny, Small, Short, Long };

// English names. Days are numbered 0 Sunday .. 6 Saturday, as
// day_of_week gives them; months 1..12. Any other number, and the small form
// of a month (there is none), give an empty view.
std::string_view day_name(int64_t day, NameForm form) noexcept;
std::string_view month_name(int64_t month, NameForm form) noexcept;

// Renders a picture. A date picture knows the date letters (d w m q y) and
// prints nothing for a missing date; a time picture knows the time letters
// (h n s c, AM/PM and A/P) and reads m as minutes. Letters of the other kind
// are ordinary text. Output grows linearly with the picture.
std::string format_date_picture(std::string_view picture, int32_t date);
std::string format_time_picture(std::string_view picture, int32_t time);

// "Sat Jan  1 12:30:05 2000": the fixed layout of C's asctime without its
// newline. Empty unless the date (non-zero) and the time are valid.
std::string asc_time(int32_t date, int32_t time);

} // namespace brindle::datetime::dt
