// The extended matcher against a plain recursive transcription of its
// definition (one C-stack level per star, rescanning freely), on random
// short patterns; then the checker's fault codes and a many-star pattern
// that the recursion would never finish.
#include "strings/wildcard_ext.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

using namespace brindle::strings;

namespace {

int hexv(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const int l = std::tolower(static_cast<unsigned char>(c));
    return (l >= 'a' && l <= 'f') ? l - 'a' + 10 : -1;
}
bool is_hex_code(const char *p) { return p[0] == '~' && p[1] != 0 && hexv(p[1]) >= 0 && p[2] != 0 && hexv(p[2]) >= 0; }
bool eq(char a, char b, bool cs) {
    return cs ? a == b : std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

// Reads a set member; null when "\" ends the pattern.
const char *member(const char *p, int &v) {
    if (*p == '\\') {
        if (p[1] == 0)
            return nullptr;
        v = static_cast<signed char>(p[1]);
        return p + 2;
    }
    if (is_hex_code(p)) {
        v = static_cast<signed char>(hexv(p[1]) * 16 + hexv(p[2]));
        return p + 3;
    }
    v = static_cast<signed char>(*p);
    return p + 1;
}

int ref(const char *p, const char *t, bool cs) {
    while (*p != 0) {
        if (*t == 0)
            return (p[0] == '*' && p[1] == 0) ? -1 : 12;
        if (*p == '*') {
            while (*p == '*' || *p == '?') {
                if (*p == '?') {
                    if (*t == 0)
                        return 12;
                    ++t;
                }
                ++p;
            }
            if (*p == 0)
                return -1;
            char c = *p;
            if (c == '\\') {
                if (p[1] == 0)
                    return 15;
                c = p[1];
            }
            for (; *t != 0; ++t) {
                if (eq(c, *t, cs) || c == '[' || c == '~') {
                    const int r = ref(p, t, cs);
                    if (r == -1 || r == 12 || r == 15)
                        return r;
                }
            }
            return 12;
        }
        if (*p == '?') {
            ++p;
            ++t;
        } else if (*p == '[') {
            ++p;
            bool neg = false;
            if (*p == '!' || *p == '^') {
                neg = true;
                ++p;
            }
            if (*p == ']' || *p == 0)
                return 15;
            const int c = static_cast<signed char>(*t);
            bool hit = false;
            while (!hit) {
                if (*p == 0)
                    return 15;
                if (*p == ']')
                    break;
                int lo = 0, hi = 0;
                p = member(p, lo);
                if (p == nullptr)
                    return 15;
                hi = lo;
                if (*p == '-') {
                    ++p;
                    if (*p == ']' || *p == 0)
                        return 15;
                    p = member(p, hi);
                    if (p == nullptr)
                        return 15;
                    if (lo > hi)
                        std::swap(lo, hi);
                }
                hit = lo <= c && c <= hi;
            }
            if (hit && neg)
                return 13;
            if (!hit && !neg)
                return 13;
            while (*p != ']') {
                if (*p == 0)
                    return 15;
                int ignored = 0;
                p = member(p, ignored);
                if (p == nullptr)
                    return 15;
            }
            ++p;
            ++t;
        } else if (*p == '\\') {
            if (p[1] == 0)
                return 15;
            if (!eq(p[1], *t, cs))
                return 14;
            p += 2;
            ++t;
        } else if (is_hex_code(p)) {
            if (static_cast<unsigned char>(*t) != hexv(p[1]) * 16 + hexv(p[2]))
                return 17;
            p += 3;
            ++t;
        } else {
            if (!eq(*p, *t, cs))
                return 14;
            ++p;
            ++t;
        }
    }
    return *t == 0 ? -1 : 11;
}

} // namespace

TEST(WildcardExtEngine, AgreesWithTheRecursiveDefinition) {
    std::mt19937 rng(1234);
    const std::string pattern_bytes = "ab*?*[]!-\\~4A1aB";
    const std::string text_bytes = "abAB*[]-\\~";
    for (int round = 0; round < 300000; ++round) {
        std::string p, t;
        const int pl = static_cast<int>(rng() % 13), tl = static_cast<int>(rng() % 12);
        for (int k = 0; k < pl; ++k)
            p += pattern_bytes[rng() % pattern_bytes.size()];
        for (int k = 0; k < tl; ++k)
            t += text_bytes[rng() % text_bytes.size()];
        const bool cs = (round & 1) != 0;
        ASSERT_EQ(WildcardMatchExt(p, t, cs), ref(p.c_str(), t.c_str(), cs)) << "pattern " << p << " text " << t;
    }
}

TEST(WildcardExtEngine, CodesOfTheMatcher) {
    struct Row {
        const char *pattern, *text;
        int code;
    } rows[] = {
        {"a*", "abc", -1},      {"a*", "", 12},           {"*", "", -1},        {"**", "", 12},
        {"a?c", "abc", -1},     {"a?c", "abcd", 11},      {"a?c", "ab", 12},    {"a?c", "xbc", 14},
        {"[abc]x", "bx", -1},   {"[!abc]x", "bx", 13},    {"[^abc]x", "dx", -1}, {"[a-c]", "d", 13},
        {"[c-a]", "b", -1},     {"[\\]]", "]", -1},       {"[~41-~43]", "B", -1}, {"[]", "a", 15},
        {"[a-", "a", 15},       {"[a-]", "a", 15},        {"[ab", "a", 15},     {"[ab", "c", 15},
        {"\\*", "*", -1},       {"\\*", "a", 14},         {"a\\", "a", 12},     {"a\\", "ab", 15},    {"?~41", "xA", -1},
        {"?~41", "xa", 17},     {"~4", "~4", -1},         {"*\\", "ab", 15},    {"*[", "ab", 15},
        {"*b", "aab", -1},      {"*b*c", "abxbyc", -1},   {"*?", "", 12},       {"*b", "aaa", 12},
        {"[\x80-\xff]", "\xc0", -1}, {"[\x01-\x7f]", "\xc0", 13}, // signed: 128..255 sort below 0
    };
    for (const Row &r : rows)
        EXPECT_EQ(WildcardMatchExt(r.pattern, r.text, true), r.code) << r.pattern << " / " << r.text;
}

TEST(WildcardExtEngine, PatternCheckFaults) {
    struct Row {
        const char *pattern;
        int fault;
    } rows[] = {
        {"", 0},      {"abc*?", 0},  {"[a-z]\\*~4F", 0}, {"a\\", 2},   {"[a-\\", 2}, {"[\\", 2},
        {"[a-]", 3},  {"[a-", 3},    {"[abc", 4},        {"[", 4},     {"[!", 4},    {"[]", 5},
        {"[!]", 5},   {"~4", 7},     {"~zz", 7},         {"[~4]", 7},  {"[a]~", 7},  {"\\[]", 0},
    };
    for (const Row &r : rows)
        EXPECT_EQ(PatternCheck(r.pattern), r.fault) << r.pattern;
}

TEST(WildcardExtEngine, ManyStarsStayLinear) {
    const std::string as(20000, 'a');
    EXPECT_EQ(WildcardMatchExt("*a*a*a*a*a*a*a*a*b", as, true), 12);
    EXPECT_EQ(WildcardMatchExt("*a*a*a*a*a*a*a*a*b", as + "b", true), -1);
    std::string many;
    for (int k = 0; k < 50000; ++k)
        many += "*a";
    EXPECT_EQ(WildcardMatchExt(many, std::string(50000, 'a'), true), -1);
    EXPECT_EQ(WildcardMatchExt(many + "b", std::string(60000, 'a'), true), 12);
}
