// The typed-array family through the exported interface: statistics, fills,
// maxima and minima, counts and searches, string arrays, shifts, checksums
// and array parameters.
#include "support/ole_helpers.h"

#include <zlib.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

using namespace brindle::test;

namespace {

template <class T> constexpr VARTYPE vt_of() {
    if constexpr (std::is_same_v<T, int16_t>)
        return VT_I2;
    else if constexpr (std::is_same_v<T, int32_t>)
        return VT_I4;
    else if constexpr (std::is_same_v<T, float>)
        return VT_R4;
    else if constexpr (std::is_same_v<T, double>)
        return VT_R8;
    else
        return VT_UI1;
}

// A one-dimensional array holding `values`, first subscript `lower`.
template <class T> struct Arr : SafeArray {
    Arr(std::vector<T> values, LONG lower = 0) : SafeArray(vt_of<T>(), lower, static_cast<ULONG>(values.size())) {
        if (!values.empty())
            std::memcpy(data<T>(), values.data(), values.size() * sizeof(T));
        n = values.size();
    }
    std::vector<T> values() const { return std::vector<T>(data<T>(), data<T>() + n); }
    size_t n;
};

// An empty array (lower bound above upper bound).
template <class T> struct Empty : SafeArray {
    Empty() : SafeArray(vt_of<T>(), 1, 0) {}
};

} // namespace

TEST(Statistics, SumMeanAndTheFamilysDeviation) {
    Arr<double> d({1, 2, 3});
    EXPECT_DOUBLE_EQ(cSumD(d.ref()), 6.0);
    EXPECT_DOUBLE_EQ(cMeanD(d.ref()), 2.0);
    EXPECT_NEAR(cDeviationD(d.ref()), 0.47140452079103, 1e-13); // sqrt(2)/3, not 0.8165
    Arr<double> one({42.5});
    EXPECT_EQ(cDeviationD(one.ref()), 0.0);

    // Every element type, with a lower bound other than 0 or 1.
    Arr<int16_t> i({-32768, 32767, 5}, -7);
    EXPECT_DOUBLE_EQ(cSumI(i.ref()), 4.0);
    Arr<int32_t> l({2147483647, 2147483647}, 10);
    EXPECT_DOUBLE_EQ(cSumL(l.ref()), 4294967294.0); // widened, no 32-bit overflow
    EXPECT_DOUBLE_EQ(cMeanL(l.ref()), 2147483647.0);
    Arr<float> s({0.5f, 0.25f, 1e-3f}, 3);
    EXPECT_DOUBLE_EQ(cSumS(s.ref()), 0.5 + 0.25 + static_cast<double>(1e-3f)); // Single widened exactly
    EXPECT_NEAR(cDeviationI(i.ref()), std::sqrt((std::pow(-32768 - 4 / 3.0, 2) + std::pow(32767 - 4 / 3.0, 2) +
                                                 std::pow(5 - 4 / 3.0, 2))) / 3, 1e-9);
    EXPECT_NEAR(cDeviationL(l.ref()), 0.0, 1e-9);
    EXPECT_NEAR(cMeanS(s.ref()), (0.75 + static_cast<double>(1e-3f)) / 3, 1e-15);
    EXPECT_NEAR(cDeviationS(s.ref()), std::sqrt(std::pow(0.5 - cMeanS(s.ref()), 2) + std::pow(0.25 - cMeanS(s.ref()), 2) +
                                                std::pow(1e-3f - cMeanS(s.ref()), 2)) / 3, 1e-12);
    EXPECT_DOUBLE_EQ(cMeanI(i.ref()), 4.0 / 3);
}

TEST(Statistics, EmptyArraysAndMissingDescriptors) {
    Empty<double> e;
    EXPECT_EQ(cSumD(e.ref()), 0.0);
    EXPECT_TRUE(std::isnan(cMeanD(e.ref())));
    EXPECT_TRUE(std::isnan(cDeviationD(e.ref())));
    SAFEARRAY *null_array = nullptr;
    EXPECT_EQ(cSumL(&null_array), 0.0);
    EXPECT_EQ(cSumL(nullptr), 0.0);
    EXPECT_EQ(cMaxL(&null_array), 0);
    EXPECT_EQ(cSearchL(&null_array, 0), -1);
}

