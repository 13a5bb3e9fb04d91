// The path-name workers that other families call with plain C++ strings;
// the string exports have their tables in paths_test.cpp.
#include "files/path_names.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::files;

TEST(filename_validity, CodesForEachRule) {
    const struct {
        std::string name;
        int16_t code;
    } rows[] = {
        {"", kNameInvalid},
        {"C:\\dir\\file.txt", kNameValid},
        {"file", kNameValid},
        {std::string(516, 'a'), kNameValid},
        {std::string(517, 'a'), kNameInvalid},
        {"C:", kNameInvalid},
        {"C:\\dir\\", kNameInvalid},
        {"1:\\x", kNameDriveNotLetter},
        {"ab:", kNameColonMisplaced},
        {"ab:c", kNameColonMisplaced},
        {"\\\\\\x", kNameThreeBackslashes},
        {"a\\\\\\b", kNameThreeBackslashes},
        {"\\\\server\\share", kNameValid},
        {"a\\.b", kNameDotAfterSeparator},
        {"C:.b", kNameDotAfterSeparator},
        {"a.b.c", kNameInvalid},
        {"a.b\\c.d", kNameValid}, // a backslash starts a new component
        {"..\\a.txt", kNameValid},
        {".\\a.txt", kNameInvalid},
        {"..\\..\\a.txt", kNameInvalid}, // only one prefix is skipped
        {"caf\xE9.txt", kNameValid},    // ANSI letters are characters
        {std::string(256, 'a') + ".txt", kNameValid},
        {std::string(257, 'a') + ".txt", kNameBaseTooLong},
        {std::string(400, 'a'), kNameValid}, // no full stop: only the 516 applies
        {"a." + std::string(255, 'e'), kNameValid},
        {"a." + std::string(256, 'e'), kNameExtTooLong},
        {"x\\" + std::string(257, 'a') + ".t", kNameBaseTooLong},
    };
    for (const auto &row : rows)
        EXPECT_EQ(filename_validity(row.name), row.code) << row.name.substr(0, 40) << " (" << row.name.size() << ")";
    // Characters the system refuses in a name, a zero byte among them.
    using namespace std::string_view_literals;
    for (std::string_view bad : {"a/b"sv, "a\"b"sv, "a\tb"sv, "a*"sv, "a?"sv, "a<b"sv, "a>b"sv, "a|b"sv, "a\0b"sv})
        EXPECT_EQ(filename_validity(bad), kNameInvalid) << bad;
}

TEST(normalise_path, RootsKeepTheirBackslash) {
    const struct {
        const char *in, *out;
    } rows[] = {
        {"C:\\dir\\", "C:\\dir"}, {"C:/dir/", "C:\\dir"}, {"C:\\", "C:\\"}, {"C:/", "C:\\"},
        {"\\", "\\"},             {"/", "\\"},            {"C:", "C:\\"},   {"dir", "dir"},
        {"a/b/c", "a\\b\\c"},     {"", ""},               {"ab", "ab"},     {"\\\\srv\\", "\\\\srv"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(normalise_path(row.in), row.out) << row.in;
    // At most 2,048 characters are copied; a cut that leaves a trailing
    // backslash loses it.
    EXPECT_EQ(normalise_path(std::string(2047, 'a') + "\\bc").size(), 2047u);
    EXPECT_EQ(normalise_path(std::string(3000, 'x')).size(), 2048u);
}

TEST(SplitAndMake, RuntimeSplitterAndBuilder) {
    const struct {
        const char *path, *drive, *dir, *name, *ext;
    } rows[] = {
        {"C:\\dir\\sub\\file.tar.gz", "C:", "\\dir\\sub\\", "file.tar", ".gz"},
        {"file", "", "", "file", ""},
        {"d:x.y", "d:", "", "x", ".y"},
        {"a/b\\c.d", "", "a/b\\", "c", ".d"},
        {"dir.x\\file", "", "dir.x\\", "file", ""},
        {"\\\\srv\\share\\f.", "", "\\\\srv\\share\\", "f", "."},
    };
    for (const auto &row : rows) {
        const PathPieces p = split_path(row.path);
        EXPECT_EQ(p.drive, row.drive) << row.path;
        EXPECT_EQ(p.dir, row.dir) << row.path;
        EXPECT_EQ(p.name, row.name) << row.path;
        EXPECT_EQ(p.ext, row.ext) << row.path;
        EXPECT_EQ(make_path(p.drive, p.dir, p.name, p.ext), row.path);
    }
    EXPECT_EQ(make_path("C", "dir", "f", "txt"), "C:dir\\f.txt");
    EXPECT_EQ(make_path("C:", "\\dir/", "f", ".txt"), "C:\\dir/f.txt");
    EXPECT_EQ(make_path("", "", "", ""), "");
}
