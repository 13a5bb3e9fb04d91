// The 8-byte block cipher behind RUBY. Johnson's Ruby (Mark 5, 1996) was
// published only as PostScript/RTF papers and export-restricted code that
// could not be found, so this library does not claim to implement it.
// RUBY here is RC5-32 (Rivest, 1994): a 64-bit block as two little-endian
// 32-bit words, a key of any length expanded into 2r + 2 round words with
// the constants P32 = 0xB7E15163 and Q32 = 0x9E3779B9, and r rounds of
// A = ((A ^ B) <<< B) + S[2i], B = ((B ^ A) <<< A) + S[2i + 1]. RUBY runs
// it with 20 rounds (RC5-32/20/b). RC5 shares what Ruby was made for (a
// 64-bit block, a key of any length, a fast key setup) and is published
// and analysed; the best published attack breaks 12 rounds with about 2^44
// chosen plaintexts, and 20 rounds leave a wide margin. No tables; the
// data-dependent rotations take constant time on current processors.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

inline constexpr unsigned kRubyRounds = 20;
inline constexpr unsigned kRc5MaxRounds = 32;

// The round words of one key. Wiped when destroyed.
class RubyKey {
  public:
    // Any key length, including 0 (RC5 defines 0..255 bytes; a longer key
    // is expanded by the same steps). 1 <= rounds <= kRc5MaxRounds.
    // Throws std::bad_alloc for a key too large to copy into words.
    explicit RubyKey(std::span<const uint8_t> key, unsigned rounds = kRubyRounds);
    ~RubyKey();
    RubyKey(const RubyKey &) = delete;
    RubyKey &operator=(const RubyKey &) = delete;

    // One block each way; in and out may be the same bytes.
    void encrypt(const uint8_t *in, uint8_t *out) const noexcept;
    void decrypt(const uint8_t *in, uint8_t *out) const noexcept;

  private:
    unsigned rounds_;
    std::array<uint32_t, 2 * kRc5MaxRounds + 2> s_{};
};

} // namespace brindle::crypto
