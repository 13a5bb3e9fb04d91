// ASCII case, digits and spaces as the runtime's "C" locale sees them: only
// A-Z and a-z change case, only 0-9 are digits, only space and tab to
// carriage return are spaces; bytes 128..255 are none of these. Plain C++,
// shared by every layer. The case functions keep the character type they are
// given.
#pragma once

#include <algorithm>
#include <string_view>

namespace brindle::common {

constexpr unsigned char ascii_lower(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c;
}
constexpr char ascii_lower(char c) { return static_cast<char>(ascii_lower(static_cast<unsigned char>(c))); }

constexpr unsigned char ascii_upper(unsigned char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<unsigned char>(c - 32) : c;
}
constexpr char ascii_upper(char c) { return static_cast<char>(ascii_upper(static_cast<unsigned char>(c))); }

constexpr bool is_ascii_digit(unsigned char c) { return c >= '0' && c <= '9'; }
constexpr bool is_ascii_digit(char c) { return is_ascii_digit(static_cast<unsigned char>(c)); }

constexpr bool is_ascii_lower(unsigned char c) { return c >= 'a' && c <= 'z'; }
constexpr bool is_ascii_upper(unsigned char c) { return c >= 'A' && c <= 'Z'; }

// The "C" locale's isspace: space, and tab, line feed, vertical tab, form
// feed and carriage return.
constexpr bool is_c_space(unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool is_c_space(char c) { return is_c_space(static_cast<unsigned char>(c)); }

// True when a and b hold the same bytes once A-Z and a-z are folded together.
constexpr bool equal_no_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (ascii_upper(a[i]) != ascii_upper(b[i]))
            return false;
    return true;
}

// True when text begins with prefix, A-Z and a-z folded together.
constexpr bool starts_with_no_case(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equal_no_case(text.substr(0, prefix.size()), prefix);
}

// The order of names without regard to case: bytes compared with a-z folded
// to A-Z (so "_" comes after the letters, as in the system's listings), a
// prefix before the longer name, and names that differ only in case in the
// order of their bytes, so that the order is total.
constexpr bool less_no_case(std::string_view a, std::string_view b) {
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const auto x = ascii_upper(static_cast<unsigned char>(a[i]));
        const auto y = ascii_upper(static_cast<unsigned char>(b[i]));
        if (x != y)
            return x < y;
    }
    if (a.size() != b.size())
        return a.size() < b.size();
    return a < b;
}

} // namespace brindle::common
