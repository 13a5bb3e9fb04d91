// Pattern matching: the simple and the extended wildcard matchers, the
// similarity score of two words, the prefix test and the lookup of a word in
// a separator-delimited table. All strings come by value and are read
// zero-terminated.
#include "frame/frame.h"
#include "strings/wildcard.h"
#include "strings/wildcard_ext.h"

#include <algorithm>
#include <array>
#include <cstdint>

using namespace brindle::frame;
using namespace brindle::strings;

namespace {

constexpr unsigned char fold(char c) {
    const auto u = static_cast<unsigned char>(c);
    return (u >= 'A' && u <= 'Z') ? static_cast<unsigned char>(u + 32) : u;
}

// The C locale's isspace.
constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

int32_t ext_match(BSTR Txt, BSTR Pattern, bool case_sensitive) {
    const std::string_view text = StrArg::by_val(Txt).text();
    const std::string_view pattern = StrArg::by_val(Pattern).text();
    // A pattern without wildcards is reported as such, not matched.
    if (pattern.find_first_of("*?[\\") == std::string_view::npos)
        return 1;
    const int r = WildcardMatchExt(pattern, text, case_sensitive);
    switch (r) {
    case kExtMatch:
    case kExtPatternEnded:
    case kExtTextEnded:
    case kExtSetFailed:
    case kExtLiteralFailed:
    case kExtHexFailed:
        return r;
    case kExtPatternError: {
        const int fault = PatternCheck(pattern);
        switch (fault) {
        case 0:
        case 2:
        case 3:
        case 4:
        case 5:
        case 7:
            return fault;
        default:
            return 6;
        }
    }
    default:
        return 16;
    }
}

// The length factor of the similarity score, by the length of the first
// word (3 for 30 characters and more).
constexpr std::array<int, 30> kLengthFactor = {20, 15, 13, 11, 10, 9, 8, 8, 7, 7, 7, 6, 6, 6, 6,
                                              6,  5,  5,  5,  5,  5, 4, 4, 4, 4, 4, 4, 4, 4, 4};

// The similarity score. Every division truncates and is part of the
// result. A search for a[i] that finds nothing still adds its 3 to the
// bonus (a run of length 0). Totals are kept in 64 bits, so very long
// words do not overflow; the result is the low 16 bits of the score.
int16_t similarity(std::string_view a, std::string_view b) {
    const int64_t la = static_cast<int64_t>(a.size()), lb = static_cast<int64_t>(b.size());
    if (la == 0 || lb == 0)
        return 0;
    int64_t s = 0, bonus = 0;
    for (int64_t i = 0; i < la; ++i) {
        int64_t best = 0, j = 0;
        const unsigned char ai = fold(a[static_cast<size_t>(i)]);
        while (j < lb) {
            while (j < lb && fold(b[static_cast<size_t>(j)]) != ai)
                ++j;
            int64_t run = 0;
            if (j < lb) {
                int64_t ia = i;
                while (ia < la && j < lb && fold(a[static_cast<size_t>(ia)]) == fold(b[static_cast<size_t>(j)])) {
                    if (j == ia)
                        ++bonus;
                    ++run;
                    ++ia;
                    ++j;
                }
            }
            bonus += 3 * run + 3;
            best = std::max(best, run);
        }
        s = (s + 2 * (bonus + best) + 2) / (la + 1);
    }
    const int64_t lmax = std::max(la, lb), lmin = std::min(la, lb);
    const int64_t t = la < 30 ? kLengthFactor[static_cast<size_t>(la)] : 3;
    const int64_t divisor = t * lmax / 10 + 2 * (lmax - lmin) / lmax;
    if (divisor == 0) // cannot happen (t x lmax >= 10); kept as a guard
        return 0;
    return static_cast<int16_t>(static_cast<uint16_t>((100 * s / divisor) & 0xFFFF));
}

bool equal_case(std::string_view x, std::string_view y, bool case_sensitive) {
    if (x.size() != y.size())
        return false;
    if (case_sensitive)
        return x == y;
    for (size_t k = 0; k < x.size(); ++k)
        if (fold(x[k]) != fold(y[k]))
            return false;
    return true;
}

} // namespace

