// Disk arrays: the exports. The record is the caller's and may hold
// anything; the engine (disk_array.h) checks it and refuses a Handle that
// names no open disk array.
#include "frame/frame.h"
#include "stores/disk_array.h"
#include "stores/element_makers.h"
#include "stores/store_codes.h"

using namespace brindle::frame;
using namespace brindle::stores;

BRINDLE_EXPORT(int16_t) cDACreate(DiskArray *DA, int16_t CreateFlag) {
    return guarded(int16_t{kCannotOpen}, [&] {
        if (DA == nullptr)
            return int16_t{kCannotOpen};
        return CreateFlag != 0 ? disk_array_create(*DA) : disk_array_open(*DA);
    });
}

BRINDLE_EXPORT(int32_t) cDAClose(DiskArray *DA, int16_t DeleteFlag) {
    return guarded(int32_t{0}, [&] { return DA ? disk_array_close(*DA, DeleteFlag == -1) : 0; });
}

BRINDLE_EXPORT(VARIANT) cDAGet(DiskArray *DA, int32_t Row, int32_t Col, int32_t Sheet) {
    return guarded(empty_variant(), [&] { return DA ? to_variant(disk_array_get(*DA, Row, Col, Sheet)) : empty_variant(); });
}

BRINDLE_EXPORT(void) cDAPut(DiskArray *DA, int32_t Row, int32_t Col, int32_t Sheet, VARIANT *Value) {
    guarded(0, [&] {
        if (DA)
            disk_array_put(*DA, Row, Col, Sheet, from_variant(Value));
        return 0;
    });
}

BRINDLE_EXPORT(void) cDAGetType(DiskArray *DA, int32_t Row, int32_t Col, int32_t Sheet, void *Element) {
    guarded(0, [&] {
        if (DA && Element)
            to_bytes(disk_array_get(*DA, Row, Col, Sheet), Element);
        return 0;
    });
}

BRINDLE_EXPORT(void) cDAPutType(DiskArray *DA, int32_t Row, int32_t Col, int32_t Sheet, void *Element) {
    guarded(0, [&] {
        if (DA)
            disk_array_put(*DA, Row, Col, Sheet, from_bytes(Element));
        return 0;
    });
}

BRINDLE_EXPORT(int16_t) cDAClear(DiskArray *DA) {
    return guarded(int16_t{kNotOpen}, [&] { return DA ? disk_array_clear(*DA) : int16_t{kNotOpen}; });
}

BRINDLE_EXPORT(int16_t) cDAClearSheet(DiskArray *DA, int32_t Sheet) {
    return guarded(int16_t{kNotOpen},
                   [&] { return DA ? disk_array_clear_part(*DA, ClearScope::Sheet, 0, Sheet) : int16_t{kNotOpen}; });
}

BRINDLE_EXPORT(int16_t) cDAClearRow(DiskArray *DA, int32_t Row, int32_t Sheet) {
    return guarded(int16_t{kNotOpen},
                   [&] { return DA ? disk_array_clear_part(*DA, ClearScope::Row, Row, Sheet) : int16_t{kNotOpen}; });
}

BRINDLE_EXPORT(int16_t) cDAClearCol(DiskArray *DA, int32_t Col, int32_t Sheet) {
    return guarded(int16_t{kNotOpen},
                   [&] { return DA ? disk_array_clear_part(*DA, ClearScope::Column, Col, Sheet) : int16_t{kNotOpen}; });
}

// Sheet 1: a two-dimensional array.
BRINDLE_EXPORT(VARIANT) cDAsGet(DiskArray *DA, int32_t Row, int32_t Col) { return cDAGet(DA, Row, Col, 1); }

BRINDLE_EXPORT(void) cDAsPut(DiskArray *DA, int32_t Row, int32_t Col, VARIANT *Value) { cDAPut(DA, Row, Col, 1, Value); }

BRINDLE_EXPORT(void) cDAsGetType(DiskArray *DA, int32_t Row, int32_t Col, void *Element) {
    cDAGetType(DA, Row, Col, 1, Element);
}

BRINDLE_EXPORT(void) cDAsPutType(DiskArray *DA, int32_t Row, int32_t Col, void *Element) {
    cDAPutType(DA, Row, Col, 1, Element);
}

BRINDLE_EXPORT(int16_t) cDAsClearRow(DiskArray *DA, int32_t Row) { return cDAClearRow(DA, Row, 1); }

BRINDLE_EXPORT(int16_t) cDAsClearCol(DiskArray *DA, int32_t Col) { return cDAClearCol(DA, Col, 1); }

// Row 1 of sheet 1: a one-dimensional array.
BRINDLE_EXPORT(VARIANT) cDArGet(DiskArray *DA, int32_t Index) { return cDAGet(DA, 1, Index, 1); }

BRINDLE_EXPORT(void) cDArPut(DiskArray *DA, int32_t Index, VARIANT *Value) { cDAPut(DA, 1, Index, 1, Value); }

BRINDLE_EXPORT(void) cDArGetType(DiskArray *DA, int32_t Index, void *Element) { cDAGetType(DA, 1, Index, 1, Element); }

BRINDLE_EXPORT(void) cDArPutType(DiskArray *DA, int32_t Index, void *Element) { cDAPutType(DA, 1, Index, 1, Element); }
