// Searches of a text file that start at a given line and tell the line
// where they stopped, so that a caller can walk through every match.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

struct LineHit {
    int32_t line = 0;     // the line found, from 1
    int32_t position = 0; // where in it, from 1 (1 for a pattern)
};

// Reads `path` in text mode in line pieces of at most 2,559 bytes, skips the
// pieces before `first_line` (below 1: 1) and stops at the first piece that
// holds `text` (exact, or with A-Z folded) or, with `pattern`, that matches
// the wildcard pattern whole (its line feed left out). 1 with *hit filled,
// 0 when none does (or the path or text is empty), kTextSourceNotOpened or
// kTextReadError.
int32_t search_from_line(std::string_view path, std::string_view text, int32_t first_line, bool exact, bool pattern,
                         LineHit *hit);

} // namespace brindle::files
