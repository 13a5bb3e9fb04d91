// Setting, adding to and filling every element of dimension 1, element by
// element (any lower bound; a 2-dimensional array at the lower bound of
// dimension 2). Integer arithmetic wraps around in 16 bits as the caller's
// Integer would in C; Single arithmetic is done in Single. A type code the
// family does not handle changes nothing; all of them return True, except
// for an array of strings or variants (passed where numbers were declared),
// which is left alone with the result 0.
#include "frame/frame.h"

#include <cstdint>
#include <type_traits>

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

template <class T> T step_by(T value, T step) {
    if constexpr (std::is_same_v<T, int16_t>)
        return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint16_t>(value) + static_cast<uint16_t>(step)));
    else
        return value + step;
}

enum class Op { Set, Add, Fill };

// Set: every element := start. Add: every element := element + start.
// Fill: elements := start, start + step, ... (a running value of type T).
template <class T> void apply(ArrayElements &a, Op op, T start, T step) {
    T running = start;
    for (size_t k = 0; k < a.count(); ++k) {
        const int32_t at = a.lower() + static_cast<int32_t>(k);
        switch (op) {
        case Op::Set:
            a.put(at, start);
            break;
        case Op::Add:
            a.put(at, step_by(a.get<T>(at), start));
            break;
        case Op::Fill:
            a.put(at, running);
            running = step_by(running, step);
            break;
        }
    }
}

int16_t fill_worker(SAFEARRAY **array, int16_t code, Op op, double start, double step) {
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
using brindle::arrays::Op;

BRINDLE_EXPORT(int16_t) cSetI(SAFEARRAY **Arr, int16_t Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, Op::Set, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cSetD(SAFEARRAY **Arr, double Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, Op::Set, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cAddI(SAFEARRAY **Arr, int16_t Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, Op::Add, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cAddS(SAFEARRAY **Arr, float Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 4, Op::Add, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cAddD(SAFEARRAY **Arr, double Value) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, Op::Add, Value, 0); }); }
BRINDLE_EXPORT(int16_t) cFillI(SAFEARRAY **Arr, int16_t Start) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, Op::Fill, Start, 1); }); }
BRINDLE_EXPORT(int16_t) cFillS(SAFEARRAY **Arr, float Start) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 4, Op::Fill, Start, 1); }); }
BRINDLE_EXPORT(int16_t) cFillD(SAFEARRAY **Arr, double Start) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, Op::Fill, Start, 1); }); }
BRINDLE_EXPORT(int16_t) cFillIncrI(SAFEARRAY **Arr, int16_t Start, int16_t Increment) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 2, Op::Fill, Start, Increment); }); }
BRINDLE_EXPORT(int16_t) cFillIncrS(SAFEARRAY **Arr, float Start, float Increment) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 4, Op::Fill, Start, Increment); }); }
BRINDLE_EXPORT(int16_t) cFillIncrD(SAFEARRAY **Arr, double Start, double Increment) { return guarded<int16_t>(0, [&] { return fill_worker(Arr, 5, Op::Fill, Start, Increment); }); }