TEST(Statistics, TypeCodeAndElementSizeDisagree) {
    // A Byte array read as Doubles: each element is read into a buffer that
    // holds the array's own element; the result is wrong but bounded.
    Arr<uint8_t> b({1, 2, 3});
    EXPECT_DOUBLE_EQ(cSumL(b.ref()), 6.0); // leading byte, rest zero
    EXPECT_DOUBLE_EQ(cSumD(b.ref()), 6 * 4.9406564584124654e-324); // the smallest denormal, times 6
    // A Double array read as Integers takes each element's leading bytes.
    Arr<double> d({1.0, 2.0});
    EXPECT_DOUBLE_EQ(cSumI(d.ref()), 0.0); // the low 16 bits of 1.0 and 2.0 are zero
    // Writes through a narrower code zero the rest of each element.
    EXPECT_EQ(cSetI(d.ref(), 7), -1);
    int64_t bits;
    std::memcpy(&bits, d.data<double>(), 8);
    EXPECT_EQ(bits, 7);
    EXPECT_EQ(cFillD(b.ref(), 1.0), -1); // only the array's own byte is written
    EXPECT_EQ(b.values()[0], 0);
}

TEST(Statistics, TwoDimensionalArraysAreReadAlongTheFirstRecord) {
    // Element access passes one subscript per dimension: dimension 1 at the
    // given subscript, the others at their lower bounds.
    SafeArray a(VT_I4, {{3, 1}, {2, 5}});
    int32_t *p = a.data<int32_t>();
    for (int32_t k = 0; k < 6; ++k)
        p[k] = k + 1; // (1,5)=1 (2,5)=2 (3,5)=3 (1,6)=4 ...
    EXPECT_DOUBLE_EQ(cSumL(a.ref()), 6.0);
    EXPECT_EQ(cSearchL(a.ref(), 3), 3);
    EXPECT_EQ(cSearchL(a.ref(), 4), -1);
}

TEST(Extremes, MaxAndMinStartFromSubscriptOne) {
    Arr<int16_t> i({3, -9, 12, 0}, 0);
    EXPECT_EQ(cMaxI(i.ref()), 12);
    EXPECT_EQ(cMinI(i.ref()), -9);
    Arr<int32_t> l({-5, -3, -8}, 1);
    EXPECT_EQ(cMaxL(l.ref()), -3);
    EXPECT_EQ(cMinL(l.ref()), -8);
    Arr<float> s({-1.5f, 2.25f}, 5); // subscript 1 outside: the lower bound stands in
    EXPECT_EQ(cMaxS(s.ref()), 2.25f);
    EXPECT_EQ(cMinS(s.ref()), -1.5f);
    Arr<double> d({7, 7, 7}, -1);
    EXPECT_EQ(cMaxD(d.ref()), 7);
    Arr<double> n({-1e300, -2e300}, 1);
    EXPECT_EQ(cMaxD(n.ref()), -1e300);
    EXPECT_EQ(cMinD(n.ref()), -2e300);
    Empty<int32_t> e;
    EXPECT_EQ(cMaxL(e.ref()), 0);
}

