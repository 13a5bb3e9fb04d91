// Files between machines: a disk array and a multi-array file written by each
// build (Linux, the 32-bit and the 64-bit DLL) are committed under
// tests/data/stores/, and every build opens all of them and finds the same
// values, and writes the same data bytes itself.
//
// To make the samples of a build again:
//   BRINDLE_WRITE_STORE_SAMPLES=<dir>:<build> brindle_tests --gtest_filter='StoreSamples.Write*'
#include "stores/store_records.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <brindle/exports.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

using brindle::test::read_whole_file;
using brindle::test::TempDirTest;
using brindle::test::Variant;

const char *const kBuilds[] = {"linux", "win32", "win64"};

template <class Record> void set_name(Record &r, const std::string &name) {
    std::memset(r.FileName, ' ', sizeof r.FileName);
    std::memcpy(r.FileName, name.data(), name.size());
}

double disk_value(int r, int c, int s) { return r * 100 + c * 10 + s + 0.5; }
std::string text_value(int r, int s) { return "r" + std::to_string(r) + "s" + std::to_string(s); }

void write_disk_sample(const std::string &name) {
    DiskArray r{};
    set_name(r, name);
    r.VarType = -5;
    r.Rows = 4;
    r.Cols = 3;
    r.Sheets = 2;
    ASSERT_EQ(cDACreate(&r, -1), -1);
    for (int s = 1; s <= 2; ++s)
        for (int row = 1; row <= 4; ++row)
            for (int c = 1; c <= 3; ++c)
                cDAPut(&r, row, c, s, Variant::of_double(disk_value(row, c, s)).ptr());
    cDAClose(&r, 0);
}

void write_multi_sample(const std::string &name) {
    MultiArray r{};
    set_name(r, name);
    r.VarType[0] = -6, r.Rows[0] = 2, r.Cols[0] = 2, r.Sheets[0] = 1;
    r.VarType[2] = 8, r.Rows[2] = 3, r.Cols[2] = 1, r.Sheets[2] = 2;
    r.VarType[5] = -2, r.Rows[5] = 1, r.Cols[5] = 5, r.Sheets[5] = 1, r.NoSpaces[5] = 1;
    ASSERT_EQ(cMDACreate(&r, -1), -1);
    for (int i = 1; i <= 4; ++i)
        cMDAsPut(1, &r, (i + 1) / 2, 2 - i % 2, Variant::of_double(i * 1.25).ptr());
    for (int s = 1; s <= 2; ++s)
        for (int row = 1; row <= 3; ++row)
            cMDAPut(3, &r, row, 1, s, Variant::of_text(text_value(row, s)).ptr());
    for (int i = 1; i <= 5; ++i)
        cMDArPut(6, &r, i, Variant::of_long(-i * 1000).ptr());
    cMDAClose(&r, 0);
}

void check_disk_sample(const std::string &name) {
    DiskArray r{};
    set_name(r, name);
    ASSERT_EQ(cDACreate(&r, 0), -1) << name;
    for (int s = 1; s <= 2; ++s)
        for (int row = 1; row <= 4; ++row)
            for (int c = 1; c <= 3; ++c) {
                Variant v;
                *v.ptr() = cDAGet(&r, row, c, s);
                ASSERT_EQ(V_VT(v.ptr()), VT_R8);
                EXPECT_EQ(V_R8(v.ptr()), disk_value(row, c, s)) << name;
            }
    cDAClose(&r, 0);
}

