// Statistics over a run of numbers against the standard algorithms and
// values worked by hand.
#include "arrays/statistics_engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

using namespace brindle::arrays;

namespace {

auto reader(const std::vector<double> &v) {
    return [&v](size_t k) { return v[k]; };
}

} // namespace

TEST(StatisticsEngine, AgreesWithStandardAlgorithms) {
    std::mt19937 gen(7);
    std::uniform_int_distribution<int> d(-50, 50);
    for (size_t n : {1u, 2u, 17u, 1000u}) {
        std::vector<double> v(n);
        for (double &x : v)
            x = d(gen);
        const auto at = reader(v);
        const double total = std::accumulate(v.begin(), v.end(), 0.0);
        EXPECT_EQ(series_sum(n, at), total);
        EXPECT_DOUBLE_EQ(series_mean(n, at), total / static_cast<double>(n));
        EXPECT_EQ(series_extreme(n, at, 0, true), *std::max_element(v.begin(), v.end()));
        EXPECT_EQ(series_extreme(n, at, n - 1, false), *std::min_element(v.begin(), v.end()));
        EXPECT_EQ(series_count_equal(n, at, v[0]), std::count(v.begin(), v.end(), v[0]));
        EXPECT_EQ(series_find_equal(n, at, v[n - 1]),
                  static_cast<size_t>(std::find(v.begin(), v.end(), v[n - 1]) - v.begin()));
    }
}

TEST(StatisticsEngine, DeviationIsTheFamilysOwnMeasure) {
    const std::vector<double> v = {1, 2, 3};
    EXPECT_DOUBLE_EQ(series_deviation(3, reader(v)), std::sqrt(2.0) / 3.0);
    const std::vector<double> same = {4, 4, 4, 4};
    EXPECT_EQ(series_deviation(4, reader(same)), 0.0);
    EXPECT_TRUE(std::isnan(series_mean(0, reader(v)))); // 0 / 0
    EXPECT_TRUE(std::isnan(series_deviation(0, reader(v))));
    EXPECT_EQ(series_extreme(0, reader(v), 0, true), 0.0);
}

TEST(StatisticsEngine, ExceptXAndNaN) {
    const std::vector<double> v = {5, 9, 9, -2, NAN};
    EXPECT_EQ(series_extreme_except(5, reader(v), true, 9, -1e300), 5.0);
    EXPECT_EQ(series_extreme_except(5, reader(v), false, -2, 1e300), 5.0);
    // Nothing beats the start: it comes back.
    EXPECT_EQ(series_extreme_except(5, reader(v), true, 9, 100.0), 100.0);
    EXPECT_EQ(series_count_equal(5, reader(v), NAN), 0);
    EXPECT_EQ(series_find_equal(5, reader(v), 7), std::nullopt);
    EXPECT_EQ(series_find_equal(5, reader(v), 9), 1u);
    EXPECT_EQ(series_extreme(5, reader(v), 0, true), 9.0); // a later NaN is passed over
}
