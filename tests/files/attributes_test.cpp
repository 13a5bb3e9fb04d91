// Attribute, comparison, question and file-time exports through the
// exported interface, in a scratch directory.
#include "support/ole_helpers.h"
#include "support/system_attributes.h"
#include "support/temp_dir.h"

#include <ctime>
#include <filesystem>
#include <string>

using namespace brindle::test;
namespace fs = std::filesystem;

// The client's records, declared as a VB program declares them: eight
// Integers each.
struct FileAttributes {
    int16_t Status, Archive, Hidden, Normal, ReadOnly, Directory, System, Compressed;
};
struct FileTimeParts {
    int16_t Year, Month, DayOfWeek, Day, Hour, Minute, Second, Milliseconds;
};

namespace {

class Attributes : public TempDirTest {};

FileAttributes get(const std::string &f) {
    Bstr n(f);
    FileAttributes a{};
    const int16_t r = cFileGetAttrib(n.ref(), &a);
    EXPECT_EQ(r, a.Status == -1 ? -1 : 0);
    return a;
}

int16_t cmp(int16_t(BRINDLE_CALL *f)(BSTR *, BSTR *), const std::string &a, const std::string &b) {
    Bstr x(a), y(b);
    return f(x.ref(), y.ref());
}

int16_t contents(const std::string &a, const std::string &b, int16_t case_sensitive) {
    Bstr x(a), y(b);
    return cCmpFileContents(x.ref(), y.ref(), case_sensitive);
}

} // namespace

TEST_F(Attributes, RecordReadsAndWritesTheBits) {
    write_file("f", "x");
    fs::create_directory("d");
    FileAttributes a = get("f");
    EXPECT_EQ(a.Status, -1);
    EXPECT_EQ(a.Archive, -1); // a new file carries the archive bit
    EXPECT_EQ(a.ReadOnly, 0);
    EXPECT_EQ(a.Directory, 0);
    EXPECT_EQ(get("d").Directory, -1);
    EXPECT_EQ(get("missing").Status, 2);

    Bstr f("f");
    FileAttributes want{0, 0, 1, 0, 5, -1, -1, -1}; // any non-zero sets; directory and compressed ignored
    EXPECT_EQ(cFileSetAttrib(f.ref(), &want), -1);
    EXPECT_EQ(want.Status, -1);
    a = get("f");
    EXPECT_EQ(a.Hidden, -1);
    EXPECT_EQ(a.ReadOnly, -1);
    EXPECT_EQ(a.System, -1);
    // Where the system reports archive on every file (Wine), the record
    // reads what the system keeps.
    const bool clears_archive = system_clears_archive();
    EXPECT_EQ(a.Archive, clears_archive ? 0 : -1);
    EXPECT_EQ(a.Directory, 0);
    EXPECT_EQ(a.Compressed, 0);
    FileAttributes plain{0, 0, 0, -1, 0, 0, 0, 0};
    EXPECT_EQ(cFileSetAttrib(f.ref(), &plain), -1);
    a = get("f");
    EXPECT_EQ(a.Normal, clears_archive ? -1 : 0);
    EXPECT_EQ(a.ReadOnly + a.Hidden + a.System, 0);
    EXPECT_EQ(a.Archive, clears_archive ? 0 : -1);
    Bstr missing("missing");
    EXPECT_EQ(cFileSetAttrib(missing.ref(), &plain), 0);
    EXPECT_EQ(plain.Status, 2);
    EXPECT_EQ(cFileSetAttrib(f.ref(), nullptr), 0);
}

