// The exports that rewrite a file in place, join files and search from a
// given line, through the exported interface in a scratch directory.
// Expected contents are worked out by hand in the comments.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <string>

using namespace brindle::test;

namespace {

class TextRewrite : public TempDirTest {
  protected:
    // F: an export taking two names (a __stdcall function on 32-bit Windows).
    template <class F> static int32_t two(F f, std::string_view a, std::string_view b) {
        Bstr x(a), y(b);
        return f(x.val(), y.val());
    }
};

} // namespace

TEST_F(TextRewrite, MergeTwoAndMany) {
    write_file("a", "abc");
    write_file("b", "de\r\n");
    EXPECT_EQ(two(cFileToUpper, "a", "a.up"), 3); // a plain copy to join as well
    Bstr a("a"), b("b"), t("t"), missing("missing");
    EXPECT_EQ(cFileMerge(a.val(), b.val(), t.val()), 7);
    EXPECT_EQ(read_file("t"), "abcde\r\n");
    EXPECT_EQ(cFileMerge(missing.val(), b.val(), t.val()), -32750);
    EXPECT_EQ(cFileMerge(a.val(), missing.val(), t.val()), -32752);
    EXPECT_EQ(cFileMerge(a.val(), b.val(), a.val()), -32751);
    EXPECT_EQ(cFileMerge(a.val(), b.val(), b.val()), -32751);
    EXPECT_EQ(read_file("a") + read_file("b"), "abcde\r\n");

    SafeArray names(VT_BSTR, 1, 3);
    const char *list[] = {"b", "a.up", "b"};
    for (LONG i = 0; i < 3; ++i) {
        LONG at = i + 1;
        Bstr n(list[i]);
        ASSERT_EQ(SafeArrayPutElement(names.get(), &at, n.val()), S_OK);
    }
    Bstr m("m");
    EXPECT_EQ(cFileMergeExt(names.ref(), m.val()), 3);
    EXPECT_EQ(read_file("m"), "de\r\nABCde\r\n");
    EXPECT_EQ(cFileMergeExt(names.ref(), b.val()), -4);
    EXPECT_EQ(read_file("b"), "de\r\n");
    LONG second = 2;
    ASSERT_EQ(SafeArrayPutElement(names.get(), &second, missing.val()), S_OK);
    Bstr m2("m2");
    EXPECT_EQ(cFileMergeExt(names.ref(), m2.val()), -3);
    EXPECT_FALSE(std::filesystem::exists("m2"));
    SafeArray empty(VT_BSTR, 0, 0), longs(VT_I4, 1, 2);
    EXPECT_EQ(cFileMergeExt(empty.ref(), m2.val()), -2);
    EXPECT_EQ(cFileMergeExt(longs.ref(), m2.val()), -2);
    EXPECT_EQ(cFileMergeExt(nullptr, m2.val()), -2);
    SafeArray nulls(VT_BSTR, 1, 2); // null elements are empty names
    EXPECT_EQ(cFileMergeExt(nulls.ref(), m2.val()), -2);
}

