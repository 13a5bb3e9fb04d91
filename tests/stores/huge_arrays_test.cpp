// Huge memory arrays through the library.
#include "stores/store_records.h"
#include "support/ole_helpers.h"

#include <brindle/exports.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using brindle::test::Variant;

HugeArray make_record(int16_t var_type, int32_t rows, int32_t cols, int32_t sheets, int16_t no_spaces = 0) {
    HugeArray r;
    std::memset(&r, 0, sizeof r);
    r.VarType = var_type;
    r.Rows = rows;
    r.Cols = cols;
    r.Sheets = sheets;
    r.NoSpaces = no_spaces;
    return r;
}

int32_t get_long(HugeArray &r, int32_t row, int32_t col, int32_t sheet) {
    Variant v;
    *v.ptr() = cHMAGet(&r, row, col, sheet);
    Variant as_long;
    EXPECT_EQ(VariantChangeType(as_long.ptr(), v.ptr(), 0, VT_I4), S_OK);
    return V_I4(as_long.ptr());
}

TEST(HugeArrays, CreatingFillsTheRecordsFields) {
    HugeArray r = make_record(-3, 2, 3, 4);
    ASSERT_EQ(cHMACreate(&r), -1);
    EXPECT_EQ(r.RecordSize, 68);
    EXPECT_EQ(r.ElementSize, 4);
    EXPECT_EQ(r.TotalSize, 96);
    EXPECT_EQ(r.SheetElements, 6);
    EXPECT_EQ(r.GigaBlocks, 0);
    EXPECT_EQ(r.GigaRest, 96);
    EXPECT_NE(r.Handle, 0);
    EXPECT_EQ(get_long(r, 2, 3, 4), 0); // zero-initialised
    EXPECT_EQ(cHMAFree(&r), -1);
}

TEST(HugeArrays, StatusCodesComeInTheirOrder) {
    struct Case {
        HugeArray record;
        int16_t code;
    } cases[] = {
        {make_record(0, 1, 1, 1), 2},
        {make_record(0, 0, 1, 1), 3}, // rows are checked before the type
        {make_record(-5, 1, 0, 1), 4},
        {make_record(-5, 1, 1, 0), 5},
        {make_record(-5, 65536, 65536, 1), 1}, // 32 GB: more than TotalSize can say
        {make_record(-32768, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF), 1},
    };
    for (Case &c : cases) {
        EXPECT_EQ(cHMACreate(&c.record), c.code);
        EXPECT_EQ(c.record.Handle, 0);
        EXPECT_EQ(cHMAClear(&c.record), 6);
    }
}

TEST(HugeArrays, ElementsAreAddressedAsInADiskArrayAndClamped) {
    HugeArray r = make_record(-2, 3, 3, 2);
    ASSERT_EQ(cHMACreate(&r), -1);
    for (int s = 1; s <= 2; ++s)
        for (int row = 1; row <= 3; ++row)
            for (int col = 1; col <= 3; ++col)
                cHMAPut(&r, row, col, s, Variant::of_long(s * 100 + row * 10 + col).ptr());
    EXPECT_EQ(get_long(r, 2, 99, 1), 123);  // column 99 reads column 3
    EXPECT_EQ(get_long(r, -4, 0, 5), 211);  // row 1, column 1, sheet 2
    EXPECT_EQ(r.LastOffset, (9 + 0 + 0) * 2);
    EXPECT_EQ(get_long(r, 3, 2, 2), 232);
    EXPECT_EQ(r.LastOffset, (9 + 2 * 3 + 1) * 2);
    Variant v;
    *v.ptr() = cHMAsGet(&r, 1, 2);
    EXPECT_EQ(V_VT(v.ptr()), VT_I2);
    EXPECT_EQ(V_I2(v.ptr()), 112);
    cHMArPut(&r, 3, Variant::of_text("-7").ptr());
    EXPECT_EQ(get_long(r, 1, 3, 1), -7);

    EXPECT_EQ(cHMAClearCol(&r, 2, -1), -1);
    EXPECT_EQ(cHMAClearRow(&r, 3, 2), -1);
    EXPECT_EQ(cHMAClearSheet(&r, 1), -1);
    for (int row = 1; row <= 3; ++row)
        for (int col = 1; col <= 3; ++col) {
            EXPECT_EQ(get_long(r, row, col, 1), 0);
            EXPECT_EQ(get_long(r, row, col, 2), col == 2 || row == 3 ? 0 : 200 + row * 10 + col);
        }
    EXPECT_EQ(cHMAClear(&r), -1);
    EXPECT_EQ(r.LastOffset, 0);
    EXPECT_EQ(get_long(r, 1, 1, 2), 0);
    EXPECT_EQ(cHMAFree(&r), -1);
}

TEST(HugeArrays, TextElementsFollowNoSpaces) {
    HugeArray r = make_record(5, 1, 4, 1);
    ASSERT_EQ(cHMACreate(&r), -1);
    Variant v;
    *v.ptr() = cHMArGet(&r, 2);
    ASSERT_EQ(V_VT(v.ptr()), VT_BSTR);
    EXPECT_EQ(SysStringLen(V_BSTR(v.ptr())), 5u); // five spaces
    cHMArPut(&r, 2, Variant::of_text("abcdefg").ptr());
    char bytes[5];
    cHMArGetType(&r, 2, bytes);
    EXPECT_EQ(std::string(bytes, 5), "abcde");
    r.NoSpaces = 1;
    EXPECT_EQ(cHMAsClearCol(&r, 2), -1);
    cHMAsGetType(&r, 1, 2, bytes);
    EXPECT_EQ(std::string(bytes, 5), std::string(5, '\0'));
    cHMAFree(&r);
}

TEST(HugeArrays, FreedForeignAndDamagedRecordsAreRefused) {
    HugeArray none = make_record(-3, 1, 1, 1);
    EXPECT_EQ(cHMAFree(&none), 0);
    HugeArray r = make_record(-3, 2, 2, 1);
    ASSERT_EQ(cHMACreate(&r), -1);
    const int32_t number = r.Handle;
    // Fields changed after creating reach nothing outside the block.
    r.Rows = r.Cols = r.Sheets = 1 << 30;
    cHMAPut(&r, 1 << 30, 1 << 30, 1 << 30, Variant::of_long(9).ptr());
    EXPECT_EQ(get_long(r, 2, 2, 1), 9);
    EXPECT_EQ(cHMAFree(&r), -1);
    EXPECT_EQ(r.Handle, number); // the stale number stays
    EXPECT_EQ(cHMAFree(&r), 0);  // a second free finds nothing
    EXPECT_EQ(cHMAClear(&r), 6);
    Variant v;
    *v.ptr() = cHMAGet(&r, 1, 1, 1);
    EXPECT_EQ(V_VT(v.ptr()), VT_EMPTY);
    for (int32_t handle : {-1, 1, 65536 + 1, 0x7FFFFFFF}) {
        HugeArray bogus = r;
        bogus.Handle = handle;
        EXPECT_EQ(cHMAClearRow(&bogus, 1, -1), 6) << handle;
    }
    EXPECT_EQ(cHMAClear(nullptr), 6);
}

} // namespace
