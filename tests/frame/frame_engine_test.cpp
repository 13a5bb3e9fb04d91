// The calling frame: argument views, results, flags, arrays, variants and
// records, tested directly on the library's objects.
#include "frame/frame.h"
#include "support/ole_helpers.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

using namespace brindle::frame;
using namespace brindle::test;

TEST(FrameStrings, CountedAndZeroTerminatedReading) {
    Bstr b(std::string_view("ab\0cd", 5));
    const StrArg by_ref = StrArg::by_ref(b.ref());
    EXPECT_EQ(by_ref.size(), 5u);
    EXPECT_EQ(by_ref.bytes(), std::string_view("ab\0cd", 5));
    EXPECT_EQ(by_ref.text(), "ab");
    EXPECT_EQ(by_ref.handle(), b.val());
    const StrArg by_val = StrArg::by_val(b.val());
    EXPECT_EQ(by_val.size(), 5u);
    EXPECT_EQ(by_val.first(), 'a');

    Bstr null_handle;
    for (const StrArg &a : {StrArg::by_ref(null_handle.ref()), StrArg::by_ref(nullptr), StrArg::by_val(nullptr)}) {
        EXPECT_TRUE(a.empty());
        EXPECT_EQ(a.text(), "");
        EXPECT_NE(a.data(), nullptr) << "an empty view still points at readable bytes";
    }
}

TEST(FrameStrings, ResultsAreNeverNull) {
    BSTR e = empty_string();
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(SysStringByteLen(e), 0u);
    SysFreeString(e);
    EXPECT_EQ(str(new_string("")), "");
    EXPECT_EQ(str(new_string(std::string_view("a\0b", 3))), std::string("a\0b", 3));
    EXPECT_EQ(str(new_ztext("ab\0cd")), "ab") << "zero-terminated results are measured with strlen";
}

TEST(FrameStrings, NullViewHasNoBytesToWrite) {
    // A null handle reads as "", but there is nothing of the caller's to
    // edit: the view must not hand out the read-only text behind it.
    Bstr null_handle;
    EXPECT_EQ(StrArg::by_ref(null_handle.ref()).writable(), nullptr);
    EXPECT_EQ(StrArg::by_ref(nullptr).writable(), nullptr);
    EXPECT_EQ(StrArg::by_val(nullptr).writable(), nullptr);
    Bstr empty("");
    EXPECT_EQ(StrArg::by_ref(empty.ref()).writable(), reinterpret_cast<char *>(empty.val()));
}

TEST(FrameStrings, EmptyResultOutlastsExhaustedMemory) {
    // When not even a zero-length string can be had, the result still is a
    // real one of the caller's own, from a reserve made in better times.
    const StringAllocator failing = [](const char *, UINT) -> BSTR { return nullptr; };
    SysFreeString(empty_string()); // memory to spare: the reserve is full
    std::set<BSTR> given;
    for (size_t k = 0; k < kEmptyReserve; ++k) {
        const BSTR e = empty_string_with(failing);
        ASSERT_NE(e, nullptr) << "after " << k << " failures";
        EXPECT_EQ(SysStringByteLen(e), 0u);
        given.insert(e);
    }
    EXPECT_EQ(given.size(), kEmptyReserve) << "each caller gets a string of its own to free";
    for (const BSTR e : given)
        SysFreeString(e);
    SysFreeString(empty_string()); // one allocation that succeeds fills the reserve again
    const BSTR again = empty_string_with(failing);
    EXPECT_NE(again, nullptr);
    SysFreeString(again);
}

TEST(FrameStrings, StringResultIsFreedUnlessTaken) {
    { StringResult unused(16); } // the sanitizer preset reports a leak if not freed
    StringResult r(3);
    std::memcpy(r.data(), "xyz", 3);
    EXPECT_EQ(str(r.take()), "xyz");
}

TEST(FrameBoundary, ExceptionsBecomeTheFailureValue) {
    EXPECT_EQ(guarded(int16_t{0}, []() -> int16_t { throw std::bad_alloc(); }), 0);
    EXPECT_EQ(guarded(int32_t{-7}, []() -> int32_t { throw 1; }), -7);
    EXPECT_EQ(str(guarded_string([]() -> BSTR { throw std::bad_alloc(); })), "");
}

