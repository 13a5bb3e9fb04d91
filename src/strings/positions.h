// Edits by position: removing, inserting and cutting out ranges of bytes.
// Positions count from 1; callers have refused empty texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::strings {

// Text without `count` bytes from position pos (0 counts as 1), for
// 0 <= pos <= |text| and 1 <= count < |text|. The result always has
// |text| - count bytes: a range that runs past the end cuts the text to
// that length from the left instead.
std::string remove_range(std::string_view text, size_t pos, size_t count);

// ins placed after the first `at` bytes of text, or appended when `at`
// reaches the end.
std::string insert_at(std::string_view text, size_t at, std::string_view ins);

// Block n (from 1) of `size` bytes; the last block may be short and a block
// past the end is empty. Needs n >= 1 and size >= 1.
std::string_view block_at(std::string_view text, int32_t n, int32_t size);

} // namespace brindle::strings
