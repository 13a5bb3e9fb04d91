// Capitals at the start of words.
#include "strings/capitals.h"

#include <gtest/gtest.h>

using namespace brindle::strings;

TEST(CapitalsEngine, RaisesAfterSpacesOnly) {
    EXPECT_EQ(capitalise_words("hello world"), "Hello World");
    EXPECT_EQ(capitalise_words("o'neil mcDONALD"), "O'neil McDONALD"); // nothing lowered
    EXPECT_EQ(capitalise_words("  two  spaces"), "  Two  Spaces");
    EXPECT_EQ(capitalise_words("tab\tand-dash"), "Tab\tand-dash");    // only spaces start words
    EXPECT_EQ(capitalise_words("\xE9t\xE9 1st"), "\xE9t\xE9 1st");    // a-z only
}
