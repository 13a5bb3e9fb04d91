#include "crypto/rijndael.h"

#include "crypto/secure_wipe.h"

#include <cstring>

#if (defined(__x86_64__) || defined(__i386__)) && (defined(__GNUC__) || defined(__clang__))
#define BRINDLE_AES_NI 1
#include <immintrin.h>
#endif

namespace brindle::crypto {

namespace {

// ---------------------------------------------------------------------------
// Portable rounds, bitsliced.
//
// Four blocks are processed together in eight 64-bit words q[0..7]: word i
// holds bit i of every state byte of the four blocks. Byte (row r, column c)
// of block b sits at bit 16r + 4c + b, so each row fills 16 bits, ShiftRows
// rotates the 4-bit column groups inside a row, and rotating a whole word by
// 16 bits brings the next row of every column into place for MixColumns.
// Everything is shifts, masks and logic on whole words: no branch and no
// memory address depends on a key or data bit. On 32-bit targets the
// compiler does the same work on pairs of 32-bit registers.
// ---------------------------------------------------------------------------

inline uint32_t load_le32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

inline void store_le32(uint8_t* p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
    p[2] = static_cast<uint8_t>(v >> 16);
    p[3] = static_cast<uint8_t>(v >> 24);
}

// The four bytes of x into the even bytes of a 64-bit word, and back.
inline uint64_t spread_bytes(uint32_t x) {
    uint64_t v = x;
    v = (v | v << 16) & 0x0000FFFF0000FFFFull;
    return (v | v << 8) & 0x00FF00FF00FF00FFull;
}

inline uint32_t gather_bytes(uint64_t v) {
    v &= 0x00FF00FF00FF00FFull;
    v = (v | v >> 8) & 0x0000FFFF0000FFFFull;
    return static_cast<uint32_t>(v | v >> 16);
}

// Exchanges the bits of a selected by m << n with the bits of b selected by m.
inline void swap_bits(uint64_t& a, uint64_t& b, uint64_t m, int n) {
    const uint64_t t = ((a >> n) ^ b) & m;
    b ^= t;
    a ^= t << n;
}

// In every byte lane, transposes the 8 x 8 bit matrix (word index, bit
// index): bit 8k + i of q[j] and bit 8k + j of q[i] change places. Its own
// inverse.
inline void transpose_lanes(uint64_t q[8]) {
    for (int j = 0; j < 8; j += 2) swap_bits(q[j], q[j + 1], 0x5555555555555555ull, 1);
    for (int j = 0; j < 8; j += (j & 1) ? 3 : 1) swap_bits(q[j], q[j + 2], 0x3333333333333333ull, 2);
    for (int j = 0; j < 4; ++j) swap_bits(q[j], q[j + 4], 0x0F0F0F0F0F0F0F0Full, 4);
}

// Blocks 0 .. n - 1 (n <= 4) of in into the bitsliced form; missing blocks
// are zero. Word j before the transposition takes, for block j % 4, its
// column j / 4 in the even bytes and column j / 4 + 2 in the odd bytes:
// after it, bit i of byte (r, c) of block b is bit 16r + 4c + b of q[i].
void slice(const uint8_t* in, std::size_t n, uint64_t q[8]) {
    for (int j = 0; j < 8; ++j) {
        const std::size_t b = static_cast<std::size_t>(j & 3);
        if (b < n) {
            const uint8_t* col = in + 16 * b + 4 * (j >> 2);
            q[j] = spread_bytes(load_le32(col)) | spread_bytes(load_le32(col + 8)) << 8;
        } else {
            q[j] = 0;
        }
    }
    transpose_lanes(q);
}

// The inverse of slice: blocks 0 .. n - 1 out of q (which is spoilt).
void unslice(uint64_t q[8], uint8_t* out, std::size_t n) {
    transpose_lanes(q);
    for (int j = 0; j < 8; ++j) {
        const std::size_t b = static_cast<std::size_t>(j & 3);
        if (b >= n) continue;
        uint8_t* col = out + 16 * b + 4 * (j >> 2);
        store_le32(col, gather_bytes(q[j]));
        store_le32(col + 8, gather_bytes(q[j] >> 8));
    }
}

// The S-box on every byte at once, as the 113-gate circuit of Boyar and
// Peralta (a linear layer, a shared inversion in GF(2^4) towers, a linear
// layer with the constant 0x63 folded into four complements). x0 is the
// most significant bit.
void sub_bytes(uint64_t q[8]) {
    const uint64_t x0 = q[7], x1 = q[6], x2 = q[5], x3 = q[4];
    const uint64_t x4 = q[3], x5 = q[2], x6 = q[1], x7 = q[0];

    const uint64_t y14 = x3 ^ x5;
    const uint64_t y13 = x0 ^ x6;
    const uint64_t y9 = x0 ^ x3;
    const uint64_t y8 = x0 ^ x5;
    const uint64_t t0 = x1 ^ x2;
    const uint64_t y1 = t0 ^ x7;
    const uint64_t y4 = y1 ^ x3;
    const uint64_t y12 = y13 ^ y14;
    const uint64_t y2 = y1 ^ x0;
    const uint64_t y5 = y1 ^ x6;
    const uint64_t y3 = y5 ^ y8;
    const uint64_t t1 = x4 ^ y12;
    const uint64_t y15 = t1 ^ x5;
    const uint64_t y20 = t1 ^ x1;
    const uint64_t y6 = y15 ^ x7;
    const uint64_t y10 = y15 ^ t0;
    const uint64_t y11 = y20 ^ y9;
    const uint64_t y7 = x7 ^ y11;
    const uint64_t y17 = y10 ^ y11;
    const uint64_t y19 = y10 ^ y8;
    const uint64_t y16 = t0 ^ y11;
    const uint64_t y21 = y13 ^ y16;
    const uint64_t y18 = x0 ^ y16;

    const uint64_t t2 = y12 & y15;
    const uint64_t t3 = y3 & y6;
    const uint64_t t4 = t3 ^ t2;
    const uint64_t t5 = y4 & x7;
    const uint64_t t6 = t5 ^ t2;
    const uint64_t t7 = y13 & y16;
    const uint64_t t8 = y5 & y1;
    const uint64_t t9 = t8 ^ t7;
    const uint64_t t10 = y2 & y7;
    const uint64_t t11 = t10 ^ t7;
    const uint64_t t12 = y9 & y11;
    const uint64_t t13 = y14 & y17;
    const uint64_t t14 = t13 ^ t12;
    const uint64_t t15 = y8 & y10;
    const uint64_t t16 = t15 ^ t12;
    const uint64_t t17 = t4 ^ t14;
    const uint64_t t18 = t6 ^ t16;
    const uint64_t t19 = t9 ^ t14;
    const uint64_t t20 = t11 ^ t16;
    const uint64_t t21 = t17 ^ y20;
    const uint64_t t22 = t18 ^ y19;
    const uint64_t t23 = t19 ^ y21;
    const uint64_t t24 = t20 ^ y18;

    const uint64_t t25 = t21 ^ t22;
    const uint64_t t26 = t21 & t23;
    const uint64_t t27 = t24 ^ t26;
    const uint64_t t28 = t25 & t27;
    const uint64_t t29 = t28 ^ t22;
    const uint64_t t30 = t23 ^ t24;
    const uint64_t t31 = t22 ^ t26;
    const uint64_t t32 = t31 & t30;
    const uint64_t t33 = t32 ^ t24;
    const uint64_t t34 = t23 ^ t33;
    const uint64_t t35 = t27 ^ t33;
    const uint64_t t36 = t24 & t35;
    const uint64_t t37 = t36 ^ t34;
    const uint64_t t38 = t27 ^ t36;
    const uint64_t t39 = t29 & t38;
    const uint64_t t40 = t25 ^ t39;

    const uint64_t t41 = t40 ^ t37;
    const uint64_t t42 = t29 ^ t33;
    const uint64_t t43 = t29 ^ t40;
    const uint64_t t44 = t33 ^ t37;
    const uint64_t t45 = t42 ^ t41;
    const uint64_t z0 = t44 & y15;
    const uint64_t z1 = t37 & y6;
    const uint64_t z2 = t33 & x7;
    const uint64_t z3 = t43 & y16;
    const uint64_t z4 = t40 & y1;
    const uint64_t z5 = t29 & y7;
    const uint64_t z6 = t42 & y11;
    const uint64_t z7 = t45 & y17;
    const uint64_t z8 = t41 & y10;
    const uint64_t z9 = t44 & y12;
    const uint64_t z10 = t37 & y3;
    const uint64_t z11 = t33 & y4;
    const uint64_t z12 = t43 & y13;
    const uint64_t z13 = t40 & y5;
    const uint64_t z14 = t29 & y2;
    const uint64_t z15 = t42 & y9;
    const uint64_t z16 = t45 & y14;
    const uint64_t z17 = t41 & y8;

    const uint64_t t46 = z15 ^ z16;
    const uint64_t t47 = z10 ^ z11;
    const uint64_t t48 = z5 ^ z13;
    const uint64_t t49 = z9 ^ z10;
    const uint64_t t50 = z2 ^ z12;
    const uint64_t t51 = z2 ^ z5;
    const uint64_t t52 = z7 ^ z8;
    const uint64_t t53 = z0 ^ z3;
    const uint64_t t54 = z6 ^ z7;
    const uint64_t t55 = z16 ^ z17;
    const uint64_t t56 = z12 ^ t48;
    const uint64_t t57 = t50 ^ t53;
    const uint64_t t58 = z4 ^ t46;
    const uint64_t t59 = z3 ^ t54;
    const uint64_t t60 = t46 ^ t57;
    const uint64_t t61 = z14 ^ t57;
    const uint64_t t62 = t52 ^ t58;
    const uint64_t t63 = t49 ^ t58;
    const uint64_t t64 = z4 ^ t59;
    const uint64_t t65 = t61 ^ t62;
    const uint64_t t66 = z1 ^ t63;
    const uint64_t s0 = t59 ^ t63;
    const uint64_t s6 = t56 ^ ~t62;
    const uint64_t s7 = t48 ^ ~t60;
    const uint64_t t67 = t64 ^ t65;
    const uint64_t s3 = t53 ^ t66;
    const uint64_t s4 = t51 ^ t66;
    const uint64_t s5 = t47 ^ t65;
    const uint64_t s1 = t64 ^ ~s3;
    const uint64_t s2 = t55 ^ ~t67;

    q[7] = s0;
    q[6] = s1;
    q[5] = s2;
    q[4] = s3;
    q[3] = s4;
    q[2] = s5;
    q[1] = s6;
    q[0] = s7;
}

// The affine map L(x) = A^-1 x + 0x05, A being the S-box's linear part:
// bit i of L(x) is x[i-1] + x[i-3] + x[i-6] (indices mod 8) plus bit i of 0x05.
// Since S(y) = A(y^-1) + 0x63, the inverse S-box is L(S(L(x))).
void inverse_affine(uint64_t q[8]) {
    uint64_t r[8];
    for (int i = 0; i < 8; ++i) r[i] = q[(i + 7) & 7] ^ q[(i + 5) & 7] ^ q[(i + 2) & 7];
    r[0] = ~r[0];
    r[2] = ~r[2];
    for (int i = 0; i < 8; ++i) q[i] = r[i];
}

void inv_sub_bytes(uint64_t q[8]) {
    inverse_affine(q);
    sub_bytes(q);
    inverse_affine(q);
}

// Row r moves left by r columns: in a row's 16 bits, the column groups of
// 4 bits rotate right by 4r. Done in two steps: rows 2 and 3 rotate by 8
// (their two bytes change places), then rows 1 and 3 by 4.
inline uint64_t swap_bytes_rows23(uint64_t x) {
    const uint64_t t = (x ^ (x >> 8)) & 0x00FF00FF00000000ull;
    return x ^ t ^ (t << 8);
}

inline uint64_t shift_rows_word(uint64_t x) {
    x = swap_bytes_rows23(x);
    return (x & 0x0000FFFF0000FFFFull) | ((x >> 4) & 0x0FFF00000FFF0000ull) | ((x << 12) & 0xF0000000F0000000ull);
}

inline uint64_t inv_shift_rows_word(uint64_t x) {
    x = swap_bytes_rows23(x);
    return (x & 0x0000FFFF0000FFFFull) | ((x << 4) & 0xFFF00000FFF00000ull) | ((x >> 12) & 0x000F0000000F0000ull);
}

void shift_rows(uint64_t q[8]) {
    for (int i = 0; i < 8; ++i) q[i] = shift_rows_word(q[i]);
}

void inv_shift_rows(uint64_t q[8]) {
    for (int i = 0; i < 8; ++i) q[i] = inv_shift_rows_word(q[i]);
}

// Row r + 1 of every column moved to row r (rows are 16-bit fields).
inline uint64_t next_row(uint64_t x) { return (x >> 16) | (x << 48); }
// Rows r + 2 to row r.
inline uint64_t row_after_next(uint64_t x) { return (x >> 32) | (x << 32); }

// b = 2a + 3a' + a'' + a''' (a' the next row, and so on) written as
// 2(a + a') + a' + (a'' + a'''), where a'' + a''' is (a + a') two rows on.
// Doubling in GF(2^8) moves bit i to i + 1 and adds bit 7 into bits 0, 1, 3, 4.
void mix_columns(uint64_t q[8]) {
    uint64_t n[8], y[8];
    for (int i = 0; i < 8; ++i) {
        n[i] = next_row(q[i]);
        y[i] = q[i] ^ n[i];
    }
    q[0] = y[7] ^ n[0] ^ row_after_next(y[0]);
    q[1] = y[0] ^ y[7] ^ n[1] ^ row_after_next(y[1]);
    q[2] = y[1] ^ n[2] ^ row_after_next(y[2]);
    q[3] = y[2] ^ y[7] ^ n[3] ^ row_after_next(y[3]);
    q[4] = y[3] ^ y[7] ^ n[4] ^ row_after_next(y[4]);
    q[5] = y[4] ^ n[5] ^ row_after_next(y[5]);
    q[6] = y[5] ^ n[6] ^ row_after_next(y[6]);
    q[7] = y[6] ^ n[7] ^ row_after_next(y[7]);
}

// The inverse matrix is the forward one times {04}x^2 + {05}: first add
// 4(a + a'') to a, then mix. Four times u moves bit i to i + 2 and adds bit
// 6 into 0, 1, 3, 4 and bit 7 into 1, 2, 4, 5.
void inv_mix_columns(uint64_t q[8]) {
    uint64_t u[8];
    for (int i = 0; i < 8; ++i) u[i] = q[i] ^ row_after_next(q[i]);
    q[0] ^= u[6];
    q[1] ^= u[7] ^ u[6];
    q[2] ^= u[0] ^ u[7];
    q[3] ^= u[1] ^ u[6];
    q[4] ^= u[2] ^ u[7] ^ u[6];
    q[5] ^= u[3] ^ u[7];
    q[6] ^= u[4];
    q[7] ^= u[5];
    mix_columns(q);
}

inline void add_round_key(uint64_t q[8], const uint64_t k[8]) {
    for (int i = 0; i < 8; ++i) q[i] ^= k[i];
}

void sliced_encrypt(const uint64_t sk[15][8], uint64_t q[8]) {
    add_round_key(q, sk[0]);
    for (int round = 1; round < 14; ++round) {
        sub_bytes(q);
        shift_rows(q);
        mix_columns(q);
        add_round_key(q, sk[round]);
    }
    sub_bytes(q);
    shift_rows(q);
    add_round_key(q, sk[14]);
}

void sliced_decrypt(const uint64_t sk[15][8], uint64_t q[8]) {
    add_round_key(q, sk[14]);
    for (int round = 13; round > 0; --round) {
        inv_shift_rows(q);
        inv_sub_bytes(q);
        add_round_key(q, sk[round]);
        inv_mix_columns(q);
    }
    inv_shift_rows(q);
    inv_sub_bytes(q);
    add_round_key(q, sk[0]);
}

// Runs the portable rounds over `blocks` blocks, four at a time.
void sliced_blocks(const uint64_t sk[15][8], const uint8_t* in, uint8_t* out, std::size_t blocks,
                   bool decrypting) {
    uint64_t q[8];
    while (blocks > 0) {
        const std::size_t n = blocks < 4 ? blocks : 4;
        slice(in, n, q);
        if (decrypting)
            sliced_decrypt(sk, q);
        else
            sliced_encrypt(sk, q);
        unslice(q, out, n);
        in += 16 * n;
        out += 16 * n;
        blocks -= n;
    }
    secure_wipe(q, sizeof q);
}

// SubWord of the key expansion (byte 0 lowest), through the same circuit.
uint32_t sub_word(uint32_t w) {
    uint64_t q[8];
    uint8_t b[16] = {};
    store_le32(b, w);
    slice(b, 1, q);
    sub_bytes(q);
    unslice(q, b, 1);
    const uint32_t r = load_le32(b);
    secure_wipe(q, sizeof q);
    secure_wipe(b, sizeof b);
    return r;
}

inline uint8_t xtime(uint8_t a) {
    return static_cast<uint8_t>((a << 1) ^ (0x1B & (0u - (a >> 7))));
}

// ---------------------------------------------------------------------------
// The AES instructions. Each function carries its own target attribute, so
// the rest of the library is built for the plain processor.
// ---------------------------------------------------------------------------

#ifdef BRINDLE_AES_NI

bool cpu_has_aes() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("aes") && __builtin_cpu_supports("sse2");
}

#define BRINDLE_AES_TARGET __attribute__((target("aes,sse2")))

BRINDLE_AES_TARGET inline __m128i load_key(const uint8_t rk[15][16], int i) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(rk[i]));
}

