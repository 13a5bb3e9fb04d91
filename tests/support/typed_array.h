// One-dimensional SAFEARRAYs of the numeric element types the typed-array
// exports take, filled from a vector and read back whole.
#pragma once

#include "support/ole_helpers.h"

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

namespace brindle::test {

template <class T> constexpr VARTYPE vt_of() {
    if constexpr (std::is_same_v<T, int16_t>)
        return VT_I2;
    else if constexpr (std::is_same_v<T, int32_t>)
        return VT_I4;
    else if constexpr (std::is_same_v<T, float>)
        return VT_R4;
    else if constexpr (std::is_same_v<T, double>)
        return VT_R8;
    else {
        static_assert(std::is_same_v<T, uint8_t>, "no SAFEARRAY element type for T");
        return VT_UI1;
    }
}

// An array holding `values`, first subscript `lower`.
template <class T> struct TypedArray : SafeArray {
    TypedArray(const std::vector<T> &values, LONG lower = 0)
        : SafeArray(vt_of<T>(), lower, static_cast<ULONG>(values.size())) {
        if (!values.empty())
            std::memcpy(data<T>(), values.data(), values.size() * sizeof(T));
    }
    // The element count as the bounds give it now (an export may resize).
    size_t size() const {
        LONG lo = 0, hi = -1;
        SafeArrayGetLBound(get(), 1, &lo);
        SafeArrayGetUBound(get(), 1, &hi);
        return hi < lo ? 0 : static_cast<size_t>(hi - lo + 1);
    }
    std::vector<T> values() const {
        const size_t n = size();
        return n == 0 ? std::vector<T>{} : std::vector<T>(data<T>(), data<T>() + n);
    }
};

} // namespace brindle::test
