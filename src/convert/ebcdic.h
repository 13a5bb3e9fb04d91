// ASCII and EBCDIC, both ways, through the table of the POSIX dd utility
// (conv=ebcdic), which also maps the bytes 128 to 255. The table is a
// permutation of all 256 byte values; the EBCDIC-to-ASCII table is its exact
// inverse, so a round trip restores any byte string. Shared by the text
// conversions and the own ciphers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace brindle::convert {

// ASCII byte -> EBCDIC byte.
extern const std::array<uint8_t, 256> kAsciiToEbcdic;
// EBCDIC byte -> ASCII byte (the inverse permutation).
extern const std::array<uint8_t, 256> kEbcdicToAscii;

inline uint8_t ascii_to_ebcdic(uint8_t c) { return kAsciiToEbcdic[c]; }
inline uint8_t ebcdic_to_ascii(uint8_t c) { return kEbcdicToAscii[c]; }

// Convert `size` bytes in place.
void ascii_to_ebcdic(char *bytes, size_t size);
void ebcdic_to_ascii(char *bytes, size_t size);

} // namespace brindle::convert
