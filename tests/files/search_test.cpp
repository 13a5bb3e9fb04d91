// Directory enumeration, listings, volume space and byte filters, through
// the exported interface, in a scratch directory with relative names.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#ifndef _WIN32
#include <unistd.h>
#endif
#include <filesystem>
#include <set>
#include <string>
#include <vector>

using namespace brindle::test;
namespace fs = std::filesystem;

namespace {

class Search : public TempDirTest {
  protected:
    // d\a.txt (1 byte), d\b.txt (0), d\c.dat (4096), d\sub1, d\sub2
    void make_tree() {
        fs::create_directories("d/sub1");
        fs::create_directories("d/sub2");
        write_file("d/a.txt", "x");
        write_file("d/b.txt", "");
        write_file("d/c.dat", std::string(4096, 'c'));
    }
    template <class F> static std::set<std::string> enumerate(F f, std::string_view pattern) {
        std::set<std::string> names;
        Bstr p(pattern);
        for (std::string name = str(f(p.val(), -1)); !name.empty(); name = str(f(p.val(), 0)))
            EXPECT_TRUE(names.insert(name).second) << "returned twice: " << name;
        return names;
    }
    static double cluster() {
        Bstr root("");
        return cGetDiskClusterSize(root.val());
    }
};

std::vector<std::string> elements(const SafeArray &a) {
    std::vector<std::string> out;
    const LONG n = static_cast<LONG>(a.get()->rgsabound[0].cElements);
    for (LONG i = 0; i < n; ++i) {
        BSTR b = a.data<BSTR>()[i];
        out.push_back(b == nullptr ? std::string() : std::string(reinterpret_cast<const char *>(b), SysStringByteLen(b)));
    }
    return out;
}

} // namespace

TEST_F(Search, StepByStepEnumerationsAreIndependent) {
    make_tree();
    EXPECT_EQ(enumerate(cFilesInDirectory, "d\\*.*"), (std::set<std::string>{"a.txt", "b.txt", "c.dat"}));
    EXPECT_EQ(enumerate(cSubDirectory, "d\\*.*"), (std::set<std::string>{".", "..", "sub1", "sub2"}));
    EXPECT_EQ(enumerate(cFilesInDirectory, "d/*.TXT"), (std::set<std::string>{"a.txt", "b.txt"}));
    EXPECT_TRUE(enumerate(cFilesInDirectory, "missing\\*.*").empty());

    // Interleaved: each function keeps its own search.
    Bstr files("d\\*.*"), dirs("d\\s*");
    const std::string f1 = str(cFilesInDirectory(files.val(), -1));
    const std::string d1 = str(cSubDirectory(dirs.val(), -1));
    const std::string f2 = str(cFilesInDirectory(files.val(), 0));
    const std::string d2 = str(cSubDirectory(dirs.val(), 0));
    EXPECT_EQ((std::set<std::string>{f1, f2}).size(), 2u);
    EXPECT_EQ((std::set<std::string>{d1, d2}), (std::set<std::string>{"sub1", "sub2"}));
    EXPECT_EQ(str(cSubDirectory(dirs.val(), 0)), "");
    EXPECT_EQ(str(cSubDirectory(dirs.val(), 0)), "") << "stays at the end";
    // A flag of 1 is false: it continues, it does not restart.
    EXPECT_EQ(str(cFilesInDirectory(files.val(), 1)).empty(), false);
    EXPECT_EQ(str(cFilesInDirectory(files.val(), 1)), "");
    // A first call on a pattern that matches nothing closes the open search:
    // continuing then gives nothing either.
    Bstr none("nothing-here\\*.*"), null_pattern;
    ASSERT_NE(str(cFilesInDirectory(files.val(), -1)), "");
    ASSERT_NE(str(cSubDirectory(dirs.val(), -1)), "");
    EXPECT_EQ(str(cFilesInDirectory(none.val(), -1)), "");
    EXPECT_EQ(str(cFilesInDirectory(none.val(), 0)), "");
    EXPECT_EQ(str(cSubDirectory(null_pattern.val(), -1)), "");
    EXPECT_EQ(str(cSubDirectory(null_pattern.val(), 0)), "");
}

