// Array descriptors (SAFEARRAY) with the Windows layout and rules.
//
// The bounds are stored last dimension first: rgsabound[0] describes the
// rightmost (slowest-varying) dimension, rgsabound[cDims-1] dimension 1.
// Index vectors passed by callers list dimension 1 first. Element data are
// column-major, dimension 1 varying fastest, so resizing the last dimension
// (SafeArrayRedim) only cuts or extends the end of the block.
//
// The element type is kept in the 4 bytes just before the descriptor, where
// Windows keeps it for FADF_HAVEVARTYPE arrays.
#include <brindle/ole.h>

#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

constexpr size_t kVartypeSlot = 16; // room before the descriptor, as Windows reserves

size_t descriptor_bytes(UINT dims) {
    return sizeof(SAFEARRAY) + (dims - 1) * sizeof(SAFEARRAYBOUND);
}

ULONG element_size(VARTYPE vt) {
    switch (vt) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_R4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
        return 4;
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_I8:
    case VT_UI8:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void *);
    case VT_VARIANT:
        return sizeof(VARIANT);
    case VT_DECIMAL:
        return 16;
    default:
        return 0;
    }
}

USHORT features_for(VARTYPE vt) {
    switch (vt) {
    case VT_BSTR:
        return FADF_HAVEVARTYPE | FADF_BSTR;
    case VT_VARIANT:
        return FADF_HAVEVARTYPE | FADF_VARIANT;
    case VT_UNKNOWN:
        return FADF_HAVEIID | FADF_UNKNOWN;
    case VT_DISPATCH:
        return FADF_HAVEIID | FADF_DISPATCH;
    default:
        return FADF_HAVEVARTYPE;
    }
}

VARTYPE &vartype_slot(SAFEARRAY *array) {
    return *reinterpret_cast<VARTYPE *>(reinterpret_cast<char *>(array) - sizeof(DWORD));
}

// Number of elements over all dimensions, or SIZE_MAX when the product
// overflows what one block could hold.
size_t cell_count(const SAFEARRAY *array) {
    size_t cells = 1;
    for (UINT i = 0; i < array->cDims; ++i) {
        const size_t n = array->rgsabound[i].cElements;
        if (n != 0 && cells > std::numeric_limits<size_t>::max() / n)
            return std::numeric_limits<size_t>::max();
        cells *= n;
    }
    return cells;
}

bool block_bytes(const SAFEARRAY *array, size_t cells, size_t *bytes) {
    if (cells == std::numeric_limits<size_t>::max() ||
        (array->cbElements != 0 && cells > std::numeric_limits<size_t>::max() / array->cbElements))
        return false;
    *bytes = cells * array->cbElements;
    return true;
}

// Releases what the elements [first, first + count) own (strings, variants).
void release_cells(SAFEARRAY *array, size_t first, size_t count) {
    auto *base = static_cast<char *>(array->pvData);
    if (base == nullptr)
        return;
    for (size_t i = first; i < first + count; ++i) {
        char *cell = base + i * array->cbElements;
        if (array->fFeatures & FADF_BSTR) {
            BSTR text;
            std::memcpy(&text, cell, sizeof text);
            SysFreeString(text);
        } else if (array->fFeatures & FADF_VARIANT) {
            VariantClear(reinterpret_cast<VARIANT *>(cell));
        }
    }
}

