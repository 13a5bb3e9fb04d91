// Sorts of whole arrays: the numeric sorts (elements of a one-dimensional
// array, record slices of a two-dimensional one) and the sorts of
// fixed-size records packed in one string.
#include "arrays/block_units.h"
#include "arrays/numeric_sort.h"
#include "arrays/packed_record_sort.h"
#include "arrays/typed_sort.h"
#include "frame/frame.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

// The records packed in the caller's string; nothing sorted (0) for an
// empty string, fewer than two records or records past its end.
int16_t sort_string_records(BSTR *buffer, int32_t count, int32_t size, bool descending) {
    const StrArg text = StrArg::by_ref(buffer);
    if (text.empty() || count < 2 || size <= 0 ||
        static_cast<uint64_t>(count) * static_cast<uint64_t>(size) > text.size())
        return 0;
    sort_packed_records(reinterpret_cast<unsigned char *>(text.writable()), static_cast<size_t>(count),
                        static_cast<size_t>(size), text.size(), descending);
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
    return sort_number_units(u.base, u.count, u.elements, code, descending);
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