TEST_F(Search, CountsIncludeDotEntries) {
    make_tree();
    const struct {
        const char *pattern;
        int16_t files, dirs;
    } rows[] = {
        {"d\\*.*", 7, 4}, // . .. sub1 sub2 a.txt b.txt c.dat
        {"d\\*.txt", 2, 0}, {"d\\none.*", 0, 0}, {"d\\sub?", 2, 2}, {"missing\\*", 0, 0}, {"", 0, 0},
    };
    for (const auto &r : rows) {
        Bstr p(r.pattern);
        EXPECT_EQ(cCountFiles(p.val()), r.files) << r.pattern;
        EXPECT_EQ(cCountDirectories(p.val()), r.dirs) << r.pattern;
    }
}

TEST_F(Search, SizesOnDiskAndSlack) {
    make_tree();
    const double c = cluster();
    ASSERT_GT(c, 0);
    Bstr all("d\\*.*"), txt("d\\*.txt"), none("d\\*.zip"), one("d\\a.txt");
    EXPECT_EQ(cFilesSize(all.val()), 4097.0);
    EXPECT_EQ(cFilesSizeOnDisk(one.val()), c) << "one byte takes a whole cluster";
    EXPECT_EQ(cFilesSizeOnDisk(txt.val()), c) << "an empty file takes nothing";
    const double c_dat = std::ceil(4096.0 / c) * c;
    EXPECT_EQ(cFilesSizeOnDisk(all.val()), c + c_dat);

    double size = -5, on_disk = -5;
    EXPECT_EQ(cFilesSlack(none.val(), &size, &on_disk), -1);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(on_disk, 0);
    EXPECT_EQ(cFilesSlack(one.val(), &size, &on_disk), static_cast<int16_t>((c - 1) / c * 100));
    EXPECT_EQ(size, 1);
    EXPECT_EQ(on_disk, c);
    EXPECT_EQ(cFilesSlack(one.val(), nullptr, nullptr), static_cast<int16_t>((c - 1) / c * 100));
}

TEST_F(Search, SizeTotalWrapsAt32Bits) {
    fs::create_directory("big");
    write_file("big/small", "abc");
    {
        std::ofstream touch("big/sparse");
    }
    std::error_code e;
    fs::resize_file("big/sparse", (uint64_t{1} << 32) + 10, e);
    if (e)
        GTEST_SKIP() << "no sparse 4 GB file here";
    Bstr p("big\\*");
    EXPECT_EQ(cFilesSize(p.val()), 13.0) << "the 32-bit size field and total";
}

TEST_F(Search, ArrayGetsNamesAndKeepsItsCountRule) {
    fs::create_directory("five");
    for (const char *n : {"five/1.t", "five/2.t", "five/3.t", "five/4.t", "five/5.t"})
        write_file(n, "x");
    fs::create_directory("five/sub.t");
    Bstr p("five\\*.t");
    SafeArray three(VT_BSTR, 0, 3), five(VT_BSTR, 0, 5);
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, three.ref()), 2) << "full array: one fewer than stored";
    const auto names = elements(three);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 3u);
    EXPECT_EQ(std::count(names.begin(), names.end(), ""), 0);
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, five.ref()), 4) << "exactly full counts one fewer too";

    SafeArray seven(VT_BSTR, 1, 7); // lower bound 1
    BSTR stale = SysAllocStringByteLen("stale", 5);
    LONG at = 7;
    SafeArrayPutElement(seven.get(), &at, stale);
    SysFreeString(stale);
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, seven.ref()), 5);
    const auto all = elements(seven);
    EXPECT_EQ(std::set<std::string>(all.begin(), all.begin() + 5),
              (std::set<std::string>{"1.t", "2.t", "3.t", "4.t", "5.t"}));
    EXPECT_EQ(all[5] + all[6], "") << "remaining elements are emptied";

    SafeArray any(VT_BSTR, 0, 4), longs(VT_I4, 0, 4);
    Bstr none("five\\*.zip");
    EXPECT_EQ(cFilesInDirToArray(none.val(), 255, any.ref()), -1);
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, longs.ref()), -1) << "not a string array";
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, nullptr), -1);
}

