// The numeric sorts against std::sort, and the packed-record sort against a
// plain sort by the text that runs from each record's start to the end of
// the buffer.
#include "arrays/numeric_sort.h"
#include "arrays/packed_record_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

using namespace brindle::arrays;

namespace {

auto bytes(auto &v) { return reinterpret_cast<unsigned char *>(v.data()); }

} // namespace

TEST(NumericSortEngine, SingleElementsLikeStdSort) {
    std::mt19937 gen(3);
    std::vector<double> d(5000);
    for (double &x : d)
        x = std::uniform_real_distribution<double>(-1e6, 1e6)(gen);
    auto expect = d;
    std::sort(expect.begin(), expect.end(), std::greater<>());
    ASSERT_TRUE(sort_number_units(bytes(d), d.size(), 1, 5, true));
    EXPECT_EQ(d, expect);

    std::vector<int16_t> s(3000);
    for (auto &x : s)
        x = static_cast<int16_t>(gen());
    auto expect_s = s;
    std::sort(expect_s.begin(), expect_s.end());
    ASSERT_TRUE(sort_number_units(bytes(s), s.size(), 1, 2, false));
    EXPECT_EQ(s, expect_s);

    EXPECT_FALSE(sort_number_units(bytes(s), s.size(), 1, 17, false)); // Byte: not a numeric sort
    EXPECT_EQ(s, expect_s);
}

TEST(NumericSortEngine, SlicesCompareLexicographically) {
    std::mt19937 gen(5);
    std::vector<std::vector<int32_t>> rows(400, std::vector<int32_t>(3));
    for (auto &r : rows)
        for (auto &x : r)
            x = static_cast<int32_t>(gen() % 4) - 2; // many ties in the first columns
    std::vector<int32_t> flat;
    for (const auto &r : rows)
        flat.insert(flat.end(), r.begin(), r.end());
    std::sort(rows.begin(), rows.end());
    ASSERT_TRUE(sort_number_units(bytes(flat), rows.size(), 3, 3, false));
    std::vector<int32_t> expect;
    for (const auto &r : rows)
        expect.insert(expect.end(), r.begin(), r.end());
    EXPECT_EQ(flat, expect);
}

TEST(PackedRecordSortEngine, OrderOfTheTextsToTheEnd) {
    // Letters a and b only: no zero byte, so each record's comparison runs
    // to the end of the buffer, every pair differs, and a and b are adjacent
    // codes, so the descending sort is the exact reverse. Long runs of a
    // exhaust the direct comparison's budget.
    std::mt19937 gen(11);
    for (const size_t run : {0u, 3000u}) {
        for (const bool descending : {false, true}) {
            const size_t n = 500, size = 6;
            std::string text(n * size, 'a');
            for (size_t i = run; i < text.size(); ++i)
                text[i] = gen() % 3 == 0 ? 'b' : 'a';
            std::vector<size_t> order(n);
            std::iota(order.begin(), order.end(), size_t{0});
            std::sort(order.begin(), order.end(), [&](size_t x, size_t y) {
                const auto a = std::string_view(text).substr(x * size), b = std::string_view(text).substr(y * size);
                return descending ? b < a : a < b;
            });
            std::string expect;
            for (size_t i : order)
                expect += text.substr(i * size, size);
            sort_packed_records(bytes(text), n, size, text.size(), descending);
            EXPECT_EQ(text, expect) << run << " " << descending;
        }
    }
}

TEST(PackedRecordSortEngine, CaseFoldedAndStoppedByZero) {
    std::string text = std::string("Cb\0x", 4) + std::string("aZ\0y", 4) + std::string("cA\0z", 4);
    sort_packed_records(bytes(text), 3, 4, text.size(), false);
    EXPECT_EQ(text, std::string("aZ\0ycA\0zCb\0x", 12)); // az < ca < cb; x, y, z never compared
}
