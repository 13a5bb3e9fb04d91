#include "frame/double_block.h"


namespace brindle::frame {

namespace {

// Elements that are Doubles: the array says so when it carries its element
// type; an array that does not (one VB made itself may not) must at least
// hold plain 8-byte elements.
bool holds_doubles(SAFEARRAY *array) {
    if (array->fFeatures & (FADF_BSTR | FADF_VARIANT | FADF_UNKNOWN | FADF_DISPATCH | FADF_RECORD | FADF_HAVEIID))
        return false;
    if (SafeArrayGetElemsize(array) != sizeof(double))
        return false;
    VARTYPE vt = VT_EMPTY;
    if (SafeArrayGetVartype(array, &vt) == S_OK)
        return vt == VT_R8;
    return true;
}

} // namespace

// The whole array, or nothing (a null descriptor) when it holds no Doubles.
DoubleBlock::DoubleBlock(SAFEARRAY **ref) noexcept
    : whole_(ref != nullptr && *ref != nullptr && holds_doubles(*ref) ? ref : nullptr) {}

} // namespace brindle::frame