TEST(Extremes, NotXFormsStartFromFixedConstants) {
    Arr<float> s({-5, -3, 7});
    const float max_s = cMaxNotXS(s.ref(), 7);
    uint32_t bits;
    std::memcpy(&bits, &max_s, 4);
    EXPECT_EQ(bits, 0x80800000u); // -1.1754944E-38, not -3
    Arr<int32_t> l({4, 4});
    EXPECT_EQ(cMinNotXL(l.ref(), 4), 2147483647);
    EXPECT_EQ(cMaxNotXL(l.ref(), 4), std::numeric_limits<int32_t>::min());
    Arr<double> d({-2, -1, 3});
    EXPECT_EQ(cMaxNotXD(d.ref(), 3), -2.2250738585072014E-308);
    EXPECT_EQ(cMaxNotXD(d.ref(), -2), 3);
    EXPECT_EQ(cMinNotXD(d.ref(), -2), -1);
    Empty<double> e;
    EXPECT_EQ(cMinNotXD(e.ref(), 0), 1.7976931348623157E+308);
    EXPECT_EQ(cMinNotXS(e.ref(), 0), 3.4028235E+38f);
    Arr<int16_t> i({9, -4, 9, 2});
    EXPECT_EQ(cMaxNotXI(i.ref(), 9), 2);
    EXPECT_EQ(cMinNotXI(i.ref(), -4), 2);
    EXPECT_EQ(cMaxNotXI(i.ref(), 1), 9);
    Arr<int16_t> all({5, 5});
    EXPECT_EQ(cMaxNotXI(all.ref(), 5), -32768);
    EXPECT_EQ(cMinNotXI(all.ref(), 5), 32767);
    Arr<float> f({1.5f, -2.5f, 1.5f});
    EXPECT_EQ(cMinNotXS(f.ref(), -2.5f), 1.5f);
}

TEST(Fills, SetAddAndFillInEveryType) {
    Arr<int16_t> i({1, 2, 32767}, 4);
    EXPECT_EQ(cAddI(i.ref(), 1), -1);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{2, 3, -32768})); // 16-bit wrap-around
    EXPECT_EQ(cSetI(i.ref(), -6), -1);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{-6, -6, -6}));
    EXPECT_EQ(cFillI(i.ref(), 32766), -1);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{32766, 32767, -32768}));
    EXPECT_EQ(cFillIncrI(i.ref(), 10, -7), -1);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{10, 3, -4}));

    Arr<float> s({0, 0, 0, 0}, -2);
    EXPECT_EQ(cFillS(s.ref(), 0.5f), -1);
    EXPECT_EQ(s.values(), (std::vector<float>{0.5f, 1.5f, 2.5f, 3.5f}));
    EXPECT_EQ(cAddS(s.ref(), -0.5f), -1);
    EXPECT_EQ(s.values(), (std::vector<float>{0, 1, 2, 3}));
    EXPECT_EQ(cFillIncrS(s.ref(), 1, 0.25f), -1);
    EXPECT_EQ(s.values(), (std::vector<float>{1, 1.25f, 1.5f, 1.75f}));

    Arr<double> d({0, 0, 0}, 1);
    EXPECT_EQ(cSetD(d.ref(), 2.5), -1);
    EXPECT_EQ(d.values(), (std::vector<double>{2.5, 2.5, 2.5}));
    EXPECT_EQ(cAddD(d.ref(), 0.25), -1);
    EXPECT_EQ(d.values(), (std::vector<double>{2.75, 2.75, 2.75}));
    EXPECT_EQ(cFillD(d.ref(), -1), -1);
    EXPECT_EQ(d.values(), (std::vector<double>{-1, 0, 1}));
    EXPECT_EQ(cFillIncrD(d.ref(), 100, -50), -1);
    EXPECT_EQ(d.values(), (std::vector<double>{100, 50, 0}));

    Empty<double> e;
    EXPECT_EQ(cFillD(e.ref(), 1), -1);
    SAFEARRAY *null_array = nullptr;
    EXPECT_EQ(cSetD(&null_array, 1), -1);
}

TEST(Searches, CountAndFirstSubscript) {
    Arr<int16_t> i({4, 1, 4, 4}, 3);
    EXPECT_EQ(cCountI(i.ref(), 4), 3);
    EXPECT_EQ(cSearchI(i.ref(), 4), 3);
    EXPECT_EQ(cSearchI(i.ref(), 1), 4);
    EXPECT_EQ(cSearchI(i.ref(), 2), -1);
    Arr<int32_t> l({-1, 7, 7}, -5);
    EXPECT_EQ(cSearchL(l.ref(), 7), -4);
    EXPECT_EQ(cSearchL(l.ref(), -1), -5);
    EXPECT_EQ(cCountL(l.ref(), 7), 2);
    Arr<float> s({0.1f, 0.2f, 0.1f});
    EXPECT_EQ(cCountS(s.ref(), 0.1f), 2);
    EXPECT_EQ(cSearchS(s.ref(), 0.2f), 1);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Arr<double> d({nan, 1.0, nan});
    EXPECT_EQ(cCountD(d.ref(), nan), 0);
    EXPECT_EQ(cSearchD(d.ref(), nan), -1);
    EXPECT_EQ(cSearchD(d.ref(), 1.0), 1);
    EXPECT_EQ(cCountD(d.ref(), 0.1), 0);
}

