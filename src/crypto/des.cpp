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

// SP[i][v]: the P permutation applied to the output of S-box i + 1 for the
// six input bits v, placed in bits 4i + 1 .. 4i + 4 of the 32-bit half.
constexpr std::array<std::array<uint32_t, 64>, 8> make_sp() {
    std::array<std::array<uint32_t, 64>, 8> sp{};
    for (int i = 0; i < 8; ++i)
        for (int v = 0; v < 64; ++v) {
            const int row = ((v >> 4) & 2) | (v & 1);
            const int col = (v >> 1) & 15;
            const uint32_t s = uint32_t(kS[i][row][col]) << (28 - 4 * i);
            sp[i][v] = static_cast<uint32_t>(permute(s, 32, kP, 32));
        }
    return sp;
}
constexpr auto kSp = make_sp();

constexpr std::array<uint8_t, 64> make_fp() {
    std::array<uint8_t, 64> fp{};
    for (int j = 0; j < 64; ++j) fp[kIp[j] - 1] = static_cast<uint8_t>(j + 1);
    return fp;
}
constexpr auto kFp = make_fp();

inline uint32_t rotl32(uint32_t x, int s) { return s == 0 ? x : (x << s) | (x >> (32 - s)); }

// The cipher function f(R, K): E expansion, key mixing, S-boxes and P.
// The six bits for S-box i are bits 4i .. 4i + 5 of R, taken cyclically.
inline uint32_t feistel(uint32_t r, uint64_t k) {
    uint32_t f = 0;
    for (int i = 0; i < 8; ++i) {
        const uint32_t six = (rotl32(r, (4 * i + 31) % 32) >> 26) ^ uint32_t((k >> (42 - 6 * i)) & 63);
        f |= kSp[i][six];
    }
    return f;
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
        round_key_[round] = permute((uint64_t(c) << 28) | d, 56, kPc2, 48);
    }
    uint64_t temp[3] = {k, cd, (uint64_t(c) << 28) | d};
    secure_wipe(temp, sizeof temp);
    secure_wipe(&k, sizeof k);
    c = d = 0;
}

DesKey::~DesKey() { secure_wipe(round_key_, sizeof round_key_); }

void DesKey::crypt(const uint8_t* in, uint8_t* out, bool decrypting) const noexcept {
    uint64_t block = 0;
    for (int i = 0; i < 8; ++i) block = (block << 8) | in[i];
    block = permute(block, 64, kIp, 64);
    uint32_t l = static_cast<uint32_t>(block >> 32), r = static_cast<uint32_t>(block);
    for (int round = 0; round < 16; ++round) {
        const uint32_t next = l ^ feistel(r, round_key_[decrypting ? 15 - round : round]);
        l = r;
        r = next;
    }
    // The halves are not swapped after the last round: the output is R16 L16.
    block = permute((uint64_t(r) << 32) | l, 64, kFp.data(), 64);
    for (int i = 7; i >= 0; --i, block >>= 8) out[i] = static_cast<uint8_t>(block);
}

void DesKey::encrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept {
    crypt(in.data(), out.data(), false);
}

void DesKey::decrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept {
    crypt(in.data(), out.data(), true);
}

void DesKey::encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (std::size_t i = 0; i < blocks; ++i)
        encrypt(std::span<const uint8_t, 8>(in + i * 8, 8), std::span<uint8_t, 8>(out + i * 8, 8));
}

void DesKey::decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (std::size_t i = 0; i < blocks; ++i)
        decrypt(std::span<const uint8_t, 8>(in + i * 8, 8), std::span<uint8_t, 8>(out + i * 8, 8));
}

} // namespace brindle::crypto
