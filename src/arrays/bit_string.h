// Packed bit strings: a run of L bytes holds 8 x L bits numbered from 0,
// bit n in byte n / 8 under the mask 128 >> (n mod 8), so bit 0 is the high
// bit of the first byte and bit 8 x L - 1 the low bit of the last. Indexes
// are 64-bit here; an index outside 0 .. 8 x L - 1 names no bit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::arrays {

// True when `index` names a bit of a string of `size` bytes.
bool bit_in_range(size_t size, int64_t index);

// The bit at `index`; false for an index outside the string.
bool get_bit(std::string_view bits, int64_t index);

// Sets (on) or clears bit `index` of the `size` bytes at `bits`. Returns
// false, writing nothing, for an index outside the string.
bool put_bit(unsigned char *bits, size_t size, int64_t index, bool on);

// Inverts bit `index` and returns its state before: 1 (was set) or 0 (was
// clear); 0, writing nothing, for an index outside the string.
int toggle_bit(unsigned char *bits, size_t size, int64_t index);

// Every byte to 255 (on) or 0.
void fill_bits(unsigned char *bits, size_t size, bool on);

// Every byte to its complement.
void complement_bits(unsigned char *bits, size_t size);

// The byte with its 8 bits in the opposite order (1 <-> 128, 2 <-> 64, ...).
unsigned char mirror_byte(unsigned char b);

// Reverses the bit order of the whole string: bit i and bit 8 x size - 1 - i
// change places.
void reverse_bits(unsigned char *bits, size_t size);

// Reverses the bit order inside every byte; the bytes stay where they are.
void reverse_bits_by_byte(unsigned char *bits, size_t size);

// The first bit at or after `start` whose state is `on`; -1 when there is
// none or `start` is outside the string.
int64_t find_bit(std::string_view bits, int64_t start, bool on);

// True when the string reads the same in both bit orders (bit i equals bit
// 8 x L - 1 - i for every i); false for an empty string.
bool is_bit_palindrome(std::string_view bits);

// The byte values 0..255, ascending, whose 8 bits read the same both ways:
// 16 bytes.
std::string palindrome_bytes();

} // namespace brindle::arrays