namespace {

// A string array of byte strings; a null entry is a null element.
struct StrArray : SafeArray {
    StrArray(std::vector<const char *> items, LONG lower) : SafeArray(VT_BSTR, lower, static_cast<ULONG>(items.size())) {
        for (size_t k = 0; k < items.size(); ++k)
            if (items[k] != nullptr)
                data<BSTR>()[k] = SysAllocStringByteLen(items[k], static_cast<UINT>(std::strlen(items[k])));
    }
    // Rows of (key, value), bounds (lower1 .. , lower2 ..).
    StrArray(std::vector<std::pair<const char *, const char *>> rows, LONG lower1, LONG lower2)
        : SafeArray(VT_BSTR, {{static_cast<ULONG>(rows.size()), lower1}, {2, lower2}}) {
        const size_t n = rows.size();
        for (size_t k = 0; k < n; ++k) {
            if (rows[k].first != nullptr)
                data<BSTR>()[k] = SysAllocStringByteLen(rows[k].first, static_cast<UINT>(std::strlen(rows[k].first)));
            if (rows[k].second != nullptr)
                data<BSTR>()[n + k] = SysAllocStringByteLen(rows[k].second, static_cast<UINT>(std::strlen(rows[k].second)));
        }
    }
};

int32_t search(StrArray &a, std::string_view key, int16_t flag) {
    Bstr k(key);
    return cSearchStr(a.ref(), k.ref(), flag);
}

std::string look_up(SafeArray &a, std::string_view key, int16_t flag) {
    Bstr k(key);
    return str(cArrayLookUp(a.ref(), k.ref(), flag));
}

} // namespace

TEST(Searches, StringArraysGiveTheLastMatch) {
    StrArray a({"x", "Key", "y", nullptr, "z", "key"}, 1);
    EXPECT_EQ(search(a, "key", 0), 6);   // case-insensitive: subscripts 2 and 6 match
    EXPECT_EQ(search(a, "Key", -1), 2);  // case-sensitive
    EXPECT_EQ(search(a, "KEY", -1), -1);
    EXPECT_EQ(search(a, "KEY", 1), 6);   // 1 is not True
    EXPECT_EQ(search(a, "", 0), 4);      // the null element matches only an empty key
    EXPECT_EQ(search(a, "w", 0), -1);
    StrArray b({"a", "b", "a"}, -3);
    EXPECT_EQ(search(b, "a", 0), -1);
    EXPECT_EQ(search(b, "b", 0), -2);
    // Not a string array: never taken for one.
    Arr<int32_t> numbers({0, 0});
    Bstr k("");
    EXPECT_EQ(cSearchStr(numbers.ref(), k.ref(), 0), -1);
}

TEST(Searches, LookUpPairsColumnOneWithColumnTwo) {
    StrArray t({{"red", "1"}, {"Green", "2"}, {"green", "3"}, {"blue", nullptr}}, 0, 1);
    EXPECT_EQ(look_up(t, "GREEN", 0), "3"); // the last matching row wins
    EXPECT_EQ(look_up(t, "Green", -1), "2");
    EXPECT_EQ(look_up(t, "red", 0), "1");
    EXPECT_EQ(look_up(t, "blue", 0), "");   // a null value
    EXPECT_EQ(look_up(t, "black", 0), "");
    // A null key element matches any key.
    StrArray n({{"a", "first"}, {nullptr, "second"}, {"b", "third"}}, 5, 1);
    EXPECT_EQ(look_up(n, "a", 0), "second");
    EXPECT_EQ(look_up(n, "b", 0), "third");
    // The columns are the literal subscripts 1 and 2: with dimension 2 at 0..1
    // the key column (i, 1) is the second column and (i, 2) does not exist.
    StrArray z({{"k", "v"}}, 0, 0);
    EXPECT_EQ(look_up(z, "v", 0), "");
    // One dimension, or not strings: empty.
    StrArray one({"a", "b"}, 0);
    EXPECT_EQ(look_up(one, "a", 0), "");
    SafeArray numbers(VT_I4, {{2, 0}, {2, 1}});
    EXPECT_EQ(look_up(numbers, "", 0), "");
}

