// ASCII case and digits as the runtime's "C" locale sees them: only A-Z and
// a-z change case, only 0-9 are digits; bytes 128..255 are neither. Plain
// C++, for engines as well as exports. The case functions keep the
// character type they are given.
#pragma once

namespace brindle::frame {

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

} // namespace brindle::frame
