// Arrays on disk, record bytes and the ID stack through the library.
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <brindle/exports.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using brindle::test::Bstr;
using brindle::test::str;
using brindle::test::TempDirTest;

// A SAFEARRAY with the given bounds (dimension 1 first), freed at the end.
class Array {
  public:
    Array(VARTYPE vt, std::vector<SAFEARRAYBOUND> bounds)
        : array_(SafeArrayCreate(vt, static_cast<UINT>(bounds.size()), bounds.data())) {}
    ~Array() { SafeArrayDestroy(array_); }
    SAFEARRAY **ref() { return &array_; }
    template <class T> T *data() { return static_cast<T *>(array_->pvData); }

  private:
    SAFEARRAY *array_;
};

class DiskImages : public TempDirTest {};

TEST_F(DiskImages, NumericArraysOfAnyShapeGoToFilesAndBack) {
    // (1 To 10, 0 To 2) As Integer: 30 elements, 60 bytes. SAFEARRAYBOUND
    // lists the last dimension first.
    Array table(VT_I2, {{3, 0}, {10, 1}});
    for (int i = 0; i < 30; ++i)
        table.data<int16_t>()[i] = static_cast<int16_t>(i * 37 - 500);
    EXPECT_EQ(cArrayOnDisk(Bstr("t.bin").val(), table.ref(), 0), 60);
    const std::string file = read_file("t.bin");
    ASSERT_EQ(file.size(), 60u);
    EXPECT_EQ(std::memcmp(file.data(), table.data<int16_t>(), 60), 0);

    Array back(VT_I2, {{2, 0}, {5, 0}, {3, 1}}); // another shape of the same 30
    EXPECT_EQ(cArrayOnDisk(Bstr("t.bin").val(), back.ref(), 1), 60);
    EXPECT_EQ(std::memcmp(back.data<int16_t>(), table.data<int16_t>(), 60), 0);

    Array wrong(VT_I2, {{31, 0}});
    wrong.data<int16_t>()[0] = 99;
    EXPECT_EQ(cArrayOnDisk(Bstr("t.bin").val(), wrong.ref(), 1), -16);
    EXPECT_EQ(wrong.data<int16_t>()[0], 99);

    Array strings(VT_BSTR, {{2, 0}});
    EXPECT_EQ(cArrayOnDisk(Bstr("s.bin").val(), strings.ref(), 0), -14);
    EXPECT_EQ(cArrayOnDisk(Bstr("").val(), table.ref(), 0), -1);
    EXPECT_EQ(cArrayOnDisk(Bstr("a\"b").val(), table.ref(), 0), -2);
    EXPECT_EQ(cArrayOnDisk(Bstr("t.bin").val(), nullptr, 0), -14);
}

TEST_F(DiskImages, StringArraysRoundTripInTheDocumentedFormat) {
    Array names(VT_BSTR, {{2, 0}, {2, 0}});
    const std::vector<std::string> values = {"alpha", "", std::string("nul\0byte", 8), std::string(70000, 'w')};
    for (size_t i = 0; i < values.size(); ++i)
        names.data<BSTR>()[i] = SysAllocStringByteLen(values[i].data(), static_cast<UINT>(values[i].size()));
    int32_t count = -5;
    const int32_t size = cArrayStringOnDisk(Bstr("n.bin").val(), names.ref(), 0, &count);
    EXPECT_EQ(count, 4);
    // Python: 4 + sum(4 + len(v)) == 4 + 4 * 4 + 5 + 0 + 8 + 70000
    EXPECT_EQ(size, 70033);
    const std::string file = read_file("n.bin");
    ASSERT_EQ(file.size(), 70033u);
    EXPECT_EQ(file.substr(0, 13), std::string("\x04\0\0\0\x05\0\0\0alpha", 13));

    Array bigger(VT_BSTR, {{6, 1}});
    bigger.data<BSTR>()[5] = SysAllocStringByteLen("keep", 4);
    EXPECT_EQ(cArrayStringOnDisk(Bstr("n.bin").val(), bigger.ref(), 1, &count), 70033);
    EXPECT_EQ(count, 4);
    for (size_t i = 0; i < values.size(); ++i) {
        const BSTR s = bigger.data<BSTR>()[i];
        EXPECT_EQ(std::string(reinterpret_cast<const char *>(s), s ? SysStringByteLen(s) : 0), values[i]) << i;
    }
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(bigger.data<BSTR>()[5]), 4), "keep");

    Array smaller(VT_BSTR, {{3, 0}});
    EXPECT_EQ(cArrayStringOnDisk(Bstr("n.bin").val(), smaller.ref(), 1, &count), -16);
    EXPECT_EQ(count, 0);
    // Lengths that do not fill the file exactly.
    write_file("bad.bin", std::string("\x01\0\0\0\x09\0\0\0abc", 11));
    EXPECT_EQ(cArrayStringOnDisk(Bstr("bad.bin").val(), bigger.ref(), 1, &count), -16);
    Array numbers(VT_I4, {{3, 0}});
    EXPECT_EQ(cArrayStringOnDisk(Bstr("n.bin").val(), numbers.ref(), 1, &count), -14);
}

