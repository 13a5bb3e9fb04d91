#include "crypto/rc6.h"

#include "crypto/secure_wipe.h"

#include <bit>

#if (defined(__x86_64__) || defined(__i386__)) && (defined(__GNUC__) || defined(__clang__))
#define BRINDLE_RC6_AVX2 1
#include <immintrin.h>
#endif

namespace brindle::crypto {

namespace {

constexpr int kRounds = 20;

inline uint32_t load_le(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

inline void store_le(uint8_t* p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
    p[2] = static_cast<uint8_t>(v >> 16);
    p[3] = static_cast<uint8_t>(v >> 24);
}

// Rotation counts are the low five bits (std::rotl takes them modulo 32).
inline uint32_t rotl(uint32_t x, uint32_t n) { return std::rotl(x, static_cast<int>(n & 31)); }
inline uint32_t rotr(uint32_t x, uint32_t n) { return std::rotr(x, static_cast<int>(n & 31)); }

// N blocks side by side: each round is a chain of a multiply and two
// rotations, so independent blocks keep the multiplier busy.
template <int N>
inline void encrypt_n(const uint32_t* s, const uint8_t* in, uint8_t* out) {
    uint32_t a[N], b[N], c[N], d[N];
    for (int j = 0; j < N; ++j) {
        const uint8_t* p = in + 16 * j;
        a[j] = load_le(p);
        b[j] = load_le(p + 4) + s[0];
        c[j] = load_le(p + 8);
        d[j] = load_le(p + 12) + s[1];
    }
    for (int r = 1; r <= kRounds; ++r) {
        const uint32_t k0 = s[2 * r], k1 = s[2 * r + 1];
#pragma GCC unroll 4
        for (int j = 0; j < N; ++j) {
            const uint32_t t = std::rotl(b[j] * (2 * b[j] + 1), 5);
            const uint32_t u = std::rotl(d[j] * (2 * d[j] + 1), 5);
            const uint32_t na = rotl(a[j] ^ t, u) + k0;
            const uint32_t nc = rotl(c[j] ^ u, t) + k1;
            // (A, B, C, D) = (B, C, D, A)
            a[j] = b[j];
            b[j] = nc;
            c[j] = d[j];
            d[j] = na;
        }
    }
    for (int j = 0; j < N; ++j) {
        uint8_t* p = out + 16 * j;
        store_le(p, a[j] + s[2 * kRounds + 2]);
        store_le(p + 4, b[j]);
        store_le(p + 8, c[j] + s[2 * kRounds + 3]);
        store_le(p + 12, d[j]);
    }
}

template <int N>
inline void decrypt_n(const uint32_t* s, const uint8_t* in, uint8_t* out) {
    uint32_t a[N], b[N], c[N], d[N];
    for (int j = 0; j < N; ++j) {
        const uint8_t* p = in + 16 * j;
        a[j] = load_le(p) - s[2 * kRounds + 2];
        b[j] = load_le(p + 4);
        c[j] = load_le(p + 8) - s[2 * kRounds + 3];
        d[j] = load_le(p + 12);
    }
    for (int r = kRounds; r >= 1; --r) {
        const uint32_t k0 = s[2 * r], k1 = s[2 * r + 1];
#pragma GCC unroll 4
        for (int j = 0; j < N; ++j) {
            // (A, B, C, D) = (D, A, B, C)
            const uint32_t na = d[j], nb = a[j], nc = b[j], nd = c[j];
            const uint32_t u = std::rotl(nd * (2 * nd + 1), 5);
            const uint32_t t = std::rotl(nb * (2 * nb + 1), 5);
            c[j] = rotr(nc - k1, t) ^ u;
            a[j] = rotr(na - k0, u) ^ t;
            b[j] = nb;
            d[j] = nd;
        }
    }
    for (int j = 0; j < N; ++j) {
        uint8_t* p = out + 16 * j;
        store_le(p, a[j]);
        store_le(p + 4, b[j] - s[0]);
        store_le(p + 8, c[j]);
        store_le(p + 12, d[j] - s[1]);
    }
}

#ifdef BRINDLE_RC6_AVX2

// Eight blocks in the 32-bit lanes of AVX2 registers: the multiplications
// and the per-lane rotations (shifts by a count in each lane) are single
// instructions. Chosen at run time; the function carries its own target
// attribute, so the rest of the library is built for the plain processor.

bool cpu_has_avx2() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2");
}

const bool kHasAvx2 = cpu_has_avx2();

#define BRINDLE_AVX2_TARGET __attribute__((target("avx2")))

// Lane k of each 128-bit half of word w (w = 0..3 for A..D) is block k of
// that half: rows of four words in, columns out, and the same steps back.
BRINDLE_AVX2_TARGET inline void transpose(__m256i& a, __m256i& b, __m256i& c, __m256i& d) {
    const __m256i t0 = _mm256_unpacklo_epi32(a, b), t1 = _mm256_unpackhi_epi32(a, b);
    const __m256i t2 = _mm256_unpacklo_epi32(c, d), t3 = _mm256_unpackhi_epi32(c, d);
    a = _mm256_unpacklo_epi64(t0, t2);
    b = _mm256_unpackhi_epi64(t0, t2);
    c = _mm256_unpacklo_epi64(t1, t3);
    d = _mm256_unpackhi_epi64(t1, t3);
}

BRINDLE_AVX2_TARGET inline __m256i load_two(const uint8_t* lo, const uint8_t* hi) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(lo))),
                                   _mm_loadu_si128(reinterpret_cast<const __m128i*>(hi)), 1);
}

