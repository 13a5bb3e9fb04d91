// Character filters: strings rebuilt without some of their bytes.
#pragma once

#include <string>
#include <string_view>

namespace brindle::strings {

// The bytes of text that are members of set (keep_members) or that are not.
std::string filter_chars(std::string_view text, std::string_view set, bool keep_members);

// Text without the blocks that begin at `open` and end at `close` (which
// may be the same byte), delimiters included. Blocks do not nest; an
// unclosed block runs to the end of the text.
std::string without_blocks(std::string_view text, char open, char close);

// Text without its zero bytes, tabs and spaces.
std::string without_blanks(std::string_view text);

// Text without a leading prefix, as long as text is: when text begins with
// prefix, the rest of text; otherwise the bytes of text after the first
// prefix.size() ones followed by zero bytes up to text's length (all zero
// bytes when prefix is at least as long as text).
std::string without_prefix_fixed(std::string_view text, std::string_view prefix);

// True when every byte of set occurs in text, as counted on a working copy
// of set: each byte of text counts every place of the copy that holds it and
// clears those places to zero bytes, and the answer is whether the count
// reaches |set|. So a repeated byte of set is met by one occurrence, and
// cleared places count again for each zero byte of text. Sets longer than
// 128 bytes are refused (false), as are empty texts or sets.
bool has_all_chars(std::string_view text, std::string_view set);

} // namespace brindle::strings
