// The sorts of fixed-size records packed in one string (cSortStr,
// cReverseSortStr).
#pragma once

#include <cstddef>

namespace brindle::arrays {

// Sorts the first `count` records of `size` bytes at `base`, a text of
// `length` bytes (count * size <= length). The comparison starts at each
// record's first byte and, as the family has always done, runs on into the
// records behind it until a difference or a zero byte, A-Z folded to a-z -
// but never past the text's last byte. The descending form keeps only
// differences of adjacent character codes (-1 and +1, reversed) and calls
// every other difference equal. n log n whatever the text (long runs of
// equal text are answered by RecordTextOrder). Throws std::bad_alloc.
void sort_packed_records(unsigned char *base, size_t count, size_t size, size_t length, bool descending);

} // namespace brindle::arrays
