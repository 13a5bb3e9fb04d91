// Tagged values (VARIANT): initialise, clear and deep copy. The coercions of
// VariantChangeType live in ole_coerce.cpp.
#include <brindle/ole.h>

#include <cstddef>

static_assert(offsetof(VARIANT, n1.s.u) == 8, "VARIANT payload follows the 8-byte header");
static_assert(sizeof(VARIANT) == (sizeof(void *) == 8 ? 24 : 16), "VARIANT has the Windows size");
static_assert(sizeof(SAFEARRAYBOUND) == 8, "SAFEARRAYBOUND is two 32-bit fields");
static_assert(offsetof(SAFEARRAY, pvData) == 12 || (sizeof(void *) == 8 && offsetof(SAFEARRAY, pvData) == 16),
              "SAFEARRAY keeps the Windows field offsets");
static_assert(sizeof(CY) == 8, "Currency is 64 bits");

namespace {

// The types a VARIANT may hold by value or behind VT_BYREF / VT_ARRAY.
bool valid_base_type(VARTYPE base) {
    switch (base) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_ERROR:
    case VT_BOOL:
    case VT_VARIANT:
    case VT_UNKNOWN:
    case VT_DECIMAL:
    case VT_I1:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_I8:
    case VT_UI8:
    case VT_INT:
    case VT_UINT:
    case VT_RECORD:
        return true;
    default:
        return false;
    }
}

bool valid_type(VARTYPE vt) {
    if (vt & ~(VT_TYPEMASK | VT_ARRAY | VT_BYREF))
        return false;
    const VARTYPE base = vt & VT_TYPEMASK;
    if (!valid_base_type(base))
        return false;
    // VT_VARIANT by value, and EMPTY/NULL with a modifier, are not values.
    if (base == VT_VARIANT && !(vt & (VT_BYREF | VT_ARRAY)))
        return false;
    if ((base == VT_EMPTY || base == VT_NULL) && (vt & (VT_BYREF | VT_ARRAY)))
        return false;
    return true;
}

} // namespace

extern "C" {

void VariantInit(VARIANTARG *value) {
    if (value != nullptr)
        value->n1.s.vt = VT_EMPTY;
}

// Frees what the value owns (a string or an array; references own nothing)
// and leaves it VT_EMPTY. Interfaces are not released: the POSIX subset has
// no COM objects.
HRESULT VariantClear(VARIANTARG *value) {
    if (value == nullptr)
        return E_INVALIDARG;
    const VARTYPE vt = value->n1.s.vt;
    if (!valid_type(vt))
        return DISP_E_BADVARTYPE;
    if (!(vt & VT_BYREF)) {
        if (vt & VT_ARRAY)
            SafeArrayDestroy(value->n1.s.u.parray);
        else if (vt == VT_BSTR)
            SysFreeString(value->n1.s.u.bstrVal);
    }
    value->n1.s.vt = VT_EMPTY;
    return S_OK;
}

// Deep copy: strings and arrays are duplicated, references copied as they are.
HRESULT VariantCopy(VARIANTARG *target, const VARIANTARG *source) {
    if (target == nullptr || source == nullptr)
        return E_INVALIDARG;
    const VARTYPE vt = source->n1.s.vt;
    if (!valid_type(vt))
        return DISP_E_BADVARTYPE;
    if (target == source)
        return S_OK;
    const HRESULT cleared = VariantClear(target);
    if (cleared != S_OK)
        return cleared;
    VARIANT copy = *source;
    if (!(vt & VT_BYREF)) {
        if (vt & VT_ARRAY) {
            const HRESULT hr = SafeArrayCopy(source->n1.s.u.parray, &copy.n1.s.u.parray);
            if (hr != S_OK)
                return hr;
        } else if (vt == VT_BSTR && source->n1.s.u.bstrVal != nullptr) {
            BSTR text = source->n1.s.u.bstrVal;
            copy.n1.s.u.bstrVal = SysAllocStringByteLen(reinterpret_cast<const char *>(text), SysStringByteLen(text));
            if (copy.n1.s.u.bstrVal == nullptr)
                return E_OUTOFMEMORY;
        }
    }
    *target = copy;
    return S_OK;
}

} // extern "C"
