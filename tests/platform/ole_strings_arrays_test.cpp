// The OLE Automation subset the Linux library exports: counted strings and
// array descriptors keep the Windows layouts and rules that clients rely on.
#include "support/ole_helpers.h"

#ifndef _WIN32

#include <cstring>

using namespace brindle::test;

TEST(OleStrings, LayoutIsLengthPrefixedAndDoublyTerminated) {
    BSTR s = SysAllocStringByteLen("abc", 3);
    ASSERT_NE(s, nullptr);
    uint32_t prefix;
    std::memcpy(&prefix, reinterpret_cast<char *>(s) - 4, 4);
    EXPECT_EQ(prefix, 3u);
    EXPECT_EQ(reinterpret_cast<char *>(s)[3], 0);
    EXPECT_EQ(reinterpret_cast<char *>(s)[4], 0);
    EXPECT_EQ(SysStringByteLen(s), 3u);
    EXPECT_EQ(SysStringLen(s), 1u) << "three bytes are one whole OLECHAR";
    SysFreeString(s);
}

TEST(OleStrings, NullAndEmptyAreZeroLength) {
    EXPECT_EQ(SysStringByteLen(nullptr), 0u);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    SysFreeString(nullptr);
    BSTR empty = SysAllocStringByteLen(nullptr, 0);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(SysStringByteLen(empty), 0u);
    SysFreeString(empty);
    BSTR zeroed = SysAllocStringByteLen(nullptr, 4);
    EXPECT_EQ(std::memcmp(zeroed, "\0\0\0\0", 4), 0);
    SysFreeString(zeroed);
}

TEST(OleStrings, WideAllocationAndReallocation) {
    const OLECHAR hi[] = {'h', 'i', 0};
    BSTR s = SysAllocString(hi);
    EXPECT_EQ(SysStringLen(s), 2u);
    EXPECT_EQ(SysStringByteLen(s), 4u);
    // Reallocating from the string's own characters is allowed.
    ASSERT_EQ(SysReAllocStringLen(&s, s + 1, 1), 1);
    EXPECT_EQ(SysStringLen(s), 1u);
    EXPECT_EQ(s[0], 'i');
    ASSERT_EQ(SysReAllocString(&s, hi), 1);
    EXPECT_EQ(SysStringLen(s), 2u);
    EXPECT_EQ(SysReAllocString(nullptr, hi), 0);
    SysFreeString(s);
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
}

TEST(OleArrays, BoundsAreStoredLastDimensionFirst) {
    SafeArray a(VT_I4, {{3, 1}, {2, -5}}); // Dim a(1 To 3, -5 To -4) As Long
    ASSERT_NE(a.get(), nullptr);
    EXPECT_EQ(SafeArrayGetDim(a.get()), 2u);
    EXPECT_EQ(SafeArrayGetElemsize(a.get()), 4u);
    EXPECT_EQ(a.get()->rgsabound[0].lLbound, -5);
    EXPECT_EQ(a.get()->rgsabound[1].lLbound, 1);
    LONG lo, hi;
    EXPECT_EQ(SafeArrayGetLBound(a.get(), 1, &lo), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(a.get(), 1, &hi), S_OK);
    EXPECT_EQ(lo, 1);
    EXPECT_EQ(hi, 3);
    EXPECT_EQ(SafeArrayGetLBound(a.get(), 2, &lo), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(a.get(), 2, &hi), S_OK);
    EXPECT_EQ(lo, -5);
    EXPECT_EQ(hi, -4);
    EXPECT_EQ(SafeArrayGetLBound(a.get(), 3, &lo), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayGetLBound(a.get(), 0, &lo), DISP_E_BADINDEX);
    VARTYPE vt = 0;
    EXPECT_EQ(SafeArrayGetVartype(a.get(), &vt), S_OK);
    EXPECT_EQ(vt, VT_I4);
}

TEST(OleArrays, ElementsAreColumnMajor) {
    SafeArray a(VT_I2, {{3, 0}, {2, 0}});
    LONG at[2] = {2, 1};
    int16_t v = 42;
    ASSERT_EQ(SafeArrayPutElement(a.get(), at, &v), S_OK);
    EXPECT_EQ(a.data<int16_t>()[1 * 3 + 2], 42);
    int16_t back = 0;
    ASSERT_EQ(SafeArrayGetElement(a.get(), at, &back), S_OK);
    EXPECT_EQ(back, 42);
    LONG outside[2] = {3, 0};
    EXPECT_EQ(SafeArrayGetElement(a.get(), outside, &back), DISP_E_BADINDEX);
    LONG below[2] = {0, -1};
    EXPECT_EQ(SafeArrayPutElement(a.get(), below, &v), DISP_E_BADINDEX);
}

