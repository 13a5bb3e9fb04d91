// Pattern matching, through the exported interface.
#include "strings/string_calls.h"

using namespace brindle::test;

namespace {

struct PatternRow {
    std::string text;
    const char *pattern;
    int16_t cs;
    int32_t result;
};

// Each row through the export taking the case flag and, where the flag is
// -1, through its case-sensitive sibling too.
template <class WithFlag, class CaseSensitive, size_t n>
void expect_pattern_rows(WithFlag with_flag, CaseSensitive case_sensitive, const PatternRow (&rows)[n]) {
    for (const PatternRow &r : rows) {
        EXPECT_EQ(num(with_flag, r.text, r.pattern, r.cs), r.result) << r.text << " ~ " << r.pattern << " " << r.cs;
        if (r.cs == -1) {
            EXPECT_EQ(num(case_sensitive, r.text, r.pattern), r.result) << r.text << " ~ " << r.pattern;
        }
    }
}

} // namespace

TEST(SimplePattern, Table) {
    const PatternRow rows[] = {
        {"", "", -1, -1},          {"", "*", -1, -1},          {"", "?", -1, 0},            {"a", "", -1, 0},
        {"abc", "a*", -1, -1},     {"a", "a*", -1, -1},        {"bac", "a*", -1, 0},        {"abc", "*c", -1, -1},
        {"abc", "*b", -1, 0},      {"x*", "**", -1, -1},       {"*", "**", -1, -1},         {"*x", "**", -1, 0},
        {"ab", "**", -1, 0},       {"x*y", "**", -1, 0},       {"a*b", "a**b", -1, -1},     {"ab", "a**b", -1, 0},
        {"abc", "a?c", -1, -1},    {"ac", "a?c", -1, 0},       {"abc", "ab?", -1, -1},      {"ab", "ab?", -1, 0},
        {"a", "*?", -1, -1},       {"", "*?", -1, 0},          {"abc", "*?", -1, -1},       {"abc", "???", -1, -1},
        {"abcd", "???", -1, 0},    {"a.txt", "*.txt", -1, -1}, {"a.txt.bak", "*.txt", -1, 0}, {"a.txt", "*.TXT", -1, 0},
        {"a.b.c", "*.*", -1, -1},  {"abc", "a*?*", -1, -1},    {"ab", "*a*b", -1, -1},      {"aXbXc", "a*b*c", -1, -1},
        {"aXbXd", "a*b*c", -1, 0}, {"abc", "abc", -1, -1},     {"abcd", "abc", -1, 0},      {"abc", "abcd", -1, 0},
        {B("ab\0cd", 5), "ab", -1, -1}, // zero-terminated: the text ends at its first zero byte
        // Case ignored unless -1; only letters fold.
        {"README.TXT", "*.txt", 0, -1}, {"README.TXT", "*.txt", 1, -1}, {"README.TXT", "*.txt", -1, 0},
        {"readme.txt", "*.txt", -1, -1}, {"[", "{", 0, 0},
    };
    expect_pattern_rows(cPatternMatchS, cPatternMatch, rows);
}

TEST(ExtendedPattern, EveryResultCode) {
    const PatternRow rows[] = {
        {"abc", "abc", -1, 1}, // no wildcard characters: not even compared
        {"xyz", "abc", -1, 1},   {"", "", -1, 1},         {"A", "~41", -1, 1},    {"abc", "a*", -1, -1},
        {"abc", "[a-c]b?", -1, -1}, {"xA", "?~41", -1, -1}, {"a*", "a\\*", -1, -1}, {"abc", "[!x]\\b[c]", -1, -1},
        {"a", "a\\", -1, 12},    {"ab", "a\\", -1, 2},    {"a", "[a-", -1, 3},    {"", "[a-", -1, 12},
        {"a", "[ab", -1, 4},     {"a", "[]", -1, 5},      {"", "[]", -1, 12},     {"~4x", "~4[]", -1, 7},
        {"a", "?", -1, -1},      {"ab", "?", -1, 11},     {"", "?", -1, 12},      {"b", "[a]", -1, 13},
        {"bc", "?b", -1, 14},    {"xB", "?~41", -1, 17},  {"ab", "a*c", -1, 12},
        // Case ignored for literals unless -1, never for set members or codes.
        {"ABC", "a?c", 0, -1},   {"ABC", "a?c", -1, 14},  {"A", "[a]", 0, 13},    {"xA", "?~61", 0, 17},
        {"xA", "*a", 0, -1},     {"xA", "*a", 1, -1},
    };
    expect_pattern_rows(cPatternExtMatchS, cPatternExtMatch, rows);
}

