// The numeric sorts of cSortI .. cReverseSortD on plain memory: `count`
// units of `elements` numbers each (single elements of a one-dimensional
// array, or the record slices of a two-dimensional one).
#pragma once

#include <cstddef>
#include <cstdint>

namespace brindle::arrays {

// Sorts the units by their numbers of the type code (2 Integer, 3 Long,
// 4 Single, 5 Double), ascending or descending; units of several numbers
// compare element by element from the first, the first unequal pair
// deciding (a NaN is unequal to nothing). False, and nothing moved, for any
// other code. Throws std::bad_alloc.
bool sort_number_units(unsigned char *base, size_t count, size_t elements, int16_t code, bool descending);

} // namespace brindle::arrays
