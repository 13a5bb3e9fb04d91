// Pieces of a text found by tags: between two tags, or before and after a
// pair of them.
//
// `text` is the whole counted text; the tags are searched for only in its
// part before the first zero byte (str_find.h), while the pieces returned
// may run on to its counted end. Case-sensitive only when case_sensitive.
// An empty result means "nothing found" as well as an empty piece.
#pragma once

#include <string_view>

namespace brindle::strings {

// The text between the first `open` and the next `close` after it. When no
// close follows: the rest of the text after open if rest_if_unclosed, else
// nothing. Nothing when open is not found.
std::string_view extract_between(std::string_view text, std::string_view open, std::string_view close,
                                 bool case_sensitive, bool rest_if_unclosed);

// With both tags found (second after the end of first): the text before
// `first` when left, else the text after that `second`. Nothing otherwise.
std::string_view isolate_by_tags(std::string_view text, std::string_view first, std::string_view second, bool left,
                                 bool case_sensitive);

// `tag` looked for doubled, two occurrences back to back (a blank line
// between two line ends): when left, the text through the first byte of the
// occurrence before the pair (from the start of text when the pair opens
// it); else the text after the pair. Nothing when no pair is found.
std::string_view isolate_by_doubled_tag(std::string_view text, std::string_view tag, bool left, bool case_sensitive);

} // namespace brindle::strings
