// Whole-file text operations through the exported interface, in a scratch
// directory. Expected contents are worked out by hand in the comments.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <ctime>
#include <random>
#include <vector>
#include <string>
#ifdef _WIN32
#include <sys/utime.h>
#else
#include <utime.h>
#endif

using namespace brindle::test;

namespace {

class TextFiles : public TempDirTest {
  protected:
    // F: an export taking two names (a __stdcall function on 32-bit Windows).
    template <class F> static int32_t two(F f, std::string_view a, std::string_view b) {
        Bstr x(a), y(b);
        return f(x.val(), y.val());
    }
    template <class F> static int32_t one(F f, std::string_view a) {
        Bstr x(a);
        return f(x.val());
    }
    // True where file names ignore case (Windows), so that "x" and "X" are one file.
    static bool case_folds() {
        write_file("probe", "");
        return std::filesystem::exists("PROBE");
    }
    // Sets a file's last-write time to a local date and time.
    static void set_written(const char *name, int y, int mo, int d, int h, int mi, int s) {
        std::tm t{};
        t.tm_year = y - 1900;
        t.tm_mon = mo - 1;
        t.tm_mday = d;
        t.tm_hour = h;
        t.tm_min = mi;
        t.tm_sec = s;
        t.tm_isdst = -1;
        const std::time_t when = std::mktime(&t);
#ifdef _WIN32
        _utimbuf u{when, when};
        ASSERT_EQ(_utime(name, &u), 0);
#else
        utimbuf u{when, when};
        ASSERT_EQ(utime(name, &u), 0);
#endif
    }
};

} // namespace

TEST_F(TextFiles, LineCountsByBothDefinitions) {
    write_file("dos.txt", "one\r\ntwo\r\nthree\r\n");
    write_file("unix.txt", "one\ntwo\nthree");
    write_file("long.txt", std::string(70000, 'x') + "\n");
    write_file("z.txt", "a\nb\n\x1a" "c\nd\n");
    EXPECT_EQ(one(cFileLineCount, "dos.txt"), 3);
    EXPECT_EQ(one(cFileLineCount, "unix.txt"), 0);
    EXPECT_EQ(one(cFileLineCount, "missing.txt"), -1);
    EXPECT_EQ(one(cFileLineCount, ""), -1);
    EXPECT_EQ(one(cFileLineCount2, "dos.txt"), 3);
    EXPECT_EQ(one(cFileLineCount2, "unix.txt"), 3); // the last line has no line feed
    // 70,001 bytes in pieces of 32,767: 32,767 + 32,767 + 4,467.
    EXPECT_EQ(one(cFileLineCount2, "long.txt"), 3);
    EXPECT_EQ(one(cFileLineCount2, "z.txt"), 2); // Ctrl-Z ends the text
    EXPECT_EQ(one(cFileLineCount2, "missing.txt"), -1);
}

TEST_F(TextFiles, Statistics) {
    struct Case {
        std::string bytes;
        int32_t lines, words;
    } cases[] = {
        {"a\nb", 1, 1},          // a line feed does not end a word
        {"a\rb", 0, 2},          // a carriage return does
        {"  x y\n\tz \f", 1, 3}, // x, y, then "\tz" after the line feed starts z
        {"", 0, 0},
        {"one two\r\nthree\r\n", 2, 3},
    };
    for (const Case &c : cases) {
        write_file("s.txt", c.bytes);
        Bstr f("s.txt");
        int32_t lines = -9, words = -9, bytes = -9;
        EXPECT_EQ(cFileStatistics(f.val(), &lines, &words, &bytes), static_cast<int32_t>(c.bytes.size()));
        EXPECT_EQ(lines, c.lines) << c.bytes;
        EXPECT_EQ(words, c.words) << c.bytes;
        EXPECT_EQ(bytes, static_cast<int32_t>(c.bytes.size()));
    }
    Bstr missing("missing.txt");
    int32_t lines = -9, words = -9, bytes = -9;
    EXPECT_EQ(cFileStatistics(missing.val(), &lines, &words, &bytes), -32750);
    EXPECT_EQ(lines + words + bytes, 0);
}