BRINDLE_AES_TARGET void hw_inverse_keys(const uint8_t enc[15][16], uint8_t dec[15][16]) {
    // The equivalent inverse cipher: the round keys in reverse order, the
    // middle ones through InvMixColumns.
    std::memcpy(dec[0], enc[14], 16);
    for (int i = 1; i < 14; ++i)
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dec[i]), _mm_aesimc_si128(load_key(enc, 14 - i)));
    std::memcpy(dec[14], enc[0], 16);
}

// One block: the whole chain of rounds is the latency a chained mode waits
// for, so nothing else stands in it (the round keys load beside it).
BRINDLE_AES_TARGET void hw_encrypt(const uint8_t rk[15][16], const uint8_t* in, uint8_t* out) {
    __m128i s = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), load_key(rk, 0));
    s = _mm_aesenc_si128(s, load_key(rk, 1));
    s = _mm_aesenc_si128(s, load_key(rk, 2));
    s = _mm_aesenc_si128(s, load_key(rk, 3));
    s = _mm_aesenc_si128(s, load_key(rk, 4));
    s = _mm_aesenc_si128(s, load_key(rk, 5));
    s = _mm_aesenc_si128(s, load_key(rk, 6));
    s = _mm_aesenc_si128(s, load_key(rk, 7));
    s = _mm_aesenc_si128(s, load_key(rk, 8));
    s = _mm_aesenc_si128(s, load_key(rk, 9));
    s = _mm_aesenc_si128(s, load_key(rk, 10));
    s = _mm_aesenc_si128(s, load_key(rk, 11));
    s = _mm_aesenc_si128(s, load_key(rk, 12));
    s = _mm_aesenc_si128(s, load_key(rk, 13));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_aesenclast_si128(s, load_key(rk, 14)));
}

