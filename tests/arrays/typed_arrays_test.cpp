// The typed-array family through the exported interface: statistics, fills,
// maxima and minima, counts and searches, string arrays, shifts, checksums
// and array parameters.
#include "support/ole_helpers.h"
#include "support/typed_array.h"

#include <zlib.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using namespace brindle::test;

namespace {

// An empty array (lower bound above upper bound).
template <class T> struct Empty : SafeArray {
    Empty() : SafeArray(vt_of<T>(), 1, 0) {}
};

// One export's result against the expected one.
struct Row {
    template <class G, class W> Row(const char *n, G g, W w) : name(n), got(static_cast<double>(g)), want(static_cast<double>(w)) {}
    const char *name;
    double got, want;
};

// The elements after a block or fill routine that must answer True.
template <class T, class F, class... A> std::vector<T> after(TypedArray<T> &a, F f, A... args) {
    EXPECT_EQ(f(a.ref(), args...), -1);
    return a.values();
}

} // namespace

TEST(Statistics, EveryTypeWithTheFamilysOwnDeviation) {
    // Lower bounds other than 0 or 1; Longs widened (no 32-bit overflow),
    // Singles widened exactly. The deviation is sqrt(sum of squares) / n,
    // neither the population nor the sample one: 1, 2, 3 give sqrt(2) / 3.
    TypedArray<int16_t> i({-32768, 32767, 5}, -7);
    TypedArray<int32_t> l({2147483647, 2147483647}, 10);
    TypedArray<float> s({0.5f, 0.25f, 1e-3f}, 3);
    TypedArray<double> d({1, 2, 3});
    const Row rows[] = {
        {"SumI", cSumI(i.ref()), 4}, {"MeanI", cMeanI(i.ref()), 4.0 / 3}, {"DeviationI", cDeviationI(i.ref()), 15446.74770755128},
        {"SumL", cSumL(l.ref()), 4294967294.0}, {"MeanL", cMeanL(l.ref()), 2147483647.0}, {"DeviationL", cDeviationL(l.ref()), 0},
        {"SumS", cSumS(s.ref()), 0.7510000000474975}, {"MeanS", cMeanS(s.ref()), 0.2503333333491658},
        {"DeviationS", cDeviationS(s.ref()), 0.11761550665101815},
        {"SumD", cSumD(d.ref()), 6}, {"MeanD", cMeanD(d.ref()), 2}, {"DeviationD", cDeviationD(d.ref()), 0.47140452079103168}};
    for (const Row &r : rows)
        EXPECT_NEAR(r.got, r.want, 1e-14 * std::max(1.0, std::abs(r.want))) << r.name;
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
    EXPECT_EQ(cSetD(&null_array, 1), -1);
}

TEST(Statistics, TypeCodeAndElementSizeDisagree) {
    // Each element is read into a buffer that holds the array's own element:
    // the result is wrong but bounded.
    TypedArray<uint8_t> b({1, 2, 3});
    EXPECT_DOUBLE_EQ(cSumL(b.ref()), 6.0); // leading byte, rest zero
    EXPECT_DOUBLE_EQ(cSumD(b.ref()), 6 * 4.9406564584124654e-324); // the smallest denormal, times 6
    TypedArray<double> d({1.0, 2.0});
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
    // Dimension 1 at the given subscript, the others at their lower bounds.
    SafeArray a(VT_I4, {{3, 1}, {2, 5}});
    for (int32_t k = 0; k < 6; ++k)
        a.data<int32_t>()[k] = k + 1; // (1,5)=1 (2,5)=2 (3,5)=3 (1,6)=4 ...
    EXPECT_DOUBLE_EQ(cSumL(a.ref()), 6.0);
    EXPECT_EQ(cSearchL(a.ref(), 3), 3);
    EXPECT_EQ(cSearchL(a.ref(), 4), -1);
}

