#include "stores/array_file.h"

#include "common/ascii.h"
#include "files/path_names.h"
#include "frame/records.h"
#include "platform/clock.h"
#include "stores/element_type.h"
#include "stores/store_codes.h"
#include "stores/store_records.h"

#include <algorithm>
#include <new>

namespace brindle::stores {

int16_t store_file_name(const char *field, std::string &name) {
    name = frame::field_name(field, kNameWidth);
    if (name.empty())
        return kEmptyName;
    return files::filename_validity(name) == files::kNameValid ? kStoreOk : kBadName;
}

int16_t remove_old_file(std::string_view name) {
    if (!platform::file_exists(name))
        return kStoreOk;
    const auto holds = [&](const frame::HandleObject &object) {
        return platform::same_file(static_cast<const ArrayFile &>(object).name, name);
    };
    if (frame::handle_any(frame::HandleKind::DiskArray, holds) || frame::handle_any(frame::HandleKind::MultiArray, holds))
        return kCannotDelete;
    return platform::delete_if_exists(name) ? kStoreOk : kCannotDelete;
}

int16_t make_fill_block(uint8_t fill, std::vector<uint8_t> &block) {
    try {
        block.assign(kFillBlock, fill);
    } catch (const std::bad_alloc &) {
        return kNoBuffer;
    }
    return kStoreOk;
}

int16_t fill_run(platform::File &file, int64_t offset, int64_t length, const std::vector<uint8_t> &block,
                 bool element) {
    while (length > 0) {
        const int64_t n = std::min<int64_t>(length, kFillBlock);
        if (!file.write_at(offset, block.data(), static_cast<size_t>(n)))
            return n == kFillBlock && !element ? kBlockWriteFailed : kLastWriteFailed;
        offset += n;
        length -= n;
    }
    return kStoreOk;
}

int64_t element_position(const ArraySlot &slot, int32_t row, int32_t col, int32_t sheet) noexcept {
    return slot.data_start + element_offset(slot.shape, row, col, sheet);
}

int16_t clear_slot(ArrayFile &array, const ArraySlot &slot, ClearScope scope, int32_t index, int32_t sheet,
                   uint8_t fill) {
    std::vector<uint8_t> block;
    if (const int16_t code = make_fill_block(fill, block); code != kStoreOk)
        return code;
    const bool element = scope == ClearScope::Column;
    const RunFiller filler = [&](const ByteRun &run) {
        return fill_run(array.file, slot.data_start + run.offset, run.length, block, element);
    };
    switch (scope) {
    case ClearScope::Sheet:
        return clear_sheet_runs(slot.shape, sheet, filler);
    case ClearScope::Row:
        return clear_row_runs(slot.shape, index, sheet, filler);
    case ClearScope::Column:
        return clear_column_runs(slot.shape, index, sheet, filler);
    }
    return kStoreOk;
}

bool signature_matches(const char *signature) noexcept {
    return common::equal_no_case(std::string_view(signature, 7), std::string_view(kSignature, 7));
}

} // namespace brindle::stores

namespace brindle::stores {

int32_t milliseconds_since(uint32_t start) noexcept { return static_cast<int32_t>(platform::tick_count() - start); }

int16_t clear_whole_slot(ArrayFile &array, const ArraySlot &slot, uint8_t fill) {
    std::vector<uint8_t> block;
    int16_t code = make_fill_block(fill, block);
    if (code == kStoreOk)
        code = fill_run(array.file, slot.data_start, slot.shape.total_bytes(), block);
    return code;
}

int16_t abandon_file(frame::HandleKind kind, ArrayFile &array, int32_t handle, std::string_view name, int16_t code) {
    frame::handle_remove(kind, handle);
    array.file.close();
    platform::delete_file(name);
    return code;
}

int32_t delete_named_file(const char *field) {
    std::string name;
    const int16_t code = store_file_name(field, name);
    if (code == kEmptyName)
        return 0;
    if (code != kStoreOk)
        return files::filename_validity(name);
    return platform::delete_file(name) ? 0 : -1;
}

StoredElement file_element_get(ArrayFile &array, const ArraySlot &slot, int32_t row, int32_t col, int32_t sheet,
                               AccessReport report) {
    const uint32_t start = platform::tick_count();
    const int64_t offset = element_position(slot, row, col, sheet);
    report.last_offset = static_cast<int32_t>(offset);
    report.last_seek = static_cast<int32_t>(offset);
    StoredElement element{element_kind(slot.var_type),
                          std::vector<uint8_t>(static_cast<size_t>(slot.shape.element_size))};
    if (!array.file.read_at(offset, element.bytes.data(), element.bytes.size()))
        std::fill(element.bytes.begin(), element.bytes.end(), uint8_t{0});
    report.elapsed = milliseconds_since(start);
    return element;
}

void file_element_put(ArrayFile &array, const ArraySlot &slot, int32_t row, int32_t col, int32_t sheet,
                      const ElementMaker &make, AccessReport report) {
    const uint32_t start = platform::tick_count();
    const int64_t offset = element_position(slot, row, col, sheet);
    report.last_offset = static_cast<int32_t>(offset);
    report.last_seek = static_cast<int32_t>(offset);
    std::vector<uint8_t> bytes(static_cast<size_t>(slot.shape.element_size));
    if (make(element_kind(slot.var_type), bytes.data(), bytes.size()))
        (void)array.file.write_at(offset, bytes.data(), bytes.size());
    report.elapsed = milliseconds_since(start);
}

} // namespace brindle::stores
