#include "datetime/dt_picture.h"

#include "datetime/dt_engine.h"
#include "common/ascii.h"

#include <algorithm>
#include <array>

namespace brindle::datetime::dt {

namespace {

constexpr std::array<std::string_view, 7> kLongDays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> kLongMonths = {"January", "February", "March",     "April",
                                                          "May",     "June",     "July",      "August",
                                                          "September", "October", "November", "December"};

// Every shorter form is a prefix of the long name in English.
std::string_view prefix_form(std::string_view name, NameForm form) {
    switch (form) {
    case NameForm::Tiny:
        return name.substr(0, 1);
    case NameForm::Small:
        return name.substr(0, 2);
    case NameForm::Short:
        return name.substr(0, 3);
    case NameForm::Long:
        return name;
    }
    return {};
}

} // namespace

std::string_view day_name(int64_t day, NameForm form) noexcept {
    if (day < 0 || day > 6)
        return {};
    return prefix_form(kLongDays[static_cast<size_t>(day)], form);
}

std::string_view month_name(int64_t month, NameForm form) noexcept {
    if (month < 1 || month > 12 || form == NameForm::Small)
        return {};
    return prefix_form(kLongMonths[static_cast<size_t>(month - 1)], form);
}

namespace {

using brindle::common::ascii_lower;

// A number padded with zeros to `width` digits; negative values keep their
// sign in front and are not padded (what printf's %0Nd does for them, less
// the zeros).
void append_number(std::string &out, int64_t value, size_t width) {
    std::string digits = std::to_string(value < 0 ? -value : value);
    if (value < 0)
        out += '-';
    else if (digits.size() < width)
        out.append(width - digits.size(), '0');
    out += digits;
}

// The length of the run of equal letters (either case) starting at i.
// Items take a run a few characters at a time; the end found for the first
// of them serves every later position of the same run, so a run of any
// length is scanned once and a picture costs time linear in its length.
class RunFinder {
  public:
    explicit RunFinder(std::string_view picture) : picture_(picture) {}

    size_t length(size_t i) {
        if (i < start_ || i >= end_) {
            const char letter = ascii_lower(picture_[i]);
            size_t n = i + 1;
            while (n < picture_.size() && ascii_lower(picture_[n]) == letter)
                ++n;
            start_ = i;
            end_ = n;
        }
        return end_ - i;
    }

