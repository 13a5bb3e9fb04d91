// The extended wildcard matcher, which says why a text does not match, and
// the pattern checker that names a pattern's fault.
//
//   *          any run of characters, also empty
//   ?          exactly one character
//   [set]      one character of the set; [!set] or [^set] one not in it;
//              members are characters, \escapes, ~hh codes and ranges a-z
//              (either order); compared as signed bytes, always exactly
//   \c         c taken literally
//   ~hh        the character with hexadecimal code hh, compared exactly
//   other      itself, under the case rule
//
// A "~" that is not followed by two hexadecimal digits is an ordinary
// character to the matcher (the checker reports it as fault 7).
#pragma once

#include <string_view>

namespace brindle::strings {

enum ExtResult : int {
    kExtMatch = -1,
    kExtPatternEnded = 11, // the pattern ended before the text
    kExtTextEnded = 12,    // the text ended before the pattern
    kExtSetFailed = 13,    // a set did not match
    kExtLiteralFailed = 14,
    kExtPatternError = 15,
    kExtHexFailed = 17,
};

// Matches `text` against `pattern` walking both together; kExtMatch or the
// code of the first reason found. Time O(|text| x |pattern|), memory
// O(|pattern|), no recursion.
int WildcardMatchExt(std::string_view pattern, std::string_view text, bool case_sensitive) noexcept;

// 0 for a well-formed pattern, else the first fault from the left:
// 2 "\" with nothing after it, 3 a range with no end, 4 a set without "]",
// 5 an empty set, 7 "~" without two hexadecimal digits.
int PatternCheck(std::string_view pattern) noexcept;

} // namespace brindle::strings
