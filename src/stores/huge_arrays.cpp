// Huge memory arrays: the exports. The record is the caller's and may hold
// anything; the engine (memory_array.h) checks it and refuses a Handle that
// names no block of a huge memory array.
#include "frame/frame.h"
#include "stores/memory_array.h"
#include "stores/element_makers.h"

using namespace brindle::frame;
using namespace brindle::stores;

BRINDLE_EXPORT(int16_t) cHMACreate(HugeArray *HMA) {
    return guarded(int16_t{kHugeNoMemory}, [&] { return HMA ? huge_array_create(*HMA) : int16_t{kHugeNoMemory}; });
}

BRINDLE_EXPORT(int16_t) cHMAFree(HugeArray *HMA) {
    return guarded(int16_t{0}, [&] { return HMA ? huge_array_free(*HMA) : int16_t{0}; });
}

BRINDLE_EXPORT(VARIANT) cHMAGet(HugeArray *HMA, int32_t Row, int32_t Col, int32_t Sheet) {
    return guarded(empty_variant(), [&] { return HMA ? to_variant(huge_array_get(*HMA, Row, Col, Sheet)) : empty_variant(); });
}

BRINDLE_EXPORT(void) cHMAPut(HugeArray *HMA, int32_t Row, int32_t Col, int32_t Sheet, VARIANT *Value) {
    guarded(0, [&] {
        if (HMA)
            huge_array_put(*HMA, Row, Col, Sheet, from_variant(Value));
        return 0;
    });
}

BRINDLE_EXPORT(void) cHMAGetType(HugeArray *HMA, int32_t Row, int32_t Col, int32_t Sheet, void *Element) {
    guarded(0, [&] {
        if (HMA && Element)
            to_bytes(huge_array_get(*HMA, Row, Col, Sheet), Element);
        return 0;
    });
}

BRINDLE_EXPORT(void) cHMAPutType(HugeArray *HMA, int32_t Row, int32_t Col, int32_t Sheet, void *Element) {
    guarded(0, [&] {
        if (HMA)
            huge_array_put(*HMA, Row, Col, Sheet, from_bytes(Element));
        return 0;
    });
}

BRINDLE_EXPORT(int16_t) cHMAClear(HugeArray *HMA) {
    return guarded(int16_t{kHugeNoBlock}, [&] { return HMA ? huge_array_clear(*HMA) : int16_t{kHugeNoBlock}; });
}

BRINDLE_EXPORT(int16_t) cHMAClearSheet(HugeArray *HMA, int32_t Sheet) {
    return guarded(int16_t{kHugeNoBlock},
                   [&] { return HMA ? huge_array_clear_part(*HMA, ClearScope::Sheet, 0, Sheet) : int16_t{kHugeNoBlock}; });
}

BRINDLE_EXPORT(int16_t) cHMAClearRow(HugeArray *HMA, int32_t Row, int32_t Sheet) {
    return guarded(int16_t{kHugeNoBlock},
                   [&] { return HMA ? huge_array_clear_part(*HMA, ClearScope::Row, Row, Sheet) : int16_t{kHugeNoBlock}; });
}

BRINDLE_EXPORT(int16_t) cHMAClearCol(HugeArray *HMA, int32_t Col, int32_t Sheet) {
    return guarded(int16_t{kHugeNoBlock},
                   [&] { return HMA ? huge_array_clear_part(*HMA, ClearScope::Column, Col, Sheet) : int16_t{kHugeNoBlock}; });
}

// Sheet 1: a two-dimensional array.
BRINDLE_EXPORT(VARIANT) cHMAsGet(HugeArray *HMA, int32_t Row, int32_t Col) { return cHMAGet(HMA, Row, Col, 1); }

BRINDLE_EXPORT(void) cHMAsPut(HugeArray *HMA, int32_t Row, int32_t Col, VARIANT *Value) { cHMAPut(HMA, Row, Col, 1, Value); }

BRINDLE_EXPORT(void) cHMAsGetType(HugeArray *HMA, int32_t Row, int32_t Col, void *Element) {
    cHMAGetType(HMA, Row, Col, 1, Element);
}

BRINDLE_EXPORT(void) cHMAsPutType(HugeArray *HMA, int32_t Row, int32_t Col, void *Element) {
    cHMAPutType(HMA, Row, Col, 1, Element);
}

BRINDLE_EXPORT(int16_t) cHMAsClearRow(HugeArray *HMA, int32_t Row) { return cHMAClearRow(HMA, Row, 1); }

BRINDLE_EXPORT(int16_t) cHMAsClearCol(HugeArray *HMA, int32_t Col) { return cHMAClearCol(HMA, Col, 1); }

// Row 1 of sheet 1: a one-dimensional array.
BRINDLE_EXPORT(VARIANT) cHMArGet(HugeArray *HMA, int32_t Index) { return cHMAGet(HMA, 1, Index, 1); }

BRINDLE_EXPORT(void) cHMArPut(HugeArray *HMA, int32_t Index, VARIANT *Value) { cHMAPut(HMA, 1, Index, 1, Value); }

BRINDLE_EXPORT(void) cHMArGetType(HugeArray *HMA, int32_t Index, void *Element) { cHMAGetType(HMA, 1, Index, 1, Element); }

BRINDLE_EXPORT(void) cHMArPutType(HugeArray *HMA, int32_t Index, void *Element) { cHMAPutType(HMA, 1, Index, 1, Element); }
