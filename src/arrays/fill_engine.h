// Setting, adding to and filling a run of n values of type T, read by get(k)
// and written by put(k, value), k = 0 .. n-1. Integer (int16_t) arithmetic
// wraps around in 16 bits as the caller's Integer would in C; float
// arithmetic is done in float.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace brindle::arrays {

// value + step in T, wrapping for int16_t.
template <class T> T add_wrapping(T value, T step) {
    if constexpr (std::is_same_v<T, int16_t>)
        return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint16_t>(value) + static_cast<uint16_t>(step)));
    else
        return value + step;
}

enum class FillOp { set, add, fill };

// set: every value := start. add: every value := value + start (step
// unused). fill: values := start, start + step, start + 2 step, ... as a
// running sum in T.
template <class T, class Get, class Put> void fill_series(size_t n, Get get, Put put, FillOp op, T start, T step) {
    T running = start;
    for (size_t k = 0; k < n; ++k) {
        switch (op) {
        case FillOp::set:
            put(k, start);
            break;
        case FillOp::add:
            put(k, add_wrapping(get(k), start));
            break;
        case FillOp::fill:
            put(k, running);
            running = add_wrapping(running, step);
            break;
        }
    }
}

} // namespace brindle::arrays
