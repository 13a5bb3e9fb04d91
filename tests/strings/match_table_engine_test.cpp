// Looking a word up in a separated table.
#include "strings/match_table.h"

#include <gtest/gtest.h>

using namespace brindle::strings;

TEST(MatchTableEngine, FindsTrimmedEntries) {
    EXPECT_EQ(table_index("pear", "apple, pear ,plum", ",", true), 2);
    EXPECT_EQ(table_index("plum", "apple;pear,plum", ",;", true), 3);
    EXPECT_EQ(table_index("PEAR", "apple,pear", ",", false), 2);
    EXPECT_EQ(table_index("PEAR", "apple,pear", ",", true), -1);
    EXPECT_EQ(table_index(" pear", "apple, pear", ",", true), -1); // the word is not trimmed
    EXPECT_EQ(table_index("fig", "apple,pear", ",", true), -1);
}

TEST(MatchTableEngine, AnEmptyEntryEndsTheSearch) {
    EXPECT_EQ(table_index("plum", "apple,,plum", ",", true), -1);
    EXPECT_EQ(table_index("plum", "apple, ,plum", ",", true), 3); // blank, not empty
    EXPECT_EQ(table_index("", "apple,", ",", true), -1);
    EXPECT_EQ(table_index("a", "", ",", true), -1);
}
