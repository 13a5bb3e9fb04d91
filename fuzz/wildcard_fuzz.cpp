// The simple wildcard matcher against a direct, memoised transcription of
// its rules on short inputs (the matcher itself backtracks only to the last
// star), and on long inputs for crashes and hangs alone. Layout of an input:
// one byte of flags (bit 0: case-sensitive), one byte giving the pattern's
// length, the pattern, then the text.
#include "fuzz_target.h"
#include "strings/wildcard.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

char fold(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool unit(char p, char t, bool exact) { return p == '?' || p == t || (!exact && fold(p) == fold(t)); }

// The rules as written: "*" at the very end takes any rest; "*q" is a run of
// any characters and then one character matching q, q taken literally even
// when it is "*"; "?" is any one character; anything else is itself.
class Reference {
  public:
    Reference(std::string_view text, std::string_view pattern, bool exact)
        : t_(text), p_(pattern), exact_(exact), memo_((text.size() + 1) * (pattern.size() + 1), -1) {}

    bool match(size_t i = 0, size_t j = 0) {
        signed char &m = memo_[i * (p_.size() + 1) + j];
        if (m < 0)
            m = compute(i, j) ? 1 : 0;
        return m == 1;
    }

  private:
    bool compute(size_t i, size_t j) {
        if (j == p_.size())
            return i == t_.size();
        if (p_[j] == '*') {
            if (j + 1 == p_.size())
                return true;
            for (size_t k = i; k < t_.size(); ++k)
                if (unit(p_[j + 1], t_[k], exact_) && match(k + 1, j + 2))
                    return true;
            return false;
        }
        return i < t_.size() && unit(p_[j], t_[i], exact_) && match(i + 1, j + 1);
    }

    std::string_view t_, p_;
    bool exact_;
    std::vector<signed char> memo_;
};

} // namespace

BRINDLE_FUZZ_TARGET(wildcard) {
    if (size < 2)
        return 0;
    const bool exact = (data[0] & 1) != 0;
    const size_t plen = data[1] < size - 2 ? data[1] : size - 2;
    const std::string_view pattern(reinterpret_cast<const char *>(data) + 2, plen);
    const std::string_view text(reinterpret_cast<const char *>(data) + 2 + plen, size - 2 - plen);

    const bool got = brindle::strings::WildcardMatch(text, pattern, exact);
    if (text.size() <= 100)
        FUZZ_CHECK(got == Reference(text, pattern, exact).match());
    // Every text matches itself when it holds no wildcard, and "*" and a "?"
    // for each of its characters match it always.
    if (text.find_first_of("*?") == std::string_view::npos)
        FUZZ_CHECK(brindle::strings::WildcardMatch(text, text, exact));
    FUZZ_CHECK(brindle::strings::WildcardMatch(text, "*", exact));
    FUZZ_CHECK(brindle::strings::WildcardMatch(text, std::string(text.size(), '?'), exact));
    return 0;
}
