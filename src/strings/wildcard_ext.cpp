// The extended wildcard matcher.
//
// The matcher walks pattern and text together until a "*" (with the "*"
// and "?" after it) hands over to a star step: the character c that follows
// is looked for at each text position k from the current one on, and where
// it fits (or c opens a set or a hexadecimal code) the walk restarts from
// the pattern after the stars at k. The first restart that gives a match,
// "text ended" (12) or a pattern error (15) is the star step's result;
// when none does, the result is 12.
//
// Written as the recursion it describes, a star inside a star would rescan
// the text again and again (exponential in the number of stars). Two facts
// keep it linear per star:
//   - the result of "the star step from text position x" for a given star
//     is the result of its first deciding restart at some k >= x, so after
//     one scan from x that stopped at K every later query with x' in [x, K]
//     has the same answer, and
//   - the walk between two stars consumes a fixed number of characters, so
//     each star is queried at non-decreasing positions.
// Each star therefore remembers one scanned interval and its result, and
// each text position is scanned at most once per star. The nesting is kept
// on an explicit stack (one frame per star at most), never on the C stack.
#include "strings/wildcard_ext.h"

#include "common/ascii.h"
#include "common/hex_digits.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace brindle::strings {

namespace {

using brindle::common::ascii_lower;

// A "~hh" code at position j: its value 0..255, or -1 when j does not
// start one.
int hex_code_at(std::string_view p, size_t j) {
    if (j + 2 >= p.size() || p[j] != '~')
        return -1;
    const int hi = common::hex_digit_value(p[j + 1]), lo = common::hex_digit_value(p[j + 2]);
    return hi < 0 || lo < 0 ? -1 : hi * 16 + lo;
}

// One member of a set at position j (a character, "\c" or "~hh"): its value
// as a signed byte and the position after it. False for "\" at the end.
bool read_member(std::string_view p, size_t &j, int &value) {
    if (p[j] == '\\') {
        if (j + 1 >= p.size())
            return false;
        value = static_cast<signed char>(p[j + 1]);
        j += 2;
        return true;
    }
    const int code = hex_code_at(p, j);
    if (code >= 0) {
        value = static_cast<signed char>(static_cast<unsigned char>(code));
        j += 3;
        return true;
    }
    value = static_cast<signed char>(p[j]);
    j += 1;
    return true;
}

class Matcher {
  public:
    Matcher(std::string_view p, std::string_view t, bool cs) : p_(p), t_(t), cs_(cs) {}

    int run();

  private:
    // What a straight walk ends in: a final code, or a star step to run.
    struct Walk {
        int code;        // final result unless star
        bool star;       // a star step from text position i at pattern jc
        size_t jc, i;
    };

    Walk walk(size_t j, size_t i) const;
    int set_step(size_t &j, char tc) const;
    bool same(char a, char b) const {
        return a == b || (!cs_ && ascii_lower(static_cast<unsigned char>(a)) == ascii_lower(static_cast<unsigned char>(b)));
    }
    // The character a star looks for (the escaped one after "\"), and
    // whether a text character lets a restart be tried there.
    bool worth_trying(size_t jc, char tc) const;

