// Editing and layout, through the exported interface.
#include "strings/string_calls.h"

using namespace brindle::test;

TEST(Replace, PairsAndCase) {
    struct Row {
        std::string text, pairs;
        int16_t cs;
        std::string result;
    } rows[] = {
        {"a banana", "a|aa", -1, "aa baanaanaa"}, // new contains old: doubled once, terminates
        {"one two one", "one|1;two|2", -1, "1 2 1"}, {"One two", "one|1", -1, "One two"},
        {"One two", "one|1", 0, "1 two"}, {"One two", "one|1", 1, "1 two"}, // case ignored unless -1
        {"abcabc", "b", -1, "acac"}, // no "|": deleted
        {"abc", "a|b;b|c", -1, "ccc"}, {"abc", "abc|", -1, ""}, {"abc", ";", -1, "abc"},
        {"abc", "a|x;", -1, "xbc"}, // trailing ";" leaves an empty pair: skipped
        {"", "a|b", -1, ""}, {B("ab\0ab", 5), "b|c", -1, "ac"}, // zero-terminated
        // One byte becoming 40: beyond the old 25-times buffer, still given.
        {"a", "a|" + std::string(40, 'x'), -1, std::string(40, 'x')},
        // Three pairs each multiplying by 1,024 would make 4 GB out of 4
        // bytes: refused with the empty string instead of exhausting memory.
        {"aaaa", repeat("a|" + std::string(1024, 'a') + ";", 3), -1, ""},
    };
    for (const Row &r : rows) {
        const Returned got = call(cStringReplace, r.text, r.pairs, r.cs);
        EXPECT_FALSE(got.is_input);
        EXPECT_EQ(got.bytes, r.result) << r.text << " / " << r.pairs.substr(0, 20);
    }
    EXPECT_TRUE(call(cStringReplace, "abc", "", -1).is_input);
    // Two of them (4 MB) are still fine.
    EXPECT_EQ(call(cStringReplace, "aaaa", repeat("a|" + std::string(1024, 'a') + ";", 2), -1).bytes.size(), 4u << 20);
}

TEST(DeleteAndFill, JoinedOccurrencesAndWidths) {
    expect_rows({
        {call(cDeleteSubString, "aabb", "ab", -1), ""},        {call(cDeleteSubString, "xAaBbx", "ab", 0), "xx"},
        {call(cDeleteSubString, "xAaBbx", "ab", -1), "xAaBbx"}, {call(cDeleteSubString, "abc", "", -1), input_handle},
        {call(cDeleteSubString, "", "a", -1), ""},             {call(cLFill, "42", "0", 5), "00042"},
        {call(cRFill, "42", ".x", 5), "42..."},                {call(cLFill, "abc", "*", 2), input_handle},
        {call(cRFill, "abc", "*", -1), input_handle},          {call(cRFill, "abc", "", 9), input_handle},
        {call(cRFill, "", "*", 9), ""},
        {call(cLFill, B("ab\0c", 4), "-", 4), "--ab"}, // zero-terminated length 2
    });
    const Returned equal = call(cLFill, "abc", "*", 3);
    EXPECT_FALSE(equal.is_input);
    EXPECT_EQ(equal.bytes, "abc");
}

TEST(SetIn, LeftAndRightOfAField) {
    struct Row {
        bool at_end;
        const char *text, *sep;
        int32_t n;
        const char *value, *result; // nullptr: the input handle
    } rows[] = {
        {false, "a,b,c", ",", 2, "X", "a,Xb,c"}, {true, "a,b,c", ",", 2, "X", "a,bX,c"},
        {false, "a,b,c", ",", 1, "X", "Xa,b,c"}, {true, "a,b,c", ",", 3, "X", "a,b,cX"},
        {true, "a,,c", ",", 2, "X", "a,X,c"},    {false, "a,b,c", ",", 4, "X", "a,b,c"}, // no field 4: a copy
        // A byte 255 does not make a field exist; then the text comes back as it was...
        {false, "a\xff" "b", ",", 2, "X", "a\xff" "b"}, {true, "a\xff" "b", ",", 2, "X", "a\xff" "b"},
        {false, "a\xff\xff" "b,c", ",", 3, "X", "a\xff\xff" "b,c"},
        // ...but where the field exists, the 255 becomes the separator and ends a field.
        {false, "a\xff" "b,c", ",", 2, "X", "a,Xb,c"}, {true, "a\xff" "b,c", ",", 2, "X", "a,bX,c"},
        {false, "a\xff" "b", "\xff", 2, "X", "a\xff" "Xb"}, // 255 as the separator itself
        {true, "a,b;c", ",;", 2, "X", "a,bX;c"}, // any byte of sep
        {true, "", ",", 1, "X", ""},             {false, "a,b", "", 1, "X", nullptr},
        {false, "a,b", ",", 0, "X", nullptr},    {true, "a,b", ",", 1, "", nullptr},
    };
    for (const Row &r : rows) {
        const Returned got = call(r.at_end ? cRSetIn : cLSetIn, r.text, r.sep, r.n, r.value);
        EXPECT_EQ(got.is_input, r.result == nullptr) << r.text << " " << r.n;
        EXPECT_EQ(got.bytes, r.result == nullptr ? r.text : r.result) << r.text << " " << r.n << (r.at_end ? " right" : " left");
    }
}

