// The substring searches. Both look for candidates sixteen positions at a
// time: a position can start a match only if its byte equals the first byte
// of find and the byte length-1 places further equals the last byte (both
// folded for the case-insensitive search); only such positions are compared
// in full. On random text this filter leaves almost nothing to compare, so
// the search runs at memory speed, and it never does worse than the plain
// n x m comparison. Without SSE2 the same filter runs one byte at a time.
#include "strings/str_find.h"

#include "common/ascii.h"

#include <bit>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#include <emmintrin.h>
#define BRINDLE_FIND_SSE2 1
#endif

namespace brindle::strings {

namespace {

using brindle::common::ascii_lower;

// The middle of a candidate (the bytes between its first and last).
inline bool middle_equal(const unsigned char *t, const unsigned char *f, size_t m, bool no_case) {
    if (m <= 2)
        return true;
    if (!no_case)
        return std::memcmp(t + 1, f + 1, m - 2) == 0;
    for (size_t k = 1; k + 1 < m; ++k)
        if (ascii_lower(t[k]) != ascii_lower(f[k]))
            return false;
    return true;
}

#ifdef BRINDLE_FIND_SSE2
// A-Z to a-z in all sixteen lanes (bytes 128..255 compare below "A" as
// signed numbers and stay as they are).
inline __m128i fold16(__m128i x) {
    const __m128i upper = _mm_and_si128(_mm_cmpgt_epi8(x, _mm_set1_epi8('A' - 1)), _mm_cmplt_epi8(x, _mm_set1_epi8('Z' + 1)));
    return _mm_or_si128(x, _mm_and_si128(upper, _mm_set1_epi8(0x20)));
}
#endif

// The first offset of find (m >= 1 bytes) in text (n bytes), or kNotFound.
size_t search(const unsigned char *t, size_t n, const unsigned char *f, size_t m, bool no_case) {
    if (m > n)
        return kNotFound;
    const unsigned char first = no_case ? ascii_lower(f[0]) : f[0];
    const unsigned char last = no_case ? ascii_lower(f[m - 1]) : f[m - 1];
    const size_t candidates = n - m + 1; // positions 0 .. n-m
    size_t i = 0;
#ifdef BRINDLE_FIND_SSE2
    const __m128i vfirst = _mm_set1_epi8(static_cast<char>(first));
    const __m128i vlast = _mm_set1_epi8(static_cast<char>(last));
    // Blocks at i and i+m-1 must both lie inside the text.
    for (; i + 16 <= candidates; i += 16) {
        __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i *>(t + i));
        __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i *>(t + i + m - 1));
        if (no_case) {
            a = fold16(a);
            b = fold16(b);
        }
        unsigned mask = static_cast<unsigned>(
            _mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi8(a, vfirst), _mm_cmpeq_epi8(b, vlast))));
        while (mask != 0) {
            const unsigned bit = static_cast<unsigned>(std::countr_zero(mask));
            if (middle_equal(t + i + bit, f, m, no_case))
                return i + bit;
            mask &= mask - 1;
        }
    }
#endif
    for (; i < candidates; ++i) {
        const unsigned char a = no_case ? ascii_lower(t[i]) : t[i];
        const unsigned char b = no_case ? ascii_lower(t[i + m - 1]) : t[i + m - 1];
        if (a == first && b == last && middle_equal(t + i, f, m, no_case))
            return i;
    }
    return kNotFound;
}

const unsigned char *bytes(std::string_view s) { return reinterpret_cast<const unsigned char *>(s.data()); }

} // namespace

size_t StrFindNoCase(std::string_view text, std::string_view find) noexcept {
    if (text.empty())
        return kNotFound;
    if (find.empty())
        return 0;
    return search(bytes(text), text.size(), bytes(find), find.size(), true);
}

size_t StrFind(std::string_view text, std::string_view find) noexcept {
    if (find.empty())
        return 0;
    return search(bytes(text), text.size(), bytes(find), find.size(), false);
}

size_t StrFindFrom(std::string_view text, std::string_view find, size_t from, bool case_sensitive) noexcept {
    if (from > text.size())
        return kNotFound;
    const size_t at = StrFindCase(text.substr(from), find, case_sensitive);
    return at == kNotFound ? kNotFound : from + at;
}

} // namespace brindle::strings
