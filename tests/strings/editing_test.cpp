// Editing and layout, through the exported interface.
#include "support/ole_helpers.h"

#include <string>

using namespace brindle::test;

namespace {

std::string B(const char *s, size_t n) { return std::string(s, n); }

Returned replace(std::string_view text, std::string_view pairs, int16_t cs) {
    Bstr t(text), p(pairs);
    return returned(cStringReplace(t.val(), p.val(), cs), {&t});
}
Returned del(std::string_view text, std::string_view sub, int16_t cs) {
    Bstr t(text), s(sub);
    return returned(cDeleteSubString(t.val(), s.val(), cs), {&t});
}
Returned fill(BSTR(BRINDLE_CALL *f)(BSTR, BSTR, int32_t), std::string_view text, std::string_view with, int32_t width) {
    Bstr t(text), w(with);
    return returned(f(t.val(), w.val(), width), {&t});
}
Returned set_in(BSTR(BRINDLE_CALL *f)(BSTR, BSTR, int32_t, BSTR), std::string_view text, std::string_view sep, int32_t n,
                std::string_view value) {
    Bstr t(text), s(sep), v(value);
    return returned(f(t.val(), s.val(), n, v.val()), {&t});
}
template <class F> Returned by_ref_n(F f, std::string_view text, int32_t n) {
    Bstr t(text);
    return returned(f(t.ref(), n), {&t});
}
template <class F> Returned by_ref(F f, std::string_view text) {
    Bstr t(text);
    return returned(f(t.ref()), {&t});
}

} // namespace

TEST(Replace, PairsAndCase) {
    struct Row {
        const char *text, *pairs;
        int16_t cs;
        const char *result;
    } rows[] = {
        {"a banana", "a|aa", -1, "aa baanaanaa"}, // new contains old: doubled once, terminates
        {"one two one", "one|1;two|2", -1, "1 2 1"},
        {"One two", "one|1", -1, "One two"},
        {"One two", "one|1", 0, "1 two"},          // case ignored unless -1
        {"One two", "one|1", 1, "1 two"},
        {"abcabc", "b", -1, "acac"},               // no "|": deleted
        {"abc", "a|b;b|c", -1, "ccc"},
        {"abc", "a|x;", -1, "xbc"},                // trailing ";" leaves an empty pair: skipped
        {"abc", ";", -1, "abc"},
        {"abc", "abc|", -1, ""},
    };
    for (const Row &r : rows) {
        const Returned got = replace(r.text, r.pairs, r.cs);
        EXPECT_FALSE(got.is_input);
        EXPECT_EQ(got.bytes, r.result) << r.text << " / " << r.pairs;
    }
    EXPECT_TRUE(replace("abc", "", -1).is_input);
    EXPECT_FALSE(replace("", "a|b", -1).is_null);
    EXPECT_EQ(replace("", "a|b", -1).bytes, "");
    EXPECT_EQ(replace(B("ab\0ab", 5), "b|c", -1).bytes, "ac"); // zero-terminated
}

TEST(Replace, GrowsPastTwentyFiveTimesButRefusesRunawayLists) {
    // One byte becoming 40: beyond the old 25-times buffer, still given.
    EXPECT_EQ(replace("a", "a|" + std::string(40, 'x'), -1).bytes, std::string(40, 'x'));
    // Three pairs each multiplying by 1,024 would make 4 GB out of 4 bytes:
    // refused with the empty string instead of exhausting the memory.
    const std::string times1024 = "a|" + std::string(1024, 'a') + ";";
    const Returned r = replace("aaaa", times1024 + times1024 + times1024, -1);
    EXPECT_FALSE(r.is_null);
    EXPECT_EQ(r.bytes, "");
    // Two of them (4 MB) are still fine.
    EXPECT_EQ(replace("aaaa", times1024 + times1024, -1).bytes.size(), 4u << 20);
}

TEST(Delete, RepeatedlyAndJoined) {
    EXPECT_EQ(del("aabb", "ab", -1).bytes, "");
    EXPECT_EQ(del("xAaBbx", "ab", 0).bytes, "xx");
    EXPECT_EQ(del("xAaBbx", "ab", -1).bytes, "xAaBbx");
    EXPECT_EQ(del("abc", "abc", -1).bytes, "");
    EXPECT_TRUE(del("abc", "", -1).is_input);
    EXPECT_EQ(del("", "a", -1).bytes, "");
}

