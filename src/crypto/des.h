// Single DES (FIPS 46-3): 64-bit block, 64-bit key of which 56 bits are
// used (the low bit of each key byte is parity and is ignored). Bit 1 of
// the standard is the high bit of byte 0. The S-box lookups index tables
// by data bytes; DES is kept for existing files, not for new secrets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// The sixteen round keys of one DES key. Wiped when destroyed.
class DesKey {
public:
    explicit DesKey(std::span<const uint8_t, 8> key) noexcept;
    ~DesKey();
    DesKey(const DesKey&) = delete;
    DesKey& operator=(const DesKey&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept;
    void decrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 8 bytes); in and
    // out may be the same bytes. The framing calls these, so a core may
    // interleave blocks here for speed.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;

private:
    // K1 first; each as two words holding the key bits of S-boxes 1, 3, 5, 7
    // and of 2, 4, 6, 8 where the rounds read them (des.cpp).
    uint32_t round_key_[16][2];
};

} // namespace brindle::crypto