TEST(Extremes, MaxMinAndTheNotXFormsFixedStartValues) {
    // Max and Min start from subscript 1 (the lower bound when 1 is outside);
    // the NotX forms start from constants returned when nothing replaces
    // them, the Max ones for Single and Double the negated smallest normal.
    TypedArray<int16_t> i({3, -9, 12, 0}, 0), i2({9, -4, 9, 2}), same({5, 5});
    TypedArray<int32_t> l({-5, -3, -8}, 1), fours({4, 4});
    TypedArray<float> s({-1.5f, 2.25f}, 5), s2({-5, -3, 7}), s3({1.5f, -2.5f, 1.5f});
    TypedArray<double> d({-1e300, -2e300}, 1), d2({-2, -1, 3});
    Empty<int32_t> el;
    Empty<double> ed;
    const Row rows[] = {
        {"MaxI", cMaxI(i.ref()), 12}, {"MinI", cMinI(i.ref()), -9}, {"MaxL", cMaxL(l.ref()), -3}, {"MinL", cMinL(l.ref()), -8},
        {"MaxS", cMaxS(s.ref()), 2.25}, {"MinS", cMinS(s.ref()), -1.5}, {"MaxD", cMaxD(d.ref()), -1e300},
        {"MinD", cMinD(d.ref()), -2e300}, {"MaxL empty", cMaxL(el.ref()), 0},
        {"MaxNotXI", cMaxNotXI(i2.ref(), 9), 2}, {"MinNotXI", cMinNotXI(i2.ref(), -4), 2}, {"MaxNotXI 1", cMaxNotXI(i2.ref(), 1), 9},
        {"MaxNotXI all", cMaxNotXI(same.ref(), 5), -32768}, {"MinNotXI all", cMinNotXI(same.ref(), 5), 32767},
        {"MaxNotXL all", cMaxNotXL(fours.ref(), 4), INT32_MIN}, {"MinNotXL all", cMinNotXL(fours.ref(), 4), INT32_MAX},
        {"MaxNotXS", cMaxNotXS(s2.ref(), 7), -static_cast<double>(FLT_MIN)}, {"MinNotXS", cMinNotXS(s3.ref(), -2.5f), 1.5},
        {"MinNotXS empty", cMinNotXS(ed.ref(), 0), FLT_MAX}, {"MaxNotXD", cMaxNotXD(d2.ref(), 3), -DBL_MIN},
        {"MaxNotXD -2", cMaxNotXD(d2.ref(), -2), 3}, {"MinNotXD", cMinNotXD(d2.ref(), -2), -1},
        {"MinNotXD empty", cMinNotXD(ed.ref(), 0), DBL_MAX}};
    for (const Row &r : rows)
        EXPECT_EQ(r.got, r.want) << r.name;
}

TEST(Fills, SetAddAndFillInEveryType) {
    TypedArray<int16_t> i({1, 2, 32767}, 4);
    EXPECT_EQ(after(i, cAddI, 1), (std::vector<int16_t>{2, 3, -32768})); // 16-bit wrap-around
    EXPECT_EQ(after(i, cSetI, -6), (std::vector<int16_t>{-6, -6, -6}));
    EXPECT_EQ(after(i, cFillI, 32766), (std::vector<int16_t>{32766, 32767, -32768}));
    EXPECT_EQ(after(i, cFillIncrI, 10, -7), (std::vector<int16_t>{10, 3, -4}));
    TypedArray<float> s({0, 0, 0, 0}, -2);
    EXPECT_EQ(after(s, cFillS, 0.5f), (std::vector<float>{0.5f, 1.5f, 2.5f, 3.5f}));
    EXPECT_EQ(after(s, cAddS, -0.5f), (std::vector<float>{0, 1, 2, 3}));
    EXPECT_EQ(after(s, cFillIncrS, 1.0f, 0.25f), (std::vector<float>{1, 1.25f, 1.5f, 1.75f}));
    TypedArray<double> d({0, 0, 0}, 1);
    EXPECT_EQ(after(d, cSetD, 2.5), (std::vector<double>{2.5, 2.5, 2.5}));
    EXPECT_EQ(after(d, cAddD, 0.25), (std::vector<double>{2.75, 2.75, 2.75}));
    EXPECT_EQ(after(d, cFillD, -1.0), (std::vector<double>{-1, 0, 1}));
    EXPECT_EQ(after(d, cFillIncrD, 100.0, -50.0), (std::vector<double>{100, 50, 0}));
    Empty<double> e;
    EXPECT_EQ(cFillD(e.ref(), 1), -1);
}

TEST(Searches, CountAndFirstSubscript) {
    TypedArray<int16_t> i({4, 1, 4, 4}, 3);
    TypedArray<int32_t> l({-1, 7, 7}, -5);
    TypedArray<float> s({0.1f, 0.2f, 0.1f});
    const double nan = std::numeric_limits<double>::quiet_NaN();
    TypedArray<double> d({nan, 1.0, nan});
    const Row rows[] = {
        {"CountI", cCountI(i.ref(), 4), 3}, {"SearchI", cSearchI(i.ref(), 1), 4}, {"SearchI none", cSearchI(i.ref(), 2), -1},
        {"CountL", cCountL(l.ref(), 7), 2}, {"SearchL", cSearchL(l.ref(), 7), -4}, {"CountS", cCountS(s.ref(), 0.1f), 2},
        {"SearchS", cSearchS(s.ref(), 0.2f), 1}, {"CountD NaN", cCountD(d.ref(), nan), 0},
        {"SearchD NaN", cSearchD(d.ref(), nan), -1}, {"SearchD", cSearchD(d.ref(), 1.0), 1}};
    for (const Row &r : rows)
        EXPECT_EQ(r.got, r.want) << r.name;
}

