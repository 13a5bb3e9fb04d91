// Pattern matching: the simple and the extended wildcard matchers, the
// similarity score of two words, the prefix test and the lookup of a word in
// a separator-delimited table. All strings come by value and are read
// zero-terminated.
#include "common/ascii.h"
#include "frame/frame.h"
#include "strings/similarity.h"
#include "strings/wildcard.h"
#include "strings/wildcard_ext.h"

#include <algorithm>
#include <array>
#include <cstdint>

using namespace brindle::frame;
using namespace brindle::strings;

namespace {

using brindle::common::ascii_lower;

using brindle::common::is_c_space;

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

bool equal_case(std::string_view x, std::string_view y, bool case_sensitive) {
    if (x.size() != y.size())
        return false;
    if (case_sensitive)
        return x == y;
    for (size_t k = 0; k < x.size(); ++k)
        if (ascii_lower(x[k]) != ascii_lower(y[k]))
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
    return guarded<int16_t>(0, [&] { return Similarity(StrArg::by_val(Txt1).text(), StrArg::by_val(Txt2).text()); });
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
            while (!entry.empty() && is_c_space(entry.front()))
                entry.remove_prefix(1);
            while (!entry.empty() && is_c_space(entry.back()))
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
