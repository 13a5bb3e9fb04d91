// Pattern matching: the simple and the extended wildcard matchers, the
// similarity score of two words, the prefix test and the lookup of a word in
// a separator-delimited table. All strings come by value and are read
// zero-terminated.
#include "frame/frame.h"
#include "strings/ext_match_code.h"
#include "strings/match_table.h"
#include "strings/similarity.h"
#include "strings/wildcard.h"

#include <cstdint>

using namespace brindle::frame;
using namespace brindle::strings;

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
    return guarded<int32_t>(16, [&] {
        return ext_match_code(StrArg::by_val(Txt).text(), StrArg::by_val(Pattern).text(), true);
    });
}

// As cPatternExtMatch; case-sensitive when CaseSensitive is -1 (set members
// and hexadecimal codes always compare exactly).
BRINDLE_EXPORT(int32_t) cPatternExtMatchS(BSTR Txt, BSTR Pattern, int16_t CaseSensitive) {
    return guarded<int32_t>(16, [&] {
        return ext_match_code(StrArg::by_val(Txt).text(), StrArg::by_val(Pattern).text(), flag16(CaseSensitive));
    });
}

// similarity score of two words, ignoring case; 0 when either is empty.
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
        return vb_bool(text.starts_with(prefix));
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
        return table_index(word, table, seps, flag16(CaseSensitive));
    });
}
