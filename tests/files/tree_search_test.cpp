// Recursive walkers through the exported interface: the subdirectory
// table, the recursive totals and the searches into listing files.
#include "support/mem_temp_dir.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

using namespace brindle::test;
namespace fs = std::filesystem;

namespace {

class Tree : public TempDirTest {
  protected:
    // r\a.txt(1)  r\B.TXT(10)  r\c.dat(100)  r\noext(0)  r\.hid.txt
    // r\s1\d.txt(1000)  r\s1\s2\e.TXT(4097)  r\.git\f.txt
    void SetUp() override {
        TempDirTest::SetUp();
        fs::create_directories("r/s1/s2");
        fs::create_directories("r/.git");
        write_file("r/a.txt", "a");
        write_file("r/B.TXT", std::string(10, 'b'));
        write_file("r/c.dat", std::string(100, 'c'));
        write_file("r/noext", "");
        write_file("r/.hid.txt", "h");
        write_file("r/s1/d.txt", std::string(1000, 'd'));
        write_file("r/s1/s2/e.TXT", std::string(4097, 'e'));
        write_file("r/.git/f.txt", "f");
    }
    static int32_t count(int16_t which, std::string_view root, std::string_view mask, int32_t recurse) {
        Bstr r(root), m(mask);
        return cRcsCountFileDir(which, r.val(), m.val(), recurse);
    }
    static double cluster() {
        Bstr root("");
        return cGetDiskClusterSize(root.val());
    }
};

class ManyDirs : public MemTempDirTest {};

std::string all_subdirs(std::string_view root, int32_t *count) {
    Bstr r(root);
    return str(cAllSubDirectories(r.val(), count));
}

} // namespace

TEST_F(Tree, AllSubDirectoriesSortedAndJoinedByCarriageReturns) {
    fs::create_directories("r/A/x");
    const std::string all = "r\\A\rr\\A\\x\rr\\s1\rr\\s1\\s2\r";
    int32_t n = -7;
    EXPECT_EQ(all_subdirs("r", &n), all);
    EXPECT_EQ(n, 4);
    EXPECT_EQ(all_subdirs("r\\", &n), all) << "no second backslash";
    EXPECT_EQ(all_subdirs("r", nullptr), all);
    for (const char *none : {"r\\s1\\s2", "missing", ""}) {
        n = 5;
        EXPECT_EQ(all_subdirs(none, &n), "") << none;
        EXPECT_EQ(n, 0) << none;
    }
}

TEST_F(ManyDirs, AllSubDirectoriesStopsAtThreeThousand) {
    fs::create_directory("m");
    for (int i = 0; i < 3010; ++i)
        fs::create_directory("m/d" + std::to_string(i));
    int32_t n = 0;
    const std::string text = all_subdirs("m", &n);
    EXPECT_EQ(n, 3000);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\r'), 3000);
    std::istringstream in(text);
    std::string path;
    while (std::getline(in, path, '\r'))
        ASSERT_TRUE(fs::is_directory("m/" + path.substr(2))) << path;
}

TEST_F(Tree, RecursiveCountsOfFilesAndDirectories) {
    const struct {
        int16_t which;
        const char *mask;
        int32_t recurse, expected;
    } rows[] = {
        {0, "*.txt", -1, 4}, // a.txt B.TXT d.txt e.TXT; dotted names skipped
        {0, "*.txt", 0, 2},  {0, "*.TXT", 1, 4}, // any non-zero recurse walks
        {0, "", -1, 6},      {0, "*.*", -1, 6},  // every file, noext included
        {0, "*", 0, 4},      {0, "?.*", -1, 5},  {0, "*.zip", -1, 0},
        {1, "*.txt", -1, 2}, {1, "", 0, 1},      {5, "*", -1, 2}, // directories ignore the mask
    };
    for (const auto &r : rows)
        EXPECT_EQ(count(r.which, "r", r.mask, r.recurse), r.expected)
            << "which " << r.which << " mask " << r.mask << " recurse " << r.recurse;
    EXPECT_EQ(count(0, "", "*", -1), 0) << "an empty root is refused";
    EXPECT_EQ(count(0, "missing", "*", -1), 0);
}

TEST_F(Tree, RecursiveSizesOnDiskAndSlack) {
    Bstr root("r"), txt("*.txt"), all(""), none("*.zip");
    EXPECT_EQ(cRcsFilesSize(root.val(), txt.val(), -1), 1.0 + 10 + 1000 + 4097);
    EXPECT_EQ(cRcsFilesSize(root.val(), txt.val(), 0), 11.0);
    EXPECT_EQ(cRcsFilesSize(root.val(), all.val(), -1), 1.0 + 10 + 100 + 1000 + 4097);
    const double c = cluster();
    ASSERT_GT(c, 0);
    auto disk = [&](double size) { return std::ceil(size / c) * c; };
    const double expected = disk(1) + disk(10) + disk(1000) + disk(4097);
    EXPECT_EQ(cRcsFilesSizeOnDisk(root.val(), txt.val(), -1), expected);

    double size = -1, on_disk = -1;
    EXPECT_EQ(cRcsFilesSlack(root.val(), txt.val(), -1, &size, &on_disk),
              static_cast<int16_t>((expected - 5108) / expected * 100));
    EXPECT_EQ(size, 5108);
    EXPECT_EQ(on_disk, expected);
    EXPECT_EQ(cRcsFilesSlack(root.val(), none.val(), -1, &size, &on_disk), -1);
    EXPECT_EQ(size, 0) << "totals are reset by each call";
    EXPECT_EQ(on_disk, 0);
}