TEST(Fill, LeftAndRight) {
    EXPECT_EQ(fill(cLFill, "42", "0", 5).bytes, "00042");
    EXPECT_EQ(fill(cRFill, "42", ".x", 5).bytes, "42...");
    const Returned equal = fill(cLFill, "abc", "*", 3);
    EXPECT_FALSE(equal.is_input);
    EXPECT_EQ(equal.bytes, "abc");
    EXPECT_TRUE(fill(cLFill, "abc", "*", 2).is_input);
    EXPECT_TRUE(fill(cRFill, "abc", "*", -1).is_input);
    EXPECT_TRUE(fill(cRFill, "abc", "", 9).is_input);
    EXPECT_EQ(fill(cRFill, "", "*", 9).bytes, "");
    EXPECT_EQ(fill(cLFill, B("ab\0c", 4), "-", 4).bytes, "--ab"); // zero-terminated length 2
}

TEST(SetIn, LeftAndRightOfAField) {
    struct Row {
        bool at_end;
        const char *text, *sep;
        int32_t n;
        const char *value, *result;
    } rows[] = {
        {false, "a,b,c", ",", 2, "X", "a,Xb,c"},
        {true, "a,b,c", ",", 2, "X", "a,bX,c"},
        {false, "a,b,c", ",", 1, "X", "Xa,b,c"},
        {true, "a,b,c", ",", 3, "X", "a,b,cX"},
        {true, "a,,c", ",", 2, "X", "a,X,c"},
        {false, "a,b,c", ",", 4, "X", "a,b,c"},        // no field 4: unchanged copy
        {false, "a\xff" "b", ",", 2, "X", "a,Xb"},     // a byte 255 counts and becomes the separator
        {false, "a\xff" "b", ",", 3, "X", "a,b"},
        {true, "a,b;c", ",;", 2, "X", "a,bX;c"},       // fields end at any byte of sep
    };
    for (const Row &r : rows) {
        const Returned got = set_in(r.at_end ? cRSetIn : cLSetIn, r.text, r.sep, r.n, r.value);
        EXPECT_FALSE(got.is_input);
        EXPECT_EQ(got.bytes, r.result) << r.text << " " << r.n << (r.at_end ? " right" : " left");
    }
    EXPECT_TRUE(set_in(cLSetIn, "a,b", "", 1, "X").is_input);
    EXPECT_TRUE(set_in(cLSetIn, "a,b", ",", 0, "X").is_input);
    EXPECT_TRUE(set_in(cRSetIn, "a,b", ",", 1, "").is_input);
    EXPECT_EQ(set_in(cRSetIn, "", ",", 1, "X").bytes, "");
}

TEST(FillAndSize, InPlaceAndNew) {
    Bstr t("abcdefg"), pat("xy"), empty;
    const BSTR before = t.val();
    EXPECT_EQ(cFill(t.ref(), pat.ref()), -1);
    EXPECT_EQ(t.val(), before);
    EXPECT_EQ(t.bytes(), "xyxyxyx");
    EXPECT_EQ(cFill(t.ref(), empty.ref()), 0);
    EXPECT_EQ(cFill(empty.ref(), pat.ref()), 0);

    EXPECT_EQ(str(cCreateAndFill(5, pat.ref())), "xyxyx");
    EXPECT_EQ(str(cCreateAndFill(0, pat.ref())), "");
    EXPECT_EQ(str(cCreateAndFill(3, empty.ref())), "");

    EXPECT_EQ(by_ref_n(cResizeString, "abcdef", 3).bytes, "abc");
    EXPECT_EQ(by_ref_n(cResizeString, "abc", 10).bytes, "abc");
    EXPECT_EQ(by_ref_n(cResizeString, "abc", 0).bytes, "");

    Bstr abc("abc"), dash("-x");
    EXPECT_EQ(str(cResizeStringAndFill(abc.ref(), 5, dash.ref())), "abc--");
    EXPECT_EQ(str(cResizeStringAndFill(abc.ref(), 2, dash.ref())), "ab");
    EXPECT_EQ(str(cResizeStringAndFill(abc.ref(), 5, empty.ref())), B("abc\0\0", 5));
    EXPECT_EQ(str(cResizeStringAndFill(abc.ref(), -5, dash.ref())), "");
}

