// Pattern matching, through the exported interface.
#include "support/ole_helpers.h"

#include <string>

using namespace brindle::test;

namespace {

int32_t pm(std::string_view text, std::string_view pattern) {
    Bstr t(text), p(pattern);
    return cPatternMatch(t.val(), p.val());
}
int32_t pms(std::string_view text, std::string_view pattern, int16_t cs) {
    Bstr t(text), p(pattern);
    return cPatternMatchS(t.val(), p.val(), cs);
}
int32_t ext(std::string_view text, std::string_view pattern) {
    Bstr t(text), p(pattern);
    return cPatternExtMatch(t.val(), p.val());
}
int32_t exts(std::string_view text, std::string_view pattern, int16_t cs) {
    Bstr t(text), p(pattern);
    return cPatternExtMatchS(t.val(), p.val(), cs);
}
int16_t score(std::string_view a, std::string_view b) {
    Bstr x(a), y(b);
    return cStrMatch(x.val(), y.val());
}

} // namespace

TEST(SimplePattern, Table) {
    struct Row {
        const char *text, *pattern;
        int32_t result;
    } rows[] = {
        {"", "", -1},         {"", "*", -1},          {"", "?", 0},           {"abc", "a*", -1},
        {"a", "a*", -1},      {"bac", "a*", 0},       {"x*", "**", -1},       {"*", "**", -1},
        {"*x", "**", 0},      {"ab", "**", 0},        {"abc", "a?c", -1},     {"abc", "ab?", -1},
        {"ab", "ab?", 0},     {"abc", "*?", -1},      {"a.txt", "*.txt", -1}, {"a.txt", "*.TXT", 0},
        {"abc", "abc", -1},   {"abcd", "abc", 0},     {"abc", "abcd", 0},
    };
    for (const Row &r : rows)
        EXPECT_EQ(pm(r.text, r.pattern), r.result) << r.text << " ~ " << r.pattern;
    // Zero-terminated: the text ends at its first zero byte.
    EXPECT_EQ(pm(std::string("ab\0cd", 5), "ab"), -1);
}

TEST(SimplePattern, CaseFlag) {
    EXPECT_EQ(pms("README.TXT", "*.txt", 0), -1);
    EXPECT_EQ(pms("README.TXT", "*.txt", 1), -1); // only -1 is true
    EXPECT_EQ(pms("README.TXT", "*.txt", -1), 0);
    EXPECT_EQ(pms("readme.txt", "*.txt", -1), -1);
}

TEST(ExtendedPattern, EveryResultCode) {
    struct Row {
        const char *text, *pattern;
        int32_t code;
    } rows[] = {
        {"abc", "abc", 1},   // no wildcard characters: not even compared
        {"xyz", "abc", 1},   {"", "", 1},          {"A", "~41", 1},
        {"abc", "a*", -1},   {"abc", "[a-c]b?", -1}, {"xA", "?~41", -1},   {"a*", "a\\*", -1},
        {"abc", "[!x]\\b[c]", -1},
        {"a", "a\\", 12},    {"ab", "a\\", 2},     {"a", "[a-", 3},       {"", "[a-", 12},
        {"a", "[ab", 4},     {"a", "[]", 5},       {"", "[]", 12},        {"~4x", "~4[]", 7},
        {"a", "?", -1},      {"ab", "?", 11},      {"", "?", 12},         {"b", "[a]", 13},
        {"bc", "?b", 14},    {"xB", "?~41", 17},   {"ab", "a*c", 12},
    };
    for (const Row &r : rows)
        EXPECT_EQ(ext(r.text, r.pattern), r.code) << r.text << " ~ " << r.pattern;
}

TEST(ExtendedPattern, CaseFlagSparesSetsAndCodes) {
    EXPECT_EQ(exts("ABC", "a?c", 0), -1);
    EXPECT_EQ(exts("ABC", "a?c", -1), 14);
    EXPECT_EQ(exts("A", "[a]", 0), 13);
    EXPECT_EQ(exts("xA", "?~61", 0), 17);
    EXPECT_EQ(exts("xA", "*a", 0), -1);
    EXPECT_EQ(exts("xA", "*a", 1), -1); // 1 is not true: case ignored
}