// -1 when text matches the simple pattern ("*" and "?"), case-sensitive.
BRINDLE_EXPORT(int32_t) cPatternMatch(BSTR Txt, BSTR Pattern) {
    return guarded<int32_t>(0, [&] {
        return WildcardMatch(StrArg::by_val(Txt).text(), StrArg::by_val(Pattern).text(), true) ? -1 : 0;
    });
}

// As cPatternMatch; case-sensitive only when CaseSensitive is -1.
BRINDLE_EXPORT(int32_t) cPatternMatchS(BSTR Txt, BSTR Pattern, int16_t CaseSensitive) {
    return guarded<int32_t>(0, [&] {
        return WildcardMatch(StrArg::by_val(Txt).text(), StrArg::by_val(Pattern).text(), flag16(CaseSensitive)) ? -1
                                                                                                               : 0;
    });
}

// The extended matcher's result code: -1 match, 1 no wildcards in the
// pattern, 2..7 pattern faults, 11..17 why the text did not match.
BRINDLE_EXPORT(int32_t) cPatternExtMatch(BSTR Txt, BSTR Pattern) {
    return guarded<int32_t>(16, [&] { return ext_match(Txt, Pattern, true); });
}

// As cPatternExtMatch; case-sensitive when CaseSensitive is -1 (set members
// and hexadecimal codes always compare exactly).
BRINDLE_EXPORT(int32_t) cPatternExtMatchS(BSTR Txt, BSTR Pattern, int16_t CaseSensitive) {
    return guarded<int32_t>(16, [&] { return ext_match(Txt, Pattern, flag16(CaseSensitive)); });
}

// Similarity score of two words, ignoring case; 0 when either is empty.
BRINDLE_EXPORT(int16_t) cStrMatch(BSTR Txt1, BSTR Txt2) {
    return guarded<int16_t>(0, [&] { return similarity(StrArg::by_val(Txt1).text(), StrArg::by_val(Txt2).text()); });
}

// -1 when text begins with prefix (case-sensitive); 0 when either is empty.
BRINDLE_EXPORT(int16_t) cStrPrefixed(BSTR Txt, BSTR Prefix) {
    return guarded<int16_t>(0, [&]() -> int16_t {
        const std::string_view text = StrArg::by_val(Txt).text();
        const std::string_view prefix = StrArg::by_val(Prefix).text();
        if (text.empty() || prefix.empty())
            return 0;
        return vb_bool(text.size() >= prefix.size() && text.substr(0, prefix.size()) == prefix);
    });
}

// The 1-based index of the table entry equal to word, or -1. Entries are
// split at any byte of seps and trimmed of white space; the word is not.
// The first empty entry (two separators side by side, or the end of the
// table) ends the search.
BRINDLE_EXPORT(int32_t) cMatchTable(BSTR Word, BSTR Table, BSTR Separators, int16_t CaseSensitive) {
    return guarded<int32_t>(-1, [&]() -> int32_t {
        const std::string_view word = StrArg::by_val(Word).text();
        const std::string_view table = StrArg::by_val(Table).text();
        const std::string_view seps = StrArg::by_val(Separators).text();
        const bool cs = flag16(CaseSensitive);
        std::array<bool, 256> is_sep{};
        for (const char c : seps)
            is_sep[static_cast<unsigned char>(c)] = true;
        size_t pos = 0;
        for (int32_t k = 1; pos <= table.size(); ++k) {
            size_t end = pos;
            while (end < table.size() && !is_sep[static_cast<unsigned char>(table[end])])
                ++end;
            std::string_view entry = table.substr(pos, end - pos);
            if (entry.empty())
                return -1;
            while (!entry.empty() && is_space(entry.front()))
                entry.remove_prefix(1);
            while (!entry.empty() && is_space(entry.back()))
                entry.remove_suffix(1);
            if (equal_case(entry, word, cs))
                return k;
            if (k == INT32_MAX)
                break;
            pos = end + 1;
        }
        return -1;
    });
}
