// The sort engines behind every sort of the array family.
//
// Several comparisons the family defines are not orderings at all: a NaN
// compares equal to every number, the descending record sort calls most
// differences "equal", the record sort compares past the record, unknown key
// codes always say "less". std::sort and qsort may run off the ends of the
// range when handed such a comparison, so every sort here is one that stays
// inside its range and terminates whatever the comparison answers:
//
//   safe_sort     introsort: median-of-three quicksort whose scans are bounded
//                 by the partition's ends and which always sets the pivot
//                 aside (each step shrinks the range), heapsort past a depth
//                 of 2 log2 n, insertion sort below 16 elements. With a proper
//                 ordering it sorts; with any other it permutes.
//   sort_numbers  the numeric arrays: a least-significant-digit radix sort on
//                 the order-preserving bit image of each number (linear, and
//                 well ahead of a comparison sort on millions of elements);
//                 safe_sort for short arrays or when no scratch memory is to
//                 be had. Equal numbers keep no particular order (as with
//                 qsort); NaNs end up at one end or the other.
//   sort_units    fixed-size units (record slices, packed records, typed
//                 records) by a three-way comparison: a sort of pointers to
//                 the units, then one pass that moves the units into place.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace brindle::arrays {

namespace detail {

template <class T, class Less> void insertion_sort(T *a, ptrdiff_t n, Less &less) {
    for (ptrdiff_t i = 1; i < n; ++i) {
        T value = std::move(a[i]);
        ptrdiff_t j = i;
        while (j > 0 && less(value, a[j - 1])) {
            a[j] = std::move(a[j - 1]);
            --j;
        }
        a[j] = std::move(value);
    }
}

template <class T, class Less> void sift_down(T *a, ptrdiff_t root, ptrdiff_t n, Less &less) {
    for (;;) {
        ptrdiff_t child = 2 * root + 1;
        if (child >= n)
            return;
        if (child + 1 < n && less(a[child], a[child + 1]))
            ++child;
        if (!less(a[root], a[child]))
            return;
        std::swap(a[root], a[child]);
        root = child;
    }
}

template <class T, class Less> void heap_sort(T *a, ptrdiff_t n, Less &less) {
    for (ptrdiff_t i = n / 2; i-- > 0;)
        sift_down(a, i, n, less);
    for (ptrdiff_t end = n - 1; end > 0; --end) {
        std::swap(a[0], a[end]);
        sift_down(a, 0, end, less);
    }
}

// Puts the median of a[x], a[y], a[z] (by `less`) into a[x].
template <class T, class Less> void median_to_front(T *a, ptrdiff_t x, ptrdiff_t y, ptrdiff_t z, Less &less) {
    if (less(a[y], a[x]))
        std::swap(a[x], a[y]);
    if (less(a[z], a[y])) {
        std::swap(a[y], a[z]);
        if (less(a[y], a[x]))
            std::swap(a[x], a[y]);
    }
    std::swap(a[x], a[y]);
}

template <class T, class Less> void intro_sort(T *a, ptrdiff_t n, Less &less, int depth) {
    while (n > 16) {
        if (depth-- == 0) {
            heap_sort(a, n, less);
            return;
        }
        median_to_front(a, 1, n / 2, n - 1, less);
        std::swap(a[0], a[1]);
        const T pivot = a[0];
        // Hoare partition of a[1..n-1]; both scans stop at the other's
        // position, so no comparison can walk them out of the range.
        ptrdiff_t i = 1, j = n - 1;
        for (;;) {
            while (i <= j && less(a[i], pivot))
                ++i;
            while (j >= i && less(pivot, a[j]))
                --j;
            if (i >= j)
                break;
            std::swap(a[i], a[j]);
            ++i;
            --j;
        }
        // 0 <= j <= n - 1: the pivot goes to j and is excluded from both
        // sides, so each side is shorter than n.
        std::swap(a[0], a[j]);
        const ptrdiff_t left = j, right = n - j - 1;
        if (left < right) {
            intro_sort(a, left, less, depth);
            a += j + 1;
            n = right;
        } else {
            intro_sort(a + j + 1, right, less, depth);
            n = left;
        }
    }
    insertion_sort(a, n, less);
}

// Least-significant-digit radix sort on an unsigned image of each element,
// 8 bits a pass; passes in which every element has the same digit are
// skipped. False (nothing changed) when no scratch memory is to be had.
template <class U, class T, class Image> bool radix_sort(T *a, size_t n, Image image) {
    constexpr unsigned kPasses = sizeof(U);
    std::unique_ptr<T[]> scratch(new (std::nothrow) T[n]);
    std::unique_ptr<size_t[]> counts(new (std::nothrow) size_t[kPasses * 256]());
    if (!scratch || !counts)
        return false;
    for (size_t i = 0; i < n; ++i) {
        const U key = image(a[i]);
        for (unsigned p = 0; p < kPasses; ++p)
            ++counts[p * 256 + ((key >> (8 * p)) & 0xFF)];
    }
    T *from = a, *to = scratch.get();
    for (unsigned p = 0; p < kPasses; ++p) {
        size_t *count = &counts[p * 256];
        if (count[(image(from[0]) >> (8 * p)) & 0xFF] == n)
            continue; // one digit for all: this pass would change nothing
        size_t sum = 0;
        for (unsigned d = 0; d < 256; ++d)
            sum += std::exchange(count[d], sum);
        for (size_t i = 0; i < n; ++i)
            to[count[(image(from[i]) >> (8 * p)) & 0xFF]++] = from[i];
        std::swap(from, to);
    }
    if (from != a)
        std::copy(from, from + n, a);
    return true;
}

inline uint16_t radix_image(int16_t v) { return static_cast<uint16_t>(static_cast<uint16_t>(v) ^ 0x8000u); }
inline uint32_t radix_image(int32_t v) { return static_cast<uint32_t>(v) ^ 0x80000000u; }
// Floating point: negative numbers have all bits inverted, positive ones the
// sign bit set, so that the unsigned images order as the numbers do.
inline uint32_t radix_image(float v) {
    const uint32_t bits = std::bit_cast<uint32_t>(v);
    return (bits & 0x80000000u) ? ~bits : bits | 0x80000000u;
}
inline uint64_t radix_image(double v) {
    const uint64_t bits = std::bit_cast<uint64_t>(v);
    return (bits & 0x8000000000000000u) ? ~bits : bits | 0x8000000000000000u;
}

} // namespace detail

