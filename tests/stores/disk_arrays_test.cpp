// Disk arrays through the library, as a VB program uses them: the record is
// the program's, the file is checked byte for byte from outside.
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

DiskArray make_record(const char *name, int16_t var_type, int32_t rows, int32_t cols, int32_t sheets,
                      int16_t no_spaces = 0) {
    DiskArray r;
    std::memset(&r, 0, sizeof r);
    std::memset(r.FileName, ' ', sizeof r.FileName); // VB's String * 128 is blank-padded
    std::memcpy(r.FileName, name, std::strlen(name));
    r.VarType = var_type;
    r.Rows = rows;
    r.Cols = cols;
    r.Sheets = sheets;
    r.NoSpaces = no_spaces;
    return r;
}

double get_double(DiskArray &r, int32_t row, int32_t col, int32_t sheet) {
    Variant v;
    *v.ptr() = cDAGet(&r, row, col, sheet);
    EXPECT_EQ(V_VT(v.ptr()), VT_R8);
    return V_VT(v.ptr()) == VT_R8 ? V_R8(v.ptr()) : -1.0;
}

void put(DiskArray &r, int32_t row, int32_t col, int32_t sheet, Variant value) { cDAPut(&r, row, col, sheet, value.ptr()); }

// The text of a String Variant as Latin-1 bytes; "<vt>" for another type.
std::string text_of(VARIANT v) {
    Variant holder;
    *holder.ptr() = v;
    if (V_VT(&v) != VT_BSTR)
        return "<" + std::to_string(V_VT(&v)) + ">";
    std::string out;
    for (UINT i = 0; i < SysStringLen(V_BSTR(&v)); ++i)
        out += static_cast<char>(V_BSTR(&v)[i]);
    return out;
}

template <class T> T at(const std::string &file, size_t offset) {
    T value{};
    if (offset + sizeof value <= file.size())
        std::memcpy(&value, file.data() + offset, sizeof value);
    return value;
}

class DiskArrays : public TempDirTest {};

TEST_F(DiskArrays, LayoutOfTheFileIsSheetThenRowThenColumn) {
    DiskArray r = make_record("grid.dat", -5, 3, 4, 2);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    EXPECT_EQ(r.FileSize, 200 + 3 * 4 * 2 * 8);
    EXPECT_EQ(r.SheetElements, 12);
    EXPECT_EQ(r.ElementSize, 8);
    EXPECT_EQ(std::string(r.Signature, 7), "KOV_347");
    put(r, 2, 3, 2, Variant::of_double(1.5));
    EXPECT_EQ(r.LastOffset, 344); // 200 + (12 + 4 + 2) x 8
    cDAClose(&r, 0);
    const std::string file = read_file("grid.dat");
    ASSERT_EQ(file.size(), 392u);
    EXPECT_EQ(at<double>(file, 344), 1.5);
    EXPECT_EQ(file.substr(200).find_first_not_of('\0'), 144u + 6); // 1.5 is 00 00 00 00 00 00 F8 3F
    EXPECT_EQ(at<int16_t>(file, 0), 200);
    EXPECT_EQ(at<int32_t>(file, 140), 3);
    EXPECT_EQ(at<int32_t>(file, 160), 392);
}

TEST_F(DiskArrays, IndicesAreClampedToTheNearestEdge) {
    DiskArray r = make_record("clamp.dat", -3, 3, 2, 2);
    ASSERT_EQ(cDACreate(&r, 1), -1);
    for (int32_t row = 1; row <= 3; ++row)
        put(r, row, 1, 1, Variant::of_long(row * 10));
    Variant low, high, far_sheet;
    *low.ptr() = cDAGet(&r, 0, 1, 1);
    *high.ptr() = cDAGet(&r, 1000, -5, -7);
    EXPECT_EQ(V_VT(low.ptr()), VT_I4);
    EXPECT_EQ(V_I4(low.ptr()), 10);
    EXPECT_EQ(V_I4(high.ptr()), 30);
    put(r, 99, 99, 99, Variant::of_long(7)); // the last element of the last sheet
    EXPECT_EQ(r.LastOffset, 200 + 11 * 4);
    cDAClose(&r, 0);
    EXPECT_EQ(read_file("clamp.dat").size(), 200u + 12 * 4);
}

