#include "crypto/ruby.h"

#include "crypto/secure_wipe.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace brindle::crypto {

namespace {

inline uint32_t load32(const uint8_t *p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}
inline void store32(uint8_t *p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v), p[1] = static_cast<uint8_t>(v >> 8);
    p[2] = static_cast<uint8_t>(v >> 16), p[3] = static_cast<uint8_t>(v >> 24);
}

} // namespace

RubyKey::RubyKey(std::span<const uint8_t> key, unsigned rounds) : rounds_(std::clamp(rounds, 1u, kRc5MaxRounds)) {
    // The key as little-endian words (at least one), then 3 * max(t, c)
    // mixing steps over the round words and the key words.
    const std::size_t c = std::max<std::size_t>(1, (key.size() + 3) / 4);
    std::vector<uint32_t> l(c, 0);
    for (std::size_t i = key.size(); i-- > 0;)
        l[i / 4] = (l[i / 4] << 8) + key[i];
    const std::size_t t = 2 * rounds_ + 2;
    s_[0] = 0xB7E15163u;
    for (std::size_t i = 1; i < t; ++i)
        s_[i] = s_[i - 1] + 0x9E3779B9u;
    uint32_t a = 0, b = 0;
    std::size_t i = 0, j = 0;
    for (std::size_t k = 0, steps = 3 * std::max(t, c); k < steps; ++k) {
        a = s_[i] = std::rotl(s_[i] + a + b, 3);
        b = l[j] = std::rotl(l[j] + a + b, static_cast<int>((a + b) & 31));
        i = i + 1 == t ? 0 : i + 1;
        j = j + 1 == c ? 0 : j + 1;
    }
    secure_wipe(l.data(), l.size() * sizeof(uint32_t));
    secure_wipe(&a, sizeof a);
    secure_wipe(&b, sizeof b);
}

RubyKey::~RubyKey() { secure_wipe(s_.data(), sizeof s_); }

void RubyKey::encrypt(const uint8_t *in, uint8_t *out) const noexcept {
    uint32_t a = load32(in) + s_[0];
    uint32_t b = load32(in + 4) + s_[1];
    for (unsigned r = 1; r <= rounds_; ++r) {
        a = std::rotl(a ^ b, static_cast<int>(b & 31)) + s_[2 * r];
        b = std::rotl(b ^ a, static_cast<int>(a & 31)) + s_[2 * r + 1];
    }
    store32(out, a);
    store32(out + 4, b);
}

void RubyKey::decrypt(const uint8_t *in, uint8_t *out) const noexcept {
    uint32_t a = load32(in), b = load32(in + 4);
    for (unsigned r = rounds_; r >= 1; --r) {
        b = std::rotr(b - s_[2 * r + 1], static_cast<int>(a & 31)) ^ a;
        a = std::rotr(a - s_[2 * r], static_cast<int>(b & 31)) ^ b;
    }
    store32(out, a - s_[0]);
    store32(out + 4, b - s_[1]);
}

} // namespace brindle::crypto
