// Tokens and character filters, through the exported interface.
#include "strings/string_calls.h"

#include <algorithm>
#include <ctime>

using namespace brindle::test;

TEST(Tokens, OrAndAnd) {
    struct Row {
        std::string text, list;
        int16_t any, all;
    } rows[] = {
        {"the cat sat", "dog|cat", -1, 0},      {"the cat sat", "cat|sat", -1, -1},
        {"the cat sat", "dog|cow", 0, 0},       {"the cat sat", "|cat||sat|", -1, 0}, // last token is "sat|"
        {"the cat sat|", "|cat||sat|", -1, -1}, {"a|b", "|", -1, -1}, // one token: the separator itself
        {"ab", "|", 0, 0},                      {"ab", "||", 0, 0}, // token "|" only (the last byte)
        {"Cat", "cat", 0, 0},                   {"", "cat", 0, 0},   {"cat", "", 0, 0},
        // Zero-terminated: nothing after an inner zero byte of list or text.
        {"xyz", B("q\0y", 3), 0, 0},            {B("a\0cat", 5), "cat", 0, 0},
        // The list's length is a 16-bit signed number: 32,768 bytes read as
        // negative, so as empty; 65,537 bytes read as their first one.
        {"abc", "abc|" + std::string(32764, 'z'), 0, 0}, {"abc", "abc|" + std::string(32763, 'z'), -1, 0},
        {"ab", "ab" + std::string(65535, 'z'), -1, -1},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(num(cOrToken, r.text, r.list), r.any) << r.text << " / " << r.list.substr(0, 20);
        EXPECT_EQ(num(cAndToken, r.text, r.list), r.all) << r.text << " / " << r.list.substr(0, 20);
    }
    // A token longer than 2,559 bytes is searched by its first 2,559.
    const std::string head(2559, 'x');
    EXPECT_EQ(num(cOrToken, head + "!", head + "yyyy"), -1);
    EXPECT_EQ(num(cOrToken, head + "!", std::string(2558, 'x') + "yy"), 0);

    EXPECT_EQ(num(cOrTokenIn, "red green", "blue,green", ","), -1);
    EXPECT_EQ(num(cAndTokenIn, "red green", "red;green", ";,"), -1);
    EXPECT_EQ(num(cAndTokenIn, "red green", "red,blue", ","), 0);
    // An empty separator means "|"; with "," the "|" is an ordinary byte.
    EXPECT_EQ(num(cAndTokenIn, "red green", "red|green", ""), -1);
    EXPECT_EQ(num(cAndTokenIn, "red green", "red|green", ","), 0);
}

TEST(Tokens, TokenInSplitsAtAnyByte) {
    expect_rows({
        {call(cTokenIn, "a,b;c", ",;", 1), "a"}, {call(cTokenIn, "a,b;c", ",;", 2), "b"}, {call(cTokenIn, "a,b;c", ",;", 3), "c"},
        {call(cTokenIn, "a,b;c", ",;", 4), ""},  {call(cTokenIn, "a,;c", ",;", 2), ""},   {call(cTokenIn, "a,;c", ",;", 3), "c"},
        {call(cTokenIn, ",a", ",", 1), ""},      {call(cTokenIn, "a,b;c", ",;", 0), ""},  {call(cTokenIn, "a,b;c", "", 1), ""},
        {call(cTokenIn, "", ",", 1), ""},        {call(cTokenIn, "abc", ",", 1), "abc"},
        {call(cTokenIn, B("x\0y", 3), B("\0", 1), 2), "y"}, // counted: zero is a separator like any
    });
}

TEST(Filters, CharsFirstCharsAndBlocks) {
    using Filter = BSTR(BRINDLE_CALL *)(BSTR *, BSTR *);
    struct Row {
        Filter f;
        std::string text, set;
        const char *result; // nullptr: the input handle
    } rows[] = {
        {cFilterChars, "a-b-c d", "- ", "abcd"},  {cFilterNotChars, "a-b-c d", "- ", "-- "},
        {cFilterChars, B("a\0b", 3), B("\0", 1), "ab"}, {cFilterChars, "abc", "abc", ""},
        {cFilterNotChars, "abc", "xyz", ""},      {cFilterChars, "abc", "", nullptr},
        {cFilterNotChars, "abc", "", nullptr},    {cFilterChars, "", "a", ""},
        {cFilterNotChars, "", "a", ""},
        {cFilterFirstChars, "prefix.rest", "prefix.", "rest"}, {cFilterFirstChars, "abc", "abc", ""},
        {cFilterFirstChars, "abc", "", nullptr},  {cFilterFirstChars, "", "a", ""},
        {cFilterBlocks, "a(bc)d(e)f", "()", "adf"},
        {cFilterBlocks, "a(b(c)d)e", "()", "ad)e"}, // no nesting; a stray closer is kept
        {cFilterBlocks, "a)b", "()", "a)b"},      {cFilterBlocks, "a(bcd", "()", "a"}, // unclosed: to the end
        {cFilterBlocks, "a'b'c'd", "'", "ac"},    // one delimiter opens and closes
        {cFilterBlocks, "a'b'c'd'e", "''", "ace"}, {cFilterBlocks, "x<y>z", "<>extra", "xz"},
        {cFilterBlocks, "a(b)", "", nullptr},
    };
    for (const Row &r : rows) {
        const Returned got = call(r.f, r.text, r.set);
        EXPECT_EQ(got.is_input, r.result == nullptr) << r.text << " / " << r.set;
        EXPECT_EQ(got.bytes, r.result == nullptr ? r.text : r.result) << r.text << " / " << r.set;
    }
    // No match: same length, shifted by the prefix's length, zero bytes past
    // the end.
    EXPECT_EQ(call(cFilterFirstChars, "abcdef", "xy").bytes, B("cdef\0\0", 6));
    EXPECT_EQ(call(cFilterFirstChars, "ab", "abc").bytes, B("\0\0", 2));
}

