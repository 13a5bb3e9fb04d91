// The translation table equals applying the pairs one after another to the
// whole text.
#include "strings/translate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

using namespace brindle::strings;

namespace {

std::string random_string(std::mt19937 &rng, std::string_view alphabet, size_t min_len, size_t max_len) {
    std::string s(min_len + rng() % (max_len - min_len + 1), ' ');
    for (char &c : s)
        c = alphabet[rng() % alphabet.size()];
    return s;
}

} // namespace

TEST(TranslateEngine, TableEqualsPairsAppliedInOrder) {
    std::mt19937 rng(5);
    for (int i = 0; i < 2000; ++i) {
        const std::string from = random_string(rng, "abcd", 2, 5);
        const std::string to = random_string(rng, "abcd", 2, 5);
        const std::string text = random_string(rng, "abcde", 0, 12);
        std::string expected = text;
        for (size_t k = 0; k < std::min(from.size(), to.size()); ++k)
            std::replace(expected.begin(), expected.end(), from[k], to[k]);
        std::string got = text;
        translate_bytes(got.data(), got.size(), translation_table(from, to));
        EXPECT_EQ(got, expected) << from << " -> " << to << " on " << text;
    }
}

TEST(TranslateEngine, OnePairAndStopByte) {
    std::string text = "banana;nab";
    const ByteTable table = translation_table("n", "m");
    const char stop = ';';
    translate_bytes(text.data(), text.size(), table, &stop);
    EXPECT_EQ(text, "bamama;nab");
    // With one pair the other bytes of the longer string are not used.
    std::string two = "ab";
    translate_bytes(two.data(), two.size(), translation_table("ab", "x"));
    EXPECT_EQ(two, "xb");
}