BRINDLE_AES_TARGET void hw_decrypt(const uint8_t rk[15][16], const uint8_t* in, uint8_t* out) {
    __m128i s = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), load_key(rk, 0));
    s = _mm_aesdec_si128(s, load_key(rk, 1));
    s = _mm_aesdec_si128(s, load_key(rk, 2));
    s = _mm_aesdec_si128(s, load_key(rk, 3));
    s = _mm_aesdec_si128(s, load_key(rk, 4));
    s = _mm_aesdec_si128(s, load_key(rk, 5));
    s = _mm_aesdec_si128(s, load_key(rk, 6));
    s = _mm_aesdec_si128(s, load_key(rk, 7));
    s = _mm_aesdec_si128(s, load_key(rk, 8));
    s = _mm_aesdec_si128(s, load_key(rk, 9));
    s = _mm_aesdec_si128(s, load_key(rk, 10));
    s = _mm_aesdec_si128(s, load_key(rk, 11));
    s = _mm_aesdec_si128(s, load_key(rk, 12));
    s = _mm_aesdec_si128(s, load_key(rk, 13));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_aesdeclast_si128(s, load_key(rk, 14)));
}

// Eight independent blocks per pass keep the AES units busy (each round
// instruction has a latency of several cycles but a new one can start
// every cycle or two); the rest go one at a time.
template <bool Decrypt>
BRINDLE_AES_TARGET void hw_blocks(const uint8_t rk[15][16], const uint8_t* in, uint8_t* out, std::size_t blocks) {
    constexpr int kWay = 8;
    for (; blocks >= kWay; blocks -= kWay, in += 16 * kWay, out += 16 * kWay) {
        __m128i s[kWay];
        const __m128i k0 = load_key(rk, 0);
#pragma GCC unroll 8
        for (int j = 0; j < kWay; ++j)
            s[j] = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 16 * j)), k0);
