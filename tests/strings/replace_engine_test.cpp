// The one-pass replacement and deletion workers against plain
// one-occurrence-at-a-time references, on random inputs over small
// alphabets (where occurrences overlap and join often).
#include "strings/replace.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

using namespace brindle::strings;

namespace {

size_t find_from(const std::string &s, const std::string &f, size_t from, bool cs) {
    if (cs)
        return s.find(f, from);
    for (size_t at = from; at + f.size() <= s.size(); ++at) {
        bool eq = true;
        for (size_t k = 0; k < f.size() && eq; ++k)
            eq = std::tolower(static_cast<unsigned char>(s[at + k])) == std::tolower(static_cast<unsigned char>(f[k]));
        if (eq)
            return at;
    }
    return std::string::npos;
}

// Search, remove old, insert new, resume after new.
std::string ref_replace(std::string s, const std::string &old_text, const std::string &new_text, bool cs) {
    size_t pos = 0;
    for (;;) {
        const size_t at = find_from(s, old_text, pos, cs);
        if (at == std::string::npos)
            return s;
        s.erase(at, old_text.size());
        s.insert(at, new_text);
        pos = at + new_text.size();
    }
}

// Remove the leftmost occurrence, from the beginning, until none is left.
std::string ref_delete(std::string s, const std::string &sub, bool cs) {
    for (;;) {
        const size_t at = find_from(s, sub, 0, cs);
        if (at == std::string::npos)
            return s;
        s.erase(at, sub.size());
    }
}

std::string random_text(std::mt19937 &rng, size_t max_len, const char *alphabet) {
    const size_t n = rng() % (max_len + 1), a = std::char_traits<char>::length(alphabet);
    std::string s;
    for (size_t k = 0; k < n; ++k)
        s += alphabet[rng() % a];
    return s;
}

} // namespace

TEST(ReplaceEngine, ReplaceAndDeleteAgreeWithOneAtATime) {
    std::mt19937 rng(99);
    for (int round = 0; round < 100000; ++round) {
        const std::string text = random_text(rng, 60, "abAB");
        std::string old_text = random_text(rng, 4, "abAB");
        if (old_text.empty())
            old_text = "ab";
        const std::string new_text = random_text(rng, 4, "abB");
        const bool cs = (round & 1) != 0;
        const auto got = replace_all(text, old_text, new_text, cs, 1u << 20);
        ASSERT_TRUE(got.has_value());
        ASSERT_EQ(*got, ref_replace(text, old_text, new_text, cs)) << text << " " << old_text << "->" << new_text;
        ASSERT_EQ(delete_all(text, old_text, cs), ref_delete(text, old_text, cs)) << text << " - " << old_text;
    }
}

TEST(ReplaceEngine, PairsEdgesAndLimits) {
    // (Pairs in order, deletion without "|" and empty pairs: the export's table.)
    EXPECT_EQ(*replace_pairs("abc", "|x", true, 1000), "abc");             // empty old text skipped
    EXPECT_EQ(*replace_pairs("a|b", "a|x|y", true, 1000), "x|y|b");        // new text: all after the first "|"
    EXPECT_FALSE(replace_pairs("aaaa", "a|aaa", true, 11).has_value());    // 12 bytes > 11
    EXPECT_EQ(replace_pairs("aaaa", "a|aaa", true, 12)->size(), 12u);
}

TEST(ReplaceEngine, LinearOnManyOccurrences) {
    // 4 MB of "ab": a quadratic replacement would take minutes.
    std::string text;
    for (int k = 0; k < (2 << 20); ++k)
        text += "ab";
    const auto got = replace_all(text, "a", "xy", false, size_t{1} << 30);
    ASSERT_TRUE(got.has_value());
    EXPECT_EQ(got->size(), text.size() * 3 / 2);
    EXPECT_EQ(got->substr(0, 6), "xybxyb");
    EXPECT_EQ(delete_all(text, "ab", true), "");
    EXPECT_EQ(delete_all(std::string(1 << 20, 'a') + std::string(1 << 20, 'b'), "ab", true), "");
}
