// Pieces between and around tags; tags are searched before the first zero
// byte, pieces run to the counted end.
#include "strings/extract.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::strings;

TEST(ExtractEngine, BetweenTags) {
    EXPECT_EQ(extract_between("x<b>bold</b>y<b>2</b>", "<b>", "</b>", true, true), "bold");
    EXPECT_EQ(extract_between("x<B>bold</b>", "<b>", "</B>", false, true), "bold");
    EXPECT_EQ(extract_between("x<B>bold</b>", "<b>", "</b>", true, true), "");
    EXPECT_EQ(extract_between("x<b>open", "<b>", "</b>", true, true), "open");
    EXPECT_EQ(extract_between("x<b>open", "<b>", "</b>", true, false), "");
    const std::string zero("[a]\0[b]", 7);
    EXPECT_EQ(extract_between(zero, "]", "[", true, true), std::string("\0[b]", 4));
}

TEST(ExtractEngine, AroundTags) {
    EXPECT_EQ(isolate_by_tags("head<sep>mid<end>tail", "<sep>", "<end>", true, true), "head");
    EXPECT_EQ(isolate_by_tags("head<sep>mid<end>tail", "<sep>", "<end>", false, true), "tail");
    EXPECT_EQ(isolate_by_tags("head<end><sep>tail", "<sep>", "<end>", false, true), "");
    const std::string mail = "From: a\r\nTo: b\r\n\r\nbody";
    EXPECT_EQ(isolate_by_doubled_tag(mail, "\r\n", false, true), "body");
    EXPECT_EQ(isolate_by_doubled_tag(mail, "\r\n", true, true), "From: a\r\nTo: b\r");
    EXPECT_EQ(isolate_by_doubled_tag("a\r\nb", "\r\n", false, true), "");
}
