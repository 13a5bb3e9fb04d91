#include "crypto/idea.h"

#include "crypto/secure_wipe.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace brindle::crypto {

namespace {

// a * b modulo 65537, where the word 0 stands for 65536 on both sides.
// With both nonzero, 2^16 = -1 makes hi * 2^16 + lo equal to lo - hi,
// plus 65537 when that is negative (and the product is never a multiple
// of the prime). With a = 0 the result is -b = 1 - b modulo 2^16, and
// likewise for b; the two cases are picked without a branch.
inline uint32_t mul(uint32_t a, uint32_t b) {
    const uint32_t p = a * b;
    const uint32_t lo = p & 0xFFFFu, hi = p >> 16;
    const uint32_t nonzero = lo - hi + (lo < hi ? 1u : 0u);
    const uint32_t zero = 1u - a - b;
    return (p != 0 ? nonzero : zero) & 0xFFFFu;
}

// The multiplicative inverse modulo 65537 (x^65535; 0, i.e. 65536 = -1,
// is its own inverse).
uint16_t mul_inverse(uint16_t a) {
    uint32_t result = 1, base = a;
    for (uint32_t e = 65535; e != 0; e >>= 1) {
        if (e & 1) result = mul(result, base);
        base = mul(base, base);
    }
    return static_cast<uint16_t>(result);
}

inline uint16_t neg(uint16_t a) { return static_cast<uint16_t>(0x10000u - a); }

// N blocks side by side: a round is a chain of three multiplications,
// so independent blocks fill the multiplier between them.
template <int N>
inline void crypt_n(const uint16_t* z, const uint8_t* in, uint8_t* out) {
    uint32_t x1[N], x2[N], x3[N], x4[N];
#pragma GCC unroll 4
    for (int j = 0; j < N; ++j) {
        const uint8_t* p = in + 8 * j;
        x1[j] = uint32_t(p[0]) << 8 | p[1];
        x2[j] = uint32_t(p[2]) << 8 | p[3];
        x3[j] = uint32_t(p[4]) << 8 | p[5];
        x4[j] = uint32_t(p[6]) << 8 | p[7];
    }
    for (int r = 0; r < 8; ++r, z += 6) {
#pragma GCC unroll 4
        for (int j = 0; j < N; ++j) {
            const uint32_t a = mul(x1[j], z[0]);
            const uint32_t b = (x2[j] + z[1]) & 0xFFFFu;
            const uint32_t c = (x3[j] + z[2]) & 0xFFFFu;
            const uint32_t d = mul(x4[j], z[3]);
            const uint32_t t0 = mul(a ^ c, z[4]);
            const uint32_t t1 = mul(((b ^ d) + t0) & 0xFFFFu, z[5]);
            const uint32_t t2 = (t0 + t1) & 0xFFFFu;
            x1[j] = a ^ t1;
            x4[j] = d ^ t2;
            // The two middle words change places after every round.
            x2[j] = c ^ t1;
            x3[j] = b ^ t2;
        }
    }
    // The output transform undoes the last exchange.
#pragma GCC unroll 4
    for (int j = 0; j < N; ++j) {
        const uint32_t y[4] = {mul(x1[j], z[0]), (x3[j] + z[1]) & 0xFFFFu, (x2[j] + z[2]) & 0xFFFFu,
                               mul(x4[j], z[3])};
        uint8_t* p = out + 8 * j;
        for (int i = 0; i < 4; ++i) {
            p[2 * i] = static_cast<uint8_t>(y[i] >> 8);
            p[2 * i + 1] = static_cast<uint8_t>(y[i]);
        }
    }
}

} // namespace

IdeaKey::IdeaKey(std::span<const uint8_t, 16> key) noexcept {
    // Subkeys are the key's eight words, then the key rotated left by 25
    // bits, and so on.
    uint16_t k[8];
    for (int i = 0; i < 8; ++i) k[i] = static_cast<uint16_t>(key[2 * i] << 8 | key[2 * i + 1]);
    for (int n = 0; n < 52; ++n) {
        if (n > 0 && n % 8 == 0) {
            uint16_t r[8];
            // Rotating 128 bits left by 25: word i takes bits from words
            // i + 1 and i + 2, shifted by 9.
            for (int i = 0; i < 8; ++i)
                r[i] = static_cast<uint16_t>(k[(i + 1) % 8] << 9 | k[(i + 2) % 8] >> 7);
            for (int i = 0; i < 8; ++i) k[i] = r[i];
            secure_wipe(r, sizeof r);
        }
        enc_[n] = k[n % 8];
    }
    secure_wipe(k, sizeof k);

    const uint16_t* z = enc_;
    dec_[0] = mul_inverse(z[48]);
    dec_[1] = neg(z[49]);
    dec_[2] = neg(z[50]);
    dec_[3] = mul_inverse(z[51]);
    for (int r = 1; r < 8; ++r) {
        const int e = 48 - 6 * r;
        dec_[6 * r - 2] = z[e + 4];
        dec_[6 * r - 1] = z[e + 5];
        dec_[6 * r] = mul_inverse(z[e]);
        dec_[6 * r + 1] = neg(z[e + 2]); // the middle pair, exchanged
        dec_[6 * r + 2] = neg(z[e + 1]);
        dec_[6 * r + 3] = mul_inverse(z[e + 3]);
    }
    dec_[46] = z[4];
    dec_[47] = z[5];
    dec_[48] = mul_inverse(z[0]);
    dec_[49] = neg(z[1]);
    dec_[50] = neg(z[2]);
    dec_[51] = mul_inverse(z[3]);
}

IdeaKey::~IdeaKey() {
    secure_wipe(enc_, sizeof enc_);
    secure_wipe(dec_, sizeof dec_);
}

