// Byte translation: the table behind the in-place character changes.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace brindle::strings {

using ByteTable = std::array<unsigned char, 256>;

// The table that maps from[k] to to[k] for the first min(|from|, |to|)
// pairs, applied in order to the result of the pairs before it ("ab" ->
// "bc" maps a to c). With one pair (or fewer), from[0] maps to to[0]; from
// and to must not be empty. Other bytes map to themselves.
ByteTable translation_table(std::string_view from, std::string_view to);

// The first n bytes of p through table, in place, stopping before the
// first byte equal to *stop when stop is given.
void translate_bytes(char *p, size_t n, const ByteTable &table, const char *stop = nullptr) noexcept;

} // namespace brindle::strings
