// Bit rotations of 32-bit words, and the library's Integer rotation.
#pragma once

#include <cstdint>

namespace brindle::math {

// value rotated left (right) by count mod 32; a negative count is taken
// modulo 32 from 0 up (-1 rotates by 31).
int32_t rotate_left_32(int32_t value, int count) noexcept;
int32_t rotate_right_32(int32_t value, int count) noexcept;

// The Integer rotations as the library has always done them: the value is
// sign-extended to 32 bits, rotated as above, and the low 16 bits returned.
// Not a 16-bit rotation: right by 1 of 1 is 0, left by 1 of -32768 is 1.
int16_t rotate_left_16_widened(int16_t value, int count) noexcept;
int16_t rotate_right_16_widened(int16_t value, int count) noexcept;

} // namespace brindle::math