TEST_F(DiskImages, RecordHelpersWorkOnTheBytesTheyAreTold) {
    struct Rec {
        char code[6];
        int16_t n;
    };
    Rec a{{'A', 'B', 'C', 'D', 'E', 'F'}, 7}, b = a;
    EXPECT_EQ(cTypesCompare(&a, &b, sizeof a), -1);
    EXPECT_EQ(cTypesCompare(&a, &b, 0), 0);
    b.n = 8;
    EXPECT_EQ(cTypesCompare(&a, &b, sizeof a), 0);
    EXPECT_EQ(cTypesCompare(&a, &b, 6), -1); // only the bytes asked for
    EXPECT_EQ(str(cTypeMid(&a, 2, 3)), "BCD");
    EXPECT_EQ(str(cTypeMid(&a, 0, 3)), "");
    EXPECT_EQ(str(cTypeTransfert(&a, 6)), "ABCDEF");
    EXPECT_EQ(str(cTypeTransfert(&a, 0)), "");
    cTypesCopy(&a, &b, sizeof a);
    EXPECT_EQ(b.n, 7);
    // Overlapping records copy byte by byte from the first: the first byte spreads.
    char run[8] = {'x', '1', '2', '3', '4', '5', '6', '7'};
    cTypesCopy(run, run + 1, 7);
    EXPECT_EQ(std::string(run, 8), "xxxxxxxx");
    cTypeClear(&a, 3);
    EXPECT_EQ(std::string(a.code, 6), std::string("\0\0\0DEF", 6));
}

TEST_F(DiskImages, TheIdStackIsASetWithZeroForFree) {
    Array ids(VT_I2, {{4, 1}});
    EXPECT_EQ(cClearID(ids.ref()), 0);
    EXPECT_EQ(cPushID(ids.ref(), 5), 0);
    EXPECT_EQ(cGetID(ids.ref(), 0), 5);
    EXPECT_EQ(cPushID(ids.ref(), 9), 0);
    EXPECT_EQ(cPushID(ids.ref(), 5), 0); // already there: not stored twice
    EXPECT_EQ(cGetID(ids.ref(), 2), 0);
    EXPECT_EQ(cPopID(ids.ref(), 5), 0);  // frees slot 0
    EXPECT_EQ(cPushID(ids.ref(), 3), 0); // takes the first free slot again
    EXPECT_EQ(cGetID(ids.ref(), 0), 3);
    EXPECT_EQ(cPushID(ids.ref(), 0), -1);
    EXPECT_EQ(cPopID(ids.ref(), 77), -1);
    EXPECT_EQ(cPushID(ids.ref(), 1), 0);
    EXPECT_EQ(cPushID(ids.ref(), 2), 0);
    EXPECT_EQ(cPushID(ids.ref(), 4), -1); // full
    EXPECT_EQ(cPopLastID(ids.ref()), 0);
    EXPECT_EQ(cGetID(ids.ref(), 3), 0);
    EXPECT_EQ(cGetID(ids.ref(), 2), 1);
    EXPECT_EQ(cGetID(ids.ref(), 4), 0); // past the end
    EXPECT_EQ(cGetID(ids.ref(), -1), 0);
    EXPECT_EQ(cClearID(ids.ref()), 0);
    EXPECT_EQ(cPopLastID(ids.ref()), -1);
    Array longs(VT_I4, {{4, 0}});
    EXPECT_EQ(cPushID(longs.ref(), 5), -1);
    EXPECT_EQ(longs.data<int32_t>()[0], 0);
}

} // namespace
