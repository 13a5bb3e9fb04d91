// Single bits of numbers, in the two numberings the library has always
// offered side by side. Stored programs depend on both, quirks included.
//
// First scheme: the number's bytes in memory order (least significant
// first) are read as a bit string, so inside each byte bit 0 is the high
// bit: for a 16-bit number bit 0 is 0x0080, bit 7 0x0001, bit 8 0x8000 and
// bit 15 0x0100. The index is first reduced to abs(n) mod the width.
//
// Second scheme: ordinary numbering, bit 0 the least significant, the index
// reduced modulo the width when reading and modulo 32 when setting. Only
// the value -1 (True) sets a bit; any other value clears it. A negative
// index names no bit.
//
// Results are the same on every target: the byte order is computed, not
// taken from the machine.
#pragma once

#include <cstdint>

namespace brindle::arrays {

// First scheme: bit `index` of the `width` low bits of `value` (width 8, 16,
// 32 or 64), after index := abs(index) mod width.
bool first_scheme_bit(uint64_t value, int width, int32_t index);

// First scheme set of a Byte. The index is reduced to abs(index) mod 32, as
// if the Byte were four bytes wide; an index that then lands in one of the
// three bytes past the Byte changes nothing (those bytes are not the
// caller's). Returns the Byte with the bit set (on) or cleared.
uint8_t first_scheme_set_byte(uint8_t value, int32_t index, bool on);

// Second scheme read: bit (index mod width) of `value`, where a negative
// number is its 32-bit two's complement; false for a negative index.
bool second_scheme_bit(uint32_t value, int width, int32_t index);

// Second scheme set: `value` with bit (index mod 32) set (on) or cleared;
// unchanged for a negative index. The caller stores the low 8, 16 or 32
// bits back, so for a Byte or an Integer an index whose remainder is 8 (16)
// or more changes nothing visible.
uint32_t second_scheme_set(uint32_t value, int32_t index, bool on);

} // namespace brindle::arrays