TEST(Translate, ChangeChars) {
    struct Row {
        const char *text, *from, *to, *stop, *result;
    } rows[] = {
        {"abcab", "ab", "bc", nullptr, "ccccc"}, // a -> b -> c, b -> c
        {"hello", "l", "L", nullptr, "heLLo"},    {"hello", "lo", "L", nullptr, "heLLo"}, // first byte pair only
        {"hello", "el", "EL!", nullptr, "hELLo"}, // extra bytes of the longer ignored
        {"abc", "xyz", "XYZ", nullptr, "abc"},    {"a.b.c;a.b", ".", "-", ";", "a-b-c;a.b"},
        {"x;y", ";", "!", ";", "x;y"},            // the stop byte itself is never changed
    };
    for (const Row &r : rows) {
        const Edited got = r.stop == nullptr ? edit(cChangeChars, r.text, r.from, r.to)
                                             : edit(cChangeCharsUntil, r.text, r.from, r.to, r.stop);
        EXPECT_EQ(got.result, -1) << r.text;
        EXPECT_EQ(got.text, r.result) << r.text;
    }
    const Edited refused = edit(cChangeChars, "abc", "a", null_handle);
    EXPECT_EQ(refused.result, 0);
    EXPECT_EQ(refused.text, "abc");
    EXPECT_EQ(num(cChangeChars, null_handle, "a", "a"), 0);
    EXPECT_EQ(edit(cChangeCharsUntil, "a.b", ".", "-", null_handle).result, 0);
}

TEST(Translate, CheckChars) {
    struct Row {
        std::string text, set;
        int16_t result;
    } rows[] = {
        {"hello world", "owl", -1}, {"hello world", "owlz", 0}, {"abc", "", 0}, {"", "a", 0},
        {"abc", "aa", -1},          // a repeated set byte is met by one occurrence
        {B("a\0", 2), "ab", -1},    // a cleared place counts again for a zero byte
        {B("a\0\0", 3), "ab", 0},   // ... and again, so the count overshoots
        {std::string(200, 'x'), std::string(128, 'x'), -1},
        {std::string(200, 'x'), std::string(129, 'x'), 0}, // sets over 128 bytes refused
    };
    for (const Row &r : rows)
        EXPECT_EQ(num(cCheckChars, r.text, r.set), r.result) << r.text.size() << "/" << r.set;
}

TEST(Edit, RemoveAndGetBlocks) {
    using Block = BSTR(BRINDLE_CALL *)(BSTR *, int32_t, int32_t);
    struct Row {
        Block f; // nullptr: cRemoveOneChar
        int32_t pos, count;
        const char *result; // nullptr: the input handle
    } rows[] = {
        {nullptr, 1, 0, "bcdef"},         {nullptr, 6, 0, "abcde"},         {nullptr, 0, 0, nullptr},
        {nullptr, 7, 0, nullptr},         {nullptr, -1, 0, nullptr},
        {cRemoveBlockChar, 2, 2, "adef"}, {cRemoveBlockChar, 0, 2, "cdef"}, {cRemoveBlockChar, 1, 2, "cdef"},
        {cRemoveBlockChar, 5, 2, "abcd"},
        {cRemoveBlockChar, 5, 4, "ab"}, // past the end: the text before pos cut to 6 - 4
        {cRemoveBlockChar, 6, 5, "a"},    {cRemoveBlockChar, 1, 6, ""},     {cRemoveBlockChar, 1, 9, ""},
        {cRemoveBlockChar, -1, 2, nullptr}, {cRemoveBlockChar, 7, 1, nullptr}, {cRemoveBlockChar, 2, 0, nullptr},
        {cGetBlock, 1, 3, "abc"},         {cGetBlock, 2, 4, "ef"},          {cGetBlock, 3, 3, ""},
        {cGetBlock, 0, 3, ""},            {cGetBlock, 1, 0, ""},
        {cGetBlock, INT32_MAX, INT32_MAX, ""}, // no overflow
        {cGetBlock, 1, INT32_MAX, "abcdef"},
    };
    for (const Row &r : rows) {
        const Returned got =
            r.f == nullptr ? call(cRemoveOneChar, "abcdef", r.pos) : call(r.f, "abcdef", r.pos, r.count);
        EXPECT_EQ(got.is_input, r.result == nullptr) << r.pos << "," << r.count;
        EXPECT_EQ(got.bytes, r.result == nullptr ? "abcdef" : r.result) << r.pos << "," << r.count;
    }
}

