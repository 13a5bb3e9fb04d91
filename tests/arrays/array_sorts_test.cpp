// Sorts and de-duplication of the typed-array family through the exported
// interface: numeric sorts of elements and record slices, records packed in
// a string, cRmvDup, and the multi-key sort of record arrays.
#include "support/comma_locale.h"
#include "support/ole_helpers.h"
#include "support/typed_array.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

using namespace brindle::test;

namespace {

// Integers in [-spread, spread]; floating-point ones scaled by powers of two
// from 2^-32 to 2^31, so that the radix sort meets every exponent byte.
template <class T> std::vector<T> random_values(size_t n, int spread, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> pick(-spread, spread);
    std::vector<T> v(n);
    for (auto &x : v)
        x = std::is_floating_point_v<T> ? static_cast<T>(std::ldexp(pick(rng), static_cast<int>(rng() % 64) - 32))
                                        : static_cast<T>(pick(rng));
    return v;
}

template <class T> std::vector<T> sorted(std::vector<T> v) {
    std::sort(v.begin(), v.end());
    return v;
}

// Sorts both ways through the exports and compares with std::sort.
template <class T> void check_sort(int16_t(BRINDLE_CALL *up)(SAFEARRAY **), int16_t(BRINDLE_CALL *down)(SAFEARRAY **), const std::vector<T> &input) {
    std::vector<T> expected = sorted(input);
    TypedArray<T> a(input, -3);
    ASSERT_EQ(up(a.ref()), -1);
    EXPECT_EQ(a.values(), expected) << input.size();
    std::reverse(expected.begin(), expected.end());
    ASSERT_EQ(down(a.ref()), -1);
    EXPECT_EQ(a.values(), expected) << input.size();
}

using StrSort = int16_t(BRINDLE_CALL *)(BSTR *, int32_t, int32_t);

std::string sort_str(StrSort f, std::string_view text, int32_t count, int32_t size, int16_t *result = nullptr) {
    Bstr b(text);
    const int16_t r = f(b.ref(), count, size);
    if (result != nullptr)
        *result = r;
    return b.bytes();
}

class RmvDup : public TempDirTest {};

bool no_files_here() { return std::filesystem::directory_iterator(".") == std::filesystem::directory_iterator(); }

LONG bound(const SafeArray &a, UINT dim, bool upper) {
    LONG b = 0;
    (upper ? SafeArrayGetUBound : SafeArrayGetLBound)(a.get(), dim, &b);
    return b;
}

// The descriptor and a record as a VB client lays them out.
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

// Keys from (offset, type, order, length) rows, slot by slot; a row of
// order 0 is an unused slot.
Keys keys(std::initializer_list<std::tuple<int16_t, int16_t, int16_t, uint16_t>> rows) {
    Keys k;
    std::memset(&k, 0, sizeof k);
    k.RecordSize = -123;
    int slot = 0;
    for (auto [offset, type, order, length] : rows) {
        k.KeyOffset[slot] = offset, k.KeyType[slot] = type, k.KeyOrder[slot] = order, k.KeyLength[slot] = length;
        ++slot;
    }
    return k;
}

// An array of records as VB makes one for a user-defined type.
template <class R> struct Records : SafeArray {
    explicit Records(const std::vector<R> &rs) : SafeArray(VT_UI1, {{static_cast<ULONG>(rs.size() * sizeof(R)), 0}}) {
        get()->cbElements = sizeof(R);
        get()->rgsabound[0].cElements = static_cast<ULONG>(rs.size());
        get()->rgsabound[0].lLbound = 1;
        if (!rs.empty())
            std::memcpy(data<R>(), rs.data(), rs.size() * sizeof(R));
    }
    ~Records() { // give the block back its byte shape before it is freed
        get()->rgsabound[0].cElements *= get()->cbElements;
        get()->cbElements = 1;
    }
    std::vector<R> values() const { return std::vector<R>(data<R>(), data<R>() + get()->rgsabound[0].cElements); }
};

int16_t sort_records(SafeArray &a, Keys &k) { return cSortTypedArray(a.ref(), reinterpret_cast<TypedSortDescriptor *>(&k)); }

// True when the records' ids are 0 .. n-1, each once.
template <class R> bool every_record_once(const std::vector<R> &rs) {
    std::vector<char> seen(rs.size());
    for (const R &r : rs)
        if (r.id < 0 || static_cast<size_t>(r.id) >= rs.size() || std::exchange(seen[static_cast<size_t>(r.id)], 1))
            return false;
    return true;
}

// Fails unless the records are in `less` order and each comes once.
template <class R, class Less> void expect_order(const std::vector<R> &got, Less less) {
    for (size_t i = 1; i < got.size(); ++i)
        ASSERT_FALSE(less(got[i], got[i - 1])) << "record " << i;
    EXPECT_TRUE(every_record_once(got));
}

// Up to n characters of a zero-padded text field, A-Z folded or not.
std::string text(const char *p, size_t n, bool folded = false) {
    std::string s(p, strnlen(p, n));
    for (auto &c : s)
        c = folded ? static_cast<char>(std::tolower(static_cast<unsigned char>(c))) : c;
    return s;
}

// A zero-padded text field.
template <size_t N> void put_text(char (&field)[N], const char *s) {
    std::memset(field, 0, N);
    std::memcpy(field, s, std::min(N, std::strlen(s)));
}

double num(const Rec &r) { return std::strtod(text(r.num, 4).c_str(), nullptr); }

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
        put_text(r.name, names[rng() % 8]);
        std::snprintf(r.num, sizeof r.num, "%d", static_cast<int>(rng() % 21) - 10);
    }
    return rs;
}