#pragma GCC unroll 13
        for (int round = 1; round < 14; ++round) {
            const __m128i k = load_key(rk, round);
#pragma GCC unroll 8
            for (int j = 0; j < kWay; ++j) s[j] = Decrypt ? _mm_aesdec_si128(s[j], k) : _mm_aesenc_si128(s[j], k);
        }
        const __m128i kl = load_key(rk, 14);
#pragma GCC unroll 8
        for (int j = 0; j < kWay; ++j)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 16 * j),
                             Decrypt ? _mm_aesdeclast_si128(s[j], kl) : _mm_aesenclast_si128(s[j], kl));
    }
    for (; blocks > 0; --blocks, in += 16, out += 16) {
        if (Decrypt)
            hw_decrypt(rk, in, out);
        else
            hw_encrypt(rk, in, out);
    }
}

// The chained mode: the XOR with the previous ciphertext (masked to the
// chained bytes) and with round key 0 are the only steps added to the
// rounds' own chain.
BRINDLE_AES_TARGET void hw_encrypt_chained(const uint8_t rk[15][16], const uint8_t* iv, const uint8_t* in,
                                           uint8_t* out, std::size_t blocks, const uint8_t* mask_bytes) {
    const __m128i mask = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mask_bytes));
    const __m128i k0 = load_key(rk, 0), k1 = load_key(rk, 1), k2 = load_key(rk, 2), k3 = load_key(rk, 3),
                  k4 = load_key(rk, 4), k5 = load_key(rk, 5), k6 = load_key(rk, 6), k7 = load_key(rk, 7);
    __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(iv));
    for (; blocks > 0; --blocks, in += 16, out += 16) {
        const __m128i x = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), k0);
        __m128i s = _mm_xor_si128(_mm_and_si128(c, mask), x);
        s = _mm_aesenc_si128(s, k1);
        s = _mm_aesenc_si128(s, k2);
        s = _mm_aesenc_si128(s, k3);
        s = _mm_aesenc_si128(s, k4);
        s = _mm_aesenc_si128(s, k5);
        s = _mm_aesenc_si128(s, k6);
        s = _mm_aesenc_si128(s, k7);
        s = _mm_aesenc_si128(s, load_key(rk, 8));
        s = _mm_aesenc_si128(s, load_key(rk, 9));
        s = _mm_aesenc_si128(s, load_key(rk, 10));
        s = _mm_aesenc_si128(s, load_key(rk, 11));
        s = _mm_aesenc_si128(s, load_key(rk, 12));
        s = _mm_aesenc_si128(s, load_key(rk, 13));
        c = _mm_aesenclast_si128(s, load_key(rk, 14));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), c);
    }
}

