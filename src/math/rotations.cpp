#include "math/rotations.h"

namespace brindle::math {

namespace {

unsigned places(int count) { return static_cast<unsigned>(count) & 31u; }

uint32_t rotl(uint32_t v, unsigned k) { return k == 0 ? v : (v << k) | (v >> (32 - k)); }

} // namespace

int32_t rotate_left_32(int32_t value, int count) noexcept {
    return static_cast<int32_t>(rotl(static_cast<uint32_t>(value), places(count)));
}

int32_t rotate_right_32(int32_t value, int count) noexcept {
    return static_cast<int32_t>(rotl(static_cast<uint32_t>(value), (32 - places(count)) & 31u));
}

int16_t rotate_left_16_widened(int16_t value, int count) noexcept {
    return static_cast<int16_t>(static_cast<uint16_t>(rotate_left_32(value, count)));
}

int16_t rotate_right_16_widened(int16_t value, int count) noexcept {
    return static_cast<int16_t>(static_cast<uint16_t>(rotate_right_32(value, count)));
}

} // namespace brindle::math