TEST(similarity, ScoresWithTheLengthTableAndTruncatingDivisions) {
    struct Row {
        const char *a, *b;
        int16_t score;
    } rows[] = {
        // Worked by hand from the definition: "a"/"ab": S = 12, divisor
        // 15*2/10 + 2*1/2 = 4, score 300.
        {"a", "ab", 300},        {"ab", "a", 300},           {"AB", "ab", 800},          {"x", "y", 400},
        {"Smith", "Smyth", 450}, {"Johnson", "Jonson", 500}, {"hello", "world", 325},    {"", "a", 0},
        {"a", "", 0},
        // 30 letters: the factor drops to 3.
        {"abcdefghijklmnopqrstuvwxyzabcd", "abcdefghijklmnopqrstuvwxyzabcd", 1466},
    };
    for (const Row &r : rows)
        EXPECT_EQ(num(cStrMatch, r.a, r.b), r.score) << r.a << " / " << r.b;
}

TEST(similarity, EveryRowOfTheLengthTable) {
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
        EXPECT_EQ(num(cStrMatch, w, w), same[len - 1]) << len;
        EXPECT_EQ(num(cStrMatch, w, std::string(w.rbegin(), w.rend())), reversed[len - 1]) << len;
    }
    // 2,000 equal letters: the bonus passes 12 million, far beyond 16 bits
    // (same Python transcription).
    EXPECT_EQ(num(cStrMatch, std::string(2000, 'q'), std::string(2000, 'q')), 2009);
}

TEST(Prefix, StrPrefixed) {
    struct Row {
        const char *text, *prefix;
        int16_t result;
    } rows[] = {
        {"abcdef", "abc", -1}, {"abc", "abc", -1}, {"ab", "abc", 0}, {"abcdef", "abd", 0},
        {"Abc", "abc", 0},     {"", "a", 0},       {"a", "", 0},
    };
    for (const Row &r : rows)
        EXPECT_EQ(num(cStrPrefixed, r.text, r.prefix), r.result) << r.text << " / " << r.prefix;
}

TEST(Table, MatchTable) {
    struct Row {
        const char *word, *table, *seps;
        int16_t cs;
        int32_t index;
    } rows[] = {
        {"pear", "apple , pear , plum", ",", -1, 2}, {"plum", "apple , pear , plum", ",", -1, 3},
        {"fig", "apple , pear , plum", ",", -1, -1}, {"PEAR", "apple , pear , plum", ",", 0, 2},
        {"PEAR", "apple , pear , plum", ",", -1, -1}, {"pear", "apple;pear,plum", ";,", -1, 2},
        {"plum", "apple,,plum", ",", -1, -1}, // an empty entry ends the search
        {"apple", ",apple", ",", -1, -1},     {"pear", "\tpear\r\n", ",", -1, 1}, // white space trimmed
        {" pear", "pear", ",", -1, -1},       // the word is not trimmed
        {"a,b", "a,b", "", -1, 1},            // no separators: one entry
        {"x", "", ",", -1, -1},
    };
    for (const Row &r : rows)
        EXPECT_EQ(num(cMatchTable, r.word, r.table, r.seps, r.cs), r.index) << r.word << " in " << r.table;
}
