// Tokens and character filters, through the exported interface.
#include "support/ole_helpers.h"

#include <algorithm>
#include <ctime>
#include <string>

using namespace brindle::test;

namespace {

std::string B(const char *s, size_t n) { return std::string(s, n); }

// A by-value token test.
int16_t tok(int16_t(BRINDLE_CALL *f)(BSTR, BSTR), std::string_view text, std::string_view list) {
    Bstr t(text), l(list);
    return f(t.val(), l.val());
}
int16_t tok_in(int16_t(BRINDLE_CALL *f)(BSTR, BSTR, BSTR), std::string_view text, std::string_view list, std::string_view sep) {
    Bstr t(text), l(list), s(sep);
    return f(t.val(), l.val(), s.val());
}

// A by-reference (text, arg) string export; is_input says whether the
// text's own handle came back.
Returned call2(BSTR(BRINDLE_CALL *f)(BSTR *, BSTR *), std::string_view text, std::string_view arg) {
    Bstr t(text), a(arg);
    return returned(f(t.ref(), a.ref()), {&t});
}

} // namespace

TEST(Tokens, OrAndAnd) {
    struct Row {
        const char *text, *list;
        int16_t any, all;
    } rows[] = {
        {"the cat sat", "dog|cat", -1, 0},
        {"the cat sat", "cat|sat", -1, -1},
        {"the cat sat", "dog|cow", 0, 0},
        {"the cat sat", "|cat||sat|", -1, 0}, // last token is "sat|"
        {"the cat sat|", "|cat||sat|", -1, -1},
        {"a|b", "|", -1, -1},                  // one token: the separator itself
        {"ab", "|", 0, 0},
        {"ab", "||", 0, 0},                    // token "|" only (the last byte)
        {"Cat", "cat", 0, 0},                  // case-sensitive
        {"", "cat", 0, 0},
        {"cat", "", 0, 0},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(tok(cOrToken, r.text, r.list), r.any) << r.text << " / " << r.list;
        EXPECT_EQ(tok(cAndToken, r.text, r.list), r.all) << r.text << " / " << r.list;
    }
    // Zero-terminated: a token after an inner zero byte of the list is
    // never seen, nor text after a zero byte of the text.
    EXPECT_EQ(tok(cOrToken, "xyz", B("q\0y", 3)), 0);
    EXPECT_EQ(tok(cOrToken, B("a\0cat", 5), "cat"), 0);
}

TEST(Tokens, ChosenSeparator) {
    EXPECT_EQ(tok_in(cOrTokenIn, "red green", "blue,green", ","), -1);
    EXPECT_EQ(tok_in(cAndTokenIn, "red green", "red;green", ";,"), -1);
    EXPECT_EQ(tok_in(cAndTokenIn, "red green", "red,blue", ","), 0);
    // An empty separator means "|"; with "," the "|" is an ordinary byte.
    EXPECT_EQ(tok_in(cAndTokenIn, "red green", "red|green", ""), -1);
    EXPECT_EQ(tok_in(cAndTokenIn, "red green", "red|green", ","), 0);
}

TEST(Tokens, LongTokensAndLongListsAreBounded) {
    // A token longer than 2,559 bytes is searched by its first 2,559.
    const std::string head(2559, 'x');
    const std::string text = head + "!";
    EXPECT_EQ(tok(cOrToken, text, head + "yyyy"), -1);
    EXPECT_EQ(tok(cOrToken, text, std::string(2558, 'x') + "yy"), 0);
    // The list's length is a 16-bit signed number: 32,768 bytes read as
    // negative, so as empty; 65,536 + 3 bytes read as their first 3.
    EXPECT_EQ(tok(cOrToken, "abc", "abc|" + std::string(32764, 'z')), 0);
    EXPECT_EQ(tok(cOrToken, "abc", "abc|" + std::string(32763, 'z')), -1);
    EXPECT_EQ(tok(cOrToken, "ab", "ab" + std::string(65535, 'z')), -1);
    EXPECT_EQ(tok(cAndToken, "ab", "ab" + std::string(65535, 'z')), -1);
}