// Lanes runs chained side by side: block b of every lane is enciphered in
// the same pass, so the instructions' latency is hidden as in ECB.
template <int Lanes>
BRINDLE_AES_TARGET void hw_encrypt_chained_lanes(const uint8_t rk[15][16], const uint8_t* iv, uint8_t* bytes,
                                                 std::size_t stride, std::size_t blocks,
                                                 const uint8_t* mask_bytes) {
    const __m128i mask = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mask_bytes));
    __m128i key[15];
    for (int r = 0; r < 15; ++r) key[r] = load_key(rk, r);
    __m128i c[Lanes];
    const __m128i start = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(iv)), mask);
    for (int l = 0; l < Lanes; ++l) c[l] = start;
    for (std::size_t b = 0; b < blocks; ++b) {
        __m128i s[Lanes];
        for (int l = 0; l < Lanes; ++l) {
            const auto* p = reinterpret_cast<const __m128i*>(bytes + l * stride + b * 16);
            s[l] = _mm_xor_si128(_mm_xor_si128(_mm_loadu_si128(p), key[0]), c[l]);
        }
        for (int r = 1; r < 14; ++r)
            for (int l = 0; l < Lanes; ++l) s[l] = _mm_aesenc_si128(s[l], key[r]);
        for (int l = 0; l < Lanes; ++l) {
            const __m128i out = _mm_aesenclast_si128(s[l], key[14]);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes + l * stride + b * 16), out);
            c[l] = _mm_and_si128(out, mask);
        }
    }
}

