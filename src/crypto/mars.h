// MARS (IBM, the AES second-round version with the revised key schedule):
// 128-bit block as four little-endian 32-bit words, 256-bit key. Eight
// unkeyed mixing rounds each side of a 16-round keyed core. Table-driven:
// the mixing rounds and the core index a 512-word S-box with data bytes, so
// the memory accesses depend on the data and the key (not constant-time).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// The 40 subkeys of one 256-bit key. Wiped when destroyed.
class MarsKey {
public:
    explicit MarsKey(std::span<const uint8_t, 32> key) noexcept;
    ~MarsKey();
    MarsKey(const MarsKey&) = delete;
    MarsKey& operator=(const MarsKey&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    void decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 16 bytes); in and
    // out may be the same bytes. Four blocks go through the rounds side by
    // side.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;

private:
    uint32_t k_[40];
};

// The pattern mask of the key schedule's fix-up of the multiplication
// keys: bit l (2 <= l <= 30) is set when it lies inside a run of at least
// ten equal bits of w and both neighbours equal it. Exposed for tests.
uint32_t mars_weak_key_mask(uint32_t w) noexcept;

} // namespace brindle::crypto
