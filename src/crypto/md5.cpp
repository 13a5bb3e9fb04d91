#include "crypto/md5.h"

#include "crypto/secure_wipe.h"

#include <cstring>

namespace brindle::crypto {

namespace {

inline uint32_t rotl(uint32_t x, int s) { return (x << s) | (x >> (32 - s)); }

inline uint32_t load_le32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

// The 64 steps written out. The constants T[i] = floor(2^32 * abs(sin(i + 1)))
// are RFC 1321 section 3.4's table. Each step adds the message word and the
// constant to a first, off the chain that waits for b, c and d; the
// functions are in forms with one operation fewer on that chain:
// F = d ^ (b & (c ^ d)), and G's two disjoint halves are added separately.
// The message words are read from the block as they are needed, so no copy
// of them is left behind.
#define BRINDLE_MD5_F(a, b, c, d, x, t, s)                                                         \
    a += (x) + (t);                                                                                \
    a += (d) ^ ((b) & ((c) ^ (d)));                                                                \
    a = rotl(a, s) + (b)
#define BRINDLE_MD5_G(a, b, c, d, x, t, s)                                                         \
    a += (x) + (t);                                                                                \
    a += (~(d)) & (c);                                                                             \
    a += (d) & (b);                                                                                \
    a = rotl(a, s) + (b)
#define BRINDLE_MD5_H(a, b, c, d, x, t, s)                                                         \
    a += (x) + (t);                                                                                \
    a += (b) ^ (c) ^ (d);                                                                          \
    a = rotl(a, s) + (b)
#define BRINDLE_MD5_I(a, b, c, d, x, t, s)                                                         \
    a += (x) + (t);                                                                                \
    a += (c) ^ ((b) | ~(d));                                                                       \
    a = rotl(a, s) + (b)

void compress(uint32_t state[4], const uint8_t* p) {
    auto x = [p](int i) { return load_le32(p + 4 * i); };
    uint32_t a = state[0], b = state[1], c = state[2], d = state[3];

    BRINDLE_MD5_F(a, b, c, d, x(0), 0xd76aa478, 7);
    BRINDLE_MD5_F(d, a, b, c, x(1), 0xe8c7b756, 12);
    BRINDLE_MD5_F(c, d, a, b, x(2), 0x242070db, 17);
    BRINDLE_MD5_F(b, c, d, a, x(3), 0xc1bdceee, 22);
    BRINDLE_MD5_F(a, b, c, d, x(4), 0xf57c0faf, 7);
    BRINDLE_MD5_F(d, a, b, c, x(5), 0x4787c62a, 12);
    BRINDLE_MD5_F(c, d, a, b, x(6), 0xa8304613, 17);
    BRINDLE_MD5_F(b, c, d, a, x(7), 0xfd469501, 22);
    BRINDLE_MD5_F(a, b, c, d, x(8), 0x698098d8, 7);
    BRINDLE_MD5_F(d, a, b, c, x(9), 0x8b44f7af, 12);
    BRINDLE_MD5_F(c, d, a, b, x(10), 0xffff5bb1, 17);
    BRINDLE_MD5_F(b, c, d, a, x(11), 0x895cd7be, 22);
    BRINDLE_MD5_F(a, b, c, d, x(12), 0x6b901122, 7);
    BRINDLE_MD5_F(d, a, b, c, x(13), 0xfd987193, 12);
    BRINDLE_MD5_F(c, d, a, b, x(14), 0xa679438e, 17);
    BRINDLE_MD5_F(b, c, d, a, x(15), 0x49b40821, 22);

    BRINDLE_MD5_G(a, b, c, d, x(1), 0xf61e2562, 5);
    BRINDLE_MD5_G(d, a, b, c, x(6), 0xc040b340, 9);
    BRINDLE_MD5_G(c, d, a, b, x(11), 0x265e5a51, 14);
    BRINDLE_MD5_G(b, c, d, a, x(0), 0xe9b6c7aa, 20);
    BRINDLE_MD5_G(a, b, c, d, x(5), 0xd62f105d, 5);
    BRINDLE_MD5_G(d, a, b, c, x(10), 0x02441453, 9);
    BRINDLE_MD5_G(c, d, a, b, x(15), 0xd8a1e681, 14);
    BRINDLE_MD5_G(b, c, d, a, x(4), 0xe7d3fbc8, 20);
    BRINDLE_MD5_G(a, b, c, d, x(9), 0x21e1cde6, 5);
    BRINDLE_MD5_G(d, a, b, c, x(14), 0xc33707d6, 9);
    BRINDLE_MD5_G(c, d, a, b, x(3), 0xf4d50d87, 14);
    BRINDLE_MD5_G(b, c, d, a, x(8), 0x455a14ed, 20);
    BRINDLE_MD5_G(a, b, c, d, x(13), 0xa9e3e905, 5);
    BRINDLE_MD5_G(d, a, b, c, x(2), 0xfcefa3f8, 9);
    BRINDLE_MD5_G(c, d, a, b, x(7), 0x676f02d9, 14);
    BRINDLE_MD5_G(b, c, d, a, x(12), 0x8d2a4c8a, 20);

    BRINDLE_MD5_H(a, b, c, d, x(5), 0xfffa3942, 4);
    BRINDLE_MD5_H(d, a, b, c, x(8), 0x8771f681, 11);
    BRINDLE_MD5_H(c, d, a, b, x(11), 0x6d9d6122, 16);
    BRINDLE_MD5_H(b, c, d, a, x(14), 0xfde5380c, 23);
    BRINDLE_MD5_H(a, b, c, d, x(1), 0xa4beea44, 4);
    BRINDLE_MD5_H(d, a, b, c, x(4), 0x4bdecfa9, 11);
    BRINDLE_MD5_H(c, d, a, b, x(7), 0xf6bb4b60, 16);
    BRINDLE_MD5_H(b, c, d, a, x(10), 0xbebfbc70, 23);
    BRINDLE_MD5_H(a, b, c, d, x(13), 0x289b7ec6, 4);
    BRINDLE_MD5_H(d, a, b, c, x(0), 0xeaa127fa, 11);
    BRINDLE_MD5_H(c, d, a, b, x(3), 0xd4ef3085, 16);
    BRINDLE_MD5_H(b, c, d, a, x(6), 0x04881d05, 23);
    BRINDLE_MD5_H(a, b, c, d, x(9), 0xd9d4d039, 4);
    BRINDLE_MD5_H(d, a, b, c, x(12), 0xe6db99e5, 11);
    BRINDLE_MD5_H(c, d, a, b, x(15), 0x1fa27cf8, 16);
    BRINDLE_MD5_H(b, c, d, a, x(2), 0xc4ac5665, 23);

    BRINDLE_MD5_I(a, b, c, d, x(0), 0xf4292244, 6);
    BRINDLE_MD5_I(d, a, b, c, x(7), 0x432aff97, 10);
    BRINDLE_MD5_I(c, d, a, b, x(14), 0xab9423a7, 15);
    BRINDLE_MD5_I(b, c, d, a, x(5), 0xfc93a039, 21);
    BRINDLE_MD5_I(a, b, c, d, x(12), 0x655b59c3, 6);
    BRINDLE_MD5_I(d, a, b, c, x(3), 0x8f0ccc92, 10);
    BRINDLE_MD5_I(c, d, a, b, x(10), 0xffeff47d, 15);
    BRINDLE_MD5_I(b, c, d, a, x(1), 0x85845dd1, 21);
    BRINDLE_MD5_I(a, b, c, d, x(8), 0x6fa87e4f, 6);
    BRINDLE_MD5_I(d, a, b, c, x(15), 0xfe2ce6e0, 10);
    BRINDLE_MD5_I(c, d, a, b, x(6), 0xa3014314, 15);
    BRINDLE_MD5_I(b, c, d, a, x(13), 0x4e0811a1, 21);
    BRINDLE_MD5_I(a, b, c, d, x(4), 0xf7537e82, 6);
    BRINDLE_MD5_I(d, a, b, c, x(11), 0xbd3af235, 10);
    BRINDLE_MD5_I(c, d, a, b, x(2), 0x2ad7d2bb, 15);
    BRINDLE_MD5_I(b, c, d, a, x(9), 0xeb86d391, 21);

    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
}

#undef BRINDLE_MD5_F
#undef BRINDLE_MD5_G
#undef BRINDLE_MD5_H
#undef BRINDLE_MD5_I

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
