// Setting a value into a field: start or end of field n, missing fields,
// any-byte separators and the byte 255.
#include "strings/set_in.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::strings;

TEST(SetInEngine, StartOrEndOfField) {
    EXPECT_EQ(set_in_field("a,b,c", ",", 1, "X", false), "Xa,b,c");
    EXPECT_EQ(set_in_field("a,b,c", ",", 2, "X", false), "a,Xb,c");
    EXPECT_EQ(set_in_field("a,b,c", ",", 2, "X", true), "a,bX,c");
    EXPECT_EQ(set_in_field("a,b,c", ",", 3, "X", true), "a,b,cX");
    EXPECT_EQ(set_in_field("a,,c", ",", 2, "X", true), "a,X,c");
}

TEST(SetInEngine, MissingFieldsAndOtherSeparators) {
    EXPECT_EQ(set_in_field("a,b", ",", 3, "X", false), "a,b");
    // Only the first separator byte decides whether the field exists...
    EXPECT_EQ(set_in_field("a;b", ",;", 2, "X", false), "a;b");
    // ...but every byte of the set ends a field in the walk.
    EXPECT_EQ(set_in_field("a;b,c", ",;", 2, "X", false), "a;Xb,c");
    // A 255 comes back as the separator, uncounted but ending a field.
    EXPECT_EQ(set_in_field("a\xFF" "b,c", ",", 2, "X", false), "a,Xb,c");
    EXPECT_EQ(set_in_field("a\xFF" "b", ",", 2, "X", false), "a\xFF" "b");
}
