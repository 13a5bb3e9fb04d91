// Binary text: one character per bit, the most significant bit first, "1"
// and "0" unless the caller picks two other characters. Both ways, for runs
// of bytes and for 16- and 32-bit numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::arrays {

// Writes 8 x bytes.size() characters to `out`: each byte high bit first,
// `one` for a 1-bit and `zero` for a 0-bit.
void write_binary(std::string_view bytes, char one, char zero, char *out);

// Reads text.size() / 8 bytes into `out`: each group of 8 characters, the
// first the most significant, `one` giving a 1-bit and any other character
// a 0-bit. The characters after the last whole group are ignored.
void read_binary(std::string_view text, char one, unsigned char *out);

// The number a binary text stands for, the way a 16-bit (max_digits 16) or
// 32-bit (32) number is read: 0 for an empty text or one of more than
// max_digits characters; otherwise the "0" and "1" characters from the
// start up to the first other one, each doubling the value and adding its
// digit ("101x11" is 5). The value wraps modulo 2^32; the caller keeps its
// low 16 or 32 bits.
uint32_t binary_number(std::string_view text, size_t max_digits);

// The `width` low bits of `value` (1 .. 32) as exactly `width` characters,
// the most significant first, or bit 0 first when `lowest_first`.
std::string number_binary(uint32_t value, int width, char one, char zero, bool lowest_first);

// The binary text of `value` without leading zeros, "0" for 0.
std::string number_binary_trimmed(uint32_t value);

} // namespace brindle::arrays