TEST(Shifts, ElementsMoveByOnePlace) {
    Arr<uint8_t> b({1, 2, 3});
    EXPECT_EQ(cShiftLeftB(b.ref(), 9), -1);
    EXPECT_EQ(b.values(), (std::vector<uint8_t>{2, 3, 9}));
    EXPECT_EQ(cShiftRightB(b.ref(), 7), -1);
    EXPECT_EQ(b.values(), (std::vector<uint8_t>{7, 2, 3}));
    Arr<int16_t> i({1, 2}, 5);
    cShiftLeftI(i.ref(), -1);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{2, -1}));
    Arr<int32_t> l({1, 2, 3, 4});
    cShiftRightL(l.ref(), 0);
    EXPECT_EQ(l.values(), (std::vector<int32_t>{0, 1, 2, 3}));
    cShiftLeftL(l.ref(), 5);
    EXPECT_EQ(l.values(), (std::vector<int32_t>{1, 2, 3, 5}));
    Arr<float> s({1.5f});
    cShiftLeftS(s.ref(), 2.5f);
    EXPECT_EQ(s.values(), (std::vector<float>{2.5f}));
    cShiftRightS(s.ref(), 3.5f);
    EXPECT_EQ(s.values(), (std::vector<float>{3.5f}));
    Arr<double> d({1, 2, 3});
    cShiftRightD(d.ref(), 0.5);
    cShiftLeftD(d.ref(), 9);
    EXPECT_EQ(d.values(), (std::vector<double>{1, 2, 9}));
    Empty<double> e;
    EXPECT_EQ(cShiftLeftD(e.ref(), 1), -1);
    // Only dimension 1 moves: the first record of a two-dimensional array.
    SafeArray two(VT_I4, {{2, 0}, {2, 0}});
    int32_t *p = two.data<int32_t>();
    p[0] = 1, p[1] = 2, p[2] = 3, p[3] = 4;
    cShiftLeftL(two.ref(), 0);
    EXPECT_EQ(std::vector<int32_t>(p, p + 4), (std::vector<int32_t>{2, 0, 3, 4}));
    SafeArray three(VT_I4, {{2, 0}, {2, 0}, {2, 0}});
    EXPECT_EQ(cShiftLeftL(three.ref(), 0), 0);
}

TEST(Shifts, WiderCodeThanTheElementsStaysInsideTheBlock) {
    // Three bytes shifted as Doubles: not even one Double fits, nothing moves.
    Arr<uint8_t> b({1, 2, 3});
    EXPECT_EQ(cShiftLeftD(b.ref(), 1.0), -1);
    EXPECT_EQ(b.values(), (std::vector<uint8_t>{1, 2, 3}));
    // Five Integers shifted as Longs: two whole Longs fit (8 of 10 bytes).
    Arr<int16_t> i({1, 2, 3, 4, 5});
    EXPECT_EQ(cShiftRightL(i.ref(), 0), -1);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{0, 0, 1, 2, 5}));
}

