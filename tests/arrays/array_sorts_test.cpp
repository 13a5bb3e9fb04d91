// Sorts and de-duplication of the typed-array family through the exported
// interface: numeric sorts of elements and record slices, records packed in
// a string, the multi-key sort of record arrays, and cRmvDup.
#include "support/ole_helpers.h"
#include "support/typed_array.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

using namespace brindle::test;

namespace {

template <class T> std::vector<T> random_values(size_t n, int spread, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> pick(-spread, spread);
    std::vector<T> v(n);
    for (auto &x : v)
        x = static_cast<T>(pick(rng)) / (std::is_floating_point_v<T> ? T(4) : T(1));
    return v;
}

// Sorts both ways through the exports and compares with std::sort.
template <class T> void check_numeric_sort(int16_t(BRINDLE_CALL *up)(SAFEARRAY **), int16_t(BRINDLE_CALL *down)(SAFEARRAY **), size_t n, int spread) {
    const std::vector<T> input = random_values<T>(n, spread, static_cast<unsigned>(n));
    std::vector<T> expected = input;
    std::sort(expected.begin(), expected.end());
    TypedArray<T> a(input, -3);
    ASSERT_EQ(up(a.ref()), -1);
    EXPECT_EQ(a.values(), expected) << n;
    std::reverse(expected.begin(), expected.end());
    ASSERT_EQ(down(a.ref()), -1);
    EXPECT_EQ(a.values(), expected) << n;
}

} // namespace

TEST(NumericSorts, AgreeWithStdSortInEveryTypeAndSize) {
    // Short arrays take the comparison sort, long ones the radix sort; few
    // distinct values make long runs of equal keys.
    for (size_t n : {0u, 1u, 2u, 3u, 17u, 255u, 256u, 5000u}) {
        check_numeric_sort<int16_t>(cSortI, cReverseSortI, n, 32767);
        check_numeric_sort<int32_t>(cSortL, cReverseSortL, n, 2000000000);
        check_numeric_sort<float>(cSortS, cReverseSortS, n, 1000);
        check_numeric_sort<double>(cSortD, cReverseSortD, n, 1000000);
        check_numeric_sort<int32_t>(cSortL, cReverseSortL, n, 3);
    }
}

TEST(NumericSorts, ExtremesInfinitiesAndSignedZeros) {
    const double inf = std::numeric_limits<double>::infinity();
    std::vector<double> d{0.0, inf, -0.0, -inf, 1e-310, -1e-310, std::numeric_limits<double>::max(),
                          std::numeric_limits<double>::lowest(), 5.0, -5.0};
    d.resize(600, 2.0); // long enough for the radix sort
    TypedArray<double> a(d);
    cSortD(a.ref());
    const auto v = a.values();
    EXPECT_TRUE(std::is_sorted(v.begin(), v.end()));
    EXPECT_EQ(v.front(), -inf);
    EXPECT_EQ(v.back(), inf);
    TypedArray<int32_t> l({INT32_MAX, INT32_MIN, 0, -1, 1});
    cReverseSortL(l.ref());
    EXPECT_EQ(l.values(), (std::vector<int32_t>{INT32_MAX, 1, 0, -1, INT32_MIN}));
    TypedArray<int16_t> i({-32768, 32767, -1, 0});
    cSortI(i.ref());
    EXPECT_EQ(i.values(), (std::vector<int16_t>{-32768, -1, 0, 32767}));
}

TEST(NumericSorts, NaNsComparingEqualToEverythingStillGiveAPermutation) {
    for (size_t n : {20u, 100000u}) {
        std::vector<double> d = random_values<double>(n, 1000, 7);
        for (size_t k = 0; k < n; k += 3)
            d[k] = std::numeric_limits<double>::quiet_NaN();
        TypedArray<double> a(d);
        ASSERT_EQ(cSortD(a.ref()), -1);
        std::vector<double> got = a.values();
        const auto is_nan = [](double x) { return std::isnan(x); };
        EXPECT_EQ(std::count_if(got.begin(), got.end(), is_nan), std::count_if(d.begin(), d.end(), is_nan));
        got.erase(std::remove_if(got.begin(), got.end(), is_nan), got.end());
        d.erase(std::remove_if(d.begin(), d.end(), is_nan), d.end());
        std::sort(got.begin(), got.end());
        std::sort(d.begin(), d.end());
        EXPECT_EQ(got, d);
        TypedArray<float> f(std::vector<float>(n, std::numeric_limits<float>::quiet_NaN()));
        EXPECT_EQ(cReverseSortS(f.ref()), -1);
    }
}