// Sorts a[0..n) by `less` (a "less than" predicate); safe for any predicate.
template <class T, class Less> void safe_sort(T *a, size_t n, Less less) {
    if (a == nullptr || n < 2)
        return;
    int depth = 0;
    for (size_t m = n; m > 1; m >>= 1)
        depth += 2;
    detail::intro_sort(a, static_cast<ptrdiff_t>(n), less, depth);
}

// Ascending or descending sort of numbers (int16_t, int32_t, float, double).
template <class T> void sort_numbers(T *a, size_t n, bool descending) {
    if (a == nullptr || n < 2)
        return;
    using Image = decltype(detail::radix_image(T{}));
    if (n < 256 || !detail::radix_sort<Image>(a, n, [](T v) { return detail::radix_image(v); })) {
        if (descending) {
            safe_sort(a, n, [](T x, T y) { return y < x; });
            return;
        }
        safe_sort(a, n, [](T x, T y) { return x < y; });
        return;
    }
    if (descending)
        std::reverse(a, a + n);
}

// The order of `count` units of `unit` bytes each at `base` by `compare`, a
// three-way comparison (negative, zero, positive) of two units' addresses:
// pointers to the units, sorted; the units themselves are not moved.
template <class Compare>
std::vector<const unsigned char *> unit_order(unsigned char *base, size_t count, size_t unit, Compare compare) {
    std::vector<const unsigned char *> order(count);
    for (size_t i = 0; i < count; ++i)
        order[i] = base + i * unit;
    safe_sort(order.data(), count,
              [&](const unsigned char *x, const unsigned char *y) { return compare(x, y) < 0; });
    return order;
}

// Moves the units into the order unit_order gave.
inline void gather_units(unsigned char *base, size_t unit, const std::vector<const unsigned char *> &order) {
    std::vector<unsigned char> sorted(order.size() * unit);
    for (size_t i = 0; i < order.size(); ++i)
        std::memcpy(sorted.data() + i * unit, order[i], unit);
    if (!sorted.empty())
        std::memcpy(base, sorted.data(), sorted.size());
}

// Sorts the units in place: a sort of pointers, then one pass that moves the
// units. Throws std::bad_alloc when there is no memory for the pointers and
// the copy (the units are then as they were).
template <class Compare> void sort_units(unsigned char *base, size_t count, size_t unit, Compare compare) {
    if (base == nullptr || count < 2 || unit == 0)
        return;
    gather_units(base, unit, unit_order(base, count, unit, compare));
}

} // namespace brindle::arrays
