#include "strings/ext_match_code.h"

#include "strings/wildcard_ext.h"

namespace brindle::strings {

int32_t ext_match_code(std::string_view text, std::string_view pattern, bool case_sensitive) {
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

} // namespace brindle::strings