// Copies the elements of `from` into the fresh zeroed block of `to`.
HRESULT copy_cells(const SAFEARRAY *from, SAFEARRAY *to, size_t cells) {
    const auto *src = static_cast<const char *>(from->pvData);
    auto *dst = static_cast<char *>(to->pvData);
    if (from->fFeatures & FADF_BSTR) {
        for (size_t i = 0; i < cells; ++i) {
            BSTR text;
            std::memcpy(&text, src + i * sizeof(BSTR), sizeof text);
            BSTR copy = nullptr;
            if (text != nullptr) {
                copy = SysAllocStringByteLen(reinterpret_cast<const char *>(text), SysStringByteLen(text));
                if (copy == nullptr)
                    return E_OUTOFMEMORY;
            }
            std::memcpy(dst + i * sizeof(BSTR), &copy, sizeof copy);
        }
        return S_OK;
    }
    if (from->fFeatures & FADF_VARIANT) {
        for (size_t i = 0; i < cells; ++i) {
            auto *target = reinterpret_cast<VARIANT *>(dst + i * sizeof(VARIANT));
            VariantInit(target);
            const HRESULT hr = VariantCopy(target, reinterpret_cast<const VARIANT *>(src + i * sizeof(VARIANT)));
            if (hr != S_OK)
                return hr;
        }
        return S_OK;
    }
    if (cells != 0)
        std::memcpy(dst, src, cells * from->cbElements);
    return S_OK;
}

SAFEARRAY *alloc_descriptor(UINT dims) {
    auto *block = static_cast<char *>(std::calloc(1, kVartypeSlot + descriptor_bytes(dims)));
    if (block == nullptr)
        return nullptr;
    return reinterpret_cast<SAFEARRAY *>(block + kVartypeSlot);
}

void free_descriptor(SAFEARRAY *array) { std::free(reinterpret_cast<char *>(array) - kVartypeSlot); }

bool alloc_data(SAFEARRAY *array) {
    size_t bytes;
    if (!block_bytes(array, cell_count(array), &bytes))
        return false;
    array->pvData = std::calloc(1, bytes == 0 ? 1 : bytes);
    return array->pvData != nullptr;
}

// Holds a lock on an array for one element access, as the system's element
// calls do: an array whose lock count is at its limit gives and takes
// nothing.
class ElementLock {
  public:
    explicit ElementLock(SAFEARRAY *array) : array_(array), status_(SafeArrayLock(array)) {}
    ~ElementLock() {
        if (status_ == S_OK)
            SafeArrayUnlock(array_);
    }
    ElementLock(const ElementLock &) = delete;
    ElementLock &operator=(const ElementLock &) = delete;
    HRESULT status() const { return status_; }

  private:
    SAFEARRAY *array_;
    HRESULT status_;
};

} // namespace

