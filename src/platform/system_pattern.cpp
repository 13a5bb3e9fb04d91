// The system's file-name patterns, matched as Windows matches them, for the
// platforms whose own directory calls know no such thing.
//
// Windows turns a pattern into an expression before matching: "?" becomes
// a "DOS question mark" (one character, or nothing at a full stop or the end
// of the name), a full stop followed by "?" or "*" or ending the pattern
// becomes a "DOS dot" (a full stop, or nothing at the end of the name), and
// a "*" followed by a full stop becomes a "DOS star" (any run that does not
// swallow the name's last full stop). The expression is run here as a set of
// states over the pattern, so the cost is at most name length times pattern
// length, whatever the pattern.
#include "platform/directory.h"

#include "common/ascii.h"

#include <vector>

namespace brindle::platform {

namespace {

enum Op : char { kLiteral, kStar, kDosStar, kDosQm, kDosDot };

struct Token {
    Op op;
    char c;
};

using common::ascii_upper;

std::vector<Token> compile(std::string_view pattern) {
    std::vector<Token> out;
    out.reserve(pattern.size());
    for (size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        const char next = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
        const bool last = i + 1 == pattern.size();
        if (c == '*')
            out.push_back({next == '.' ? kDosStar : kStar, 0});
        else if (c == '?')
            out.push_back({kDosQm, 0});
        else if (c == '.' && (next == '*' || next == '?' || last))
            out.push_back({kDosDot, 0});
        else
            out.push_back({kLiteral, ascii_upper(c)});
    }
    return out;
}

} // namespace

bool has_wildcard(std::string_view pattern) noexcept {
    return pattern.find_first_of("*?") != std::string_view::npos;
}

bool system_pattern_match(std::string_view name, std::string_view pattern) {
    if (pattern == "*" || pattern == "*.*")
        return true;
    const std::vector<Token> expr = compile(pattern);
    const size_t m = expr.size();
    const size_t last_dot = name.rfind('.');
    std::vector<char> cur(m + 1, 0), nxt(m + 1, 0);

    // Adds state s and every state reachable from it without consuming,
    // given the position `pos` in the name.
    auto close = [&](std::vector<char> &set, size_t pos) {
        const bool at_end = pos == name.size();
        const bool at_dot = !at_end && name[pos] == '.';
        for (size_t s = 0; s < m; ++s) {
            if (!set[s])
                continue;
            switch (expr[s].op) {
            case kStar:
            case kDosStar:
                set[s + 1] = 1;
                break;
            case kDosQm:
                if (at_end || at_dot)
                    set[s + 1] = 1;
                break;
            case kDosDot:
                if (at_end)
                    set[s + 1] = 1;
                break;
            case kLiteral:
                break;
            }
        }
    };

    cur[0] = 1;
    close(cur, 0);
    for (size_t pos = 0; pos < name.size(); ++pos) {
        std::fill(nxt.begin(), nxt.end(), 0);
        const char c = ascii_upper(name[pos]);
        bool any = false;
        for (size_t s = 0; s < m; ++s) {
            if (!cur[s])
                continue;
            switch (expr[s].op) {
            case kLiteral:
                if (expr[s].c == c)
                    nxt[s + 1] = any = 1;
                break;
            case kStar:
                nxt[s] = any = 1;
                break;
            case kDosStar:
                // Never eats the last full stop of the name.
                if (pos != last_dot)
                    nxt[s] = any = 1;
                break;
            case kDosQm:
                if (c != '.')
                    nxt[s + 1] = any = 1;
                break;
            case kDosDot:
                if (c == '.')
                    nxt[s + 1] = any = 1;
                break;
            }
        }
        if (!any)
            return false;
        close(nxt, pos + 1);
        cur.swap(nxt);
    }
    return cur[m] != 0;
}

} // namespace brindle::platform
