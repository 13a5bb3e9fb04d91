// Shifts of dimension 1 by one place on the locked block: the elements move
// (an overlapping move) and the caller's value enters at the end left free.
#include "arrays/shift_engine.h"
#include "frame/frame.h"

using namespace brindle::frame;

namespace brindle::arrays {

namespace {

// Left: elements 2..n move one place down and the value goes last. Right:
// elements 1..n-1 move one place up and the value goes first. A code the
// family does not handle changes nothing; the result is True either way, and
// 0 only for an array the block access refuses (more than 2 dimensions).
int16_t shift(SAFEARRAY **array, int16_t code, const void *value, bool left) {
    const ArrayBlock block(array);
    if (!block.ok())
        return 0;
    const auto width = element_width(code);
    // Arrays of strings, variants and the like are left alone: a shift
    // would duplicate one element's reference and lose another's.
    if (!width || block.data() == nullptr || block.holds_references())
        return -1;
    const size_t w = *width;
    // Dimension 1 only, and never more elements than the block holds.
    size_t n = block.count1();
    if (n > block.bytes() / w)
        n = block.bytes() / w;
    shift_elements(static_cast<unsigned char *>(block.data()), n, w, value, left);
    return -1;
}

} // namespace

} // namespace brindle::arrays

using brindle::arrays::shift;

BRINDLE_EXPORT(int16_t) cShiftLeftB(SAFEARRAY **Arr, uint8_t Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 17, &Value, true); }); }
BRINDLE_EXPORT(int16_t) cShiftLeftI(SAFEARRAY **Arr, int16_t Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 2, &Value, true); }); }
BRINDLE_EXPORT(int16_t) cShiftLeftL(SAFEARRAY **Arr, int32_t Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 3, &Value, true); }); }
BRINDLE_EXPORT(int16_t) cShiftLeftS(SAFEARRAY **Arr, float Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 4, &Value, true); }); }
BRINDLE_EXPORT(int16_t) cShiftLeftD(SAFEARRAY **Arr, double Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 5, &Value, true); }); }
BRINDLE_EXPORT(int16_t) cShiftRightB(SAFEARRAY **Arr, uint8_t Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 17, &Value, false); }); }
BRINDLE_EXPORT(int16_t) cShiftRightI(SAFEARRAY **Arr, int16_t Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 2, &Value, false); }); }
BRINDLE_EXPORT(int16_t) cShiftRightL(SAFEARRAY **Arr, int32_t Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 3, &Value, false); }); }
BRINDLE_EXPORT(int16_t) cShiftRightS(SAFEARRAY **Arr, float Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 4, &Value, false); }); }
BRINDLE_EXPORT(int16_t) cShiftRightD(SAFEARRAY **Arr, double Value) { return guarded<int16_t>(0, [&] { return shift(Arr, 5, &Value, false); }); }
