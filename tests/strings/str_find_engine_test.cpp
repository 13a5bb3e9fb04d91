// The substring searches against a byte-by-byte reference, on random texts
// of every length around the sixteen-byte blocks, over an alphabet with
// both cases, the letters' neighbours ("@", "[", "`", "{") and bytes above
// 127 (which must never fold).
#include "strings/str_find.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace brindle::strings;

namespace {

unsigned char lower(unsigned char c) { return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c; }

size_t reference(const std::string &t, const std::string &f, bool no_case) {
    if (f.empty())
        return (no_case && t.empty()) ? kNotFound : 0;
    for (size_t at = 0; at + f.size() <= t.size(); ++at) {
        bool eq = true;
        for (size_t k = 0; k < f.size() && eq; ++k) {
            const auto a = static_cast<unsigned char>(t[at + k]), b = static_cast<unsigned char>(f[k]);
            eq = no_case ? lower(a) == lower(b) : a == b;
        }
        if (eq)
            return at;
    }
    return kNotFound;
}

} // namespace

TEST(StrFindEngine, AgreesWithTheReference) {
    std::mt19937 rng(11);
    const std::string alphabet = std::string("aAbB@[`{") + "\xC1\xE1";
    for (int round = 0; round < 200000; ++round) {
        std::string t, f;
        const size_t tl = rng() % 70, fl = rng() % 5;
        for (size_t k = 0; k < tl; ++k)
            t += alphabet[rng() % alphabet.size()];
        for (size_t k = 0; k < fl; ++k)
            f += alphabet[rng() % alphabet.size()];
        ASSERT_EQ(StrFind(t, f), reference(t, f, false)) << t << " / " << f;
        ASSERT_EQ(StrFindNoCase(t, f), reference(t, f, true)) << t << " / " << f;
    }
}

TEST(StrFindEngine, FromAPosition) {
    // (Empty texts and finds, and bytes above 127, come up in the random rounds.)
    const std::string long_text = std::string(100, 'x') + "Needle" + std::string(100, 'x') + "needle";
    EXPECT_EQ(StrFindFrom(long_text, "needle", 0, true), 206u);
    EXPECT_EQ(StrFindFrom(long_text, "needle", 0, false), 100u);
    EXPECT_EQ(StrFindFrom(long_text, "needle", 101, false), 206u);
    EXPECT_EQ(StrFindFrom(long_text, "needle", 1000, false), kNotFound);
}
