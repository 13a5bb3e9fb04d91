#include "stores/disk_array.h"

#include "platform/clock.h"
#include "stores/element_type.h"
#include "stores/store_codes.h"

#include <climits>
#include <cstring>
#include <memory>

namespace brindle::stores {

namespace {

using frame::HandleKind;

// The open file of a record, or null.
std::shared_ptr<ArrayFile> open_file(const DiskArrayRecord &record) {
    return frame::handle_get<ArrayFile>(HandleKind::DiskArray, record.Handle);
}

AccessReport report_of(DiskArrayRecord &record) { return {record.LastOffset, record.LastSeek, record.Elapsed}; }

int16_t dimension_code(int32_t rows, int32_t cols, int32_t sheets) noexcept {
    if (rows < 1)
        return kBadRows;
    if (cols < 1)
        return kBadCols;
    return sheets < 1 ? kBadSheets : kStoreOk;
}

} // namespace

int16_t disk_array_create(DiskArrayRecord &record) {
    const uint32_t start = platform::tick_count();
    record.Elapsed = static_cast<int32_t>(start);
    std::string name;
    if (const int16_t code = store_file_name(record.FileName, name); code != kStoreOk)
        return code;
    record.HeaderSize = kDiskArrayHeaderSize;
    record.Handle = -1;
    record.ElementSize = record.FileSize = record.FullBlocks = record.LastBlock = 0;
    if (const int16_t code = remove_old_file(name); code != kStoreOk)
        return code;
    if (const int16_t code = dimension_code(record.Rows, record.Cols, record.Sheets); code != kStoreOk)
        return code;
    const int32_t size = element_size(record.VarType);
    if (size == 0)
        return kBadType;
    const ArrayShape shape{record.Rows, record.Cols, record.Sheets, size};
    // Offsets are 32-bit in the record and the header: a file that would
    // reach 2 GB cannot be described, so it is not made.
    const int64_t data = shape.total_bytes();
    if (data > INT32_MAX - kDiskArrayHeaderSize)
        return kCannotOpen;

    auto array = std::make_shared<ArrayFile>();
    array->name = name;
    array->file = platform::File::open(name, platform::OpenMode::CreateReadWrite);
    if (!array->file.is_open())
        return kCannotOpen;
    array->slots.push_back(ArraySlot{record.VarType, shape, kDiskArrayHeaderSize});
    std::vector<uint8_t> block;
    if (const int16_t code = make_fill_block(fill_byte(record.VarType, record.NoSpaces), block); code != kStoreOk)
        return code;
    const int32_t handle = frame::handle_add(HandleKind::DiskArray, array);
    if (handle == 0)
        return abandon_file(HandleKind::DiskArray, *array, 0, name, kCannotOpen);

    record.SheetElements = record.Rows * record.Cols;
    record.FullBlocks = static_cast<int32_t>(data / kFillBlock);
    record.LastBlock = static_cast<int32_t>(data % kFillBlock);
    std::memcpy(record.Signature, kSignature, sizeof record.Signature);
    record.FileSize = static_cast<int32_t>(data) + kDiskArrayHeaderSize;
    record.Handle = handle;
    record.ElementSize = size;
    if (!array->file.write_at(0, &record, sizeof record))
        return abandon_file(HandleKind::DiskArray, *array, handle, name, kHeaderWriteFailed);
    if (const int16_t code = fill_run(array->file, kDiskArrayHeaderSize, data, block); code != kStoreOk)
        return abandon_file(HandleKind::DiskArray, *array, handle, name, code);
    record.Elapsed = milliseconds_since(start);
    return kStoreOk;
}

int16_t disk_array_open(DiskArrayRecord &record) {
    const uint32_t start = platform::tick_count();
    record.Elapsed = static_cast<int32_t>(start);
    std::string name;
    if (const int16_t code = store_file_name(record.FileName, name); code != kStoreOk)
        return code;
    if (!platform::file_exists(name))
        return kNoSuchFile;
    auto array = std::make_shared<ArrayFile>();
    array->name = name;
    array->file = platform::File::open(name, platform::OpenMode::ReadWrite);
    if (!array->file.is_open())
        return kCannotOpen;
    DiskArrayRecord header;
    if (!array->file.read_at(0, &header, sizeof header))
        return kHeaderReadFailed;
    record = header;
    if (record.HeaderSize != kDiskArrayHeaderSize)
        return kBadHeaderSize;
    if (!signature_matches(record.Signature))
        return kBadSignature;
    if (const int16_t code = dimension_code(record.Rows, record.Cols, record.Sheets); code != kStoreOk)
        return code;
    const int32_t size = element_size(record.VarType);
    if (size == 0 || size != record.ElementSize)
        return kBadType;
    const ArrayShape shape{record.Rows, record.Cols, record.Sheets, size};
    // Dimensions whose product overflows 32 bits describe no file that can
    // exist: their size matches nothing.
    const int64_t data = shape.total_bytes();
    if (data > INT32_MAX - kDiskArrayHeaderSize)
        return kBadFileSize;
    const int64_t expected = data + kDiskArrayHeaderSize;
    if (record.FileSize != expected || array->file.size() != expected)
        return kBadFileSize;
    record.SheetElements = record.Rows * record.Cols;
    array->slots.push_back(ArraySlot{record.VarType, shape, kDiskArrayHeaderSize});
    const int32_t handle = frame::handle_add(HandleKind::DiskArray, array);
    if (handle == 0)
        return kCannotOpen;
    record.Handle = handle;
    record.Elapsed = milliseconds_since(start);
    return kStoreOk;
}

int32_t disk_array_close(DiskArrayRecord &record, bool remove) {
    if (record.Handle != -1)
        frame::handle_remove(HandleKind::DiskArray, record.Handle); // the file closes with its last user
    return remove ? delete_named_file(record.FileName) : 0;
}

std::optional<StoredElement> disk_array_get(DiskArrayRecord &record, int32_t row, int32_t col, int32_t sheet) {
    const std::shared_ptr<ArrayFile> array = open_file(record);
    if (!array)
        return std::nullopt;
    return file_element_get(*array, array->slots[0], row, col, sheet, report_of(record));
}

void disk_array_put(DiskArrayRecord &record, int32_t row, int32_t col, int32_t sheet, const ElementMaker &make) {
    if (const std::shared_ptr<ArrayFile> array = open_file(record))
        file_element_put(*array, array->slots[0], row, col, sheet, make, report_of(record));
}

namespace {

// A clear that failed closes the file, as a failed write does everywhere in
// the family.
int16_t after_clear(DiskArrayRecord &record, uint32_t start, int16_t code) {
    if (code != kStoreOk)
        frame::handle_remove(HandleKind::DiskArray, record.Handle);
    record.Elapsed = milliseconds_since(start);
    return code;
}

} // namespace

int16_t disk_array_clear(DiskArrayRecord &record) {
    const uint32_t start = platform::tick_count();
    const std::shared_ptr<ArrayFile> array = open_file(record);
    if (!array)
        return kNotOpen;
    const ArraySlot &slot = array->slots[0];
    record.LastOffset = kDiskArrayHeaderSize;
    return after_clear(record, start, clear_whole_slot(*array, slot, fill_byte(slot.var_type, record.NoSpaces)));
}

int16_t disk_array_clear_part(DiskArrayRecord &record, ClearScope scope, int32_t index, int32_t sheet) {
    const uint32_t start = platform::tick_count();
    const std::shared_ptr<ArrayFile> array = open_file(record);
    if (!array)
        return kNotOpen;
    const ArraySlot &slot = array->slots[0];
    const int16_t code = clear_slot(*array, slot, scope, index, sheet, fill_byte(slot.var_type, record.NoSpaces));
    return after_clear(record, start, code);
}

} // namespace brindle::stores
