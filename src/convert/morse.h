// Morse code of text. Dots and dashes are exchanged with respect to the
// international code (E is a dash, T a dot): that is the code this library
// has always written.
#pragma once

#include <string>
#include <string_view>

namespace brindle::convert {

// The code of one character from 32 to 90 (letters in upper case): digits,
// letters and , - . / ?; nullptr for the others.
const char *morse_code_of(unsigned char c);

// Each character, lower-case letters taken as upper case, as its code and
// one space; "~" for a character from 32 to 90 without a code; characters
// outside 32 to 90 are skipped.
std::string morse_text(std::string_view text);

} // namespace brindle::convert