TEST(Checksums, CrcOfTheDataBytesInMemoryOrder) {
    const auto zcrc = [](const void *p, size_t n) {
        return static_cast<int32_t>(crc32(0, static_cast<const Bytef *>(p), static_cast<uInt>(n)));
    };
    Arr<uint8_t> b({'1', '2', '3', '4', '5', '6', '7', '8', '9'});
    EXPECT_EQ(cCrc32B(b.ref()), static_cast<int32_t>(0xCBF43926u));
    Arr<int16_t> i({1, -2, 300}, 7);
    EXPECT_EQ(cCrc32I(i.ref()), zcrc(i.data<int16_t>(), 6));
    Arr<int32_t> l({123456789, -1});
    EXPECT_EQ(cCrc32L(l.ref()), zcrc(l.data<int32_t>(), 8));
    Arr<float> s({1.5f, -0.0f});
    EXPECT_EQ(cCrc32S(s.ref()), zcrc(s.data<float>(), 8));
    Arr<double> d({3.25});
    EXPECT_EQ(cCrc32D(d.ref()), zcrc(d.data<double>(), 8));
    // The size comes from the array, not from the export's name.
    EXPECT_EQ(cCrc32B(reinterpret_cast<SAFEARRAY **>(d.ref())), cCrc32D(d.ref()));
    // Only dimension 1: the first record of a two-dimensional array.
    SafeArray two(VT_I2, {{2, 0}, {3, 0}});
    for (int k = 0; k < 6; ++k)
        two.data<int16_t>()[k] = static_cast<int16_t>(k * 11);
    EXPECT_EQ(cCrc32I(two.ref()), zcrc(two.data<int16_t>(), 4));
    Empty<uint8_t> e;
    EXPECT_EQ(cCrc32B(e.ref()), 0);
}

namespace {
#pragma pack(push, 4)
struct Prm {
    int32_t Reserved;
    int16_t LowerBound, UpperBound, ElementSize, Dimensions, Count;
};
#pragma pack(pop)
} // namespace

TEST(Parameters, ArrayPrmTruncatesTo16Bits) {
    Prm p;
    std::memset(&p, 0x55, sizeof p);
    Arr<double> d({1, 2, 3}, -1);
    EXPECT_EQ(cArrayPrm(d.ref(), reinterpret_cast<::ArrayParameters *>(&p)), -1);
    EXPECT_EQ(p.Reserved, 0);
    EXPECT_EQ(p.LowerBound, -1);
    EXPECT_EQ(p.UpperBound, 1);
    EXPECT_EQ(p.ElementSize, 8);
    EXPECT_EQ(p.Dimensions, 1);
    EXPECT_EQ(p.Count, 3);
    SafeArray big(VT_UI1, {{40000, 70000}, {2, 0}});
    cArrayPrm(big.ref(), reinterpret_cast<::ArrayParameters *>(&p));
    EXPECT_EQ(p.LowerBound, static_cast<int16_t>(70000));
    EXPECT_EQ(p.UpperBound, static_cast<int16_t>(109999));
    EXPECT_EQ(p.Count, static_cast<int16_t>(40000)); // wraps negative
    EXPECT_EQ(p.ElementSize, 1);
    EXPECT_EQ(p.Dimensions, 2);
}

TEST(BlockRoutines, ArraysOwningStringsAreNeverTornApart) {
    // Numeric block routines on a string array would split or duplicate its
    // string handles (freed twice when the array goes); they leave it alone.
    SafeArray a(VT_BSTR, 0, 3);
    const char *items[] = {"c", "a", "b"};
    for (int k = 0; k < 3; ++k)
        a.data<BSTR>()[k] = SysAllocStringByteLen(items[k], 1);
    const std::vector<BSTR> before(a.data<BSTR>(), a.data<BSTR>() + 3);
    Bstr none;
    EXPECT_EQ(cSortI(a.ref()), -1);
    EXPECT_EQ(cReverseSortL(a.ref()), -1);
    EXPECT_EQ(cShiftLeftL(a.ref(), 0), -1);
    EXPECT_EQ(cShiftRightB(a.ref(), 0), -1);
    EXPECT_EQ(cRmvDupL(a.ref(), 0, none.ref(), -1), 0);
    EXPECT_EQ(std::vector<BSTR>(a.data<BSTR>(), a.data<BSTR>() + 3), before);
    // Reading is harmless: the checksum covers the handles' bytes.
    EXPECT_EQ(cCrc32B(a.ref()), static_cast<int32_t>(crc32(0, reinterpret_cast<const Bytef *>(a.data<BSTR>()),
                                                           static_cast<uInt>(3 * sizeof(BSTR)))));
}
