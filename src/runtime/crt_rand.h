// The random generator of the Microsoft C runtime (srand/rand), written out
// so that every platform draws the same sequence from the same seed:
//   state = state * 214013 + 2531011 (mod 2^32), rand = (state >> 16) & 0x7FFF
// The state is process-wide and starts at seed 1, as the runtime's does;
// every family that uses "the runtime's random numbers" shares it, so a
// reseed by one is seen by the others. Unlocked: VB callers are
// single-threaded.
#pragma once

#include <cstdint>

namespace brindle::runtime {

constexpr int kCrtRandMax = 0x7FFF;

void crt_srand(uint32_t seed) noexcept;
int crt_rand() noexcept; // 0 .. 32767

} // namespace brindle::runtime
