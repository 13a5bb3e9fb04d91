// The extended wildcard matcher and its pattern checker: defined codes for
// any pattern and text, and patterns built from a text (each character
// escaped, or written as ~hh, or "?", behind a "*" or not) always match it
// and always pass the checker. Layout of an input: one byte of flags (bit 0:
// case-sensitive), one byte giving the pattern's length, the pattern, then
// the text.
#include "fuzz_target.h"
#include "strings/wildcard_ext.h"

#include <string>
#include <string_view>

using namespace brindle::strings;

namespace {

bool defined_result(int r) {
    return r == kExtMatch || r == kExtPatternEnded || r == kExtTextEnded || r == kExtSetFailed ||
           r == kExtLiteralFailed || r == kExtPatternError || r == kExtHexFailed;
}

void check_matches(std::string_view text, const std::string &pattern, bool exact) {
    FUZZ_CHECK(PatternCheck(pattern) == 0);
    FUZZ_CHECK(WildcardMatchExt(pattern, text, exact) == kExtMatch);
    FUZZ_CHECK(WildcardMatchExt("*" + pattern, text, exact) == kExtMatch);
}

} // namespace

BRINDLE_FUZZ_TARGET(wildcard_ext) {
    if (size < 2)
        return 0;
    const bool exact = (data[0] & 1) != 0;
    const size_t plen = data[1] < size - 2 ? data[1] : size - 2;
    const std::string_view pattern(reinterpret_cast<const char *>(data) + 2, plen);
    const std::string_view text(reinterpret_cast<const char *>(data) + 2 + plen, size - 2 - plen);

    FUZZ_CHECK(defined_result(WildcardMatchExt(pattern, text, exact)));
    FUZZ_CHECK(defined_result(WildcardMatchExt(text, pattern, exact)));
    const int fault = PatternCheck(pattern);
    FUZZ_CHECK(fault == 0 || fault == 2 || fault == 3 || fault == 4 || fault == 5 || fault == 7);

    static const char kHex[] = "0123456789ABCDEF";
    std::string escaped, coded, any, set;
    for (const char c : text) {
        const auto u = static_cast<unsigned char>(c);
        escaped += '\\';
        escaped += c;
        coded += '~';
        coded += kHex[u >> 4];
        coded += kHex[u & 15];
        any += '?';
        set += "[~";
        set += kHex[u >> 4];
        set += kHex[u & 15];
        set += ']';
    }
    check_matches(text, escaped, exact);
    check_matches(text, coded, exact);
    check_matches(text, any, exact);
    check_matches(text, set, exact);
    FUZZ_CHECK(WildcardMatchExt("*", text, exact) == kExtMatch);
    return 0;
}
