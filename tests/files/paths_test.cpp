// Path names, through the exported interface. The validity codes, the raw
// splitter and normalise_path have their full tables in the engine test.
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
template <class F> int16_t code(F f, std::string_view name) {
    Bstr x(name);
    return f(x.val());
}

class PathsOnDisk : public TempDirTest {};

} // namespace

TEST(PathExports, SplitFillsOrEmptiesTheRecord) {
    // Names are read up to the first zero byte, as the system would see them.
    EXPECT_EQ(code(cIsFilenameValid, std::string_view("ok.txt\0*", 8)), -1);
    EXPECT_EQ(code(cIsFilenameValid, std::string(517, 'a')), 0);
    Bstr null_name;
    EXPECT_EQ(cIsFilenameValid(null_name.val()), 0);

    PathParts p;
    Bstr good("C:\\dir\\sub.d\\file.gz");
    EXPECT_EQ(cSplitPath(good.val(), &p), -1);
    EXPECT_EQ(PathParts::of(p.Drive) + "|" + PathParts::of(p.Directory) + "|" + PathParts::of(p.FileName) + "|" +
                  PathParts::of(p.Ext),
              "C:|\\dir\\sub.d\\|file|.gz");
    // A second call replaces the old strings (the leak checker sees the rest).
    Bstr bad("a.b.c");
    EXPECT_EQ(cSplitPath(bad.val(), &p), 0);
    for (BSTR field : {p.Drive, p.Directory, p.FileName, p.Ext})
        EXPECT_EQ(field, nullptr);
    Bstr colon("ab:");
    EXPECT_EQ(cSplitPath(colon.val(), nullptr), 5);
    Bstr d("c"), dir("\\dir"), n("file"), e("txt"), empty;
    EXPECT_EQ(str(cMakePath(d.val(), dir.val(), n.val(), e.val())), "c:\\dir\\file.txt");
    EXPECT_EQ(str(cMakePath(empty.val(), empty.val(), empty.val(), empty.val())), "");
}

TEST(PathExports, StripOneEndOfTheName) {
    const struct {
        BSTR(BRINDLE_CALL *f)(BSTR);
        const char *in, *out;
    } rows[] = {
        {cStripExtension, "dir.x\\file", "dir.x\\file"}, {cStripExtension, "file.tar.gz", "file.tar"},
        {cStripExtension, "dir/f.c", "dir/f"},           {cStripExtension, "d.x/f", "d.x/f"},
        {cStripExtension, "a\\b.c/d", "a\\b"}, // the backslash wins over a later slash
        {cStripFilePath, "C:\\dir\\file.txt", "file.txt"}, {cStripFilePath, "a/b\\c/d", "c/d"},
        {cStripFilePath, "file", "file"},                  {cStripFilePath, "dir\\", ""},
        {cStripFileName, "file.txt", "."},                 {cStripFileName, "C:\\file.txt", "C:\\"},
        {cStripFileName, "C:/dir/file.txt", "C:\\dir"},    {cStripFileName, "dir/sub/f", "dir\\sub"},
        {cStripFileName, "\\f", "\\"},                     {cStripFileName, "", ""},
    };
    for (const auto &r : rows)
        EXPECT_EQ(call(r.f, r.in), r.out) << r.in;
}

TEST(PathExports, ExtensionsKeepAnExistingOne) {
    // The fixed and add rules give what the default rule gives.
    const struct {
        const char *name, *ext, *out;
    } rows[] = {
        {"file", ".txt", "file.txt"}, {"file", "txt", "file.txt"}, {"file.", "txt", "file."},
        {"a.txt", "dat", "a.txt"},    {"a.txt", ".dat", "a.txt"},  {"dir.d\\a", "x", "dir.d\\a.x"},
        {"dir.x/f", "x", "dir.x/f.x"}, {"file", "", "file"},        {"", "txt", ""},
    };
    for (const auto &r : rows)
        for (auto f : {cDefaultExtension, cFixedExtension, cAddExtension})
            EXPECT_EQ(call(f, r.name, r.ext), r.out) << r.name << " + " << r.ext;
}

