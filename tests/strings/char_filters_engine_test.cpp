// Character filters: the two filters split a text between them, and the
// "every byte of the set" test against the working-copy definition.
#include "strings/char_filters.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace brindle::strings;

namespace {

std::string random_string(std::mt19937 &rng, std::string_view alphabet, size_t max_len) {
    std::string s(rng() % (max_len + 1), ' ');
    for (char &c : s)
        c = alphabet[rng() % alphabet.size()];
    return s;
}

// The definition: a copy of the set; each byte of text passes over the
// copy, counting every place equal to it and clearing it to zero.
bool ref_has_all(const std::string &text, std::string set) {
    if (text.empty() || set.empty() || set.size() > 128)
        return false;
    size_t count = 0;
    for (const char c : text)
        for (char &p : set)
            if (p == c) {
                ++count;
                p = 0;
            }
    return count == set.size();
}

} // namespace

TEST(CharFiltersEngine, KeepAndDropPartitionTheText) {
    std::mt19937 rng(3);
    const std::string_view alphabet("ab c\0\xFF", 6);
    for (int i = 0; i < 500; ++i) {
        const std::string text = random_string(rng, alphabet, 20);
        const std::string set = random_string(rng, alphabet, 3);
        const std::string kept = filter_chars(text, set, true);
        const std::string dropped = filter_chars(text, set, false);
        EXPECT_EQ(kept.size() + dropped.size(), text.size());
        for (const char c : kept)
            EXPECT_NE(set.find(c), std::string::npos);
        for (const char c : dropped)
            EXPECT_EQ(set.find(c), std::string::npos);
    }
    EXPECT_EQ(filter_chars("a-b-c", "-", false), "abc");
    EXPECT_EQ(without_blanks(std::string("a b\tc\0d\n", 8)), "abcd\n");
}

TEST(CharFiltersEngine, HasAllCharsFollowsTheWorkingCopy) {
    std::mt19937 rng(11);
    const std::string_view alphabet("abc\0", 4);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = random_string(rng, alphabet, 8);
        const std::string set = random_string(rng, alphabet, 5);
        EXPECT_EQ(has_all_chars(text, set), ref_has_all(text, set)) << text.size() << " " << set.size();
    }
    // Sets of up to 128 bytes only.
    std::string set;
    for (int v = 1; v <= 129; ++v)
        set.push_back(static_cast<char>(v));
    EXPECT_TRUE(has_all_chars(set, set.substr(0, 128)));
    EXPECT_FALSE(has_all_chars(set, set));
}

TEST(CharFiltersEngine, PrefixRemovalKeepsTheLength) {
    EXPECT_EQ(without_prefix_fixed("prefix-rest", "prefix-"), "rest");
    EXPECT_EQ(without_prefix_fixed("abcdef", "xy"), std::string("cdef\0\0", 6));
    EXPECT_EQ(without_prefix_fixed("ab", "abc"), std::string(2, '\0'));
}