TEST(Similarity, ScoresWithTheLengthTableAndTruncatingDivisions) {
    struct Row {
        const char *a, *b;
        int16_t score;
    } rows[] = {
        // Worked by hand from the definition: "a"/"a": S = 18/2 = 9, T = 15,
        // divisor 15*1/10 = 1, score 900; "ab"/"ab": S = 9 then 49/3 = 16,
        // divisor 13*2/10 = 2, score 800; "a"/"ab": S = 12, divisor
        // 15*2/10 + 2*1/2 = 4, score 300.
        {"a", "a", 900},
        {"ab", "ab", 800},
        {"AB", "ab", 800},
        {"ab", "ba", 650},
        {"a", "ab", 300},
        {"ab", "a", 300},
        {"x", "y", 400},
        {"Smith", "Smyth", 450},
        {"Johnson", "Jonson", 500},
        {"hello", "world", 325},
        // 30 letters: the factor drops to 3.
        {"abcdefghijklmnopqrstuvwxyzabcd", "abcdefghijklmnopqrstuvwxyzabcd", 1466},
        {"", "a", 0},
        {"a", "", 0},
    };
    for (const Row &r : rows)
        EXPECT_EQ(score(r.a, r.b), r.score) << r.a << " / " << r.b;
}

TEST(Similarity, EveryRowOfTheLengthTable) {
    // Words of 1..31 different characters against themselves and against
    // their reversal, so that every entry of the length factor shows (and
    // the factor 3 beyond 29). Values from a separate transcription of the
    // definition in Python.
    const int16_t same[] = {900, 800, 700, 650, 750, 850, 760, 840, 766, 714, 900, 828, 885, 825, 777, 925,
                            975, 911, 955, 900, 1175, 1225, 1133, 1177, 1100, 1140, 1180, 1109, 1145, 1444, 1488};
    const int16_t reversed[] = {900, 650, 533, 400, 425, 425, 340, 340, 283, 242, 283, 242, 242, 212, 188, 212,
                                212, 188, 188, 170, 212, 212, 188, 188, 170, 170, 170, 154, 154, 188, 188};
    const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    for (size_t len = 1; len <= 31; ++len) {
        const std::string w = letters.substr(0, len);
        const std::string r(w.rbegin(), w.rend());
        EXPECT_EQ(score(w, w), same[len - 1]) << len;
        EXPECT_EQ(score(w, r), reversed[len - 1]) << len;
    }
}

TEST(Similarity, LongWords) {
    // 2,000 equal letters: the bonus passes 12 million, far beyond 16 bits;
    // the value comes from a separate transcription of the definition in
    // Python.
    const std::string w(2000, 'q');
    EXPECT_EQ(score(w, w), 2009);
}

TEST(Prefix, StrPrefixed) {
    struct Row {
        const char *text, *prefix;
        int16_t result;
    } rows[] = {
        {"abcdef", "abc", -1}, {"abc", "abc", -1}, {"ab", "abc", 0}, {"abcdef", "abd", 0},
        {"Abc", "abc", 0},     {"", "a", 0},       {"a", "", 0},
    };
    for (const Row &r : rows) {
        Bstr t(r.text), p(r.prefix);
        EXPECT_EQ(cStrPrefixed(t.val(), p.val()), r.result) << r.text << " / " << r.prefix;
    }
}

TEST(Table, MatchTable) {
    struct Row {
        const char *word, *table, *seps;
        int16_t cs;
        int32_t index;
    } rows[] = {
        {"pear", "apple , pear , plum", ",", -1, 2},
        {"plum", "apple , pear , plum", ",", -1, 3},
        {"fig", "apple , pear , plum", ",", -1, -1},
        {"PEAR", "apple , pear , plum", ",", 0, 2},
        {"PEAR", "apple , pear , plum", ",", -1, -1},
        {"pear", "apple;pear,plum", ";,", -1, 2},
        {"plum", "apple,,plum", ",", -1, -1},      // an empty entry ends the search
        {"apple", ",apple", ",", -1, -1},
        {"pear", "\tpear\r\n", ",", -1, 1},        // white space trimmed
        {" pear", "pear", ",", -1, -1},            // the word is not trimmed
        {"a,b", "a,b", "", -1, 1},                 // no separators: one entry
        {"x", "", ",", -1, -1},
    };
    for (const Row &r : rows) {
        Bstr w(r.word), t(r.table), s(r.seps);
        EXPECT_EQ(cMatchTable(w.val(), t.val(), s.val(), r.cs), r.index) << r.word << " in " << r.table;
    }
}
