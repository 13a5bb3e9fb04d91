// Counting one byte value over a block, at memory speed where the processor
// has SSE2 (every x86 target we build) and one byte at a time elsewhere.
#pragma once

#include <cstddef>
#include <cstdint>

namespace brindle::files {

// The number of bytes equal to `value` among the `size` bytes at `data`.
uint64_t count_byte(const unsigned char *data, size_t size, unsigned char value) noexcept;

} // namespace brindle::files