TEST_F(TextFiles, CaseCopiesAndTheirRefusals) {
    write_file("in.txt", "Hello, World\xc4\xe4\r\n");
    EXPECT_EQ(two(cFileToUpper, "in.txt", "up.txt"), 16);
    EXPECT_EQ(read_file("up.txt"), "HELLO, WORLD\xc4\xe4\r\n"); // only A-Z and a-z change
    EXPECT_EQ(two(cFileToLower, "in.txt", "low.txt"), 16);
    EXPECT_EQ(read_file("low.txt"), "hello, world\xc4\xe4\r\n");
    EXPECT_EQ(two(cFileToUpper, "missing.txt", "x.txt"), -32750);
    EXPECT_FALSE(std::filesystem::exists("x.txt"));
    // Another name of the source is refused before anything is truncated.
    EXPECT_EQ(two(cFileToUpper, "in.txt", ".\\in.txt"), -32751);
    EXPECT_EQ(two(cFileToLower, "in.txt", "in.txt"), -32751);
    EXPECT_EQ(read_file("in.txt"), "Hello, World\xc4\xe4\r\n");
}

TEST_F(TextFiles, SearchAndCount) {
    write_file("t.txt", "first line\r\nxx abc ABC aBc\r\naaaa\r\nlast");
    struct Case {
        const char *text;
        int16_t exact;
        int32_t found, count;
    } cases[] = {
        {"ABC", 0, -1, 3}, {"ABC", -1, -1, 1}, {"ABC", 1, -1, 1}, // any non-zero is exact
        {"aa", 0, -1, 2},  // "aaaa" holds two, not three
        {"line\r", 0, 0, 0}, // text mode: the line holds "line\n"
        {"line\n", 0, -1, 1}, {"last", -1, -1, 1}, {"zzz", 0, 0, 0}, {"", 0, 0, 0},
    };
    for (const Case &c : cases) {
        Bstr f("t.txt"), t(c.text);
        EXPECT_EQ(cFileSearch(f.val(), t.val(), c.exact), c.found) << c.text;
        EXPECT_EQ(cFileSearchCount(f.val(), t.val(), c.exact), c.count) << c.text;
    }
    Bstr missing("missing.txt"), t("a"), none;
    EXPECT_EQ(cFileSearch(missing.val(), t.val(), 0), -32750);
    EXPECT_EQ(cFileSearchCount(missing.val(), t.val(), 0), -32750);
    EXPECT_EQ(cFileSearchCount(none.val(), t.val(), 0), 0);
    // A line of 3,000 bytes is read in pieces of 2,559 and 441 (and the line
    // feed): a match across the cut is not seen.
    write_file("long.txt", std::string(2557, 'x') + "abcd" + std::string(439, 'x') + "\n");
    Bstr l("long.txt"), ab("ab"), bc("bc"), cd("cd");
    EXPECT_EQ(cFileSearchCount(l.val(), ab.val(), 0), 1);
    EXPECT_EQ(cFileSearchCount(l.val(), bc.val(), 0), 0);
    EXPECT_EQ(cFileSearchCount(l.val(), cd.val(), 0), 1);
}

