// The sort engine every sort of the family rests on: safe_sort must sort
// with an ordering, and stay in range, terminate and keep to n log n with
// any other comparison.
#include "arrays/sort_engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

using brindle::arrays::safe_sort;

namespace {

double n_log_n(size_t n) { return static_cast<double>(n) * std::log2(static_cast<double>(n) + 1); }

// Sorts v with `less`, counting the comparisons.
template <class Less> size_t counted_sort(std::vector<int> &v, Less less) {
    size_t comparisons = 0;
    safe_sort(v.data(), v.size(), [&](int a, int b) { return ++comparisons, less(a, b); });
    return comparisons;
}

} // namespace

TEST(SafeSort, SortsEveryPatternLikeStdSortInNLogN) {
    for (size_t n : {0u, 1u, 2u, 15u, 16u, 17u, 100u, 100000u}) {
        std::mt19937 rng(static_cast<unsigned>(n));
        std::vector<int> sorted(n), reversed(n), equal(n, 7), organ(n), random(n), few(n);
        std::iota(sorted.begin(), sorted.end(), 0);
        std::iota(reversed.rbegin(), reversed.rend(), 0);
        for (size_t i = 0; i < n; ++i) {
            organ[i] = static_cast<int>(i < n / 2 ? i : n - i);
            random[i] = static_cast<int>(rng());
            few[i] = static_cast<int>(rng() % 3);
        }
        for (auto input : {sorted, reversed, equal, organ, random, few}) {
            std::vector<int> expected = input;
            std::sort(expected.begin(), expected.end());
            const size_t comparisons = counted_sort(input, [](int a, int b) { return a < b; });
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
    std::bernoulli_distribution coin;
    const auto check = [&](const char *name, auto less) {
        std::vector<int> v = base;
        EXPECT_LE(static_cast<double>(counted_sort(v, less)), 8 * n_log_n(n)) << name;
        std::sort(v.begin(), v.end());
        for (size_t i = 0; i < n; ++i)
            ASSERT_EQ(v[i], static_cast<int>(i)) << name;
    };
    check("always less", [](int, int) { return true; });
    check("never less", [](int, int) { return false; });
    check("coin toss", [&](int, int) { return coin(rng); });
    // NaN-like keys (every third) equal to everything.
    check("nan-like", [](int a, int b) { return a % 3 != 0 && b % 3 != 0 && a < b; });
}
