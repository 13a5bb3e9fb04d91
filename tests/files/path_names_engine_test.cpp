// The path-name workers that other families call with plain C++ strings.
#include "files/path_names.h"

#include <gtest/gtest.h>

#include <string>

using namespace brindle::files;

TEST(FilenameValidity, CodesForEachRule) {
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
        {"a/b", kNameInvalid},
        {"a\"b", kNameInvalid},
        {std::string("a\tb"), kNameInvalid},
        {"a*", kNameInvalid},
        {"a?", kNameInvalid},
        {"a<b", kNameInvalid},
        {"a>b", kNameInvalid},
        {"a|b", kNameInvalid},
        {"caf\xE9.txt", kNameValid}, // ANSI letters are characters
        {std::string(256, 'a') + ".txt", kNameValid},
        {std::string(257, 'a') + ".txt", kNameBaseTooLong},
        {std::string(400, 'a'), kNameValid}, // no full stop: only the 516 applies
        {"a." + std::string(255, 'e'), kNameValid},
        {"a." + std::string(256, 'e'), kNameExtTooLong},
        {"x\\" + std::string(257, 'a') + ".t", kNameBaseTooLong},
    };
    for (const auto &row : rows)
        EXPECT_EQ(FilenameValidity(row.name), row.code) << row.name.substr(0, 40) << " (" << row.name.size() << ")";
}

TEST(FilenameValidity, ZeroByteInsideIsAControlCharacter) {
    EXPECT_EQ(FilenameValidity(std::string_view("a\0b", 3)), kNameInvalid);
}

TEST(NormalisePath, RootsKeepTheirBackslash) {
    const struct {
        const char *in, *out;
    } rows[] = {
        {"C:\\dir\\", "C:\\dir"}, {"C:/dir/", "C:\\dir"}, {"C:\\", "C:\\"}, {"C:/", "C:\\"},
        {"\\", "\\"},             {"/", "\\"},            {"C:", "C:\\"},   {"dir", "dir"},
        {"a/b/c", "a\\b\\c"},     {"", ""},               {"ab", "ab"},     {"\\\\srv\\", "\\\\srv"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(NormalisePath(row.in), row.out) << row.in;
}

TEST(NormalisePath, CopiesAtMost2048Characters) {
    const std::string longer = std::string(2047, 'a') + "\\bc";
    const std::string out = NormalisePath(longer);
    ASSERT_EQ(out.size(), 2047u) << "cut at 2,048 leaves a trailing backslash, which goes";
    EXPECT_EQ(NormalisePath(std::string(3000, 'x')).size(), 2048u);
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
        const PathPieces p = SplitPath(row.path);
        EXPECT_EQ(p.drive, row.drive) << row.path;
        EXPECT_EQ(p.dir, row.dir) << row.path;
        EXPECT_EQ(p.name, row.name) << row.path;
        EXPECT_EQ(p.ext, row.ext) << row.path;
        EXPECT_EQ(MakePath(p.drive, p.dir, p.name, p.ext), row.path);
    }
    EXPECT_EQ(MakePath("C", "dir", "f", "txt"), "C:dir\\f.txt");
    EXPECT_EQ(MakePath("C:", "\\dir/", "f", ".txt"), "C:\\dir/f.txt");
    EXPECT_EQ(MakePath("", "", "", ""), "");
}

TEST(Extensions, DefaultStripAndParts) {
    EXPECT_EQ(DefaultExtension("file", ".txt"), "file.txt");
    EXPECT_EQ(DefaultExtension("file", "txt"), "file.txt");
    EXPECT_EQ(DefaultExtension("file.", "txt"), "file.");
    EXPECT_EQ(DefaultExtension("a.txt", "dat"), "a.txt");
    EXPECT_EQ(DefaultExtension("dir.x\\file", "dat"), "dir.x\\file.dat");
    EXPECT_EQ(DefaultExtension("dir.x/file", "dat"), "dir.x/file.dat");
    EXPECT_EQ(DefaultExtension("file", ""), "file");

    EXPECT_EQ(StripExtension("dir.x\\file"), "dir.x\\file");
    EXPECT_EQ(StripExtension("file.tar.gz"), "file.tar");
    EXPECT_EQ(StripExtension("dir/f.c"), "dir/f");
    EXPECT_EQ(StripExtension("d.x/f"), "d.x/f");
    EXPECT_EQ(StripExtension("a\\b.c/d"), "a\\b") << "the backslash wins over a later slash";
    EXPECT_EQ(StripExtension("plain"), "plain");

    EXPECT_EQ(StripFilePath("C:\\dir\\file.txt"), "file.txt");
    EXPECT_EQ(StripFilePath("dir/file"), "file");
    EXPECT_EQ(StripFilePath("a/b\\c/d"), "c/d");
    EXPECT_EQ(StripFilePath("file"), "file");
    EXPECT_EQ(StripFilePath("dir\\"), "");

    EXPECT_EQ(StripFileName("file.txt"), ".");
    EXPECT_EQ(StripFileName("C:\\file.txt"), "C:\\");
    EXPECT_EQ(StripFileName("C:\\dir\\file.txt"), "C:\\dir");
    EXPECT_EQ(StripFileName("dir/sub/f"), "dir\\sub");
    EXPECT_EQ(StripFileName("\\f"), "\\");
}

TEST(TruncatePath, KeepsWhatFitsAndMarksTheCut) {
    EXPECT_EQ(TruncatePath("C:\\a\\b.txt", 24), "");
    EXPECT_EQ(TruncatePath("C:\\a\\b.txt", 25), "C:\\a\\b.txt");
    EXPECT_EQ(TruncatePath("a/b", 80), "") << "invalid names give nothing";
    // drive 2 + name 4 + ext 4 = 10, so 20 characters of room for the
    // directory "\first\second-long-part\third\" (31).
    const std::string path = "C:\\first\\second-long-part\\third\\file.txt";
    const std::string cut = TruncatePath(path, 30);
    EXPECT_EQ(cut, "C:\\first\\third.file.txt");
    EXPECT_LE(cut.size(), 30u);
    // Exactly fitting: unchanged.
    EXPECT_EQ(TruncatePath(path, static_cast<int32_t>(path.size())), path);
    // Nothing fits beside a long name: only the leading backslash, marked.
    const std::string long_name = "\\dir\\" + std::string(30, 'n') + ".txt";
    EXPECT_EQ(TruncatePath(long_name, 30), "." + std::string(30, 'n') + ".txt");
    for (int32_t max : {25, 26, 31, 40}) {
        const std::string deep = "C:\\" + std::string(10, 'a') + "\\" + std::string(3, 'b') + "\\" +
                                 std::string(12, 'c') + "\\d\\name.ext";
        EXPECT_LE(TruncatePath(deep, max).size(), static_cast<size_t>(max)) << max;
    }
}
