// Search of a text file for a string, line by line.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

// Reads `path` in text mode in line pieces of at most 2,559 bytes and counts
// the non-overlapping occurrences of `text` in each (a match does not span
// two pieces). Without `exact` the text and the lines are compared in lower
// case. With `first_only` it stops at the first piece holding one and gives
// 1 (0 when there is none). Gives 0 for an empty path or text,
// kTextSourceNotOpened, or kTextReadError when the stream's error flag is
// set at the end.
// Plain text files (no zero byte, no Ctrl-Z, short lines) and texts without
// line breaks are counted over large raw blocks; others line by line.
int32_t search_text_file(std::string_view path, std::string_view text, bool exact, bool first_only);

// The same, always line by line through the stream: the definition the
// quicker way is tested against.
int32_t search_text_file_by_lines(std::string_view path, std::string_view text, bool exact, bool first_only);

} // namespace brindle::files