TEST_F(TextRewrite, SearchAndReplaceRewritesThroughANewFile) {
    write_file("f.txt", "Cat cat\r\nconCATenate\nno match here\r\nca\nt\n");
    auto replace = [](const char *search, const char *with, int16_t exact) {
        Bstr f("f.txt"), s(search), w(with), reserved("");
        return cFileSearchAndReplace(f.val(), s.val(), w.val(), reserved.val(), exact);
    };
    EXPECT_EQ(replace("cat", "dog", -1), 1);
    EXPECT_EQ(read_file("f.txt"), "Cat dog\r\nconCATenate\nno match here\r\nca\nt\n");
    EXPECT_EQ(replace("CAT", "", 0), 2); // a match does not cross a line: "ca" LF "t" stays
    EXPECT_EQ(read_file("f.txt"), " dog\r\nconenate\nno match here\r\nca\nt\n");
    EXPECT_EQ(replace("zzz", "y", 0), 0);
    EXPECT_EQ(replace("", "y", 0), 0);
    EXPECT_EQ(replace("e", "ee", -1), 4); // non-overlapping, left to right, never re-scanned
    EXPECT_EQ(read_file("f.txt"), " dog\r\nconeenatee\nno match heeree\r\nca\nt\n");
    Bstr missing("missing.txt"), s("a"), w("b"), r("");
    EXPECT_EQ(cFileSearchAndReplace(missing.val(), s.val(), w.val(), r.val(), 0), -32750);
    // Nothing is left beside the file: the new file took the old one's place.
    size_t files = 0;
    for (const auto &e : std::filesystem::directory_iterator("."))
        files += e.is_regular_file();
    EXPECT_EQ(files, 1u);
}

TEST_F(TextRewrite, ChangeCharsAsTheStringFunctionDoes) {
    write_file("f.bin", std::string("abcab\0z", 7));
    auto change = [](const char *name, std::string_view from, std::string_view to) {
        Bstr f(name), a(from), b(to), r("");
        return cFileChangeChars(f.val(), a.ref(), b.ref(), r.val());
    };
    // "ab" -> "bc": a becomes b, then every b (the old a's too) becomes c.
    EXPECT_EQ(change("f.bin", "ab", "bcX"), 4);
    EXPECT_EQ(read_file("f.bin"), std::string("ccccc\0z", 7));
    EXPECT_EQ(change("f.bin", std::string("\0", 1), "-"), 1); // every byte counts
    EXPECT_EQ(read_file("f.bin"), "ccccc-z");
    EXPECT_EQ(change("f.bin", "q", "r"), 0);
    EXPECT_EQ(change("f.bin", "", "r"), 0);
    EXPECT_EQ(change("missing", "a", "b"), -32750);
    EXPECT_EQ(read_file("f.bin"), "ccccc-z");
}

TEST_F(TextRewrite, SearchFromALine) {
    write_file("log.txt", "ok\r\nError one\r\nfine\r\nan error two\r\n");
    auto find = [](const char *text, int32_t *line, int32_t exact) {
        Bstr f("log.txt"), t(text);
        return cFileSearchFromLine(f.val(), t.val(), line, exact);
    };
    auto match = [](const char *pattern, int32_t *line, int32_t exact) {
        Bstr f("log.txt"), p(pattern);
        return cFileSearchPatternFromLine(f.val(), p.val(), line, exact);
    };
    int32_t line = 1;
    EXPECT_EQ(find("error", &line, 0), 1);
    EXPECT_EQ(line, 2);
    line = 3;
    EXPECT_EQ(find("error", &line, 0), 4); // "an error two": position 4
    EXPECT_EQ(line, 4);
    line = 5;
    EXPECT_EQ(find("error", &line, 0), 0);
    EXPECT_EQ(line, 5);
    line = -7;
    EXPECT_EQ(find("Error", &line, -1), 1);
    EXPECT_EQ(line, 2);
    line = 3;
    EXPECT_EQ(find("Error", &line, 1), 0); // any non-zero is exact
    line = 1;
    EXPECT_EQ(match("*ERROR*", &line, 0), -1);
    EXPECT_EQ(line, 2);
    line = 1;
    EXPECT_EQ(match("fine", &line, 0), -1); // the whole line, its line feed left out
    EXPECT_EQ(line, 3);
    line = 1;
    EXPECT_EQ(match("*ERROR*", &line, -1), 0);
    EXPECT_EQ(line, 1);
    Bstr missing("missing"), t("x");
    EXPECT_EQ(cFileSearchFromLine(missing.val(), t.val(), &line, 0), -32750);
    EXPECT_EQ(cFileSearchPatternFromLine(missing.val(), t.val(), nullptr, 0), -32750);
}
