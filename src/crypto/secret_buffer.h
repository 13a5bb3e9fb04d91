// A work buffer for plaintext or key bytes: allocated without throwing,
// zero-filled, and wiped (secure_wipe) before it is freed.
#pragma once

#include "crypto/secure_wipe.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace brindle::crypto {

class SecretBuffer {
  public:
    // `size` zero bytes; ok() is false when the memory could not be had.
    explicit SecretBuffer(std::size_t size) noexcept
        : bytes_(new (std::nothrow) uint8_t[size == 0 ? 1 : size]()), size_(bytes_ ? size : 0) {}
    ~SecretBuffer() { secure_wipe(bytes_.get(), size_); }
    SecretBuffer(const SecretBuffer &) = delete;
    SecretBuffer &operator=(const SecretBuffer &) = delete;

    bool ok() const noexcept { return bytes_ != nullptr; }
    uint8_t *data() noexcept { return bytes_.get(); }
    std::size_t size() const noexcept { return size_; }

  private:
    std::unique_ptr<uint8_t[]> bytes_;
    std::size_t size_;
};

} // namespace brindle::crypto