// Natural alignment, as a 64-bit client lays out a record of Variants.
struct VRec {
    VARIANT a;
    VARIANT b;
    const OLECHAR *text; // a wide string, or null
    int32_t id;
};

std::u16string wide(const OLECHAR *p) { return p == nullptr ? u"" : std::u16string(reinterpret_cast<const char16_t *>(p)); }
double number(const OLECHAR *p) {
    std::string s;
    for (char16_t c : wide(p))
        s += static_cast<char>(c);
    return std::atof(s.c_str());
}

} // namespace

TEST(NumericSorts, AgreeWithStdSortInEveryTypeAndSize) {
    // Short arrays take the comparison sort, long ones the radix sort; few
    // distinct values make long runs of equal keys.
    for (size_t n : {0u, 1u, 2u, 3u, 17u, 255u, 256u, 5000u}) {
        const unsigned seed = static_cast<unsigned>(n);
        check_sort<int16_t>(cSortI, cReverseSortI, random_values<int16_t>(n, 32767, seed));
        check_sort<int32_t>(cSortL, cReverseSortL, random_values<int32_t>(n, 2000000000, seed));
        check_sort<float>(cSortS, cReverseSortS, random_values<float>(n, 1000, seed));
        check_sort<double>(cSortD, cReverseSortD, random_values<double>(n, 1000000, seed));
        check_sort<int32_t>(cSortL, cReverseSortL, random_values<int32_t>(n, 3, seed));
    }
    // Extremes, infinities, denormals and signed zeros (equal), long enough
    // for the radix sort.
    const double inf = std::numeric_limits<double>::infinity();
    std::vector<double> d{0.0, inf, -0.0, -inf, 1e-310, -1e-310, DBL_MAX, -DBL_MAX, 5.0, -5.0};
    d.resize(600, 2.0);
    check_sort<double>(cSortD, cReverseSortD, d);
    check_sort<int16_t>(cSortI, cReverseSortI, {-32768, 32767, -1, 0});
}

TEST(NumericSorts, NaNsComparingEqualToEverythingStillGiveAPermutation) {
    const auto without_nans = [](std::vector<double> v) {
        v.erase(std::remove_if(v.begin(), v.end(), [](double x) { return std::isnan(x); }), v.end());
        return sorted(v);
    };
    for (size_t n : {20u, 100000u}) {
        std::vector<double> d = random_values<double>(n, 1000, 7);
        for (size_t k = 0; k < n; k += 3)
            d[k] = std::numeric_limits<double>::quiet_NaN();
        TypedArray<double> a(d);
        ASSERT_EQ(cSortD(a.ref()), -1);
        const std::vector<double> got = a.values();
        EXPECT_EQ(std::count_if(got.begin(), got.end(), [](double x) { return std::isnan(x); }), (n + 2) / 3);
        EXPECT_EQ(without_nans(got), without_nans(d));
        TypedArray<float> f(std::vector<float>(n, std::numeric_limits<float>::quiet_NaN()));
        EXPECT_EQ(cReverseSortS(f.ref()), -1);
    }
}

TEST(NumericSorts, RecordSlicesOfTwoDimensionalArrays) {
    // 3000 slices of three Doubles with ties on the leading elements: ordered
    // by the first element, then the second, ...
    const std::vector<int32_t> v = random_values<int32_t>(3 * 3000, 1, 3);
    SafeArray b(VT_R8, {{3, 1}, {3000, 0}});
    std::copy(v.begin(), v.end(), b.data<double>());
    std::vector<std::array<double, 3>> slices(3000);
    static_assert(sizeof slices[0] == 3 * sizeof(double));
    std::memcpy(slices.data(), b.data<double>(), v.size() * sizeof(double));
    std::sort(slices.begin(), slices.end());
    for (auto *f : {cSortD, cReverseSortD}) {
        ASSERT_EQ(f(b.ref()), -1);
        EXPECT_EQ(std::memcmp(b.data<double>(), slices.data(), v.size() * sizeof(double)), 0);
        std::reverse(slices.begin(), slices.end());
    }
}

