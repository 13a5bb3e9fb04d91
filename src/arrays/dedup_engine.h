// Removal of duplicates from `count` sorted units of `unit` bytes at `base`:
// one unit of each run of byte-identical adjacent units is kept, moved to
// the front, and the number kept is returned.
#pragma once

#include "platform/file.h"

#include <cstddef>
#include <cstdint>

namespace brindle::arrays {

// In place: the first unit of each run stays.
size_t dedup_in_place(unsigned char *base, size_t count, size_t unit);

// Through `file`, open for reading and writing and empty: the last unit of
// each run is written to it in buffered pieces, then all are read back from
// its start to the front of the block. On failure *error (0 on entry) is -2
// for a short write, -4 when the file cannot be read from its start, -5 for
// a short read, and the result is 0 (the block may be partly overwritten
// only in the last case).
size_t dedup_through_file(unsigned char *base, size_t count, size_t unit, platform::File &file, int32_t *error);

} // namespace brindle::arrays