TEST(FrameFlags, OnlyMinusOneIsTrue) {
    EXPECT_TRUE(flag16(-1));
    EXPECT_FALSE(flag16(1));
    EXPECT_FALSE(flag16(0));
    EXPECT_FALSE(flag16(-2));
    EXPECT_FALSE(flag16(32767));
    EXPECT_TRUE(flag32(-1));
    EXPECT_FALSE(flag32(65535)) << "a 32-bit flag is compared with -1, not 16 bits";
    EXPECT_FALSE(flag32(1));
    EXPECT_EQ(vb_bool(true), -1);
    EXPECT_EQ(vb_bool(false), 0);
}

TEST(FrameArrays, ElementsWithAnyLowerBound) {
    SafeArray a(VT_I4, -2, 3);
    ArrayElements view(a.ref());
    ASSERT_TRUE(view.present());
    EXPECT_EQ(view.lower(), -2);
    EXPECT_EQ(view.upper(), 0);
    EXPECT_EQ(view.count(), 3u);
    EXPECT_TRUE(view.put<int32_t>(-2, 7));
    EXPECT_EQ(a.data<int32_t>()[0], 7);
    EXPECT_EQ(view.get<int32_t>(-2), 7);
    EXPECT_FALSE(view.put<int32_t>(1, 9)) << "outside the bounds";
    EXPECT_EQ(view.get<int32_t>(1), 0);
    EXPECT_EQ(view.get_number(3, -2), 7.0);
    EXPECT_EQ(view.get_number(99, -2), 0.0) << "an unknown type code contributes 0";
}

TEST(FrameArrays, EmptyAndMissingArrays) {
    SafeArray empty(VT_I2, 5, 0); // lower 5, upper 4
    ArrayElements view(empty.ref());
    EXPECT_EQ(view.count(), 0u);
    ArrayElements missing(nullptr);
    EXPECT_FALSE(missing.present());
    EXPECT_EQ(missing.count(), 0u);
    SAFEARRAY *null_array = nullptr;
    ArrayElements null_descriptor(&null_array);
    EXPECT_FALSE(null_descriptor.present());
}

TEST(FrameArrays, MismatchedTypeCodeNeverOverruns) {
    // A Double read from an Integer array takes 8 bytes of a 2-byte element:
    // the buffer holds the larger of the two, so nothing outside is touched.
    SafeArray small(VT_I2, 0, 1);
    small.data<int16_t>()[0] = 0x0102;
    ArrayElements view(small.ref());
    (void)view.get<double>(0);
    EXPECT_TRUE(view.put<double>(0, 1.0));
    // A Byte read from a Double array copies the whole element into the
    // buffer, then keeps its first byte.
    SafeArray wide(VT_R8, 0, 1);
    wide.data<double>()[0] = 1.0;
    ArrayElements wide_view(wide.ref());
    EXPECT_EQ(wide_view.get<uint8_t>(0), 0);
}