  private:
    std::string_view picture_;
    size_t start_ = 0, end_ = 0; // the last run found: [start_, end_)
};

// The longest token of a letter that fits in a run of n, from the token
// lengths the letter knows (ascending).
template <size_t N> size_t longest_token(size_t n, const std::array<size_t, N> &lengths) {
    size_t best = lengths[0];
    for (size_t len : lengths)
        if (len <= n)
            best = len;
    return best;
}

// Literal text: "quoted text" is copied without its quotes (an unclosed quote
// runs to the end) and a backslash copies the character after it. Returns
// true and advances i when it consumed something.
bool take_literal(std::string_view picture, size_t &i, std::string &out) {
    const char c = picture[i];
    if (c == '"') {
        const size_t close = picture.find('"', i + 1);
        const size_t end = close == std::string_view::npos ? picture.size() : close;
        out.append(picture.substr(i + 1, end - i - 1));
        i = close == std::string_view::npos ? picture.size() : close + 1;
        return true;
    }
    if (c == '\\') {
        if (i + 1 < picture.size()) {
            out += picture[i + 1];
            i += 2;
        } else {
            out += c;
            ++i;
        }
        return true;
    }
    return false;
}

// One pass over a picture: literals are copied, everything else goes to
// item(i, out), which appends what position i stands for and returns how
// many picture characters it used (at least one).
template <class Item> std::string render(std::string_view picture, Item item) {
    std::string out;
    out.reserve(picture.size() + 16);
    size_t i = 0;
    while (i < picture.size()) {
        if (!take_literal(picture, i, out))
            i += item(i, out);
    }
    return out;
}

std::string render_date(std::string_view picture, int32_t date) {
    const DateFields f = split_date(date);
    RunFinder runs(picture);
    return render(picture, [&](size_t i, std::string &out) -> size_t {
        // A time's AM/PM marker is text here, not two month letters.
        if (common::starts_with_no_case(picture.substr(i), "am/pm")) {
            out.append(picture.substr(i, 5));
            return 5;
        }
        const char letter = ascii_lower(picture[i]);
        const size_t run = runs.length(i);
        size_t used = 1;
        switch (letter) {
        case 'd':
            used = longest_token(run, std::array<size_t, 6>{1, 2, 3, 4, 5, 6});
            if (used <= 2)
                append_number(out, f.day, used);
            else
                out += day_name(day_of_week(date), used == 3   ? NameForm::Short
                                                   : used == 4 ? NameForm::Long
                                                   : used == 5 ? NameForm::Tiny
                                                               : NameForm::Small);
            break;
        case 'm':
            used = longest_token(run, std::array<size_t, 5>{1, 2, 3, 4, 5});
            if (used <= 2)
                append_number(out, f.month, used);
            else
                out += month_name(f.month, used == 3 ? NameForm::Short : used == 4 ? NameForm::Long : NameForm::Tiny);
            break;
        case 'y':
            used = longest_token(run, std::array<size_t, 3>{1, 2, 4});
            if (used == 1)
                append_number(out, day_of_year(date), 1);
            else if (used == 2)
                append_number(out, two_digit_year(date), 2);
            else
                append_number(out, f.year, 4);
            break;
        case 'w':
            used = longest_token(run, std::array<size_t, 2>{1, 2});
            append_number(out, used == 1 ? day_of_week(date) + 1 : week_of_year(date), 1);
            break;
        case 'q':
            append_number(out, quarter(date), 1);
            break;
        default:
            out += picture[i];
            break;
        }
        return used;
    });
}

// One pass over a time picture. `twelve_hour` prints hours 1..12; `marker`
// reports whether the picture holds an AM/PM or A/P marker, which is what
// asks for the twelve-hour clock.
std::string render_time(std::string_view picture, int32_t time, bool twelve_hour, bool &marker) {
    const TimeFields t = split_time(time);
    int64_t hours = t.hours;
    if (twelve_hour) {
        hours %= 12;
        if (hours == 0)
            hours = 12;
    }
    const bool morning = t.hours < 12;
    RunFinder runs(picture);
    return render(picture, [&](size_t i, std::string &out) -> size_t {
        // The marker keeps the case the picture wrote it in.
        if (common::starts_with_no_case(picture.substr(i), "am/pm")) {
            marker = true;
            out.append(picture.substr(morning ? i : i + 3, 2));
            return 5;
        }
        if (common::starts_with_no_case(picture.substr(i), "a/p")) {
            marker = true;
            out += picture[morning ? i : i + 2];
            return 3;
        }
        const char letter = ascii_lower(picture[i]);
        const size_t run = runs.length(i);
        const size_t used = std::min<size_t>(run, 2);
        switch (letter) {
        case 'h':
            append_number(out, hours, used);
            break;
        case 'n':
        case 'm': // a time has no month: m is the minute, as in VB's hh:mm
            append_number(out, t.minutes, used);
            break;
        case 's':
            append_number(out, t.seconds, used);
            break;
        case 'c':
            append_number(out, t.hundredths, used);
            break;
        default:
            out += picture[i];
            return 1;
        }
        return used;
    });
}

} // namespace

std::string format_date_picture(std::string_view picture, int32_t date) {
    if (date == 0)
        return {};
    return render_date(picture, date);
}

std::string format_time_picture(std::string_view picture, int32_t time) {
    bool marker = false;
    std::string out = render_time(picture, time, false, marker);
    if (!marker)
        return out;
    return render_time(picture, time, true, marker);
}

std::string asc_time(int32_t date, int32_t time) {
    if (date == 0 || !valid_date(date) || !valid_time(time))
        return {};
    const DateFields f = split_date(date);
    const TimeFields t = split_time(time);
    std::string out;
    out.reserve(24);
    out += day_name(day_of_week(date), NameForm::Short);
    out += ' ';
    out += month_name(f.month, NameForm::Short);
    out += f.day < 10 ? "  " : " "; // the day in three places, space-padded
    append_number(out, f.day, 1);
    out += ' ';
    append_number(out, t.hours, 2);
    out += ':';
    append_number(out, t.minutes, 2);
    out += ':';
    append_number(out, t.seconds, 2);
    out += ' ';
    append_number(out, f.year, 1);
    return out;
}

} // namespace brindle::datetime::dt
