// The simple wildcard matcher. The grammar reads "*" together with the
// character after it as one unit (a run, then one character matching that
// character), which makes it an ordinary glob over units: a star-unit is
// "any run" followed by a one-character unit. Such globs are matched
// greedily with one backtrack point, the most recent star: when the rest of
// the pattern fails after it, the star takes one more character and the rest
// is tried again. Earlier stars never need revisiting, because whatever text
// an earlier star would give up the later star can absorb.
#include "strings/wildcard.h"

#include "common/ascii.h"

#include <cstddef>

namespace brindle::strings {

namespace {

using brindle::common::ascii_lower;

// One pattern character against one text character; "?" matches anything.
inline bool unit_matches(char p, char t, bool case_sensitive) {
    if (p == '?' || p == t)
        return true;
    return !case_sensitive && ascii_lower(static_cast<unsigned char>(p)) == ascii_lower(static_cast<unsigned char>(t));
}

} // namespace

bool WildcardMatch(std::string_view text, std::string_view pattern, bool case_sensitive) noexcept {
    const size_t n = text.size(), m = pattern.size();
    size_t i = 0, j = 0;
    constexpr size_t kNone = static_cast<size_t>(-1);
    size_t star_q = kNone; // pattern position of the character after the last star
    size_t star_i = 0;     // text position where that character was last placed

    for (;;) {
        if (j < m && pattern[j] == '*') {
            if (j + 1 == m)
                return true; // a star at the very end takes any rest
            // A new star: its character q may sit at any position from i on.
            star_q = j + 1;
            star_i = i;
            // Place q at the first position that accepts it.
            while (star_i < n && !unit_matches(pattern[star_q], text[star_i], case_sensitive))
                ++star_i;
            if (star_i == n)
                return false; // q needs a character; none is left
            i = star_i + 1;
            j = star_q + 1;
            continue;
        }
        if (j == m) {
            if (i == n)
                return true;
        } else if (i < n && unit_matches(pattern[j], text[i], case_sensitive)) {
            ++i;
            ++j;
            continue;
        }
        // Mismatch: move the last star's character one place further on.
        if (star_q == kNone)
            return false;
        ++star_i;
        while (star_i < n && !unit_matches(pattern[star_q], text[star_i], case_sensitive))
            ++star_i;
        if (star_i == n)
            return false;
        i = star_i + 1;
        j = star_q + 1;
    }
}

} // namespace brindle::strings
