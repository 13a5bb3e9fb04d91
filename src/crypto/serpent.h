// Serpent (Anderson, Biham, Knudsen) with a 128-bit block and a 256-bit key,
// 32 rounds, in the bitsliced form the designers published: the four 32-bit
// words of a block are the four bit planes of its 32 four-bit S-box inputs,
// so every S-box is a fixed circuit of logic operations. No table is indexed
// by a key or data byte and no branch depends on one.
//
// Byte order: key and block bytes go into 32-bit words little-endian, byte 0
// the low byte of word 0 (what a byte interface sees; the designers' own
// test files print each value as one big number, that is these bytes in
// reverse order).
//
// On x86 processors (32- and 64-bit) the many-block calls run four blocks at
// once in SSE2 registers; elsewhere, and for the last blocks of a run, the
// same circuits run on plain 32-bit words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// The 33 round keys of one 256-bit key. Wiped when destroyed.
class SerpentKey {
public:
    explicit SerpentKey(std::span<const uint8_t, 32> key) noexcept;
    ~SerpentKey();
    SerpentKey(const SerpentKey&) = delete;
    SerpentKey& operator=(const SerpentKey&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    void decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 16 bytes); in and
    // out may be the same bytes.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;

private:
    uint32_t round_key_[33][4];
};

} // namespace brindle::crypto
