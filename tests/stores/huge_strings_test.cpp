// Huge strings through the library.
#include "stores/store_records.h"
#include "support/ole_helpers.h"
#include "support/temp_dir.h"

#include <brindle/exports.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using brindle::test::Bstr;
using brindle::test::str;
using brindle::test::TempDirTest;

int16_t add(int32_t h, const std::string &text) {
    Bstr b(text);
    return cHugeStrAdd(h, b.ref());
}

int16_t append(int32_t h, const std::string &text) {
    Bstr b(text);
    return cHugeStrAppend(h, b.ref());
}

class HugeStrings : public TempDirTest {};

TEST_F(HugeStrings, AddWritesAtTheWritePointerAndSettersCountFromOne) {
    const int32_t h = cHugeStrCreate(10);
    ASSERT_NE(h, 0);
    EXPECT_EQ(cHugeStrSize(h), 10);
    EXPECT_EQ(add(h, "HELLO"), -1);
    EXPECT_EQ(cHugeStrLength(h), 5);
    EXPECT_EQ(cHugeStrGetWP(h), 5);
    EXPECT_EQ(cHugeStrSetWP(h, 1), -1);
    EXPECT_EQ(add(h, "J"), -1);
    EXPECT_EQ(str(cHugeStrRead(h, 1)), "JELLO");
    EXPECT_EQ(cHugeStrLength(h), 5);
    EXPECT_EQ(cHugeStrGetWP(h), 1);
    EXPECT_EQ(cHugeStrSetWP(h, 6), 0); // past Length
    EXPECT_EQ(cHugeStrSetNP(h, 0), 0);
    EXPECT_EQ(append(h, "123456"), 0); // 5 + 6 > 10: nothing changes
    EXPECT_EQ(cHugeStrLength(h), 5);
    EXPECT_EQ(append(h, "12345"), -1);
    EXPECT_EQ(cHugeStrGetWP(h), 1); // append leaves WP
    EXPECT_EQ(add(h, ""), 0);
    EXPECT_EQ(cHugeStrClear(h), -1);
    EXPECT_EQ(cHugeStrLength(h), 0);
    EXPECT_EQ(str(cHugeStrRead(h, 1)), "");
    EXPECT_EQ(cHugeStrFree(h), -1);
}

TEST_F(HugeStrings, ReadingOnPastTheEndGivesTheOvershoot) {
    const int32_t h = cHugeStrCreate(200);
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += static_cast<char>('a' + i % 26);
    ASSERT_EQ(add(h, text), -1);
    ASSERT_EQ(add(h, "ZZZZZZZZZZ"), -1); // bytes 101..110, then Length cut back below
    ASSERT_EQ(cHugeStrClear(h), -1);      // pointers back to 0, data kept
    ASSERT_EQ(add(h, text), -1);          // Length 100, and bytes 100..109 still "Z"
    ASSERT_EQ(cHugeStrSetNP(h, 91), -1);  // NP 90
    const std::string got = str(cHugeStrNext(h, 50));
    EXPECT_EQ(got.size(), 40u); // 90 + 50 - 100: the overshoot, not the 10 left
    EXPECT_EQ(got, text.substr(90) + std::string(10, 'Z') + std::string(20, '\0'));
    EXPECT_EQ(cHugeStrGetNP(h), 130);
    EXPECT_EQ(str(cHugeStrNext(h, 1)), "");
    EXPECT_EQ(str(cHugeStrNext(h, 64001)), "");

    EXPECT_EQ(str(cHugeStrMid(h, 2, 3)), "bcd");
    EXPECT_EQ(str(cHugeStrMid(h, 99, 5)).size(), 4u); // 99 + 5 - 100
    EXPECT_EQ(str(cHugeStrMid(h, 1, 64000)), "");
    EXPECT_EQ(str(cHugeStrMid(h, 101, 1)), "");
    EXPECT_EQ(cHugeStrGetNP(h), 130); // Mid moves nothing
    cHugeStrFree(h);
}

TEST_F(HugeStrings, OvershootNeverReadsBeyondTheCapacity) {
    const int32_t h = cHugeStrCreate(100);
    ASSERT_EQ(add(h, std::string(100, 'x')), -1);
    ASSERT_EQ(cHugeStrSetNP(h, 91), -1);
    EXPECT_EQ(str(cHugeStrNext(h, 50)), std::string(10, 'x')); // 40 asked, 10 in the block
    EXPECT_EQ(str(cHugeStrMid(h, 100, 63999)), "x");
    cHugeStrFree(h);
}