// Each sort compares slices of its own width, even while another thread
// sorts slices of another width.
TEST(NumericSorts, TwoThreadsSortTwoDimensionalArraysOfDifferentWidths) {
    const auto run = [](ULONG width, unsigned seed, int *failures) {
        constexpr ULONG kSlices = 20000;
        // Values -1..1: slices often agree on their first elements.
        const std::vector<int32_t> v = random_values<int32_t>(width * kSlices, 1, seed);
        std::vector<std::vector<int32_t>> slices(kSlices);
        for (ULONG i = 0; i < kSlices; ++i)
            slices[i].assign(v.begin() + i * width, v.begin() + (i + 1) * width);
        std::sort(slices.begin(), slices.end());
        std::vector<int32_t> expected;
        for (const auto &slice : slices)
            expected.insert(expected.end(), slice.begin(), slice.end());
        for (int round = 0; round < 20; ++round) {
            SafeArray a(VT_I4, {{width, 0}, {kSlices, 1}});
            std::copy(v.begin(), v.end(), a.data<int32_t>());
            if (cSortL(a.ref()) != -1 || !std::equal(expected.begin(), expected.end(), a.data<int32_t>()))
                ++*failures;
        }
    };
    int narrow = 0, wide = 0;
    std::thread a(run, 2u, 1u, &narrow), b(run, 7u, 2u, &wide);
    a.join();
    b.join();
    EXPECT_EQ(narrow, 0);
    EXPECT_EQ(wide, 0);
}

TEST(NumericSorts, RefusalsAndCodesThatDisagreeWithTheElements) {
    SafeArray three(VT_I2, {{2, 0}, {2, 0}, {2, 0}});
    for (int k = 0; k < 8; ++k)
        three.data<int16_t>()[k] = static_cast<int16_t>(8 - k);
    EXPECT_EQ(cSortI(three.ref()), 0);
    EXPECT_EQ(three.data<int16_t>()[0], 8); // untouched
    SAFEARRAY *null_array = nullptr;
    EXPECT_EQ(cSortD(&null_array), 0);
    SafeArray empty(VT_R8, 1, 0);
    EXPECT_EQ(cSortD(empty.ref()), -1);
    // Seven Integers (14 bytes) sorted as Doubles: one Double fits, the rest
    // of the block is never touched.
    TypedArray<int16_t> i({7, 6, 5, 4, 3, 2, 1});
    EXPECT_EQ(cSortD(i.ref()), -1);
    EXPECT_EQ(std::vector<int16_t>(i.data<int16_t>() + 4, i.data<int16_t>() + 7), (std::vector<int16_t>{3, 2, 1}));
    // A 3 x 3 Integer array sorted as Longs: slices of 12 bytes, of which one
    // fits in the 18-byte block.
    SafeArray two(VT_I2, {{3, 0}, {3, 0}});
    for (int k = 0; k < 9; ++k)
        two.data<int16_t>()[k] = static_cast<int16_t>(9 - k);
    EXPECT_EQ(cReverseSortL(two.ref()), -1);
    EXPECT_EQ(two.data<int16_t>()[8], 1);
    TypedArray<double> d({1.0, -2.0, 3.0}); // narrower: four Integers each
    EXPECT_EQ(cSortI(d.ref()), -1);
}

TEST(StringRecordSorts, RecordsPackedInAString) {
    int16_t r = 0;
    EXPECT_EQ(sort_str(cSortStr, "dogcatAntbee", 4, 3, &r), "Antbeecatdog");
    EXPECT_EQ(r, -1);
    EXPECT_EQ(sort_str(cSortStr, "b1a2B0", 3, 2), "a2B0b1"); // case-insensitive: "b0" < "b1"
    EXPECT_EQ(sort_str(cSortStr, "zzaaTAIL", 2, 2), "aazzTAIL"); // a tail past the records stays
    // Refusals leave the buffer alone; "ccbba" is one byte short.
    for (auto [text, count, size] : {std::tuple{"ccbbaaX", 2, 0}, {"ccbbaaX", 1, 3}, {"ccbbaaX", 0, 3}, {"ccbbaaX", -2, 3},
                                      {"ccbbaaX", 2, -3}, {"ccbbaaX", 3, 3}, {"ccbbaaX", INT32_MAX, INT32_MAX}, {"ccbba", 3, 2}, {"", 2, 1}}) {
        EXPECT_EQ(sort_str(cSortStr, text, count, size, &r), text) << count << " " << size;
        EXPECT_EQ(r, 0);
    }
    Bstr null_text;
    EXPECT_EQ(cSortStr(null_text.ref(), 2, 1), 0);
}

TEST(StringRecordSorts, ComparisonRunsPastTheRecordAndReverseKeepsOnlyAdjacentCodes) {
    // "a" and "A" are equal as records; what follows each decides.
    EXPECT_EQ(sort_str(cSortStr, std::string("aA\x01", 3), 2, 1), std::string("Aa\x01", 3));
    EXPECT_EQ(sort_str(cSortStr, "Aa", 2, 1), "aA"); // the buffer's end counts as the terminator
    EXPECT_EQ(sort_str(cSortStr, std::string("b\0a\0", 4), 2, 2), std::string("a\0b\0", 4)); // a zero byte ends it
    EXPECT_EQ(sort_str(cReverseSortStr, "ab", 2, 1), "ba");
    EXPECT_EQ(sort_str(cReverseSortStr, "AB", 2, 1), "BA");
    EXPECT_EQ(sort_str(cReverseSortStr, "ac", 2, 1), "ac"); // a difference of 2 counts as equal
}

