// MD5 message digest (RFC 1321): 64-byte blocks, little-endian words,
// digest bytes in the RFC's order (as md5sum prints them).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace brindle::crypto {

using Md5Digest = std::array<uint8_t, 16>;

// An MD5 computation fed in pieces: update() any number of times, then
// finish() once. The object wipes its buffered message bytes and chaining
// state when it finishes and when it is destroyed.
class Md5 {
public:
    Md5() noexcept;
    ~Md5();
    Md5(const Md5&) = delete;
    Md5& operator=(const Md5&) = delete;

    // Appends bytes to the message. Messages up to 2^61 - 1 bytes are exact
    // (the bit count wraps modulo 2^64 as RFC 1321 says).
    void update(std::span<const uint8_t> data) noexcept;
    // Pads, returns the digest and resets the object to a fresh state.
    Md5Digest finish() noexcept;

private:
    void reset() noexcept;
    uint32_t state_[4];
    uint64_t length_;  // bytes seen so far
    uint8_t buffer_[64];
    std::size_t used_; // bytes waiting in buffer_
};

// The digest of one whole message.
Md5Digest md5(std::span<const uint8_t> data) noexcept;

} // namespace brindle::crypto
