// Shuffling the bytes of a string with the C runtime's random generator.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::strings {

// The bytes of text up to its first zero byte, followed by zero bytes to
// text's length, shuffled: the runtime's generator (process-wide state,
// src/runtime/crt_rand.h) is seeded with `seed`, then for each byte two
// places i and j are drawn (drawn again, once, when they coincide) and
// swapped. Draws span 0..32767, so bytes beyond the first 32,768 never move.
// The same seed gives the same shuffle.
std::string shuffle_bytes(std::string_view text, uint32_t seed);

} // namespace brindle::strings
