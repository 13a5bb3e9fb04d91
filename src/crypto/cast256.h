// CAST-256 (Adams, RFC 2612): 128-bit block as four big-endian 32-bit
// words, 48 rounds in 12 quad-rounds, 256-bit key. Table-driven: the
// round function indexes four 256-word S-boxes with data bytes, so the
// memory accesses depend on the data and the key (not constant-time).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// The 48 masking and 48 rotation keys of one 256-bit key. Wiped when
// destroyed.
class Cast256Key {
public:
    explicit Cast256Key(std::span<const uint8_t, 32> key) noexcept;
    ~Cast256Key();
    Cast256Key(const Cast256Key&) = delete;
    Cast256Key& operator=(const Cast256Key&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    void decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 16 bytes); in and
    // out may be the same bytes. Four blocks go through the rounds side by
    // side.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;

private:
    // Quad-round i uses km_[i][0..3] and kr_[i][0..3]; decryption walks
    // them backwards.
    uint32_t km_[12][4];
    uint32_t kr_[12][4];
};

} // namespace brindle::crypto
