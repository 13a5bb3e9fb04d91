// Sorts of whole arrays: the numeric sorts (elements of a one-dimensional
// array, record slices of a two-dimensional one) and the sorts of
// fixed-size records packed in one string.
#include "arrays/block_units.h"
#include "arrays/record_text_order.h"
#include "arrays/sort_engine.h"
#include "arrays/typed_sort.h"
#include "frame/frame.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

// Three-way comparison of two slices of `n` elements of T: the first unequal
// pair decides; NaN is unequal to nothing.
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

template <class T> void sort_typed(const BlockUnits &u, bool descending) {
    if (u.elements == 1) {
        sort_numbers(reinterpret_cast<T *>(u.base), u.count, descending);
        return;
    }
    // The comparison carries the slice length itself, so sorts on several
    // threads at once each compare slices of their own array.
    const int sign = descending ? -1 : 1;
    const size_t elements = u.elements;
    sort_units(u.base, u.count, u.bytes, [sign, elements](const unsigned char *x, const unsigned char *y) {
        return sign * compare_slices<T>(x, y, elements);
    });
}

// Sorts `count` records of `size` bytes packed in the caller's string. The
// comparison starts at each record's first byte and, as the family has
// always done, runs on into the records behind it until a difference or a
// zero byte - but never past the string's last byte (long runs of equal
// text are left to RecordTextOrder, which keeps the sort n log n). The descending form
// keeps only differences of adjacent character codes (-1 and +1, reversed)
// and calls every other difference equal.
int16_t sort_string_records(BSTR *buffer, int32_t count, int32_t size, bool descending) {
    const StrArg text = StrArg::by_ref(buffer);
    if (text.empty() || count < 2 || size <= 0 ||
        static_cast<uint64_t>(count) * static_cast<uint64_t>(size) > text.size())
        return 0;
    auto *base = reinterpret_cast<unsigned char *>(text.writable());
    const unsigned char *end = base + text.size();
    const size_t n = static_cast<size_t>(count), unit = static_cast<size_t>(size);
    const auto direction = [descending](int r) {
        if (!descending)
            return r;
        return r == -1 ? 1 : r == 1 ? -1 : 0;
    };
    // Most texts differ within a few bytes of where two records start, and
    // the direct comparison is the quickest. A budget of bytes read, far
    // above what such texts need, catches the long equal runs; the sort then
    // starts over with the comparison answered by RecordTextOrder. The budget
    // is at least what building RecordTextOrder costs (the text's length once
    // per level of it), so a few records heading a long text are compared
    // directly, however far their comparisons run.
    size_t log2n = 1;
    while ((size_t{1} << log2n) < n)
        ++log2n;
    size_t levels = 1;
    while ((size_t{1} << levels) < text.size() / unit + 1)
        ++levels;
    const double allowance =
        std::max(2.0 * (static_cast<double>(n) * static_cast<double>(log2n) + 64) * (static_cast<double>(unit) + 8),
                 static_cast<double>(text.size()) * static_cast<double>(levels + 1));
    size_t budget = allowance < static_cast<double>(SIZE_MAX / 2) ? static_cast<size_t>(allowance) : SIZE_MAX / 2;
    auto order = unit_order(base, n, unit, [&](const unsigned char *x, const unsigned char *y) {
        return direction(compare_text_nocase(x, y, end, &budget));
    });
    if (budget == 0) {
        const RecordTextOrder text_order(base, unit, text.size());
        order = unit_order(base, n, unit, [&](const unsigned char *x, const unsigned char *y) {
            return direction(text_order.compare(static_cast<size_t>(x - base) / unit, static_cast<size_t>(y - base) / unit));
        });
    }
    gather_units(base, unit, order);
    return -1;
}

// cSortTypedArray: the record count is the 16-bit Count of the array's
// parameters, so fewer than 2 records - and counts past 32767, which wrap
// negative - sort nothing and give 0.
int16_t sort_typed_array(SAFEARRAY **array, TypedSortDescriptor *descriptor) {
    const ArrayParameters prm = read_array_parameters(array);
    if (descriptor == nullptr || prm.Count < 2)
        return 0;
    const ArrayBlock block(array);
    if (!block.ok())
        return 0;
    // A local copy of the keys: nothing of a sort outlives the call, so two
    // sorts at once do not meet.
    const size_t size = block.element_size();
    TypedSortDescriptor keys;
    std::memcpy(&keys, descriptor, sizeof keys);
    descriptor->RecordSize = static_cast<int32_t>(size);
    size_t count = static_cast<size_t>(prm.Count);
    if (size == 0 || block.bytes() / size < count)
        count = size == 0 ? 0 : block.bytes() / size;
    typed_sort(static_cast<unsigned char *>(block.data()), count, size, keys);
    return -1;
}

int16_t sort_numeric(SAFEARRAY **array, int16_t code, bool descending) {
    const ArrayBlock block(array);
    if (!block.ok())
        return 0;
    sort_block(block, code, descending);
    return -1;
}

} // namespace

bool sort_block(const ArrayBlock &block, int16_t code, bool descending) {
    const auto width = element_width(code);
    if (!width || code == static_cast<int16_t>(ElementType::Byte) || block.holds_references())
        return false;
    const BlockUnits u = block_units(block, *width);
    switch (static_cast<ElementType>(code)) {
    case ElementType::Integer:
        sort_typed<int16_t>(u, descending);
        break;
    case ElementType::Long:
        sort_typed<int32_t>(u, descending);
        break;
    case ElementType::Single:
        sort_typed<float>(u, descending);
        break;
    case ElementType::Double:
        sort_typed<double>(u, descending);
        break;
    default:
        return false;
    }
    return true;
}

} // namespace brindle::arrays

using brindle::arrays::sort_numeric;
using brindle::arrays::sort_string_records;
using brindle::arrays::sort_typed_array;

BRINDLE_EXPORT(int16_t) cSortI(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 2, false); }); }
BRINDLE_EXPORT(int16_t) cSortL(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 3, false); }); }
BRINDLE_EXPORT(int16_t) cSortS(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 4, false); }); }
BRINDLE_EXPORT(int16_t) cSortD(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 5, false); }); }
BRINDLE_EXPORT(int16_t) cReverseSortI(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 2, true); }); }
BRINDLE_EXPORT(int16_t) cReverseSortL(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 3, true); }); }
BRINDLE_EXPORT(int16_t) cReverseSortS(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 4, true); }); }
BRINDLE_EXPORT(int16_t) cReverseSortD(SAFEARRAY **Arr) { return guarded<int16_t>(0, [&] { return sort_numeric(Arr, 5, true); }); }

BRINDLE_EXPORT(int16_t) cSortStr(BSTR *Txt, int32_t Count, int32_t RecordSize) {
    return guarded<int16_t>(0, [&] { return sort_string_records(Txt, Count, RecordSize, false); });
}
BRINDLE_EXPORT(int16_t) cReverseSortStr(BSTR *Txt, int32_t Count, int32_t RecordSize) {
    return guarded<int16_t>(0, [&] { return sort_string_records(Txt, Count, RecordSize, true); });
}

BRINDLE_EXPORT(int16_t) cSortTypedArray(SAFEARRAY **Arr, TypedSortDescriptor *Descriptor) {
    return guarded<int16_t>(0, [&] { return sort_typed_array(Arr, Descriptor); });
}
