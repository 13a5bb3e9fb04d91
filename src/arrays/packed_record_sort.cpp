#include "arrays/packed_record_sort.h"

#include "arrays/record_text_order.h"
#include "arrays/sort_engine.h"

#include <algorithm>
#include <cstdint>

namespace brindle::arrays {

void sort_packed_records(unsigned char *base, size_t n, size_t unit, size_t length, bool descending) {
    const unsigned char *end = base + length;
    const auto direction = [descending](int r) {
        if (!descending)
            return r;
        return r == -1 ? 1 : r == 1 ? -1 : 0;
    };
    // Most texts differ within a few bytes of where two records start, and
    // the direct comparison is the quickest. A budget of bytes read, far
    // above what such texts need, catches the long equal runs; the sort then
    // starts over with the comparison answered by RecordTextOrder. The budget
    // is at least what building RecordTextOrder costs (the text's length once
    // per level of it), so a few records heading a long text are compared
    // directly, however far their comparisons run.
    size_t log2n = 1;
    while ((size_t{1} << log2n) < n)
        ++log2n;
    size_t levels = 1;
    while ((size_t{1} << levels) < length / unit + 1)
        ++levels;
    const double allowance =
        std::max(2.0 * (static_cast<double>(n) * static_cast<double>(log2n) + 64) * (static_cast<double>(unit) + 8),
                 static_cast<double>(length) * static_cast<double>(levels + 1));
    size_t budget = allowance < static_cast<double>(SIZE_MAX / 2) ? static_cast<size_t>(allowance) : SIZE_MAX / 2;
    auto order = unit_order(base, n, unit, [&](const unsigned char *x, const unsigned char *y) {
        return direction(compare_text_nocase(x, y, end, &budget));
    });
    if (budget == 0) {
        const RecordTextOrder text_order(base, unit, length);
        order = unit_order(base, n, unit, [&](const unsigned char *x, const unsigned char *y) {
            return direction(text_order.compare(static_cast<size_t>(x - base) / unit, static_cast<size_t>(y - base) / unit));
        });
    }
    gather_units(base, unit, order);
}

} // namespace brindle::arrays
