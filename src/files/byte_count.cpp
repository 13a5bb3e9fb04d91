// Sixteen bytes compared at once; each lane's 0/-1 result is subtracted
// from a byte counter, which is summed into 64-bit totals (psadbw) before
// it can overflow at 256.
#include "files/byte_count.h"

#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#include <emmintrin.h>
#define BRINDLE_COUNT_SSE2 1
#endif

namespace brindle::files {

uint64_t count_byte(const unsigned char *data, size_t size, unsigned char value) noexcept {
    uint64_t total = 0;
    size_t i = 0;
#ifdef BRINDLE_COUNT_SSE2
    const __m128i want = _mm_set1_epi8(static_cast<char>(value));
    const __m128i zero = _mm_setzero_si128();
    while (size - i >= 64) {
        // Each round adds at most 4 to a lane: 63 rounds stay below 256.
        size_t rounds = (size - i) / 64;
        if (rounds > 63)
            rounds = 63;
        __m128i acc = zero;
        for (size_t r = 0; r < rounds; ++r, i += 64) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i *>(data + i));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i *>(data + i + 16));
            const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i *>(data + i + 32));
            const __m128i d = _mm_loadu_si128(reinterpret_cast<const __m128i *>(data + i + 48));
            acc = _mm_sub_epi8(acc, _mm_cmpeq_epi8(a, want));
            acc = _mm_sub_epi8(acc, _mm_cmpeq_epi8(b, want));
            acc = _mm_sub_epi8(acc, _mm_cmpeq_epi8(c, want));
            acc = _mm_sub_epi8(acc, _mm_cmpeq_epi8(d, want));
        }
        const __m128i sums = _mm_sad_epu8(acc, zero);
        total += static_cast<uint64_t>(_mm_cvtsi128_si32(sums)) +
                 static_cast<uint64_t>(_mm_cvtsi128_si32(_mm_unpackhi_epi64(sums, sums)));
    }
#endif
    for (; i < size; ++i)
        total += data[i] == value;
    return total;
}

} // namespace brindle::files
