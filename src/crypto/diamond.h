// Michael Paul Johnson's Diamond block cipher (1994) and the network it
// shares with Diamond2 (1995): a 16-byte block (or an 8-byte block in the
// "Lite" variants) passed through one keyed byte substitution per round,
// with a fixed bit permutation between rounds. Bit b of output byte i is
// bit b of input byte (i + b) modulo the block size. The 256-entry boxes
// (one per byte and round) are shuffled from a CRC-32 of the key bytes
// that runs on over the whole key setup; the key length is mixed into the
// CRC each time the key is used up. Diamond2 feeds each key byte through
// the box made before (see diamond2.h); the original feeds the key bytes
// as they are.
//
// The tables are key-dependent and looked up by data bytes: the cipher is
// not constant-time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace brindle::crypto {

enum class DiamondVersion { diamond, diamond2 };

// The round counts the published code accepts: 5 to 15 with the 16-byte
// block, 4 to 30 with the 8-byte block (the "Lite" ciphers).
bool diamond_rounds_valid(unsigned rounds, std::size_t block) noexcept;

// The boxes of one key, for both directions. Wiped when destroyed.
class DiamondKey {
  public:
    // Builds the boxes of `key` (one byte or more; the key length enters the
    // key stream as two bytes, low byte first). Call only with
    // diamond_rounds_valid(rounds, block). Throws std::bad_alloc.
    DiamondKey(DiamondVersion version, std::span<const uint8_t> key, unsigned rounds, std::size_t block);
    ~DiamondKey();
    DiamondKey(const DiamondKey &) = delete;
    DiamondKey &operator=(const DiamondKey &) = delete;

    std::size_t block_size() const noexcept { return block_; }
    unsigned rounds() const noexcept { return rounds_; }
    // ECB over `blocks` blocks of block_size() bytes; in and out may be the
    // same bytes.
    void encrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept;

  private:
    std::size_t block_;
    unsigned rounds_;
    std::vector<uint8_t> forward_; // [round][byte][256]
    std::vector<uint8_t> inverse_;
};

// The key of a Diamond cipher: nullptr when the round count is outside the
// published range for the block (8 or 16 bytes) or the key is empty.
std::unique_ptr<DiamondKey> make_diamond_key(std::span<const uint8_t> key, unsigned rounds, std::size_t block);

// The block and the rounds the keyed-cipher exports take from their mode:
// an odd mode gives the 16-byte block, an even mode the 8-byte one. With
// m = mode - 1 (mode itself below 1), Diamond runs 15 rounds for m < 2 and
// 30 otherwise (which exceeds the 16-byte block's limit of 15).
std::size_t diamond_mode_block(int mode) noexcept;
unsigned diamond_mode_rounds(int mode) noexcept;

} // namespace brindle::crypto
