#include "stores/multi_array.h"

#include "platform/clock.h"
#include "stores/element_type.h"
#include "stores/store_codes.h"

#include <climits>
#include <cstring>
#include <memory>

namespace brindle::stores {

namespace {

using frame::HandleKind;

// One element of a multi-array file is at most one work buffer long.
constexpr int32_t kMaxElement = kFillBlock;

std::shared_ptr<ArrayFile> open_file(const MultiArrayRecord &record) {
    return frame::handle_get<ArrayFile>(HandleKind::MultiArray, record.Handle);
}

AccessReport report_of(MultiArrayRecord &record) { return {record.LastOffset, record.LastSeek, record.Elapsed}; }

// The checks of one used slot, in the order the codes are given.
int16_t slot_code(const MultiArrayRecord &record, int k, int32_t size) noexcept {
    if (record.Rows[k] < 1)
        return kBadRows;
    if (record.Cols[k] < 1)
        return kBadCols;
    if (record.Sheets[k] < 1)
        return kBadSheets;
    return size > kMaxElement ? kBadType : kStoreOk;
}

// The open slot an array number names, or null (a number outside 1..20, or
// a slot not in use).
const ArraySlot *slot_of(const ArrayFile &array, int32_t number) noexcept {
    if (number < 1 || number > kSlots)
        return nullptr;
    const ArraySlot &slot = array.slots[static_cast<size_t>(number - 1)];
    return slot.var_type == 0 ? nullptr : &slot;
}

} // namespace

int16_t multi_array_create(MultiArrayRecord &record) {
    const uint32_t start = platform::tick_count();
    record.Elapsed = static_cast<int32_t>(start);
    std::string name;
    if (const int16_t code = store_file_name(record.FileName, name); code != kStoreOk)
        return code;
    record.Handle = -1;
    if (const int16_t code = remove_old_file(name); code != kStoreOk)
        return code;
    auto array = std::make_shared<ArrayFile>();
    array->name = name;
    array->file = platform::File::open(name, platform::OpenMode::CreateReadWrite);
    if (!array->file.is_open())
        return kCannotOpen;

    // Slots not in use keep their fields as the caller set them. A slot that
    // is refused leaves the new, empty file behind (closed).
    array->slots.resize(kSlots);
    int64_t file_size = kMultiArrayHeaderSize;
    for (int k = 0; k < kSlots; ++k) {
        const int32_t size = element_size(record.VarType[k]);
        if (size < 1)
            continue;
        if (const int16_t code = slot_code(record, k, size); code != kStoreOk)
            return code;
        const ArrayShape shape{record.Rows[k], record.Cols[k], record.Sheets[k], size};
        const int64_t bytes = shape.total_bytes();
        // Offsets are 32-bit in the header: a file that would reach 2 GB
        // cannot be described, so it is not made.
        if (bytes > INT32_MAX - file_size)
            return abandon_file(HandleKind::MultiArray, *array, 0, name, kCannotOpen);
        array->slots[k] = ArraySlot{record.VarType[k], shape, file_size};
        record.ElementSize[k] = size;
        record.SheetElements[k] = record.Rows[k] * record.Cols[k];
        record.DataStart[k] = static_cast<int32_t>(file_size);
        file_size += bytes;
    }
    record.FileSize = static_cast<int32_t>(file_size);
    record.HeaderSize = kMultiArrayHeaderSize;
    std::memcpy(record.Signature, kSignature, sizeof record.Signature);
    const int32_t handle = frame::handle_add(HandleKind::MultiArray, array);
    if (handle == 0)
        return abandon_file(HandleKind::MultiArray, *array, 0, name, kCannotOpen);
    record.Handle = handle;
    if (!array->file.write_at(0, &record, sizeof record))
        return abandon_file(HandleKind::MultiArray, *array, handle, name, kHeaderWriteFailed);

    std::vector<uint8_t> block;
    for (int k = 0; k < kSlots; ++k) {
        const ArraySlot &slot = array->slots[k];
        if (slot.var_type == 0)
            continue;
        if (const int16_t code = make_fill_block(fill_byte(slot.var_type, record.NoSpaces[k]), block); code != kStoreOk)
            return code;
        if (const int16_t code = fill_run(array->file, slot.data_start, slot.shape.total_bytes(), block);
            code != kStoreOk)
            return abandon_file(HandleKind::MultiArray, *array, handle, name, code);
    }
    record.Elapsed = milliseconds_since(start);
    return kStoreOk;
}

int16_t multi_array_open(MultiArrayRecord &record) {
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
    MultiArrayRecord header;
    if (!array->file.read_at(0, &header, sizeof header))
        return kHeaderReadFailed;
    record = header;
    if (record.HeaderSize != kMultiArrayHeaderSize)
        return kBadHeaderSize;
    if (!signature_matches(record.Signature))
        return kBadSignature;

    array->slots.resize(kSlots);
    int64_t file_size = kMultiArrayHeaderSize;
    for (int k = 0; k < kSlots; ++k) {
        const int32_t size = element_size(record.VarType[k]);
        if (size < 1)
            continue;
        if (const int16_t code = slot_code(record, k, size); code != kStoreOk)
            return code;
        if (size != record.ElementSize[k])
            return kBadType;
        const ArrayShape shape{record.Rows[k], record.Cols[k], record.Sheets[k], size};
        const int64_t bytes = shape.total_bytes();
        if (bytes > INT32_MAX - file_size)
            return kBadFileSize;
        record.SheetElements[k] = record.Rows[k] * record.Cols[k];
        array->slots[k] = ArraySlot{record.VarType[k], shape, record.DataStart[k]};
        file_size += bytes;
    }
    const int64_t actual = array->file.size();
    if (record.FileSize != file_size || actual != file_size)
        return kBadFileSize;
    // DataStart is taken from the header as stored; a data area that would
    // reach into the header or past the end of the file is a lying header.
    for (const ArraySlot &slot : array->slots)
        if (slot.var_type != 0 &&
            (slot.data_start < kMultiArrayHeaderSize || slot.data_start > actual - slot.shape.total_bytes()))
            return kBadFileSize;
    const int32_t handle = frame::handle_add(HandleKind::MultiArray, array);
    if (handle == 0)
        return kCannotOpen;
    record.Handle = handle;
    record.Elapsed = milliseconds_since(start);
    return kStoreOk;
}

int32_t multi_array_close(MultiArrayRecord &record, bool remove) {
    if (record.Handle != -1)
        frame::handle_remove(HandleKind::MultiArray, record.Handle);
    record.Handle = -1;
    return remove ? delete_named_file(record.FileName) : 0;
}

std::optional<StoredElement> multi_array_get(int32_t number, MultiArrayRecord &record, int32_t row, int32_t col,
                                             int32_t sheet) {
    const std::shared_ptr<ArrayFile> array = open_file(record);
    const ArraySlot *slot = array ? slot_of(*array, number) : nullptr;
    if (!slot)
        return std::nullopt;
    return file_element_get(*array, *slot, row, col, sheet, report_of(record));
}

void multi_array_put(int32_t number, MultiArrayRecord &record, int32_t row, int32_t col, int32_t sheet,
                     const ElementMaker &make) {
    const std::shared_ptr<ArrayFile> array = open_file(record);
    if (const ArraySlot *slot = array ? slot_of(*array, number) : nullptr)
        file_element_put(*array, *slot, row, col, sheet, make, report_of(record));
}

namespace {

int16_t after_clear(MultiArrayRecord &record, uint32_t start, int16_t code) {
    if (code != kStoreOk)
        frame::handle_remove(HandleKind::MultiArray, record.Handle);
    record.Elapsed = milliseconds_since(start);
    return code;
}

} // namespace

int16_t multi_array_clear(int32_t number, MultiArrayRecord &record) {
    const uint32_t start = platform::tick_count();
    if (number < 1 || number > kSlots)
        return kBadArrayNumber;
    const std::shared_ptr<ArrayFile> array = open_file(record);
    if (!array)
        return kNotOpen;
    const ArraySlot *slot = slot_of(*array, number);
    if (!slot)
        return kStoreOk; // a slot not in use has nothing to fill
    record.LastOffset = static_cast<int32_t>(slot->data_start);
    return after_clear(record, start,
                       clear_whole_slot(*array, *slot, fill_byte(slot->var_type, record.NoSpaces[number - 1])));
}

int16_t multi_array_clear_part(int32_t number, MultiArrayRecord &record, ClearScope scope, int32_t index,
                               int32_t sheet) {
    const uint32_t start = platform::tick_count();
    if (number < 1 || number > kSlots)
        return kBadArrayNumber;
    const std::shared_ptr<ArrayFile> array = open_file(record);
    if (!array)
        return kNotOpen;
    const ArraySlot *slot = slot_of(*array, number);
    if (!slot)
        return kStoreOk;
    const int16_t code =
        clear_slot(*array, *slot, scope, index, sheet, fill_byte(slot->var_type, record.NoSpaces[number - 1]));
    return after_clear(record, start, code);
}

} // namespace brindle::stores
