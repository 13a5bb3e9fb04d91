#include "crypto/rijndael.h"

#include "crypto/secure_wipe.h"

#include <cstring>

#if (defined(__x86_64__) || defined(__i386__)) && (defined(__GNUC__) || defined(__clang__))
#define BRINDLE_AES_NI 1
#include <immintrin.h>
#endif

namespace brindle::crypto {

namespace {

constexpr uint64_t kOnes = 0x0101010101010101ull;

constexpr uint64_t every_byte(uint8_t b) { return kOnes * b; }

// Multiplication by x in GF(2^8) (modulus x^8 + x^4 + x^3 + x + 1) in each
// of the eight bytes of a word.
inline uint64_t xtime8(uint64_t a) {
    return ((a & every_byte(0x7F)) << 1) ^ (((a >> 7) & kOnes) * 0x1B);
}

// Bytewise product in GF(2^8), by shift and add over b's bits with masks
// instead of branches.
inline uint64_t gf_mul8(uint64_t a, uint64_t b) {
    uint64_t r = 0;
    for (int i = 0; i < 8; ++i) {
        r ^= a & (((b >> i) & kOnes) * 0xFF);
        a = xtime8(a);
    }
    return r;
}

// x^254 in each byte: the inverse, with 0 going to 0.
inline uint64_t gf_inverse8(uint64_t x) {
    const uint64_t x2 = gf_mul8(x, x);
    const uint64_t x3 = gf_mul8(x2, x);
    const uint64_t x6 = gf_mul8(x3, x3);
    const uint64_t x12 = gf_mul8(x6, x6);
    const uint64_t x15 = gf_mul8(x12, x3);
    const uint64_t x30 = gf_mul8(x15, x15);
    const uint64_t x60 = gf_mul8(x30, x30);
    const uint64_t x120 = gf_mul8(x60, x60);
    const uint64_t x240 = gf_mul8(x120, x120);
    const uint64_t x252 = gf_mul8(x240, x12);
    return gf_mul8(x252, x2);
}

// Each byte rotated left by k (1..7) bits.
inline uint64_t rotl_bytes(uint64_t x, int k) {
    const uint64_t high = every_byte(static_cast<uint8_t>(0xFF << k));
    const uint64_t low = every_byte(static_cast<uint8_t>(0xFF >> (8 - k)));
    return ((x << k) & high) | ((x >> (8 - k)) & low);
}

inline uint64_t sub_bytes8(uint64_t x) {
    const uint64_t b = gf_inverse8(x);
    return b ^ rotl_bytes(b, 1) ^ rotl_bytes(b, 2) ^ rotl_bytes(b, 3) ^ rotl_bytes(b, 4) ^
           every_byte(0x63);
}

inline uint64_t inv_sub_bytes8(uint64_t s) {
    return gf_inverse8(rotl_bytes(s, 1) ^ rotl_bytes(s, 3) ^ rotl_bytes(s, 6) ^ every_byte(0x05));
}

void sub_bytes(uint8_t s[16], bool inverse) {
    uint64_t w[2];
    std::memcpy(w, s, 16); // bytewise work: the order of bytes in a word does not matter
    for (auto& v : w) v = inverse ? inv_sub_bytes8(v) : sub_bytes8(v);
    std::memcpy(s, w, 16);
    secure_wipe(w, sizeof w);
}

// Row r moves left by r columns; byte (r, c) is s[r + 4c].
void shift_rows(uint8_t s[16], bool inverse) {
    uint8_t t[16];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) {
            const int from = inverse ? (c + 4 - r) % 4 : (c + r) % 4;
            t[r + 4 * c] = s[r + 4 * from];
        }
    std::memcpy(s, t, 16);
    secure_wipe(t, sizeof t);
}

inline uint8_t xtime(uint8_t a) {
    return static_cast<uint8_t>((a << 1) ^ (0x1B & (0u - (a >> 7))));
}

void mix_columns(uint8_t s[16]) {
    for (int c = 0; c < 4; ++c) {
        uint8_t* a = s + 4 * c;
        const uint8_t all = static_cast<uint8_t>(a[0] ^ a[1] ^ a[2] ^ a[3]);
        const uint8_t a0 = a[0];
        // b_i = 2a_i + 3a_{i+1} + a_{i+2} + a_{i+3} = a_i + all + 2(a_i + a_{i+1})
        a[0] = static_cast<uint8_t>(a[0] ^ all ^ xtime(static_cast<uint8_t>(a[0] ^ a[1])));
        a[1] = static_cast<uint8_t>(a[1] ^ all ^ xtime(static_cast<uint8_t>(a[1] ^ a[2])));
        a[2] = static_cast<uint8_t>(a[2] ^ all ^ xtime(static_cast<uint8_t>(a[2] ^ a[3])));
        a[3] = static_cast<uint8_t>(a[3] ^ all ^ xtime(static_cast<uint8_t>(a[3] ^ a0)));
    }
}

// The inverse matrix is the forward one times {04}x^2 + {05}: first add
// 4(a_i + a_{i+2}) to a_i, then mix.
void inv_mix_columns(uint8_t s[16]) {
    for (int c = 0; c < 4; ++c) {
        uint8_t* a = s + 4 * c;
        const uint8_t u = xtime(xtime(static_cast<uint8_t>(a[0] ^ a[2])));
        const uint8_t v = xtime(xtime(static_cast<uint8_t>(a[1] ^ a[3])));
        a[0] ^= u;
        a[1] ^= v;
        a[2] ^= u;
        a[3] ^= v;
    }
    mix_columns(s);
}

inline void add_round_key(uint8_t s[16], const uint8_t k[16]) {
    for (int i = 0; i < 16; ++i) s[i] ^= k[i];
}

inline uint32_t sub_word(uint32_t w) {
    return static_cast<uint32_t>(sub_bytes8(w));
}

#ifdef BRINDLE_AES_NI

bool cpu_has_aes() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("aes") && __builtin_cpu_supports("sse2");
}