TEST(OleArrays, StringElementsAreCopiedInAndOut) {
    SafeArray a(VT_BSTR, 1, 2);
    BSTR s = SysAllocStringByteLen("xyz", 3);
    LONG at = 2;
    ASSERT_EQ(SafeArrayPutElement(a.get(), &at, s), S_OK);
    SysFreeString(s); // the array holds its own copy
    BSTR got = nullptr;
    ASSERT_EQ(SafeArrayGetElement(a.get(), &at, &got), S_OK);
    ASSERT_NE(got, nullptr);
    EXPECT_EQ(std::string(reinterpret_cast<char *>(got), SysStringByteLen(got)), "xyz");
    EXPECT_NE(got, a.data<BSTR>()[1]);
    SysFreeString(got);
    at = 1;
    ASSERT_EQ(SafeArrayGetElement(a.get(), &at, &got), S_OK);
    EXPECT_EQ(got, nullptr) << "an unset string element is a null handle";
}

TEST(OleArrays, LockingAndRedim) {
    SafeArray a(VT_R8, 0, 3);
    void *data = nullptr;
    ASSERT_EQ(SafeArrayAccessData(a.get(), &data), S_OK);
    EXPECT_EQ(a.get()->cLocks, 1u);
    SAFEARRAYBOUND bigger{5, 0};
    EXPECT_EQ(SafeArrayRedim(a.get(), &bigger), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayDestroy(a.get()), DISP_E_ARRAYISLOCKED);
    static_cast<double *>(data)[2] = 2.5;
    EXPECT_EQ(SafeArrayUnaccessData(a.get()), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(a.get()), E_UNEXPECTED);
    ASSERT_EQ(SafeArrayRedim(a.get(), &bigger), S_OK);
    EXPECT_EQ(a.data<double>()[2], 2.5) << "Redim keeps the elements it does not cut";
    EXPECT_EQ(a.data<double>()[4], 0.0);
    LONG hi;
    SafeArrayGetUBound(a.get(), 1, &hi);
    EXPECT_EQ(hi, 4);
    SAFEARRAYBOUND none{0, 0};
    ASSERT_EQ(SafeArrayRedim(a.get(), &none), S_OK);
    SafeArrayGetUBound(a.get(), 1, &hi);
    EXPECT_EQ(hi, -1);
}

TEST(OleArrays, RedimReleasesCutStrings) {
    // Run under the sanitizer preset: a leak here fails the suite.
    SafeArray a(VT_BSTR, 0, 3);
    for (LONG i = 0; i < 3; ++i) {
        BSTR s = SysAllocStringByteLen("abc", 3);
        SafeArrayPutElement(a.get(), &i, s);
        SysFreeString(s);
    }
    SAFEARRAYBOUND one{1, 0};
    ASSERT_EQ(SafeArrayRedim(a.get(), &one), S_OK);
    EXPECT_NE(a.data<BSTR>()[0], nullptr);
}

TEST(OleArrays, RefusedShapes) {
    SAFEARRAYBOUND b{1, 0};
    EXPECT_EQ(SafeArrayCreate(VT_I4, 0, &b), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_I4, 1, nullptr), nullptr);
    EXPECT_EQ(SafeArrayCreate(0x7F, 1, &b), nullptr);
    SAFEARRAYBOUND huge[2] = {{0xFFFFFFFFu, 0}, {0xFFFFFFFFu, 0}};
    EXPECT_EQ(SafeArrayCreate(VT_R8, 2, huge), nullptr) << "a size that overflows is refused";
    EXPECT_EQ(SafeArrayDestroy(nullptr), S_OK);
    EXPECT_EQ(SafeArrayGetDim(nullptr), 0u);
}

TEST(OleVariants, CopyIsDeepAndClearFrees) {
    Variant text = Variant::of_text("hello");
    Variant copy;
    ASSERT_EQ(VariantCopy(copy.ptr(), text.ptr()), S_OK);
    EXPECT_EQ(V_VT(copy.ptr()), VT_BSTR);
    EXPECT_NE(V_BSTR(copy.ptr()), V_BSTR(text.ptr()));
    EXPECT_EQ(SysStringLen(V_BSTR(copy.ptr())), 5u);
    EXPECT_EQ(VariantClear(copy.ptr()), S_OK);
    EXPECT_EQ(V_VT(copy.ptr()), VT_EMPTY);

    Variant array;
    V_VT(array.ptr()) = VT_ARRAY | VT_I4;
    V_ARRAY(array.ptr()) = SafeArrayCreateVector(VT_I4, 0, 4);
    Variant array_copy;
    ASSERT_EQ(VariantCopy(array_copy.ptr(), array.ptr()), S_OK);
    EXPECT_NE(V_ARRAY(array_copy.ptr()), V_ARRAY(array.ptr()));

    VARIANT bad;
    V_VT(&bad) = 0x7F;
    Variant target;
    EXPECT_EQ(VariantCopy(target.ptr(), &bad), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantClear(&bad), DISP_E_BADVARTYPE);
}

#endif // _WIN32
