// The platform's directory search, attributes, times, status and volume
// queries, in a scratch directory with relative Windows names.
#include "platform/directory.h"
#include "platform/file.h"
#include "platform/file_info.h"
#include "runtime/unique_name.h"

#include "support/temp_dir.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

using namespace brindle::platform;
using brindle::runtime::make_unique_name;
namespace fs = std::filesystem;

namespace {

class DirTest : public brindle::test::TempDirTest {
  protected:
    static std::vector<std::string> list(std::string_view pattern, EntryDetail detail = EntryDetail::Full) {
        std::vector<std::string> names;
        DirectorySearch s;
        for (bool ok = s.first(pattern, detail); ok; ok = s.next())
            names.push_back(s.entry().name);
        return names;
    }
    static uint32_t attrs(std::string_view path) {
        uint32_t a = 0;
        EXPECT_EQ(get_attributes(path, &a), 0) << path;
        return a;
    }
    // Whether this file system keeps user extended attributes.
    static bool xattrs_work() {
        write_file("probe.tmp", "");
        const bool ok = set_attributes("probe.tmp", kAttrSystem) == 0;
        fs::remove("probe.tmp");
        return ok;
    }
};

} // namespace

TEST(SystemPattern, WindowsWildcardRules) {
    const struct {
        const char *name, *pattern;
        bool match;
    } rows[] = {
        {"abc", "*.*", true},       {"abc", "*", true},          {".", "*", true},
        {"a.txt", "*.TXT", true},   {"a.txt.bak", "*.txt", false}, {"a.b.txt", "*.txt", true},
        {"abc", "*.", true},        {"a.b", "*.", false},        {"abc", "a*.*", true},
        {"abc", "abc.*", true},     {"abc.d", "abc.*", true},    {"abcd", "abc.*", false},
        {"ab", "a?", true},         {"a", "a?", true},           {"a.x", "a?.x", true},
        {"abc", "a?", false},       {"ac", "a?c", false},        {"a.c", "a?c", false},
        {"file1.txt", "file?.txt", true}, {"FILE.TXT", "file.txt", true}, {"file.txt", "f*e.t?t", true},
        {"", "?", true},            {"x", "", false},            {"aaaaaaaaaaaaaaaaaaaaaaab", "*a*a*a*a*a*a*c", false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(system_pattern_match(row.name, row.pattern), row.match) << row.name << " ~ " << row.pattern;
    EXPECT_TRUE(has_wildcard("a*b"));
    EXPECT_TRUE(has_wildcard("a?"));
    EXPECT_FALSE(has_wildcard("a.b"));
}

TEST_F(DirTest, SearchListsMatchesSortedWithDotEntries) {
    fs::create_directories("d/sub");
    for (const char *n : {"d/b.txt", "d/A.txt", "d/c.dat", "d/.hid"})
        write_file(n, "12345");
#ifndef _WIN32
    // Sorted without regard to case, "." and ".." first.
    EXPECT_EQ(list("d\\*.*"), (std::vector<std::string>{".", "..", ".hid", "A.txt", "b.txt", "c.dat", "sub"}));
#endif
    const auto txt = list("d/*.txt");
    EXPECT_EQ(std::set<std::string>(txt.begin(), txt.end()), (std::set<std::string>{"A.txt", "b.txt"}));
    EXPECT_EQ(list("d\\B.TXT"), (std::vector<std::string>{"b.txt"})) << "case is ignored";
    EXPECT_EQ(list("d\\b.txt"), (std::vector<std::string>{"b.txt"}));
    EXPECT_TRUE(list("d\\*.zip").empty());
    EXPECT_TRUE(list("missing\\*.*").empty());
    EXPECT_TRUE(list("d\\").empty()) << "no name part, no match";
    EXPECT_TRUE(list("").empty());

    DirectorySearch s;
    ASSERT_TRUE(s.first("d\\*"));
    std::set<std::string> dirs;
    do {
        if (s.entry().attributes & kAttrDirectory)
            dirs.insert(s.entry().name);
        else
            EXPECT_EQ(s.entry().size, 5u) << s.entry().name;
    } while (s.next());
    EXPECT_EQ(dirs, (std::set<std::string>{".", "..", "sub"}));
    EXPECT_FALSE(s.next()) << "stays at the end";
    s.close();
    EXPECT_FALSE(s.next());
}

TEST_F(DirTest, KindDetailStillTellsDirectoriesAndLinks) {
    fs::create_directories("t/dir");
    write_file("t/f", "x");
    std::error_code e1, e2;
    fs::create_directory_symlink("dir", "t/link", e1);
    fs::create_symlink("nowhere", "t/dangling", e2);
    if (e1 || e2)
        GTEST_SKIP() << "no symbolic links here";
    for (EntryDetail detail : {EntryDetail::Kind, EntryDetail::Size, EntryDetail::Full}) {
        DirectorySearch s;
        std::set<std::string> dirs, links, all;
        for (bool ok = s.first("t\\*.*", detail); ok; ok = s.next()) {
            all.insert(s.entry().name);
            if (s.entry().attributes & kAttrDirectory)
                dirs.insert(s.entry().name);
            if (s.entry().attributes & kAttrReparsePoint)
                links.insert(s.entry().name);
        }
        EXPECT_EQ(all, (std::set<std::string>{".", "..", "dangling", "dir", "f", "link"}));
        EXPECT_EQ(dirs, (std::set<std::string>{".", "..", "dir", "link"}));
        EXPECT_EQ(links, (std::set<std::string>{"dangling", "link"}));
    }
}

#ifndef _WIN32 // the POSIX side of the attribute convention
TEST_F(DirTest, AttributesFollowTheSambaConvention) {
    write_file("plain.txt", "x");
    write_file(".dotted", "x");
    fs::create_directory("folder");
    EXPECT_EQ(attrs("plain.txt"), static_cast<uint32_t>(kAttrArchive));
    EXPECT_EQ(attrs(".dotted"), static_cast<uint32_t>(kAttrArchive | kAttrHidden));
    EXPECT_EQ(attrs("folder"), static_cast<uint32_t>(kAttrDirectory));
    uint32_t a = 0;
    EXPECT_EQ(get_attributes("missing.txt", &a), kNoSuchFile);

    // Read-only lives in the permission bits and needs no extended attribute.
    EXPECT_EQ(set_attributes("plain.txt", kAttrArchive | kAttrReadOnly), 0);
    EXPECT_EQ(attrs("plain.txt"), static_cast<uint32_t>(kAttrArchive | kAttrReadOnly));
    EXPECT_EQ(fs::status("plain.txt").permissions() & fs::perms::owner_write, fs::perms::none);
    EXPECT_EQ(set_attributes("plain.txt", kAttrArchive), 0);
    EXPECT_NE(fs::status("plain.txt").permissions() & fs::perms::owner_write, fs::perms::none);

    EXPECT_NE(set_attributes("plain.txt", kAttrCompressed), 0) << "cannot be stored";
    EXPECT_NE(set_attributes(".dotted", kAttrArchive), 0) << "the name says hidden";
    EXPECT_EQ(attrs(".dotted"), static_cast<uint32_t>(kAttrArchive | kAttrHidden)) << "unchanged";
    EXPECT_EQ(set_attributes("missing.txt", 0), kNoSuchFile);

    if (!xattrs_work())
        GTEST_SKIP() << "no user extended attributes here";
    EXPECT_EQ(set_attributes("plain.txt", kAttrHidden | kAttrSystem | kAttrReadOnly), 0);
    EXPECT_EQ(attrs("plain.txt"), static_cast<uint32_t>(kAttrHidden | kAttrSystem | kAttrReadOnly));
    EXPECT_EQ(set_attributes("plain.txt", 0), 0);
    EXPECT_EQ(attrs("plain.txt"), static_cast<uint32_t>(kAttrNormal)) << "no bit at all reads as normal";
    EXPECT_EQ(set_attributes("folder", kAttrSystem | kAttrDirectory), 0);
    EXPECT_EQ(attrs("folder"), static_cast<uint32_t>(kAttrSystem | kAttrDirectory));

    // The search reads the same word, but only when asked for everything.
    DirectorySearch s;
    ASSERT_TRUE(s.first("plain.txt", EntryDetail::Full));
    EXPECT_EQ(s.entry().attributes, static_cast<uint32_t>(kAttrNormal));
}
#endif

TEST_F(DirTest, TimesRoundTripAndStatusReportsErrors) {
    write_file("t.bin", "abc");
    const int64_t when = file_time_from_unix(1000000000, 0); // 2001-09-09
    const int64_t later = when + 12345670;                  // 1.234567 s later
    ASSERT_EQ(set_file_times("t.bin", nullptr, &when, &later), 0);
    FileTimes t;
    ASSERT_EQ(get_file_times("t.bin", &t), 0);
    EXPECT_EQ(t.accessed, when);
    EXPECT_EQ(t.written, later);
    // Setting the write time back does not move the creation time: it stays
    // when the file was made (or, without a birth time, the write time).
    EXPECT_GE(t.created, t.written);
    EXPECT_EQ(set_file_times("nothing.bin", nullptr, &when, nullptr), kNoSuchFile);

    FileStatus st;
    ASSERT_EQ(file_status("t.bin", &st), 0);
    EXPECT_EQ(st.size, 3);
    EXPECT_FALSE(st.is_directory);
    EXPECT_EQ(st.times.written, later);
    EXPECT_EQ(file_status("nothing.bin", &st), kNoSuchFile);
    EXPECT_EQ(file_status("t.bin\\below", &st), kNoSuchFile);
    EXPECT_EQ(file_status("", &st), kNoSuchFile);
}

TEST_F(DirTest, VolumeSpaceIsConsistent) {
    VolumeSpace v;
    ASSERT_TRUE(volume_space("", &v));
    EXPECT_GT(v.bytes_per_sector, 0u);
    EXPECT_GT(v.sectors_per_cluster, 0u);
    EXPECT_LE(v.free_clusters, v.total_clusters);
    EXPECT_EQ(v.total_bytes % (uint64_t{v.bytes_per_sector} * v.sectors_per_cluster), 0u);
    EXPECT_LE(v.caller_free_bytes, v.free_bytes);
    EXPECT_LE(v.free_bytes, v.total_bytes);
    EXPECT_FALSE(volume_space("no-such-dir\\", &v));
}

TEST_F(DirTest, FullPathResolvesAgainstTheCurrentDirectory) {
    const std::string cwd = current_directory();
    ASSERT_GE(cwd.size(), 3u);
    EXPECT_EQ(cwd.substr(1, 2), ":\\");
    std::string out;
    ASSERT_TRUE(full_path("a\\b\\..\\c.txt", &out));
    EXPECT_EQ(out, cwd + "\\a\\c.txt");
    ASSERT_TRUE(full_path(".\\x/y\\", &out));
    EXPECT_EQ(out, cwd + "\\x\\y\\");
    ASSERT_TRUE(full_path("C:\\..\\..\\z", &out));
    EXPECT_EQ(out, "C:\\z");
    ASSERT_TRUE(full_path("\\\\srv\\share\\a\\..\\b", &out));
    EXPECT_EQ(out, "\\\\srv\\share\\b");
    EXPECT_FALSE(full_path("", &out));
    EXPECT_FALSE(full_path(std::string(300, 'a'), &out)) << "does not fit 260";
}

TEST_F(DirTest, UniqueNamesAvoidExistingFiles) {
    std::string name = "abXXXXXX";
    ASSERT_TRUE(make_unique_name(&name));
    EXPECT_EQ(name.size(), 8u);
    EXPECT_EQ(name.substr(0, 3), "aba");
    write_file(name, "taken");
    std::string second = "abXXXXXX";
    ASSERT_TRUE(make_unique_name(&second));
    EXPECT_EQ(second[2], 'b');
    EXPECT_EQ(second.substr(3), name.substr(3));
    std::string bad = "abXXXX";
    EXPECT_FALSE(make_unique_name(&bad));
}
