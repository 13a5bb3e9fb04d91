#include "stores/memory_array.h"

#include "stores/element_type.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace brindle::stores {

namespace {

using frame::HandleKind;

// The block and its shape as they were allocated: a record whose fields the
// client changes afterwards still reads and writes inside the block.
class MemoryBlock : public frame::HandleObject {
  public:
    ~MemoryBlock() override { std::free(bytes); }
    uint8_t *bytes = nullptr;
    int16_t var_type = 0;
    ArrayShape shape;
};

std::shared_ptr<MemoryBlock> block_of(const HugeArrayRecord &record) {
    return record.Handle == 0 ? nullptr : frame::handle_get<MemoryBlock>(HandleKind::HugeArray, record.Handle);
}

} // namespace

int16_t huge_array_create(HugeArrayRecord &record) {
    record.RecordSize = kHugeArrayRecordSize;
    record.Handle = record.ElementSize = record.TotalSize = record.GigaBlocks = record.GigaRest = 0;
    if (record.Rows < 1)
        return kHugeBadRows;
    if (record.Cols < 1)
        return kHugeBadCols;
    if (record.Sheets < 1)
        return kHugeBadSheets;
    const int32_t size = element_size(record.VarType);
    if (size == 0)
        return kHugeBadType;
    const ArrayShape shape{record.Rows, record.Cols, record.Sheets, size};
    // TotalSize is a 32-bit field: a block it cannot describe is one the
    // library cannot give.
    const int64_t total = shape.total_bytes();
    if (total > INT32_MAX)
        return kHugeNoMemory;
    auto block = std::make_shared<MemoryBlock>();
    block->bytes = static_cast<uint8_t *>(std::calloc(static_cast<size_t>(total), 1));
    if (block->bytes == nullptr)
        return kHugeNoMemory;
    if (fill_byte(record.VarType, record.NoSpaces) != 0)
        std::memset(block->bytes, ' ', static_cast<size_t>(total));
    block->var_type = record.VarType;
    block->shape = shape;
    const int32_t handle = frame::handle_add(HandleKind::HugeArray, block);
    if (handle == 0)
        return kHugeNoMemory;
    record.Handle = handle;
    record.ElementSize = size;
    record.TotalSize = static_cast<int32_t>(total);
    record.GigaBlocks = record.TotalSize / kGigaBlock;
    record.GigaRest = record.TotalSize % kGigaBlock;
    record.SheetElements = record.Rows * record.Cols;
    return kHugeOk;
}

int16_t huge_array_free(HugeArrayRecord &record) {
    if (record.Handle == 0)
        return 0;
    return frame::handle_remove(HandleKind::HugeArray, record.Handle) ? kHugeOk : 0;
}

std::optional<StoredElement> huge_array_get(HugeArrayRecord &record, int32_t row, int32_t col, int32_t sheet) {
    const std::shared_ptr<MemoryBlock> block = block_of(record);
    if (!block)
        return std::nullopt;
    const int64_t offset = element_offset(block->shape, row, col, sheet);
    record.LastOffset = static_cast<int32_t>(offset);
    const uint8_t *at = block->bytes + offset;
    return StoredElement{element_kind(block->var_type), std::vector<uint8_t>(at, at + block->shape.element_size)};
}

void huge_array_put(HugeArrayRecord &record, int32_t row, int32_t col, int32_t sheet, const ElementMaker &make) {
    const std::shared_ptr<MemoryBlock> block = block_of(record);
    if (!block)
        return;
    const int64_t offset = element_offset(block->shape, row, col, sheet);
    record.LastOffset = static_cast<int32_t>(offset);
    // Made aside first, so that a value that does not convert leaves the
    // element as it was.
    std::vector<uint8_t> bytes(static_cast<size_t>(block->shape.element_size));
    if (make(element_kind(block->var_type), bytes.data(), bytes.size()))
        std::memcpy(block->bytes + offset, bytes.data(), bytes.size());
}

int16_t huge_array_clear(HugeArrayRecord &record) {
    const std::shared_ptr<MemoryBlock> block = block_of(record);
    if (!block)
        return kHugeNoBlock;
    std::memset(block->bytes, fill_byte(block->var_type, record.NoSpaces),
                static_cast<size_t>(block->shape.total_bytes()));
    record.LastOffset = 0;
    return kHugeOk;
}

int16_t huge_array_clear_part(HugeArrayRecord &record, ClearScope scope, int32_t index, int32_t sheet) {
    const std::shared_ptr<MemoryBlock> block = block_of(record);
    if (!block)
        return kHugeNoBlock;
    const uint8_t fill = fill_byte(block->var_type, record.NoSpaces);
    const RunFiller filler = [&](const ByteRun &run) {
        std::memset(block->bytes + run.offset, fill, static_cast<size_t>(run.length));
        return int16_t{kHugeOk};
    };
    switch (scope) {
    case ClearScope::Sheet:
        return clear_sheet_runs(block->shape, sheet, filler);
    case ClearScope::Row:
        return clear_row_runs(block->shape, index, sheet, filler);
    case ClearScope::Column:
        return clear_column_runs(block->shape, index, sheet, filler);
    }
    return kHugeOk;
}

} // namespace brindle::stores
