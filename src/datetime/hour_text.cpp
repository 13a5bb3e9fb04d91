#include "datetime/hour_text.h"

#include "common/ascii.h"

#include <cstdio>
#include <cstdlib>

namespace brindle::datetime {

namespace {

using brindle::common::is_ascii_digit;

// The largest number of minutes that fits each usable width 1..11: below 5
// there is no separator, so width 4 holds 99 hours 59 like width 5.
constexpr int64_t kLargest[12] = {0,      9,       59,       599,       5999,      5999,
                                  59999,  599999,  5999999,  59999999,  599999999, 2147483647};

// Leading decimal digits as a number (a non-digit ends it, as atol does).
int64_t leading_number(std::string_view digits) {
    int64_t n = 0;
    for (char c : digits) {
        if (!is_ascii_digit(c))
            break;
        n = n * 10 + (c - '0');
    }
    return n;
}

// Two characters as a two-digit number; a non-digit counts as 0.
int digit_pair(char tens, char units) {
    return (is_ascii_digit(tens) ? tens - '0' : 0) * 10 + (is_ascii_digit(units) ? units - '0' : 0);
}

} // namespace

int32_t minutes_from_hour_text(std::string_view text, char separator) {
    text = text.substr(0, 9);
    bool negative = false;
    if (!text.empty() && text.front() == '-') {
        negative = true;
        text.remove_prefix(1);
    }
    char hours[8] = "0000000";
    int hour_pos = 7;
    char minute_units = '0', minute_tens = '0';
    int minute_digits = 0;
    bool in_hours = false;
    for (size_t i = text.size(); i-- > 0;) {
        const char c = text[i];
        if (c == '-')
            break;
        if (c == separator) {
            in_hours = true;
            continue;
        }
        if (!in_hours) {
            if (!is_ascii_digit(c))
                continue;
            if (minute_digits++ == 0) {
                minute_units = c;
            } else {
                minute_tens = c;
                in_hours = true;
            }
            continue;
        }
        if (hour_pos > 0)
            hours[--hour_pos] = c;
    }
    const int64_t minutes = (minute_tens - '0') * 10 + (minute_units - '0');
    const int64_t total = leading_number(std::string_view(hours + hour_pos, 7 - static_cast<size_t>(hour_pos))) * 60 + minutes;
    return static_cast<int32_t>(negative ? -total : total);
}

std::string hour_field(int32_t value, int32_t width, bool fill, bool decimal, char separator) {
    if (width < 1 || width > 11)
        return {};
    const bool negative = value < 0;
    const int32_t usable = negative ? width - 1 : width;
    const int64_t magnitude = negative ? -int64_t{value} : int64_t{value};
    if (usable < 1 || magnitude > kLargest[usable])
        return std::string(static_cast<size_t>(width), '?');

    const int64_t hours = magnitude / 60;
    int64_t minutes = magnitude % 60;
    if (decimal)
        minutes = (minutes * 100 + 30) / 60; // hundredths of an hour, rounded half up
    // The hour digits fill what the separator and the minutes leave of the
    // usable width (values that fit never need more).
    const int hour_width = usable >= 5 ? usable - 3 : usable - 2;
    char hour_digits[24];
    std::snprintf(hour_digits, sizeof hour_digits, "%0*lld", hour_width > 0 ? hour_width : 1,
                  static_cast<long long>(hours));
    if (!fill)
        for (int i = 0; i < 7 && hour_digits[i] == '0'; ++i)
            hour_digits[i] = ' ';
    char minute_digits[4];
    std::snprintf(minute_digits, sizeof minute_digits, "%02d", static_cast<int>(minutes % 100));

    std::string text = hour_digits;
    if (usable >= 5)
        text += separator;
    text += minute_digits;
    std::string result = negative ? "-" : "";
    result += text.substr(text.size() - static_cast<size_t>(usable));
    return result;
}

std::string variable_hour_field(int32_t value, char separator) {
    const int64_t magnitude = value < 0 ? -int64_t{value} : int64_t{value};
    char minute_digits[4];
    std::snprintf(minute_digits, sizeof minute_digits, "%02d", static_cast<int>(magnitude % 60));
    std::string result = value < 0 ? "-" : "";
    result += std::to_string(magnitude / 60);
    result += separator;
    result += minute_digits;
    return result;
}

bool add_hms_texts(std::string_view a, std::string_view b, char separator, std::string &out) {
    if (a.size() != 8 || b.size() != 8)
        return false;
    int seconds = digit_pair(a[6], a[7]) + digit_pair(b[6], b[7]);
    int carry = 0;
    if (seconds > 59) {
        seconds -= 60;
        carry = 1;
    }
    int minutes = digit_pair(a[3], a[4]) + digit_pair(b[3], b[4]) + carry;
    carry = 0;
    if (minutes >= 60) {
        minutes -= 60;
        carry = 1;
    }
    int hours = digit_pair(a[0], a[1]) + digit_pair(b[0], b[1]) + carry;
    if (hours > 23)
        hours %= 24;
    // Fields of text that was not a time can stay above 59 after the single
    // carry; they keep their last two digits so the result is 8 characters.
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d%c%02d%c%02d", hours % 100, separator, minutes % 100, separator,
                  seconds % 100);
    out.assign(buffer, 8);
    return true;
}

} // namespace brindle::datetime
