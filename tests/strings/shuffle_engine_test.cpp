// The shuffle: a permutation of the text's bytes, the same for the same seed,
// with zero bytes for whatever followed the first zero byte.
#include "strings/shuffle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace brindle::strings;

namespace {

std::string sorted(std::string s) {
    std::sort(s.begin(), s.end());
    return s;
}

} // namespace

TEST(ShuffleEngine, PermutesTheBytesAndRepeatsForASeed) {
    const std::string text = "the quick brown fox jumps over the lazy dog";
    const std::string a = shuffle_bytes(text, 1234);
    EXPECT_EQ(sorted(a), sorted(text));
    EXPECT_NE(a, text);
    EXPECT_EQ(shuffle_bytes(text, 1234), a);
    EXPECT_NE(shuffle_bytes(text, 1235), a);
    EXPECT_EQ(shuffle_bytes("x", 9), "x");
}

TEST(ShuffleEngine, BytesAfterAZeroBecomeZeros) {
    const std::string text("abc\0def", 7);
    const std::string got = shuffle_bytes(text, 42);
    EXPECT_EQ(sorted(got), sorted(std::string("abc\0\0\0\0", 7)));
}

TEST(ShuffleEngine, OnlyTheFirst32768PlacesAreDrawn) {
    std::string text(40000, 'a');
    for (size_t k = 0; k < text.size(); ++k)
        text[k] = static_cast<char>('a' + k % 26);
    const std::string got = shuffle_bytes(text, 77);
    EXPECT_EQ(got.substr(32768), text.substr(32768));
    EXPECT_EQ(sorted(got.substr(0, 32768)), sorted(text.substr(0, 32768)));
}