void check_multi_sample(const std::string &name) {
    MultiArray r{};
    set_name(r, name);
    ASSERT_EQ(cMDACreate(&r, 0), -1) << name;
    for (int i = 1; i <= 4; ++i) {
        Variant v;
        *v.ptr() = cMDAsGet(1, &r, (i + 1) / 2, 2 - i % 2);
        ASSERT_EQ(V_VT(v.ptr()), VT_CY);
        EXPECT_EQ(V_CY(v.ptr()).int64, i * 12500) << name;
    }
    for (int s = 1; s <= 2; ++s)
        for (int row = 1; row <= 3; ++row) {
            Variant v;
            *v.ptr() = cMDAGet(3, &r, row, 1, s);
            ASSERT_EQ(V_VT(v.ptr()), VT_BSTR);
            const std::string want = text_value(row, s) + std::string(8 - text_value(row, s).size(), ' ');
            ASSERT_EQ(SysStringLen(V_BSTR(v.ptr())), want.size());
            for (size_t i = 0; i < want.size(); ++i)
                EXPECT_EQ(V_BSTR(v.ptr())[i], static_cast<OLECHAR>(want[i])) << name;
        }
    for (int i = 1; i <= 5; ++i) {
        Variant v;
        *v.ptr() = cMDArGet(6, &r, i);
        ASSERT_EQ(V_VT(v.ptr()), VT_I2);
        EXPECT_EQ(V_I2(v.ptr()), -i * 1000) << name;
    }
    cMDAClose(&r, 0);
}

std::string sample_path(const char *build, const char *kind) {
    return std::string(BRINDLE_TEST_DATA) + "/stores/" + build + "-" + kind + ".dat";
}

class StoreSamples : public TempDirTest {};

TEST_F(StoreSamples, FilesOfEveryBuildOpenHere) {
    for (const char *build : kBuilds)
        for (const char *kind : {"disk", "multi"}) {
            SCOPED_TRACE(sample_path(build, kind));
            ASSERT_TRUE(std::filesystem::exists(sample_path(build, kind)));
            const std::string local = std::string(build) + "-" + kind + ".dat";
            std::filesystem::copy_file(sample_path(build, kind), local);
            if (std::string(kind) == "disk")
                check_disk_sample(local);
            else
                check_multi_sample(local);
        }
}

// The data and the layout fields are the same bytes on every build; only the
// run's own fields (Handle, timing, last offsets) differ.
TEST_F(StoreSamples, ThisBuildWritesTheSameBytes) {
    write_disk_sample("disk.dat");
    write_multi_sample("multi.dat");
    for (const char *kind : {"disk", "multi"}) {
        SCOPED_TRACE(kind);
        std::string mine = read_file(std::string(kind) + ".dat");
        std::string theirs = read_whole_file(sample_path("linux", kind));
        ASSERT_EQ(mine.size(), theirs.size());
        const bool disk = std::string(kind) == "disk";
        // FileName, then Handle (and, for multi-array files, the timing fields).
        for (std::string *f : {&mine, &theirs}) {
            f->replace(9, 128, 128, ' ');
            if (disk)
                f->replace(152, 4, 4, '\0'), f->replace(176, 12, 12, '\0');
            else
                f->replace(460, 4, 4, '\0'), f->replace(708, 12, 12, '\0');
        }
        EXPECT_EQ(mine, theirs);
    }
}

// Writes this build's samples where BRINDLE_WRITE_STORE_SAMPLES says.
TEST_F(StoreSamples, WriteSamples) {
    const char *where = std::getenv("BRINDLE_WRITE_STORE_SAMPLES");
    if (where == nullptr)
        GTEST_SKIP() << "BRINDLE_WRITE_STORE_SAMPLES=<dir>:<build> is not set";
    const std::string setting(where);
    const size_t colon = setting.rfind(':');
    ASSERT_NE(colon, std::string::npos);
    const std::string dir = setting.substr(0, colon), build = setting.substr(colon + 1);
    write_disk_sample(build + "-disk.dat");
    write_multi_sample(build + "-multi.dat");
    for (const char *kind : {"disk", "multi"}) {
        const std::string name = build + "-" + kind + ".dat";
        std::filesystem::copy_file(name, std::filesystem::path(dir) / name,
                                   std::filesystem::copy_options::overwrite_existing);
    }
}

} // namespace
