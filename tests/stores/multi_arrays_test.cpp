// Multi-array files through the library.
#include "stores/store_records.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <brindle/exports.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using brindle::test::TempDirTest;
using brindle::test::Variant;

MultiArray make_record(const char *name) {
    MultiArray r;
    std::memset(&r, 0, sizeof r);
    std::memset(r.FileName, ' ', sizeof r.FileName);
    std::memcpy(r.FileName, name, std::strlen(name));
    return r;
}

void use_slot(MultiArray &r, int k, int16_t var_type, int32_t rows, int32_t cols, int32_t sheets) {
    r.VarType[k] = var_type;
    r.Rows[k] = rows;
    r.Cols[k] = cols;
    r.Sheets[k] = sheets;
}

template <class T> T at(const std::string &file, size_t offset) {
    T value{};
    if (offset + sizeof value <= file.size())
        std::memcpy(&value, file.data() + offset, sizeof value);
    return value;
}

class MultiArrays : public TempDirTest {};

TEST_F(MultiArrays, UsedSlotsFollowTheHeaderInSlotOrder) {
    MultiArray r = make_record("book.dat");
    use_slot(r, 0, -2, 10, 10, 1);
    use_slot(r, 3, 20, 5, 2, 1);
    r.Rows[1] = 77; // a slot not in use keeps what the program put there
    ASSERT_EQ(cMDACreate(&r, -1), -1);
    EXPECT_EQ(r.DataStart[0], 748);
    EXPECT_EQ(r.DataStart[3], 948);
    EXPECT_EQ(r.FileSize, 1148);
    EXPECT_EQ(r.Rows[1], 77);
    EXPECT_EQ(r.SheetElements[3], 10);
    cMDAPut(1, &r, 10, 10, 1, Variant::of_long(-300).ptr());
    cMDAsPut(4, &r, 5, 2, Variant::of_text("last").ptr());
    EXPECT_EQ(r.LastOffset, 948 + 9 * 20);
    EXPECT_EQ(cMDAClose(&r, 0), 0);
    EXPECT_EQ(r.Handle, -1);

    const std::string file = read_file("book.dat");
    ASSERT_EQ(file.size(), 1148u);
    EXPECT_EQ(at<int16_t>(file, 0), 748);
    EXPECT_EQ(at<int16_t>(file, 748 + 99 * 2), -300);
    EXPECT_EQ(file.substr(948, 20), std::string(20, ' '));
    EXPECT_EQ(file.substr(948 + 9 * 20, 20), "last" + std::string(16, ' '));

    MultiArray again = make_record("book.dat");
    ASSERT_EQ(cMDACreate(&again, 0), -1);
    Variant v;
    *v.ptr() = cMDArGet(4, &again, 99); // row 1, column clamped to 2
    ASSERT_EQ(V_VT(v.ptr()), VT_BSTR);
    EXPECT_EQ(SysStringLen(V_BSTR(v.ptr())), 20u);
    for (int32_t number : {0, 2, 21, -1}) {
        VariantClear(v.ptr());
        *v.ptr() = cMDAGet(number, &again, 1, 1, 1);
        EXPECT_EQ(V_VT(v.ptr()), VT_EMPTY) << number;
    }
    EXPECT_EQ(cMDAClear(21, &again), 21);
    EXPECT_EQ(cMDAClearRow(0, &again, 1, 1), 21);
    EXPECT_EQ(cMDAClear(4, &again), -1);
    VariantClear(v.ptr());
    *v.ptr() = cMDAsGet(4, &again, 5, 2);
    EXPECT_EQ(SysStringLen(V_BSTR(v.ptr())), 20u); // blank again
    EXPECT_EQ(cMDAClose(&again, -1), 0);
    EXPECT_FALSE(std::filesystem::exists("book.dat"));
    EXPECT_EQ(cMDAClear(1, &again), 18);
}

TEST_F(MultiArrays, SlotsAreCheckedInOrder) {
    struct Case {
        const char *what;
        int k;
        int16_t var_type;
        int32_t rows, cols, sheets;
        int16_t code;
    } cases[] = {
        {"rows", 4, -3, 0, 1, 1, 7},
        {"cols", 4, -3, 1, -1, 1, 8},
        {"sheets", 19, -3, 1, 1, 0, 9},
        {"2 GB", 2, -5, 65536, 4096, 1, 4},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        MultiArray r = make_record("slots.dat");
        use_slot(r, 0, -1, 1, 1, 1);
        use_slot(r, c.k, c.var_type, c.rows, c.cols, c.sheets);
        EXPECT_EQ(cMDACreate(&r, -1), c.code);
        Variant v;
        *v.ptr() = cMDAGet(1, &r, 1, 1, 1);
        EXPECT_EQ(V_VT(v.ptr()), VT_EMPTY);
    }
    // The largest element a 16-bit code can give is accepted.
    MultiArray big = make_record("big.dat");
    use_slot(big, 0, -32768, 1, 2, 1);
    ASSERT_EQ(cMDACreate(&big, -1), -1);
    EXPECT_EQ(big.ElementSize[0], 32768);
    EXPECT_EQ(big.FileSize, 748 + 65536);
    EXPECT_EQ(cMDAClearCol(1, &big, 2, -1), -1);
    cMDAClose(&big, -1);
}

TEST_F(MultiArrays, OpeningRefusesHeadersThatLie) {
    MultiArray r = make_record("lie.dat");
    use_slot(r, 0, -4, 3, 3, 1);
    use_slot(r, 1, -1, 2, 2, 2);
    ASSERT_EQ(cMDACreate(&r, -1), -1);
    cMDAClose(&r, 0);
    const std::string good = read_file("lie.dat");
    struct Case {
        const char *what;
        size_t offset;
        int32_t value;
        int16_t code;
    } cases[] = {
        {"data start in the header", 628, 100, 16},
        {"data start past the end", 632, 2000, 16},
        {"file size", 464, 999, 16},
        {"element size", 468, 8, 6},
        {"rows of slot 1", 224, 0, 7},
        {"huge rows", 220, 0x40000000, 16},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        std::string bad = good;
        std::memcpy(&bad[c.offset], &c.value, 4);
        write_file("bad.dat", bad);
        MultiArray open = make_record("bad.dat");
        EXPECT_EQ(cMDACreate(&open, 0), c.code);
    }
    // A data start moved inside the file is taken as stored.
    std::string moved = good;
    const int32_t start = 748 + 4; // slot 1 now overlaps slot 0, but stays in the file
    std::memcpy(&moved[632], &start, 4);
    write_file("moved.dat", moved);
    MultiArray open = make_record("moved.dat");
    ASSERT_EQ(cMDACreate(&open, 0), -1);
    cMDArPut(2, &open, 1, Variant::of_long(255).ptr());
    EXPECT_EQ(open.LastOffset, 752);
    cMDAClose(&open, 0);
    EXPECT_EQ(static_cast<unsigned char>(read_file("moved.dat")[752]), 255);
}

} // namespace
