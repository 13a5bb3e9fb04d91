#include "crypto/serpent.h"

#include "crypto/secure_wipe.h"

#include <array>
#include <cstring>
#include <utility>

#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#include <emmintrin.h>
#define BRINDLE_SERPENT_SSE2 1
#endif

#if defined(__GNUC__) || defined(__clang__)
#define BRINDLE_SERPENT_INLINE inline __attribute__((always_inline))
#elif defined(_MSC_VER)
#define BRINDLE_SERPENT_INLINE __forceinline
#else
#define BRINDLE_SERPENT_INLINE inline
#endif

namespace brindle::crypto {

namespace {

// The eight S-boxes of the Serpent paper (input nibble -> output nibble).
constexpr uint8_t kSbox[8][16] = {
    {3, 8, 15, 1, 10, 6, 5, 11, 14, 13, 4, 2, 7, 0, 9, 12},
    {15, 12, 2, 7, 9, 0, 5, 10, 1, 11, 14, 8, 6, 13, 3, 4},
    {8, 6, 7, 9, 3, 12, 10, 15, 13, 1, 14, 4, 0, 11, 5, 2},
    {0, 15, 11, 8, 12, 9, 6, 3, 13, 1, 2, 4, 10, 7, 5, 14},
    {1, 15, 8, 3, 12, 0, 11, 6, 2, 5, 4, 10, 9, 14, 7, 13},
    {15, 5, 2, 11, 4, 10, 9, 12, 0, 3, 14, 8, 13, 6, 7, 1},
    {7, 2, 12, 5, 8, 4, 6, 11, 14, 9, 1, 15, 13, 3, 10, 0},
    {1, 13, 15, 0, 14, 8, 2, 11, 7, 4, 12, 10, 9, 3, 5, 6},
};

// Each S-box (and its inverse) as a circuit: output bit j is the XOR of the
// products of input bits whose index set m has bit m of anf[j] set (the
// algebraic normal form, found by the Moebius transform of the truth table).
// Bit 0 of a nibble lives in word 0 of the bitsliced block.
struct Anf {
    uint16_t out[4];
};

constexpr Anf anf_of(const uint8_t (&box)[16]) {
    Anf a{};
    for (int j = 0; j < 4; ++j) {
        uint8_t f[16] = {};
        for (int x = 0; x < 16; ++x)
            f[x] = static_cast<uint8_t>((box[x] >> j) & 1);
        for (int i = 0; i < 4; ++i)
            for (int x = 0; x < 16; ++x)
                if (x & (1 << i))
                    f[x] = static_cast<uint8_t>(f[x] ^ f[x ^ (1 << i)]);
        uint16_t mask = 0;
        for (int m = 0; m < 16; ++m)
            mask = static_cast<uint16_t>(mask | (f[m] << m));
        a.out[j] = mask;
    }
    return a;
}

constexpr std::array<Anf, 8> make_anf(bool inverse) {
    std::array<Anf, 8> r{};
    for (int s = 0; s < 8; ++s) {
        uint8_t box[16] = {};
        for (int x = 0; x < 16; ++x) {
            if (inverse)
                box[kSbox[s][x]] = static_cast<uint8_t>(x);
            else
                box[x] = kSbox[s][x];
        }
        r[s] = anf_of(box);
    }
    return r;
}

constexpr std::array<Anf, 8> kForward = make_anf(false);
constexpr std::array<Anf, 8> kInverse = make_anf(true);

// A word of bit planes: a plain 32-bit word (one block) or, with SSE2, four
// 32-bit lanes (four blocks).
struct Plain {
    uint32_t v;
    static Plain ones() { return {0xFFFFFFFFu}; }
    static Plain zero() { return {0}; }
    friend Plain operator^(Plain a, Plain b) { return {a.v ^ b.v}; }
    friend Plain operator&(Plain a, Plain b) { return {a.v & b.v}; }
    template <int N> Plain shl() const { return {v << N}; }
    template <int N> Plain rotl() const { return {(v << N) | (v >> (32 - N))}; }
    static Plain splat(uint32_t k) { return {k}; }
};

#ifdef BRINDLE_SERPENT_SSE2
struct Lanes {
    __m128i v;
    static Lanes ones() { return {_mm_set1_epi32(-1)}; }
    static Lanes zero() { return {_mm_setzero_si128()}; }
    friend Lanes operator^(Lanes a, Lanes b) { return {_mm_xor_si128(a.v, b.v)}; }
    friend Lanes operator&(Lanes a, Lanes b) { return {_mm_and_si128(a.v, b.v)}; }
    template <int N> Lanes shl() const { return {_mm_slli_epi32(v, N)}; }
    template <int N> Lanes rotl() const { return {_mm_or_si128(_mm_slli_epi32(v, N), _mm_srli_epi32(v, 32 - N))}; }
    static Lanes splat(uint32_t k) { return {_mm_set1_epi32(static_cast<int>(k))}; }
};
#endif

// XOR of the products whose bits are set in Mask (the index set of product m
// is the bits of m; product 0 is the constant 1).
template <uint16_t Mask, class W, std::size_t... M>
BRINDLE_SERPENT_INLINE W sum_of(const W (&p)[16], std::index_sequence<M...>) {
    W y = W::zero();
    ((y = ((Mask >> M) & 1) ? y ^ p[M] : y), ...);
    return y;
}

template <const std::array<Anf, 8>& Table, int Box, class W> BRINDLE_SERPENT_INLINE void sbox(W (&x)[4]) {
    W p[16];
    p[0] = W::ones();
    p[1] = x[0];
    p[2] = x[1];
    p[4] = x[2];
    p[8] = x[3];
    p[3] = x[0] & x[1];
    p[5] = x[0] & x[2];
    p[6] = x[1] & x[2];
    p[7] = p[3] & x[2];
    p[9] = x[0] & x[3];
    p[10] = x[1] & x[3];
    p[11] = p[3] & x[3];
    p[12] = x[2] & x[3];
    p[13] = p[5] & x[3];
    p[14] = p[6] & x[3];
    p[15] = p[7] & x[3];
    constexpr Anf a = Table[Box];
    using Seq = std::make_index_sequence<16>;
    x[0] = sum_of<a.out[0]>(p, Seq{});
    x[1] = sum_of<a.out[1]>(p, Seq{});
    x[2] = sum_of<a.out[2]>(p, Seq{});
    x[3] = sum_of<a.out[3]>(p, Seq{});
}

template <class W> BRINDLE_SERPENT_INLINE void linear(W (&x)[4]) {
    x[0] = x[0].template rotl<13>();
    x[2] = x[2].template rotl<3>();
    x[1] = x[1] ^ x[0] ^ x[2];
    x[3] = x[3] ^ x[2] ^ x[0].template shl<3>();
    x[1] = x[1].template rotl<1>();
    x[3] = x[3].template rotl<7>();
    x[0] = x[0] ^ x[1] ^ x[3];
    x[2] = x[2] ^ x[3] ^ x[1].template shl<7>();
    x[0] = x[0].template rotl<5>();
    x[2] = x[2].template rotl<22>();
}

template <class W> BRINDLE_SERPENT_INLINE void inverse_linear(W (&x)[4]) {
    x[2] = x[2].template rotl<10>(); // right by 22
    x[0] = x[0].template rotl<27>(); // right by 5
    x[2] = x[2] ^ x[3] ^ x[1].template shl<7>();
    x[0] = x[0] ^ x[1] ^ x[3];
    x[3] = x[3].template rotl<25>(); // right by 7
    x[1] = x[1].template rotl<31>(); // right by 1
    x[3] = x[3] ^ x[2] ^ x[0].template shl<3>();
    x[1] = x[1] ^ x[0] ^ x[2];
    x[2] = x[2].template rotl<29>(); // right by 3
    x[0] = x[0].template rotl<19>(); // right by 13
}

template <class W> BRINDLE_SERPENT_INLINE void add_key(W (&x)[4], const uint32_t (&k)[4]) {
    for (int i = 0; i < 4; ++i)
        x[i] = x[i] ^ W::splat(k[i]);
}

// Rounds R and R + 1 ... up to 31, the S-box of round r being r mod 8.
template <class W, int R> BRINDLE_SERPENT_INLINE void encrypt_rounds(W (&x)[4], const uint32_t (&k)[33][4]) {
    add_key(x, k[R]);
    sbox<kForward, R % 8>(x);
    if constexpr (R < 31) {
        linear(x);
        encrypt_rounds<W, R + 1>(x, k);
    } else {
        add_key(x, k[32]);
    }
}

template <class W, int R> BRINDLE_SERPENT_INLINE void decrypt_rounds(W (&x)[4], const uint32_t (&k)[33][4]) {
    if constexpr (R == 31)
        add_key(x, k[32]);
    else
        inverse_linear(x);
    sbox<kInverse, R % 8>(x);
    add_key(x, k[R]);
    if constexpr (R > 0)
        decrypt_rounds<W, R - 1>(x, k);
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

template <bool Decrypt> void one_block(const uint32_t (&k)[33][4], const uint8_t *in, uint8_t *out) {
    Plain x[4];
    for (int i = 0; i < 4; ++i)
        x[i].v = load32(in + 4 * i);
    if constexpr (Decrypt)
        decrypt_rounds<Plain, 31>(x, k);
    else
        encrypt_rounds<Plain, 0>(x, k);
    for (int i = 0; i < 4; ++i)
        store32(out + 4 * i, x[i].v);
}

#ifdef BRINDLE_SERPENT_SSE2
// Four blocks: lane b of word i is word i of block b (a 4 x 4 transpose of
// the loaded blocks, whose words are little-endian on every x86).
inline void transpose(__m128i &a, __m128i &b, __m128i &c, __m128i &d) {
    const __m128i t0 = _mm_unpacklo_epi32(a, b);
    const __m128i t1 = _mm_unpacklo_epi32(c, d);
    const __m128i t2 = _mm_unpackhi_epi32(a, b);
    const __m128i t3 = _mm_unpackhi_epi32(c, d);
    a = _mm_unpacklo_epi64(t0, t1);
    b = _mm_unpackhi_epi64(t0, t1);
    c = _mm_unpacklo_epi64(t2, t3);
    d = _mm_unpackhi_epi64(t2, t3);
}

template <bool Decrypt> void four_blocks(const uint32_t (&k)[33][4], const uint8_t *in, uint8_t *out) {
    Lanes x[4];
    for (int i = 0; i < 4; ++i)
        x[i].v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(in + 16 * i));
    transpose(x[0].v, x[1].v, x[2].v, x[3].v);
    if constexpr (Decrypt)
        decrypt_rounds<Lanes, 31>(x, k);
    else
        encrypt_rounds<Lanes, 0>(x, k);
    transpose(x[0].v, x[1].v, x[2].v, x[3].v);
    for (int i = 0; i < 4; ++i)
        _mm_storeu_si128(reinterpret_cast<__m128i *>(out + 16 * i), x[i].v);
}
#endif

template <bool Decrypt>
void run(const uint32_t (&k)[33][4], const uint8_t *in, uint8_t *out, std::size_t blocks) {
#ifdef BRINDLE_SERPENT_SSE2
    for (; blocks >= 4; blocks -= 4, in += 64, out += 64)
        four_blocks<Decrypt>(k, in, out);
#endif
    for (; blocks > 0; --blocks, in += 16, out += 16)
        one_block<Decrypt>(k, in, out);
}

// Round key i goes through S-box (3 - i) mod 8; the box must be a template
// argument, so the 33 keys are walked at compile time.
template <int I> void key_boxes(uint32_t (&w)[132], uint32_t (&k)[33][4]) {
    Plain x[4] = {{w[4 * I]}, {w[4 * I + 1]}, {w[4 * I + 2]}, {w[4 * I + 3]}};
    sbox<kForward, ((3 - I) % 8 + 8) % 8>(x);
    for (int j = 0; j < 4; ++j)
        k[I][j] = x[j].v;
    if constexpr (I < 32)
        key_boxes<I + 1>(w, k);
}

} // namespace

SerpentKey::SerpentKey(std::span<const uint8_t, 32> key) noexcept {
    // The prekeys: w[-8..-1] are the key words, then
    // w[i] = (w[i-8] ^ w[i-5] ^ w[i-3] ^ w[i-1] ^ phi ^ i) <<< 11.
    uint32_t w[140];
    for (int i = 0; i < 8; ++i)
        w[i] = load32(key.data() + 4 * i);
    for (int i = 8; i < 140; ++i) {
        const uint32_t t = w[i - 8] ^ w[i - 5] ^ w[i - 3] ^ w[i - 1] ^ 0x9E3779B9u ^ static_cast<uint32_t>(i - 8);
        w[i] = (t << 11) | (t >> 21);
    }
    uint32_t prekey[132];
    std::memcpy(prekey, w + 8, sizeof prekey);
    key_boxes<0>(prekey, round_key_);
    secure_wipe(w, sizeof w);
    secure_wipe(prekey, sizeof prekey);
}

SerpentKey::~SerpentKey() { secure_wipe(round_key_, sizeof round_key_); }

void SerpentKey::encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
    one_block<false>(round_key_, in.data(), out.data());
}

void SerpentKey::decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
    one_block<true>(round_key_, in.data(), out.data());
}

void SerpentKey::encrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept {
    run<false>(round_key_, in, out, blocks);
}

void SerpentKey::decrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept {
    run<true>(round_key_, in, out, blocks);
}

} // namespace brindle::crypto