BRINDLE_AVX2_TARGET inline void store_two(uint8_t* lo, uint8_t* hi, __m256i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(lo), _mm256_castsi256_si128(v));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(hi), _mm256_extracti128_si256(v, 1));
}

// x * (2x + 1) rotated left by 5.
BRINDLE_AVX2_TARGET inline __m256i f_avx2(__m256i x) {
    const __m256i p = _mm256_mullo_epi32(x, _mm256_add_epi32(_mm256_add_epi32(x, x), _mm256_set1_epi32(1)));
    return _mm256_or_si256(_mm256_slli_epi32(p, 5), _mm256_srli_epi32(p, 27));
}

// Rotations by the low five bits of each lane of n (a shift by 32 gives 0).
BRINDLE_AVX2_TARGET inline __m256i rotl_avx2(__m256i x, __m256i n) {
    n = _mm256_and_si256(n, _mm256_set1_epi32(31));
    return _mm256_or_si256(_mm256_sllv_epi32(x, n), _mm256_srlv_epi32(x, _mm256_sub_epi32(_mm256_set1_epi32(32), n)));
}
BRINDLE_AVX2_TARGET inline __m256i rotr_avx2(__m256i x, __m256i n) {
    n = _mm256_and_si256(n, _mm256_set1_epi32(31));
    return _mm256_or_si256(_mm256_srlv_epi32(x, n), _mm256_sllv_epi32(x, _mm256_sub_epi32(_mm256_set1_epi32(32), n)));
}

BRINDLE_AVX2_TARGET inline __m256i key(const uint32_t* s, int i) { return _mm256_set1_epi32(static_cast<int>(s[i])); }

// Blocks 0-3 go in the low halves, 4-7 in the high halves.
BRINDLE_AVX2_TARGET void encrypt8_avx2(const uint32_t* s, const uint8_t* in, uint8_t* out) {
    __m256i a = load_two(in, in + 64), b = load_two(in + 16, in + 80);
    __m256i c = load_two(in + 32, in + 96), d = load_two(in + 48, in + 112);
    transpose(a, b, c, d);
    b = _mm256_add_epi32(b, key(s, 0));
    d = _mm256_add_epi32(d, key(s, 1));
    for (int r = 1; r <= kRounds; ++r) {
        const __m256i t = f_avx2(b), u = f_avx2(d);
        const __m256i na = _mm256_add_epi32(rotl_avx2(_mm256_xor_si256(a, t), u), key(s, 2 * r));
        const __m256i nc = _mm256_add_epi32(rotl_avx2(_mm256_xor_si256(c, u), t), key(s, 2 * r + 1));
        a = b;
        b = nc;
        c = d;
        d = na;
    }
    a = _mm256_add_epi32(a, key(s, 2 * kRounds + 2));
    c = _mm256_add_epi32(c, key(s, 2 * kRounds + 3));
    transpose(a, b, c, d);
    store_two(out, out + 64, a);
    store_two(out + 16, out + 80, b);
    store_two(out + 32, out + 96, c);
    store_two(out + 48, out + 112, d);
}

