// Huge memory arrays: the in-memory twin of the disk array, one zero-
// initialised block held in the handle table under the record's Handle.
// Element order, clamping and conversion are the disk array's.
#pragma once

#include "stores/array_file.h"
#include "stores/store_records.h"

#include <optional>

namespace brindle::stores {

enum HugeArrayCode : int16_t {
    kHugeOk = -1,
    kHugeNoMemory = 1, // the block could not be allocated
    kHugeBadType = 2,  // VarType 0
    kHugeBadRows = 3,
    kHugeBadCols = 4,
    kHugeBadSheets = 5,
    kHugeNoBlock = 6,  // clearing without a block
};

// The block size 2147483647 of GigaBlocks and GigaRest.
inline constexpr int32_t kGigaBlock = 2147483647;

// Allocates the block for the record's type and dimensions (blanks for text
// given by a positive code with NoSpaces 0, zero bytes otherwise). A block
// the record already held is not freed: the record is simply overwritten.
int16_t huge_array_create(HugeArrayRecord &record);

// Frees the block: -1, or 0 when the record holds none (Handle 0, or a
// number that names no open block). Handle keeps its stale number.
int16_t huge_array_free(HugeArrayRecord &record);

std::optional<StoredElement> huge_array_get(HugeArrayRecord &record, int32_t row, int32_t col, int32_t sheet);
void huge_array_put(HugeArrayRecord &record, int32_t row, int32_t col, int32_t sheet, const ElementMaker &make);

int16_t huge_array_clear(HugeArrayRecord &record);
int16_t huge_array_clear_part(HugeArrayRecord &record, ClearScope scope, int32_t index, int32_t sheet);

} // namespace brindle::stores
