// Two files compared by attribute word, last-write time, size and contents.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

// -1 when both files exist with the same attribute word, 0 when the words
// differ, -2 when either is missing.
int16_t compare_attributes(std::string_view first, std::string_view second);
// Last-write times to the second, as the runtime's status gives them:
// 1 first newer, -1 first older, 0 same, -2 either missing.
int16_t compare_times(std::string_view first, std::string_view second);
// Sizes as 32-bit counts: 1 first larger, -1 smaller, 0 same, -2 either missing.
int16_t compare_sizes(std::string_view first, std::string_view second);

// -1 when the contents are equal, 0 when not (or the sizes differ, or a file
// is missing), else a block-copy code (files/block_copy.h). Blocks of
// 32,768 bytes are compared as zero-terminated strings of at most the
// block's length: bytes after a zero byte both blocks share at one place are
// not compared. `case_sensitive` false folds A-Z to a-z first.
int16_t compare_contents(std::string_view first, std::string_view second, bool case_sensitive);

// The block rule alone: whether two blocks of `size` bytes compare equal.
bool blocks_equal(const char *a, const char *b, size_t size, bool case_sensitive) noexcept;

} // namespace brindle::files