TEST(FrameArrays, StringAndVariantElementsAreNeverTakenForNumbers) {
    // A number's bytes handed to a string array would be taken for a string
    // handle, to a variant array for a VARIANT; a string copied out to be
    // read as a number would be lost. Neither array gives or takes numbers.
    SafeArray s(VT_BSTR, 0, 2);
    s.data<BSTR>()[0] = SysAllocStringByteLen("abcdefgh", 8);
    const BSTR handle = s.data<BSTR>()[0];
    ArrayElements strings(s.ref());
    EXPECT_TRUE(strings.holds_references());
    EXPECT_TRUE(strings.holds_strings());
    EXPECT_FALSE(strings.put<double>(0, 1.0));
    EXPECT_FALSE(strings.put_number(2, 1, 8));
    EXPECT_EQ(s.data<BSTR>()[0], handle);
    EXPECT_EQ(s.data<BSTR>()[1], nullptr);
    EXPECT_EQ(strings.get<int64_t>(0), 0) << "a string handle is not a number";
    EXPECT_EQ(strings.get_number(5, 0), 0.0);

    SafeArray v(VT_VARIANT, 1, 2);
    V_VT(&v.data<VARIANT>()[0]) = VT_I4;
    V_I4(&v.data<VARIANT>()[0]) = 77;
    ArrayElements variants(v.ref());
    EXPECT_TRUE(variants.holds_references());
    EXPECT_FALSE(variants.holds_strings());
    EXPECT_FALSE(variants.put<int16_t>(1, VT_BSTR));
    EXPECT_EQ(V_VT(&v.data<VARIANT>()[0]), VT_I4);
    EXPECT_EQ(V_I4(&v.data<VARIANT>()[0]), 77);
    EXPECT_EQ(variants.get<int16_t>(1), 0) << "not the variant's type word";
    EXPECT_EQ(variants.get_string(1), std::nullopt) << "a Variant() array is not a String() array";
    EXPECT_FALSE(variants.put_string(1, "x"));

    SafeArray n(VT_R8, 0, 1);
    ArrayElements numbers(n.ref());
    EXPECT_FALSE(numbers.holds_references());
    EXPECT_FALSE(numbers.put_string(0, "x"));
    EXPECT_EQ(numbers.get_string(0), std::nullopt);
    EXPECT_EQ(n.data<double>()[0], 0.0);
}

TEST(FrameArrays, ElementsRunAlongDimensionOneOfAnyShape) {
    // The other dimensions stay at their lower bounds: the first column of a
    // 2-D String array, the first record of a 3-D numeric one.
    SafeArray grid(VT_BSTR, {{3, -1}, {2, 4}}); // (-1 To 1, 4 To 5)
    ArrayElements view(grid.ref());
    ASSERT_TRUE(view.holds_strings());
    EXPECT_EQ(view.dims(), 2u);
    EXPECT_EQ(view.count(), 3u);
    EXPECT_EQ(view.get_string(-1), std::nullopt) << "a null element";
    EXPECT_TRUE(view.put_string(-1, "first"));
    EXPECT_TRUE(view.put_string(0, ""));
    EXPECT_TRUE(view.put_string(1, std::string_view("a\0b", 3)));
    EXPECT_FALSE(view.put_string(2, "outside"));
    EXPECT_EQ(view.get_string(-1), "first");
    EXPECT_EQ(view.get_string(0), "") << "an empty string, not a null element";
    EXPECT_EQ(view.get_string(1), std::string("a\0b", 3));
    EXPECT_EQ(view.get_string(2), std::nullopt);
    EXPECT_EQ(string_element(grid.ref(), {-1, 4}), "first");
    EXPECT_EQ(string_element(grid.ref(), {-1}), std::nullopt) << "one subscript for two dimensions";
    for (int k = 3; k < 6; ++k)
        EXPECT_EQ(grid.data<BSTR>()[k], nullptr) << "the second column is left alone";

    SafeArray cube(VT_I2, {{2, 0}, {2, 7}, {2, -3}});
    ArrayElements numbers(cube.ref());
    EXPECT_TRUE(numbers.put<int16_t>(1, 5));
    EXPECT_EQ(numbers.get<int16_t>(1), 5);
    EXPECT_EQ(std::vector<int16_t>(cube.data<int16_t>(), cube.data<int16_t>() + 8), (std::vector<int16_t>{0, 5, 0, 0, 0, 0, 0, 0}));
}

TEST(FrameArrays, ElementsTheSystemRefuses) {
    // The element calls fail while the array's lock count is at its limit:
    // nothing is read or written, and the views say so.
    SafeArray n(VT_I4, 0, 2);
    n.data<int32_t>()[0] = 5;
    SafeArray s(VT_BSTR, 0, 1);
    s.data<BSTR>()[0] = SysAllocStringByteLen("x", 1);
    ArrayElements numbers(n.ref()), strings(s.ref());
    const auto lock_out = [](SafeArray &a) {
        LONG locks = 0;
        while (locks < 0x10000 && SafeArrayLock(a.get()) == S_OK)
            ++locks;
        return locks;
    };
    const LONG n_locks = lock_out(n), s_locks = lock_out(s);
    EXPECT_FALSE(numbers.put<int32_t>(1, 9));
    EXPECT_EQ(numbers.get<int32_t>(0), 0);
    EXPECT_FALSE(strings.put_string(0, "y"));
    EXPECT_EQ(strings.get_string(0), std::nullopt);
    for (LONG k = 0; k < n_locks; ++k)
        SafeArrayUnlock(n.get());
    for (LONG k = 0; k < s_locks; ++k)
        SafeArrayUnlock(s.get());
    EXPECT_EQ(n.data<int32_t>()[1], 0);
    EXPECT_EQ(numbers.get<int32_t>(0), 5);
    EXPECT_EQ(strings.get_string(0), "x");
}