BRINDLE_AVX2_TARGET void decrypt8_avx2(const uint32_t* s, const uint8_t* in, uint8_t* out) {
    __m256i a = load_two(in, in + 64), b = load_two(in + 16, in + 80);
    __m256i c = load_two(in + 32, in + 96), d = load_two(in + 48, in + 112);
    transpose(a, b, c, d);
    a = _mm256_sub_epi32(a, key(s, 2 * kRounds + 2));
    c = _mm256_sub_epi32(c, key(s, 2 * kRounds + 3));
    for (int r = kRounds; r >= 1; --r) {
        const __m256i na = d, nb = a, nc = b, nd = c;
        const __m256i u = f_avx2(nd), t = f_avx2(nb);
        c = _mm256_xor_si256(rotr_avx2(_mm256_sub_epi32(nc, key(s, 2 * r + 1)), t), u);
        a = _mm256_xor_si256(rotr_avx2(_mm256_sub_epi32(na, key(s, 2 * r)), u), t);
        b = nb;
        d = nd;
    }
    b = _mm256_sub_epi32(b, key(s, 0));
    d = _mm256_sub_epi32(d, key(s, 1));
    transpose(a, b, c, d);
    store_two(out, out + 64, a);
    store_two(out + 16, out + 80, b);
    store_two(out + 32, out + 96, c);
    store_two(out + 48, out + 112, d);
}

#endif

} // namespace

Rc6Key::Rc6Key(std::span<const uint8_t, 32> key) noexcept {
    constexpr int kWords = 8, kSchedule = 2 * kRounds + 4;
    uint32_t l[kWords];
    for (int i = 0; i < kWords; ++i)
        l[i] = load_le(key.data() + 4 * i);
    s_[0] = 0xB7E15163u; // P32 (e - 2)
    for (int i = 1; i < kSchedule; ++i)
        s_[i] = s_[i - 1] + 0x9E3779B9u; // Q32 (golden ratio - 1)
    uint32_t a = 0, b = 0;
    for (int k = 0, i = 0, j = 0; k < 3 * kSchedule; ++k) {
        a = s_[i] = std::rotl(s_[i] + a + b, 3);
        b = l[j] = rotl(l[j] + a + b, a + b);
        i = (i + 1) % kSchedule;
        j = (j + 1) % kWords;
    }
    secure_wipe(l, sizeof l);
    secure_wipe(&a, sizeof a);
    secure_wipe(&b, sizeof b);
}

Rc6Key::~Rc6Key() { secure_wipe(s_, sizeof s_); }

void Rc6Key::encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
    encrypt_n<1>(s_, in.data(), out.data());
}

void Rc6Key::decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
    decrypt_n<1>(s_, in.data(), out.data());
}

void Rc6Key::encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
#ifdef BRINDLE_RC6_AVX2
    if (kHasAvx2)
        for (; blocks >= 8; blocks -= 8, in += 128, out += 128)
            encrypt8_avx2(s_, in, out);
#endif
    for (; blocks >= 4; blocks -= 4, in += 64, out += 64)
        encrypt_n<4>(s_, in, out);
    for (; blocks > 0; --blocks, in += 16, out += 16)
        encrypt_n<1>(s_, in, out);
}

void Rc6Key::decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
#ifdef BRINDLE_RC6_AVX2
    if (kHasAvx2)
        for (; blocks >= 8; blocks -= 8, in += 128, out += 128)
            decrypt8_avx2(s_, in, out);
#endif
    for (; blocks >= 4; blocks -= 4, in += 64, out += 64)
        decrypt_n<4>(s_, in, out);
    for (; blocks > 0; --blocks, in += 16, out += 16)
        decrypt_n<1>(s_, in, out);
}

} // namespace brindle::crypto
