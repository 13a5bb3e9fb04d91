// Character classes of the C runtime in the "C" locale, applied to whole
// strings. Bytes 128..255 belong to no class.
#pragma once

#include <string_view>

namespace brindle::strings {

// The classes, numbered as the class-test exports are.
enum class CharClass : int {
    Digit = 1, // 0-9
    Alpha,     // A-Z a-z
    Lower,     // a-z
    Upper,     // A-Z
    Xdigit,    // 0-9 A-F a-f
    Alnum,     // letters and digits
    Csym,      // letters and digits, see all_in_class
    Csymf,     // letters, see all_in_class
    Punct,     // printable, not space, not a letter or digit
    Space,     // space and tab to carriage return
    Ascii,     // 0..127
};

// Whether byte c belongs to cls.
bool in_class(CharClass cls, unsigned char c) noexcept;

// True when every byte of a non-empty text belongs to cls. For Csym and
// Csymf a failing byte followed by "_" is consumed together with it in one
// step, yet the walk still takes one step per byte of the text; a text with
// such a pair would be walked past its end, so any consumed pair gives
// false.
bool all_in_class(std::string_view text, CharClass cls) noexcept;

// True when a non-empty text reads the same from both ends, byte for byte.
bool is_palindrome(std::string_view text) noexcept;

} // namespace brindle::strings