void IdeaKey::encrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept {
    crypt_n<1>(enc_, in.data(), out.data());
}

void IdeaKey::decrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept {
    crypt_n<1>(dec_, in.data(), out.data());
}

namespace {

#ifdef __SSE2__

// Eight blocks at once in 16-bit lanes: vector j holds word j of the eight
// blocks. The multiplication modulo 65537 as in mul(), lane by lane: the
// low and high halves of the product, lo - hi plus one where hi > lo, and
// 1 - a - b where either factor is 0.
inline __m128i mul8(__m128i a, __m128i b) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i one = _mm_set1_epi16(1);
    const __m128i lo = _mm_mullo_epi16(a, b);
    const __m128i hi = _mm_mulhi_epu16(a, b);
    const __m128i no_borrow = _mm_cmpeq_epi16(_mm_subs_epu16(hi, lo), zero); // all ones where hi <= lo
    const __m128i r = _mm_add_epi16(_mm_add_epi16(_mm_sub_epi16(lo, hi), one), no_borrow);
    const __m128i z = _mm_sub_epi16(_mm_sub_epi16(one, a), b);
    const __m128i either_zero = _mm_or_si128(_mm_cmpeq_epi16(a, zero), _mm_cmpeq_epi16(b, zero));
    return _mm_xor_si128(r, _mm_and_si128(_mm_xor_si128(r, z), either_zero));
}

// Big-endian words to lanes and back.
inline __m128i swap_bytes16(__m128i v) { return _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8)); }

void crypt8(const __m128i* z, const uint8_t* in, uint8_t* out) {
    __m128i v[4];
    for (int i = 0; i < 4; ++i)
        v[i] = swap_bytes16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 16 * i)));
    // Blocks 2i and 2i + 1 in v[i] to word j of every block in x[j].
    const __m128i t0 = _mm_unpacklo_epi16(v[0], v[1]), t1 = _mm_unpackhi_epi16(v[0], v[1]);
    const __m128i t2 = _mm_unpacklo_epi16(v[2], v[3]), t3 = _mm_unpackhi_epi16(v[2], v[3]);
    const __m128i u0 = _mm_unpacklo_epi16(t0, t1), u1 = _mm_unpackhi_epi16(t0, t1);
    const __m128i u2 = _mm_unpacklo_epi16(t2, t3), u3 = _mm_unpackhi_epi16(t2, t3);
    __m128i x1 = _mm_unpacklo_epi64(u0, u2), x2 = _mm_unpackhi_epi64(u0, u2);
    __m128i x3 = _mm_unpacklo_epi64(u1, u3), x4 = _mm_unpackhi_epi64(u1, u3);
    for (int r = 0; r < 8; ++r, z += 6) {
        const __m128i a = mul8(x1, z[0]);
        const __m128i b = _mm_add_epi16(x2, z[1]);
        const __m128i c = _mm_add_epi16(x3, z[2]);
        const __m128i d = mul8(x4, z[3]);
        const __m128i t = mul8(_mm_xor_si128(a, c), z[4]);
        const __m128i s = mul8(_mm_add_epi16(_mm_xor_si128(b, d), t), z[5]);
        const __m128i st = _mm_add_epi16(t, s);
        x1 = _mm_xor_si128(a, s);
        x4 = _mm_xor_si128(d, st);
        x2 = _mm_xor_si128(c, s);
        x3 = _mm_xor_si128(b, st);
    }
    const __m128i y1 = mul8(x1, z[0]), y2 = _mm_add_epi16(x3, z[1]);
    const __m128i y3 = _mm_add_epi16(x2, z[2]), y4 = mul8(x4, z[3]);
    // And back: word j of every block to two blocks per vector.
    const __m128i w0 = _mm_unpacklo_epi64(y1, y2), w2 = _mm_unpackhi_epi64(y1, y2);
    const __m128i w1 = _mm_unpacklo_epi64(y3, y4), w3 = _mm_unpackhi_epi64(y3, y4);
    const __m128i a0 = _mm_unpacklo_epi16(w0, w1), b0 = _mm_unpackhi_epi16(w0, w1);
    const __m128i a1 = _mm_unpacklo_epi16(w2, w3), b1 = _mm_unpackhi_epi16(w2, w3);
    v[0] = _mm_unpacklo_epi16(a0, b0);
    v[1] = _mm_unpackhi_epi16(a0, b0);
    v[2] = _mm_unpacklo_epi16(a1, b1);
    v[3] = _mm_unpackhi_epi16(a1, b1);
    for (int i = 0; i < 4; ++i) _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 16 * i), swap_bytes16(v[i]));
}

#endif

void crypt_blocks(const uint16_t* z, const uint8_t* in, uint8_t* out, std::size_t blocks) {
#ifdef __SSE2__
    if (blocks >= 8) {
        __m128i zz[52]; // each subkey in all eight lanes
        for (int i = 0; i < 52; ++i) zz[i] = _mm_set1_epi16(static_cast<short>(z[i]));
        for (; blocks >= 8; blocks -= 8, in += 64, out += 64) crypt8(zz, in, out);
        secure_wipe(zz, sizeof zz);
    }
#endif
    for (; blocks >= 4; blocks -= 4, in += 32, out += 32) crypt_n<4>(z, in, out);
    for (; blocks > 0; --blocks, in += 8, out += 8) crypt_n<1>(z, in, out);
}

} // namespace

void IdeaKey::encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    crypt_blocks(enc_, in, out, blocks);
}

void IdeaKey::decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    crypt_blocks(dec_, in, out, blocks);
}

} // namespace brindle::crypto