TEST(NumericSorts, RecordSlicesOfTwoDimensionalArrays) {
    // (2, 3): three slices of two Longs, ordered by the first element, then
    // the second.
    SafeArray a(VT_I4, {{2, 1}, {3, 1}});
    const int32_t init[] = {5, 1, 2, 9, 5, 0};
    std::memcpy(a.data<int32_t>(), init, sizeof init);
    ASSERT_EQ(cSortL(a.ref()), -1);
    EXPECT_EQ(std::vector<int32_t>(a.data<int32_t>(), a.data<int32_t>() + 6), (std::vector<int32_t>{2, 9, 5, 0, 5, 1}));
    ASSERT_EQ(cReverseSortL(a.ref()), -1);
    EXPECT_EQ(std::vector<int32_t>(a.data<int32_t>(), a.data<int32_t>() + 6), (std::vector<int32_t>{5, 1, 5, 0, 2, 9}));

    // Many slices with ties on the leading elements, against a reference.
    const size_t width = 3, count = 3000;
    SafeArray b(VT_R8, {{static_cast<ULONG>(width), 0}, {static_cast<ULONG>(count), 0}});
    std::vector<std::vector<double>> slices(count);
    std::mt19937 rng(3);
    for (size_t s = 0; s < count; ++s) {
        for (size_t e = 0; e < width; ++e)
            slices[s].push_back(static_cast<double>(rng() % 4));
        std::memcpy(b.data<double>() + s * width, slices[s].data(), width * sizeof(double));
    }
    ASSERT_EQ(cSortD(b.ref()), -1);
    std::sort(slices.begin(), slices.end());
    for (size_t s = 0; s < count; ++s)
        ASSERT_EQ(std::vector<double>(b.data<double>() + s * width, b.data<double>() + (s + 1) * width), slices[s]) << s;
}

TEST(NumericSorts, RefusalsAndUnknownCodes) {
    SafeArray three(VT_I2, {{2, 0}, {2, 0}, {2, 0}});
    for (int k = 0; k < 8; ++k)
        three.data<int16_t>()[k] = static_cast<int16_t>(8 - k);
    EXPECT_EQ(cSortI(three.ref()), 0);
    EXPECT_EQ(three.data<int16_t>()[0], 8); // untouched
    SAFEARRAY *null_array = nullptr;
    EXPECT_EQ(cSortD(&null_array), 0);
    SafeArray empty(VT_R8, 1, 0);
    EXPECT_EQ(cSortD(empty.ref()), -1);
}

TEST(NumericSorts, WiderCodeThanTheElementsStaysInsideTheBlock) {
    // Seven Integers (14 bytes) sorted as Doubles: one Double fits, the rest
    // of the block is never touched.
    TypedArray<int16_t> i({7, 6, 5, 4, 3, 2, 1});
    EXPECT_EQ(cSortD(i.ref()), -1);
    EXPECT_EQ(std::vector<int16_t>(i.data<int16_t>() + 4, i.data<int16_t>() + 7), (std::vector<int16_t>{3, 2, 1}));
    // A 2-D Integer array (3 x 3) sorted as Longs: slices of 12 bytes, of
    // which one fits in the 18-byte block.
    SafeArray two(VT_I2, {{3, 0}, {3, 0}});
    for (int k = 0; k < 9; ++k)
        two.data<int16_t>()[k] = static_cast<int16_t>(9 - k);
    EXPECT_EQ(cReverseSortL(two.ref()), -1);
    EXPECT_EQ(two.data<int16_t>()[8], 1);
    // Narrower code: Doubles sorted as Integers, four per element.
    TypedArray<double> d({1.0, -2.0, 3.0});
    EXPECT_EQ(cSortI(d.ref()), -1);
}

namespace {

std::string sort_str(int16_t(BRINDLE_CALL *f)(BSTR *, int32_t, int32_t), std::string_view text, int32_t count, int32_t size,
                     int16_t *result = nullptr) {
    Bstr b(text);
    const int16_t r = f(b.ref(), count, size);
    if (result != nullptr)
        *result = r;
    return b.bytes();
}

} // namespace

