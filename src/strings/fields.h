// Fields of a text split at a one-byte separator, numbered from 1. Two
// adjacent separators make an empty field; a field past the last one is
// empty too. The token and list families split the same way.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::strings {

// Field n counted from the left: field 1 is the text before the first
// separator, the last field the text after the last one. n < 1 gives "".
std::string_view field_from_left(std::string_view text, char sep, int32_t n) noexcept;

// Field n counted from the right: field 1 is the text after the last
// separator.
std::string_view field_from_right(std::string_view text, char sep, int32_t n) noexcept;

// Field n counted from the left where any byte of seps ends a field; "" for
// n < 1 or a field past the last one.
std::string_view field_at_any(std::string_view text, std::string_view seps, int32_t n) noexcept;

} // namespace brindle::strings
