// What the framing of enciphered strings and files needs of a block cipher:
// its block size and ECB over a run of whole blocks. Each core (Rijndael,
// DES, IDEA, and the ones to come) is wrapped once in cipher_table.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

namespace brindle::crypto {

class BlockCipher {
  public:
    virtual ~BlockCipher() = default;
    // Bytes in one block (8 or 16).
    virtual std::size_t block_size() const noexcept = 0;
    // ECB over `blocks` whole blocks; in and out may be the same bytes.
    virtual void encrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept = 0;
    virtual void decrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept = 0;
};

} // namespace brindle::crypto
