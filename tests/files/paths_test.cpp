// Path names, through the exported interface.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#ifndef _WIN32
#include <unistd.h>
#endif

using namespace brindle::test;
namespace fs = std::filesystem;

// The client's record: four variable-length strings.
struct PathParts {
    BSTR Drive = nullptr, Directory = nullptr, FileName = nullptr, Ext = nullptr;
    ~PathParts() {
        for (BSTR b : {Drive, Directory, FileName, Ext})
            SysFreeString(b);
    }
    static std::string of(BSTR b) {
        return b == nullptr ? std::string() : std::string(reinterpret_cast<const char *>(b), SysStringByteLen(b));
    }
};

namespace {

template <class F> std::string call(F f, std::string_view a) {
    Bstr x(a);
    return str(f(x.val()));
}
template <class F> std::string call(F f, std::string_view a, std::string_view b) {
    Bstr x(a), y(b);
    return str(f(x.val(), y.val()));
}
int16_t valid(std::string_view name) {
    Bstr x(name);
    return cIsFilenameValid(x.val());
}

class PathsOnDisk : public TempDirTest {};

} // namespace

TEST(PathExports, ValidatorCodesThroughTheInterface) {
    EXPECT_EQ(valid("C:\\dir\\file.txt"), -1);
    EXPECT_EQ(valid(std::string(517, 'a')), 0);
    EXPECT_EQ(valid("1:\\x"), 4);
    EXPECT_EQ(valid("ab:"), 5);
    EXPECT_EQ(valid("a\\.b"), 6);
    EXPECT_EQ(valid("\\\\\\x"), 3);
    // Read up to the first zero byte, as the system would see the name.
    EXPECT_EQ(valid(std::string_view("ok.txt\0*", 8)), -1);
    Bstr null_name;
    EXPECT_EQ(cIsFilenameValid(null_name.val()), 0);
}

TEST(PathExports, SplitFillsOrEmptiesTheRecord) {
    PathParts p;
    Bstr good("C:\\dir\\sub.d\\file.gz");
    EXPECT_EQ(cSplitPath(good.val(), &p), -1);
    EXPECT_EQ(PathParts::of(p.Drive), "C:");
    EXPECT_EQ(PathParts::of(p.Directory), "\\dir\\sub.d\\");
    EXPECT_EQ(PathParts::of(p.FileName), "file");
    EXPECT_EQ(PathParts::of(p.Ext), ".gz");
    // A second call replaces the old strings (the leak checker sees the rest).
    Bstr bad("a.b.c");
    EXPECT_EQ(cSplitPath(bad.val(), &p), 0);
    EXPECT_EQ(p.Drive, nullptr);
    EXPECT_EQ(p.Directory, nullptr);
    EXPECT_EQ(p.FileName, nullptr);
    EXPECT_EQ(p.Ext, nullptr);
    Bstr colon("ab:");
    EXPECT_EQ(cSplitPath(colon.val(), nullptr), 5);
}

TEST(PathExports, MakeAndStrip) {
    Bstr d("c"), dir("\\dir"), n("file"), e("txt"), empty;
    EXPECT_EQ(str(cMakePath(d.val(), dir.val(), n.val(), e.val())), "c:\\dir\\file.txt");
    EXPECT_EQ(str(cMakePath(empty.val(), empty.val(), empty.val(), empty.val())), "");

    EXPECT_EQ(call(cStripExtension, "dir.x\\file"), "dir.x\\file");
    EXPECT_EQ(call(cStripExtension, "file.tar.gz"), "file.tar");
    EXPECT_EQ(call(cStripFilePath, "C:\\dir\\file.txt"), "file.txt");
    EXPECT_EQ(call(cStripFileName, "file.txt"), ".");
    EXPECT_EQ(call(cStripFileName, "C:\\file.txt"), "C:\\");
    EXPECT_EQ(call(cStripFileName, "C:/dir/file.txt"), "C:\\dir");
    EXPECT_EQ(call(cStripFileName, ""), "");
}