TEST(Tokens, TokenInSplitsAtAnyByte) {
    struct Row {
        const char *text, *seps;
        int32_t n;
        const char *field;
    } rows[] = {
        {"a,b;c", ",;", 1, "a"}, {"a,b;c", ",;", 2, "b"}, {"a,b;c", ",;", 3, "c"}, {"a,b;c", ",;", 4, ""},
        {"a,;c", ",;", 2, ""},   {"a,;c", ",;", 3, "c"},  {",a", ",", 1, ""},       {"a,b;c", ",;", 0, ""},
        {"a,b;c", "", 1, ""},    {"", ",", 1, ""},        {"abc", ",", 1, "abc"},
    };
    for (const Row &r : rows) {
        Bstr t(r.text), s(r.seps);
        EXPECT_EQ(str(cTokenIn(t.ref(), s.ref(), r.n)), r.field) << r.text << " " << r.n;
    }
    Bstr t(B("x\0y", 3)), s(B("\0", 1));
    EXPECT_EQ(str(cTokenIn(t.ref(), s.ref(), 2)), "y"); // counted: zero is a separator like any
}

TEST(Filters, KeepOrDropTheBytesOfASet) {
    EXPECT_EQ(call2(cFilterChars, "a-b-c d", "- ").bytes, "abcd");
    EXPECT_EQ(call2(cFilterNotChars, "a-b-c d", "- ").bytes, "-- ");
    EXPECT_EQ(call2(cFilterChars, B("a\0b", 3), B("\0", 1)).bytes, "ab");
    EXPECT_EQ(call2(cFilterChars, "abc", "abc").bytes, "");
    EXPECT_EQ(call2(cFilterNotChars, "abc", "xyz").bytes, "");
    for (auto f : {cFilterChars, cFilterNotChars}) {
        const Returned same = call2(f, "abc", "");
        EXPECT_TRUE(same.is_input);
        EXPECT_EQ(same.bytes, "abc");
        const Returned empty = call2(f, "", "a");
        EXPECT_FALSE(empty.is_null);
        EXPECT_EQ(empty.bytes, "");
    }
}

TEST(Filters, FirstChars) {
    EXPECT_EQ(call2(cFilterFirstChars, "prefix.rest", "prefix.").bytes, "rest");
    EXPECT_EQ(call2(cFilterFirstChars, "abc", "abc").bytes, "");
    // No match: same length, shifted by the prefix's length, zero bytes past
    // the end.
    EXPECT_EQ(call2(cFilterFirstChars, "abcdef", "xy").bytes, B("cdef\0\0", 6));
    EXPECT_EQ(call2(cFilterFirstChars, "ab", "abc").bytes, B("\0\0", 2));
    EXPECT_TRUE(call2(cFilterFirstChars, "abc", "").is_input);
    EXPECT_EQ(call2(cFilterFirstChars, "", "a").bytes, "");
}

