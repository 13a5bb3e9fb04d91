// Twofish (Schneier, Kelsey, Whiting, Wagner, Hall, Ferguson) with a
// 128-bit block and a 256-bit key, 16 rounds, table-driven as its designers
// published it: at key setup the four key-dependent S-boxes are folded with
// the MDS matrix into four tables of 256 words, so g() is four lookups.
// Those lookups are indexed by data bytes, so the time of a block can
// depend on the data and key through the processor's cache: this core is
// not constant-time.
//
// Byte order: key and block bytes go into 32-bit words little-endian, byte 0
// the low byte of word 0, as in the designers' test files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// The 40 round-key words and the four g() tables of one 256-bit key. Wiped
// when destroyed.
class TwofishKey {
public:
    explicit TwofishKey(std::span<const uint8_t, 32> key) noexcept;
    ~TwofishKey();
    TwofishKey(const TwofishKey&) = delete;
    TwofishKey& operator=(const TwofishKey&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    void decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 16 bytes); in and
    // out may be the same bytes.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;

private:
    uint32_t k_[40];
    uint32_t s_[4][256];
};

} // namespace brindle::crypto
