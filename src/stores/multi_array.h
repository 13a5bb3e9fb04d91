// Multi-array files: up to twenty disk arrays, each with its own type and
// dimensions, behind one 748-byte header that is the client's record. Array
// numbers run from 1 to 20 (slot 0 to 19 of the record). Status codes are
// those of store_codes.h; the rest is as for disk arrays (disk_array.h).
#pragma once

#include "stores/array_file.h"
#include "stores/store_records.h"

#include <optional>

namespace brindle::stores {

// Creates the file with every slot whose VarType is not 0, in slot order,
// each data area filled (blanks for text, zero bytes otherwise).
int16_t multi_array_create(MultiArrayRecord &record);
int16_t multi_array_open(MultiArrayRecord &record);
// As disk_array_close, and Handle becomes -1.
int32_t multi_array_close(MultiArrayRecord &record, bool remove);

std::optional<StoredElement> multi_array_get(int32_t number, MultiArrayRecord &record, int32_t row, int32_t col,
                                             int32_t sheet);
void multi_array_put(int32_t number, MultiArrayRecord &record, int32_t row, int32_t col, int32_t sheet,
                     const ElementMaker &make);

int16_t multi_array_clear(int32_t number, MultiArrayRecord &record);
int16_t multi_array_clear_part(int32_t number, MultiArrayRecord &record, ClearScope scope, int32_t index,
                               int32_t sheet);

} // namespace brindle::stores
