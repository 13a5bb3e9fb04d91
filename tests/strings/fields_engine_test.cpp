// Fields at any of a set of separator bytes: with one separator byte they
// are the fields counted from the left, and every byte of the set splits.
#include "strings/fields.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace brindle::strings;

TEST(FieldsEngine, AnyOfOneByteIsFieldFromLeft) {
    std::mt19937 rng(21);
    for (int i = 0; i < 2000; ++i) {
        std::string text(rng() % 12, ' ');
        for (char &c : text)
            c = "ab,"[rng() % 3];
        for (int32_t n = 0; n < 8; ++n)
            EXPECT_EQ(field_at_any(text, ",", n), field_from_left(text, ',', n)) << text << " " << n;
    }
}

TEST(FieldsEngine, EveryByteOfTheSetSplits) {
    EXPECT_EQ(field_at_any("a,b;c d", ",; ", 3), "c");
    EXPECT_EQ(field_at_any("a,b;c d", ",; ", 4), "d");
    EXPECT_EQ(field_at_any("a,b;c d", ",; ", 5), "");
    EXPECT_EQ(field_at_any("a,,b", ",;", 2), "");
}