__attribute__((target("aes,sse2"))) void hw_inverse_keys(const uint8_t enc[15][16], uint8_t dec[15][16]) {
    // The equivalent inverse cipher: the round keys in reverse order, the
    // middle ones through InvMixColumns.
    std::memcpy(dec[0], enc[14], 16);
    for (int i = 1; i < 14; ++i) {
        const __m128i k = _mm_loadu_si128(reinterpret_cast<const __m128i*>(enc[14 - i]));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dec[i]), _mm_aesimc_si128(k));
    }
    std::memcpy(dec[14], enc[0], 16);
}

__attribute__((target("aes,sse2"))) void hw_encrypt(const uint8_t rk[15][16], const uint8_t* in, uint8_t* out) {
    auto key = [&](int i) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(rk[i])); };
    __m128i s = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), key(0));
    for (int i = 1; i < 14; ++i) s = _mm_aesenc_si128(s, key(i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_aesenclast_si128(s, key(14)));
}

__attribute__((target("aes,sse2"))) void hw_decrypt(const uint8_t rk[15][16], const uint8_t* in, uint8_t* out) {
    auto key = [&](int i) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(rk[i])); };
    __m128i s = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), key(0));
    for (int i = 1; i < 14; ++i) s = _mm_aesdec_si128(s, key(i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_aesdeclast_si128(s, key(14)));
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
    for (int i = 0; i < 8; ++i)
        w[i] = uint32_t(key[4 * i]) | uint32_t(key[4 * i + 1]) << 8 | uint32_t(key[4 * i + 2]) << 16 |
               uint32_t(key[4 * i + 3]) << 24;
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
    for (int i = 0; i < 60; ++i)
        for (int j = 0; j < 4; ++j) round_key_[i / 4][4 * (i % 4) + j] = static_cast<uint8_t>(w[i] >> (8 * j));
    secure_wipe(w, sizeof w);
    hardware_ = path == RijndaelPath::best && hardware_available();
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_inverse_keys(round_key_, inverse_key_);
        return;
    }
#endif
    std::memset(inverse_key_, 0, sizeof inverse_key_);
}

RijndaelKey::~RijndaelKey() {
    secure_wipe(round_key_, sizeof round_key_);
    secure_wipe(inverse_key_, sizeof inverse_key_);
}

void RijndaelKey::encrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_encrypt(round_key_, in.data(), out.data());
        return;
    }
#endif
    uint8_t s[16];
    std::memcpy(s, in.data(), 16);
    add_round_key(s, round_key_[0]);
    for (int round = 1; round < 14; ++round) {
        sub_bytes(s, false);
        shift_rows(s, false);
        mix_columns(s);
        add_round_key(s, round_key_[round]);
    }
    sub_bytes(s, false);
    shift_rows(s, false);
    add_round_key(s, round_key_[14]);
    std::memcpy(out.data(), s, 16);
    secure_wipe(s, sizeof s);
}

void RijndaelKey::decrypt(std::span<const uint8_t, 16> in, std::span<uint8_t, 16> out) const noexcept {
#ifdef BRINDLE_AES_NI
    if (hardware_) {
        hw_decrypt(inverse_key_, in.data(), out.data());
        return;
    }
#endif
    uint8_t s[16];
    std::memcpy(s, in.data(), 16);
    add_round_key(s, round_key_[14]);
    for (int round = 13; round > 0; --round) {
        shift_rows(s, true);
        sub_bytes(s, true);
        add_round_key(s, round_key_[round]);
        inv_mix_columns(s);
    }
    shift_rows(s, true);
    sub_bytes(s, true);
    add_round_key(s, round_key_[0]);
    std::memcpy(out.data(), s, 16);
    secure_wipe(s, sizeof s);
}

void RijndaelKey::encrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (std::size_t i = 0; i < blocks; ++i)
        encrypt(std::span<const uint8_t, 16>(in + i * 16, 16), std::span<uint8_t, 16>(out + i * 16, 16));
}

void RijndaelKey::decrypt_blocks(const uint8_t* in, uint8_t* out, std::size_t blocks) const noexcept {
    for (std::size_t i = 0; i < blocks; ++i)
        decrypt(std::span<const uint8_t, 16>(in + i * 16, 16), std::span<uint8_t, 16>(out + i * 16, 16));
}

} // namespace brindle::crypto