TEST(StringRecordSorts, RecordsPackedInAString) {
    int16_t r = 0;
    EXPECT_EQ(sort_str(cSortStr, "dogcatAntbee", 4, 3, &r), "Antbeecatdog");
    EXPECT_EQ(r, -1);
    EXPECT_EQ(sort_str(cSortStr, "b1a2B0", 3, 2), "a2B0b1"); // case-insensitive: "b0" < "b1"
    // Records count x size may leave a tail, which stays where it is.
    EXPECT_EQ(sort_str(cSortStr, "zzaaTAIL", 2, 2), "aazzTAIL");
    // Refusals leave the buffer alone.
    for (auto [count, size] : {std::pair{2, 0}, {1, 3}, {0, 3}, {-2, 3}, {2, -3}, {3, 3}, {INT32_MAX, INT32_MAX}}) {
        EXPECT_EQ(sort_str(cSortStr, "ccbbaaX", count, size, &r), "ccbbaaX") << count << " " << size;
        EXPECT_EQ(r, 0);
    }
    EXPECT_EQ(sort_str(cSortStr, "ccbba", 3, 2, &r), "ccbba"); // one byte short
    EXPECT_EQ(r, 0);
    EXPECT_EQ(sort_str(cSortStr, "", 2, 1, &r), "");
    EXPECT_EQ(r, 0);
    Bstr null_text;
    EXPECT_EQ(cSortStr(null_text.ref(), 2, 1), 0);
}

TEST(StringRecordSorts, ComparisonRunsPastTheRecordButNotPastTheBuffer) {
    // "a" and "A" are equal as records; what follows each decides.
    EXPECT_EQ(sort_str(cSortStr, std::string("aA\x01", 3), 2, 1), std::string("Aa\x01", 3));
    EXPECT_EQ(sort_str(cSortStr, "Aa", 2, 1), "aA"); // the buffer's end counts as the terminator
    // A zero byte ends the comparison.
    EXPECT_EQ(sort_str(cSortStr, std::string("b\0a\0", 4), 2, 2), std::string("a\0b\0", 4));
}

TEST(StringRecordSorts, ReverseSortKeepsOnlyAdjacentCodes) {
    EXPECT_EQ(sort_str(cReverseSortStr, "ab", 2, 1), "ba");
    EXPECT_EQ(sort_str(cReverseSortStr, "AB", 2, 1), "BA");
    EXPECT_EQ(sort_str(cReverseSortStr, "ac", 2, 1), "ac"); // a difference of 2 counts as equal
}

TEST(StringRecordSorts, OddComparisonsOnLargeInputsTerminateInPlace) {
    std::mt19937 rng(11);
    std::string text(200000, 'a');
    for (auto &c : text)
        c = static_cast<char>("aAbBcCdD"[rng() % 8]);
    std::string sorted_bytes = text;
    std::sort(sorted_bytes.begin(), sorted_bytes.end());
    for (auto f : {cSortStr, cReverseSortStr}) {
        for (int32_t size : {4, 7}) {
            const int32_t count = static_cast<int32_t>(text.size()) / size;
            int16_t r = 0;
            std::string out = sort_str(f, text, count, size, &r);
            EXPECT_EQ(r, -1);
            std::sort(out.begin(), out.end());
            EXPECT_EQ(out, sorted_bytes); // a permutation of the records' bytes
        }
    }
}

TEST(StringRecordSorts, LongRunsOfEqualRecordsStayCheap) {
    // Every comparison here would run to the end of the buffer if done byte
    // by byte: 200,000 records make that quadratic (hours). Case differences
    // keep the order meaningful: "a" and "A" sort by what follows them.
    std::string text(400000, 'a');
    text[123457] = 'A';
    text[300001] = 'B';
    for (auto f : {cSortStr, cReverseSortStr}) {
        int16_t r = 0;
        std::string out = sort_str(f, text, 200000, 2, &r);
        EXPECT_EQ(r, -1);
        std::string a = out, b = text;
        std::sort(a.begin(), a.end());
        std::sort(b.begin(), b.end());
        EXPECT_EQ(a, b);
    }
    // Ascending: the record holding the B goes last; every other record is
    // "aa" or "aA"/"Aa" and compares by the text behind it.
    const std::string out = sort_str(cSortStr, text, 200000, 2);
    EXPECT_EQ(out.substr(out.size() - 2), "aB");
}

// ---------------------------------------------------------------------------
// De-duplication

