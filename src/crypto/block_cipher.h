// What the framing of enciphered strings and files needs of a block cipher:
// its block size, ECB over a run of whole blocks and the chained encryption
// of a run. Each core (Rijndael, DES, IDEA, and the ones to come) is wrapped
// once in cipher_table.cpp.
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
    // CBC encryption in place over `blocks` whole blocks, the first `width`
    // bytes of each block chained (width <= block size), starting from
    // `iv` (`width` bytes). A core that keeps the chain in registers
    // overrides this; the default chains one block at a time.
    virtual void encrypt_chained(const uint8_t *iv, uint8_t *bytes, std::size_t blocks,
                                 std::size_t width) const noexcept {
        const std::size_t block = block_size();
        const uint8_t *previous = iv;
        for (std::size_t b = 0; b < blocks; ++b) {
            uint8_t *p = bytes + b * block;
            for (std::size_t i = 0; i < width; ++i)
                p[i] ^= previous[i];
            encrypt_blocks(p, p, 1);
            previous = p;
        }
    }
    // encrypt_chained over `runs` independent runs laid end to end, each of
    // `run_blocks` blocks and each starting from `iv` (the file forms
    // restart the chain at every chunk). A core that can run several chains
    // side by side overrides this.
    virtual void encrypt_chained_runs(const uint8_t *iv, uint8_t *bytes, std::size_t run_blocks,
                                      std::size_t runs, std::size_t width) const noexcept {
        for (std::size_t r = 0; r < runs; ++r)
            encrypt_chained(iv, bytes + r * run_blocks * block_size(), run_blocks, width);
    }
};

} // namespace brindle::crypto
