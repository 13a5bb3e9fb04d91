// The simple wildcard matcher: "*" and "?" over bytes. The pattern exports
// call it with the caller's case flag; the file searches call it on file
// names with case ignored.
#pragma once

#include <string_view>

namespace brindle::strings {

// True when `text` matches `pattern`:
//   ?      any one character
//   *q     any run of characters (also empty) followed by one character
//          matching q; q is taken literally even when it is itself "*", so
//          "**" looks for a literal "*" and "*?" needs at least one more
//          character
//   *      at the very end: any rest
//   other  itself; with case ignored both sides fold A-Z to a-z
// Both views are taken whole (pass the zero-terminated text of an argument).
// Runs in O(|text| x |pattern|) time with constant memory and stack, so
// hostile patterns such as "*a*a*a*a*b" cost no more than a plain search.
bool WildcardMatch(std::string_view text, std::string_view pattern, bool case_sensitive) noexcept;

} // namespace brindle::strings
