// A Diamond or Diamond2 key behind the framing's interface (ECB only; the
// tables live in this object, so calls on several threads do not meet).
#pragma once

#include "crypto/block_cipher.h"
#include "crypto/diamond.h"

#include <memory>
#include <utility>

namespace brindle::crypto {

class DiamondCipher final : public BlockCipher {
  public:
    explicit DiamondCipher(std::unique_ptr<DiamondKey> key) : key_(std::move(key)) {}
    std::size_t block_size() const noexcept override { return key_->block_size(); }
    void encrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept override {
        key_->encrypt_blocks(in, out, blocks);
    }
    void decrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept override {
        key_->decrypt_blocks(in, out, blocks);
    }

  private:
    std::unique_ptr<DiamondKey> key_;
};

} // namespace brindle::crypto
