#include "crypto/des.h"

#include "crypto/secure_wipe.h"

#include <array>

namespace brindle::crypto {

namespace {

// The tables of FIPS 46-3; bit numbers count from 1 at the most significant
// bit of the input.
constexpr uint8_t kIp[64] = {
    58, 50, 42, 34, 26, 18, 10, 2, 60, 52, 44, 36, 28, 20, 12, 4,
    62, 54, 46, 38, 30, 22, 14, 6, 64, 56, 48, 40, 32, 24, 16, 8,
    57, 49, 41, 33, 25, 17, 9,  1, 59, 51, 43, 35, 27, 19, 11, 3,
    61, 53, 45, 37, 29, 21, 13, 5, 63, 55, 47, 39, 31, 23, 15, 7};

constexpr uint8_t kPc1[56] = {
    57, 49, 41, 33, 25, 17, 9,  1,  58, 50, 42, 34, 26, 18,
    10, 2,  59, 51, 43, 35, 27, 19, 11, 3,  60, 52, 44, 36,
    63, 55, 47, 39, 31, 23, 15, 7,  62, 54, 46, 38, 30, 22,
    14, 6,  61, 53, 45, 37, 29, 21, 13, 5,  28, 20, 12, 4};

constexpr uint8_t kPc2[48] = {
    14, 17, 11, 24, 1,  5,  3,  28, 15, 6,  21, 10,
    23, 19, 12, 4,  26, 8,  16, 7,  27, 20, 13, 2,
    41, 52, 31, 37, 47, 55, 30, 40, 51, 45, 33, 48,
    44, 49, 39, 56, 34, 53, 46, 42, 50, 36, 29, 32};

constexpr uint8_t kShifts[16] = {1, 1, 2, 2, 2, 2, 2, 2, 1, 2, 2, 2, 2, 2, 2, 1};

constexpr uint8_t kP[32] = {16, 7, 20, 21, 29, 12, 28, 17, 1,  15, 23, 26, 5,  18, 31, 10,
                            2,  8, 24, 14, 32, 27, 3,  9,  19, 13, 30, 6,  22, 11, 4,  25};

constexpr uint8_t kS[8][4][16] = {
    {{14, 4, 13, 1, 2, 15, 11, 8, 3, 10, 6, 12, 5, 9, 0, 7},
     {0, 15, 7, 4, 14, 2, 13, 1, 10, 6, 12, 11, 9, 5, 3, 8},
     {4, 1, 14, 8, 13, 6, 2, 11, 15, 12, 9, 7, 3, 10, 5, 0},
     {15, 12, 8, 2, 4, 9, 1, 7, 5, 11, 3, 14, 10, 0, 6, 13}},
    {{15, 1, 8, 14, 6, 11, 3, 4, 9, 7, 2, 13, 12, 0, 5, 10},
     {3, 13, 4, 7, 15, 2, 8, 14, 12, 0, 1, 10, 6, 9, 11, 5},
     {0, 14, 7, 11, 10, 4, 13, 1, 5, 8, 12, 6, 9, 3, 2, 15},
     {13, 8, 10, 1, 3, 15, 4, 2, 11, 6, 7, 12, 0, 5, 14, 9}},
    {{10, 0, 9, 14, 6, 3, 15, 5, 1, 13, 12, 7, 11, 4, 2, 8},
     {13, 7, 0, 9, 3, 4, 6, 10, 2, 8, 5, 14, 12, 11, 15, 1},
     {13, 6, 4, 9, 8, 15, 3, 0, 11, 1, 2, 12, 5, 10, 14, 7},
     {1, 10, 13, 0, 6, 9, 8, 7, 4, 15, 14, 3, 11, 5, 2, 12}},
    {{7, 13, 14, 3, 0, 6, 9, 10, 1, 2, 8, 5, 11, 12, 4, 15},
     {13, 8, 11, 5, 6, 15, 0, 3, 4, 7, 2, 12, 1, 10, 14, 9},
     {10, 6, 9, 0, 12, 11, 7, 13, 15, 1, 3, 14, 5, 2, 8, 4},
     {3, 15, 0, 6, 10, 1, 13, 8, 9, 4, 5, 11, 12, 7, 2, 14}},
    {{2, 12, 4, 1, 7, 10, 11, 6, 8, 5, 3, 15, 13, 0, 14, 9},
     {14, 11, 2, 12, 4, 7, 13, 1, 5, 0, 15, 10, 3, 9, 8, 6},
     {4, 2, 1, 11, 10, 13, 7, 8, 15, 9, 12, 5, 6, 3, 0, 14},
     {11, 8, 12, 7, 1, 14, 2, 13, 6, 15, 0, 9, 10, 4, 5, 3}},
    {{12, 1, 10, 15, 9, 2, 6, 8, 0, 13, 3, 4, 14, 7, 5, 11},
     {10, 15, 4, 2, 7, 12, 9, 5, 6, 1, 13, 14, 0, 11, 3, 8},
     {9, 14, 15, 5, 2, 8, 12, 3, 7, 0, 4, 10, 1, 13, 11, 6},
     {4, 3, 2, 12, 9, 5, 15, 10, 11, 14, 1, 7, 6, 0, 8, 13}},
    {{4, 11, 2, 14, 15, 0, 8, 13, 3, 12, 9, 7, 5, 10, 6, 1},
     {13, 0, 11, 7, 4, 9, 1, 10, 14, 3, 5, 12, 2, 15, 8, 6},
     {1, 4, 11, 13, 12, 3, 7, 14, 10, 15, 6, 8, 0, 5, 9, 2},
     {6, 11, 13, 8, 1, 4, 10, 7, 9, 5, 0, 15, 14, 2, 3, 12}},
    {{13, 2, 8, 4, 6, 15, 11, 1, 10, 9, 3, 14, 5, 0, 12, 7},
     {1, 15, 13, 8, 10, 3, 7, 4, 12, 5, 6, 11, 0, 14, 9, 2},
     {7, 11, 4, 1, 9, 12, 14, 2, 0, 6, 10, 13, 15, 3, 5, 8},
     {2, 1, 14, 7, 4, 10, 8, 13, 15, 12, 9, 0, 3, 5, 6, 11}}};

// Takes bit table[j] (1-based, from the top of an in_width-bit value) as
// output bit j + 1 (from the top of an n-bit result).
constexpr uint64_t permute(uint64_t in, int in_width, const uint8_t* table, int n) {
    uint64_t out = 0;
    for (int j = 0; j < n; ++j) out = (out << 1) | ((in >> (in_width - table[j])) & 1u);
    return out;
}

// The rounds work on the halves in another bit order, the one the initial
// permutation leaves them in when it is done by exchanging bit groups
// (below): each half bit-reversed and then rotated left by one. In it the
// six bits each S-box reads are contiguous: S-boxes 1, 3, 5, 7 read bits
// 0-5, 8-13, 16-21, 24-29 of the half itself and S-boxes 2, 4, 6, 8 the
// same bits of the half rotated right by 4, the first of the six lowest.
constexpr uint32_t reverse32(uint32_t x) {
    uint32_t r = 0;
    for (int i = 0; i < 32; ++i) r |= ((x >> i) & 1u) << (31 - i);
    return r;
}

// A half in the standard's order (bit 1 highest) to the working order.
constexpr uint32_t to_working(uint32_t x) {
    const uint32_t r = reverse32(x);
    return (r << 1) | (r >> 31);
}

constexpr int reverse6(int v) {
    int r = 0;
    for (int i = 0; i < 6; ++i) r |= ((v >> i) & 1) << (5 - i);
    return r;
}

// SP[i][v]: the P permutation of S-box i + 1's output for the six bits v
// (first bit lowest), in the working order.
constexpr std::array<std::array<uint32_t, 64>, 8> make_sp() {
    std::array<std::array<uint32_t, 64>, 8> sp{};
    for (int i = 0; i < 8; ++i)
        for (int v = 0; v < 64; ++v) {
            const int six = reverse6(v); // first bit highest, as the standard reads it
            const int row = ((six >> 4) & 2) | (six & 1);
            const int col = (six >> 1) & 15;
            const uint32_t s = uint32_t(kS[i][row][col]) << (28 - 4 * i);
            sp[i][v] = to_working(static_cast<uint32_t>(permute(s, 32, kP, 32)));
        }
    return sp;
}
constexpr auto kSp = make_sp();

inline uint32_t rotr32(uint32_t x, int s) { return (x >> s) | (x << (32 - s)); }
inline uint32_t rotl32(uint32_t x, int s) { return (x << s) | (x >> (32 - s)); }

inline uint32_t load_le32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

inline void store_le32(uint8_t* p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
    p[2] = static_cast<uint8_t>(v >> 16);
    p[3] = static_cast<uint8_t>(v >> 24);
}

// Exchanges the bits of a selected by m << n with the bits of b selected by m.
inline void swap_bits(uint32_t& a, uint32_t& b, int n, uint32_t m) {
    const uint32_t t = ((a >> n) ^ b) & m;
    b ^= t;
    a ^= t << n;
}

// The initial permutation as five exchanges of bit groups. With the block's
// bytes read as two little-endian words, they leave a = R0 and b = L0 in
// reversed bit order; the working order adds the rotation.
inline void initial_permutation(const uint8_t* in, uint32_t& left, uint32_t& right) {
    uint32_t a = load_le32(in), b = load_le32(in + 4);
    swap_bits(b, a, 4, 0x0F0F0F0Fu);
    swap_bits(a, b, 16, 0x0000FFFFu);
    swap_bits(b, a, 2, 0x33333333u);
    swap_bits(a, b, 8, 0x00FF00FFu);
    swap_bits(b, a, 1, 0x55555555u);
    left = rotl32(b, 1);
    right = rotl32(a, 1);
}

// The final permutation is the inverse: the same exchanges in reverse
// order, applied to the preoutput block (its left half first).
inline void final_permutation(uint32_t left, uint32_t right, uint8_t* out) {
    uint32_t a = rotr32(right, 1), b = rotr32(left, 1);
    swap_bits(b, a, 1, 0x55555555u);
    swap_bits(a, b, 8, 0x00FF00FFu);
    swap_bits(b, a, 2, 0x33333333u);
    swap_bits(a, b, 16, 0x0000FFFFu);
    swap_bits(b, a, 4, 0x0F0F0F0Fu);
    store_le32(out, a);
    store_le32(out + 4, b);
}

// N blocks side by side (their rounds are independent, so the processor
// overlaps them). k points at the first round key used; step is +1 or -1.
template <int N>
inline void crypt_n(const uint32_t (*k)[2], int step, const uint8_t* in, uint8_t* out) {
    uint32_t l[N], r[N];
#pragma GCC unroll 4
    for (int j = 0; j < N; ++j) initial_permutation(in + 8 * j, l[j], r[j]);
    for (int round = 0; round < 16; ++round, k += step) {
        const uint32_t ka = (*k)[0], kb = (*k)[1];
#pragma GCC unroll 4
        for (int j = 0; j < N; ++j) {
            const uint32_t a = r[j] ^ ka;
            const uint32_t b = rotr32(r[j], 4) ^ kb;
            const uint32_t f = kSp[0][a & 63] ^ kSp[2][(a >> 8) & 63] ^ kSp[4][(a >> 16) & 63] ^
                               kSp[6][(a >> 24) & 63] ^ kSp[1][b & 63] ^ kSp[3][(b >> 8) & 63] ^
                               kSp[5][(b >> 16) & 63] ^ kSp[7][(b >> 24) & 63];
            const uint32_t next = l[j] ^ f;
            l[j] = r[j];
            r[j] = next;
        }
    }
    // The halves are not swapped after the last round: the preoutput is R16 L16.
#pragma GCC unroll 4
    for (int j = 0; j < N; ++j) final_permutation(r[j], l[j], out + 8 * j);
}

} // namespace

DesKey::DesKey(std::span<const uint8_t, 8> key) noexcept {
    uint64_t k = 0;
    for (uint8_t b : key) k = (k << 8) | b;
    const uint64_t cd = permute(k, 64, kPc1, 56);
    uint32_t c = static_cast<uint32_t>(cd >> 28), d = static_cast<uint32_t>(cd & 0xFFFFFFF);
    for (int round = 0; round < 16; ++round) {
        for (int s = 0; s < kShifts[round]; ++s) {
            c = ((c << 1) | (c >> 27)) & 0xFFFFFFF;
            d = ((d << 1) | (d >> 27)) & 0xFFFFFFF;
        }
        uint64_t sub = permute((uint64_t(c) << 28) | d, 56, kPc2, 48);
        // The six bits for S-box i + 1 (bits 6i + 1 .. 6i + 6 of the 48, from
        // the top), first bit lowest, where the rounds read the half's bits.
        uint32_t ka = 0, kb = 0;
        for (int i = 0; i < 8; ++i) {
            const auto six = static_cast<uint32_t>(reverse6(static_cast<int>((sub >> (42 - 6 * i)) & 63)));
            if (i % 2 == 0)
                ka |= six << (4 * i);
            else
                kb |= six << (4 * (i - 1));
        }
        round_key_[round][0] = ka;
        round_key_[round][1] = kb;
        secure_wipe(&sub, sizeof sub);
    }
    uint64_t temp[3] = {k, cd, (uint64_t(c) << 28) | d};
    secure_wipe(temp, sizeof temp);
    secure_wipe(&k, sizeof k);
    c = d = 0;
}

DesKey::~DesKey() { secure_wipe(round_key_, sizeof round_key_); }

void DesKey::encrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept {
    crypt_n<1>(round_key_, 1, in.data(), out.data());
}

void DesKey::decrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept {
    crypt_n<1>(round_key_ + 15, -1, in.data(), out.data());
}

// Two blocks at a time: one block's round is a chain of dependent loads,
// and a second block's fills the gaps.
void DesKey::encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (; blocks >= 2; blocks -= 2, in += 16, out += 16) crypt_n<2>(round_key_, 1, in, out);
    if (blocks) crypt_n<1>(round_key_, 1, in, out);
}

void DesKey::decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (; blocks >= 2; blocks -= 2, in += 16, out += 16) crypt_n<2>(round_key_ + 15, -1, in, out);
    if (blocks) crypt_n<1>(round_key_ + 15, -1, in, out);
}

} // namespace brindle::crypto
