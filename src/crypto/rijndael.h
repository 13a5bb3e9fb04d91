// Rijndael with a 128-bit block and a 256-bit key (14 rounds), as in
// FIPS 197. Bytes go in and out in the standard's order (byte 0 is row 0,
// column 0 of the state). No table is indexed by a key or data byte and no
// branch depends on one: the portable rounds are bitsliced (four blocks at
// a time, each 64-bit word holding one bit of every state byte, the S-box a
// fixed circuit of logic gates), so the time and the memory accesses do not
// depend on the secret bytes. On x86 processors with the AES instructions,
// chosen at run time, those do the rounds instead (eight blocks interleaved
// in the many-block calls), with the same results.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

// Which implementation a key runs on: the best this processor has, or the
// portable one everywhere (both give the same results).
enum class RijndaelPath { best, portable };

// The expanded key (15 round keys) of one 256-bit key. Wiped when destroyed.
class RijndaelKey {
public:
    explicit RijndaelKey(std::span<const uint8_t, 32> key,
                         RijndaelPath path = RijndaelPath::best) noexcept;
    ~RijndaelKey();
    RijndaelKey(const RijndaelKey&) = delete;
    RijndaelKey& operator=(const RijndaelKey&) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    void decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept;
    // Many blocks each way (ECB over `blocks` blocks of 16 bytes); in and
    // out may be the same bytes. The framing calls these, so a core may
    // interleave blocks here for speed.
    void encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    void decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept;
    // Chained encryption of `blocks` blocks: before block i is enciphered,
    // its first `chained` bytes (clamped to 0..16) are XORed with the
    // ciphertext of block i - 1, or with iv for block 0 (16 is the standard
    // CBC; 15 leaves byte 15 of every block unchained). The chain stays in
    // a register, so this runs faster than single-block calls with the XOR
    // between them. in and out may be the same bytes.
    void encrypt_chained(std::span<const uint8_t, 16> iv, const uint8_t* in, uint8_t* out,
                         std::size_t blocks, std::size_t chained) const noexcept;
    // Chained encryption in place of `runs` independent runs laid end to
    // end, each of `run_blocks` blocks and each chained from `iv` as above.
    // One chain cannot be computed in parallel, but separate runs can: the
    // AES instructions take up to eight runs side by side.
    void encrypt_chained_runs(std::span<const uint8_t, 16> iv, uint8_t* bytes, std::size_t run_blocks,
                              std::size_t runs, std::size_t chained) const noexcept;

private:
    uint8_t round_key_[15][16];
    uint8_t inverse_key_[15][16]; // for the AES instructions' decryption (InvMixColumns applied)
    uint64_t sliced_key_[15][8];  // the round keys in the bitsliced form of the portable rounds
    bool hardware_;               // the processor has the AES instructions
};

// Whether this processor runs RijndaelKey on its AES instructions.
bool rijndael_uses_hardware() noexcept;

} // namespace brindle::crypto