TEST(PathExports, ExtensionsKeepAnExistingOne) {
    const struct {
        const char *name, *ext, *def, *fixed, *add;
    } rows[] = {
        {"file", ".txt", "file.txt", "file.txt", "file.txt"},
        {"file", "txt", "file.txt", "file.txt", "file.txt"},
        {"file.", "txt", "file.", "file.", "file."},
        {"a.txt", "dat", "a.txt", "a.txt", "a.txt"},
        {"a.txt", ".dat", "a.txt", "a.txt", "a.txt"},
        {"a", "dat", "a.dat", "a.dat", "a.dat"},
        {"dir.d\\a", "x", "dir.d\\a.x", "dir.d\\a.x", "dir.d\\a.x"},
        {"file", "", "file", "file", "file"},
        {"", "txt", "", "", ""},
    };
    for (const auto &r : rows) {
        EXPECT_EQ(call(cDefaultExtension, r.name, r.ext), r.def) << r.name << " + " << r.ext;
        EXPECT_EQ(call(cFixedExtension, r.name, r.ext), r.fixed) << r.name << " + " << r.ext;
        EXPECT_EQ(call(cAddExtension, r.name, r.ext), r.add) << r.name << " + " << r.ext;
    }
}

TEST(PathExports, TruncateRefusesSmallLimitsAndBadNames) {
    Bstr p("C:\\a\\b.txt");
    EXPECT_EQ(str(cTruncatePath(p.val(), 24)), "");
    EXPECT_EQ(str(cTruncatePath(p.val(), -5)), "");
    EXPECT_EQ(str(cTruncatePath(p.val(), 25)), "C:\\a\\b.txt");
    Bstr longer("C:\\first\\second-long-part\\third\\file.txt");
    EXPECT_EQ(str(cTruncatePath(longer.val(), 30)), "C:\\first\\third.file.txt");
    Bstr bad("C:\\a*\\b.txt");
    EXPECT_EQ(str(cTruncatePath(bad.val(), 100)), "");
}

TEST_F(PathsOnDisk, FullPathDriveAndExistence) {
    fs::create_directory("sub");
    write_file("sub/f.txt", "x");
    const std::string full = call(cFullPath, "sub\\..\\sub\\f.txt");
    ASSERT_GT(full.size(), 3u);
    EXPECT_EQ(full.substr(1, 2), ":\\");
    EXPECT_EQ(full.substr(full.size() - 10), "\\sub\\f.txt");
    EXPECT_EQ(call(cFullPath, ""), "");
    EXPECT_EQ(call(cFullPath, std::string(400, 'q')), "") << "longer than the 260-character buffer";

    const std::string drive = call(cFileDrive, "sub\\f.txt");
    ASSERT_EQ(drive.size(), 1u);
    EXPECT_GE(drive[0], 'A');
    EXPECT_LE(drive[0], 'Z');
    EXPECT_EQ(call(cFileDrive, "sub\\nothing.txt"), " ");
    EXPECT_EQ(call(cFileDrive, ""), " ");

    Bstr file("sub\\f.txt"), dir("sub"), missing("nothing\\f.txt"), slash("sub/f.txt");
    EXPECT_EQ(cFilePathExists(file.val()), -1);
    EXPECT_EQ(cFilePathExists(dir.val()), -1);
    EXPECT_EQ(cFilePathExists(slash.val()), -1);
    EXPECT_EQ(cFilePathExists(missing.val()), 2);
#ifndef _WIN32
    if (::geteuid() != 0) {
        fs::create_directory("locked");
        write_file("locked/in.txt", "x");
        fs::permissions("locked", fs::perms::none);
        Bstr in("locked\\in.txt");
        EXPECT_EQ(cFilePathExists(in.val()), 13);
        fs::permissions("locked", fs::perms::owner_all);
    }
#endif
}

TEST_F(PathsOnDisk, FileIsLegalRefusesNamesResolvedToAnotherEntry) {
    fs::create_directories("dir/inner");
    write_file("dir/inner/real.txt", "x");
    Bstr exact("dir\\inner\\real.txt"), missing("dir\\inner\\new.txt"), wild("dir\\in*\\real.txt"),
        wild_last("dir\\inner\\re?l.txt"), trailing("dir\\inner\\"), empty;
    EXPECT_EQ(cFileIsLegal(exact.val()), -1);
    EXPECT_EQ(cFileIsLegal(missing.val()), -1) << "a missing component is no failure";
    EXPECT_EQ(cFileIsLegal(wild.val()), 0);
    EXPECT_EQ(cFileIsLegal(wild_last.val()), 0);
    EXPECT_EQ(cFileIsLegal(trailing.val()), -1);
    EXPECT_EQ(cFileIsLegal(empty.val()), 0);
}

