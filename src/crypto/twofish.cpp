#include "crypto/twofish.h"

#include "crypto/secure_wipe.h"

#include <array>

namespace brindle::crypto {

namespace {

// The fixed permutations q0 and q1, built from their four 4-bit tables as
// the paper defines them.
constexpr uint8_t kQt[2][4][16] = {
    {{0x8, 0x1, 0x7, 0xD, 0x6, 0xF, 0x3, 0x2, 0x0, 0xB, 0x5, 0x9, 0xE, 0xC, 0xA, 0x4},
     {0xE, 0xC, 0xB, 0x8, 0x1, 0x2, 0x3, 0x5, 0xF, 0x4, 0xA, 0x6, 0x7, 0x0, 0x9, 0xD},
     {0xB, 0xA, 0x5, 0xE, 0x6, 0xD, 0x9, 0x0, 0xC, 0x8, 0xF, 0x3, 0x2, 0x4, 0x7, 0x1},
     {0xD, 0x7, 0xF, 0x4, 0x1, 0x2, 0x6, 0xE, 0x9, 0xB, 0x3, 0x0, 0x8, 0x5, 0xC, 0xA}},
    {{0x2, 0x8, 0xB, 0xD, 0xF, 0x7, 0x6, 0xE, 0x3, 0x1, 0x9, 0x4, 0x0, 0xA, 0xC, 0x5},
     {0x1, 0xE, 0x2, 0xB, 0x4, 0xC, 0x3, 0x7, 0x6, 0xD, 0xA, 0x5, 0xF, 0x9, 0x0, 0x8},
     {0x4, 0xC, 0x7, 0x5, 0x1, 0x6, 0x9, 0xA, 0x0, 0xE, 0xD, 0x8, 0x2, 0xB, 0x3, 0xF},
     {0xB, 0x9, 0x5, 0x1, 0xC, 0x3, 0xD, 0xE, 0x6, 0x4, 0x7, 0xF, 0x2, 0x0, 0x8, 0xA}},
};

constexpr uint8_t ror4(uint8_t x) { return static_cast<uint8_t>(((x >> 1) | (x << 3)) & 0xF); }

constexpr uint8_t q_of(int which, uint8_t x) {
    const auto &t = kQt[which];
    uint8_t a = x >> 4, b = x & 0xF;
    uint8_t a1 = a ^ b, b1 = static_cast<uint8_t>((a ^ ror4(b) ^ (a << 3)) & 0xF);
    uint8_t a2 = t[0][a1], b2 = t[1][b1];
    uint8_t a3 = a2 ^ b2, b3 = static_cast<uint8_t>((a2 ^ ror4(b2) ^ (a2 << 3)) & 0xF);
    return static_cast<uint8_t>(t[3][b3] << 4 | t[2][a3]);
}

constexpr std::array<std::array<uint8_t, 256>, 2> make_q() {
    std::array<std::array<uint8_t, 256>, 2> q{};
    for (int w = 0; w < 2; ++w)
        for (int x = 0; x < 256; ++x)
            q[w][x] = q_of(w, static_cast<uint8_t>(x));
    return q;
}

constexpr auto kQ = make_q();

// Multiplication in GF(2^8) modulo the given polynomial (with its x^8 bit).
constexpr uint8_t gf_mul(uint8_t a, uint8_t b, unsigned poly) {
    unsigned r = 0, x = a;
    for (; b != 0; b >>= 1) {
        if (b & 1)
            r ^= x;
        x <<= 1;
        if (x & 0x100)
            x ^= poly;
    }
    return static_cast<uint8_t>(r);
}

constexpr unsigned kMdsPoly = 0x169; // x^8 + x^6 + x^5 + x^3 + 1
constexpr unsigned kRsPoly = 0x14D;  // x^8 + x^6 + x^3 + x^2 + 1

constexpr uint8_t kMds[4][4] = {
    {0x01, 0xEF, 0x5B, 0x5B},
    {0x5B, 0xEF, 0xEF, 0x01},
    {0xEF, 0x5B, 0x01, 0xEF},
    {0xEF, 0x01, 0xEF, 0x5B},
};

constexpr uint8_t kRs[4][8] = {
    {0x01, 0xA4, 0x55, 0x87, 0x5A, 0x58, 0xDB, 0x9E},
    {0xA4, 0x56, 0x82, 0xF3, 0x1E, 0xC6, 0x68, 0xE5},
    {0x02, 0xA1, 0xFC, 0xC1, 0x47, 0xAE, 0x3D, 0x19},
    {0xA4, 0x55, 0x87, 0x5A, 0x58, 0xDB, 0x9E, 0x03},
};

// Column `col` of the MDS matrix times byte y, as a little-endian word.
constexpr uint32_t mds_column(int col, uint8_t y) {
    uint32_t z = 0;
    for (int row = 0; row < 4; ++row)
        z |= static_cast<uint32_t>(gf_mul(kMds[row][col], y, kMdsPoly)) << (8 * row);
    return z;
}

// The MDS products of every byte, for the key schedule's h() on the
// round-key inputs (those are public: 2i * 0x01010101 and the next).
constexpr std::array<std::array<uint32_t, 256>, 4> make_mds() {
    std::array<std::array<uint32_t, 256>, 4> m{};
    for (int c = 0; c < 4; ++c)
        for (int y = 0; y < 256; ++y)
            m[c][y] = mds_column(c, static_cast<uint8_t>(y));
    return m;
}

constexpr auto kMdsTable = make_mds();

inline uint8_t byte_of(uint32_t w, int i) { return static_cast<uint8_t>(w >> (8 * i)); }
inline uint32_t rotl(uint32_t x, int n) { return (x << n) | (x >> (32 - n)); }
inline uint32_t rotr(uint32_t x, int n) { return (x >> n) | (x << (32 - n)); }

// The key-dependent byte permutation of byte position i of h() for a
// 256-bit key, l[0..3] being the list L0..L3 of the paper.
inline uint8_t h_byte(int i, uint8_t y, const uint32_t (&l)[4]) {
    const auto &q0 = kQ[0];
    const auto &q1 = kQ[1];
    switch (i) {
    case 0:
        y = q1[y] ^ byte_of(l[3], 0);
        y = q1[y] ^ byte_of(l[2], 0);
        return q1[q0[q0[y] ^ byte_of(l[1], 0)] ^ byte_of(l[0], 0)];
    case 1:
        y = q0[y] ^ byte_of(l[3], 1);
        y = q1[y] ^ byte_of(l[2], 1);
        return q0[q0[q1[y] ^ byte_of(l[1], 1)] ^ byte_of(l[0], 1)];
    case 2:
        y = q0[y] ^ byte_of(l[3], 2);
        y = q0[y] ^ byte_of(l[2], 2);
        return q1[q1[q0[y] ^ byte_of(l[1], 2)] ^ byte_of(l[0], 2)];
    default:
        y = q1[y] ^ byte_of(l[3], 3);
        y = q0[y] ^ byte_of(l[2], 3);
        return q0[q1[q1[y] ^ byte_of(l[1], 3)] ^ byte_of(l[0], 3)];
    }
}

inline uint32_t h(uint32_t x, const uint32_t (&l)[4]) {
    uint32_t z = 0;
    for (int i = 0; i < 4; ++i)
        z ^= kMdsTable[i][h_byte(i, byte_of(x, i), l)];
    return z;
}

inline uint32_t load32(const uint8_t *p) {
    return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 | static_cast<uint32_t>(p[2]) << 16 |
           static_cast<uint32_t>(p[3]) << 24;
}

inline void store32(uint8_t *p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
    p[2] = static_cast<uint8_t>(v >> 16);
    p[3] = static_cast<uint8_t>(v >> 24);
}

} // namespace

TwofishKey::TwofishKey(std::span<const uint8_t, 32> key) noexcept {
    uint32_t even[4], odd[4], s[4];
    for (int i = 0; i < 4; ++i) {
        even[i] = load32(key.data() + 8 * i);
        odd[i] = load32(key.data() + 8 * i + 4);
        // S_i = RS . (key bytes 8i .. 8i+7); g() takes them last to first.
        uint32_t si = 0;
        for (int row = 0; row < 4; ++row) {
            uint8_t acc = 0;
            for (int col = 0; col < 8; ++col)
                acc ^= gf_mul(kRs[row][col], key[8 * i + col], kRsPoly);
            si |= static_cast<uint32_t>(acc) << (8 * row);
        }
        s[3 - i] = si;
    }
    constexpr uint32_t rho = 0x01010101u;
    for (uint32_t i = 0; i < 20; ++i) {
        const uint32_t a = h(2 * i * rho, even);
        const uint32_t b = rotl(h((2 * i + 1) * rho, odd), 8);
        k_[2 * i] = a + b;
        k_[2 * i + 1] = rotl(a + 2 * b, 9);
    }
    for (int i = 0; i < 4; ++i)
        for (int x = 0; x < 256; ++x)
            s_[i][x] = kMdsTable[i][h_byte(i, static_cast<uint8_t>(x), s)];
    secure_wipe(even, sizeof even);
    secure_wipe(odd, sizeof odd);
    secure_wipe(s, sizeof s);
}

TwofishKey::~TwofishKey() {
    secure_wipe(k_, sizeof k_);
    secure_wipe(s_, sizeof s_);
}

#define BRINDLE_TWOFISH_G0(x) (s_[0][byte_of(x, 0)] ^ s_[1][byte_of(x, 1)] ^ s_[2][byte_of(x, 2)] ^ s_[3][byte_of(x, 3)])
#define BRINDLE_TWOFISH_G1(x) (s_[0][byte_of(x, 3)] ^ s_[1][byte_of(x, 0)] ^ s_[2][byte_of(x, 1)] ^ s_[3][byte_of(x, 2)])

// Two blocks a step where there are two, their rounds interleaved so that
// the lookups of one overlap the additions of the other.
void TwofishKey::encrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept {
    for (; blocks >= 2; blocks -= 2, in += 32, out += 32) {
        uint32_t a = load32(in) ^ k_[0], b = load32(in + 4) ^ k_[1];
        uint32_t c = load32(in + 8) ^ k_[2], d = load32(in + 12) ^ k_[3];
        uint32_t e = load32(in + 16) ^ k_[0], f = load32(in + 20) ^ k_[1];
        uint32_t g = load32(in + 24) ^ k_[2], h = load32(in + 28) ^ k_[3];
        for (int r = 0; r < 16; r += 2) {
            uint32_t t0 = BRINDLE_TWOFISH_G0(a), t1 = BRINDLE_TWOFISH_G1(b);
            uint32_t u0 = BRINDLE_TWOFISH_G0(e), u1 = BRINDLE_TWOFISH_G1(f);
            c = rotr(c ^ (t0 + t1 + k_[2 * r + 8]), 1);
            d = rotl(d, 1) ^ (t0 + 2 * t1 + k_[2 * r + 9]);
            g = rotr(g ^ (u0 + u1 + k_[2 * r + 8]), 1);
            h = rotl(h, 1) ^ (u0 + 2 * u1 + k_[2 * r + 9]);
            t0 = BRINDLE_TWOFISH_G0(c);
            t1 = BRINDLE_TWOFISH_G1(d);
            u0 = BRINDLE_TWOFISH_G0(g);
            u1 = BRINDLE_TWOFISH_G1(h);
            a = rotr(a ^ (t0 + t1 + k_[2 * r + 10]), 1);
            b = rotl(b, 1) ^ (t0 + 2 * t1 + k_[2 * r + 11]);
            e = rotr(e ^ (u0 + u1 + k_[2 * r + 10]), 1);
            f = rotl(f, 1) ^ (u0 + 2 * u1 + k_[2 * r + 11]);
        }
        store32(out, c ^ k_[4]);
        store32(out + 4, d ^ k_[5]);
        store32(out + 8, a ^ k_[6]);
        store32(out + 12, b ^ k_[7]);
        store32(out + 16, g ^ k_[4]);
        store32(out + 20, h ^ k_[5]);
        store32(out + 24, e ^ k_[6]);
        store32(out + 28, f ^ k_[7]);
    }
    if (blocks == 0)
        return;
    uint32_t a = load32(in) ^ k_[0], b = load32(in + 4) ^ k_[1];
    uint32_t c = load32(in + 8) ^ k_[2], d = load32(in + 12) ^ k_[3];
    // Two rounds a step, so the halves change places without a swap.
    for (int r = 0; r < 16; r += 2) {
        uint32_t t0 = BRINDLE_TWOFISH_G0(a), t1 = BRINDLE_TWOFISH_G1(b);
        c = rotr(c ^ (t0 + t1 + k_[2 * r + 8]), 1);
        d = rotl(d, 1) ^ (t0 + 2 * t1 + k_[2 * r + 9]);
        t0 = BRINDLE_TWOFISH_G0(c);
        t1 = BRINDLE_TWOFISH_G1(d);
        a = rotr(a ^ (t0 + t1 + k_[2 * r + 10]), 1);
        b = rotl(b, 1) ^ (t0 + 2 * t1 + k_[2 * r + 11]);
    }
    store32(out, c ^ k_[4]);
    store32(out + 4, d ^ k_[5]);
    store32(out + 8, a ^ k_[6]);
    store32(out + 12, b ^ k_[7]);
}

void TwofishKey::decrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept {
    for (; blocks >= 2; blocks -= 2, in += 32, out += 32) {
        uint32_t c = load32(in) ^ k_[4], d = load32(in + 4) ^ k_[5];
        uint32_t a = load32(in + 8) ^ k_[6], b = load32(in + 12) ^ k_[7];
        uint32_t g = load32(in + 16) ^ k_[4], h = load32(in + 20) ^ k_[5];
        uint32_t e = load32(in + 24) ^ k_[6], f = load32(in + 28) ^ k_[7];
        for (int r = 14; r >= 0; r -= 2) {
            uint32_t t0 = BRINDLE_TWOFISH_G0(c), t1 = BRINDLE_TWOFISH_G1(d);
            uint32_t u0 = BRINDLE_TWOFISH_G0(g), u1 = BRINDLE_TWOFISH_G1(h);
            a = rotl(a, 1) ^ (t0 + t1 + k_[2 * r + 10]);
            b = rotr(b ^ (t0 + 2 * t1 + k_[2 * r + 11]), 1);
            e = rotl(e, 1) ^ (u0 + u1 + k_[2 * r + 10]);
            f = rotr(f ^ (u0 + 2 * u1 + k_[2 * r + 11]), 1);
            t0 = BRINDLE_TWOFISH_G0(a);
            t1 = BRINDLE_TWOFISH_G1(b);
            u0 = BRINDLE_TWOFISH_G0(e);
            u1 = BRINDLE_TWOFISH_G1(f);
            c = rotl(c, 1) ^ (t0 + t1 + k_[2 * r + 8]);
            d = rotr(d ^ (t0 + 2 * t1 + k_[2 * r + 9]), 1);
            g = rotl(g, 1) ^ (u0 + u1 + k_[2 * r + 8]);
            h = rotr(h ^ (u0 + 2 * u1 + k_[2 * r + 9]), 1);
        }
        store32(out, a ^ k_[0]);
        store32(out + 4, b ^ k_[1]);
        store32(out + 8, c ^ k_[2]);
        store32(out + 12, d ^ k_[3]);
        store32(out + 16, e ^ k_[0]);
        store32(out + 20, f ^ k_[1]);
        store32(out + 24, g ^ k_[2]);
        store32(out + 28, h ^ k_[3]);
    }
    if (blocks == 0)
        return;
    uint32_t c = load32(in) ^ k_[4], d = load32(in + 4) ^ k_[5];
    uint32_t a = load32(in + 8) ^ k_[6], b = load32(in + 12) ^ k_[7];
    for (int r = 14; r >= 0; r -= 2) {
        uint32_t t0 = BRINDLE_TWOFISH_G0(c), t1 = BRINDLE_TWOFISH_G1(d);
        a = rotl(a, 1) ^ (t0 + t1 + k_[2 * r + 10]);
        b = rotr(b ^ (t0 + 2 * t1 + k_[2 * r + 11]), 1);
        t0 = BRINDLE_TWOFISH_G0(a);
        t1 = BRINDLE_TWOFISH_G1(b);
        c = rotl(c, 1) ^ (t0 + t1 + k_[2 * r + 8]);
        d = rotr(d ^ (t0 + 2 * t1 + k_[2 * r + 9]), 1);
    }
    store32(out, a ^ k_[0]);
    store32(out + 4, b ^ k_[1]);
    store32(out + 8, c ^ k_[2]);
    store32(out + 12, d ^ k_[3]);
}

#undef BRINDLE_TWOFISH_G0
#undef BRINDLE_TWOFISH_G1

void TwofishKey::encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
    encrypt_blocks(in.data(), out.data(), 1);
}

void TwofishKey::decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
    decrypt_blocks(in.data(), out.data(), 1);
}

} // namespace brindle::crypto