// Each setter sets its bit and keeps the others; each resetter clears only
// its own; each question sees exactly its bit.
TEST_F(Attributes, SettersResettersAndQuestions) {
    using Fn = int16_t(BRINDLE_CALL *)(BSTR *);
    struct Row {
        Fn set, reset, is;
        int16_t FileAttributes::*field;
    };
    const Row rows[] = {
        {cFileSetArchive, cFileResetArchive, cIsFileArchive, &FileAttributes::Archive},
        {cFileSetHidden, cFileResetHidden, cIsFileHidden, &FileAttributes::Hidden},
        {cFileSetReadOnly, cFileResetReadOnly, cIsFileReadOnly, &FileAttributes::ReadOnly},
        {cFileSetSystem, cFileResetSystem, cIsFileSystem, &FileAttributes::System},
    };
    write_file("f", "x");
    Bstr f("f"), missing("missing");
    ASSERT_EQ(cFileResetAllAttrib(f.ref()), -1);
    // Wine reports archive on every file: there that bit stays set.
    const bool clears_archive = system_clears_archive();
    auto cleared = [&](const Row &r) { return clears_archive || r.field != &FileAttributes::Archive ? 0 : -1; };
    for (const Row &r : rows) {
        EXPECT_EQ(r.is(f.ref()), cleared(r));
        EXPECT_EQ(r.set(f.ref()), -1);
        EXPECT_EQ(r.is(f.ref()), -1);
        EXPECT_EQ(cIsFileNormal(f.ref()), 0);
        EXPECT_EQ(r.set(missing.ref()), 0);
        EXPECT_EQ(r.reset(missing.ref()), 0);
        EXPECT_EQ(r.is(missing.ref()), 0);
    }
    EXPECT_EQ(cIsFileFlag(f.ref(), 39), -1);
    for (const Row &r : rows) {
        EXPECT_EQ(r.reset(f.ref()), -1);
        EXPECT_EQ(r.is(f.ref()), cleared(r));
        EXPECT_EQ(get("f").*r.field, cleared(r));
    }
    EXPECT_EQ(cIsFileNormal(f.ref()), clears_archive ? -1 : 0);

    EXPECT_EQ(cFileSetAllAttrib(f.ref()), -1);
    EXPECT_EQ(cIsFileFlag(f.ref(), 1 + 2 + 4 + 32), -1);
    EXPECT_EQ(cFileResetFlag(f.ref(), 2 + 4), -1);
    EXPECT_EQ(cIsFileFlag(f.ref(), 1 + 32), -1);
    EXPECT_EQ(cIsFileFlag(f.ref(), 1 + 2), 0);
    EXPECT_EQ(cFileSetFlag(f.ref(), 4), -1);
    EXPECT_EQ(cIsFileSystem(f.ref()), -1);
    EXPECT_EQ(cFileResetAllAttrib(f.ref()), -1);
    EXPECT_EQ(cIsFileFlag(f.ref(), 1), 0);
    EXPECT_EQ(cIsFileCompressed(f.ref()), 0);
#ifndef _WIN32
    EXPECT_EQ(cFileSetFlag(f.ref(), 2048), 0); // no compression to set here (Windows ignores the bit)
#endif
    fs::create_directory("d");
    Bstr d("d");
    EXPECT_EQ(cIsFileSubDir(d.ref()), -1);
    EXPECT_EQ(cIsFileSubDir(f.ref()), 0);
}

TEST_F(Attributes, SizesAndEmptiness) {
    write_file("e", "");
    write_file("s", std::string(1234, 'a'));
    fs::create_directory("d");
    Bstr e("e"), s("s"), d("d"), m("missing");
    EXPECT_EQ(cIsFileEmpty(e.ref()), -1);
    EXPECT_EQ(cIsFileEmpty(s.ref()), 0);
    EXPECT_EQ(cIsFileEmpty(m.ref()), 0);
    EXPECT_EQ(cFileSize(s.ref()), 1234);
    EXPECT_EQ(cFileSize(e.ref()), 0);
    EXPECT_EQ(cFileSize(m.ref()), -1);
    EXPECT_EQ(cFileSize(d.ref()), -1);
    EXPECT_EQ(cmp(cCmpFileSize, "s", "e"), 1);
    EXPECT_EQ(cmp(cCmpFileSize, "e", "s"), -1);
    EXPECT_EQ(cmp(cCmpFileSize, "s", "s"), 0);
    EXPECT_EQ(cmp(cCmpFileSize, "s", "missing"), -2);
    EXPECT_EQ(cmp(cCmpFileAttribute, "s", "e"), -1);
    EXPECT_EQ(cmp(cCmpFileAttribute, "s", "d"), 0);
    EXPECT_EQ(cmp(cCmpFileAttribute, "missing", "d"), -2);
}