TEST(FillAndSize, InPlaceAndNew) {
    const Edited filled = edit(cFill, "abcdefg", "xy");
    EXPECT_EQ(filled.result, -1);
    EXPECT_EQ(filled.text, "xyxyxyx");
    EXPECT_EQ(edit(cFill, "abc", null_handle).result, 0);
    EXPECT_EQ(num(cFill, null_handle, "xy"), 0);
    expect_rows({
        {call(cCreateAndFill, 5, "xy"), "xyxyx"},            {call(cCreateAndFill, 0, "xy"), ""},
        {call(cCreateAndFill, 3, null_handle), ""},          {call(cResizeString, "abcdef", 3), "abc"},
        {call(cResizeString, "abc", 10), "abc"},             {call(cResizeString, "abc", 0), ""},
        {call(cResizeStringAndFill, "abc", 5, "-x"), "abc--"}, {call(cResizeStringAndFill, "abc", 2, "-x"), "ab"},
        {call(cResizeStringAndFill, "abc", -5, "-x"), ""},
        {call(cResizeStringAndFill, "abc", 5, null_handle), {"abc\0\0", 5}},
    });
}

TEST(Layout, Align) {
    expect_rows({
        {call(cAlign, "x", 0, 4), "  x "},      {call(cAlign, "ab", 0, 5), "  ab "}, {call(cAlign, "ab", -1, 5), "   ab"},
        {call(cAlign, "ab", 1, 5), "ab   "},    {call(cAlign, "abcdef", 0, 3), "abc"}, {call(cAlign, "abc", -7, 3), "abc"},
        {call(cAlign, "abc", 0, 0), ""},        {call(cAlign, "", 0, 5), ""},
    });
}

TEST(Layout, BlanksTabsAndHex) {
    expect_rows({
        {call(cCompress, B(" a\tb\0c ", 7)), "abc"},    {call(cCompress, " \t"), ""},
        {call(cExpandTab, "a\tb\t", 3), "a   b   "},    {call(cExpandTab, "abc", 4), input_handle},
        {call(cExpandTab, "abc\td", 4), "abc    d"}, // a fixed count, not a stop
        {call(cExpandTab, "a\tb", 0), input_handle},
        {call(cExpandTab, "a\t", INT32_MAX), ""}, // too long for a VB string
        {call(cCompressTab, "a      b", 4), "a\t  b"},   {call(cCompressTab, "        x ", 4), "\t\tx "},
        {call(cCompressTab, "a b", 4), "a b"},           {call(cCompressTab, "a    b", 1), input_handle},
        {call(cCompact, "1ab"), {"\x01\xAB", 2}},        {call(cCompact, "00ff7F"), {"\x00\xFF\x7F", 3}},
        {call(cCompact, "G"), {"\x00", 1}}, // (71 - 55) mod 16: unchecked
        {call(cCompact, ""), ""},
    });
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    const std::string hex = call(cUncompact, all).bytes;
    EXPECT_EQ(hex.substr(0, 4) + hex.substr(hex.size() - 4), "0001FEFF");
    EXPECT_EQ(call(cCompact, hex).bytes, all);
}

TEST(Characters, ProperNameAndSingleEdits) {
    expect_rows({
        {call(cProperName, "jean-luc de la fontaine"), "Jean-luc De La Fontaine"},
        {call(cProperName, "mIXED  case"), "MIXED  Case"}, {call(cProperName, "\xe9t\xe9"), "\xe9t\xe9"}, // only a-z
        {call(cRemoveLastChar, "abc"), "ab"}, {call(cRemoveLastChar, "a"), ""}, {call(cRemoveLastChar, ""), ""},
    });

    const Edited one = edit(cReplaceChar, "abc", 2, "XY");
    EXPECT_EQ(one.result, -1);
    EXPECT_EQ(one.text, "aXc");
    for (int32_t pos : {0, 4, -1, INT32_MIN}) {
        const Edited refused = edit(cReplaceChar, "abc", pos, "XY");
        EXPECT_EQ(refused.result, 0) << pos;
        EXPECT_EQ(refused.text, "abc") << pos;
    }
    EXPECT_EQ(edit(cReplaceChar, "abc", 1, null_handle).result, 0);
    const Edited last = edit(cReplaceLastChar, "abc", "XY");
    EXPECT_EQ(last.result, -1);
    EXPECT_EQ(last.text, "abX");
    EXPECT_EQ(num(cReplaceLastChar, null_handle, "XY"), 0);
}