TEST_F(DiskArrays, ValuesAreConvertedToTheElementType) {
    struct Case {
        int16_t var_type;
        VARTYPE vt;
        size_t size;
    } cases[] = {{-6, VT_CY, 8}, {-5, VT_R8, 8}, {-4, VT_R4, 4}, {-3, VT_I4, 4}, {-2, VT_I2, 2}, {-1, VT_UI1, 1}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.var_type);
        DiskArray r = make_record("types.dat", c.var_type, 1, 3, 1);
        ASSERT_EQ(cDACreate(&r, -1), -1);
        EXPECT_EQ(r.ElementSize, static_cast<int32_t>(c.size));
        cDArPut(&r, 1, Variant::of_text("12").ptr()); // text that is a number converts
        cDArPut(&r, 2, Variant::of_text("abc").ptr()); // text that is not leaves the element alone
        cDArPut(&r, 3, Variant::of_double(7.0).ptr());
        Variant v;
        *v.ptr() = cDArGet(&r, 1);
        EXPECT_EQ(V_VT(v.ptr()), c.vt);
        Variant as_long;
        EXPECT_EQ(VariantChangeType(as_long.ptr(), v.ptr(), 0, VT_I4), S_OK);
        EXPECT_EQ(V_I4(as_long.ptr()), 12);
        cDAClose(&r, 0);
        const std::string file = read_file("types.dat");
        EXPECT_EQ(file.substr(200 + c.size, c.size), std::string(c.size, '\0'));
        // Currency is stored scaled by 10,000.
        if (c.var_type == -6) {
            EXPECT_EQ(at<int64_t>(file, 200 + 2 * c.size), 70000);
        }
    }
}

TEST_F(DiskArrays, TextElementsArePaddedCutAndFilledAsNoSpacesSays) {
    DiskArray r = make_record("text.dat", 10, 2, 2, 1);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    EXPECT_EQ(text_of(cDAsGet(&r, 2, 2)), std::string(10, ' '));
    cDAsPut(&r, 1, 1, Variant::of_text("ABCDEFGHIJKL").ptr());
    cDAsPut(&r, 1, 2, Variant::of_text("AB").ptr());
    cDAsPut(&r, 2, 1, Variant::of_long(42).ptr());
    EXPECT_EQ(text_of(cDAsGet(&r, 1, 1)), "ABCDEFGHIJ");
    EXPECT_EQ(text_of(cDAsGet(&r, 1, 2)), "AB        ");
    EXPECT_EQ(text_of(cDAsGet(&r, 2, 1)), "42        ");
    r.NoSpaces = 1;
    EXPECT_EQ(cDAClear(&r), -1);
    EXPECT_EQ(r.LastOffset, 200);
    EXPECT_EQ(text_of(cDAsGet(&r, 1, 1)), "");
    cDAClose(&r, 0);
    // A negative code other than the numbers' is text of abs(n) bytes, zero-filled.
    DiskArray z = make_record("zero.dat", -12, 1, 1, 1);
    ASSERT_EQ(cDACreate(&z, -1), -1);
    EXPECT_EQ(z.ElementSize, 12);
    EXPECT_EQ(text_of(cDArGet(&z, 1)), "");
    cDAClose(&z, 0);
}

