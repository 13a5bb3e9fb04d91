// Fills and shifts of runs of elements against plain loops and std::rotate.
#include "arrays/fill_engine.h"
#include "arrays/shift_engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

using namespace brindle::arrays;

namespace {

template <class T> void run(std::vector<T> &v, FillOp op, T start, T step) {
    fill_series<T>(
        v.size(), [&v](size_t k) { return v[k]; }, [&v](size_t k, T x) { v[k] = x; }, op, start, step);
}

} // namespace

TEST(FillEngine, SetAddAndFill) {
    std::vector<double> d = {1.5, -2, 7};
    run(d, FillOp::add, 0.5, 99.0);
    EXPECT_EQ(d, (std::vector<double>{2, -1.5, 7.5}));
    run(d, FillOp::set, 3.0, 99.0);
    EXPECT_EQ(d, (std::vector<double>{3, 3, 3}));
    run(d, FillOp::fill, 10.0, -2.5);
    EXPECT_EQ(d, (std::vector<double>{10, 7.5, 5}));
    // Float fills accumulate in float: 0.1f added up, not 0.1 * k.
    std::vector<float> f(100);
    run(f, FillOp::fill, 0.0f, 0.1f);
    float expected = 0.0f;
    for (size_t k = 0; k < f.size(); ++k, expected += 0.1f)
        ASSERT_EQ(f[k], expected) << k;
}

TEST(FillEngine, IntegersWrapInSixteenBits) {
    std::vector<int16_t> v = {32767, -32768, 100};
    run<int16_t>(v, FillOp::add, 1, 0);
    EXPECT_EQ(v, (std::vector<int16_t>{-32768, -32767, 101}));
    run<int16_t>(v, FillOp::fill, 32766, 1);
    EXPECT_EQ(v, (std::vector<int16_t>{32766, 32767, -32768}));
    EXPECT_EQ(add_wrapping<int16_t>(-32768, -1), 32767);
}

TEST(ShiftEngine, MatchesRotateAndReplace) {
    for (bool left : {true, false}) {
        for (size_t n : {1u, 2u, 9u}) {
            std::vector<int32_t> v(n), expect(n);
            std::iota(v.begin(), v.end(), 1);
            expect = v;
            if (left) {
                std::rotate(expect.begin(), expect.begin() + 1, expect.end());
                expect.back() = -7;
            } else {
                std::rotate(expect.rbegin(), expect.rbegin() + 1, expect.rend());
                expect.front() = -7;
            }
            const int32_t value = -7;
            shift_elements(reinterpret_cast<unsigned char *>(v.data()), n, sizeof(int32_t), &value, left);
            EXPECT_EQ(v, expect) << left << " " << n;
        }
    }
    unsigned char untouched = 5;
    shift_elements(&untouched, 0, 1, "x", true);
    EXPECT_EQ(untouched, 5);
}
