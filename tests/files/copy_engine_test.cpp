// Engines of the copy and attribute family, and the platform's read-only
// rule, tested directly.
#include "files/file_compare.h"
#include "files/file_time_record.h"
#include "files/set_copy.h"
#include "files/tree_delete.h"
#include "platform/file.h"
#include "platform/file_info.h"
#include "platform/file_ops.h"
#include "platform/replace_file.h"
#include "support/system_attributes.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace brindle;
using namespace brindle::files;
namespace fs = std::filesystem;

// Expected records from Python: datetime(1601, 1, 1) + timedelta(microseconds=ft // 10),
// day of week as isoweekday() % 7.
TEST(FileTimeRecord, MatchesThePythonCalendar) {
    struct Row {
        int64_t ft;
        CalendarTime t;
    };
    const Row rows[] = {
        {0, {1601, 1, 1, 1, 0, 0, 0, 0}},
        {116444736000000000, {1970, 1, 4, 1, 0, 0, 0, 0}},
        {132587091670000000, {2021, 2, 4, 25, 6, 46, 7, 0}},
        {125911584012345678, {2000, 1, 6, 1, 0, 0, 1, 234}},
        {2650467743999999999, {9999, 12, 5, 31, 23, 59, 59, 999}},
        {504911231999999999, {3200, 12, 0, 31, 23, 59, 59, 999}},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(r.ft);
        const auto t = calendar_from_file_time(r.ft);
        ASSERT_TRUE(t.has_value());
        EXPECT_EQ(t->year, r.t.year);
        EXPECT_EQ(t->month, r.t.month);
        EXPECT_EQ(t->day_of_week, r.t.day_of_week);
        EXPECT_EQ(t->day, r.t.day);
        EXPECT_EQ(t->hour, r.t.hour);
        EXPECT_EQ(t->minute, r.t.minute);
        EXPECT_EQ(t->second, r.t.second);
        EXPECT_EQ(t->milliseconds, r.t.milliseconds);
        // Back again, to the millisecond.
        EXPECT_EQ(file_time_from_calendar(*t), r.ft / 10000 * 10000);
    }
    EXPECT_FALSE(calendar_from_file_time(-1).has_value());
    // 2000-02-29 12:34:56.789 by Python: 125963012967890000.
    EXPECT_EQ(file_time_from_calendar({2000, 2, 0, 29, 12, 34, 56, 789}), 125963012967890000);
}

TEST(FileTimeRecord, RefusesWhatIsNoDate) {
    const CalendarTime bad[] = {
        {1600, 12, 0, 31, 0, 0, 0, 0}, {30828, 1, 0, 1, 0, 0, 0, 0}, {2001, 2, 0, 29, 0, 0, 0, 0},
        {1900, 2, 0, 29, 0, 0, 0, 0},  {2000, 13, 0, 1, 0, 0, 0, 0}, {2000, 0, 0, 1, 0, 0, 0, 0},
        {2000, 4, 0, 31, 0, 0, 0, 0},  {2000, 1, 0, 0, 0, 0, 0, 0},  {2000, 1, 0, 1, 24, 0, 0, 0},
        {2000, 1, 0, 1, 0, 60, 0, 0},  {2000, 1, 0, 1, 0, 0, 60, 0}, {2000, 1, 0, 1, 0, 0, 0, 1000},
        {2000, 1, 0, 1, -1, 0, 0, 0},
    };
    for (const CalendarTime &t : bad)
        EXPECT_FALSE(file_time_from_calendar(t).has_value()) << t.year << "-" << t.month << "-" << t.day;
    EXPECT_TRUE(file_time_from_calendar({2000, 2, 0, 29, 0, 0, 0, 0}).has_value());
    EXPECT_TRUE(file_time_from_calendar({30827, 12, 9, 31, 23, 59, 59, 999}).has_value()); // day of week ignored
}

TEST(ContentBlocks, StopAtASharedZeroByte) {
    struct Row {
        std::string a, b;
        bool case_sensitive, equal;
    };
    const Row rows[] = {
        {"abc", "abc", true, true},
        {"abc", "ABC", false, true},
        {"abc", "ABC", true, false},
        {std::string("a\0b", 3), std::string("a\0c", 3), true, true},
        {std::string("a\0b", 3), std::string("abb", 3), true, false},
        {"\xE4", "\xC4", false, false}, // only A-Z fold
        {"[", "{", false, false},
    };
    for (const Row &r : rows)
        EXPECT_EQ(blocks_equal(r.a.data(), r.b.data(), r.a.size(), r.case_sensitive), r.equal) << r.a;
}