TEST_F(TextFiles, PartCopyAndAppend) {
    write_file("src.txt", "0123456789");
    auto copy = [](const char *s, const char *t, int32_t offset, int16_t head) {
        Bstr a(s), b(t);
        return cFilePartCopy(a.val(), b.val(), offset, head);
    };
    auto append = [](const char *s, const char *t, int32_t offset, int16_t head) {
        Bstr a(s), b(t);
        return cFilePartAppend(a.val(), b.val(), offset, head);
    };
    EXPECT_EQ(copy("src.txt", "t1", 3, -1), 0);
    EXPECT_EQ(read_file("t1"), "012");
    EXPECT_EQ(copy("src.txt", "t2", 3, 0), 0);
    EXPECT_EQ(read_file("t2"), "3456789");
    EXPECT_EQ(copy("src.txt", "t3", 10, 0), 0);
    EXPECT_TRUE(std::filesystem::exists("t3"));
    EXPECT_EQ(read_file("t3"), "");
    EXPECT_EQ(copy("src.txt", "t4", 3, 1), 0); // 1 is not True
    EXPECT_EQ(read_file("t4"), "3456789");
    EXPECT_EQ(copy("src.txt", "bad", -1, 0), -1);
    EXPECT_EQ(copy("a\\\\\\b", "t5", 0, 0), -2); // three backslashes
    EXPECT_EQ(copy("src.txt", "a\\\\\\b", 0, 0), -3);
    EXPECT_EQ(copy("src.txt", "t5", 11, 0), -4);
    EXPECT_EQ(copy("missing.txt", "t5", 0, 0), -5);
    EXPECT_EQ(copy("src.txt", "SRC.TXT", 0, 0), case_folds() ? -6 : 0);
    std::filesystem::create_hard_link("src.txt", "link.txt");
    EXPECT_EQ(copy("src.txt", "link.txt", 2, 0), -6);
    EXPECT_EQ(read_file("src.txt"), "0123456789");
    write_file("log", "XY");
    EXPECT_EQ(append("src.txt", "log", 3, -1), 0);
    EXPECT_EQ(append("src.txt", "log", 8, 0), 0);
    EXPECT_EQ(read_file("log"), "XY01289");
    EXPECT_EQ(append("src.txt", "new", 8, 0), 0);
    EXPECT_EQ(read_file("new"), "89");
    EXPECT_EQ(append("src.txt", "src.txt", 0, 0), -6);
    EXPECT_EQ(read_file("src.txt"), "0123456789");
}

TEST_F(TextFiles, SplitIntoNumberedPieces) {
    write_file("ten.txt", "0123456789");
    std::filesystem::create_directory("out");
    Bstr src("ten.txt"), pattern("out\\part.txt");
    EXPECT_EQ(cSplitFile(src.val(), pattern.val(), 4), 3);
    EXPECT_EQ(read_file("out/part.000"), "0123");
    EXPECT_EQ(read_file("out/part.001"), "4567");
    EXPECT_EQ(read_file("out/part.002"), "89");
    EXPECT_FALSE(std::filesystem::exists("out/part.003"));
    Bstr exact("out\\even");
    EXPECT_EQ(cSplitFile(src.val(), exact.val(), 5), 2); // no empty third piece
    EXPECT_FALSE(std::filesystem::exists("out/even.002"));
    EXPECT_EQ(cSplitFile(src.val(), pattern.val(), 0), -1);
    Bstr bad("a\\\\\\b"), missing("missing.txt");
    EXPECT_EQ(cSplitFile(bad.val(), pattern.val(), 4), -2);
    EXPECT_EQ(cSplitFile(src.val(), bad.val(), 4), -3);
    EXPECT_EQ(cSplitFile(missing.val(), pattern.val(), 4), -4);
    write_file("empty.txt", "");
    Bstr empty("empty.txt"), e("e.txt");
    EXPECT_EQ(cSplitFile(empty.val(), e.val(), 4), 0);
    EXPECT_FALSE(std::filesystem::exists("e.000"));
    // A piece that would be the source: refused, earlier pieces removed.
    write_file("p.001", "source");
    Bstr self("p.001"), p("p.x");
    EXPECT_EQ(cSplitFile(self.val(), p.val(), 2), -5);
    EXPECT_FALSE(std::filesystem::exists("p.000"));
    EXPECT_EQ(read_file("p.001"), "source");
}