    std::string_view p_, t_;
    bool cs_;
};

// Steps 1-8 from pattern position j and text position i, up to the end or
// the next star.
Matcher::Walk Matcher::walk(size_t j, size_t i) const {
    const size_t n = t_.size(), m = p_.size();
    while (j < m) {
        if (i == n) // the text has ended: only a lone trailing "*" matches
            return {(m - j == 1 && p_[j] == '*') ? kExtMatch : kExtTextEnded, false, 0, 0};
        const char pc = p_[j];
        if (pc == '*') {
            // The star step: skip the stars and question marks that follow.
            while (j < m && (p_[j] == '*' || p_[j] == '?')) {
                if (p_[j] == '?') {
                    if (i == n)
                        return {kExtTextEnded, false, 0, 0};
                    ++i;
                }
                ++j;
            }
            if (j == m)
                return {kExtMatch, false, 0, 0};
            if (p_[j] == '\\' && j + 1 == m)
                return {kExtPatternError, false, 0, 0};
            return {0, true, j, i};
        }
        if (pc == '?') {
            ++i;
            ++j;
            continue;
        }
        if (pc == '[') {
            const int r = set_step(j, t_[i]);
            if (r != 0)
                return {r, false, 0, 0};
            ++i;
            continue;
        }
        if (pc == '\\') {
            if (j + 1 == m)
                return {kExtPatternError, false, 0, 0};
            if (!same(p_[j + 1], t_[i]))
                return {kExtLiteralFailed, false, 0, 0};
            j += 2;
            ++i;
            continue;
        }
        const int code = hex_code_at(p_, j);
        if (code >= 0) {
            if (static_cast<unsigned char>(t_[i]) != code)
                return {kExtHexFailed, false, 0, 0};
            j += 3;
            ++i;
            continue;
        }
        if (!same(pc, t_[i]))
            return {kExtLiteralFailed, false, 0, 0};
        ++j;
        ++i;
    }
    return {i == n ? kExtMatch : kExtPatternEnded, false, 0, 0};
}

// A set at p_[j] == '[' against the text character tc; 0 when it accepts
// (j then past the "]"), else 13 or 15.
int Matcher::set_step(size_t &j, char tc) const {
    const size_t m = p_.size();
    ++j;
    bool negated = false;
    if (j < m && (p_[j] == '!' || p_[j] == '^')) {
        negated = true;
        ++j;
    }
    if (j >= m || p_[j] == ']')
        return kExtPatternError; // missing "]" or an empty set
    const int c = static_cast<signed char>(tc);
    bool matched = false;
    while (!matched) {
        if (j >= m)
            return kExtPatternError; // no closing "]"
        if (p_[j] == ']')
            break;
        int lo = 0;
        if (!read_member(p_, j, lo))
            return kExtPatternError;
        int hi = lo;
        if (j < m && p_[j] == '-') {
            ++j;
            if (j >= m || p_[j] == ']')
                return kExtPatternError; // a range with no end
            if (!read_member(p_, j, hi))
                return kExtPatternError;
            if (lo > hi)
                std::swap(lo, hi);
        }
        matched = c >= lo && c <= hi;
    }
    if (matched) {
        if (negated)
            return kExtSetFailed;
        // Skip the rest of the set, escapes and codes whole.
        while (j < m && p_[j] != ']') {
            int ignored = 0;
            if (!read_member(p_, j, ignored))
                return kExtPatternError;
        }
        if (j >= m)
            return kExtPatternError;
    } else if (!negated) {
        return kExtSetFailed;
    }
    ++j; // past "]"
    return 0;
}

bool Matcher::worth_trying(size_t jc, char tc) const {
    const char c = p_[jc] == '\\' ? p_[jc + 1] : p_[jc];
    return c == '[' || c == '~' || same(c, tc);
}

int Matcher::run() {
    Walk first = walk(0, 0);
    if (!first.star)
        return first.code;

    // Per star (keyed by the pattern position after it): the text interval
    // already scanned and the result found there.
    struct Memo {
        bool valid = false;
        size_t lo = 0, hi = 0;
        int result = 0;
    };
    std::vector<Memo> memo(p_.size() + 1);
    struct Frame {
        size_t jc, lo, k;
    };
    std::vector<Frame> stack;
    const size_t n = t_.size();

    // The answer for a star query, from memory when it lies in the scanned
    // interval; otherwise a new frame is pushed and -2 returned.
    auto start_star = [&](size_t jc, size_t i) -> int {
        const Memo &mm = memo[jc];
        if (mm.valid && i >= mm.lo && i <= mm.hi)
            return mm.result;
        stack.push_back({jc, i, i});
        return -2;
    };

    int result = start_star(first.jc, first.i);
    bool have_child = false;
    while (!stack.empty()) {
        Frame &f = stack.back();
        if (have_child) {
            have_child = false;
            if (result == kExtMatch || result == kExtTextEnded || result == kExtPatternError) {
                memo[f.jc] = {true, f.lo, f.k, result};
                stack.pop_back();
                have_child = true;
                continue;
            }
            ++f.k;
        }
        while (f.k < n && !worth_trying(f.jc, t_[f.k]))
            ++f.k;
        if (f.k >= n) {
            // The end of the text: a restart there could only report that
            // the text ended first.
            memo[f.jc] = {true, f.lo, n, kExtTextEnded};
            result = kExtTextEnded;
            stack.pop_back();
            have_child = true;
            continue;
        }
        const Walk w = walk(f.jc, f.k);
        if (!w.star) {
            result = w.code;
            have_child = true;
            continue;
        }
        const int r = start_star(w.jc, w.i);
        if (r != -2) {
            result = r;
            have_child = true;
        }
    }
    return result;
}

} // namespace

int WildcardMatchExt(std::string_view pattern, std::string_view text, bool case_sensitive) noexcept {
    try {
        return Matcher(pattern, text, case_sensitive).run();
    } catch (...) {
        return kExtPatternError; // no memory for the star table
    }
}

int PatternCheck(std::string_view p) noexcept {
    const size_t m = p.size();
    // One member at j inside a set: 0 and j moved past it, or a fault.
    auto member = [&](size_t &j) -> int {
        if (p[j] == '\\') {
            if (j + 1 >= m)
                return 2;
            j += 2;
            return 0;
        }
        if (p[j] == '~') {
            if (hex_code_at(p, j) < 0)
                return 7;
            j += 3;
            return 0;
        }
        ++j;
        return 0;
    };
    size_t j = 0;
    while (j < m) {
        const char c = p[j];
        if (c == '\\') {
            if (j + 1 >= m)
                return 2;
            j += 2;
        } else if (c == '~') {
            if (hex_code_at(p, j) < 0)
                return 7;
            j += 3;
        } else if (c == '[') {
            ++j;
            if (j < m && (p[j] == '!' || p[j] == '^'))
                ++j;
            if (j < m && p[j] == ']')
                return 5;
            for (;;) {
                if (j >= m)
                    return 4;
                if (p[j] == ']') {
                    ++j;
                    break;
                }
                if (const int r = member(j); r != 0)
                    return r;
                if (j < m && p[j] == '-') {
                    ++j;
                    if (j >= m || p[j] == ']')
                        return 3;
                    if (const int r = member(j); r != 0)
                        return r;
                }
            }
        } else {
            ++j;
        }
    }
    return 0;
}

} // namespace brindle::strings
