#include "frame/double_block.h"

#include <cstdint>
#include <limits>

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

DoubleBlock::DoubleBlock(SAFEARRAY **ref) noexcept {
    SAFEARRAY *array = ref == nullptr ? nullptr : *ref;
    if (array == nullptr)
        return;
    const UINT dims = SafeArrayGetDim(array);
    if (dims < 1 || !holds_doubles(array))
        return;
    // The product of the dimensions' counts, refused when it passes what
    // the address space could hold (a descriptor that lies about its size).
    size_t count = 1;
    constexpr size_t kMost = std::numeric_limits<size_t>::max() / sizeof(double);
    for (UINT d = 1; d <= dims; ++d) {
        LONG lower = 0, upper = -1;
        if (SafeArrayGetLBound(array, d, &lower) != S_OK || SafeArrayGetUBound(array, d, &upper) != S_OK)
            return;
        const int64_t n = static_cast<int64_t>(upper) - lower + 1;
        if (n <= 0) {
            count = 0;
            continue;
        }
        if (count != 0 && static_cast<uint64_t>(n) > kMost / count)
            return;
        count *= static_cast<size_t>(n);
    }
    void *data = nullptr;
    if (SafeArrayAccessData(array, &data) != S_OK)
        return;
    array_ = array; // locked from here: the destructor unlocks
    data_ = static_cast<double *>(data);
    count_ = data_ == nullptr ? 0 : count;
}

DoubleBlock::~DoubleBlock() {
    if (array_ != nullptr)
        (void)SafeArrayUnaccessData(array_);
}

} // namespace brindle::frame