TEST_F(Attributes, ContentComparisons) {
    struct Row {
        std::string a, b;
        int16_t case_flag, want;
    };
    const std::string block(32768, 'q');
    const Row rows[] = {
        {"ABC", "ABC", -1, -1},
        {"ABC", "abc", 0, -1},  // case ignored
        {"ABC", "abc", -1, 0},
        {"ABC", "abc", 1, -1},  // only -1 is True
        {"ABC", "ABD", 0, 0},
        {"ABC", "ABCD", 0, 0},  // sizes differ
        {"", "", -1, -1},
        // A zero byte shared at one place ends that block's comparison ...
        {std::string("ab\0xyz", 6), std::string("ab\0XQZ", 6), -1, -1},
        // ... but not the next block's.
        {std::string("a\0", 2) + block.substr(2) + "x", std::string("a\0", 2) + block.substr(2) + "y", -1, 0},
        // A zero byte in only one of them is a difference.
        {std::string("a\0c", 3), "abc", 0, 0},
    };
    for (const Row &r : rows) {
        write_file("a", r.a);
        write_file("b", r.b);
        EXPECT_EQ(contents("a", "b", r.case_flag), r.want) << r.a.size() << " " << r.case_flag;
    }
    EXPECT_EQ(contents("a", "missing", -1), 0);
    EXPECT_EQ(contents("missing", "a", -1), 0);
}

TEST_F(Attributes, Questions) {
    write_file("plain.txt", "x");
    write_file("tool.exe", "");
    write_file("script", "#!/bin/sh\n");
    write_file("image", "MZ\x90");
    write_file("rexx", "/*! */");
    write_file("run.bat", "");
    fs::create_directory("dir");
    struct Row {
        const char *name;
        int16_t readable, writeable, executable, directory;
    };
    const Row rows[] = {
        {"plain.txt", -1, -1, 0, 0}, {"tool.exe", -1, -1, -1, 0}, {"TOOL.EXE", -2, -2, -2, 0},
        {"script", -1, -1, -1, 0},   {"image", -1, -1, -1, 0},    {"rexx", -1, -1, -1, 0},
        {"run", 0, 0, -1, 0},        {"dir", -1, -1, 0, -1},      {"dir\\", -1, -1, 0, -1},
        {"dir/", 0, 0, 0, -1},       {"missing", 0, 0, 0, 0},     {"", 0, 0, 0, 0},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(r.name);
        Bstr n(r.name);
        // -2: depends on whether the file system ignores case; not checked.
        if (r.readable != -2) {
            EXPECT_EQ(cFileIsReadable(n.ref()), r.readable);
        }
        if (r.writeable != -2) {
            EXPECT_EQ(cFileIsWriteable(n.ref()), r.writeable);
        }
        if (r.executable != -2) {
            EXPECT_EQ(cFileIsExecutable(n.ref()), r.executable);
        }
        EXPECT_EQ(cFileIsDirectory(n.ref()), r.directory);
    }
    // Hidden entries are neither readable nor writeable; a read-only file is
    // still writeable, a read-only directory is not.
    Bstr p("plain.txt"), d("dir");
    ASSERT_EQ(cFileSetReadOnly(p.ref()), -1);
    EXPECT_EQ(cFileIsWriteable(p.ref()), -1);
    if (system_keeps_read_only_directories()) {
        ASSERT_EQ(cFileSetReadOnly(d.ref()), -1);
        EXPECT_EQ(cFileIsWriteable(d.ref()), 0);
    } else {
        // A bit the system does not keep is not reported as set (Wine).
        EXPECT_EQ(cFileSetReadOnly(d.ref()), 0);
        EXPECT_EQ(cIsFileReadOnly(d.ref()), 0);
    }
    EXPECT_EQ(cFileIsReadable(d.ref()), -1);
    ASSERT_EQ(cFileSetHidden(p.ref()), -1);
    EXPECT_EQ(cFileIsReadable(p.ref()), 0);
    EXPECT_EQ(cFileIsWriteable(p.ref()), 0);
    ASSERT_EQ(cFileResetReadOnly(d.ref()), -1);

    Bstr tool("tool"), tool_exe("tool.exe"), nothing("no-such-program-anywhere");
    EXPECT_EQ(cFileIsProgram(tool.ref()), -1); // the current directory, .exe added
    EXPECT_EQ(cFileIsProgram(tool_exe.ref()), -1);
    EXPECT_EQ(cFileIsProgram(nothing.ref()), 0);
    EXPECT_EQ(cFileResetAllAttrib(p.ref()), -1); // so that the scratch folder can go
}

