// IDEA (Lai and Massey): 64-bit block, 128-bit key, eight rounds and an
// output transform over big-endian 16-bit words. Multiplication is modulo
// 2^16 + 1 with the word 0 standing for 2^16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// The 52 encryption and 52 decryption subkeys of one key. Wiped when
// destroyed.
class IdeaKey {
public:
    explicit IdeaKey(std::span<const uint8_t, 16> key) noexcept;
    ~IdeaKey();
    IdeaKey(const IdeaKey&) = delete;
    IdeaKey& operator=(const IdeaKey&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept;
    void decrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 8 bytes); in and
    // out may be the same bytes. The framing calls these, so a core may
    // interleave blocks here for speed.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;

private:
    uint16_t enc_[52];
    uint16_t dec_[52];
};

} // namespace brindle::crypto
