#include "crypto/idea.h"

#include "crypto/secure_wipe.h"

namespace brindle::crypto {

namespace {

// a * b modulo 65537, where the word 0 stands for 65536 on both sides.
inline uint16_t mul(uint16_t a, uint16_t b) {
    const uint64_t x = a != 0 ? a : 0x10000u;
    const uint64_t y = b != 0 ? b : 0x10000u;
    return static_cast<uint16_t>(x * y % 0x10001u); // 65536 becomes 0
}

// The multiplicative inverse modulo 65537 (x^65535; 0, i.e. 65536 = -1,
// is its own inverse).
uint16_t mul_inverse(uint16_t a) {
    uint16_t result = 1, base = a;
    for (uint32_t e = 65535; e != 0; e >>= 1) {
        if (e & 1) result = mul(result, base);
        base = mul(base, base);
    }
    return result;
}

inline uint16_t neg(uint16_t a) { return static_cast<uint16_t>(0x10000u - a); }

void crypt(const uint16_t* z, const uint8_t* in, uint8_t* out) {
    uint16_t x1 = static_cast<uint16_t>(in[0] << 8 | in[1]);
    uint16_t x2 = static_cast<uint16_t>(in[2] << 8 | in[3]);
    uint16_t x3 = static_cast<uint16_t>(in[4] << 8 | in[5]);
    uint16_t x4 = static_cast<uint16_t>(in[6] << 8 | in[7]);
    for (int r = 0; r < 8; ++r, z += 6) {
        x1 = mul(x1, z[0]);
        x2 = static_cast<uint16_t>(x2 + z[1]);
        x3 = static_cast<uint16_t>(x3 + z[2]);
        x4 = mul(x4, z[3]);
        const uint16_t t0 = mul(static_cast<uint16_t>(x1 ^ x3), z[4]);
        const uint16_t t1 = mul(static_cast<uint16_t>((x2 ^ x4) + t0), z[5]);
        const uint16_t t2 = static_cast<uint16_t>(t0 + t1);
        x1 ^= t1;
        x4 ^= t2;
        // The two middle words change places after every round.
        const uint16_t old2 = x2;
        x2 = static_cast<uint16_t>(x3 ^ t1);
        x3 = static_cast<uint16_t>(old2 ^ t2);
    }
    // The output transform undoes the last exchange.
    const uint16_t y[4] = {mul(x1, z[0]), static_cast<uint16_t>(x3 + z[1]),
                           static_cast<uint16_t>(x2 + z[2]), mul(x4, z[3])};
    for (int i = 0; i < 4; ++i) {
        out[2 * i] = static_cast<uint8_t>(y[i] >> 8);
        out[2 * i + 1] = static_cast<uint8_t>(y[i]);
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
    crypt(enc_, in.data(), out.data());
}

void IdeaKey::decrypt(std::span<const uint8_t, 8> in, std::span<uint8_t, 8> out) const noexcept {
    crypt(dec_, in.data(), out.data());
}

void IdeaKey::encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (std::size_t i = 0; i < blocks; ++i)
        encrypt(std::span<const uint8_t, 8>(in + i * 8, 8), std::span<uint8_t, 8>(out + i * 8, 8));
}

void IdeaKey::decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (std::size_t i = 0; i < blocks; ++i)
        decrypt(std::span<const uint8_t, 8>(in + i * 8, 8), std::span<uint8_t, 8>(out + i * 8, 8));
}

} // namespace brindle::crypto