TEST(StringRecordSorts, LargeInputsWithOddComparisonsOrLongEqualRunsTerminateInPlace) {
    // Random case pairs make comparisons that are no ordering; 200,000
    // records of "aa" would make a byte-by-byte comparison run to the end of
    // the buffer every time (quadratic: hours).
    std::mt19937 rng(11);
    std::string mixed(200000, 'a'), runs(400000, 'a');
    for (auto &c : mixed)
        c = "aAbBcCdD"[rng() % 8];
    runs[123457] = 'A';
    runs[300001] = 'B';
    for (auto f : {cSortStr, cReverseSortStr}) {
        for (auto [text, size] : {std::pair{&mixed, 4}, {&mixed, 7}, {&runs, 2}}) {
            int16_t r = 0;
            const std::string out = sort_str(f, *text, static_cast<int32_t>(text->size()) / size, size, &r);
            EXPECT_EQ(r, -1);
            EXPECT_EQ(sorted(std::vector<char>(out.begin(), out.end())), sorted(std::vector<char>(text->begin(), text->end())));
        }
    }
    // Ascending, the record holding the B goes last.
    const std::string out = sort_str(cSortStr, runs, 200000, 2);
    EXPECT_EQ(out.substr(out.size() - 2), "aB");
    // Two records heading 3,000,000 bytes of one letter compare to the end
    // of the text, where the second, one byte shorter, ends first.
    const std::string head = "A" + std::string(3000000, 'a');
    EXPECT_EQ(sort_str(cSortStr, head, 2, 1).substr(0, 3), "aAa");
}

TEST_F(RmvDup, InPlaceWithAndWithoutShrinking) {
    Bstr none;
    TypedArray<int16_t> i({3, 1, 3, 2, 1}, 4);
    EXPECT_EQ(cRmvDupI(i.ref(), 0, none.ref(), -1), 3);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{1, 2, 3}));
    EXPECT_EQ(bound(i, 1, false), 4); // the lower bound is kept
    TypedArray<int32_t> l({5, 5, 5, -1});
    EXPECT_EQ(cRmvDupL(l.ref(), 0, none.ref(), 0), 2); // no shrink: the size stays
    EXPECT_EQ(cRmvDupL(l.ref(), 0, none.ref(), 1), 2); // 1 is not True
    EXPECT_EQ(l.size(), 4u);
    EXPECT_EQ(std::vector<int32_t>(l.data<int32_t>(), l.data<int32_t>() + 2), (std::vector<int32_t>{-1, 5}));
    TypedArray<double> d({0.5, -0.0, 0.0, 0.5, 2.0});
    EXPECT_EQ(cRmvDupD(d.ref(), 0, none.ref(), -1), 4); // units compare as bytes: -0 and 0 differ
    TypedArray<float> f(std::vector<float>{});
    EXPECT_EQ(cRmvDupS(f.ref(), 0, none.ref(), -1), 0);
    // Six Integers de-duplicated as Longs: three Long units, the two kept
    // are 8 bytes = 4 Integers.
    TypedArray<int16_t> as_longs({1, 0, 1, 0, 7, 0});
    EXPECT_EQ(cRmvDupL(as_longs.ref(), 0, none.ref(), -1), 2);
    EXPECT_EQ(as_longs.values(), (std::vector<int16_t>{1, 0, 7, 0}));
    EXPECT_TRUE(no_files_here());
}

TEST_F(RmvDup, ThroughTheScratchFileWhichIsAlwaysRemoved) {
    Bstr none, named("dups.tmp");
    const std::vector<int32_t> input = random_values<int32_t>(100000, 5000, 1);
    std::vector<int32_t> expected = sorted(input);
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    for (BSTR *name : {none.ref(), named.ref()}) {
        TypedArray<int32_t> l(input);
        EXPECT_EQ(cRmvDupL(l.ref(), -1, name, -1), static_cast<int32_t>(expected.size()));
        EXPECT_EQ(l.values(), expected);
        EXPECT_TRUE(no_files_here());
    }
}

// A scratch file the caller names is the caller's to give: it is replaced,
// used and removed. Without a name the scratch file is always a new one, with
// a name no file has: a file called by the old fixed name survives, and a
// link (even a dangling one) where the first unique name would be is neither
// followed nor replaced.
TEST_F(RmvDup, ScratchFileNeverReplacesAFileItWasNotGiven) {
    Bstr none, named("dups.tmp");
    write_file("dups.tmp", "old");
    write_file("~!!TMP~.TMP", "mine");
    TypedArray<int16_t> i({2, 2, 1});
    EXPECT_EQ(cRmvDupI(i.ref(), -1, named.ref(), -1), 2);
    EXPECT_EQ(i.values(), (std::vector<int16_t>{1, 2}));
    EXPECT_FALSE(std::filesystem::exists("dups.tmp"));
    TypedArray<int16_t> k({5, 4, 5});
    EXPECT_EQ(cRmvDupI(k.ref(), -1, none.ref(), -1), 2);
    EXPECT_EQ(k.values(), (std::vector<int16_t>{4, 5}));
    EXPECT_EQ(read_file("~!!TMP~.TMP"), "mine");
    Bstr prefix("~a");
    const std::string first = str(cUniqueFileName(prefix.ref()));
    std::error_code link_error;
    std::filesystem::create_symlink("made.tmp", first, link_error);
    if (!link_error) {
        TypedArray<int16_t> j({3, 3});
        EXPECT_EQ(cRmvDupI(j.ref(), -1, none.ref(), -1), 1);
        EXPECT_FALSE(std::filesystem::exists("made.tmp"));
        EXPECT_TRUE(std::filesystem::is_symlink(first));
    }
    size_t files = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator("."))
        ++files;
    EXPECT_EQ(files, link_error ? 1u : 2u); // no scratch file left behind
}

