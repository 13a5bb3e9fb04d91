// The records of a file sorted into a new file, in memory: text lines, or
// fixed-length records, by the whole record or by a key inside it.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

enum FileSortCode : int32_t {
    kSortNoSource = -1,
    kSortNoTarget = -2,
    kSortBadKeyStart = -3, // fixed-length records with a negative key start
    kSortKeyBeyondRecord = -6,
    kSortSameFile = -7,
    kSortSourceNotOpened = -8,
    kSortTargetNotCreated = -9,
    kSortNoBuffer = -10,
    kSortReadError = -12,
    kSortShortRead = -13, // the file shrank while it was read
    kSortTableTooLarge = -14,
    kSortTableCannotGrow = -15,
    kSortWriteError = -16,
};

struct FileSortRequest {
    int16_t order = 1;          // 2, 6 descending; 9 ascending, 10 descending without case; else ascending
    int32_t record_length = 0;  // below 1: text lines
    int32_t key_start = -1;     // byte offset in the record; negative: the whole record
    int32_t key_length = 0;     // below 1: to the end of the record
};

// Sorts `source` into `target` (not stable). *stage follows the work: -1
// arguments accepted, -2 buffers had, -3 file read, -4 sorted, then the
// number of records written. Lines are read in text mode in pieces of at
// most 16,383 bytes (a zero byte ends a piece's text) and written in text
// mode, each ending in a line feed. Records compare as strings (a zero byte
// ends them), keys as strings of at most the key length; a key that starts
// past a line's end is empty. 0 or a FileSortCode; the target is deleted on
// failure.
int32_t sort_file(std::string_view source, std::string_view target, const FileSortRequest &request, int32_t *stage);

} // namespace brindle::files
