#include "crypto/md5.h"

#include "crypto/secure_wipe.h"

#include <cstring>

namespace brindle::crypto {

namespace {

inline uint32_t rotl(uint32_t x, int s) { return (x << s) | (x >> (32 - s)); }

inline uint32_t load_le32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

// T[i] = floor(2^32 * abs(sin(i + 1))), RFC 1321 section 3.4.
constexpr uint32_t kT[64] = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391,
};
constexpr int kShift[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

void compress(uint32_t state[4], const uint8_t* block) {
    uint32_t x[16];
    for (int i = 0; i < 16; ++i) x[i] = load_le32(block + 4 * i);
    uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    // One step: a rotated sum becomes the new b, the words move one place.
    auto step = [&](uint32_t f, int i, int g, int shift) {
        const uint32_t t = d;
        d = c;
        c = b;
        b = b + rotl(a + f + kT[i] + x[g], shift);
        a = t;
    };
    for (int i = 0; i < 16; ++i) step((b & c) | (~b & d), i, i, kShift[0][i % 4]);
    for (int i = 16; i < 32; ++i) step((b & d) | (c & ~d), i, (5 * i + 1) % 16, kShift[1][i % 4]);
    for (int i = 32; i < 48; ++i) step(b ^ c ^ d, i, (3 * i + 5) % 16, kShift[2][i % 4]);
    for (int i = 48; i < 64; ++i) step(c ^ (b | ~d), i, (7 * i) % 16, kShift[3][i % 4]);
    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
    secure_wipe(x, sizeof x);
}

} // namespace

Md5::Md5() noexcept { reset(); }

Md5::~Md5() {
    secure_wipe(state_, sizeof state_);
    secure_wipe(buffer_, sizeof buffer_);
}

void Md5::reset() noexcept {
    state_[0] = 0x67452301;
    state_[1] = 0xefcdab89;
    state_[2] = 0x98badcfe;
    state_[3] = 0x10325476;
    length_ = 0;
    used_ = 0;
    secure_wipe(buffer_, sizeof buffer_);
}

void Md5::update(std::span<const uint8_t> data) noexcept {
    const uint8_t* p = data.data();
    std::size_t n = data.size();
    length_ += n;
    if (used_ > 0) {
        const std::size_t take = n < 64 - used_ ? n : 64 - used_;
        std::memcpy(buffer_ + used_, p, take);
        used_ += take;
        p += take;
        n -= take;
        if (used_ < 64) return;
        compress(state_, buffer_);
        used_ = 0;
    }
    for (; n >= 64; p += 64, n -= 64) compress(state_, p);
    if (n > 0) std::memcpy(buffer_, p, n);
    used_ = n;
}

Md5Digest Md5::finish() noexcept {
    const uint64_t bits = length_ * 8;
    buffer_[used_++] = 0x80;
    if (used_ > 56) {
        std::memset(buffer_ + used_, 0, 64 - used_);
        compress(state_, buffer_);
        used_ = 0;
    }
    std::memset(buffer_ + used_, 0, 56 - used_);
    for (int i = 0; i < 8; ++i) buffer_[56 + i] = static_cast<uint8_t>(bits >> (8 * i));
    compress(state_, buffer_);
    Md5Digest out;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) out[4 * i + j] = static_cast<uint8_t>(state_[i] >> (8 * j));
    reset();
    return out;
}

Md5Digest md5(std::span<const uint8_t> data) noexcept {
    Md5 h;
    h.update(data);
    return h.finish();
}

} // namespace brindle::crypto