TEST(Edit, Insert) {
    expect_rows({
        {call(cInsertChars, "abc", 0, "XY"), "XYabc"},        {call(cInsertChars, "abc", 1, "XY"), "aXYbc"},
        {call(cInsertChars, "abc", 3, "XY"), "abcXY"},        {call(cInsertChars, "abc", INT32_MAX, "XY"), "abcXY"},
        {call(cInsertChars, "abc", -1, "XY"), input_handle},
        {call(cInsertChars, "abc", 1, null_handle), input_handle}, {call(cInsertChars, null_handle, 1, "XY"), ""},
        // No mask: "#".
        {call(cInsertByMask, "(###) ###-####", null_handle, "0123456"), "(012) 345-6   "},
        {call(cInsertByMask, "a*b*c*", "*", "0123456"), "a0b1c2"},
        {call(cInsertByMask, "(###)", null_handle, null_handle), input_handle},
        {call(cInsertBlocks, "Dear ~, your ~ is due", "Ann~bill"), "Dear Ann, your bill is due"},
        {call(cInsertBlocks, "~-~-~", "a~b"), "a-b-"}, // blocks used up: placeholders dropped
        {call(cInsertBlocks, "~-~-~", "a~~c"), "a--c"}, // an empty block
        {call(cInsertBlocks, "no marks", "a~b"), "no marks"}, {call(cInsertBlocks, "a~b", ""), input_handle},
        {call(cInsertBlocksExt, "a~b~", ""), "ab"},           {call(cInsertBlocksExt, "a~b~", "1~2"), "a1b2"},
        {call(cInsertBlocksBy, "x#y#z", "1#2", "#!"), "x1y2z"}, {call(cInsertBlocksBy, "a~b", "1#2", null_handle), "a1#2b"},
        {call(cInsertBlocksBy, "x#y#z", null_handle, "#!"), input_handle},
    });
}

TEST(Mix, ShufflesWithTheRuntimeGeneratorSeededBySeconds) {
    const std::string text = "abcdefghijklmnopqrstuvwxyz0123456789";
    bool checked = false;
    // The exact shuffle (so also a permutation, and alike within one
    // second): the Microsoft runtime's generator seeded with the second, two
    // draws per byte, drawn again once when they coincide. Retry if the
    // second turned during the call.
    for (int attempt = 0; attempt < 5 && !checked; ++attempt) {
        const std::time_t now = std::time(nullptr);
        const std::string first = call(cMixChars, text).bytes;
        if (std::time(nullptr) != now)
            continue;
        uint32_t state = static_cast<uint32_t>(now);
        auto draw = [&] {
            state = state * 214013u + 2531011u;
            return static_cast<size_t>((state >> 16) & 0x7FFF) % text.size();
        };
        std::string shuffled = text;
        for (size_t k = 0; k < text.size(); ++k) {
            size_t i = draw(), j = draw();
            if (i == j) {
                i = draw();
                j = draw();
            }
            std::swap(shuffled[i], shuffled[j]);
        }
        EXPECT_EQ(first, shuffled);
        EXPECT_NE(first, text);
        checked = true;
    }
    EXPECT_TRUE(checked);

    // Bytes after an inner zero become zero bytes; the length is kept.
    std::string mixed = call(cMixChars, B("ab\0cd", 5)).bytes;
    std::sort(mixed.begin(), mixed.end());
    EXPECT_EQ(mixed, B("\0\0\0ab", 5));
    EXPECT_EQ(call(cMixChars, null_handle).bytes, "");
    EXPECT_EQ(call(cMixChars, "x").bytes, "x");
}

TEST(Bytewise, AndOrXor) {
    const std::string a = B("\x0F\xF0\xAA", 3), b = B("\xFF\x0F\x55", 3);
    expect_rows({{call(cStrAND, a, b), {"\x0F\x00\x00", 3}},
                 {call(cStrOR, a, b), "\xFF\xFF\xFF"},
                 {call(cStrXOR, a, b), "\xF0\xFF\xFF"}});
    for (auto f : {cStrAND, cStrOR, cStrXOR}) {
        EXPECT_EQ(call(f, a, "ab").bytes, "");
        EXPECT_EQ(call(f, null_handle, null_handle).bytes, "");
    }
}