#else

bool cpu_has_aes() { return false; }

#endif

// Looked up once; the answer does not change while the process runs.
bool hardware_available() {
    static const bool has = cpu_has_aes();
    return has;
}

} // namespace

bool rijndael_uses_hardware() noexcept { return hardware_available(); }

RijndaelKey::RijndaelKey(std::span<const uint8_t, 32> key, RijndaelPath path) noexcept {
    // Words are kept as four bytes in a uint32_t, byte 0 lowest, so that
    // RotWord is a rotation right by 8 bits.
    uint32_t w[60];
    for (int i = 0; i < 8; ++i) w[i] = load_le32(key.data() + 4 * i);
    uint8_t rcon = 1;
    for (int i = 8; i < 60; ++i) {
        uint32_t t = w[i - 1];
        if (i % 8 == 0) {
            t = sub_word((t >> 8) | (t << 24)) ^ rcon;
            rcon = xtime(rcon);
        } else if (i % 8 == 4) {
            t = sub_word(t);
        }
        w[i] = w[i - 8] ^ t;
    }
    for (int i = 0; i < 60; ++i) store_le32(round_key_[i / 4] + 4 * (i % 4), w[i]);
    secure_wipe(w, sizeof w);
    hardware_ = path == RijndaelPath::best && hardware_available();
    std::memset(inverse_key_, 0, sizeof inverse_key_);
    std::memset(sliced_key_, 0, sizeof sliced_key_);
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_inverse_keys(round_key_, inverse_key_);
        return;
    }
