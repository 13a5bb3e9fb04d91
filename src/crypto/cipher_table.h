// The block ciphers of the enciphering exports, one row each: how much key
// the key string must hold, the block size, and how to set the cipher up.
// A new cipher is a core of its own and one row in cipher_table.cpp.
#pragma once

#include "crypto/block_cipher.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace brindle::crypto {

// The ciphers of the family. The first five are the dispatcher's codes 1..5.
enum class CipherId { mars = 1, rc6, rijndael, serpent, twofish, cast256, des, idea };

struct CipherRow {
    CipherId id;
    const char *name;
    std::size_t key_bytes;   // the key string must hold at least this many bytes
    std::size_t block_bytes; // 8 or 16
    // Sets the cipher up from a key string of at least key_bytes bytes (the
    // rows with a fixed key size take its first key_bytes). Throws
    // std::bad_alloc when out of memory.
    std::unique_ptr<BlockCipher> (*make)(std::span<const uint8_t> key);
};

// The row of a cipher, or nullptr when this build does not have it yet.
const CipherRow *cipher_row(CipherId id) noexcept;

// The AES candidate a dispatcher code names: the code modulo 20 (so 21..25,
// the codes of the CBC forms, name the same ciphers) is 1 MARS, 2 RC6,
// 3 Rijndael, 4 Serpent, 5 Twofish. Nullptr for any other code, and for a
// candidate this build does not have.
const CipherRow *aes_candidate(int code) noexcept;

} // namespace brindle::crypto
