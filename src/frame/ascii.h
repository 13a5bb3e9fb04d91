// ASCII case as the runtime's "C" locale sees it: only A-Z and a-z change
// case; bytes 128..255 never do. Plain C++, for engines as well as exports.
// Each function keeps the character type it is given.
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

} // namespace brindle::frame
