// Multi-array files: the exports, the disk-array exports with an array
// number (1 to 20) in front. The engine (multi_array.h) checks the record
// and refuses a Handle that names no open multi-array file.
#include "frame/frame.h"
#include "stores/multi_array.h"
#include "stores/element_makers.h"
#include "stores/store_codes.h"

using namespace brindle::frame;
using namespace brindle::stores;

BRINDLE_EXPORT(int16_t) cMDACreate(MultiArray *MDA, int16_t CreateFlag) {
    return guarded(int16_t{kCannotOpen}, [&] {
        if (MDA == nullptr)
            return int16_t{kCannotOpen};
        return CreateFlag != 0 ? multi_array_create(*MDA) : multi_array_open(*MDA);
    });
}

BRINDLE_EXPORT(int32_t) cMDAClose(MultiArray *MDA, int16_t DeleteFlag) {
    return guarded(int32_t{0}, [&] { return MDA ? multi_array_close(*MDA, DeleteFlag == -1) : 0; });
}

BRINDLE_EXPORT(VARIANT) cMDAGet(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col, int32_t Sheet) {
    return guarded(empty_variant(), [&] { return MDA ? to_variant(multi_array_get(ArrayNumber, *MDA, Row, Col, Sheet)) : empty_variant(); });
}

BRINDLE_EXPORT(void) cMDAPut(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col, int32_t Sheet, VARIANT *Value) {
    guarded(0, [&] {
        if (MDA)
            multi_array_put(ArrayNumber, *MDA, Row, Col, Sheet, from_variant(Value));
        return 0;
    });
}

BRINDLE_EXPORT(void) cMDAGetType(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col, int32_t Sheet, void *Element) {
    guarded(0, [&] {
        if (MDA && Element)
            to_bytes(multi_array_get(ArrayNumber, *MDA, Row, Col, Sheet), Element);
        return 0;
    });
}

BRINDLE_EXPORT(void) cMDAPutType(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col, int32_t Sheet, void *Element) {
    guarded(0, [&] {
        if (MDA)
            multi_array_put(ArrayNumber, *MDA, Row, Col, Sheet, from_bytes(Element));
        return 0;
    });
}

BRINDLE_EXPORT(int16_t) cMDAClear(int32_t ArrayNumber, MultiArray *MDA) {
    return guarded(int16_t{kNotOpen}, [&] { return MDA ? multi_array_clear(ArrayNumber, *MDA) : int16_t{kNotOpen}; });
}

BRINDLE_EXPORT(int16_t) cMDAClearSheet(int32_t ArrayNumber, MultiArray *MDA, int32_t Sheet) {
    return guarded(int16_t{kNotOpen},
                   [&] { return MDA ? multi_array_clear_part(ArrayNumber, *MDA, ClearScope::Sheet, 0, Sheet) : int16_t{kNotOpen}; });
}

BRINDLE_EXPORT(int16_t) cMDAClearRow(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Sheet) {
    return guarded(int16_t{kNotOpen},
                   [&] { return MDA ? multi_array_clear_part(ArrayNumber, *MDA, ClearScope::Row, Row, Sheet) : int16_t{kNotOpen}; });
}

BRINDLE_EXPORT(int16_t) cMDAClearCol(int32_t ArrayNumber, MultiArray *MDA, int32_t Col, int32_t Sheet) {
    return guarded(int16_t{kNotOpen},
                   [&] { return MDA ? multi_array_clear_part(ArrayNumber, *MDA, ClearScope::Column, Col, Sheet) : int16_t{kNotOpen}; });
}

// Sheet 1: a two-dimensional array.
BRINDLE_EXPORT(VARIANT) cMDAsGet(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col) { return cMDAGet(ArrayNumber, MDA, Row, Col, 1); }

BRINDLE_EXPORT(void) cMDAsPut(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col, VARIANT *Value) { cMDAPut(ArrayNumber, MDA, Row, Col, 1, Value); }

BRINDLE_EXPORT(void) cMDAsGetType(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col, void *Element) {
    cMDAGetType(ArrayNumber, MDA, Row, Col, 1, Element);
}

BRINDLE_EXPORT(void) cMDAsPutType(int32_t ArrayNumber, MultiArray *MDA, int32_t Row, int32_t Col, void *Element) {
    cMDAPutType(ArrayNumber, MDA, Row, Col, 1, Element);
}

BRINDLE_EXPORT(int16_t) cMDAsClearRow(int32_t ArrayNumber, MultiArray *MDA, int32_t Row) { return cMDAClearRow(ArrayNumber, MDA, Row, 1); }

BRINDLE_EXPORT(int16_t) cMDAsClearCol(int32_t ArrayNumber, MultiArray *MDA, int32_t Col) { return cMDAClearCol(ArrayNumber, MDA, Col, 1); }

// Row 1 of sheet 1: a one-dimensional array.
BRINDLE_EXPORT(VARIANT) cMDArGet(int32_t ArrayNumber, MultiArray *MDA, int32_t Index) { return cMDAGet(ArrayNumber, MDA, 1, Index, 1); }

BRINDLE_EXPORT(void) cMDArPut(int32_t ArrayNumber, MultiArray *MDA, int32_t Index, VARIANT *Value) { cMDAPut(ArrayNumber, MDA, 1, Index, 1, Value); }

BRINDLE_EXPORT(void) cMDArGetType(int32_t ArrayNumber, MultiArray *MDA, int32_t Index, void *Element) { cMDAGetType(ArrayNumber, MDA, 1, Index, 1, Element); }

BRINDLE_EXPORT(void) cMDArPutType(int32_t ArrayNumber, MultiArray *MDA, int32_t Index, void *Element) { cMDAPutType(ArrayNumber, MDA, 1, Index, 1, Element); }
