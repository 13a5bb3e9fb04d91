// The simple wildcard matcher against a direct transcription of its
// recursive definition (exponential, so only on short strings), plus the
// cases the file searches rely on.
#include "strings/wildcard.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

using brindle::strings::WildcardMatch;

namespace {

bool same(char a, char b, bool cs) {
    return cs ? a == b : std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

// The definition, step by step: a "*" scans for the character after it
// (taken literally, "?" matching anything) and recurses after both.
bool reference(const char *t, const char *p, bool cs) {
    if (*p == 0)
        return *t == 0;
    if (*p == '*') {
        const char q = p[1];
        if (q == 0)
            return true;
        for (const char *at = t; *at != 0; ++at)
            if ((q == '?' || same(*at, q, cs)) && reference(at + 1, p + 2, cs))
                return true;
        return false;
    }
    if (*t == 0)
        return false;
    return (*p == '?' || same(*p, *t, cs)) && reference(t + 1, p + 1, cs);
}

struct Row {
    const char *text, *pattern;
    bool match;
};

} // namespace

TEST(WildcardEngine, EdgeCases) {
    const Row rows[] = {
        {"", "", true},          {"", "*", true},        {"", "?", false},       {"a", "", false},
        {"abc", "a*", true},     {"a", "a*", true},      {"ba", "a*", false},    {"abc", "*c", true},
        {"abc", "*b", false},    {"a*", "**", true},     {"*", "**", true},      {"ab", "**", false},
        {"x*y", "**", false},    {"a*b", "a**b", true},  {"ab", "a**b", false},  {"abc", "a?c", true},
        {"ac", "a?c", false},    {"ab", "a?", true},     {"a", "a?", false},     {"a", "*?", true},
        {"", "*?", false},       {"abc", "*?", true},    {"abc", "???", true},   {"abcd", "???", false},
        {"file.txt", "*.txt", true}, {"file.txt.bak", "*.txt", false}, {"a.b.c", "*.*", true},
        {"abc", "a*?*", true},   {"ab", "*a*b", true},   {"aXbXc", "a*b*c", true}, {"aXbXd", "a*b*c", false},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(WildcardMatch(r.text, r.pattern, true), r.match) << r.text << " ~ " << r.pattern;
        EXPECT_EQ(reference(r.text, r.pattern, true), r.match) << "reference " << r.text << " ~ " << r.pattern;
    }
}

TEST(WildcardEngine, CaseRule) {
    EXPECT_FALSE(WildcardMatch("ABC", "abc", true));
    EXPECT_TRUE(WildcardMatch("ABC", "abc", false));
    EXPECT_TRUE(WildcardMatch("README.TXT", "*.txt", false));
    EXPECT_FALSE(WildcardMatch("README.TXT", "*.txt", true));
    // Only letters fold: "[" and "{" stay apart.
    EXPECT_FALSE(WildcardMatch("[", "{", false));
}

TEST(WildcardEngine, AgreesWithTheDefinitionOnRandomInput) {
    std::mt19937 rng(42);
    const char alphabet[] = "abAB*?";
    for (int round = 0; round < 200000; ++round) {
        std::string t, p;
        const int tl = static_cast<int>(rng() % 9), pl = static_cast<int>(rng() % 7);
        for (int k = 0; k < tl; ++k)
            t += alphabet[rng() % 5]; // the text may hold "*" but not "?"
        for (int k = 0; k < pl; ++k)
            p += alphabet[rng() % 6];
        const bool cs = (round & 1) != 0;
        ASSERT_EQ(WildcardMatch(t, p, cs), reference(t.c_str(), p.c_str(), cs)) << t << " ~ " << p << " cs=" << cs;
    }
}

TEST(WildcardEngine, ManyStarsStayFastAndShallow) {
    const std::string as(10000, 'a');
    EXPECT_FALSE(WildcardMatch(as, "*a*a*a*a*a*a*b", true));
    EXPECT_TRUE(WildcardMatch(as + "b", "*a*a*a*a*a*a*b", true));
    // A pattern of 200,000 stars and characters: no recursion to overflow.
    std::string many;
    for (int k = 0; k < 100000; ++k)
        many += "*a";
    EXPECT_TRUE(WildcardMatch(std::string(100000, 'a'), many, true));
    EXPECT_FALSE(WildcardMatch(std::string(99999, 'a'), many, true));
}