namespace {

class RmvDup : public TempDirTest {};

std::vector<std::string> files_here() {
    std::vector<std::string> names;
    for (const auto &e : std::filesystem::directory_iterator("."))
        names.push_back(e.path().filename().string());
    return names;
}

} // namespace

TEST_F(RmvDup, InPlaceWithAndWithoutShrinking) {
    Bstr none;
    TypedArray<int16_t> i({3, 1, 3, 2, 1}, 4);
    EXPECT_EQ(cRmvDupI(i.ref(), 0, none.ref(), -1), 3);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{1, 2, 3}));
    LONG lower = 0;
    SafeArrayGetLBound(i.get(), 1, &lower);
    EXPECT_EQ(lower, 4); // the lower bound is kept

    TypedArray<int32_t> l({5, 5, 5, -1});
    EXPECT_EQ(cRmvDupL(l.ref(), 0, none.ref(), 0), 2); // no shrink: the size stays
    ASSERT_EQ(l.size(), 4u);
    EXPECT_EQ(l.values()[0], -1);
    EXPECT_EQ(l.values()[1], 5);
    EXPECT_EQ(cRmvDupL(l.ref(), 0, none.ref(), 1), 2); // 1 is not True
    EXPECT_EQ(l.size(), 4u);

    TypedArray<double> d({0.5, -0.0, 0.0, 0.5, 2.0});
    EXPECT_EQ(cRmvDupD(d.ref(), 0, none.ref(), -1), 4); // units compare as bytes: -0 and 0 differ
    TypedArray<float> f(std::vector<float>{});
    EXPECT_EQ(cRmvDupS(f.ref(), 0, none.ref(), -1), 0);
    EXPECT_TRUE(files_here().empty());
}

TEST_F(RmvDup, ThroughTheScratchFileWhichIsAlwaysRemoved) {
    Bstr none, named("dups.tmp");
    std::vector<int32_t> input = random_values<int32_t>(100000, 5000, 1);
    std::vector<int32_t> expected = input;
    std::sort(expected.begin(), expected.end());
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    for (BSTR *name : {none.ref(), named.ref()}) {
        TypedArray<int32_t> l(input);
        EXPECT_EQ(cRmvDupL(l.ref(), -1, name, -1), static_cast<int32_t>(expected.size()));
        EXPECT_EQ(l.values(), expected);
        EXPECT_TRUE(files_here().empty());
    }
    // An existing file of that name is replaced, then removed.
    write_file("dups.tmp", "old");
    TypedArray<int16_t> i({2, 2, 1});
    EXPECT_EQ(cRmvDupI(i.ref(), -1, named.ref(), 0), 2);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{1, 2, 2}));
    EXPECT_TRUE(files_here().empty());
}

TEST_F(RmvDup, FailuresGiveTheirCodesAndLeaveNoFile) {
    Bstr bad("no-such-dir\\x.tmp"), named("x.tmp");
    TypedArray<double> d({1, 1});
    EXPECT_EQ(cRmvDupD(d.ref(), -1, bad.ref(), -1), -1); // cannot create
    SafeArray three(VT_R8, {{2, 0}, {2, 0}, {2, 0}});
    EXPECT_EQ(cRmvDupD(three.ref(), -1, named.ref(), -1), 0); // file made first, removed after
    EXPECT_EQ(cRmvDupD(three.ref(), 0, named.ref(), -1), 0);
    EXPECT_TRUE(files_here().empty());
}

TEST_F(RmvDup, RecordSlicesOfTwoDimensionalArrays) {
    Bstr none, named("slices.tmp");
    for (BSTR *name : {none.ref(), named.ref()}) {
        const int16_t use_file = name == none.ref() ? 0 : -1;
        SafeArray a(VT_I2, {{2, 0}, {5, 1}});
        const int16_t init[] = {3, 1, 1, 2, 3, 1, 1, 1, 1, 2};
        std::memcpy(a.data<int16_t>(), init, sizeof init);
        EXPECT_EQ(cRmvDupI(a.ref(), use_file, name, -1), 3);
        LONG lo = 0, hi = 0;
        SafeArrayGetLBound(a.get(), 2, &lo);
        SafeArrayGetUBound(a.get(), 2, &hi);
        EXPECT_EQ(lo, 1);
        EXPECT_EQ(hi, 3);
        EXPECT_EQ(std::vector<int16_t>(a.data<int16_t>(), a.data<int16_t>() + 6), (std::vector<int16_t>{1, 1, 1, 2, 3, 1}));
    }
    EXPECT_TRUE(files_here().empty());
}

