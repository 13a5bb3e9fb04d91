// Substrings and positions, through the exported interface.
#include "support/ole_helpers.h"

#include <string>

using namespace brindle::test;

namespace {

std::string S(std::string_view s) { return std::string(s); }

// Calls a by-reference (text) export and returns the new string's bytes.
template <class F> std::string call1(F f, std::string_view text) {
    Bstr t(text);
    return str(f(t.ref()));
}
template <class F> std::string call1n(F f, std::string_view text, int32_t n) {
    Bstr t(text);
    return str(f(t.ref(), n));
}
template <class F> std::string call2n(F f, std::string_view text, std::string_view sep, int32_t n) {
    Bstr t(text), s(sep);
    return str(f(t.ref(), s.ref(), n));
}

} // namespace

TEST(Positions, OneCharAndBlockCharFromEitherEnd) {
    struct Row {
        std::string (*call)(std::string_view, int32_t);
        std::string_view text;
        int32_t n;
        std::string_view expected;
    };
    const auto one_l = [](std::string_view t, int32_t n) { return call1n(cOneCharFromLeft, t, n); };
    const auto one_r = [](std::string_view t, int32_t n) { return call1n(cOneCharFromRight, t, n); };
    const auto block_l = [](std::string_view t, int32_t n) { return call1n(cBlockCharFromLeft, t, n); };
    const auto block_r = [](std::string_view t, int32_t n) { return call1n(cBlockCharFromRight, t, n); };
    const Row rows[] = {
        {one_l, "abcd", 1, "a"},       {one_l, "abcd", 4, "d"},     {one_r, "abcd", 1, "d"},
        {one_r, "abcd", 4, "a"},       {block_l, "abcd", 1, "abc"}, {block_l, "abcd", 3, "a"},
        {block_l, "abcd", 4, ""},      {block_r, "abcd", 1, "bcd"}, {block_r, "abcd", 3, "d"},
        {block_r, "abcd", 4, ""},      {block_l, "abcd", 0, ""},    {block_r, "abcd", -2, ""},
        // Counted: a zero byte is a character like any other.
        {one_l, {"a\0c", 3}, 3, "c"}, {one_r, {"a\0c", 3}, 2, {"\0", 1}},
        {block_r, {"a\0\0d", 4}, 1, {"\0\0d", 3}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(row.call(row.text, row.n), row.expected) << row.text << " " << row.n;
    for (int32_t n : {0, -1, 5, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(one_l("abcd", n), "") << n;
        EXPECT_EQ(one_r("abcd", n), "") << n;
    }
}

TEST(Positions, ScrollsRotateByOneAndHandBackASingleCharacter) {
    EXPECT_EQ(call1(cScrollL, "abcd"), "bcda");
    EXPECT_EQ(call1(cScrollR, "abcd"), "dabc");
    EXPECT_EQ(call1(cScrollL, "ab"), "ba");
    EXPECT_EQ(call1(cScrollL, ""), "");
    EXPECT_EQ(call1(cScrollR, ""), "");

    for (auto f : {cScrollL, cScrollR}) {
        Bstr one("x");
        const Returned r = returned(f(one.ref()), {&one});
        EXPECT_TRUE(r.is_input);
        EXPECT_EQ(r.bytes, "x");
    }
}

TEST(Positions, ReverseKeepsZeroBytes) {
    EXPECT_EQ(call1(cReverse, "abc"), "cba");
    EXPECT_EQ(call1(cReverse, "a"), "a");
    EXPECT_EQ(call1(cReverse, S(std::string_view("a\0b", 3))), S(std::string_view("b\0a", 3)));
    Bstr null_handle;
    const Returned r = returned(cReverse(null_handle.ref()));
    EXPECT_FALSE(r.is_null);
    EXPECT_EQ(r.bytes, "");
}

TEST(Fields, DefaultSeparatorStartsAsBarAndIsReplaceable) {
    // The module starts with "|"; this is the first test to touch it.
    EXPECT_EQ(call1n(cGet, "a|b|c", 2), "b");
    EXPECT_EQ(call1n(cGet, "a|b|c", 3), "c");
    EXPECT_EQ(call1n(cGet, "a|b|c", 4), "");

    Bstr empty(""), two(";,"), bar("|");
    EXPECT_EQ(cSetDefaultSeparator(empty.ref()), 0);
    EXPECT_EQ(call1n(cGet, "a|b;c", 2), "b;c") << "an empty separator leaves it unchanged";
    EXPECT_EQ(cSetDefaultSeparator(two.ref()), 2);
    EXPECT_EQ(call1n(cGet, "a|b;c", 2), "c");
    EXPECT_EQ(call1n(cGet, "a|b;c,d", 1), "a|b");
    EXPECT_EQ(cSetDefaultSeparator(bar.ref()), 1);
    EXPECT_EQ(call1n(cGet, "a|b;c", 2), "b;c");
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
        EXPECT_EQ(call2n(row.from_right ? cGetInR : cGetIn, row.text, row.sep, row.n), row.expected)
            << row.text << " " << row.n << (row.from_right ? " right" : " left");
}

struct SplitRow {
    const char *text;
    int32_t flag;
    const char *expected;
    bool is_input;
};

template <class F, size_t N> void check_splits(F split, const char *sep, const SplitRow (&rows)[N]) {
    for (const SplitRow &row : rows) {
        Bstr t(row.text), s(sep);
        const Returned r = returned(split(t.ref(), s.ref(), row.flag), {&t});
        EXPECT_EQ(r.bytes, row.expected) << row.text << " flag " << row.flag;
        EXPECT_EQ(r.is_input, row.is_input) << row.text << " flag " << row.flag;
        EXPECT_FALSE(r.is_null);
    }
}

TEST(Fields, GetInPartSplitsAtTheFirstSeparator) {
    const SplitRow rows[] = {
        {"key=value=x", -1, "key", false}, {"key=value=x", 0, "value=x", false},
        {"=value", -1, "", false},         {"key=", 0, "", false},
        {"plain", -1, "", false},          {"plain", 0, "plain", true},
        {"plain", 1, "plain", true},       {"key=value", 1, "value", false},
    };
    check_splits(cGetInPart, "=", rows);
}

TEST(Fields, GetInPartRSplitsAtTheLastSeparatorAndHandsBackTheOtherCase) {
    const SplitRow rows[] = {
        {"a\\b\\file", -1, "file", false}, {"a\\b\\file", 0, "a\\b", false},
        {"dir\\", -1, "", false},          {"\\file", 0, "", false},
        {"plain", -1, "plain", true},      {"plain", 0, "", false},
        {"plain", 1, "", false},           {"a\\b", 1, "a", false},
    };
    check_splits(cGetInPartR, "\\", rows);
    Bstr t("abc"), none;
    EXPECT_EQ(str(cGetInPart(t.ref(), none.ref(), 0)), "");
    EXPECT_EQ(str(cGetInPartR(none.ref(), t.ref(), -1)), "");
}

TEST(Counting, CountCountsTheFirstByteOfChar) {
    Bstr t(std::string_view("a.b.c\0.", 7)), dot(".x"), zero(std::string_view("\0", 1)), empty;
    EXPECT_EQ(cCount(t.ref(), dot.ref()), 3);
    EXPECT_EQ(cCount(t.ref(), zero.ref()), 1);
    EXPECT_EQ(cCount(t.ref(), empty.ref()), 0);
    EXPECT_EQ(cCount(empty.ref(), dot.ref()), 0);
}

TEST(Searching, InStrChecksArgumentsInOrder) {
    Bstr text("Hello World"), empty(""), world("WORLD"), none;
    // An empty find returns start whatever it is.
    EXPECT_EQ(cInStr(0, text.val(), empty.val(), 0), 0);
    EXPECT_EQ(cInStr(99, text.val(), none.val(), 0), 99);
    EXPECT_EQ(cInStr(-5, none.val(), empty.val(), 0), -5);
    // Past the end, then before the start.
    EXPECT_EQ(cInStr(12, text.val(), world.val(), 0), 0);
    EXPECT_EQ(cInStr(0, text.val(), world.val(), 0), -1);
    EXPECT_EQ(cInStr(INT32_MIN, text.val(), world.val(), 0), -1);
    EXPECT_EQ(cInStr(1, none.val(), world.val(), 0), 0);
}

TEST(Searching, InStrIsCaseSensitiveOnlyAtMinusOne) {
    Bstr text("Hello World world"), lower("world"), exact("World");
    EXPECT_EQ(cInStr(1, text.val(), lower.val(), 0), 7);
    EXPECT_EQ(cInStr(1, text.val(), lower.val(), 1), 7) << "1 is not true";
    EXPECT_EQ(cInStr(1, text.val(), lower.val(), -1), 13);
    EXPECT_EQ(cInStr(8, text.val(), lower.val(), 0), 13);
    EXPECT_EQ(cInStr(8, text.val(), exact.val(), -1), 0);
    EXPECT_EQ(cInStr(7, text.val(), exact.val(), -1), 7);
}

TEST(Searching, InStrReadsZeroTerminated) {
    Bstr text(std::string_view("abc\0abc", 7)), find("c");
    EXPECT_EQ(cInStr(4, text.val(), find.val(), 0), 0) << "start 4 is past the zero-terminated length 3";
    EXPECT_EQ(cInStr(3, text.val(), find.val(), -1), 3);
    Bstr find_after_zero(std::string_view("c\0x", 3));
    EXPECT_EQ(cInStr(1, text.val(), find_after_zero.val(), 0), 3);
}

TEST(Searching, CaseFoldingCoversAsciiLettersOnly) {
    Bstr text("x\xC9y"), lower("\xE9"), upper("XY");
    EXPECT_EQ(cInStr(1, text.val(), lower.val(), 0), 0) << "bytes above 127 compare exactly";
    Bstr brackets("a{b"), find("[");
    EXPECT_EQ(cInStr(1, brackets.val(), find.val(), 0), 0) << "'[' and '{' are not letters";
    Bstr xy("axyb");
    EXPECT_EQ(cInStr(1, xy.val(), upper.val(), 0), 2);
}

TEST(Extraction, ExtractAndExtractTag) {
    struct Row {
        const char *text, *open, *close;
        int16_t flag;
        const char *extract, *tag;
    };
    const Row rows[] = {
        {"<b>bold</b> rest", "<b>", "</b>", 0, "bold", "bold"},
        {"<B>bold</b> rest", "<b>", "</B>", 0, "bold", "bold"},
        {"<B>bold</b> rest", "<b>", "</b>", -1, "", ""},
        {"<b>bold</B> rest", "<b>", "</b>", -1, "bold</B> rest", ""},
        {"<b>bold</B> rest", "<b>", "</b>", 1, "bold", "bold"},
        {"<b></b>", "<b>", "</b>", 0, "", ""},
        {"no tags", "<b>", "</b>", 0, "", ""},
        {"a[b[c]d]", "[", "]", 0, "b[c", "b[c"},
        {"x==y==z", "==", "==", 0, "y", "y"},
        {"", "<", ">", 0, "", ""},
        {"<a>", "", ">", 0, "", ""},
        {"<a>", "<", "", 0, "", ""},
    };
    for (const Row &row : rows) {
        Bstr t(row.text), o(row.open), c(row.close);
        EXPECT_EQ(str(cExtract(t.val(), o.val(), c.val(), row.flag)), row.extract) << row.text;
        EXPECT_EQ(str(cExtractTag(t.val(), o.val(), c.val(), row.flag)), row.tag) << row.text;
    }
}

TEST(Extraction, UnclosedExtractRunsToTheCountedEnd) {
    Bstr t(std::string_view("ab[cd\0ef", 8)), o("["), c("]");
    EXPECT_EQ(str(cExtract(t.val(), o.val(), c.val(), 0)), S(std::string_view("cd\0ef", 5)));
    Bstr after_zero(std::string_view("ab\0[x]", 6));
    EXPECT_EQ(str(cExtract(after_zero.val(), o.val(), c.val(), 0)), "") << "the search stops at the zero";
}

TEST(Extraction, IsolateWithTwoTags) {
    struct Row {
        const char *text, *first, *second;
        int16_t left, exact;
        const char *expected;
    };
    const Row rows[] = {
        {"head<x>mid</x>tail", "<x>", "</x>", -1, 0, "head"},
        {"head<x>mid</x>tail", "<x>", "</x>", 0, 0, "tail"},
        {"head<X>mid</X>tail", "<x>", "</x>", 0, 0, "tail"},
        {"head<X>mid</X>tail", "<x>", "</x>", 0, -1, ""},
        {"head<x>mid", "<x>", "</x>", -1, 0, ""},
        {"</x>head<x>", "<x>", "</x>", -1, 0, ""},
        {"ab", "a", "b", 1, 0, ""},
        {"", "a", "b", -1, 0, ""},
        {"abc", "a", "", -1, 0, ""},
    };
    for (const Row &row : rows) {
        Bstr t(row.text), f(row.first), s(row.second);
        EXPECT_EQ(str(cExtractIsolate(t.val(), f.val(), s.val(), row.left, row.exact)), row.expected)
            << row.text << " left " << row.left;
    }
}

TEST(Extraction, IsolateFindsTheSecondTagDoubled) {
    struct Row {
        const char *text;
        int16_t left;
        const char *expected;
    };
    const Row rows[] = {
        // Header lines, a blank line, then the body.
        {"Subject: x\r\nFrom: y\r\n\r\nbody", 0, "body"},
        {"Subject: x\r\nFrom: y\r\n\r\nbody", -1, "Subject: x\r\nFrom: y\r"},
        // The pair at the very start: the loop's first look moves P onto it.
        {"\r\n\r\nbody", 0, "body"},
        {"\r\n\r\nbody", -1, "\r"},
        // A single line end exactly one tag length in: the first search
        // already stands at distance 2 from the start, so it counts as the
        // pair and the left part is the first byte.
        {"ab\r\nrest", 0, "rest"},
        {"ab\r\nrest", -1, "a"},
        {"a\r\nb\r\nc", 0, ""},
        {"no line ends", 0, ""},
    };
    for (const Row &row : rows) {
        Bstr t(row.text), none(""), crlf("\r\n");
        EXPECT_EQ(str(cExtractIsolate(t.val(), none.val(), crlf.val(), row.left, 0)), row.expected)
            << row.text << " left " << row.left;
    }
}

TEST(NullHandles, BehaveAsEmptyStrings) {
    Bstr null_text, sep(","), find("a");
    EXPECT_EQ(call1n(cOneCharFromLeft, "", 1), "");
    EXPECT_EQ(str(cOneCharFromLeft(null_text.ref(), 1)), "");
    EXPECT_EQ(str(cScrollL(null_text.ref())), "");
    EXPECT_EQ(str(cGetIn(null_text.ref(), sep.ref(), 1)), "");
    EXPECT_EQ(str(cGetInR(sep.ref(), null_text.ref(), 1)), "");
    EXPECT_EQ(cSetDefaultSeparator(null_text.ref()), 0);
    EXPECT_EQ(cInStr(1, null_text.val(), find.val(), 0), 0);
    EXPECT_EQ(str(cExtract(null_text.val(), find.val(), find.val(), 0)), "");
    // A null reference (no handle at all) reads as empty too.
    EXPECT_EQ(str(cReverse(nullptr)), "");
    EXPECT_EQ(cCount(nullptr, nullptr), 0);
}

TEST(LargeInputs, FiftyMegabytesInLinearTime) {
    std::string big(50u << 20, 'x');
    big[big.size() / 2] = '|';
    big.back() = 'y';
    Bstr t(big);
    const Returned rev = returned(cReverse(t.ref()));
    ASSERT_EQ(rev.bytes.size(), big.size());
    EXPECT_EQ(rev.bytes.front(), 'y');
    EXPECT_EQ(str(cGet(t.ref(), 3)), "");
    EXPECT_EQ(returned(cGet(t.ref(), 2)).bytes.size(), big.size() / 2 - 1);
    Bstr y("Y");
    EXPECT_EQ(cInStr(1, t.val(), y.val(), 0), static_cast<int32_t>(big.size()));
}