TEST_F(TextFiles, CutInTwo) {
    write_file("src.txt", "0123456789");
    auto cut = [](const char *s, const char *a, const char *b, int32_t at) {
        Bstr x(s), y(a), z(b);
        return cCutFile(x.val(), y.val(), z.val(), at);
    };
    EXPECT_EQ(cut("src.txt", "a", "b", 4), 0);
    EXPECT_EQ(read_file("a"), "0123");
    EXPECT_EQ(read_file("b"), "456789");
    EXPECT_EQ(cut("src.txt", "c", "d", 10), 0);
    EXPECT_EQ(read_file("c"), "0123456789");
    EXPECT_TRUE(std::filesystem::exists("d"));
    EXPECT_EQ(cut("src.txt", "a", "b", -1), -1);
    EXPECT_EQ(cut("a\\\\\\b", "a", "b", 1), -2);
    EXPECT_EQ(cut("src.txt", "a\\\\\\b", "b", 1), -3);
    EXPECT_EQ(cut("src.txt", "a", "a\\\\\\b", 1), -4);
    EXPECT_EQ(cut("src.txt", "a", "b", 11), -5);
    EXPECT_EQ(cut("missing", "a", "b", 1), -6);
    std::filesystem::create_hard_link("src.txt", "link.txt");
    EXPECT_EQ(cut("src.txt", "link.txt", "b", 1), -7);
    EXPECT_EQ(cut("src.txt", "e", "E", 1), case_folds() ? -8 : 0);
    EXPECT_EQ(cut("src.txt", "f", "src.txt", 1), -8);
    EXPECT_FALSE(std::filesystem::exists("f"));
    EXPECT_EQ(read_file("src.txt"), "0123456789");
}

TEST_F(TextFiles, TabsAndSpaces) {
    write_file("sp.txt", "      x  y    \n"); // runs of 6, 2 and 4
    {
        Bstr s("sp.txt"), t("tab.txt");
        // 6 -> tab and 2 spaces; 2 -> 2 spaces; 4 -> a tab: "\t  x  y\t\n", 9 bytes.
        EXPECT_EQ(cFileCompressTab(s.val(), t.val(), 4), 9);
        EXPECT_EQ(read_file("tab.txt"), "\t  x  y\t\n");
        EXPECT_EQ(cFileCompressTab(s.val(), t.val(), 0), -1);
        EXPECT_EQ(cFileCompressTab(s.val(), s.val(), 4), -32751);
    }
    write_file("tab.txt", "a\tb\t\t");
    {
        Bstr s("tab.txt"), t("sp.txt");
        EXPECT_EQ(cFileExpandTab(s.val(), t.val(), 4), 14);
        EXPECT_EQ(read_file("sp.txt"), "a    b        ");
        EXPECT_EQ(cFileExpandTab(s.val(), t.val(), 0), 2);
        EXPECT_EQ(read_file("sp.txt"), "ab");
        EXPECT_EQ(cFileExpandTab(s.val(), t.val(), -5), 2);
    }
    // A run of four spaces cut by the first block's end (32,768 bytes) is
    // two runs of two: no tab comes out.
    const std::string edge = std::string(32766, 'x') + "    " + "y";
    write_file("edge.txt", edge);
    {
        Bstr s("edge.txt"), t("out.txt");
        EXPECT_EQ(cFileCompressTab(s.val(), t.val(), 4), static_cast<int32_t>(edge.size()));
        EXPECT_EQ(read_file("out.txt"), edge);
    }
    // 32,768 tabs times 2 plus 32,768 passes 65,536; 16,384 tabs do not.
    write_file("tabs.txt", std::string(32768, '\t'));
    write_file("half.txt", std::string(16384, '\t') + std::string(16384, 'z'));
    {
        Bstr s("tabs.txt"), h("half.txt"), t("big.txt");
        EXPECT_EQ(cFileExpandTab(s.val(), t.val(), 2), -2);
        EXPECT_FALSE(std::filesystem::exists("big.txt"));
        EXPECT_EQ(cFileExpandTab(h.val(), t.val(), 2), 16384 * 3);
    }
}