TEST_F(RmvDup, MismatchedCodeShrinksToWholeElements) {
    // Six Integers de-duplicated as Longs: three Long units (12 bytes), the
    // two kept ones are 8 bytes = 4 Integers.
    Bstr none;
    TypedArray<int16_t> i({1, 0, 1, 0, 7, 0});
    EXPECT_EQ(cRmvDupL(i.ref(), 0, none.ref(), -1), 2);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{1, 0, 7, 0}));
}

// ---------------------------------------------------------------------------
// Multi-key sort of record arrays

namespace {

#pragma pack(push, 4)
struct Keys {
    int32_t RecordSize, CurrentKey;
    int16_t KeyOffset[10];
    uint16_t KeyLength[10];
    int16_t KeyType[10], KeyOrder[10];
};
struct Rec {
    int32_t id;     // 0
    int16_t small;  // 4   code 1 / 3
    uint8_t byte;   // 6   code 2
    uint8_t pad;    // 7
    float f;        // 8   code 5
    double d;       // 12  code 6 / 7 / 8
    char name[8];   // 20  code 9 / 10
    char num[4];    // 28  code 13
};
#pragma pack(pop)
static_assert(sizeof(Keys) == 88 && sizeof(Rec) == 32);

Keys no_keys() {
    Keys k;
    std::memset(&k, 0, sizeof k);
    k.RecordSize = -123;
    return k;
}

void add_key(Keys &k, int slot, int16_t offset, int16_t type, int16_t order, uint16_t length = 0) {
    k.KeyOffset[slot] = offset;
    k.KeyType[slot] = type;
    k.KeyOrder[slot] = order;
    k.KeyLength[slot] = length;
}

// An array of records as VB makes one for a user-defined type.
template <class R> struct Records : SafeArray {
    explicit Records(const std::vector<R> &rs, LONG lower = 1)
        : SafeArray(VT_UI1, {{static_cast<ULONG>(rs.size() * sizeof(R)), 0}}) {
        get()->cbElements = sizeof(R);
        get()->rgsabound[0].cElements = static_cast<ULONG>(rs.size());
        get()->rgsabound[0].lLbound = lower;
        if (!rs.empty())
            std::memcpy(data<R>(), rs.data(), rs.size() * sizeof(R));
    }
    ~Records() { // give the block back its byte shape before it is freed
        get()->rgsabound[0].cElements *= get()->cbElements;
        get()->cbElements = 1;
    }
    std::vector<R> values() const {
        return std::vector<R>(data<R>(), data<R>() + get()->rgsabound[0].cElements);
    }
};

int16_t sort_records(SafeArray &a, Keys &k) {
    return cSortTypedArray(a.ref(), reinterpret_cast<TypedSortDescriptor *>(&k));
}

std::string fold(const char *p, size_t n) {
    std::string s(p, strnlen(p, n));
    for (auto &c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::vector<Rec> random_records(size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<Rec> rs(n);
    const char *names[] = {"apple", "APPLE", "Apricot", "bean", "Bean", "beanz", "", "c"};
    for (size_t i = 0; i < n; ++i) {
        Rec &r = rs[i];
        std::memset(&r, 0, sizeof r);
        r.id = static_cast<int32_t>(i);
        r.small = static_cast<int16_t>(static_cast<int>(rng() % 5) - 2);
        r.byte = static_cast<uint8_t>(rng() % 3 * 100);
        r.f = static_cast<float>(rng() % 4) / 2;
        r.d = static_cast<double>(static_cast<int>(rng() % 3) - 1) * 1e300;
        const char *name = names[rng() % 8];
        std::memcpy(r.name, name, std::strlen(name)); // blank-free, zero-padded
        std::snprintf(r.num, sizeof r.num, "%d", static_cast<int>(rng() % 21) - 10);
    }
    return rs;
}

} // namespace

TEST(TypedSort, SeveralKeysOfMixedTypesRefineExactly) {
    // byte ascending, name case-insensitive over 3 characters descending,
    // small ascending, d descending, the number text ascending, f ascending.
    const std::vector<Rec> input = random_records(3000, 5);
    Keys k = no_keys();
    add_key(k, 0, 6, 2, 1);
    add_key(k, 1, 20, 9, -1, 3);
    add_key(k, 2, 4, 3, 5);
    add_key(k, 3, 12, 6, -2);
    add_key(k, 4, 28, 13, 1);
    add_key(k, 5, 8, 5, 1);
    Records<Rec> a(input);
    ASSERT_EQ(sort_records(a, k), -1);
    EXPECT_EQ(k.RecordSize, 32);

    const auto tuple_of = [](const Rec &r) {
        return std::make_tuple(r.byte, fold(r.name, 3), r.small, static_cast<double>(r.d), std::atof(std::string(r.num, 4).c_str()), r.f);
    };
    std::vector<Rec> expected = input;
    std::stable_sort(expected.begin(), expected.end(), [&](const Rec &x, const Rec &y) {
        auto a1 = tuple_of(x), b1 = tuple_of(y);
        if (std::get<0>(a1) != std::get<0>(b1)) return std::get<0>(a1) < std::get<0>(b1);
        if (std::get<1>(a1) != std::get<1>(b1)) return std::get<1>(a1) > std::get<1>(b1);
        if (std::get<2>(a1) != std::get<2>(b1)) return std::get<2>(a1) < std::get<2>(b1);
        if (std::get<3>(a1) != std::get<3>(b1)) return std::get<3>(a1) > std::get<3>(b1);
        if (std::get<4>(a1) != std::get<4>(b1)) return std::get<4>(a1) < std::get<4>(b1);
        return std::get<5>(a1) < std::get<5>(b1);
    });
    const std::vector<Rec> got = a.values();
    ASSERT_EQ(got.size(), expected.size());
    std::vector<int32_t> ids;
    for (size_t i = 0; i < got.size(); ++i) {
        ASSERT_EQ(tuple_of(got[i]), tuple_of(expected[i])) << i;
        ids.push_back(got[i].id);
    }
    std::sort(ids.begin(), ids.end());
    for (size_t i = 0; i < ids.size(); ++i)
        ASSERT_EQ(ids[i], static_cast<int32_t>(i)); // every record once
}

TEST(TypedSort, CaseSensitiveTextToTheZeroByteAndCurrencyReadAsDouble) {
    std::vector<Rec> rs = random_records(500, 9);
    Keys k = no_keys();
    add_key(k, 0, 20, 10, 1); // whole name, byte for byte
    add_key(k, 1, 12, 7, -1); // the Double field through code 7
    Records<Rec> a(rs);
    ASSERT_EQ(sort_records(a, k), -1);
    const auto got = a.values();
    for (size_t i = 1; i < got.size(); ++i) {
        const int c = std::strncmp(got[i - 1].name, got[i].name, 8);
        ASSERT_LE(c, 0) << i;
        if (c == 0) {
            ASSERT_GE(static_cast<double>(got[i - 1].d), static_cast<double>(got[i].d)) << i;
        }
    }
}

TEST(TypedSort, UnusedLeadingKeysAreSkippedAndTheChainEndsAtTheFirstGap) {
    std::vector<Rec> rs = random_records(200, 2);
    Keys k = no_keys();
    add_key(k, 0, 0, 4, 0);   // not used
    add_key(k, 1, 4, 1, 1);   // small ascending
    add_key(k, 3, 0, 4, -1);  // after the gap at 2: ignored
    Records<Rec> a(rs);
    ASSERT_EQ(sort_records(a, k), -1);
    const auto got = a.values();
    for (size_t i = 1; i < got.size(); ++i)
        ASSERT_LE(got[i - 1].small, got[i].small);
    // Key 3 would have ordered each run by id descending; check it did not.
    bool any_ascending_ids = false;
    for (size_t i = 1; i < got.size(); ++i)
        any_ascending_ids |= got[i - 1].small == got[i].small && got[i - 1].id < got[i].id;
    EXPECT_TRUE(any_ascending_ids);

    Keys none = no_keys();
    Records<Rec> b(rs);
    EXPECT_EQ(sort_records(b, none), -1);
    EXPECT_EQ(none.RecordSize, 32);
    EXPECT_EQ(std::memcmp(b.values().data(), rs.data(), rs.size() * sizeof(Rec)), 0);
}

TEST(TypedSort, FewerThanTwoRecordsAndSixteenBitCounts) {
    Keys k = no_keys();
    add_key(k, 0, 0, 4, 1);
    Records<Rec> one(random_records(1, 1));
    EXPECT_EQ(sort_records(one, k), 0);
    EXPECT_EQ(k.RecordSize, -123); // untouched on refusal
    // 40000 records: the 16-bit count wraps negative, nothing is sorted.
    std::vector<Rec> many = random_records(40000, 4);
    for (auto &r : many)
        r.id = -r.id;
    Records<Rec> big(many);
    EXPECT_EQ(sort_records(big, k), 0);
    EXPECT_EQ(big.values()[0].id, 0);
    EXPECT_EQ(big.values()[1].id, -1);
    SAFEARRAY *null_array = nullptr;
    EXPECT_EQ(cSortTypedArray(&null_array, reinterpret_cast<TypedSortDescriptor *>(&k)), 0);
}

TEST(TypedSort, UnknownCodesAndKeysOutsideTheRecordTerminateInPlace) {
    const std::vector<Rec> input = random_records(30000, 8);
    for (int16_t type : {0, -9, -10, -13, 15, -15, 99, 4}) {
        for (int16_t order : {1, -1}) {
            Keys k = no_keys();
            // Code 4 at offset 30 would read past the 32-byte record.
            add_key(k, 0, type == 4 ? 30 : 0, type, order);
            add_key(k, 1, 4, 3, 1);
            Records<Rec> a(input);
            ASSERT_EQ(sort_records(a, k), -1);
            std::vector<int32_t> ids;
            for (const Rec &r : a.values())
                ids.push_back(r.id);
            std::sort(ids.begin(), ids.end());
            for (size_t i = 0; i < ids.size(); ++i)
                ASSERT_EQ(ids[i], static_cast<int32_t>(i)) << type;
        }
    }
    // A text key whose length runs past the record stops at the record's end.
    Keys k = no_keys();
    add_key(k, 0, 28, 10, 1, 500);
    Records<Rec> a(input);
    EXPECT_EQ(sort_records(a, k), -1);
    const auto got = a.values();
    for (size_t i = 1; i < got.size(); ++i)
        ASSERT_LE(std::strncmp(got[i - 1].num, got[i].num, 4), 0);
}

namespace {

// Natural alignment, as a 64-bit client lays out a record of Variants.
struct VRec {
    VARIANT a;
    VARIANT b;
    const OLECHAR *text; // a wide string, or null
    int32_t id;
};

} // namespace

TEST(TypedSort, VariantKeysAndWideStringPointers) {
    // a: Strings in mixed case; b: Longs, Doubles, Dates, or numbers as text.
    const std::vector<std::u16string> words = {u"pear", u"Pear", u"apple", u"APPLE", u"fig"};
    std::vector<std::u16string> texts = {u"10", u"9", u"-3.5", u"x", u"007"};
    std::vector<VRec> rs(400);
    std::vector<BSTR> owned;
    const auto bstr = [&](const std::u16string &w) {
        BSTR s = SysAllocStringLen(reinterpret_cast<const OLECHAR *>(w.data()), static_cast<UINT>(w.size()));
        owned.push_back(s);
        return s;
    };
    std::mt19937 rng(21);
    for (size_t i = 0; i < rs.size(); ++i) {
        VRec &r = rs[i];
        std::memset(&r, 0, sizeof r);
        r.id = static_cast<int32_t>(i);
        V_VT(&r.a) = VT_BSTR;
        V_BSTR(&r.a) = bstr(words[rng() % words.size()]);
        switch (i % 4) {
        case 0: V_VT(&r.b) = VT_I4; V_I4(&r.b) = static_cast<LONG>(rng() % 5); break;
        case 1: V_VT(&r.b) = VT_R8; V_R8(&r.b) = static_cast<double>(rng() % 10) / 2; break;
        case 2: V_VT(&r.b) = VT_BSTR; V_BSTR(&r.b) = bstr(texts[rng() % texts.size()]); break;
        default: V_VT(&r.b) = VT_I4; V_I4(&r.b) = -1; break;
        }
        r.text = (rng() % 5 == 0) ? nullptr : bstr(texts[rng() % texts.size()]);
    }
    const auto folded = [](const VARIANT &v) {
        std::u16string s(reinterpret_cast<const char16_t *>(V_BSTR(&v)), SysStringLen(V_BSTR(&v)));
        for (auto &c : s)
            if (c >= u'A' && c <= u'Z')
                c = static_cast<char16_t>(c + 32);
        return s;
    };
    const auto exact = [](const VARIANT &v) {
        return std::u16string(reinterpret_cast<const char16_t *>(V_BSTR(&v)), SysStringLen(V_BSTR(&v)));
    };
    const auto number = [](const VARIANT &v) {
        if (V_VT(&v) == VT_I4) return static_cast<double>(V_I4(&v));
        if (V_VT(&v) == VT_R8) return V_R8(&v);
        std::string s;
        for (UINT i = 0; i < SysStringLen(V_BSTR(&v)); ++i) s += static_cast<char>(V_BSTR(&v)[i]);
        return std::atof(s.c_str());
    };
    const auto text_number = [](const OLECHAR *p) {
        std::string s;
        for (; p != nullptr && *p; ++p) s += static_cast<char>(*p);
        return std::atof(s.c_str());
    };
    constexpr int16_t kA = offsetof(VRec, a), kB = offsetof(VRec, b), kText = offsetof(VRec, text);

    struct Case {
        int16_t key_a, key_b, order_b;
    };
    for (Case c : {Case{-11, -6, 1}, Case{-12, -14, -1}, Case{-11, -4, -1}, Case{-12, -8, 1}}) {
        // Only numeric Variants for -4 and -8 (the Longs and Doubles kinds).
        std::vector<VRec> input = rs;
        // -4 on Longs and Doubles (rounded by the conversion), -8 on Dates.
        if (c.key_b == -4 || c.key_b == -8)
            for (auto &r : input) {
                if (V_VT(&r.b) == VT_BSTR) {
                    V_VT(&r.b) = VT_I4;
                    V_I4(&r.b) = 3;
                }
                // Dates for -8, with every other Long left to be converted.
                if (c.key_b == -8 && (V_VT(&r.b) == VT_R8 || r.id % 8 == 0)) {
                    const double day = 45000.25 * (V_VT(&r.b) == VT_I4 ? V_I4(&r.b) : V_R8(&r.b));
                    V_VT(&r.b) = VT_DATE;
                    V_DATE(&r.b) = day;
                }
            }
        // -14 goes through the text of the value: keep to Longs and texts,
        // whose text form is exact.
        if (c.key_b == -14)
            for (auto &r : input)
                if (V_VT(&r.b) == VT_R8) {
                    V_VT(&r.b) = VT_I4;
                    V_I4(&r.b) = static_cast<LONG>(V_R8(&r.b));
                }
        Keys k = no_keys();
        add_key(k, 0, kA, c.key_a, 1);
        add_key(k, 1, kB, c.key_b, c.order_b);
        add_key(k, 2, kText, 14, 1);
        add_key(k, 3, kText, 12, -1);
        Records<VRec> a(input);
        ASSERT_EQ(sort_records(a, k), -1);
        const auto got = a.values();
        const auto b_value = [&](const VARIANT &v) {
            if (V_VT(&v) == VT_DATE) return V_DATE(&v);
            if (c.key_b == -4 && V_VT(&v) == VT_R8) return std::nearbyint(V_R8(&v));
            return number(v);
        };
        for (size_t i = 1; i < got.size(); ++i) {
            const VRec &x = got[i - 1], &y = got[i];
            const auto ka = c.key_a == -11 ? folded(x.a) : exact(x.a);
            const auto kb = c.key_a == -11 ? folded(y.a) : exact(y.a);
            ASSERT_LE(ka, kb) << i;
            if (ka != kb)
                continue;
            const double bx = b_value(x.b), by = b_value(y.b);
            ASSERT_TRUE(c.order_b > 0 ? bx <= by : bx >= by) << i << " " << bx << " " << by << " case " << c.key_a << c.key_b;
            if (bx != by)
                continue;
            // Null text first, then by its number; then descending text.
            const bool nx = x.text == nullptr, ny = y.text == nullptr;
            ASSERT_TRUE(nx >= ny) << i;
            if (nx || ny)
                continue;
            ASSERT_LE(text_number(x.text), text_number(y.text)) << i;
            if (text_number(x.text) == text_number(y.text)) {
                ASSERT_GE(std::u16string(reinterpret_cast<const char16_t *>(x.text)),
                          std::u16string(reinterpret_cast<const char16_t *>(y.text))) << i;
            }
        }
    }
    for (BSTR s : owned)
        SysFreeString(s);
}
