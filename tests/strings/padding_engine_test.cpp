// Padding, filling and alignment: lengths and the placement of the text.
#include "strings/padding.h"

#include <gtest/gtest.h>

#include <string>

namespace engine = brindle::strings;

namespace {

// The engines fill a buffer of the result's length; these give it as a string.
std::string pad_to_width(std::string_view text, char fill, size_t width, bool left) {
    std::string out(width, '#');
    engine::pad_to_width(text, fill, left, out);
    return out;
}
std::string repeat_to_length(std::string_view pattern, size_t n) {
    std::string out(n, '#');
    engine::repeat_to_length(pattern, out);
    return out;
}
std::string resize_and_fill(std::string_view text, size_t n, char fill) {
    std::string out(n, '#');
    engine::resize_and_fill(text, fill, out);
    return out;
}
std::string align_in_field(std::string_view text, int mode, size_t width) {
    std::string out(width, '#');
    engine::align_in_field(text, mode, out);
    return out;
}

} // namespace

TEST(PaddingEngine, PadAndResize) {
    EXPECT_EQ(pad_to_width("42", '0', 5, true), "00042");
    EXPECT_EQ(pad_to_width("42", '.', 5, false), "42...");
    EXPECT_EQ(pad_to_width("42", '.', 2, true), "42");
    EXPECT_EQ(resize_and_fill("abcdef", 3, '*'), "abc");
    EXPECT_EQ(resize_and_fill("ab", 5, '\0'), std::string("ab\0\0\0", 5));
}

TEST(PaddingEngine, RepeatCutsTheLastRepetition) {
    for (size_t n = 0; n < 40; ++n) {
        const std::string got = repeat_to_length("abc", n);
        ASSERT_EQ(got.size(), n);
        for (size_t k = 0; k < n; ++k)
            EXPECT_EQ(got[k], "abc"[k % 3]);
    }
}

TEST(PaddingEngine, AlignPlacesTheTextInTheField) {
    for (size_t width = 1; width < 12; ++width)
        for (const int mode : {-1, 0, 1}) {
            const std::string text = "abcd";
            const std::string got = align_in_field(text, mode, width);
            ASSERT_EQ(got.size(), width);
            if (width <= text.size()) {
                EXPECT_EQ(got, text.substr(0, width));
                continue;
            }
            const size_t at = got.find(text);
            ASSERT_NE(at, std::string::npos);
            const size_t after = width - text.size() - at;
            EXPECT_EQ(got.find_first_not_of(' '), at);
            if (mode < 0)
                EXPECT_EQ(after, 0u);
            else if (mode > 0)
                EXPECT_EQ(at, 0u);
            else
                EXPECT_TRUE(at == after || at == after + 1) << width; // the odd space on the left
        }
}
