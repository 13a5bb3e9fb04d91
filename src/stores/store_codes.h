// The status codes of the disk-array and multi-array exports (VB Integers).
// Huge memory arrays have codes of their own (memory_array.h).
#pragma once

#include <cstdint>

namespace brindle::stores {

enum StoreCode : int16_t {
    kStoreOk = -1,
    kEmptyName = 1,          // the record's FileName is empty
    kBadName = 2,            // the name fails the file-name syntax check
    kCannotDelete = 3,       // an existing file of that name could not be deleted
    kCannotOpen = 4,         // the file could not be created or opened
    kNoSuchFile = 5,         // opening: the file does not exist
    kBadType = 6,            // VarType 0, an element size that differs, or above 32768 (multi-array)
    kBadRows = 7,
    kBadCols = 8,
    kBadSheets = 9,
    kHeaderWriteFailed = 10, // the file is deleted
    kBlockWriteFailed = 11,  // a full 32768-byte block
    kLastWriteFailed = 12,   // the last partial block, or one element of a column
    kHeaderReadFailed = 13,
    kBadHeaderSize = 14,
    kBadSignature = 15,
    kBadFileSize = 16,       // the header's sizes do not match the file or each other
    kSeekFailed = 17,        // never given: every write says where it goes
    kNotOpen = 18,
    kBadArrayNumber = 21,    // multi-array: an array number outside 1..20
    kNoBuffer = -32760,      // the 32768-byte work buffer could not be allocated
};

} // namespace brindle::stores