TEST_F(DiskArrays, ClearsFillExactlyTheirSheetsRowsAndColumns) {
    // Every element holds a non-zero value; after a clear, the zero elements
    // must be exactly the ones the clear names.
    struct Case {
        const char *what;
        int16_t (*clear)(DiskArray *);
        bool (*cleared)(int r, int c, int s);
    } cases[] = {
        {"sheet 2", [](DiskArray *a) { return cDAClearSheet(a, 2); }, [](int, int, int s) { return s == 2; }},
        {"sheet 7 clamps to 2", [](DiskArray *a) { return cDAClearSheet(a, 7); }, [](int, int, int s) { return s == 2; }},
        {"all sheets", [](DiskArray *a) { return cDAClearSheet(a, -1); }, [](int, int, int) { return true; }},
        {"row 2 of sheet 1", [](DiskArray *a) { return cDAClearRow(a, 2, 1); },
         [](int r, int, int s) { return r == 2 && s == 1; }},
        {"row 3 of every sheet", [](DiskArray *a) { return cDAClearRow(a, 3, -1); }, [](int r, int, int) { return r == 3; }},
        {"column 4 of sheet 2", [](DiskArray *a) { return cDAClearCol(a, 4, 2); },
         [](int, int c, int s) { return c == 4 && s == 2; }},
        {"column 0 clamps to 1, every sheet", [](DiskArray *a) { return cDAClearCol(a, 0, -1); },
         [](int, int c, int) { return c == 1; }},
        {"sheet-1 column", [](DiskArray *a) { return cDAsClearCol(a, 2); }, [](int, int c, int s) { return c == 2 && s == 1; }},
        {"sheet-1 row", [](DiskArray *a) { return cDAsClearRow(a, 1); }, [](int r, int, int s) { return r == 1 && s == 1; }},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        DiskArray r = make_record("clear.dat", -2, 3, 4, 2);
        ASSERT_EQ(cDACreate(&r, -1), -1);
        for (int s = 1; s <= 2; ++s)
            for (int row = 1; row <= 3; ++row)
                for (int col = 1; col <= 4; ++col)
                    put(r, row, col, s, Variant::of_long(s * 100 + row * 10 + col));
        EXPECT_EQ(c.clear(&r), -1);
        for (int s = 1; s <= 2; ++s)
            for (int row = 1; row <= 3; ++row)
                for (int col = 1; col <= 4; ++col) {
                    Variant v;
                    *v.ptr() = cDAGet(&r, row, col, s);
                    EXPECT_EQ(V_I2(v.ptr()), c.cleared(row, col, s) ? 0 : s * 100 + row * 10 + col)
                        << row << "," << col << "," << s;
                }
        cDAClose(&r, 0);
    }
}

TEST_F(DiskArrays, StatusCodesOfCreatingAndOpening) {
    struct Case {
        const char *what;
        DiskArray record;
        int16_t flag;
        int16_t code;
    } cases[] = {
        {"empty name", make_record("", -5, 1, 1, 1), -1, 1},
        {"name with a quote", make_record("a\"b.dat", -5, 1, 1, 1), -1, 2},
        {"rows 0 (before the type)", make_record("x.dat", 0, 0, 1, 1), -1, 7},
        {"cols 0", make_record("x.dat", -5, 1, 0, 1), -1, 8},
        {"sheets 0", make_record("x.dat", -5, 1, 1, -3), -1, 9},
        {"type 0", make_record("x.dat", 0, 1, 1, 1), -1, 6},
        {"2 GB or more", make_record("x.dat", -5, 65536, 4096, 1), -1, 4},
        {"dimensions past 64 bits", make_record("x.dat", -32768, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF), -1, 4},
        {"opening a missing file", make_record("missing.dat", 0, 0, 0, 0), 0, 5},
    };
    for (Case &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(cDACreate(&c.record, c.flag), c.code);
        Variant v;
        *v.ptr() = cDAGet(&c.record, 1, 1, 1);
        EXPECT_EQ(V_VT(v.ptr()), VT_EMPTY);
    }
    EXPECT_FALSE(std::filesystem::exists("x.dat")); // no refused array leaves a file
}

