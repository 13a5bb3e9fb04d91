// The sort engines: safe_sort must sort with an ordering and stay in range,
// terminate and keep to n log n with any other comparison; sort_numbers
// must agree with std::sort; typed_sort refines exactly on large inputs.
#include "arrays/sort_engine.h"
#include "arrays/typed_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <string>
#include <random>
#include <vector>

using brindle::arrays::safe_sort;
using brindle::arrays::sort_numbers;
using brindle::arrays::typed_sort;

namespace {

std::vector<std::vector<int>> patterns(size_t n) {
    std::mt19937 rng(static_cast<unsigned>(n));
    std::vector<int> sorted(n), reversed(n), equal(n, 7), organ(n), random(n), few(n);
    std::iota(sorted.begin(), sorted.end(), 0);
    std::iota(reversed.rbegin(), reversed.rend(), 0);
    for (size_t i = 0; i < n; ++i) {
        organ[i] = static_cast<int>(i < n / 2 ? i : n - i);
        random[i] = static_cast<int>(rng());
        few[i] = static_cast<int>(rng() % 3);
    }
    return {sorted, reversed, equal, organ, random, few};
}

double n_log_n(size_t n) { return static_cast<double>(n) * std::log2(static_cast<double>(n) + 1); }

} // namespace

TEST(SafeSort, SortsEveryPatternLikeStdSortInNLogN) {
    for (size_t n : {0u, 1u, 2u, 15u, 16u, 17u, 100u, 100000u}) {
        for (auto input : patterns(n)) {
            std::vector<int> expected = input;
            std::sort(expected.begin(), expected.end());
            size_t comparisons = 0;
            safe_sort(input.data(), input.size(), [&](int a, int b) {
                ++comparisons;
                return a < b;
            });
            ASSERT_EQ(input, expected) << n;
            EXPECT_LE(static_cast<double>(comparisons), 4 * n_log_n(n) + 64) << n;
        }
    }
}

TEST(SafeSort, AnyComparisonTerminatesInNLogNAndPermutes) {
    const size_t n = 100000;
    std::mt19937 rng(1);
    std::vector<int> base(n);
    std::iota(base.begin(), base.end(), 0);
    std::shuffle(base.begin(), base.end(), rng);
    // Always "less", never "less", a coin toss, and NaN-like keys that are
    // equal to everything (every third element).
    const auto always = [](int, int) { return true; };
    const auto never = [](int, int) { return false; };
    std::bernoulli_distribution coin;
    const auto toss = [&](int, int) { return coin(rng); };
    const auto nan_like = [](int a, int b) { return a % 3 != 0 && b % 3 != 0 && a < b; };
    const auto check = [&](auto less) {
        std::vector<int> v = base;
        size_t comparisons = 0;
        safe_sort(v.data(), v.size(), [&](int a, int b) {
            ++comparisons;
            return less(a, b);
        });
        EXPECT_LE(static_cast<double>(comparisons), 8 * n_log_n(n));
        std::sort(v.begin(), v.end());
        for (size_t i = 0; i < n; ++i)
            ASSERT_EQ(v[i], static_cast<int>(i));
    };
    check(always);
    check(never);
    check(toss);
    check(nan_like);
}

namespace {

template <class T> void check_numbers(size_t n, unsigned seed) {
    std::mt19937_64 rng(seed);
    std::vector<T> v(n);
    for (auto &x : v) {
        if constexpr (std::is_floating_point_v<T>)
            x = static_cast<T>(std::ldexp(static_cast<double>(static_cast<int64_t>(rng() % 2000001) - 1000000),
                                          static_cast<int>(rng() % 200) - 100));
        else
            x = static_cast<T>(rng());
    }
    std::vector<T> expected = v;
    std::sort(expected.begin(), expected.end());
    std::vector<T> up = v;
    sort_numbers(up.data(), up.size(), false);
    EXPECT_EQ(up, expected) << n;
    std::vector<T> down = v;
    sort_numbers(down.data(), down.size(), true);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(down, expected) << n;
}

} // namespace