TEST_F(TextFiles, LogRotationAndChanges) {
    write_file("LOGFILE.TXT", "old");
    set_written("LOGFILE.TXT", 2001, 3, 5, 10, 15, 30);
    Bstr log("LOGFILE.TXT"), missing("missing.txt");
    EXPECT_EQ(cFileHasChanged(log.val(), 20010305, 10152999), -1);
    EXPECT_EQ(cFileHasChanged(log.val(), 20010305, 10153000), 0);
    EXPECT_EQ(cFileHasChanged(log.val(), 20010304, 99999999), -1);
    EXPECT_EQ(cFileHasChanged(log.val(), 20010306, 0), 0);
    EXPECT_EQ(cFileHasChanged(missing.val(), 0, 0), 0);
    EXPECT_EQ(cFileCycleNeeded(missing.val(), 0), 0);
    EXPECT_EQ(cFileCycleNeeded(log.val(), 0), -1);
    EXPECT_EQ(cFileCycleNeeded(log.val(), 7), 0);
    EXPECT_EQ(cFileCycleNeeded(log.val(), -1), 0);
    // Only the month is compared, not the year.
    const std::time_t now = std::time(nullptr);
    const std::tm local = *std::localtime(&now);
    EXPECT_EQ(cFileCycleNeeded(log.val(), 4), local.tm_mon + 1 != 3 ? -1 : 0);
    EXPECT_EQ(cFileCycleNeeded(log.val(), 2), local.tm_mday != 5 ? -1 : 0);
    EXPECT_EQ(cFileCycleNeeded(log.val(), 1), local.tm_hour != 10 ? -1 : 0);
    // A file written just now is not due by the month (barring a month's
    // turn between the two lines).
    write_file("fresh.txt", "x");
    Bstr fresh("fresh.txt");
    EXPECT_EQ(cFileCycleNeeded(fresh.val(), 4), 0);
    EXPECT_EQ(cFileCycle(fresh.val(), 4), -1);
    EXPECT_TRUE(std::filesystem::exists("fresh.txt"));

    EXPECT_EQ(cFileCycle(log.val(), 0), -1);
    EXPECT_FALSE(std::filesystem::exists("LOGFILE.TXT"));
    EXPECT_EQ(read_file("LO010305.TXT"), "old");
    write_file("LOGFILE.TXT", "second");
    set_written("LOGFILE.TXT", 2001, 3, 5, 23, 0, 0);
    EXPECT_EQ(cFileCycle(log.val(), 0), -1);
    EXPECT_EQ(read_file("LO010305.000"), "second");
    EXPECT_EQ(cFileCycle(missing.val(), 0), -1); // nothing due
}

namespace {

int32_t sort(const char *source, const char *target, int16_t order, int32_t reclen, int32_t key_start, int32_t key_length,
             int32_t *count) {
    Bstr s(source), t(target);
    return cFileSort(s.val(), t.val(), order, reclen, key_start, key_length, count);
}

} // namespace

TEST_F(TextFiles, SortLinesByOrderAndKey) {
    write_file("in.txt", "pear 3\r\nApple 9\r\nfig 1\r\napple 2\r\nbanana 5"); // the last line has no CR LF
    int32_t count = 0;
    struct Case {
        int16_t order;
        int32_t key_start, key_length;
        const char *expected;
    } cases[] = {
        // Byte order: upper case before lower case.
        {1, -1, 0, "Apple 9\r\napple 2\r\nbanana 5\r\nfig 1\r\npear 3\r\n"},
        {5, -1, 0, "Apple 9\r\napple 2\r\nbanana 5\r\nfig 1\r\npear 3\r\n"},
        {2, -1, 0, "pear 3\r\nfig 1\r\nbanana 5\r\napple 2\r\nApple 9\r\n"},
        {77, -1, 0, "Apple 9\r\napple 2\r\nbanana 5\r\nfig 1\r\npear 3\r\n"},
        // From byte 1 on: "pple 9", "ear 3", "ig 1", "pple 2", "anana 5".
        {1, 1, 0, "banana 5\r\npear 3\r\nfig 1\r\napple 2\r\nApple 9\r\n"},
        // Key of 3 bytes from 1: "ppl" twice, the rest as above.
        {2, 1, 3, "Apple 9\r\napple 2\r\nfig 1\r\npear 3\r\nbanana 5\r\n"},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(sort("in.txt", "out.txt", c.order, 0, c.key_start, c.key_length, &count), 0);
        EXPECT_EQ(count, 5);
        std::string got = read_file("out.txt");
        if (c.key_length == 3) { // the two "ppl" keys tie: either order is right
            const size_t apple = got.find("apple 2\r\n"), Apple = got.find("Apple 9\r\n");
            ASSERT_TRUE(apple < 18 && Apple < 18) << got;
            got = "Apple 9\r\napple 2\r\n" + got.substr(18);
        }
        EXPECT_EQ(got, c.expected) << c.order << " " << c.key_start;
    }
    // Without regard to case the two apples tie; the rest is fixed.
    EXPECT_EQ(sort("in.txt", "out.txt", 9, 0, -1, 0, &count), 0);
    EXPECT_EQ(read_file("out.txt").substr(18), "banana 5\r\nfig 1\r\npear 3\r\n");
    EXPECT_EQ(sort("in.txt", "out.txt", 10, 0, -1, 0, &count), 0);
    EXPECT_EQ(read_file("out.txt").substr(0, 23), "pear 3\r\nfig 1\r\nbanana 5");
    // A key past a line's end is empty and sorts first.
    write_file("k.txt", "abcdef\nab\nabcz\n");
    EXPECT_EQ(sort("k.txt", "out.txt", 1, 0, 3, 1, &count), 0);
    EXPECT_EQ(read_file("out.txt"), "ab\r\nabcdef\r\nabcz\r\n");
}

