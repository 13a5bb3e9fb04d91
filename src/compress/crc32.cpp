// The CRC-32 engine, in two ways chosen once at run time:
//
//   - carry-less multiplication (PCLMULQDQ), when the processor has it:
//     the buffer is folded 64 bytes a step in four independent lanes, then
//     16 bytes a step, and reduced to 32 bits with Barrett's method (the
//     method and constants of Gopal et al., "Fast CRC Computation for
//     Generic Polynomials Using PCLMULQDQ Instruction", Intel 2009, for the
//     bit-reflected polynomial 0xEDB88320);
//   - table-driven "slicing by 8" otherwise, and for the last bytes: table 0
//     is the classic byte table built by the bitwise rule; table k gives the
//     effect of a byte followed by k zero bytes, so eight lookups retire
//     eight bytes.
//
// Both compute the bare register update; the plain and chained forms in the
// header add the inversions.
#include "compress/crc32.h"

#include <array>
#include <cstring>

#if (defined(__x86_64__) || defined(__i386__)) && (defined(__GNUC__) || defined(__clang__))
#include <cpuid.h>
#include <immintrin.h>
#define BRINDLE_CRC_CLMUL 1
#endif

namespace brindle::compress {

namespace {

using Tables = std::array<std::array<uint32_t, 256>, 8>;

constexpr Tables make_tables() {
    Tables t{};
    for (uint32_t n = 0; n < 256; ++n) {
        uint32_t c = n;
        for (int k = 0; k < 8; ++k)
            c = (c & 1u) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        t[0][n] = c;
    }
    for (uint32_t n = 0; n < 256; ++n)
        for (size_t k = 1; k < 8; ++k)
            t[k][n] = (t[k - 1][n] >> 8) ^ t[0][t[k - 1][n] & 0xFFu];
    return t;
}

constexpr Tables kTables = make_tables();
static_assert(kTables[0][1] == 0x77073096u, "the standard CRC-32 table");

uint32_t update_tables(uint32_t reg, const unsigned char *p, size_t size) noexcept {
    while (size >= 8) {
        uint32_t lo, hi;
        std::memcpy(&lo, p, 4);
        std::memcpy(&hi, p + 4, 4);
        // The byte order of the loads is little-endian on every target we build.
        lo ^= reg;
        reg = kTables[7][lo & 0xFFu] ^ kTables[6][(lo >> 8) & 0xFFu] ^ kTables[5][(lo >> 16) & 0xFFu] ^
              kTables[4][lo >> 24] ^ kTables[3][hi & 0xFFu] ^ kTables[2][(hi >> 8) & 0xFFu] ^
              kTables[1][(hi >> 16) & 0xFFu] ^ kTables[0][hi >> 24];
        p += 8;
        size -= 8;
    }
    while (size-- > 0)
        reg = (reg >> 8) ^ kTables[0][(reg ^ *p++) & 0xFFu];
    return reg;
}

#ifdef BRINDLE_CRC_CLMUL

#define BRINDLE_CLMUL_TARGET __attribute__((target("pclmul,sse4.1")))

BRINDLE_CLMUL_TARGET inline __m128i load(const unsigned char *p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(p));
}

// x multiplied by x^k (the two halves of k), folded onto the next 16 bytes.
BRINDLE_CLMUL_TARGET inline __m128i fold(__m128i x, __m128i k, __m128i next) {
    return _mm_xor_si128(_mm_xor_si128(_mm_clmulepi64_si128(x, k, 0x00), _mm_clmulepi64_si128(x, k, 0x11)), next);
}

// Folds a multiple of 16 bytes (at least 16) into the register.
BRINDLE_CLMUL_TARGET uint32_t update_clmul(uint32_t reg, const unsigned char *buf,
                                                               size_t len) noexcept {
    // x^(4*128+32) and x^(4*128-32) mod P, then x^(128+32), x^(128-32),
    // x^64; P' and mu for the Barrett step (all bit-reflected).
    const __m128i k1k2 = _mm_set_epi64x(0x01c6e41596LL, 0x0154442bd4LL);
    const __m128i k3k4 = _mm_set_epi64x(0x00ccaa009eLL, 0x01751997d0LL);
    const __m128i k5k0 = _mm_set_epi64x(0, 0x0163cd6124LL);
    const __m128i poly = _mm_set_epi64x(0x01f7011641LL, 0x01db710641LL);
    const __m128i mask32 = _mm_setr_epi32(~0, 0, ~0, 0);

    __m128i x1;
    if (len >= 64) {
        x1 = _mm_xor_si128(load(buf), _mm_cvtsi32_si128(static_cast<int>(reg)));
        __m128i x2 = load(buf + 16), x3 = load(buf + 32), x4 = load(buf + 48);
        buf += 64;
        len -= 64;
        while (len >= 64) {
            x1 = fold(x1, k1k2, load(buf));
            x2 = fold(x2, k1k2, load(buf + 16));
            x3 = fold(x3, k1k2, load(buf + 32));
            x4 = fold(x4, k1k2, load(buf + 48));
            buf += 64;
            len -= 64;
        }
        x1 = fold(x1, k3k4, x2);
        x1 = fold(x1, k3k4, x3);
        x1 = fold(x1, k3k4, x4);
    } else {
        x1 = _mm_xor_si128(load(buf), _mm_cvtsi32_si128(static_cast<int>(reg)));
        buf += 16;
        len -= 16;
    }
    while (len >= 16) {
        x1 = fold(x1, k3k4, load(buf));
        buf += 16;
        len -= 16;
    }

    // 128 bits to 64.
    __m128i x2 = _mm_clmulepi64_si128(x1, k3k4, 0x10);
    x1 = _mm_xor_si128(_mm_srli_si128(x1, 8), x2);
    x2 = _mm_srli_si128(x1, 4);
    x1 = _mm_and_si128(x1, mask32);
    x1 = _mm_xor_si128(_mm_clmulepi64_si128(x1, k5k0, 0x00), x2);

    // Barrett reduction to 32 bits.
    x2 = _mm_and_si128(x1, mask32);
    x2 = _mm_clmulepi64_si128(x2, poly, 0x10);
    x2 = _mm_and_si128(x2, mask32);
    x2 = _mm_clmulepi64_si128(x2, poly, 0x00);
    x1 = _mm_xor_si128(x1, x2);
    return static_cast<uint32_t>(_mm_extract_epi32(x1, 1));
}

bool has_clmul() noexcept {
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0)
        return false;
    return (ecx & bit_PCLMUL) != 0 && (ecx & bit_SSE4_1) != 0;
}

const bool kHasClmul = has_clmul();

#endif

} // namespace

uint32_t crc32_update(uint32_t reg, const void *data, size_t size) noexcept {
    const auto *p = static_cast<const unsigned char *>(data);
#ifdef BRINDLE_CRC_CLMUL
    if (kHasClmul && size >= 16) {
        const size_t body = size & ~size_t{15};
        reg = update_clmul(reg, p, body);
        p += body;
        size -= body;
    }
#endif
    return update_tables(reg, p, size);
}

// For the tests: the table-driven way alone, whatever the processor.
uint32_t crc32_update_portable(uint32_t reg, const void *data, size_t size) noexcept {
    return update_tables(reg, static_cast<const unsigned char *>(data), size);
}

} // namespace brindle::compress
