// The library's own layered cipher: the data XORed with a repeated key,
// then up to four byte and bit scramblings chosen by a level. It obscures
// data; it is not cryptographically strong (a known plaintext gives the key
// away). The output has exactly the length of the input.
//
//   level < 0   only the XOR with the key
//   level >= 0  complement every byte
//   level >= 1  in every byte, exchange bit 7 with bit 0 and bit 4 with bit 3
//   level >= 2  complement every byte again
//   level >= 3  reverse the whole buffer as a string of bits
//   level >= 4  translate every byte ASCII -> EBCDIC (the dd table)
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// Where the key stands between the blocks of a file. The pointer carries
// over from block to block, but the count that sends it back to the key's
// first byte starts at 0 in every block; so from the second block on the
// pointer runs past the key's end for up to (block size mod key length)
// bytes before it wraps, and those bytes XOR with zero.
struct LayeredKeyCursor {
    uint64_t pointer = 0;
};

// Enciphers / deciphers `data` in place with `key` (not empty). With a
// cursor the key pointer starts where it stands and is left where it ended
// (the file rule above); without one it starts at the key's first byte, so
// byte i XORs with key[i mod key length].
void layered_encrypt(std::span<uint8_t> data, std::span<const uint8_t> key, int level,
                     LayeredKeyCursor *cursor = nullptr) noexcept;
void layered_decrypt(std::span<uint8_t> data, std::span<const uint8_t> key, int level,
                     LayeredKeyCursor *cursor = nullptr) noexcept;

} // namespace brindle::crypto
