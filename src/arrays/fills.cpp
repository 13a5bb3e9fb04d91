// Setting, adding to and filling every element of dimension 1, element by
// element (any lower bound; a 2-dimensional array at the lower bound of
// dimension 2). Integer arithmetic wraps around in 16 bits as the caller's
// Integer would in C; Single arithmetic is done in Single. A type code the
// family does not handle changes nothing; all of them return True, except
// for an array of strings or variants (passed where numbers were declared),
// which is left alone with the result 0.
#include "arrays/fill_engine.h"
#include "frame/frame.h"

#include <cstdint>

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

template <class T> void apply(ArrayElements &a, FillOp op, T start, T step) {
    fill_series<T>(
        a.count(), [&a](size_t k) { return a.get<T>(a.lower() + static_cast<int32_t>(k)); },
        [&a](size_t k, T value) { a.put(a.lower() + static_cast<int32_t>(k), value); }, op, start, step);
}

int16_t fill_worker(SAFEARRAY **array, int16_t code, FillOp op, double start, double step) {
    ArrayElements a(array);
    if (a.holds_references())
        return 0;
    switch (static_cast<ElementType>(code)) {
    case ElementType::Integer:
        apply<int16_t>(a, op, static_cast<int16_t>(start), static_cast<int16_t>(step));
        break;
    case ElementType::Single:
        apply<float>(a, op, static_cast<float>(start), static_cast<float>(step));
        break;
    case ElementType::Double:
        apply<double>(a, op, start, step);
        break;
    default:
        break;
    }
    return -1;
}

} // namespace

} // namespace brindle::arrays

using brindle::arrays::fill_worker;
using brindle::arrays::FillOp;

BRINDLE_EXPORT(int16_t) cSetI(SAFEARRAY **Arr, int16_t Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, FillOp::set, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cSetD(SAFEARRAY **Arr, double Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, FillOp::set, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cAddI(SAFEARRAY **Arr, int16_t Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, FillOp::add, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cAddS(SAFEARRAY **Arr, float Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 4, FillOp::add, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cAddD(SAFEARRAY **Arr, double Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, FillOp::add, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cFillI(SAFEARRAY **Arr, int16_t Start) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, FillOp::fill, Start, 1); }); }
BRINDLE_EXPORT(int16_t) cFillS(SAFEARRAY **Arr, float Start) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 4, FillOp::fill, Start, 1); }); }
BRINDLE_EXPORT(int16_t) cFillD(SAFEARRAY **Arr, double Start) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, FillOp::fill, Start, 1); }); }
BRINDLE_EXPORT(int16_t) cFillIncrI(SAFEARRAY **Arr, int16_t Start, int16_t Increment) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, FillOp::fill, Start, Increment); }); }
BRINDLE_EXPORT(int16_t) cFillIncrS(SAFEARRAY **Arr, float Start, float Increment) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 4, FillOp::fill, Start, Increment); }); }
BRINDLE_EXPORT(int16_t) cFillIncrD(SAFEARRAY **Arr, double Start, double Increment) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, FillOp::fill, Start, Increment); }); }
