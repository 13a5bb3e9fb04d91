#include "crypto/idea.h"

#include "crypto/secure_wipe.h"

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

void crypt_blocks(const uint16_t* z, const uint8_t* in, uint8_t* out, std::size_t blocks) {
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