TEST(FrameArrays, BlockReleasesItsLockOnEveryPath) {
    SafeArray a(VT_R4, {{4, 1}, {3, 0}});
    {
        ArrayBlock block(a.ref());
        ASSERT_TRUE(block.ok());
        EXPECT_EQ(a.get()->cLocks, 1u);
        EXPECT_EQ(block.dims(), 2u);
        EXPECT_EQ(block.count1(), 4u) << "record length: all of dimension 1";
        EXPECT_EQ(block.count2(), 3u) << "record count: dimension 2";
        EXPECT_EQ(block.bytes(), 48u);
        EXPECT_EQ(block.lower1(), 1);
    }
    EXPECT_EQ(a.get()->cLocks, 0u);
    try {
        ArrayBlock block(a.ref());
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(a.get()->cLocks, 0u) << "unlocked when an exception leaves the scope";
}

TEST(FrameArrays, BlockRefusesThreeDimensions) {
    SafeArray cube(VT_I4, {{2, 0}, {2, 0}, {2, 0}});
    ArrayBlock block(cube.ref());
    EXPECT_FALSE(block.ok());
    EXPECT_EQ(cube.get()->cLocks, 0u);
    ArrayBlock none(nullptr);
    EXPECT_FALSE(none.ok());
}

TEST(FrameVariants, CoercionLeavesTheArgumentUnchanged) {
    Variant d = Variant::of_double(2.5);
    EXPECT_EQ(variant_to_long(d.ptr()), 2) << "OLE rounds half to even";
    EXPECT_EQ(V_VT(d.ptr()), VT_R8);
    EXPECT_EQ(V_R8(d.ptr()), 2.5);

    Variant t = Variant::of_text("42");
    BSTR before = V_BSTR(t.ptr());
    EXPECT_EQ(variant_to_long(t.ptr()), 42);
    EXPECT_EQ(variant_to_double(t.ptr()), 42.0);
    EXPECT_EQ(V_VT(t.ptr()), VT_BSTR);
    EXPECT_EQ(V_BSTR(t.ptr()), before);

    Variant n = Variant::of_long(-17);
    EXPECT_EQ(variant_to_bytes(n.ptr()), "-17");
    EXPECT_EQ(variant_to_bytes(t.ptr()), "42");
}

TEST(FrameVariants, FailedCoercionReadsAsZero) {
    Variant words = Variant::of_text("not a number");
    EXPECT_EQ(variant_to_long(words.ptr()), 0);
    Variant huge = Variant::of_double(1e300);
    EXPECT_EQ(variant_to_long(huge.ptr()), 0);
    EXPECT_EQ(variant_to_long(nullptr), 0);
}

TEST(FrameRecords, FixedFieldsAsNames) {
    const char field[8] = {'d', 'a', 't', 'a', ' ', ' ', ' ', ' '};
    EXPECT_EQ(field_name(field, 8), "data");
    const char full[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(field_name(full, 4), "abcd") << "no terminator is needed";
    const char zero[4] = {'a', '\0', 'c', 'd'};
    EXPECT_EQ(field_name(zero, 4), "a");
    const char blank[4] = {' ', 'x', 'y', 'z'};
    EXPECT_EQ(field_name(blank, 4), "");
    char out[6];
    put_field(out, 6, "ab");
    EXPECT_EQ(std::string(out, 6), "ab    ");
    put_field(out, 6, "abcdefgh");
    EXPECT_EQ(std::string(out, 6), "abcdef");
}