TEST(Filters, Blocks) {
    struct Row {
        const char *text, *delims, *result;
    } rows[] = {
        {"a(bc)d(e)f", "()", "adf"},
        {"a(b(c)d)e", "()", "ad)e"}, // no nesting; a stray closer is kept
        {"a)b", "()", "a)b"},
        {"a(bcd", "()", "a"},        // unclosed runs to the end
        {"a'b'c'd", "'", "ac"},      // one delimiter opens and closes
        {"a'b'c'd'e", "''", "ace"},
        {"x<y>z", "<>extra", "xz"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(call2(cFilterBlocks, r.text, r.delims).bytes, r.result) << r.text;
    EXPECT_TRUE(call2(cFilterBlocks, "a(b)", "").is_input);
}

TEST(Translate, ChangeCharsInPlace) {
    struct Row {
        const char *text, *from, *to, *result;
    } rows[] = {
        {"abcab", "ab", "bc", "cccc" "c"}, // a -> b -> c, b -> c
        {"hello", "l", "L", "heLLo"},
        {"hello", "lo", "L", "heLLo"},     // shorter list: first byte pair only
        {"hello", "el", "EL!", "hELLo"},   // extra bytes of the longer ignored
        {"abc", "xyz", "XYZ", "abc"},
    };
    for (const Row &r : rows) {
        Bstr t(r.text), f(r.from), o(r.to);
        const BSTR before = t.val();
        EXPECT_EQ(cChangeChars(t.ref(), f.ref(), o.ref()), -1);
        EXPECT_EQ(t.val(), before); // edited in place, never reallocated
        EXPECT_EQ(t.bytes(), r.result) << r.text;
    }
    Bstr t("abc"), f("a"), empty;
    EXPECT_EQ(cChangeChars(t.ref(), f.ref(), empty.ref()), 0);
    EXPECT_EQ(cChangeChars(empty.ref(), f.ref(), f.ref()), 0);
    EXPECT_EQ(t.bytes(), "abc");
}

TEST(Translate, ChangeCharsUntilStops) {
    Bstr t("a.b.c;a.b"), f("."), o("-"), stop(";");
    EXPECT_EQ(cChangeCharsUntil(t.ref(), f.ref(), o.ref(), stop.ref()), -1);
    EXPECT_EQ(t.bytes(), "a-b-c;a.b");
    Bstr t2("x;y"), from(";"), to("!");
    EXPECT_EQ(cChangeCharsUntil(t2.ref(), from.ref(), to.ref(), stop.ref()), -1);
    EXPECT_EQ(t2.bytes(), "x;y"); // the stop byte itself is never changed
    Bstr empty;
    EXPECT_EQ(cChangeCharsUntil(t.ref(), f.ref(), o.ref(), empty.ref()), 0);
}

TEST(Translate, CheckChars) {
    struct Row {
        std::string text, set;
        int16_t result;
    } rows[] = {
        {"hello world", "owl", -1},
        {"hello world", "owlz", 0},
        {"abc", "aa", -1},       // a repeated set byte is met by one occurrence
        {"abc", "", 0},
        {"", "a", 0},
        {B("a\0", 2), "ab", -1}, // a cleared place counts again for a zero byte
        {B("a\0\0", 3), "ab", 0}, // ... and again, so the count overshoots
        {std::string(200, 'x'), std::string(128, 'x'), -1},
        {std::string(200, 'x'), std::string(129, 'x'), 0}, // sets over 128 bytes refused
    };
    for (const Row &r : rows) {
        Bstr t(r.text), s(r.set);
        EXPECT_EQ(cCheckChars(t.ref(), s.ref()), r.result) << r.text.size() << "/" << r.set;
    }
}

TEST(Edit, RemoveOneAndBlock) {
    Bstr t("abcdef");
    EXPECT_EQ(str(cRemoveOneChar(t.ref(), 1)), "bcdef");
    EXPECT_EQ(str(cRemoveOneChar(t.ref(), 6)), "abcde");
    for (int32_t pos : {0, 7, -1}) {
        const Returned r = returned(cRemoveOneChar(t.ref(), pos), {&t});
        EXPECT_TRUE(r.is_input) << pos;
    }
    struct Row {
        int32_t pos, count;
        const char *result; // nullptr: the input handle
    } rows[] = {
        {2, 2, "adef"}, {0, 2, "cdef"}, {1, 2, "cdef"}, {5, 2, "abcd"},
        {5, 4, "ab"},   // past the end: the text before pos cut to 6 - 4
        {6, 5, "a"},    {1, 6, ""},     {1, 9, ""},     {-1, 2, nullptr},
        {7, 1, nullptr}, {2, 0, nullptr},
    };
    for (const Row &r : rows) {
        const Returned got = returned(cRemoveBlockChar(t.ref(), r.pos, r.count), {&t});
        if (r.result == nullptr) {
            EXPECT_TRUE(got.is_input) << r.pos << "," << r.count;
        } else {
            EXPECT_FALSE(got.is_input);
            EXPECT_EQ(got.bytes, r.result) << r.pos << "," << r.count;
        }
    }
}

TEST(Edit, InsertChars) {
    Bstr t("abc"), ins("XY"), empty;
    EXPECT_EQ(str(cInsertChars(t.ref(), 0, ins.ref())), "XYabc");
    EXPECT_EQ(str(cInsertChars(t.ref(), 1, ins.ref())), "aXYbc");
    EXPECT_EQ(str(cInsertChars(t.ref(), 3, ins.ref())), "abcXY");
    EXPECT_EQ(str(cInsertChars(t.ref(), INT32_MAX, ins.ref())), "abcXY");
    EXPECT_TRUE(returned(cInsertChars(t.ref(), -1, ins.ref()), {&t}).is_input);
    EXPECT_TRUE(returned(cInsertChars(t.ref(), 1, empty.ref()), {&t}).is_input);
    EXPECT_EQ(str(cInsertChars(empty.ref(), 1, ins.ref())), "");
}

TEST(Edit, InsertByMask) {
    Bstr t("(###) ###-####"), data("0123456"), hash, star("*"), t2("a*b*c*");
    EXPECT_EQ(str(cInsertByMask(t.ref(), hash.ref(), data.ref())), "(012) 345-6   ");
    EXPECT_EQ(str(cInsertByMask(t2.ref(), star.ref(), data.ref())), "a0b1c2");
    Bstr empty;
    EXPECT_TRUE(returned(cInsertByMask(t.ref(), hash.ref(), empty.ref()), {&t}).is_input);
}

TEST(Edit, InsertBlocks) {
    struct Row {
        const char *text, *blocks, *result;
    } rows[] = {
        {"Dear ~, your ~ is due", "Ann~bill", "Dear Ann, your bill is due"},
        {"~-~-~", "a~b", "a-b-"},   // blocks used up: placeholders dropped
        {"~-~-~", "a~~c", "a--c"},  // an empty block
        {"no marks", "a~b", "no marks"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(call2(cInsertBlocks, r.text, r.blocks).bytes, r.result) << r.text;
    EXPECT_TRUE(call2(cInsertBlocks, "a~b", "").is_input);
    EXPECT_EQ(call2(cInsertBlocksExt, "a~b~", "").bytes, "ab");
    EXPECT_EQ(call2(cInsertBlocksExt, "a~b~", "1~2").bytes, "a1b2");

    Bstr t("x#y#z"), blocks("1#2"), sep("#!"), none, tilde("a~b");
    EXPECT_EQ(str(cInsertBlocksBy(t.ref(), blocks.ref(), sep.ref())), "x1y2z");
    EXPECT_EQ(str(cInsertBlocksBy(tilde.ref(), blocks.ref(), none.ref())), "a1#2b");
    EXPECT_TRUE(returned(cInsertBlocksBy(t.ref(), none.ref(), sep.ref()), {&t}).is_input);
}

TEST(Edit, GetBlock) {
    Bstr t("abcdefgh");
    EXPECT_EQ(str(cGetBlock(t.ref(), 1, 3)), "abc");
    EXPECT_EQ(str(cGetBlock(t.ref(), 3, 3)), "gh");
    EXPECT_EQ(str(cGetBlock(t.ref(), 4, 3)), "");
    EXPECT_EQ(str(cGetBlock(t.ref(), 0, 3)), "");
    EXPECT_EQ(str(cGetBlock(t.ref(), 1, 0)), "");
    EXPECT_EQ(str(cGetBlock(t.ref(), INT32_MAX, INT32_MAX)), ""); // no overflow
    EXPECT_EQ(str(cGetBlock(t.ref(), 1, INT32_MAX)), "abcdefgh");
}

TEST(Mix, ShufflesWithTheRuntimeGeneratorSeededBySeconds) {
    const std::string text = "abcdefghijklmnopqrstuvwxyz0123456789";
    Bstr t(text);
    std::string first;
    bool checked = false;
    // The exact shuffle (so also a permutation, and alike within one
    // second): the Microsoft runtime's generator seeded with the second, two
    // draws per byte, drawn again once when they coincide. Retry if the
    // second turned during the call.
    for (int attempt = 0; attempt < 5 && !checked; ++attempt) {
        const std::time_t now = std::time(nullptr);
        first = str(cMixChars(t.ref()));
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
    Bstr z(B("ab\0cd", 5));
    std::string mixed = str(cMixChars(z.ref()));
    ASSERT_EQ(mixed.size(), 5u);
    std::sort(mixed.begin(), mixed.end());
    EXPECT_EQ(mixed, B("\0\0\0ab", 5));
    Bstr empty;
    EXPECT_EQ(str(cMixChars(empty.ref())), "");
    Bstr one("x");
    EXPECT_EQ(str(cMixChars(one.ref())), "x");
}

TEST(Bytewise, AndOrXor) {
    Bstr a(B("\x0F\xF0\xAA", 3)), b(B("\xFF\x0F\x55", 3)), shorter("ab"), empty;
    EXPECT_EQ(str(cStrAND(a.ref(), b.ref())), B("\x0F\x00\x00", 3));
    EXPECT_EQ(str(cStrOR(a.ref(), b.ref())), B("\xFF\xFF\xFF", 3));
    EXPECT_EQ(str(cStrXOR(a.ref(), b.ref())), B("\xF0\xFF\xFF", 3));
    for (auto f : {cStrAND, cStrOR, cStrXOR}) {
        EXPECT_EQ(str(f(a.ref(), shorter.ref())), "");
        EXPECT_EQ(str(f(empty.ref(), empty.ref())), "");
    }
}