TEST_F(DiskArrays, OpeningChecksTheHeaderAgainstItselfAndTheFile) {
    DiskArray made = make_record("good.dat", -3, 5, 5, 1);
    ASSERT_EQ(cDACreate(&made, -1), -1);
    cDAPut(&made, 4, 4, 1, Variant::of_long(-9).ptr());
    cDAClose(&made, 0);
    const std::string good = read_file("good.dat");

    struct Case {
        const char *what;
        size_t offset;
        std::string bytes;
        int16_t code;
    } cases[] = {
        {"header size", 0, std::string("\xC9\x00", 2), 14},
        {"signature", 2, "KOV_348", 15},
        {"rows", 140, std::string("\0\0\0\0", 4), 7},
        {"cols", 144, std::string("\xFF\xFF\xFF\xFF", 4), 8},
        {"sheets", 148, std::string("\0\0\0\0", 4), 9},
        {"type 0", 138, std::string("\0\0", 2), 6},
        {"element size", 156, std::string("\x08\0\0\0", 4), 6},
        {"file size field", 160, std::string("\x01\x01\0\0", 4), 16},
        {"rows past 32 bits", 140, std::string("\0\0\0\x40", 4), 16},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        std::string bad = good;
        bad.replace(c.offset, c.bytes.size(), c.bytes);
        write_file("bad.dat", bad);
        DiskArray r = make_record("bad.dat", 0, 0, 0, 0);
        EXPECT_EQ(cDACreate(&r, 0), c.code);
    }
    write_file("bad.dat", good.substr(0, good.size() - 1)); // one byte cut off the end
    DiskArray cut = make_record("bad.dat", 0, 0, 0, 0);
    EXPECT_EQ(cDACreate(&cut, 0), 16);
    write_file("bad.dat", good.substr(0, 150));
    DiskArray short_header = make_record("bad.dat", 0, 0, 0, 0); // cut now names good.dat, read from the header
    EXPECT_EQ(cDACreate(&short_header, 0), 13);
    std::string lower = good;
    lower.replace(2, 7, "kov_347"); // the signature is compared without regard to case
    write_file("bad.dat", lower);
    DiskArray ok = make_record("bad.dat", 0, 0, 0, 0);
    ASSERT_EQ(cDACreate(&ok, 0), -1);
    Variant v;
    *v.ptr() = cDAGet(&ok, 4, 4, 1);
    EXPECT_EQ(V_I4(v.ptr()), -9);
    cDAClose(&ok, 0);
}

TEST_F(DiskArrays, ValuesSurviveClosingAndReopening) {
    DiskArray r = make_record("keep.dat", -5, 10, 10, 3);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    for (int i = 1; i <= 10; ++i)
        put(r, i, 11 - i, i % 3 + 1, Variant::of_double(i / 8.0));
    EXPECT_EQ(cDAClose(&r, 0), 0);
    DiskArray again = make_record("keep.dat", 0, 0, 0, 0);
    ASSERT_EQ(cDACreate(&again, 0), -1);
    EXPECT_EQ(again.Rows, 10);
    EXPECT_EQ(again.Sheets, 3);
    EXPECT_NE(again.Handle, -1);
    for (int i = 1; i <= 10; ++i)
        EXPECT_EQ(get_double(again, i, 11 - i, i % 3 + 1), i / 8.0);
    EXPECT_EQ(cDAClose(&again, -1), 0);
    EXPECT_FALSE(std::filesystem::exists("keep.dat"));
}

TEST_F(DiskArrays, RecordTransfersCopyElementBytesUnchanged) {
    struct Item {
        char code[6];
        int16_t count;
        double price;
    };
    static_assert(sizeof(Item) == 16);
    DiskArray r = make_record("items.dat", 16, 4, 1, 1);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    Item in{{'A', 'B', 'C', 'D', 'E', 'F'}, 12, 3.25};
    cDAPutType(&r, 3, 1, 1, &in);
    Item out{};
    cDAGetType(&r, 3, 1, 1, &out);
    EXPECT_EQ(std::memcmp(&in, &out, sizeof in), 0);
    Item other{};
    cDArGetType(&r, 1, &other); // row 1 is still blank
    EXPECT_EQ(std::string(other.code, 6), "      ");
    cDAsPutType(&r, 1, 1, &in);
    cDArGetType(&r, 1, &other);
    EXPECT_EQ(other.price, 3.25);
    cDAClose(&r, 0);
}

