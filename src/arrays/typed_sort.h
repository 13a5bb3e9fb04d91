// The multi-key sort of an array of records (cSortTypedArray), as a plain
// engine over a block of records.
//
// Records are sorted by the first key whose order is not 0; each run of
// records that the key calls equal is then sorted by the next key, and so on
// until the next key's order is 0 or all ten keys are used. Equality on a key
// is exact (the key's own comparison answering 0), so the refinement never
// mixes records that an earlier key told apart; records equal on every used
// key keep no particular order.
//
// Key type codes (the field at KeyOffset is read as):
//    1 Integer  2 Byte  3 Integer  4 Long  5 Single  6 Double
//    7 Double (a Currency field read as a Double, deliberately)  8 Double (Date)
//    9 fixed text, case-insensitive   10 fixed text, case-sensitive
//      (KeyLength characters, or up to the zero byte when KeyLength is 0)
//   11 pointer to a wide string, case-insensitive   12 ... case-sensitive
//   13 fixed text holding a number   14 wide string holding a number
//      (both read as the C runtime's strtod does, whatever the locale)
// A negative code names a Variant field converted first: -1 Boolean, -2
// signed byte, -3 Integer, -4 Long, -5 Single, -6 Double, -7 Currency, -8
// Date (numbers), -11 / -12 String (case-insensitive / -sensitive), -14
// String then as 14. A null string pointer is the smallest value. Only a
// Variant holding a value of its own (a number, date, string, Empty or Null)
// is converted; one holding an object, a reference or an array, or whose type
// code names no type, counts as a failed conversion (0, or for the string
// codes the smallest value): the record's pointers are never followed.
// The key code is checked against this list before its field is read.
//
// Codes 0, -9, -10, -13 and anything outside -14..14 compare every pair as
// "less" in the key's direction; so does a key whose field does not fit in
// the record (it is never read). Such keys give an arbitrary order, and the
// sort still stays inside the block and terminates.
#pragma once

#include "arrays/array_records.h"

#include <cstddef>

namespace brindle::arrays {

// Sorts `count` records of `size` bytes at `base` by the keys of `keys`
// (RecordSize and CurrentKey are not read). Throws std::bad_alloc when the
// scratch memory is not to be had, leaving the records as they were.
void typed_sort(unsigned char *base, size_t count, size_t size, const TypedSortDescriptor &keys);

} // namespace brindle::arrays