TEST_F(PathsOnDisk, UniqueFileNameKeepsEightCharacters) {
    const struct {
        const char *prefix, *start;
    } rows[] = {{"A", "A~"}, {"AB", "AB"}, {"ABC", "~~"}, {"", "~~"}};
    for (const auto &r : rows) {
        Bstr prefix(r.prefix);
        const std::string name = str(cUniqueFileName(prefix.ref()));
        ASSERT_EQ(name.size(), 8u) << r.prefix;
        EXPECT_EQ(name.substr(0, 2), r.start);
        EXPECT_FALSE(fs::exists(name));
        write_file(name, "taken");
        Bstr again(r.prefix);
        EXPECT_NE(str(cUniqueFileName(again.ref())), name) << "an existing file is avoided";
    }
    Bstr null_prefix;
    EXPECT_EQ(str(cUniqueFileName(nullptr)).size(), 8u);
    EXPECT_EQ(str(cUniqueFileName(null_prefix.ref())).substr(0, 2), "~~");
}

// Random names built from the characters the path functions treat
// specially: codes stay in range, results keep their shape, and the
// sanitizer build sees every byte touched.
TEST_F(PathsOnDisk, HostileNamesKeepResultsInShape) {
    std::mt19937 rng(5);
    const std::string hostile = std::string("\\/:.*?\"<>|aZ9 ~\x01\xE9") + std::string(1, '\0');
    const std::string tame = "\\aaaaZ9 .\xE9~"; // mostly valid names, for the truncation
    int valid_names = 0;
    for (int round = 0; round < 3000; ++round) {
        const std::string &alphabet = round % 2 ? tame : hostile;
        const size_t length = round % 10 == 0 ? rng() % 3000 : rng() % 40;
        std::string name;
        for (size_t i = 0; i < length; ++i)
            name.push_back(alphabet[rng() % alphabet.size()]);
        const std::string text = name.substr(0, name.find('\0')); // as the exports read it
        Bstr n(name), ext(".e");
        const int16_t code = cIsFilenameValid(n.val());
        ASSERT_TRUE(code >= -1 && code <= 6) << code;
        valid_names += code == -1;
        PathParts parts;
        ASSERT_EQ(cSplitPath(n.val(), &parts), code);
        size_t fixed = 0;
        if (code == -1) {
            ASSERT_EQ(PathParts::of(parts.Drive) + PathParts::of(parts.Directory) + PathParts::of(parts.FileName) +
                          PathParts::of(parts.Ext),
                      text);
            fixed = PathParts::of(parts.Drive).size() + PathParts::of(parts.FileName).size() +
                    PathParts::of(parts.Ext).size();
        }

        const int32_t max = static_cast<int32_t>(rng() % 80);
        const std::string cut = str(cTruncatePath(n.val(), max));
        if (code != -1 || max < 25) {
            ASSERT_EQ(cut, "");
        } else if (fixed + 1 <= static_cast<size_t>(max)) {
            ASSERT_LE(cut.size(), static_cast<size_t>(max)) << text;
            ASSERT_FALSE(cut.empty());
        }

        const std::string stripped = str(cStripExtension(n.val()));
        ASSERT_EQ(text.compare(0, stripped.size(), stripped), 0) << "a prefix";
        const std::string file_part = str(cStripFilePath(n.val()));
        ASSERT_TRUE(text.size() >= file_part.size() &&
                    text.compare(text.size() - file_part.size(), file_part.size(), file_part) == 0)
            << "a suffix";
        const std::string with_ext = str(cDefaultExtension(n.val(), ext.val()));
        ASSERT_EQ(with_ext.compare(0, text.size(), text), 0);
        ASSERT_LE(str(cStripFileName(n.val())).size(), std::max<size_t>(text.size(), 2048) + 1);
        const int16_t legal = cFileIsLegal(n.val());
        ASSERT_TRUE(legal == 0 || legal == -1);
    }
    EXPECT_GT(valid_names, 300) << "the run must cover valid names too";
}
