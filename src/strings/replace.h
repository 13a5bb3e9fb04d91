// Replacement and deletion of substrings, in one pass each.
//
// The exports define them one occurrence at a time (search, remove, insert,
// search again); done that way a text with many occurrences costs time
// quadratic in its length. These workers give the same results in time
// linear in the text for each pair (times the length of the searched text
// for the case-insensitive search).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brindle::strings {

// Every occurrence of `old_text` in `text` replaced by `new_text`, scanning
// from the left and resuming right after each inserted text (which is never
// searched again). An empty old text changes nothing. Returns nothing when
// the result would be longer than `limit` bytes.
std::optional<std::string> replace_all(std::string_view text, std::string_view old_text, std::string_view new_text,
                                      bool case_sensitive, size_t limit);

// The list of replacements "old|new;old|new;...", applied pair after pair
// (later pairs see the text that earlier ones inserted). A pair without "|"
// deletes its old text; the new text is everything after the first "|" of
// its pair. Pairs with an empty old text are skipped. Returns nothing when
// a result would grow past `limit` bytes.
std::optional<std::string> replace_pairs(std::string_view text, std::string_view pairs, bool case_sensitive,
                                        size_t limit);

// `text` with `sub` removed again and again, always at its leftmost
// occurrence, until none is left (removals that join new occurrences
// remove those too). An empty sub changes nothing.
std::string delete_all(std::string_view text, std::string_view sub, bool case_sensitive);

} // namespace brindle::strings
