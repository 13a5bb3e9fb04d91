// Statistics and searches over a run of numbers: n values read one at a time
// by at(k), k = 0 .. n-1 (the elements of dimension 1 of a typed array, as
// doubles). The sums run in element order, so results are reproducible to
// the last bit.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace brindle::arrays {

// The sum of the values.
template <class At> double series_sum(size_t n, At at) {
    double total = 0.0;
    for (size_t k = 0; k < n; ++k)
        total += at(k);
    return total;
}

// The sum over the count, unguarded: no values give 0 / 0, not a number.
template <class At> double series_mean(size_t n, At at) { return series_sum(n, at) / static_cast<double>(n); }

// sqrt(sum of squared differences from the mean) / n: the family's own
// measure, deliberately neither the population nor the sample deviation
// (1, 2, 3 give sqrt(2) / 3). No values give 0 / 0.
template <class At> double series_deviation(size_t n, At at) {
    const double m = series_mean(n, at);
    double squares = 0.0;
    for (size_t k = 0; k < n; ++k) {
        const double d = at(k) - m;
        squares += d * d;
    }
    return std::sqrt(squares) / static_cast<double>(n);
}

// The largest (or smallest) value, the running value starting from value
// `start` (< n); 0 when there are none. A NaN start stays, a NaN later is
// passed over.
template <class At> double series_extreme(size_t n, At at, size_t start, bool largest) {
    if (n == 0)
        return 0.0;
    double best = at(start);
    for (size_t k = 0; k < n; ++k) {
        const double v = at(k);
        if (largest ? v > best : v < best)
            best = v;
    }
    return best;
}

// The largest (or smallest) value not equal to x, starting from `start`,
// which comes back when no value beats it.
template <class At> double series_extreme_except(size_t n, At at, bool largest, double x, double start) {
    double best = start;
    for (size_t k = 0; k < n; ++k) {
        const double v = at(k);
        if (v == x)
            continue;
        if (largest ? v > best : v < best)
            best = v;
    }
    return best;
}

// How many values equal `value` (a NaN equals nothing).
template <class At> int32_t series_count_equal(size_t n, At at, double value) {
    int32_t count = 0;
    for (size_t k = 0; k < n; ++k)
        count += at(k) == value;
    return count;
}

// The position of the first value equal to `value`, if any.
template <class At> std::optional<size_t> series_find_equal(size_t n, At at, double value) {
    for (size_t k = 0; k < n; ++k)
        if (at(k) == value)
            return k;
    return std::nullopt;
}

} // namespace brindle::arrays
