// Looking a word up in a table of separated entries.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::strings {

// The 1-based index of the first entry of table equal to word, or -1.
// Entries are split at any byte of seps and trimmed of C-locale white space
// at both ends; the word is not trimmed. The first empty entry (two
// separators side by side, a separator at the end, or an empty table) ends
// the search. Case-insensitive (A-Z folded to a-z) unless case_sensitive.
int32_t table_index(std::string_view word, std::string_view table, std::string_view seps, bool case_sensitive);

} // namespace brindle::strings