#endif
    // Each round key in the bitsliced form, the same in all four block
    // positions (bit 16r + 4c of each word copied to the three above it).
    for (int round = 0; round < 15; ++round) {
        uint64_t* k = sliced_key_[round];
        slice(round_key_[round], 1, k);
        for (int i = 0; i < 8; ++i) {
            const uint64_t x = k[i] & 0x1111111111111111ull;
            k[i] = x | x << 1 | x << 2 | x << 3;
        }
    }
}

RijndaelKey::~RijndaelKey() {
    secure_wipe(round_key_, sizeof round_key_);
    secure_wipe(inverse_key_, sizeof inverse_key_);
    secure_wipe(sliced_key_, sizeof sliced_key_);
}

void RijndaelKey::encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_encrypt(round_key_, in.data(), out.data());
        return;
    }
#endif
    sliced_blocks(sliced_key_, in.data(), out.data(), 1, false);
}

void RijndaelKey::decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_decrypt(inverse_key_, in.data(), out.data());
        return;
    }
#endif
    sliced_blocks(sliced_key_, in.data(), out.data(), 1, true);
}

void RijndaelKey::encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_blocks<false>(round_key_, in, out, blocks);
        return;
    }
#endif
    sliced_blocks(sliced_key_, in, out, blocks, false);
}