TEST_F(Search, TwoDimensionalArrayGetsNamesDownItsFirstColumn) {
    // Names go along dimension 1 at the lower bound of dimension 2, by the
    // same count rule; the other columns are not touched.
    fs::create_directory("two");
    for (const char *name : {"1.t", "2.t", "3.t", "4.t", "5.t"})
        write_file(std::string("two/") + name, "");
    const std::set<std::string> all{"1.t", "2.t", "3.t", "4.t", "5.t"};
    Bstr p("two\\*.t");
    const auto cell = [](const SafeArray &a, size_t k) {
        const BSTR b = a.data<BSTR>()[k];
        return b == nullptr ? std::string("(null)") : std::string(reinterpret_cast<const char *>(b), SysStringByteLen(b));
    };
    SafeArray wide(VT_BSTR, {{3, 0}, {4, 1}}); // Dim Names(2, 1 To 4)
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, wide.ref()), 2);
    std::set<std::string> first;
    for (size_t k = 0; k < 3; ++k)
        first.insert(cell(wide, k));
    EXPECT_EQ(first.size(), 3u);
    EXPECT_TRUE(std::includes(all.begin(), all.end(), first.begin(), first.end()));
    for (size_t k = 3; k < 12; ++k)
        EXPECT_EQ(cell(wide, k), "(null)") << k;

    SafeArray tall(VT_BSTR, {{7, 1}, {2, 0}}); // Dim Names(1 To 7, 1)
    for (const auto &[k, text] : {std::pair<LONG, const char *>{6, "stale"}, {8, "other"}}) {
        LONG at[2] = {k % 7 + 1, k / 7};
        BSTR b = SysAllocStringByteLen(text, 5);
        ASSERT_EQ(SafeArrayPutElement(tall.get(), at, b), S_OK);
        SysFreeString(b);
    }
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, tall.ref()), 5);
    std::set<std::string> column;
    for (size_t k = 0; k < 5; ++k)
        column.insert(cell(tall, k));
    EXPECT_EQ(column, all);
    EXPECT_EQ(cell(tall, 5) + cell(tall, 6), "") << "the rest of the column is emptied";
    EXPECT_EQ(cell(tall, 8), "other") << "the second column is left alone";
}

TEST_F(Search, NamesTheArrayRefusesAreNotCounted) {
    // An array whose lock count is at the system's limit takes no element:
    // every store fails, and nothing is reported as stored.
    fs::create_directory("l");
    write_file("l/a.t", "");
    write_file("l/b.t", "");
    Bstr p("l\\*.t");
    SafeArray names(VT_BSTR, 0, 4);
    LONG locks = 0;
    while (locks < 0x10000 && SafeArrayLock(names.get()) == S_OK)
        ++locks;
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, names.ref()), 0);
    for (; locks > 0; --locks)
        SafeArrayUnlock(names.get());
    EXPECT_EQ(elements(names), (std::vector<std::string>(4)));
    EXPECT_EQ(cFilesInDirToArray(p.val(), 255, names.ref()), 2);
}