TEST_F(DiskArrays, ClosedStaleAndForeignHandlesAreRefused) {
    DiskArray r = make_record("h.dat", -3, 2, 2, 1);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    const DiskArray copy = r;
    cDAClose(&r, 0);
    EXPECT_EQ(r.Handle, copy.Handle); // the number stays in the record
    EXPECT_EQ(cDAClear(&r), 18);
    Variant v;
    *v.ptr() = cDAGet(&r, 1, 1, 1);
    EXPECT_EQ(V_VT(v.ptr()), VT_EMPTY);

    // A new array does not answer to the old number.
    DiskArray next = make_record("h2.dat", -3, 2, 2, 1);
    ASSERT_EQ(cDACreate(&next, -1), -1);
    DiskArray stale = copy;
    EXPECT_EQ(cDAClearRow(&stale, 1, 1), 18);
    cDAPut(&stale, 1, 1, 1, Variant::of_long(5).ptr());
    *v.ptr() = cDAGet(&next, 1, 1, 1);
    EXPECT_EQ(V_I4(v.ptr()), 0);

    // Numbers that name nothing, or a memory block.
    HugeArray h{};
    h.VarType = -3;
    h.Rows = h.Cols = h.Sheets = 1;
    ASSERT_EQ(cHMACreate(&h), -1);
    for (int32_t handle : {0, -2, 1, 65537, 0x7FFFFFFF, h.Handle, next.Handle + 1}) {
        DiskArray bogus = next;
        bogus.Handle = handle;
        EXPECT_EQ(cDAClear(&bogus), 18) << handle;
    }
    cHMAFree(&h);
    cDAClose(&next, 0);
}

TEST_F(DiskArrays, DamagedRecordFieldsNeverReachPastTheData) {
    DiskArray r = make_record("damage.dat", -3, 2, 3, 1);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    r.Rows = 1000000;
    r.Cols = 1000000;
    r.ElementSize = 30000;
    r.VarType = 30000;
    r.FileSize = 5;
    cDAPut(&r, 1000000, 1000000, 9, Variant::of_long(77).ptr());
    EXPECT_EQ(cDAClearCol(&r, 1000, -1), -1);
    EXPECT_EQ(cDAClear(&r), -1);
    cDAPut(&r, 2, 3, 1, Variant::of_long(77).ptr());
    Variant v;
    *v.ptr() = cDAGet(&r, 1000000, 1000000, 1);
    EXPECT_EQ(V_VT(v.ptr()), VT_I4); // the file's type, not the record's
    EXPECT_EQ(V_I4(v.ptr()), 77);
    cDAClose(&r, 0);
    EXPECT_EQ(read_file("damage.dat").size(), 200u + 6 * 4);
}

TEST_F(DiskArrays, ClosingWithDeleteReportsWhatHappened) {
    DiskArray r = make_record("gone.dat", -1, 1, 1, 1);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    EXPECT_EQ(cDAClose(&r, 1), 0); // only True deletes
    EXPECT_TRUE(std::filesystem::exists("gone.dat"));
    EXPECT_EQ(cDAClose(&r, -1), 0);
    EXPECT_FALSE(std::filesystem::exists("gone.dat"));
    EXPECT_EQ(cDAClose(&r, -1), -1); // nothing left to delete
    DiskArray bad = make_record("ab:c.dat", -1, 1, 1, 1);
    EXPECT_EQ(cDAClose(&bad, -1), 5); // the syntax check's own code
    DiskArray blank = make_record("", -1, 1, 1, 1);
    EXPECT_EQ(cDAClose(&blank, -1), 0);
    EXPECT_EQ(cDAClose(nullptr, -1), 0);
}

TEST_F(DiskArrays, ANameEndsAtItsFirstSpace) {
    DiskArray r = make_record("my data.dat", -1, 1, 1, 1);
    ASSERT_EQ(cDACreate(&r, -1), -1);
    cDAClose(&r, 0);
    EXPECT_TRUE(std::filesystem::exists("my"));
}

} // namespace

namespace {

// Windows does not delete a file that is open without shared deletion; the
// library keeps that rule on every system for the files its arrays hold.
TEST_F(DiskArrays, CreatingOverAnOpenArraysFileIsRefused) {
    DiskArray first = make_record("busy.dat", -3, 2, 2, 1);
    ASSERT_EQ(cDACreate(&first, -1), -1);
    DiskArray second = make_record("busy.dat", -1, 1, 1, 1);
    EXPECT_EQ(cDACreate(&second, -1), 3);
    MultiArray multi{};
    std::memset(multi.FileName, ' ', sizeof multi.FileName);
    std::memcpy(multi.FileName, "busy.dat", 8);
    multi.VarType[0] = -1, multi.Rows[0] = multi.Cols[0] = multi.Sheets[0] = 1;
    EXPECT_EQ(cMDACreate(&multi, -1), 3);
    cDAClose(&first, 0);
    EXPECT_EQ(cDACreate(&second, -1), -1);
    cDAClose(&second, -1);
}

} // namespace