// Times set through the record come back through it and through the DT
// forms. The oracle is the calendar: 2021-03-04 was a Thursday (day 4), and
// the local reading is the C runtime's localtime of the same instant.
TEST_F(Attributes, FileTimesRoundTrip) {
    write_file("f", "x");
    Bstr f("f"), missing("missing");
    FileTimeParts c{}, a{}, w{};
    ASSERT_EQ(cGetFileDateTime(f.ref(), &c, &a, &w), -1);
    FileTimeParts created = c; // the creation time the file has
    FileTimeParts acc{2020, 2, 0, 29, 23, 59, 58, 0};
    FileTimeParts wri{2021, 3, 0, 4, 5, 6, 7, 0};
    EXPECT_EQ(cSetFileDateTime(f.ref(), &c, &acc, &wri), -1);
    ASSERT_EQ(cGetFileDateTime(f.ref(), &c, &a, &w), -1);
    EXPECT_EQ(w.Year, 2021);
    EXPECT_EQ(w.Month, 3);
    EXPECT_EQ(w.Day, 4);
    EXPECT_EQ(w.DayOfWeek, 4);
    EXPECT_EQ(w.Hour, 5);
    EXPECT_EQ(w.Minute, 6);
    EXPECT_EQ(w.Second, 7);
    EXPECT_EQ(a.Year, 2020);
    EXPECT_EQ(a.Day, 29);
    EXPECT_EQ(a.DayOfWeek, 6); // 2020-02-29 was a Saturday
    FileTimeParts want_created = created;
#ifdef _WIN32
    // The creation time is the system's to keep: Wine keeps none and reports
    // the older of the last write and the last change, so the system's own
    // reading is the oracle here.
    WIN32_FILE_ATTRIBUTE_DATA data{};
    SYSTEMTIME st{};
    ASSERT_TRUE(GetFileAttributesExA("f", GetFileExInfoStandard, &data));
    ASSERT_TRUE(FileTimeToSystemTime(&data.ftCreationTime, &st));
    want_created.Year = static_cast<int16_t>(st.wYear);
    want_created.Second = static_cast<int16_t>(st.wSecond);
#endif
    EXPECT_EQ(c.Year, want_created.Year);
    EXPECT_EQ(c.Second, want_created.Second);

    // Invalid records: each adds its own value and nothing changes.
    FileTimeParts bad{2021, 2, 0, 29, 0, 0, 0, 0}, bad2{1600, 1, 0, 1, 0, 0, 0, 0}, bad3{2021, 1, 0, 1, 24, 0, 0, 0};
    EXPECT_EQ(cSetFileDateTime(f.ref(), &bad, &acc, &wri), 1);
    EXPECT_EQ(cSetFileDateTime(f.ref(), &c, &bad2, &bad3), 6);
    EXPECT_EQ(cSetFileDateTime(f.ref(), nullptr, nullptr, nullptr), 7);
    EXPECT_EQ(cSetFileDateTime(missing.ref(), &c, &acc, &wri), 8);
    EXPECT_EQ(cGetFileDateTime(missing.ref(), &c, &a, &w), 8);

    // Read-only files are not opened for writing.
    ASSERT_EQ(cFileSetReadOnly(f.ref()), -1);
    EXPECT_EQ(cSetFileDateTime(f.ref(), &created, &acc, &wri), 8);
    ASSERT_EQ(cFileResetReadOnly(f.ref()), -1);

    // 2021-03-04 05:06:07 UTC in local time, by the C runtime.
    std::tm utc{};
    utc.tm_year = 121;
    utc.tm_mon = 2;
    utc.tm_mday = 4;
    utc.tm_hour = 5;
    utc.tm_min = 6;
    utc.tm_sec = 7;
#ifdef _WIN32
    const std::time_t t = _mkgmtime(&utc);
    std::tm local{};
    localtime_s(&local, &t);
#else
    const std::time_t t = timegm(&utc);
    std::tm local{};
    localtime_r(&t, &local);
#endif
    EXPECT_EQ(cDT_GetFileDate(f.ref()), (local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100 + local.tm_mday);
    EXPECT_EQ(cDT_GetFileTime(f.ref()), local.tm_hour * 1000000 + local.tm_min * 10000 + local.tm_sec * 100);
    EXPECT_EQ(cDT_GetFileDate(missing.ref()), -1);
    EXPECT_EQ(cDT_GetFileTime(missing.ref()), -1);

    const std::string date = str(cFileLastDateModified(f.ref()));
    const std::string time = str(cFileLastTimeModified(f.ref()));
    EXPECT_EQ(date.size(), 10u);
    EXPECT_NE(date.find(std::to_string(local.tm_year + 1900)), std::string::npos) << date;
    char hms[16];
    std::snprintf(hms, sizeof hms, "%02d%c%02d%c%02d", local.tm_hour, time.size() > 2 ? time[2] : ':', local.tm_min,
                  time.size() > 2 ? time[2] : ':', local.tm_sec);
    EXPECT_EQ(time, hms);
    EXPECT_EQ(str(cFileLastDateModified(missing.ref())), "");
    EXPECT_EQ(str(cFileTimeCreated(missing.ref())), "");
    EXPECT_FALSE(str(cFileDateCreated(f.ref())).empty());
    EXPECT_FALSE(str(cFileLastTimeAccess(f.ref())).empty());
    EXPECT_FALSE(str(cFileLastDateAccess(f.ref())).empty());

    // Write times order the files.
    write_file("g", "y");
    EXPECT_EQ(cmp(cCmpFileTime, "g", "f"), 1);
    EXPECT_EQ(cmp(cCmpFileTime, "f", "g"), -1);
    EXPECT_EQ(cmp(cCmpFileTime, "f", "f"), 0);
    EXPECT_EQ(cmp(cCmpFileTime, "f", "missing"), -2);
}

#ifndef _WIN32
// The creation time cannot be set on POSIX: asking for another one reports
// failure (the other two are set all the same).
TEST_F(Attributes, CreationTimeIsNotSetSilently) {
    write_file("f", "x");
    Bstr f("f");
    FileTimeParts c{1999, 1, 0, 1, 0, 0, 0, 0}, a{2001, 1, 0, 1, 0, 0, 0, 0}, w{2002, 1, 0, 1, 0, 0, 0, 0};
    EXPECT_EQ(cSetFileDateTime(f.ref(), &c, &a, &w), 9);
    FileTimeParts c2{}, a2{}, w2{};
    ASSERT_EQ(cGetFileDateTime(f.ref(), &c2, &a2, &w2), -1);
    EXPECT_EQ(w2.Year, 2002);
    EXPECT_NE(c2.Year, 1999);
}
#endif
