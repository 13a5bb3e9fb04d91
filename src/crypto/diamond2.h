// Johnson's Diamond2 (16-byte block) and Diamond2 Lite (8-byte block), 1995:
// the network of diamond.h with the revised box generation, in which every
// key byte is looked up in the box made just before it before it enters the
// CRC. Interoperates with the published reference code (and with the port
// that Crypto++ 5.0 carried) for the same key, rounds and block.
#pragma once

#include "crypto/diamond.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace brindle::crypto {

// The key of Diamond2 (block 16) or Diamond2 Lite (block 8): nullptr when
// the round count is outside 5..15 (block 16) or 4..30 (block 8), the block
// is neither, or the key is empty.
std::unique_ptr<DiamondKey> make_diamond2_key(std::span<const uint8_t> key, unsigned rounds, std::size_t block);

// The rounds the DIAMOND2 exports take from their mode: with m = mode - 1
// (mode itself below 1), 8 rounds when m > 1, else 15. The block is
// diamond_mode_block(mode).
unsigned diamond2_mode_rounds(int mode) noexcept;

} // namespace brindle::crypto