TEST(PathExports, TruncateKeepsWhatFitsAndMarksTheCut) {
    // drive 2 + name 4 + ext 4 = 10, so 20 characters of room for the
    // directory "\first\second-long-part\third\" (31).
    const std::string path = "C:\\first\\second-long-part\\third\\file.txt";
    const std::string long_name = "\\dir\\" + std::string(30, 'n') + ".txt";
    const struct {
        std::string path;
        int32_t max;
        std::string out;
    } rows[] = {
        {"C:\\a\\b.txt", 24, ""},  {"C:\\a\\b.txt", -5, ""}, {"C:\\a\\b.txt", 25, "C:\\a\\b.txt"},
        {"C:\\a*\\b.txt", 100, ""}, {"a/b", 80, ""},          {path, 30, "C:\\first\\third.file.txt"},
        {path, static_cast<int32_t>(path.size()), path},
        // Nothing fits beside a long name: only the leading backslash, marked.
        {long_name, 30, "." + std::string(30, 'n') + ".txt"},
    };
    for (const auto &r : rows)
        EXPECT_EQ(call([&](BSTR p) { return cTruncatePath(p, r.max); }, r.path), r.out) << r.path << " " << r.max;
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
    EXPECT_TRUE(drive[0] >= 'A' && drive[0] <= 'Z') << drive;
    EXPECT_EQ(call(cFileDrive, "sub\\nothing.txt"), " ");
    EXPECT_EQ(call(cFileDrive, ""), " ");

    for (const char *name : {"sub\\f.txt", "sub", "sub/f.txt"})
        EXPECT_EQ(code(cFilePathExists, name), -1) << name;
    EXPECT_EQ(code(cFilePathExists, "nothing\\f.txt"), 2);
#ifndef _WIN32
    if (::geteuid() != 0) {
        fs::create_directory("locked");
        write_file("locked/in.txt", "x");
        fs::permissions("locked", fs::perms::none);
        EXPECT_EQ(code(cFilePathExists, "locked\\in.txt"), 13);
        fs::permissions("locked", fs::perms::owner_all);
    }
#endif
}

TEST_F(PathsOnDisk, FileIsLegalRefusesNamesResolvedToAnotherEntry) {
    fs::create_directories("dir/inner");
    write_file("dir/inner/real.txt", "x");
    const struct {
        const char *name;
        int16_t code;
    } rows[] = {
        {"dir\\inner\\real.txt", -1}, {"dir\\inner\\new.txt", -1}, // a missing component is no failure
        {"dir\\in*\\real.txt", 0},    {"dir\\inner\\re?l.txt", 0}, {"dir\\inner\\", -1}, {"", 0},
    };
    for (const auto &r : rows)
        EXPECT_EQ(code(cFileIsLegal, r.name), r.code) << r.name;
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
        const int16_t valid = cIsFilenameValid(n.val());
        ASSERT_TRUE(valid >= -1 && valid <= 6) << valid;
        valid_names += valid == -1;
        PathParts parts;
        ASSERT_EQ(cSplitPath(n.val(), &parts), valid);
        size_t fixed = 0;
        if (valid == -1) {
            ASSERT_EQ(PathParts::of(parts.Drive) + PathParts::of(parts.Directory) + PathParts::of(parts.FileName) +
                          PathParts::of(parts.Ext),
                      text);
            fixed = PathParts::of(parts.Drive).size() + PathParts::of(parts.FileName).size() +
                    PathParts::of(parts.Ext).size();
        }

        const int32_t max = static_cast<int32_t>(rng() % 80);
        const std::string cut = str(cTruncatePath(n.val(), max));
        if (valid != -1 || max < 25) {
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
