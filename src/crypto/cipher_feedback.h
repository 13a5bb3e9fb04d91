// RUBY's cipher feedback: 64-bit CFB over the 8-byte block cipher of
// ruby.h, from an all-zero register. The register is enciphered and the
// next 8 data bytes are XORed with it; the 8 ciphertext bytes so made are
// the next register. No padding and no count byte: the output has the
// input's length (a short last block uses the first bytes of the
// keystream). Decryption XORs the same way and feeds back the ciphertext
// it reads. Nothing is authenticated.
#pragma once

#include "crypto/ruby.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brindle::crypto {

// A running CFB stream; successive calls continue it, so a file can be
// processed in chunks of any size.
class FeedbackStream {
  public:
    explicit FeedbackStream(const RubyKey &key) noexcept;
    ~FeedbackStream();
    FeedbackStream(const FeedbackStream &) = delete;
    FeedbackStream &operator=(const FeedbackStream &) = delete;

    // `size` bytes from in to out; in and out may be the same bytes.
    void encrypt(const uint8_t *in, uint8_t *out, std::size_t size) noexcept;
    void decrypt(const uint8_t *in, uint8_t *out, std::size_t size) noexcept;

  private:
    template <bool Decrypt> void run(const uint8_t *in, uint8_t *out, std::size_t size) noexcept;
    template <bool Decrypt> void step(uint8_t in, uint8_t &out) noexcept;

    const RubyKey &key_;
    uint8_t keystream_[8];
    uint8_t feedback_[8]; // the ciphertext of the block in progress
    std::size_t used_ = 0;
};

// The file forms: the source read in chunks of 32,768 bytes, each written
// at once. The bytes written, or FileCode -11 (no buffer), -21, -22, -31,
// -41 (block_framing.h); on a code the target is deleted.
int32_t feedback_file(const RubyKey &key, bool decrypt, std::string_view source, std::string_view target);

} // namespace brindle::crypto