TEST_F(Tree, LinksBackUpTheTreeAreNotFollowed) {
    std::error_code e1, e2;
    fs::create_directory_symlink("..", "r/s1/up", e1);
    fs::create_directory_symlink("../..", "r/s1/s2/top", e2);
    if (e1 || e2)
        GTEST_SKIP() << "no symbolic links here";
    // The subdirectory table comes first: it stops at 3,000 entries, so a
    // walk that follows the links fails here instead of running for ever.
    int32_t n = 0;
    ASSERT_EQ(all_subdirs("r", &n), "r\\s1\rr\\s1\\s2\rr\\s1\\s2\\top\rr\\s1\\up\r") << "listed, not walked";
    ASSERT_EQ(n, 4);
    EXPECT_EQ(count(0, "r", "*", -1), 6);
    EXPECT_EQ(count(1, "r", "*", -1), 4) << "s1, s2 and the two links";
    Bstr root("r"), mask("*.txt"), out("");
    EXPECT_EQ(cSearchFile(root.val(), mask.val(), out.val()), 4);
}

TEST_F(Tree, SearchFileWritesFullPathsRootFirst) {
    Bstr root("r"), mask("*.txt"), out("found.lst");
    ASSERT_EQ(cSearchFile(root.val(), mask.val(), out.val()), 4);
    EXPECT_EQ(read_file("found.lst"), "r\\a.txt\r\nr\\B.TXT\r\nr\\s1\\d.txt\r\nr\\s1\\s2\\e.TXT\r\n");

    // An existing output is emptied; a mask that matches nothing gives 0.
    Bstr zip("*.zip");
    EXPECT_EQ(cSearchFile(root.val(), zip.val(), out.val()), 0);
    EXPECT_EQ(read_file("found.lst"), "");

    Bstr slashed("r\\"), none("");
    EXPECT_EQ(cSearchFile(slashed.val(), mask.val(), none.val()), 4) << "an empty output name only counts";
    EXPECT_EQ(cSearchFile(none.val(), mask.val(), none.val()), -1);
    EXPECT_EQ(cSearchFile(root.val(), none.val(), none.val()), -1);
    Bstr bad_out("nodir\\found.lst");
    EXPECT_EQ(cSearchFile(root.val(), mask.val(), bad_out.val()), -1);
    // The simple matcher's "*.*" wants a full stop, unlike the totals' mask.
    Bstr dotted("*.*");
    EXPECT_EQ(cSearchFile(root.val(), dotted.val(), none.val()), 5);
}

TEST_F(Tree, SearchFileAttribNeedsEveryGivenBit) {
    fs::permissions("r/s1/d.txt", fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    Bstr root("r"), mask("*"), out("ro.lst"), none("");
    EXPECT_EQ(cSearchFileAttrib(root.val(), mask.val(), 1, out.val()), 1);
    EXPECT_EQ(read_file("ro.lst"), "r\\s1\\d.txt\r\n");
    EXPECT_EQ(cSearchFileAttrib(root.val(), mask.val(), 1 | 32, none.val()), 1);
    EXPECT_EQ(cSearchFileAttrib(root.val(), mask.val(), 32, none.val()), 6) << "files read as archive";
    EXPECT_EQ(cSearchFileAttrib(root.val(), mask.val(), 1 | 2, none.val()), 0);
    EXPECT_EQ(cSearchFileAttrib(root.val(), mask.val(), -1, none.val()), 6) << "-1: no test";
    EXPECT_EQ(cSearchFileAttrib(root.val(), mask.val(), 0, none.val()), 6);
}

TEST_F(Tree, SearchDirListsMatchingDirectories) {
    fs::create_directories("r/s1/other/s3");
    Bstr root("r"), mask("S?"), out("dirs.lst"), none(""), all("*");
    ASSERT_EQ(cSearchDir(root.val(), mask.val(), out.val()), 3);
    EXPECT_EQ(read_file("dirs.lst"), "r\\s1\r\nr\\s1\\s2\r\nr\\s1\\other\\s3\r\n");
    EXPECT_EQ(cSearchDir(root.val(), all.val(), none.val()), 4);
    EXPECT_EQ(cSearchDir(none.val(), all.val(), none.val()), -1);
}