namespace {

BSTR bytes_or_null(const char *s) { return s == nullptr ? nullptr : SysAllocStringByteLen(s, static_cast<UINT>(std::strlen(s))); }

// A string array of byte strings (a null entry is a null element): one
// dimension, or rows of (key, value).
struct StrArray : SafeArray {
    StrArray(std::vector<const char *> items, LONG lower) : SafeArray(VT_BSTR, lower, static_cast<ULONG>(items.size())) {
        for (size_t k = 0; k < items.size(); ++k)
            data<BSTR>()[k] = bytes_or_null(items[k]);
    }
    StrArray(std::vector<std::pair<const char *, const char *>> rows, LONG lower1, LONG lower2)
        : SafeArray(VT_BSTR, {{static_cast<ULONG>(rows.size()), lower1}, {2, lower2}}) {
        for (size_t k = 0; k < rows.size(); ++k) {
            data<BSTR>()[k] = bytes_or_null(rows[k].first);
            data<BSTR>()[rows.size() + k] = bytes_or_null(rows[k].second);
        }
    }
};

int32_t search(SafeArray &a, std::string_view key, int16_t flag) {
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
    StrArray b({"a", "b", "a"}, -3);
    EXPECT_EQ(search(b, "a", 0), -1);
    EXPECT_EQ(search(b, "b", 0), -2);
    TypedArray<int32_t> numbers({0, 0}); // never taken for a string array
    EXPECT_EQ(search(numbers, "", 0), -1);
}

TEST(Searches, LookUpPairsColumnOneWithColumnTwo) {
    StrArray t({{"red", "1"}, {"Green", "2"}, {"green", "3"}, {"blue", nullptr}}, 0, 1);
    EXPECT_EQ(look_up(t, "GREEN", 0), "3"); // the last matching row wins
    EXPECT_EQ(look_up(t, "Green", -1), "2");
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

namespace {

// A Variant() array: a string, a Long and an Empty.
struct VariantArray : SafeArray {
    VariantArray() : SafeArray(VT_VARIANT, 0, 3) {
        VARIANT *v = data<VARIANT>();
        V_VT(&v[0]) = VT_BSTR;
        V_BSTR(&v[0]) = SysAllocStringByteLen("text", 4);
        V_VT(&v[1]) = VT_I4;
        V_I4(&v[1]) = 3;
    }
    // Each element's type and value as they stand.
    std::vector<std::string> shown() const {
        std::vector<std::string> out;
        for (int k = 0; k < 3; ++k) {
            const VARIANT &v = data<VARIANT>()[k];
            std::string value = V_VT(&v) == VT_BSTR ? std::string(reinterpret_cast<const char *>(V_BSTR(&v)), SysStringByteLen(V_BSTR(&v)))
                                : V_VT(&v) == VT_I4 ? std::to_string(V_I4(&v))
                                                    : std::string();
            out.push_back(std::to_string(V_VT(&v)) + ":" + value);
        }
        return out;
    }
};

std::vector<std::string> texts(const SafeArray &a, size_t n) {
    std::vector<std::string> out;
    for (size_t k = 0; k < n; ++k) {
        const BSTR b = a.data<BSTR>()[k];
        out.push_back(b == nullptr ? "(null)" : std::string(reinterpret_cast<const char *>(b), SysStringByteLen(b)));
    }
    return out;
}

} // namespace

TEST(Fills, StringAndVariantArraysAreRefused) {
    // A String() or Variant() array passed where numbers are declared (As Any,
    // a wrong Declare, a C caller): its elements own strings, so no number is
    // written over them, and the export gives its failure value. The values
    // are ones whose bytes, taken for a string or a variant, would do harm.
    using Call = int16_t (*)(SAFEARRAY **);
    const std::pair<const char *, Call> calls[] = {
        {"SetI", [](SAFEARRAY **a) { return cSetI(a, 8); }},
        {"SetD", [](SAFEARRAY **a) { return cSetD(a, 1.0); }},
        {"AddI", [](SAFEARRAY **a) { return cAddI(a, 8); }},
        {"AddS", [](SAFEARRAY **a) { return cAddS(a, 2.0f); }},
        {"AddD", [](SAFEARRAY **a) { return cAddD(a, -3.5); }},
        {"FillI", [](SAFEARRAY **a) { return cFillI(a, 8); }},
        {"FillS", [](SAFEARRAY **a) { return cFillS(a, 1.0f); }},
        {"FillD", [](SAFEARRAY **a) { return cFillD(a, 1.0); }},
        {"FillIncrI", [](SAFEARRAY **a) { return cFillIncrI(a, 9, 4); }},
        {"FillIncrS", [](SAFEARRAY **a) { return cFillIncrS(a, 1.0f, 1.0f); }},
        {"FillIncrD", [](SAFEARRAY **a) { return cFillIncrD(a, 1.0, 1.0); }},
    };
    StrArray strings({"a", nullptr, "c"}, -5);
    const std::vector<BSTR> handles(strings.data<BSTR>(), strings.data<BSTR>() + 3);
    StrArray grid({{"k", "v"}, {"l", nullptr}}, 0, 1);
    VariantArray variants;
    const std::vector<std::string> before = variants.shown();
    for (const auto &[name, call] : calls) {
        EXPECT_EQ(call(strings.ref()), 0) << name;
        EXPECT_EQ(call(grid.ref()), 0) << name << " on a 2-D string array";
        EXPECT_EQ(call(variants.ref()), 0) << name;
    }
    EXPECT_EQ(std::vector<BSTR>(strings.data<BSTR>(), strings.data<BSTR>() + 3), handles);
    EXPECT_EQ(texts(strings, 3), (std::vector<std::string>{"a", "(null)", "c"}));
    EXPECT_EQ(texts(grid, 4), (std::vector<std::string>{"k", "l", "v", "(null)"}));
    EXPECT_EQ(variants.shown(), before);
}

TEST(Fills, TwoDimensionalArraysChangeTheirFirstRecordOnly) {
    // Dimension 1 at the lower bound of dimension 2; every other record stays.
    SafeArray d(VT_R8, {{3, 1}, {2, -1}});
    std::fill(d.data<double>(), d.data<double>() + 6, 9.0);
    EXPECT_EQ(cFillIncrD(d.ref(), 1.0, 2.0), -1);
    EXPECT_EQ(std::vector<double>(d.data<double>(), d.data<double>() + 6), (std::vector<double>{1, 3, 5, 9, 9, 9}));
    SafeArray i(VT_I2, {{2, 0}, {2, 0}, {2, 0}});
    std::fill(i.data<int16_t>(), i.data<int16_t>() + 8, int16_t{1});
    EXPECT_EQ(cAddI(i.ref(), 5), -1);
    EXPECT_EQ(std::vector<int16_t>(i.data<int16_t>(), i.data<int16_t>() + 8), (std::vector<int16_t>{6, 6, 1, 1, 1, 1, 1, 1}));
}

TEST(Statistics, StringAndVariantArraysGiveTheFailureValue) {
    // Nothing is read out of elements that are strings or variants: no copy
    // of a string is made (and lost), and a handle is never taken for a number.
    StrArray s({"a", "b", nullptr}, 1);
    VariantArray v;
    for (SafeArray *a : {static_cast<SafeArray *>(&s), static_cast<SafeArray *>(&v)}) {
        const Row rows[] = {{"SumD", cSumD(a->ref()), 0},         {"MeanL", cMeanL(a->ref()), 0},
                            {"DeviationD", cDeviationD(a->ref()), 0}, {"MaxL", cMaxL(a->ref()), 0},
                            {"MinD", cMinD(a->ref()), 0},         {"MaxNotXD", cMaxNotXD(a->ref(), 1), 0},
                            {"MinNotXI", cMinNotXI(a->ref(), 1), 0}, {"CountI", cCountI(a->ref(), 3), 0},
                            {"CountL", cCountL(a->ref(), 0), 0},   {"SearchI", cSearchI(a->ref(), 3), -1},
                            {"SearchL", cSearchL(a->ref(), 0), -1}};
        for (const Row &r : rows)
            EXPECT_EQ(r.got, r.want) << r.name << (a == &s ? " of strings" : " of variants");
    }
}

TEST(Shifts, ElementsMoveByOnePlaceWithinTheBlock) {
    TypedArray<uint8_t> b({1, 2, 3});
    EXPECT_EQ(after(b, cShiftLeftB, 9), (std::vector<uint8_t>{2, 3, 9}));
    EXPECT_EQ(after(b, cShiftRightB, 7), (std::vector<uint8_t>{7, 2, 3}));
    EXPECT_EQ(after(b, cShiftLeftD, 1.0), (std::vector<uint8_t>{7, 2, 3})); // not one Double fits: nothing moves
    TypedArray<int16_t> i({1, 2, 3, 4, 5}, 5);
    EXPECT_EQ(after(i, cShiftLeftI, -1), (std::vector<int16_t>{2, 3, 4, 5, -1}));
    EXPECT_EQ(after(i, cShiftRightI, 8), (std::vector<int16_t>{8, 2, 3, 4, 5}));
    EXPECT_EQ(after(i, cShiftRightL, 0), (std::vector<int16_t>{0, 0, 8, 2, 5})); // two whole Longs fit in 10 bytes
    TypedArray<int32_t> l({1, 2, 3, 4});
    EXPECT_EQ(after(l, cShiftRightL, 0), (std::vector<int32_t>{0, 1, 2, 3}));
    EXPECT_EQ(after(l, cShiftLeftL, 5), (std::vector<int32_t>{1, 2, 3, 5}));
    TypedArray<float> s({1.5f, 4});
    EXPECT_EQ(after(s, cShiftLeftS, 2.5f), (std::vector<float>{4, 2.5f}));
    EXPECT_EQ(after(s, cShiftRightS, 3.5f), (std::vector<float>{3.5f, 4}));
    TypedArray<double> d({1, 2, 3});
    EXPECT_EQ(after(d, cShiftRightD, 0.5), (std::vector<double>{0.5, 1, 2}));
    EXPECT_EQ(after(d, cShiftLeftD, 9.0), (std::vector<double>{1, 2, 9}));
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

TEST(Checksums, CrcOfTheDataBytesInMemoryOrder) {
    // The size comes from the array, not from the export's name; only
    // dimension 1 counts (the first record of a two-dimensional array).
    const auto zcrc = [](const SafeArray &a, size_t n) {
        return static_cast<int32_t>(crc32(0, a.data<Bytef>(), static_cast<uInt>(n)));
    };
    TypedArray<uint8_t> b({'1', '2', '3', '4', '5', '6', '7', '8', '9'});
    TypedArray<int16_t> i({1, -2, 300}, 7);
    TypedArray<int32_t> l({123456789, -1});
    TypedArray<float> s({1.5f, -0.0f});
    TypedArray<double> d({3.25});
    SafeArray two(VT_I2, {{2, 0}, {3, 0}});
    for (int k = 0; k < 6; ++k)
        two.data<int16_t>()[k] = static_cast<int16_t>(k * 11);
    Empty<uint8_t> e;
    const Row rows[] = {{"B", cCrc32B(b.ref()), static_cast<int32_t>(0xCBF43926u)}, {"I", cCrc32I(i.ref()), zcrc(i, 6)},
                        {"L", cCrc32L(l.ref()), zcrc(l, 8)}, {"S", cCrc32S(s.ref()), zcrc(s, 8)},
                        {"D", cCrc32D(d.ref()), zcrc(d, 8)}, {"B of Doubles", cCrc32B(d.ref()), zcrc(d, 8)},
                        {"2-D", cCrc32I(two.ref()), zcrc(two, 4)}, {"empty", cCrc32B(e.ref()), 0}};
    for (const Row &r : rows)
        EXPECT_EQ(r.got, r.want) << r.name;
}

TEST(Parameters, ArrayPrmTruncatesTo16Bits) {
#pragma pack(push, 4)
    struct Prm {
        int32_t Reserved;
        int16_t LowerBound, UpperBound, ElementSize, Dimensions, Count;
    };
#pragma pack(pop)
    const auto prm = [](SafeArray &a) {
        Prm p;
        std::memset(&p, 0x55, sizeof p);
        EXPECT_EQ(cArrayPrm(a.ref(), reinterpret_cast<::ArrayParameters *>(&p)), -1);
        return std::vector<int>{p.Reserved, p.LowerBound, p.UpperBound, p.ElementSize, p.Dimensions, p.Count};
    };
    TypedArray<double> d({1, 2, 3}, -1);
    EXPECT_EQ(prm(d), (std::vector<int>{0, -1, 1, 8, 1, 3}));
    // Bounds 70000..109999 and the count 40000 wrap in 16 bits.
    SafeArray big(VT_UI1, {{40000, 70000}, {2, 0}});
    EXPECT_EQ(prm(big), (std::vector<int>{0, 70000 - 65536, 109999 - 131072, 1, 2, 40000 - 65536}));
}

TEST(BlockRoutines, ArraysOwningStringsAreNeverTornApart) {
    // Numeric block routines on a string array would split or duplicate its
    // string handles (freed twice when the array goes); they leave it alone.
    StrArray a({"c", "a", "b"}, 0);
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
