// Substrings and positions, through the exported interface.
#include "strings/string_calls.h"

using namespace brindle::test;

namespace {
// A view without data stands for a null handle.
Text handle(std::string_view s) { return s.data() == nullptr ? Text() : Text(s); }
} // namespace

TEST(Positions, CharactersBlocksScrollsAndReversal) {
    expect_rows({
        {call(cOneCharFromLeft, "abcd", 1), "a"},      {call(cOneCharFromLeft, "abcd", 4), "d"},
        {call(cOneCharFromRight, "abcd", 1), "d"},     {call(cOneCharFromRight, "abcd", 4), "a"},
        {call(cBlockCharFromLeft, "abcd", 1), "abc"},  {call(cBlockCharFromLeft, "abcd", 3), "a"},
        {call(cBlockCharFromLeft, "abcd", 4), ""},     {call(cBlockCharFromRight, "abcd", 1), "bcd"},
        {call(cBlockCharFromRight, "abcd", 3), "d"},   {call(cBlockCharFromRight, "abcd", 4), ""},
        {call(cBlockCharFromLeft, "abcd", 0), ""},     {call(cBlockCharFromRight, "abcd", -2), ""},
        // Counted: a zero byte is a character like any other.
        {call(cOneCharFromLeft, B("a\0c", 3), 3), "c"}, {call(cOneCharFromRight, B("a\0c", 3), 2), {"\0", 1}},
        {call(cBlockCharFromRight, B("a\0\0d", 4), 1), {"\0\0d", 3}},
        {call(cScrollL, "abcd"), "bcda"}, {call(cScrollR, "abcd"), "dabc"}, {call(cScrollL, "ab"), "ba"},
        {call(cScrollL, ""), ""},         {call(cScrollR, ""), ""},
        // A single character scrolls to itself: its own handle comes back.
        {call(cScrollL, "x"), input_handle}, {call(cScrollR, "x"), input_handle},
        {call(cReverse, "abc"), "cba"},   {call(cReverse, "a"), "a"}, {call(cReverse, B("a\0b", 3)), {"b\0a", 3}},
    });
    for (int32_t n : {0, -1, 5, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(call(cOneCharFromLeft, "abcd", n).bytes, "") << n;
        EXPECT_EQ(call(cOneCharFromRight, "abcd", n).bytes, "") << n;
    }
}

TEST(Fields, DefaultSeparatorStartsAsBarAndIsReplaceable) {
    // The module starts with "|"; this is the first test to touch it.
    EXPECT_EQ(call(cGet, "a|b|c", 2).bytes, "b");
    EXPECT_EQ(call(cGet, "a|b|c", 3).bytes, "c");
    EXPECT_EQ(call(cGet, "a|b|c", 4).bytes, "");

    EXPECT_EQ(num(cSetDefaultSeparator, ""), 0);
    EXPECT_EQ(call(cGet, "a|b;c", 2).bytes, "b;c") << "an empty separator leaves it unchanged";
    EXPECT_EQ(num(cSetDefaultSeparator, ";,"), 2);
    EXPECT_EQ(call(cGet, "a|b;c", 2).bytes, "c");
    EXPECT_EQ(call(cGet, "a|b;c,d", 1).bytes, "a|b");
    EXPECT_EQ(num(cSetDefaultSeparator, "|"), 1);
    EXPECT_EQ(call(cGet, "a|b;c", 2).bytes, "b;c");
}

TEST(Fields, GetInAndGetInRNumberFieldsFromEitherEnd) {
    struct Row {
        bool from_right;
        std::string_view text, sep;
        int32_t n;
        std::string_view expected;
    };
    const Row rows[] = {
        {false, "a,b,c", ",", 1, "a"},   {false, "a,b,c", ",", 3, "c"}, {false, "a,b,c", ",", 4, ""},
        {false, "a,,c", ",", 2, ""},     {false, "a,,c", ",", 3, "c"},  {false, ",a", ",", 1, ""},
        {false, ",a", ",", 2, "a"},      {false, "a,", ",", 2, ""},     {false, "abc", ",", 1, "abc"},
        {false, "a;b", ";x", 2, "b"}, // only the first byte of the separator counts
        {false, "a,b", ",", 0, ""},      {false, "a,b", ",", -1, ""},   {false, "a,b", "", 1, ""},
        {false, "", ",", 1, ""},         {false, {"a\0b,c", 5}, ",", 1, {"a\0b", 3}},
        {false, {"a\0b", 3}, {"\0", 1}, 2, "b"},
        {true, "a,b,c", ",", 1, "c"},    {true, "a,b,c", ",", 3, "a"},  {true, "a,b,c", ",", 4, ""},
        {true, "a,,c", ",", 2, ""},      {true, "a,", ",", 1, ""},      {true, "a,", ",", 2, "a"},
        {true, ",a", ",", 2, ""},        {true, "abc", ",", 1, "abc"},  {true, "a,b", ",", 0, ""},
    };
    for (const Row &row : rows)
        EXPECT_EQ(call(row.from_right ? cGetInR : cGetIn, row.text, row.sep, row.n).bytes, row.expected)
            << row.text << " " << row.n << (row.from_right ? " right" : " left");
}

TEST(Fields, GetInPartSplitsAtTheFirstSeparatorAndGetInPartRAtTheLast) {
    struct Row {
        bool from_right;
        const char *text;
        int32_t flag;
        const char *expected;
        bool is_input;
    } rows[] = {
        {false, "key=value=x", -1, "key", false}, {false, "key=value=x", 0, "value=x", false},
        {false, "=value", -1, "", false},         {false, "key=", 0, "", false},
        {false, "plain", -1, "", false},          {false, "plain", 0, "plain", true},
        {false, "plain", 1, "plain", true},       {false, "key=value", 1, "value", false},
        // From the right the missing-separator case hands back the other half.
        {true, "a=b=file", -1, "file", false},    {true, "a=b=file", 0, "a=b", false},
        {true, "dir=", -1, "", false},            {true, "=file", 0, "", false},
        {true, "plain", -1, "plain", true},       {true, "plain", 0, "", false},
        {true, "plain", 1, "", false},            {true, "a=b", 1, "a", false},
    };
    for (const Row &r : rows) {
        const Returned got = call(r.from_right ? cGetInPartR : cGetInPart, r.text, "=", r.flag);
        EXPECT_EQ(got.bytes, r.expected) << r.text << " flag " << r.flag;
        EXPECT_EQ(got.is_input, r.is_input) << r.text << " flag " << r.flag;
    }
}

TEST(Counting, CountCountsTheFirstByteOfChar) {
    EXPECT_EQ(num(cCount, B("a.b.c\0.", 7), ".x"), 3);
    EXPECT_EQ(num(cCount, B("a.b.c\0.", 7), B("\0", 1)), 1);
}

TEST(Searching, InStr) {
    struct Row {
        int32_t start;
        std::string_view text, find; // no data: a null handle
        int16_t cs;
        int32_t expected;
    } rows[] = {
        // An empty find returns start whatever it is.
        {0, "Hello World", "", 0, 0},    {99, "Hello World", {}, 0, 99},   {-5, {}, "", 0, -5},
        // Past the end, then before the start.
        {12, "Hello World", "WORLD", 0, 0}, {0, "Hello World", "WORLD", 0, -1},
        {INT32_MIN, "Hello World", "WORLD", 0, -1}, {1, {}, "WORLD", 0, 0},
        // Case-sensitive only at -1.
        {1, "Hello World world", "world", 0, 7},  {1, "Hello World world", "world", 1, 7},
        {1, "Hello World world", "world", -1, 13}, {8, "Hello World world", "world", 0, 13},
        {8, "Hello World world", "World", -1, 0}, {7, "Hello World world", "World", -1, 7},
        // Zero-terminated: start 4 is past the length 3.
        {4, {"abc\0abc", 7}, "c", 0, 0}, {3, {"abc\0abc", 7}, "c", -1, 3}, {1, {"abc\0abc", 7}, {"c\0x", 3}, 0, 3},
        // Only ASCII letters fold: not bytes above 127, not "[" and "{".
        {1, "x\xC9y", "\xE9", 0, 0},     {1, "a{b", "[", 0, 0},           {1, "axyb", "XY", 0, 2},
    };
    for (const Row &r : rows) {
        Text t = handle(r.text), f = handle(r.find);
        EXPECT_EQ(cInStr(r.start, t, f, r.cs), r.expected) << r.start << " " << r.text << " / " << r.find << " " << r.cs;
    }
}

TEST(Extraction, ExtractAndExtractTag) {
    struct Row {
        const char *text, *open, *close;
        int16_t flag;
        const char *extract, *tag;
    };
    const Row rows[] = {
        {"<b>bold</b> rest", "<b>", "</b>", 0, "bold", "bold"}, {"<B>bold</b> rest", "<b>", "</B>", 0, "bold", "bold"},
        {"<B>bold</b> rest", "<b>", "</b>", -1, "", ""},       {"<b>bold</B> rest", "<b>", "</b>", 1, "bold", "bold"},
        {"<b>bold</B> rest", "<b>", "</b>", -1, "bold</B> rest", ""}, // no closer: the rest, but no tag
        {"<b></b>", "<b>", "</b>", 0, "", ""},  {"no tags", "<b>", "</b>", 0, "", ""}, {"a[b[c]d]", "[", "]", 0, "b[c", "b[c"},
        {"x==y==z", "==", "==", 0, "y", "y"},   {"", "<", ">", 0, "", ""},             {"<a>", "", ">", 0, "", ""},
        {"<a>", "<", "", 0, "", ""},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(call(cExtract, row.text, row.open, row.close, row.flag).bytes, row.extract) << row.text;
        EXPECT_EQ(call(cExtractTag, row.text, row.open, row.close, row.flag).bytes, row.tag) << row.text;
    }
    // Unclosed: to the counted end; but the search for the opener stops at a zero.
    EXPECT_EQ(call(cExtract, B("ab[cd\0ef", 8), "[", "]", 0).bytes, B("cd\0ef", 5));
    EXPECT_EQ(call(cExtract, B("ab\0[x]", 6), "[", "]", 0).bytes, "");
}

TEST(Extraction, IsolateWithTwoTags) {
    struct Row {
        const char *text, *first, *second;
        int16_t left, exact;
        const char *expected;
    };
    const Row rows[] = {
        {"head<x>mid</x>tail", "<x>", "</x>", -1, 0, "head"}, {"head<x>mid</x>tail", "<x>", "</x>", 0, 0, "tail"},
        {"head<X>mid</X>tail", "<x>", "</x>", 0, 0, "tail"},  {"head<X>mid</X>tail", "<x>", "</x>", 0, -1, ""},
        {"head<x>mid", "<x>", "</x>", -1, 0, ""},            {"</x>head<x>", "<x>", "</x>", -1, 0, ""},
        {"ab", "a", "b", 1, 0, ""}, {"", "a", "b", -1, 0, ""}, {"abc", "a", "", -1, 0, ""},
        // No first tag: the second one doubled. Header lines, a blank line,
        // then the body.
        {"Subject: x\r\nFrom: y\r\n\r\nbody", "", "\r\n", 0, 0, "body"},
        {"Subject: x\r\nFrom: y\r\n\r\nbody", "", "\r\n", -1, 0, "Subject: x\r\nFrom: y\r"},
        // The pair at the very start: the loop's first look moves P onto it.
        {"\r\n\r\nbody", "", "\r\n", 0, 0, "body"}, {"\r\n\r\nbody", "", "\r\n", -1, 0, "\r"},
        // A single line end exactly one tag length in: the first search
        // already stands at distance 2 from the start, so it counts as the
        // pair and the left part is the first byte.
        {"ab\r\nrest", "", "\r\n", 0, 0, "rest"},   {"ab\r\nrest", "", "\r\n", -1, 0, "a"},
        {"a\r\nb\r\nc", "", "\r\n", 0, 0, ""},     {"no line ends", "", "\r\n", 0, 0, ""},
    };
    for (const Row &row : rows)
        EXPECT_EQ(call(cExtractIsolate, row.text, row.first, row.second, row.left, row.exact).bytes, row.expected)
            << row.text << " left " << row.left;
}

TEST(NullHandles, BehaveAsEmptyStrings) {
    expect_rows({{call(cOneCharFromLeft, null_handle, 1), ""},  {call(cScrollL, null_handle), ""},
                 {call(cReverse, null_handle), ""},             {call(cGetIn, null_handle, ",", 1), ""},
                 {call(cGetInR, ",", null_handle, 1), ""},      {call(cExtract, null_handle, "a", "a", 0), ""},
                 {call(cGetInPart, "abc", null_handle, 0), ""}, {call(cGetInPartR, null_handle, "abc", -1), ""}});
    EXPECT_EQ(num(cSetDefaultSeparator, null_handle), 0);
    EXPECT_EQ(num(cCount, "a.b", null_handle), 0);
    EXPECT_EQ(num(cCount, null_handle, "."), 0);
    // A null reference (no handle at all) reads as empty too.
    EXPECT_EQ(str(cReverse(nullptr)), "");
    EXPECT_EQ(cCount(nullptr, nullptr), 0);
}

TEST(LargeInputs, FiftyMegabytesInLinearTime) {
    std::string big(50u << 20, 'x');
    big[big.size() / 2] = '|';
    big.back() = 'y';
    Bstr t(big), y("Y");
    const Returned rev = returned(cReverse(t.ref()));
    ASSERT_EQ(rev.bytes.size(), big.size());
    EXPECT_EQ(rev.bytes.front(), 'y');
    EXPECT_EQ(str(cGet(t.ref(), 3)), "");
    EXPECT_EQ(returned(cGet(t.ref(), 2)).bytes.size(), big.size() / 2 - 1);
    EXPECT_EQ(cInStr(1, t.val(), y.val(), 0), static_cast<int32_t>(big.size()));
}
