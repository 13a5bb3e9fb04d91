// The simple wildcard matcher against a direct transcription of its
// recursive definition (exponential, so only on short strings); the pinned
// cases are in the pattern export's table.
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

} // namespace

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