TEST(SortNumbers, RadixAgreesWithStdSort) {
    for (size_t n : {2u, 255u, 256u, 257u, 70000u}) {
        check_numbers<int16_t>(n, 1);
        check_numbers<int32_t>(n, 2);
        check_numbers<float>(n, 3);
        check_numbers<double>(n, 4);
    }
    // Values that share their upper bytes skip radix passes.
    std::vector<int32_t> narrow(1000);
    for (size_t i = 0; i < narrow.size(); ++i)
        narrow[i] = static_cast<int32_t>((i * 7919) % 200) - 100;
    std::vector<int32_t> expected = narrow;
    std::sort(expected.begin(), expected.end());
    sort_numbers(narrow.data(), narrow.size(), false);
    EXPECT_EQ(narrow, expected);
}

TEST(TypedSortEngine, RefinesRunsBeyondSixteenBitCounts) {
    // The engine itself takes any count (the export's count is 16-bit).
    struct R {
        int32_t a;
        float b;
        int32_t id;
    };
    const size_t n = 100000;
    std::vector<R> rs(n);
    std::mt19937 rng(5);
    for (size_t i = 0; i < n; ++i)
        rs[i] = {static_cast<int32_t>(rng() % 50), static_cast<float>(rng() % 100) / 4, static_cast<int32_t>(i)};
    TypedSortDescriptor d{};
    d.KeyOffset[0] = 0, d.KeyType[0] = 4, d.KeyOrder[0] = -1;
    d.KeyOffset[1] = 4, d.KeyType[1] = 5, d.KeyOrder[1] = 1;
    d.KeyOffset[2] = 8, d.KeyType[2] = 4, d.KeyOrder[2] = 1;
    std::vector<R> expected = rs;
    std::sort(expected.begin(), expected.end(), [](const R &x, const R &y) {
        if (x.a != y.a) return x.a > y.a;
        if (x.b != y.b) return x.b < y.b;
        return x.id < y.id;
    });
    typed_sort(reinterpret_cast<unsigned char *>(rs.data()), n, sizeof(R), d);
    ASSERT_EQ(std::memcmp(rs.data(), expected.data(), n * sizeof(R)), 0);
}

TEST(TypedSortEngine, NumbersInTextWithSignedZerosAndNaNs) {
    // Code 13 over long ranges takes the radix path; "-0" and "0" are equal
    // (the next key decides), and a NaN anywhere sends the key back to the
    // comparison sort, which must still give a consistent order elsewhere.
    struct R {
        char num[6];
        int16_t tie;
    };
    for (bool with_nan : {false, true}) {
        const char *texts[] = {"-0", "0", "1.5", "-2", "10", "abc", " 3"};
        std::vector<R> rs(3000);
        std::mt19937 rng(9);
        for (auto &r : rs) {
            std::memset(&r, 0, sizeof r);
            const char *t = texts[rng() % 7];
            std::memcpy(r.num, t, std::strlen(t));
            r.tie = static_cast<int16_t>(rng() % 100);
        }
        if (with_nan)
            std::memcpy(rs[1234].num, "nan", 3);
        TypedSortDescriptor d{};
        d.KeyOffset[0] = 0, d.KeyType[0] = 13, d.KeyOrder[0] = 1, d.KeyLength[0] = 6;
        d.KeyOffset[1] = 6, d.KeyType[1] = 3, d.KeyOrder[1] = -1;
        std::vector<R> before = rs;
        typed_sort(reinterpret_cast<unsigned char *>(rs.data()), rs.size(), sizeof(R), d);
        if (with_nan) {
            // No order is promised around a NaN; the records are all there.
            const auto as_bytes = [](const std::vector<R> &v) {
                std::vector<std::string> out;
                for (const R &r : v)
                    out.emplace_back(reinterpret_cast<const char *>(&r), sizeof r);
                std::sort(out.begin(), out.end());
                return out;
            };
            EXPECT_EQ(as_bytes(rs), as_bytes(before));
            continue;
        }
        size_t checked = 0;
        for (size_t i = 1; i < rs.size(); ++i) {
            const double a = std::strtod(std::string(rs[i - 1].num, strnlen(rs[i - 1].num, 6)).c_str(), nullptr);
            const double b = std::strtod(std::string(rs[i].num, strnlen(rs[i].num, 6)).c_str(), nullptr);
            ASSERT_LE(a, b) << i;
            if (a == b) {
                ASSERT_GE(rs[i - 1].tie, rs[i].tie) << i;
                ++checked;
            }
        }
        EXPECT_GT(checked, 2000u);
    }
}
