#include "arrays/numeric_sort.h"

#include "arrays/sort_engine.h"

#include <cstring>

namespace brindle::arrays {

namespace {

// Three-way comparison of two slices of `n` elements of T.
template <class T> int compare_slices(const unsigned char *x, const unsigned char *y, size_t n) {
    for (size_t i = 0; i < n; ++i) {
        T a, b;
        std::memcpy(&a, x + i * sizeof(T), sizeof(T));
        std::memcpy(&b, y + i * sizeof(T), sizeof(T));
        if (a < b)
            return -1;
        if (b < a)
            return 1;
    }
    return 0;
}

template <class T> void sort_typed(unsigned char *base, size_t count, size_t elements, bool descending) {
    if (elements == 1) {
        sort_numbers(reinterpret_cast<T *>(base), count, descending);
        return;
    }
    // The comparison carries the slice length itself, so sorts on several
    // threads at once each compare slices of their own array.
    const int sign = descending ? -1 : 1;
    sort_units(base, count, elements * sizeof(T), [sign, elements](const unsigned char *x, const unsigned char *y) {
        return sign * compare_slices<T>(x, y, elements);
    });
}

} // namespace

bool sort_number_units(unsigned char *base, size_t count, size_t elements, int16_t code, bool descending) {
    switch (code) {
    case 2: sort_typed<int16_t>(base, count, elements, descending); return true;
    case 3: sort_typed<int32_t>(base, count, elements, descending); return true;
    case 4: sort_typed<float>(base, count, elements, descending); return true;
    case 5: sort_typed<double>(base, count, elements, descending); return true;
    default: return false;
    }
}

} // namespace brindle::arrays