// Calls at once on two threads (or two processes in one directory) each get
// a scratch file of their own.
TEST_F(RmvDup, CallsAtOnceUseScratchFilesOfTheirOwn) {
    const auto run = [](unsigned seed, int *failures) {
        const std::vector<int32_t> input = random_values<int32_t>(20000, 3000, seed);
        std::vector<int32_t> expected = sorted(input);
        expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
        Bstr none;
        for (int round = 0; round < 40; ++round) {
            TypedArray<int32_t> l(input);
            if (cRmvDupL(l.ref(), -1, none.ref(), -1) != static_cast<int32_t>(expected.size()) || l.values() != expected)
                ++*failures;
        }
    };
    int failures[3] = {};
    std::thread a(run, 1u, &failures[0]), b(run, 2u, &failures[1]), c(run, 3u, &failures[2]);
    a.join();
    b.join();
    c.join();
    EXPECT_EQ(failures[0] + failures[1] + failures[2], 0);
    EXPECT_TRUE(no_files_here());
}

TEST_F(RmvDup, FailuresGiveTheirCodesAndLeaveNoFile) {
    Bstr bad("no-such-dir\\x.tmp"), named("x.tmp");
    TypedArray<double> d({1, 1});
    EXPECT_EQ(cRmvDupD(d.ref(), -1, bad.ref(), -1), -1); // cannot create
    SafeArray three(VT_R8, {{2, 0}, {2, 0}, {2, 0}});
    EXPECT_EQ(cRmvDupD(three.ref(), -1, named.ref(), -1), 0); // file made first, removed after
    EXPECT_EQ(cRmvDupD(three.ref(), 0, named.ref(), -1), 0);
    EXPECT_TRUE(no_files_here());
}

TEST_F(RmvDup, RecordSlicesOfTwoDimensionalArrays) {
    Bstr none, named("slices.tmp");
    for (int16_t use_file : {0, -1}) {
        SafeArray a(VT_I2, {{2, 0}, {5, 1}});
        const int16_t init[] = {3, 1, 1, 2, 3, 1, 1, 1, 1, 2};
        std::memcpy(a.data<int16_t>(), init, sizeof init);
        EXPECT_EQ(cRmvDupI(a.ref(), use_file, use_file ? named.ref() : none.ref(), -1), 3);
        EXPECT_EQ(bound(a, 2, false), 1);
        EXPECT_EQ(bound(a, 2, true), 3);
        EXPECT_EQ(std::vector<int16_t>(a.data<int16_t>(), a.data<int16_t>() + 6), (std::vector<int16_t>{1, 1, 1, 2, 3, 1}));
    }
    EXPECT_TRUE(no_files_here());
}

TEST(TypedSort, SeveralKeysOfMixedTypesRefineExactly) {
    // small ascending, byte ascending, d descending, f ascending (sorted
    // together by the radix path), then name case-insensitive over 3
    // characters descending and the number text ascending.
    const std::vector<Rec> input = random_records(3000, 5);
    Keys k = keys({{4, 3, 5, 0}, {6, 2, 1, 0}, {12, 6, -2, 0}, {8, 5, 1, 0}, {20, 9, -1, 3}, {28, 13, 1, 0}});
    Records<Rec> a(input);
    ASSERT_EQ(sort_records(a, k), -1);
    EXPECT_EQ(k.RecordSize, 32);
    // Descending keys swap x and y; d is copied out (the packed field is misaligned).
    expect_order(a.values(), [&](const Rec &x, const Rec &y) {
        return std::make_tuple(x.small, x.byte, double{y.d}, x.f, text(y.name, 3, true), num(x)) <
               std::make_tuple(y.small, y.byte, double{x.d}, y.f, text(x.name, 3, true), num(y));
    });
}

TEST(TypedSort, NumbersInTextWithSignedZerosAndNaNs) {
    // 3000 records take the radix path, on which "-0" and "0" are equal (the
    // next key decides). "nan", "inf" and "0x10" are no numbers to the
    // Windows runtime's strtod and read as 0 on every platform.
    const char *texts[] = {"-0", "0", "1.5", "-2", "10", "abc", " 3", "nan", "inf", "0x10"};
    std::vector<Rec> rs = random_records(3000, 6);
    for (size_t i = 0; i < rs.size(); ++i)
        put_text(rs[i].num, texts[i * 7919 % 10]);
    Keys k = keys({{28, 13, 1, 4}, {4, 3, -1, 0}});
    Records<Rec> a(rs);
    ASSERT_EQ(sort_records(a, k), -1);
    const auto value = [](const Rec &r) {
        const std::string t = text(r.num, 4);
        return t == "nan" || t == "inf" || t == "0x10" ? 0.0 : num(r);
    };
    expect_order(a.values(), [&](const Rec &x, const Rec &y) {
        return std::make_tuple(value(x), y.small) < std::make_tuple(value(y), x.small);
    });
    // A NaN in a Double key sends it back to the comparison sort, which
    // promises no order around it but keeps every record.
    rs[1234].d = std::numeric_limits<double>::quiet_NaN();
    Keys by_double = keys({{12, 6, 1, 0}, {4, 3, -1, 0}});
    Records<Rec> b(rs);
    ASSERT_EQ(sort_records(b, by_double), -1);
    EXPECT_TRUE(every_record_once(b.values()));
}