extern "C" {

SAFEARRAY *SafeArrayCreate(VARTYPE vt, UINT dims, SAFEARRAYBOUND *bounds) {
    const ULONG size = element_size(vt);
    if (dims == 0 || dims > 60 || bounds == nullptr || size == 0)
        return nullptr;
    SAFEARRAY *array = alloc_descriptor(dims);
    if (array == nullptr)
        return nullptr;
    array->cDims = static_cast<USHORT>(dims);
    array->fFeatures = features_for(vt);
    array->cbElements = size;
    for (UINT i = 0; i < dims; ++i)
        array->rgsabound[i] = bounds[dims - 1 - i];
    vartype_slot(array) = vt;
    if (!alloc_data(array)) {
        free_descriptor(array);
        return nullptr;
    }
    return array;
}

SAFEARRAY *SafeArrayCreateVector(VARTYPE vt, LONG lower, ULONG count) {
    SAFEARRAYBOUND bound{count, lower};
    return SafeArrayCreate(vt, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY *array) {
    if (array == nullptr)
        return S_OK;
    if (array->cLocks > 0)
        return DISP_E_ARRAYISLOCKED;
    const size_t cells = cell_count(array);
    if (cells != std::numeric_limits<size_t>::max())
        release_cells(array, 0, cells);
    std::free(array->pvData);
    free_descriptor(array);
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY *array, SAFEARRAY **copy) {
    if (copy == nullptr)
        return E_INVALIDARG;
    *copy = nullptr;
    if (array == nullptr)
        return S_OK;
    SAFEARRAY *fresh = alloc_descriptor(array->cDims);
    if (fresh == nullptr)
        return E_OUTOFMEMORY;
    std::memcpy(fresh, array, descriptor_bytes(array->cDims));
    fresh->cLocks = 0;
    fresh->pvData = nullptr;
    fresh->fFeatures = static_cast<USHORT>(array->fFeatures & ~(FADF_AUTO | FADF_STATIC | FADF_EMBEDDED));
    vartype_slot(fresh) = vartype_slot(array);
    if (!alloc_data(fresh)) {
        free_descriptor(fresh);
        return E_OUTOFMEMORY;
    }
    const HRESULT hr = copy_cells(array, fresh, cell_count(array));
    if (hr != S_OK) {
        SafeArrayDestroy(fresh);
        return hr;
    }
    *copy = fresh;
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY *array) { return array == nullptr ? 0 : array->cDims; }

UINT SafeArrayGetElemsize(SAFEARRAY *array) { return array == nullptr ? 0 : array->cbElements; }

HRESULT SafeArrayGetVartype(SAFEARRAY *array, VARTYPE *vt) {
    if (array == nullptr || vt == nullptr)
        return E_INVALIDARG;
    if (!(array->fFeatures & FADF_HAVEVARTYPE)) {
        if (array->fFeatures & FADF_UNKNOWN)
            *vt = VT_UNKNOWN;
        else if (array->fFeatures & FADF_DISPATCH)
            *vt = VT_DISPATCH;
        else
            return E_INVALIDARG;
        return S_OK;
    }
    *vt = vartype_slot(array);
    return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY *array, UINT dim, LONG *lower) {
    if (array == nullptr || lower == nullptr)
        return E_INVALIDARG;
    if (dim < 1 || dim > array->cDims)
        return DISP_E_BADINDEX;
    *lower = array->rgsabound[array->cDims - dim].lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY *array, UINT dim, LONG *upper) {
    if (array == nullptr || upper == nullptr)
        return E_INVALIDARG;
    if (dim < 1 || dim > array->cDims)
        return DISP_E_BADINDEX;
    const SAFEARRAYBOUND &b = array->rgsabound[array->cDims - dim];
    *upper = static_cast<LONG>(static_cast<int64_t>(b.lLbound) + b.cElements - 1);
    return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY *array) {
    if (array == nullptr)
        return E_INVALIDARG;
    if (array->cLocks == 0xFFFF) // Windows caps the lock count at 16 bits
        return E_UNEXPECTED;
    ++array->cLocks;
    return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY *array) {
    if (array == nullptr)
        return E_INVALIDARG;
    if (array->cLocks == 0)
        return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY *array, void **data) {
    if (array == nullptr || data == nullptr)
        return E_INVALIDARG;
    const HRESULT hr = SafeArrayLock(array);
    *data = hr == S_OK ? array->pvData : nullptr;
    return hr;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY *array) { return SafeArrayUnlock(array); }

HRESULT SafeArrayPtrOfIndex(SAFEARRAY *array, LONG *indices, void **element) {
    if (array == nullptr || indices == nullptr || element == nullptr)
        return E_INVALIDARG;
    size_t cell = 0;
    size_t stride = 1;
    for (UINT dim = 1; dim <= array->cDims; ++dim) {
        const SAFEARRAYBOUND &b = array->rgsabound[array->cDims - dim];
        const int64_t offset = static_cast<int64_t>(indices[dim - 1]) - b.lLbound;
        if (offset < 0 || offset >= static_cast<int64_t>(b.cElements))
            return DISP_E_BADINDEX;
        cell += static_cast<size_t>(offset) * stride;
        stride *= b.cElements;
    }
    *element = static_cast<char *>(array->pvData) + cell * array->cbElements;
    return S_OK;
}

// Copies one element out; strings and variants are duplicated, so the caller
// owns what it receives.
HRESULT SafeArrayGetElement(SAFEARRAY *array, LONG *indices, void *value) {
    if (array == nullptr || indices == nullptr || value == nullptr)
        return E_INVALIDARG;
    const ElementLock lock(array);
    if (lock.status() != S_OK)
        return lock.status();
    void *cell;
    HRESULT hr = SafeArrayPtrOfIndex(array, indices, &cell);
    if (hr != S_OK)
        return hr;
    if (array->fFeatures & FADF_BSTR) {
        BSTR text;
        std::memcpy(&text, cell, sizeof text);
        BSTR copy = nullptr;
        if (text != nullptr) {
            copy = SysAllocStringByteLen(reinterpret_cast<const char *>(text), SysStringByteLen(text));
            if (copy == nullptr)
                return E_OUTOFMEMORY;
        }
        std::memcpy(value, &copy, sizeof copy);
    } else if (array->fFeatures & FADF_VARIANT) {
        VariantInit(static_cast<VARIANT *>(value));
        hr = VariantCopy(static_cast<VARIANT *>(value), static_cast<const VARIANT *>(cell));
    } else {
        std::memcpy(value, cell, array->cbElements);
    }
    return hr;
}

// Stores one element. For string arrays `value` is the BSTR itself (not a
// pointer to it), for variant arrays a VARIANT*, otherwise a pointer to the
// element's bytes; strings and variants are copied.
HRESULT SafeArrayPutElement(SAFEARRAY *array, LONG *indices, void *value) {
    if (array == nullptr || indices == nullptr)
        return E_INVALIDARG;
    const ElementLock lock(array);
    if (lock.status() != S_OK)
        return lock.status();
    void *cell;
    const HRESULT hr = SafeArrayPtrOfIndex(array, indices, &cell);
    if (hr != S_OK)
        return hr;
    if (array->fFeatures & FADF_BSTR) {
        auto text = static_cast<BSTR>(value);
        BSTR copy = nullptr;
        if (text != nullptr) {
            copy = SysAllocStringByteLen(reinterpret_cast<const char *>(text), SysStringByteLen(text));
            if (copy == nullptr)
                return E_OUTOFMEMORY;
        }
        BSTR old;
        std::memcpy(&old, cell, sizeof old);
        SysFreeString(old);
        std::memcpy(cell, &copy, sizeof copy);
        return S_OK;
    }
    if (value == nullptr)
        return E_INVALIDARG;
    if (array->fFeatures & FADF_VARIANT)
        return VariantCopy(static_cast<VARIANT *>(cell), static_cast<const VARIANT *>(value));
    std::memcpy(cell, value, array->cbElements);
    return S_OK;
}

// Changes the last dimension (the rightmost one a VB `ReDim Preserve` may
// change). Elements cut off are released; new ones start zeroed.
HRESULT SafeArrayRedim(SAFEARRAY *array, SAFEARRAYBOUND *last_dim) {
    if (array == nullptr || last_dim == nullptr)
        return E_INVALIDARG;
    if (array->cLocks > 0)
        return DISP_E_ARRAYISLOCKED;
    if (array->fFeatures & FADF_FIXEDSIZE)
        return E_INVALIDARG;
    const size_t old_cells = cell_count(array);
    const SAFEARRAYBOUND saved = array->rgsabound[0];
    array->rgsabound[0] = *last_dim;
    const size_t new_cells = cell_count(array);
    size_t new_bytes;
    if (!block_bytes(array, new_cells, &new_bytes)) {
        array->rgsabound[0] = saved;
        return E_OUTOFMEMORY;
    }
    if (new_cells < old_cells) {
        release_cells(array, new_cells, old_cells - new_cells);
    }
    void *data = std::realloc(array->pvData, new_bytes == 0 ? 1 : new_bytes);
    if (data == nullptr) {
        array->rgsabound[0] = saved; // cells beyond new_cells already released: zero them
        if (new_cells < old_cells)
            std::memset(static_cast<char *>(array->pvData) + new_cells * array->cbElements, 0,
                        (old_cells - new_cells) * array->cbElements);
        return E_OUTOFMEMORY;
    }
    array->pvData = data;
    if (new_cells > old_cells)
        std::memset(static_cast<char *>(data) + old_cells * array->cbElements, 0,
                    (new_cells - old_cells) * array->cbElements);
    return S_OK;
}

} // extern "C"
