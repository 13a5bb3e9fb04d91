// The layout of enciphered strings and files of the block-cipher exports.
//
// String: the data zero-padded to whole blocks and enciphered, then one
// plain byte holding the number of padding bytes (0 .. block - 1).
// File: the source in chunks of 32,768 bytes, each padded and enciphered
// like a string's data; one count byte after the short last chunk, or a
// single zero byte at the end when no chunk was short. The file is the
// padded ciphertext of the whole source followed by one count byte.
//
// ECB enciphers each block alone. The CBC forms (16-byte blocks only) XOR
// bytes 0..14 of the first block with the 15 IV bytes and bytes 0..14 of
// every later block with the ciphertext block before it; byte 15 is never
// chained. Files start the chain again from the IV at every chunk. Neither
// mode authenticates anything; both stay as they are so that existing data
// can be read.
#pragma once

#include "crypto/block_cipher.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace brindle::crypto {

inline constexpr std::size_t kChunkBytes = 32768;
inline constexpr std::size_t kChainBytes = 15;
using ChainIv = std::array<uint8_t, kChainBytes>;

// The CBC vector taken from an IV string: its first 15 bytes, or 15 zero
// bytes for an empty one. Nullopt for an IV of 1 to 15 bytes (refused).
std::optional<ChainIv> chain_iv(std::string_view iv) noexcept;

// Length of the enciphered form of `plain` bytes: padded length + 1.
std::size_t enciphered_size(std::size_t plain, std::size_t block) noexcept;

// Enciphers `plain` into `out`, which holds enciphered_size(plain.size())
// bytes; `iv` null for ECB. `out` may not overlap `plain`.
void encipher_bytes(const BlockCipher &cipher, std::span<const uint8_t> plain, const ChainIv *iv,
                    uint8_t *out) noexcept;

// Length of the data an enciphered string holds, or nullopt when it cannot
// be one: empty, a length that is neither whole blocks plus one nor whole
// blocks, or a count byte of a block or more (or more than the data). A
// length of whole blocks has no count byte: the zero that ends every string
// stands for it, so all its blocks are data.
std::optional<std::size_t> deciphered_size(std::span<const uint8_t> enciphered, std::size_t block) noexcept;

// Deciphers into `out` the deciphered_size() bytes; call only when that
// gave a value. `out` may not overlap `enciphered`.
void decipher_bytes(const BlockCipher &cipher, std::span<const uint8_t> enciphered, const ChainIv *iv,
                    uint8_t *out) noexcept;

// Results of the file forms other than a byte count.
enum FileCode : int32_t {
    kFileNoBuffer = -11,
    kFileSourceNotOpened = -21,
    kFileTargetNotCreated = -22, // also when the target is the source itself
    kFileReadFailed = -31,       // also a damaged enciphered source
    kFileWriteFailed = -41,
    kFileCountWriteFailed = -51,
};

// Enciphers the file `source` into `target` (both Windows paths). Returns the
// bytes written, count byte included (at most 2,147,483,647 reported), or a
// FileCode; on a code the target is deleted.
int32_t encipher_file(const BlockCipher &cipher, std::string_view source, std::string_view target,
                      const ChainIv *iv);

// Deciphers a file made by encipher_file: the bytes written, or a FileCode.
// A source whose length is not whole blocks plus one, or whose count byte is
// a block or more, gives kFileReadFailed.
int32_t decipher_file(const BlockCipher &cipher, std::string_view source, std::string_view target,
                      const ChainIv *iv);

} // namespace brindle::crypto
