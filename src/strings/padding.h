// Padding, filling and alignment of text in a field of fixed width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle::strings {

// Text padded to `width` bytes with `fill`, on the left (left = true) or
// the right. Needs width >= |text|.
std::string pad_to_width(std::string_view text, char fill, size_t width, bool left);

// n bytes of pattern repeated, the last repetition cut. pattern must not be
// empty.
std::string repeat_to_length(std::string_view pattern, size_t n);

// Exactly n bytes: text cut to n, or padded on the right with fill.
std::string resize_and_fill(std::string_view text, size_t n, char fill);

// Text in a field of `width` spaces: right-aligned for a negative mode,
// centred for 0 (the odd space on the left), left-aligned for a positive
// one. A text at least as wide as the field is cut to width.
std::string align_in_field(std::string_view text, int mode, size_t width);

} // namespace brindle::strings