TEST(SetCopy, ProgressTextLayouts) {
    EXPECT_EQ(progress_text("s\\a", "t\\a", 0), "s\\a >>> t\\a");
    EXPECT_EQ(progress_text("s\\a", "t\\a", 8 + 1), "s\\a\r\n >>> t\\a");
}

TEST(TreeDelete, RootsAndEmptyNamesAreRefused) {
    for (const char *root : {"", "\\", "/", "C:\\", "c:", "c:/", "C:\\..\\..", "\\\\srv\\share", "\\\\srv\\share\\",
                             "\\..", "C:\\.\\"})
        EXPECT_TRUE(is_root_or_empty(root)) << root;
    for (const char *dir : {"a", ".", "C:\\x", "\\\\srv\\share\\x", "\\tmp"})
        EXPECT_FALSE(is_root_or_empty(dir)) << dir;
    EXPECT_TRUE(is_root_or_empty(std::string_view("a\0b", 3)));
}

class ReadOnlyRule : public test::TempDirTest {};

// The platform refuses to write, truncate, delete or replace a read-only
// file for every user; the suite runs as root in CI, whom the permission
// bits alone would let through.
TEST_F(ReadOnlyRule, PlatformRefusesWritesDeletesAndReplacements) {
    write_file("ro", "keep");
    write_file("other", "x");
    ASSERT_EQ(platform::set_attributes("ro", platform::kAttrReadOnly), platform::kNoError);
    for (platform::OpenMode m : {platform::OpenMode::ReadWrite, platform::OpenMode::Create,
                                 platform::OpenMode::CreateReadWrite, platform::OpenMode::Append}) {
        int error = 0;
        EXPECT_FALSE(platform::File::open("ro", m, &error).is_open());
        EXPECT_EQ(error, platform::kAccessDenied);
    }
    EXPECT_TRUE(platform::File::open("ro", platform::OpenMode::Read).is_open());
    EXPECT_FALSE(platform::delete_file("ro"));
    EXPECT_EQ(platform::remove_file("ro"), platform::kAccessDenied);
    EXPECT_EQ(platform::system_copy_file("other", "ro", false), platform::kSysAccessDenied);
    EXPECT_EQ(platform::system_move_file("other", "ro", true, true), platform::kSysAccessDenied);
    EXPECT_FALSE(platform::rename_file("other", "ro"));
    EXPECT_FALSE(platform::replace_file("other", "ro"));
    EXPECT_EQ(read_file("other"), "x");
    EXPECT_EQ(read_file("ro"), "keep");
    // A read-only source moves and copies as itself.
    EXPECT_EQ(platform::system_copy_file("ro", "copy", false), platform::kSysOk);
    uint32_t a = 0;
    ASSERT_EQ(platform::get_attributes("copy", &a), platform::kNoError);
    EXPECT_TRUE(a & platform::kAttrReadOnly);
    EXPECT_EQ(platform::system_move_file("ro", "moved", false, false), platform::kSysOk);
    EXPECT_EQ(read_file("moved"), "keep");
    // A read-only directory is not removed. Where the system keeps no
    // read-only bit on a directory (Wine), setting it fails instead.
    fs::create_directory("d");
    if (test::system_keeps_read_only_directories()) {
        ASSERT_EQ(platform::set_attributes("d", platform::kAttrReadOnly), platform::kNoError);
        EXPECT_EQ(platform::remove_directory("d"), platform::kAccessDenied);
        EXPECT_TRUE(fs::is_directory("d"));
        ASSERT_EQ(platform::set_attributes("d", 0), platform::kNoError);
    } else {
        EXPECT_EQ(platform::set_attributes("d", platform::kAttrReadOnly), platform::kAccessDenied);
        ASSERT_EQ(platform::get_attributes("d", &a), platform::kNoError);
        EXPECT_EQ(a & platform::kAttrReadOnly, 0u);
    }
    EXPECT_EQ(platform::remove_directory("d"), platform::kNoError);
    for (const char *f : {"copy", "moved"})
        platform::set_attributes(f, 0);
}

TEST_F(ReadOnlyRule, ANewFileIsWrittenWhateverItsModeBecomes) {
    // Creating a file is no write to an existing read-only one.
    int error = -1;
    platform::File f = platform::File::open("new", platform::OpenMode::CreateNew, &error);
    ASSERT_TRUE(f.is_open());
    EXPECT_TRUE(f.write("abc", 3));
    f.close();
    platform::File g = platform::File::open("new", platform::OpenMode::Create, &error);
    ASSERT_TRUE(g.is_open());
    g.close();
    EXPECT_EQ(read_file("new"), ""); // truncated as asked
}
