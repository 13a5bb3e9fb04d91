#include "stores/array_shape.h"

#include <cstdint>
#include <initializer_list>

namespace brindle::stores {

namespace {

int64_t product(std::initializer_list<int64_t> factors) noexcept {
    int64_t result = 1;
    for (const int64_t f : factors)
        if (f < 0 || __builtin_mul_overflow(result, f, &result))
            return INT64_MAX;
    return result;
}

} // namespace

int64_t ArrayShape::sheet_bytes() const noexcept { return product({rows, cols, element_size}); }

int64_t ArrayShape::total_bytes() const noexcept { return product({rows, cols, element_size, sheets}); }

int32_t clamp_index(int32_t index, int32_t limit) noexcept {
    if (index < 1)
        return 1;
    return index > limit ? limit : index;
}

int64_t element_offset(const ArrayShape &shape, int32_t row, int32_t col, int32_t sheet) noexcept {
    const int64_t r = clamp_index(row, shape.rows) - 1;
    const int64_t c = clamp_index(col, shape.cols) - 1;
    const int64_t s = clamp_index(sheet, shape.sheets) - 1;
    return ((s * shape.rows + r) * shape.cols + c) * shape.element_size;
}

SheetRange clear_sheets(const ArrayShape &shape, int32_t sheet) noexcept {
    if (sheet == -1)
        return {1, shape.sheets};
    const int32_t s = clamp_index(sheet, shape.sheets);
    return {s, s};
}

int16_t clear_sheet_runs(const ArrayShape &shape, int32_t sheet, const RunFiller &fill) {
    const SheetRange range = clear_sheets(shape, sheet);
    for (int32_t s = range.first; s <= range.last; ++s)
        if (const int16_t code = fill({(s - 1) * shape.sheet_bytes(), shape.sheet_bytes()}); code != -1)
            return code;
    return -1;
}

int16_t clear_row_runs(const ArrayShape &shape, int32_t row, int32_t sheet, const RunFiller &fill) {
    const SheetRange range = clear_sheets(shape, sheet);
    const int64_t row_bytes = int64_t{shape.cols} * shape.element_size;
    for (int32_t s = range.first; s <= range.last; ++s)
        if (const int16_t code = fill({element_offset(shape, row, 1, s), row_bytes}); code != -1)
            return code;
    return -1;
}

int16_t clear_column_runs(const ArrayShape &shape, int32_t col, int32_t sheet, const RunFiller &fill) {
    const SheetRange range = clear_sheets(shape, sheet);
    for (int32_t s = range.first; s <= range.last; ++s)
        for (int32_t r = 1; r <= shape.rows; ++r)
            if (const int16_t code = fill({element_offset(shape, r, col, s), shape.element_size}); code != -1)
                return code;
    return -1;
}

} // namespace brindle::stores