void RijndaelKey::encrypt_chained(std::span<const uint8_t, 16> iv, const uint8_t* in, uint8_t* out,
                                  std::size_t blocks, std::size_t chained) const noexcept {
    if (chained > 16) chained = 16;
    uint8_t mask[16];
    for (std::size_t i = 0; i < 16; ++i) mask[i] = i < chained ? 0xFF : 0x00;
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_encrypt_chained(round_key_, iv.data(), in, out, blocks, mask);
        return;
    }
#endif
    const uint8_t* prev = iv.data();
    uint8_t x[16];
    for (; blocks > 0; --blocks, in += 16, out += 16) {
        for (int i = 0; i < 16; ++i) x[i] = static_cast<uint8_t>(in[i] ^ (prev[i] & mask[i]));
        sliced_blocks(sliced_key_, x, out, 1, false);
        prev = out;
    }
    secure_wipe(x, sizeof x);
}

void RijndaelKey::encrypt_chained_runs(std::span<const uint8_t, 16> iv, uint8_t* bytes, std::size_t run_blocks,
                                       std::size_t runs, std::size_t chained) const noexcept {
    const std::size_t stride = run_blocks * 16;
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        if (chained > 16) chained = 16;
        uint8_t mask[16];
        for (std::size_t i = 0; i < 16; ++i) mask[i] = i < chained ? 0xFF : 0x00;
        for (; runs >= 8; runs -= 8, bytes += 8 * stride)
            hw_encrypt_chained_lanes<8>(round_key_, iv.data(), bytes, stride, run_blocks, mask);
        for (; runs >= 4; runs -= 4, bytes += 4 * stride)
            hw_encrypt_chained_lanes<4>(round_key_, iv.data(), bytes, stride, run_blocks, mask);
        for (; runs > 0; --runs, bytes += stride)
            hw_encrypt_chained_lanes<1>(round_key_, iv.data(), bytes, stride, run_blocks, mask);
        return;
    }
#endif
    for (; runs > 0; --runs, bytes += stride) encrypt_chained(iv, bytes, bytes, run_blocks, chained);
}

void RijndaelKey::decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_blocks<true>(inverse_key_, in, out, blocks);
        return;
    }
#endif
    sliced_blocks(sliced_key_, in, out, blocks, true);
}

} // namespace brindle::crypto