TEST(TypedSort, CaseSensitiveTextToTheZeroByteAndCurrencyReadAsDouble) {
    Keys k = keys({{20, 10, 1, 0}, {12, 7, -1, 0}}); // whole name byte for byte, then the Double field as code 7
    Records<Rec> a(random_records(500, 9));
    ASSERT_EQ(sort_records(a, k), -1);
    expect_order(a.values(), [](const Rec &x, const Rec &y) {
        return std::make_tuple(text(x.name, 8), double{y.d}) < std::make_tuple(text(y.name, 8), double{x.d});
    });
}

TEST(TypedSort, UnusedLeadingKeysAreSkippedAndTheChainEndsAtTheFirstGap) {
    const std::vector<Rec> rs = random_records(200, 2);
    // Slot 0 unused, slot 1 small ascending, slot 3 (after the gap) ignored:
    // it would order each run by id descending.
    Keys k = keys({{0, 4, 0, 0}, {4, 1, 1, 0}, {0, 0, 0, 0}, {0, 4, -1, 0}});
    Records<Rec> a(rs);
    ASSERT_EQ(sort_records(a, k), -1);
    const auto got = a.values();
    bool any_ascending_ids = false;
    for (size_t i = 1; i < got.size(); ++i) {
        ASSERT_LE(got[i - 1].small, got[i].small);
        any_ascending_ids |= got[i - 1].small == got[i].small && got[i - 1].id < got[i].id;
    }
    EXPECT_TRUE(any_ascending_ids);
    Keys none = keys({});
    Records<Rec> b(rs);
    EXPECT_EQ(sort_records(b, none), -1);
    EXPECT_EQ(none.RecordSize, 32);
    EXPECT_EQ(std::memcmp(b.values().data(), rs.data(), rs.size() * sizeof(Rec)), 0);
}

TEST(TypedSort, FewerThanTwoRecordsAndSixteenBitCounts) {
    Keys k = keys({{0, 4, 1, 0}});
    Records<Rec> one(random_records(1, 1));
    EXPECT_EQ(sort_records(one, k), 0);
    EXPECT_EQ(k.RecordSize, -123); // untouched on refusal
    // 40000 records: the 16-bit count wraps negative, nothing is sorted.
    std::vector<Rec> many = random_records(40000, 4);
    for (auto &r : many)
        r.id = -r.id;
    Records<Rec> big(many);
    EXPECT_EQ(sort_records(big, k), 0);
    EXPECT_EQ(big.values()[1].id, -1);
    SAFEARRAY *null_array = nullptr;
    EXPECT_EQ(cSortTypedArray(&null_array, reinterpret_cast<TypedSortDescriptor *>(&k)), 0);
}

TEST(TypedSort, UnknownCodesAndKeysOutsideTheRecordTerminateInPlace) {
    const std::vector<Rec> input = random_records(30000, 8);
    for (int16_t type : {0, -9, -10, -13, 15, -15, 99, 4}) {
        for (int16_t order : {1, -1}) {
            // Code 4 at offset 30 would read past the 32-byte record.
            Keys k = keys({{static_cast<int16_t>(type == 4 ? 30 : 0), type, order, 0}, {4, 3, 1, 0}});
            Records<Rec> a(input);
            ASSERT_EQ(sort_records(a, k), -1);
            ASSERT_TRUE(every_record_once(a.values())) << type << " " << order;
        }
    }
    // A text key whose length runs past the record stops at the record's end.
    Keys k = keys({{28, 10, 1, 500}});
    Records<Rec> a(input);
    EXPECT_EQ(sort_records(a, k), -1);
    expect_order(a.values(), [](const Rec &x, const Rec &y) { return text(x.num, 4) < text(y.num, 4); });
}

