// Padding, filling and alignment of text in a field of fixed width. Each
// engine fills a buffer of the result's final length, which the caller
// provides: an export hands it the new result string itself, so a large
// field is allocated once, by the string allocator, and a width the system
// cannot give ends in the export's failure value.
#pragma once

#include <span>
#include <string_view>

namespace brindle::strings {

// Text padded to out.size() bytes with `fill`, on the left (left = true) or
// the right. Needs out.size() >= |text|.
void pad_to_width(std::string_view text, char fill, bool left, std::span<char> out) noexcept;

// out filled with pattern repeated, the last repetition cut. pattern must
// not be empty.
void repeat_to_length(std::string_view pattern, std::span<char> out) noexcept;

// Exactly out.size() bytes: text cut to that, or padded on the right with
// fill.
void resize_and_fill(std::string_view text, char fill, std::span<char> out) noexcept;

// Text in a field of out.size() spaces: right-aligned for a negative mode,
// centred for 0 (the odd space on the left), left-aligned for a positive
// one. A text at least as wide as the field is cut to its width.
void align_in_field(std::string_view text, int mode, std::span<char> out) noexcept;

} // namespace brindle::strings
