// RC6-32/20/32 (Rivest, Robshaw, Sidney and Yin): 128-bit block as four
// little-endian 32-bit words, 20 rounds, 256-bit key. The rotations depend
// on the data, but there are no tables: the time does not depend on the key
// or the data on processors with constant-time multiply and rotate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// The 44 round keys of one 256-bit key. Wiped when destroyed.
class Rc6Key {
public:
    explicit Rc6Key(std::span<const uint8_t, 32> key) noexcept;
    ~Rc6Key();
    Rc6Key(const Rc6Key&) = delete;
    Rc6Key& operator=(const Rc6Key&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    void decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 16 bytes); in and
    // out may be the same bytes. Eight blocks go through the rounds at
    // once in AVX2 lanes where the processor has them (chosen at run time),
    // else four side by side.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;

private:
    uint32_t s_[44];
};

} // namespace brindle::crypto