TEST(TypedSort, VariantKeysAndWideStringPointers) {
    // a: Strings in mixed case, by -11 (folded) or -12 (exact). b: the kinds
    // of Variant each numeric code is given (Longs, Doubles, numbers as text,
    // Dates), compared as the code's type; text "x" converts to nothing and
    // counts as 0. Then the text pointers: null first, then by number (14),
    // then descending as text (12).
    enum Kind { L, R, T, D };
    struct Case {
        int16_t key_a, key_b, order_b;
        std::vector<Kind> kinds;
    };
    const std::u16string words[] = {u"pear", u"Pear", u"apple", u"APPLE", u"fig"};
    const std::u16string texts[] = {u"10", u"9", u"-3.5", u"x", u"007"};
    std::vector<BSTR> owned;
    const auto bstr = [&](const std::u16string &w) {
        owned.push_back(SysAllocStringLen(reinterpret_cast<const OLECHAR *>(w.data()), static_cast<UINT>(w.size())));
        return owned.back();
    };
    for (const Case &c : {Case{-11, -6, 1, {L, R, T}}, Case{-12, -14, -1, {L, T}}, Case{-11, -4, -1, {L, R}}, Case{-12, -8, 1, {L, D}}}) {
        std::mt19937 rng(21);
        std::vector<VRec> rs(400);
        for (size_t i = 0; i < rs.size(); ++i) {
            VRec &r = rs[i];
            std::memset(&r, 0, sizeof r);
            r.id = static_cast<int32_t>(i);
            V_VT(&r.a) = VT_BSTR;
            V_BSTR(&r.a) = bstr(words[rng() % 5]);
            switch (c.kinds[rng() % c.kinds.size()]) {
            case L: V_VT(&r.b) = VT_I4; V_I4(&r.b) = static_cast<LONG>(rng() % 6) - 1; break;
            case R: V_VT(&r.b) = VT_R8; V_R8(&r.b) = static_cast<double>(rng() % 10) / 2; break;
            case T: V_VT(&r.b) = VT_BSTR; V_BSTR(&r.b) = bstr(texts[rng() % 5]); break;
            case D: V_VT(&r.b) = VT_DATE; V_DATE(&r.b) = 45000.25 * static_cast<double>(rng() % 5); break;
            }
            r.text = (rng() % 5 == 0) ? nullptr : bstr(texts[rng() % 5]);
        }
        Keys k = keys({{offsetof(VRec, a), c.key_a, 1, 0}, {offsetof(VRec, b), c.key_b, c.order_b, 0},
                       {offsetof(VRec, text), 14, 1, 0}, {offsetof(VRec, text), 12, -1, 0}});
        Records<VRec> a(rs);
        ASSERT_EQ(sort_records(a, k), -1);
        const auto key_a = [&](const VARIANT &v) {
            std::u16string s = wide(V_BSTR(&v));
            for (auto &ch : s)
                if (c.key_a == -11 && ch >= u'A' && ch <= u'Z')
                    ch = static_cast<char16_t>(ch + 32);
            return s;
        };
        const auto key_b = [&](const VARIANT &v) {
            switch (V_VT(&v)) {
            case VT_I4: return static_cast<double>(V_I4(&v));
            case VT_R8: return c.key_b == -4 ? std::nearbyint(V_R8(&v)) : V_R8(&v); // Long rounds half to even
            case VT_DATE: return V_DATE(&v);
            default: return number(V_BSTR(&v));
            }
        };
        // Null text first (present = false), descending keys swap x and y.
        const auto less = [&](const VRec &x, const VRec &y) {
            return std::make_tuple(key_a(x.a), c.order_b * key_b(x.b), x.text != nullptr, number(x.text), wide(y.text)) <
                   std::make_tuple(key_a(y.a), c.order_b * key_b(y.b), y.text != nullptr, number(y.text), wide(x.text));
        };
        SCOPED_TRACE(c.key_b);
        expect_order(a.values(), less);
    }
    for (BSTR s : owned)
        SysFreeString(s);
}

