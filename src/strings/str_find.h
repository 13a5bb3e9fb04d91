// Substring searches shared by the extraction, replacement, deletion and
// text-file families. Both work on zero-terminated text: pass the views a
// StrArg's text() gives (or any bytes that hold no zero).
#pragma once

#include <cstddef>
#include <string_view>

namespace brindle::strings {

constexpr size_t kNotFound = static_cast<size_t>(-1);

// Case-insensitive search, folding A-Z to a-z as the C runtime's _strnicmp
// does in the "C" locale (other bytes compare exactly). Returns the offset
// of the first match, or kNotFound. An empty text never matches; an empty
// find matches at offset 0 of any non-empty text.
size_t StrFindNoCase(std::string_view text, std::string_view find) noexcept;

// Case-sensitive search with strstr's rules: an empty find matches at 0.
size_t StrFind(std::string_view text, std::string_view find) noexcept;

// One of the two, as a VB case flag selects: case-sensitive only when the
// flag was exactly -1.
inline size_t StrFindCase(std::string_view text, std::string_view find, bool case_sensitive) noexcept {
    return case_sensitive ? StrFind(text, find) : StrFindNoCase(text, find);
}

// The search from offset `from` on, with the offset counted from the start
// of text; kNotFound when from is past the end.
size_t StrFindFrom(std::string_view text, std::string_view find, size_t from, bool case_sensitive) noexcept;

} // namespace brindle::strings