TEST_F(TextFiles, SortAgreesWithAStringSort) {
    std::mt19937 rng(11);
    std::vector<std::string> lines;
    std::string raw;
    for (int i = 0; i < 20000; ++i) {
        std::string l;
        for (size_t n = rng() % 12; n > 0; --n)
            l.push_back(static_cast<char>(' ' + rng() % 95));
        lines.push_back(l);
        raw += l + "\n";
    }
    write_file("in.txt", raw);
    int32_t count = 0;
    EXPECT_EQ(sort("in.txt", "out.txt", 1, 0, -1, 0, &count), 0);
    EXPECT_EQ(count, 20000);
    std::sort(lines.begin(), lines.end(), [](const std::string &a, const std::string &b) {
        // Lines compare with their line feeds: "ab\n" against "ab c\n" is LF against space.
        return a + "\n" < b + "\n";
    });
    std::string expected;
    for (const std::string &l : lines)
        expected += l + "\r\n";
    EXPECT_EQ(read_file("out.txt"), expected);
}

TEST_F(TextFiles, SortFixedRecordsAndCodes) {
    // Records of 4 bytes; key of 2 bytes from byte 2.
    write_file("rec.bin", std::string("aa31bb12cc2\0dd", 14)); // the last record is 2 bytes
    int32_t count = 0;
    EXPECT_EQ(sort("rec.bin", "out.bin", 1, 4, 2, 2, &count), 0);
    EXPECT_EQ(count, 4);
    // keys: "31", "12", "2" (a zero byte ends it), "" (past the short record's end)
    EXPECT_EQ(read_file("out.bin"), std::string("ddbb12cc2\0aa31", 14));
    EXPECT_EQ(sort("rec.bin", "out.bin", 2, 4, 0, 0, &count), 0); // whole records, descending
    EXPECT_EQ(read_file("out.bin"), std::string("ddcc2\0bb12aa31", 14));
    struct Case {
        const char *source, *target;
        int32_t reclen, key_start, key_length, code, stage;
    } cases[] = {
        {"", "out.bin", 4, 0, 0, -1, 99},
        {"rec.bin", "", 4, 0, 0, -2, 99},
        {"rec.bin", "out.bin", 4, -1, 0, -3, 99},
        {"rec.bin", "out.bin", 4, 4, 0, -6, 99},
        {"rec.bin", "out.bin", 4, 2, 3, -6, 99},
        {"rec.bin", "REC.BIN", 4, 0, 0, -7, 99},
        {"missing", "out.bin", 4, 0, 0, -8, -1},
        {"rec.bin", "nodir/out.bin", 4, 0, 0, -9, -1},
    };
    for (const Case &c : cases) {
        count = 99;
        EXPECT_EQ(sort(c.source, c.target, 1, c.reclen, c.key_start, c.key_length, &count), c.code) << c.target;
        EXPECT_EQ(count, c.stage) << c.target;
    }
    std::filesystem::create_hard_link("rec.bin", "link.bin");
    EXPECT_EQ(sort("rec.bin", "link.bin", 1, 4, 0, 0, &count), -7);
    EXPECT_EQ(read_file("rec.bin").size(), 14u);
    EXPECT_EQ(sort("rec.bin", "out.bin", 1, 4, 0, 0, nullptr), 0);
}