TEST_F(HugeStrings, BlocksOf64000Bytes) {
    const int32_t h = cHugeStrCreate(200000);
    const std::string piece(64000, 'p');
    ASSERT_EQ(append(h, piece), -1);
    ASSERT_EQ(append(h, std::string(64000, 'q')), -1);
    EXPECT_EQ(cHugeStrBlocks(h), 2);
    EXPECT_EQ(str(cHugeStrRead(h, 2)), std::string(64000, 'q'));
    EXPECT_EQ(str(cHugeStrRead(h, 3)), "");
    EXPECT_EQ(str(cHugeStrRead(h, 0)), "");
    ASSERT_EQ(append(h, "r"), -1);
    EXPECT_EQ(cHugeStrBlocks(h), 3);
    EXPECT_EQ(str(cHugeStrRead(h, 3)), "r");
    EXPECT_EQ(str(cHugeStrRead(h, 4)), "");
    cHugeStrFree(h);
}

TEST_F(HugeStrings, SavedFilesBringThePointersBack) {
    const int32_t h = cHugeStrCreate(10);
    ASSERT_EQ(add(h, "HELLO"), -1);
    ASSERT_EQ(cHugeStrSetNP(h, 3), -1);
    EXPECT_EQ(cHugeStrOnDisk(h, Bstr("hs.bin").val(), 0), 22);
    EXPECT_EQ(read_file("hs.bin").size(), 22u);
    const int32_t other = cHugeStrCreate(10);
    EXPECT_EQ(cHugeStrOnDisk(other, Bstr("hs.bin").val(), 1), 22);
    EXPECT_EQ(cHugeStrLength(other), 5);
    EXPECT_EQ(cHugeStrGetWP(other), 5);
    EXPECT_EQ(cHugeStrGetNP(other), 2);
    EXPECT_EQ(str(cHugeStrRead(other, 1)), "HELLO");

    const int32_t small = cHugeStrCreate(9);
    EXPECT_EQ(cHugeStrOnDisk(small, Bstr("hs.bin").val(), 1), -16); // 22 bytes into a 21-byte block
    // A header that claims more than the capacity is refused, nothing loaded.
    std::string lying = read_file("hs.bin");
    lying[0] = 11;
    write_file("lie.bin", lying);
    EXPECT_EQ(cHugeStrOnDisk(other, Bstr("lie.bin").val(), 1), -16);
    EXPECT_EQ(cHugeStrLength(other), 5);

    EXPECT_EQ(cHugeStrOnDisk(h, Bstr("").val(), 0), -1);
    EXPECT_EQ(cHugeStrOnDisk(h, Bstr("a|b").val(), 0), -2);
    EXPECT_EQ(cHugeStrOnDisk(0, Bstr("x.bin").val(), 0), -14);
    EXPECT_EQ(cHugeStrOnDisk(h, Bstr("missing.bin").val(), 1), -16);
    for (int32_t s : {h, other, small})
        cHugeStrFree(s);
}

TEST_F(HugeStrings, FreedForeignAndWrongKindHandlesAreRefused) {
    EXPECT_EQ(cHugeStrCreate(-1), 0);
    const int32_t h = cHugeStrCreate(16);
    ASSERT_EQ(cHugeStrFree(h), -1);
    EXPECT_EQ(cHugeStrFree(h), 0);
    EXPECT_EQ(cHugeStrSize(h), 0);
    EXPECT_EQ(add(h, "x"), 0);
    EXPECT_EQ(cHugeStrClear(h), 0);
    EXPECT_EQ(cHugeStrAddress(h), 0);
    HugeArray block{};
    block.VarType = -1;
    block.Rows = block.Cols = block.Sheets = 1;
    ASSERT_EQ(cHMACreate(&block), -1);
    EXPECT_EQ(cHugeStrSize(block.Handle), 0);
    EXPECT_EQ(cHugeStrFree(block.Handle), 0);
    EXPECT_EQ(cHMAFree(&block), -1);
    for (int32_t bogus : {0, -1, 1, 0x10001, 0x7FFFFFFF})
        EXPECT_EQ(str(cHugeStrNext(bogus, 10)), "") << bogus;
}

} // namespace
