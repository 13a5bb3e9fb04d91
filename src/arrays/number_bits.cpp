#include "arrays/number_bits.h"

namespace brindle::arrays {

namespace {

// The bit of the value that the first scheme's position p stands for: byte
// p / 8 of the little-endian image, mask 128 >> (p mod 8) inside it.
uint64_t first_scheme_mask(int64_t p) { return uint64_t{128} >> (p % 8) << (8 * (p / 8)); }

int64_t magnitude(int32_t index) { return index < 0 ? -static_cast<int64_t>(index) : index; }

} // namespace

bool first_scheme_bit(uint64_t value, int width, int32_t index) {
    return (value & first_scheme_mask(magnitude(index) % width)) != 0;
}

uint8_t first_scheme_set_byte(uint8_t value, int32_t index, bool on) {
    const int64_t p = magnitude(index) % 32;
    if (p >= 8)
        return value;
    const auto mask = static_cast<uint8_t>(first_scheme_mask(p));
    return on ? static_cast<uint8_t>(value | mask) : static_cast<uint8_t>(value & ~mask);
}

bool second_scheme_bit(uint32_t value, int width, int32_t index) {
    if (index < 0)
        return false;
    return ((value >> (index % width)) & 1u) != 0;
}

uint32_t second_scheme_set(uint32_t value, int32_t index, bool on) {
    if (index < 0)
        return value;
    const uint32_t mask = uint32_t{1} << (index % 32);
    return on ? value | mask : value & ~mask;
}

} // namespace brindle::arrays
