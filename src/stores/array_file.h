// An open disk-array or multi-array file: the file and the shape of each of
// its arrays as they were when the file was created or opened, held in the
// handle table for as long as the file is open.
//
// The shape is the file's, not the record's: a client that changes Rows,
// ElementSize or DataStart in its record after creating the file still
// reads and writes inside the file's data areas, never past them.
#pragma once

#include "frame/handles.h"
#include "frame/variants.h"
#include "platform/file.h"
#include "stores/array_shape.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::stores {

// The size of the blocks in which files are filled.
inline constexpr int32_t kFillBlock = 32768;

struct ArraySlot {
    int16_t var_type = 0; // 0: a slot not in use
    ArrayShape shape;
    int64_t data_start = 0; // file offset of the first element
};

class ArrayFile : public frame::HandleObject {
  public:
    std::string name; // as the record gave it
    platform::File file;
    std::vector<ArraySlot> slots; // one for a disk array, twenty for a multi-array file
};

// The name in a record's 128-byte FileName field and its check: kStoreOk with
// the name, or kEmptyName / kBadName.
int16_t store_file_name(const char *field, std::string &name);

// Deletes an existing file of that name; kCannotDelete when it stays. A file
// that a disk array or multi-array file of this process holds open stays, as
// Windows keeps a file open without shared deletion: a record created again
// over its own open file gets 3 on every system.
int16_t remove_old_file(std::string_view name);

// The work buffer of creating and clearing: kFillBlock bytes of `fill`, or
// kNoBuffer when there is no memory for it.
int16_t make_fill_block(uint8_t fill, std::vector<uint8_t> &block);

// Writes `length` bytes from `block` (kFillBlock bytes) at `offset` in
// blocks of 32768 bytes and a remainder: kStoreOk, kBlockWriteFailed when a
// full block fails, or kLastWriteFailed when the remainder fails (or any part
// of a run that `element` marks as one element of a column).
int16_t fill_run(platform::File &file, int64_t offset, int64_t length, const std::vector<uint8_t> &block,
                 bool element = false);

// The element (row, col, sheet) of a slot, indices clamped: its file offset.
int64_t element_position(const ArraySlot &slot, int32_t row, int32_t col, int32_t sheet) noexcept;

// The clears of a slot (sheet -1: every sheet), with the codes of fill_run.
enum class ClearScope { Sheet, Row, Column };
int16_t clear_slot(ArrayFile &array, const ArraySlot &slot, ClearScope scope, int32_t index, int32_t sheet,
                   uint8_t fill);

// Fills a slot's whole data area with `fill` (codes of fill_run).
int16_t clear_whole_slot(ArrayFile &array, const ArraySlot &slot, uint8_t fill);

// Takes a file whose creation failed half way out of the table (`handle`
// 0: never registered), closes it and deletes it; gives `code`.
int16_t abandon_file(frame::HandleKind kind, ArrayFile &array, int32_t handle, std::string_view name, int16_t code);

// The end of closing with deletion: the file the record's FileName names is
// deleted: 0 when it is (or the name is empty), -1 when not, or the syntax
// check's code for a bad name.
int32_t delete_named_file(const char *field);

// Milliseconds since a tick-count reading, for the records' Elapsed field.
int32_t milliseconds_since(uint32_t start) noexcept;

// The case-free comparison of a header's 7-character signature.
bool signature_matches(const char *signature) noexcept;

} // namespace brindle::stores

namespace brindle::stores {

// An element read from a store: its type and its bytes.
struct StoredElement {
    frame::ElementKind kind;
    std::vector<uint8_t> bytes;
};

// Makes the bytes an element receives: called with the element's type and
// its `size` bytes to fill; false leaves the element as it was.
using ElementMaker = std::function<bool(frame::ElementKind kind, uint8_t *out, size_t size)>;

// The fields of a record that every access of a file array reports into.
struct AccessReport {
    int32_t &last_offset;
    int32_t &last_seek;
    int32_t &elapsed;
};

// One element of a slot of an open file (indices clamped), read or written
// with one positioned transfer; the report gets the offset and the time
// taken. A read that fails gives zero bytes; a write that fails is not
// reported (the record's families say so).
StoredElement file_element_get(ArrayFile &array, const ArraySlot &slot, int32_t row, int32_t col, int32_t sheet,
                               AccessReport report);
void file_element_put(ArrayFile &array, const ArraySlot &slot, int32_t row, int32_t col, int32_t sheet,
                      const ElementMaker &make, AccessReport report);

} // namespace brindle::stores
