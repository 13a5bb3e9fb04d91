// The shape of a store array: sheets x rows x columns of fixed-size
// elements, stored sheet after sheet, each sheet row after row, each row
// column after column. The same arithmetic serves disk arrays, the slots of
// multi-array files and huge memory arrays.
#pragma once

#include <cstdint>
#include <functional>

namespace brindle::stores {

struct ArrayShape {
    int32_t rows = 0, cols = 0, sheets = 0; // each at least 1 in a valid shape
    int32_t element_size = 0;               // at least 1 in a valid shape

    // Byte counts; INT64_MAX where the product does not fit (dimensions a
    // client or a file header made up), which every caller refuses.
    int64_t sheet_bytes() const noexcept;
    int64_t total_bytes() const noexcept;
};

// An index taken into 1..limit: below 1 reads as 1, above limit as limit, so
// an index out of range addresses the nearest edge element.
int32_t clamp_index(int32_t index, int32_t limit) noexcept;

// The byte offset from the start of the data of element (row, col, sheet),
// counted from 1, after clamping each index into its dimension.
int64_t element_offset(const ArrayShape &shape, int32_t row, int32_t col, int32_t sheet) noexcept;

// A run of bytes that a clear fills: `offset` from the start of the data.
struct ByteRun {
    int64_t offset;
    int64_t length;
};

// The sheets a clear covers: every sheet for -1, else the one sheet the
// index clamps to.
struct SheetRange {
    int32_t first, last;
};
SheetRange clear_sheets(const ArrayShape &shape, int32_t sheet) noexcept;

// The runs of clearing one sheet, one row or one column (index clamped) in
// the chosen sheets, in file order; `fill` is called for each and the walk
// stops at the first call that returns a value other than -1, which is then
// the result (-1 when every run was filled). A column gives one run of one
// element per row.
using RunFiller = std::function<int16_t(const ByteRun &)>;
int16_t clear_sheet_runs(const ArrayShape &shape, int32_t sheet, const RunFiller &fill);
int16_t clear_row_runs(const ArrayShape &shape, int32_t row, int32_t sheet, const RunFiller &fill);
int16_t clear_column_runs(const ArrayShape &shape, int32_t col, int32_t sheet, const RunFiller &fill);

} // namespace brindle::stores
