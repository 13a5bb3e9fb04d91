// Disk arrays: a three-dimensional array of fixed-size elements in a file
// whose first 200 bytes are the client's record. Every call takes the
// record; the open file lives in the handle table under the record's Handle.
// Status codes are those of store_codes.h.
#pragma once

#include "stores/array_file.h"
#include "stores/store_records.h"

#include <optional>

namespace brindle::stores {

// Creates the file the record names (an old one is deleted) with the
// record's type and dimensions, writes the record as its header and fills
// the data area (blanks for text, zero bytes otherwise); the record is then
// open. A failure after the file was made deletes it again.
int16_t disk_array_create(DiskArrayRecord &record);

// Opens an existing file: its header is read into the record and checked
// against itself and the file's size.
int16_t disk_array_open(DiskArrayRecord &record);

// Closes the file (Handle keeps its now stale number). With `remove` the
// file named by the record is deleted: 0 when it is, -1 when not, 0 for an
// empty name, or the syntax check's code for a bad one. Without it, 0.
int32_t disk_array_close(DiskArrayRecord &record, bool remove);

// One element, indices clamped; nothing when the record is not open.
std::optional<StoredElement> disk_array_get(DiskArrayRecord &record, int32_t row, int32_t col, int32_t sheet);
void disk_array_put(DiskArrayRecord &record, int32_t row, int32_t col, int32_t sheet, const ElementMaker &make);

// Fills the whole data area, or one sheet, or one row or column in one sheet
// or every sheet (-1), with the fill byte NoSpaces chooses now.
int16_t disk_array_clear(DiskArrayRecord &record);
int16_t disk_array_clear_part(DiskArrayRecord &record, ClearScope scope, int32_t index, int32_t sheet);

} // namespace brindle::stores
