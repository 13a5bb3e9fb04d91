// The line index of a text stream: where each line begins, for a caller
// that jumps straight to line k afterwards.
#pragma once

#include "streams/stream.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace brindle::streams {

inline constexpr int32_t kIndexReadError = -32;

// Reads `s` from its position to its end in line pieces of at most 16,383
// bytes. store(1, 0) first; then for piece number n (from 1), while n is not
// above `capacity`, store(n + 1, position after the piece). Stops at piece
// capacity + 1. Gives the pieces counted, kIndexReadError when the stream's
// error flag is set at the end (or a position does not fit a Long), 0 when
// the line buffer cannot be had.
int32_t index_lines(Stream &s, size_t capacity, const std::function<void(int32_t, int32_t)> &store);

} // namespace brindle::streams
