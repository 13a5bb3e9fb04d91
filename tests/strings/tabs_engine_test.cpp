// Tabs: expanding and compressing undo each other where they can.
#include "strings/tabs.h"

#include "support/random_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace brindle::strings;

namespace {

using brindle::test::random_string;

} // namespace

TEST(TabsEngine, RoundTrips) {
    std::mt19937 rng(13);
    for (int i = 0; i < 2000; ++i) {
        const size_t n = 1 + rng() % 5;
        // Without tabs, compressing then expanding gives the text back.
        const std::string spaced = random_string(rng, "a  ", 20);
        EXPECT_EQ(*expand_tabs(compress_tabs(spaced, n), n, 1000), spaced) << n;
        // Without spaces, expanding then compressing gives it back.
        const std::string tabbed = random_string(rng, "a\t", 20);
        EXPECT_EQ(compress_tabs(*expand_tabs(tabbed, n, 1000), n), tabbed) << n;
    }
}

TEST(TabsEngine, FixedCountsAndTheLimit) {
    EXPECT_EQ(*expand_tabs("a\tbc\t", 3, 100), "a   bc   ");
    EXPECT_EQ(compress_tabs("a       b", 3), "a\t\t b");
    EXPECT_TRUE(expand_tabs("\t\t", 4, 8).has_value());
    EXPECT_FALSE(expand_tabs("\t\t", 4, 7).has_value());
}