TEST(Layout, Align) {
    struct Row {
        const char *text;
        int16_t mode;
        int32_t width;
        const char *result;
    } rows[] = {
        {"x", 0, 4, "  x "},  {"ab", 0, 5, "  ab "}, {"ab", -1, 5, "   ab"}, {"ab", 1, 5, "ab   "},
        {"abcdef", 0, 3, "abc"}, {"abc", -7, 3, "abc"}, {"abc", 0, 0, ""},   {"", 0, 5, ""},
    };
    for (const Row &r : rows) {
        Bstr t(r.text);
        EXPECT_EQ(str(cAlign(t.ref(), r.mode, r.width)), r.result) << r.text << " " << r.mode << " " << r.width;
    }
}

TEST(Layout, BlanksAndTabs) {
    EXPECT_EQ(by_ref(cCompress, B(" a\tb\0c ", 7)).bytes, "abc");
    EXPECT_EQ(by_ref(cCompress, " \t").bytes, "");

    EXPECT_EQ(by_ref_n(cExpandTab, "a\tb\t", 3).bytes, "a   b   ");
    EXPECT_EQ(by_ref_n(cExpandTab, "abc\td", 4).bytes, "abc    d"); // a fixed count, not a stop
    EXPECT_TRUE(by_ref_n(cExpandTab, "abc", 4).is_input);
    EXPECT_TRUE(by_ref_n(cExpandTab, "a\tb", 0).is_input);
    EXPECT_EQ(by_ref_n(cExpandTab, "a\t", INT32_MAX).bytes, ""); // too long for a VB string

    EXPECT_EQ(by_ref_n(cCompressTab, "a      b", 4).bytes, "a\t  b");
    EXPECT_EQ(by_ref_n(cCompressTab, "        x ", 4).bytes, "\t\tx ");
    EXPECT_EQ(by_ref_n(cCompressTab, "a b", 4).bytes, "a b");
    EXPECT_TRUE(by_ref_n(cCompressTab, "a    b", 1).is_input);
}

TEST(Hex, CompactAndUncompact) {
    EXPECT_EQ(by_ref(cCompact, "1AB").bytes, B("\x01\xAB", 2));
    EXPECT_EQ(by_ref(cCompact, "1ab").bytes, B("\x01\xAB", 2));
    EXPECT_EQ(by_ref(cCompact, "00ff7F").bytes, B("\x00\xFF\x7F", 3));
    EXPECT_EQ(by_ref(cCompact, "G").bytes, B("\x00", 1)); // (71 - 55) mod 16: unchecked
    EXPECT_EQ(by_ref(cCompact, "").bytes, "");
    EXPECT_EQ(by_ref(cUncompact, B("\x01\xAB", 2)).bytes, "01AB");
    EXPECT_EQ(by_ref(cUncompact, B("\x00\xff", 2)).bytes, "00FF");
    const std::string all = [] {
        std::string s;
        for (int b = 0; b < 256; ++b)
            s += static_cast<char>(b);
        return s;
    }();
    EXPECT_EQ(by_ref(cCompact, by_ref(cUncompact, all).bytes).bytes, all);
}

TEST(Characters, ProperNameAndSingleEdits) {
    EXPECT_EQ(by_ref(cProperName, "jean-luc de la fontaine").bytes, "Jean-luc De La Fontaine");
    EXPECT_EQ(by_ref(cProperName, "mIXED  case").bytes, "MIXED  Case");
    EXPECT_EQ(by_ref(cProperName, "\xe9t\xe9").bytes, "\xe9t\xe9"); // only a-z change

    Bstr t("abc"), ch("XY"), empty;
    EXPECT_EQ(cReplaceChar(t.ref(), 2, ch.ref()), -1);
    EXPECT_EQ(t.bytes(), "aXc");
    for (int32_t pos : {0, 4, -1, INT32_MIN})
        EXPECT_EQ(cReplaceChar(t.ref(), pos, ch.ref()), 0) << pos;
    EXPECT_EQ(cReplaceChar(t.ref(), 1, empty.ref()), 0);
    EXPECT_EQ(cReplaceLastChar(t.ref(), ch.ref()), -1);
    EXPECT_EQ(t.bytes(), "aXX");
    EXPECT_EQ(cReplaceLastChar(empty.ref(), ch.ref()), 0);
    EXPECT_EQ(by_ref(cRemoveLastChar, "abc").bytes, "ab");
    EXPECT_EQ(by_ref(cRemoveLastChar, "a").bytes, "");
    EXPECT_EQ(by_ref(cRemoveLastChar, "").bytes, "");
}