// Variant keys read a Variant only when it holds a value the conversion
// handles by value (numbers, dates, strings, Empty, Null). Objects, values
// by reference and arrays behind junk pointers, and type codes that name no
// type, count as a failed conversion: 0 for a number, and the smallest value
// for a string (as a null string is).
TEST(TypedSort, VariantKeysReadOnlyTheValuesTheyCanConvert) {
    const VARTYPE junk[] = {VT_UNKNOWN,        VT_DISPATCH,           VT_RECORD,          VT_BYREF | VT_R8,
                            VT_BYREF | VT_BSTR, VT_BYREF | VT_VARIANT, VT_ARRAY | VT_I4,   VT_ARRAY | VT_BSTR,
                            VT_VARIANT,        0x7FFF,                0xFFFF,             VT_BYREF | VT_ARRAY | VT_I4};
    std::vector<BSTR> owned;
    std::vector<VRec> rs(240);
    std::vector<double> value(rs.size());
    std::vector<bool> is_junk(rs.size());
    for (size_t i = 0; i < rs.size(); ++i) {
        VRec &r = rs[i];
        std::memset(&r, 0x41, sizeof r); // junk pointers and payload everywhere
        r.id = static_cast<int32_t>(i);
        r.text = nullptr;
        value[i] = static_cast<double>(static_cast<int>(i * 7 % 11) - 5) / 2;
        is_junk[i] = i % 3 == 0;
        if (is_junk[i]) {
            V_VT(&r.a) = junk[i / 3 % std::size(junk)];
            value[i] = 0;
        } else if (i % 3 == 1) {
            V_VT(&r.a) = VT_R8;
            V_R8(&r.a) = value[i];
        } else {
            // The number as text: "-2.5" .. "2.5".
            char digits[16];
            std::snprintf(digits, sizeof digits, "%g", value[i]);
            std::u16string w(digits, digits + std::strlen(digits));
            owned.push_back(SysAllocStringLen(reinterpret_cast<const OLECHAR *>(w.data()), static_cast<UINT>(w.size())));
            V_VT(&r.a) = VT_BSTR;
            V_BSTR(&r.a) = owned.back();
        }
    }
    for (int16_t code : {-6, -14, -11}) {
        Keys k = keys({{offsetof(VRec, a), code, 1, 0}, {offsetof(VRec, id), 4, 1, 0}});
        Records<VRec> a(rs);
        ASSERT_EQ(sort_records(a, k), -1);
        const auto got = a.values();
        ASSERT_TRUE(every_record_once(got)) << code;
        std::vector<int32_t> expected(rs.size());
        for (size_t i = 0; i < rs.size(); ++i)
            expected[i] = static_cast<int32_t>(i);
        // By number (junk reads as 0 for -6), then by id; for the string
        // codes the junk comes first, as a null string would.
        std::stable_sort(expected.begin(), expected.end(),
                         [&](int32_t x, int32_t y) { return value[static_cast<size_t>(x)] < value[static_cast<size_t>(y)]; });
        if (code != -6)
            std::stable_partition(expected.begin(), expected.end(), [&](int32_t x) { return is_junk[static_cast<size_t>(x)]; });
        std::vector<int32_t> ids;
        for (const VRec &r : got)
            ids.push_back(r.id);
        // -11 orders the values as text, which is not the numbers' order:
        // only its junk part is checked.
        const size_t checked = code == -11 ? rs.size() / 3 : rs.size();
        EXPECT_EQ(std::vector<int32_t>(ids.begin(), ids.begin() + static_cast<ptrdiff_t>(checked)),
                  std::vector<int32_t>(expected.begin(), expected.begin() + static_cast<ptrdiff_t>(checked)))
            << code;
    }
    for (BSTR s : owned)
        SysFreeString(s);
}

// Random descriptors over records of random bytes: every code, offset,
// length and order, except the codes whose field is a pointer to a string
// (11, 12, 14), which a record holds by contract. The bytes are all 0x10 or
// above, so no Variant key meets a string, and it must read none of the
// other type fields it finds. The sort keeps every record.
TEST(TypedSort, GarbageDescriptorsOverGarbageRecords) {
    struct Raw {
        unsigned char bytes[40];
    };
    const auto raw_less = [](const Raw &x, const Raw &y) { return std::memcmp(x.bytes, y.bytes, sizeof x.bytes) < 0; };
    const int16_t listed[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, -1, -2, -3, -4, -5, -6, -7, -8, -11, -12, -14, 0, -9, 15, 32767, -32768};
    std::mt19937 rng(31);
    for (int round = 0; round < 200; ++round) {
        Keys k;
        auto *bytes = reinterpret_cast<unsigned char *>(&k);
        for (size_t b = 0; b < sizeof k; ++b)
            bytes[b] = static_cast<unsigned char>(rng());
        for (int slot = 0; slot < 10; ++slot) {
            if (round % 2 == 0) { // codes of the list at offsets near the record
                k.KeyType[slot] = listed[rng() % std::size(listed)];
                k.KeyOffset[slot] = static_cast<int16_t>(static_cast<int>(rng() % 48) - 4);
                k.KeyOrder[slot] = static_cast<int16_t>(rng() % 2 ? 1 : -1);
            }
            while (k.KeyType[slot] == 11 || k.KeyType[slot] == 12 || k.KeyType[slot] == 14)
                k.KeyType[slot] = static_cast<int16_t>(rng());
        }
        std::vector<Raw> rs(600);
        for (Raw &r : rs)
            for (unsigned char &b : r.bytes)
                b = static_cast<unsigned char>(0x10 + rng() % 0xF0);
        Records<Raw> a(rs);
        ASSERT_EQ(sort_records(a, k), -1) << round;
        std::vector<Raw> got = a.values();
        std::sort(got.begin(), got.end(), raw_less);
        std::sort(rs.begin(), rs.end(), raw_less);
        ASSERT_EQ(std::memcmp(got.data(), rs.data(), rs.size() * sizeof(Raw)), 0) << round;
    }
}

// Numbers in text read with a full stop as the decimal point whatever the
// caller's locale says; a comma ends the number.
TEST(TypedSort, NumbersInTextIgnoreTheCallersLocale) {
    CommaLocale comma;
    if (!comma.ok())
        GTEST_SKIP() << "no locale with a decimal comma could be had";
    std::vector<Rec> rs = random_records(4, 1);
    const char *numbers[] = {"1.5", "1.25", "1.75", "0,9"};
    for (size_t i = 0; i < rs.size(); ++i)
        put_text(rs[i].num, numbers[i]);
    Keys k = keys({{28, 13, 1, 4}, {0, 4, -1, 0}});
    Records<Rec> a(rs);
    ASSERT_EQ(sort_records(a, k), -1);
    std::vector<int32_t> ids;
    for (const Rec &r : a.values())
        ids.push_back(r.id);
    EXPECT_EQ(ids, (std::vector<int32_t>{3, 1, 0, 2}));
}