TEST_F(Search, SelectorsPickFilesByAttributes) {
    fs::create_directory("s");
    write_file("s/plain", "x");
    write_file("s/locked", "x");
    write_file("s/.dotted", "x");
    fs::permissions("s/locked", fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    auto pick = [](int16_t selector) {
        SafeArray a(VT_BSTR, 0, 10);
        Bstr p("s\\*");
        const int16_t n = cFilesInDirToArray(p.val(), selector, a.ref());
        std::set<std::string> names;
        for (const std::string &s : elements(a))
            if (!s.empty())
                names.insert(s);
        EXPECT_EQ(n, static_cast<int16_t>(names.size())) << selector;
        return names;
    };
    const std::set<std::string> all{"plain", "locked", ".dotted"};
    EXPECT_EQ(pick(255), all);
    EXPECT_EQ(pick(254), all);
    EXPECT_EQ(pick(-32), (std::set<std::string>{"plain"})) << "archive and nothing else";
    EXPECT_EQ(pick(-33), (std::set<std::string>{"locked"}));
    EXPECT_EQ(pick(-34), (std::set<std::string>{".dotted"}));
    EXPECT_EQ(pick(0), (std::set<std::string>{})) << "every file here has the archive bit";
    // Loose against read-only + hidden + system + compressed: fails only
    // where all five bits differ, i.e. a plain archive file.
    EXPECT_EQ(pick(1 | 2 | 4 | 2048), (std::set<std::string>{"locked", ".dotted"}));
}

TEST_F(Search, ListingFileCodesAndContent) {
    fs::create_directory("l");
    write_file("l/one.txt", "1");
    write_file("l/two.txt", "22");
    fs::create_directory("l/dir.txt");
    auto on_disk = [](std::string_view out, std::string_view pattern, int16_t selector = 255) {
        Bstr o(out), p(pattern);
        return cFilesInDirOnDisk(o.val(), p.val(), selector);
    };
    EXPECT_EQ(on_disk("", "l\\*.txt"), -1);
    EXPECT_EQ(on_disk("out*.lst", "l\\*.txt"), -2);
    EXPECT_EQ(on_disk("out.lst", "l\\*.zip"), -1);
    EXPECT_FALSE(fs::exists("out.lst"));
    EXPECT_EQ(on_disk("nodir\\out.lst", "l\\*.txt"), -32750);

    ASSERT_EQ(on_disk("out.lst", "l\\*.txt"), 2);
    const std::string text = read_file("out.lst");
    EXPECT_TRUE(text == "one.txt\r\ntwo.txt\r\n" || text == "two.txt\r\none.txt\r\n") << text;

    // An existing read-only output is replaced.
    fs::permissions("out.lst", fs::perms::owner_write, fs::perm_options::remove);
    ASSERT_EQ(on_disk("out.lst", "l\\one.txt"), 1);
    EXPECT_EQ(read_file("out.lst"), "one.txt\r\n");

#ifndef _WIN32
    if (::geteuid() != 0) {
        fs::create_directory("ro");
        write_file("ro/out.lst", "old");
        fs::permissions("ro", fs::perms::owner_read | fs::perms::owner_exec);
        EXPECT_EQ(on_disk("ro\\out.lst", "l\\*.txt"), -3);
        fs::permissions("ro", fs::perms::owner_all);
        EXPECT_EQ(read_file("ro/out.lst"), "old");
    }
#endif
}

TEST_F(Search, VolumeSpaceAgreesWithItself) {
    Bstr current(""), letter("c"), drive("c:"), missing("no-such-directory\\");
    // Other programs write while the test runs: each set of readings is
    // taken again until the free space stayed the same across it.
    double space = 0, used = 0, free = 0;
    for (int tries = 0; tries < 100; ++tries) {
        const double before = cGetDiskFree(current.val());
        space = cGetDiskSpace(current.val());
        used = cGetDiskUsed(current.val());
        free = cGetDiskFree(current.val());
        if (free == before)
            break;
    }
    const double cluster = cGetDiskClusterSize(current.val());
    ASSERT_GT(space, 0);
    ASSERT_GT(cluster, 0);
    EXPECT_EQ(used + free, space);
    EXPECT_EQ(std::fmod(space, cluster), 0);
    EXPECT_GT(cGetDiskSpace(letter.val()), 0) << "a letter is a drive root";
    EXPECT_EQ(cGetDiskSpace(letter.val()), cGetDiskSpace(drive.val()));

    int64_t total_ex = 0, used_ex = 0, free_ex = 0;
    for (int tries = 0; tries < 100; ++tries) {
        const int64_t before = cGetDiskFreeEx(current.val()).int64;
        total_ex = cGetDiskSpaceEx(current.val()).int64;
        used_ex = cGetDiskUsedEx(current.val()).int64;
        free_ex = cGetDiskFreeEx(current.val()).int64;
        if (free_ex == before)
            break;
    }
    EXPECT_GT(total_ex, 0);
    // The two sets were read at different times: they may differ by what
    // was written meanwhile (allowed: a thousandth of the volume).
    EXPECT_GE(static_cast<double>(free_ex) + static_cast<double>(total_ex) / 1000, free)
        << "the whole volume's free bytes, reserve included";
    EXPECT_LE(free_ex, total_ex);
    // Without a borrow between the halves: the low 32 bits are exact.
    EXPECT_EQ(static_cast<uint32_t>(used_ex), static_cast<uint32_t>(total_ex - free_ex));

    EXPECT_EQ(cGetDiskSpace(missing.val()), 0);
    EXPECT_EQ(cGetDiskClusterSize(missing.val()), 0);
    EXPECT_EQ(cGetDiskSpaceEx(missing.val()).int64, -1);
    EXPECT_EQ(cGetDiskUsedEx(missing.val()).int64, -1);
    EXPECT_EQ(cGetDiskFreeEx(missing.val()).int64, -1);
}

TEST_F(Search, FileFiltersDropOrKeepTheSet) {
    std::string data;
    for (int i = 0; i < 100000; ++i)
        data.push_back(static_cast<char>("abc\r\n\0"[i % 6]));
    write_file("in.bin", data);
    using Filter = decltype(&cFileFilter);
    // A one-character set is dropped by both; a zero byte in the set is a member.
    const struct {
        Filter f;
        std::string_view set;
        bool keep;
    } rows[] = {{cFileFilter, {"\r\n", 2}, false}, {cFileFilterNot, {"\r\n", 2}, true},
                {cFileFilterNot, "a", false},      {cFileFilter, {"\0b", 2}, false}};
    for (const auto &r : rows) {
        std::string expected;
        for (char c : data)
            if ((r.set.find(c) != std::string_view::npos) == r.keep)
                expected.push_back(c);
        Bstr s(r.set), in("in.bin"), out("out.bin");
        EXPECT_EQ(r.f(in.val(), out.val(), s.ref()), static_cast<int32_t>(expected.size())) << r.set.size();
        EXPECT_EQ(read_file("out.bin"), expected);
    }
    Bstr s("a"), missing("missing.bin"), in("in.bin"), out("x.bin"), bad("nodir\\x.bin"), empty("");
    EXPECT_EQ(cFileFilter(in.val(), out.val(), empty.ref()), -1);
    EXPECT_EQ(cFileFilter(missing.val(), out.val(), s.ref()), -32750);
    EXPECT_FALSE(fs::exists("x.bin"));
    EXPECT_EQ(cFileFilterNot(in.val(), bad.val(), s.ref()), -32751);
    EXPECT_EQ(cFileFilter(in.val(), out.val(), nullptr), -1);
}

// Creating the target would truncate the source when both name one file,
// however the names are spelled: refused as a target that cannot be created.
TEST_F(Search, FileFiltersRefuseTheirOwnSourceAsTarget) {
    const std::string data = "keep\r\nthis\r\n";
    write_file("in.bin", data);
    fs::create_directory("sub");
    std::vector<std::string> spellings = {"in.bin", ".\\in.bin", "sub\\..\\in.bin", "./in.bin",
                                          fs::absolute("in.bin").string()};
    std::error_code e;
    fs::create_symlink("in.bin", "link.bin", e);
    if (!e)
        spellings.push_back("link.bin");
    Bstr in("in.bin"), set("\r\n");
    for (const std::string &name : spellings) {
        Bstr target(name);
        EXPECT_EQ(cFileFilter(in.val(), target.val(), set.ref()), -32751) << name;
        EXPECT_EQ(cFileFilterNot(target.val(), in.val(), set.ref()), -32751) << name;
        EXPECT_EQ(read_file("in.bin"), data) << name;
    }
}

// Odd patterns and roots give their failure values or what the system
// would make of them, never a crash or a read outside the arguments (the
// sanitizer build checks the latter).
TEST_F(Search, OddPatternsAndRoots) {
    make_tree();
    const struct {
        std::string pattern;
        int16_t count;     // cCountFiles
        int32_t subdirs;   // cAllSubDirectories with the pattern as root
    } rows[] = {
        {"", 0, 0},
        {std::string("d\\\0*.*", 6), 0, 2},        // read as "d\\": no name part; a fine root
        {std::string(5000, 'a'), 0, 0},
        {"d\\" + std::string(5000, '*'), 7, 0},       // many stars are one star
        {"::", 0, 0},
        {"d\\*\\*", 0, 0},                            // no wildcards in the directory part
        {"d\\\\\\*", 7, 0},                          // repeated separators are one
        {"?:*", 0, 0},
        {"d\\a.txt\\*", 0, 0},                        // a file is no directory
    };
    for (const auto &r : rows) {
        const std::string shown = r.pattern.substr(0, 12);
        Bstr pattern(r.pattern), none("");
        EXPECT_EQ(cCountFiles(pattern.val()), r.count) << shown;
        EXPECT_EQ(str(cFilesInDirectory(pattern.val(), -1)).empty(), r.count == 0) << shown;
        EXPECT_EQ(cFilesSize(pattern.val()), r.count ? 4097 : 0) << shown;
        double a = 1, b = 1;
        EXPECT_EQ(cFilesSlack(pattern.val(), &a, &b) == -1, r.count == 0) << shown;
        SafeArray names(VT_BSTR, 0, 2);
        const int16_t stored = cFilesInDirToArray(pattern.val(), 255, names.ref());
        EXPECT_EQ(stored, r.count ? 1 : r.pattern.empty() ? 0 : -1) << shown;
        int32_t n = 9;
        const std::string subdirs = str(cAllSubDirectories(pattern.val(), &n));
        EXPECT_EQ(n, r.subdirs) << shown;
        EXPECT_EQ(std::count(subdirs.begin(), subdirs.end(), '\r'), r.subdirs);
        EXPECT_LE(cSearchFile(pattern.val(), pattern.val(), none.val()), 0) << shown;
        EXPECT_EQ(cRcsCountFileDir(0, pattern.val(), pattern.val(), -1), 0) << shown;
    }
}
