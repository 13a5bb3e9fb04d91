#include "frame/arrays.h"

#include <cmath>
#include <limits>
#include <vector>

namespace brindle::frame {

namespace {

// Element count of one dimension from its bounds: upper - lower + 1, never
// negative.
size_t bound_count(LONG lower, LONG upper) {
    const int64_t n = static_cast<int64_t>(upper) - lower + 1;
    return n > 0 ? static_cast<size_t>(n) : 0;
}

// A buffer that holds one element of any size: on the stack for the usual
// widths, on the heap for wide records.
class ElementBuffer {
  public:
    explicit ElementBuffer(size_t size) : size_(size) {
        if (size > sizeof small_)
            large_.resize(size);
    }
    void *data() { return large_.empty() ? static_cast<void *>(small_) : large_.data(); }
    size_t size() const { return size_; }

  private:
    alignas(16) unsigned char small_[64] = {};
    std::vector<unsigned char> large_;
    size_t size_;
};

// The elements own what they point at: strings, variants, interfaces or
// records. The features are what the system's element calls go by (a string
// array's value is taken as the handle itself, a variant array's as a
// VARIANT), so they are what decides here too.
bool owns_references(const SAFEARRAY *array) {
    return (array->fFeatures & (FADF_BSTR | FADF_VARIANT | FADF_UNKNOWN | FADF_DISPATCH | FADF_RECORD | FADF_HAVEIID)) != 0;
}

// A String() array: string handles, and nothing else, in its elements.
bool holds_bstrs(SAFEARRAY *array) {
    return (array->fFeatures & (FADF_BSTR | FADF_VARIANT | FADF_UNKNOWN | FADF_DISPATCH | FADF_RECORD)) == FADF_BSTR &&
           SafeArrayGetElemsize(array) == sizeof(BSTR);
}

template <class T> T saturate(double value) {
    // Out-of-range and NaN values have no defined conversion in C++; clamp
    // them so a wrong type code stays a wrong result, not undefined behaviour.
    if (std::isnan(value))
        return T{};
    if (value <= static_cast<double>(std::numeric_limits<T>::lowest()))
        return std::numeric_limits<T>::lowest();
    if (value >= static_cast<double>(std::numeric_limits<T>::max()))
        return std::numeric_limits<T>::max();
    return static_cast<T>(value);
}

// A full index vector for SafeArrayGet/PutElement: those read one index per
// dimension, so a single subscript handed to a 2-dimensional array would be
// read past. The other dimensions stay at their lower bounds. ok() is false
// when the system would not give one of them.
class IndexVector {
  public:
    IndexVector(SAFEARRAY *array, unsigned dims, LONG first) : indices_(dims == 0 ? 1 : dims) {
        for (unsigned d = 2; d <= dims; ++d)
            if (SafeArrayGetLBound(array, d, &indices_[d - 1]) != S_OK)
                ok_ = false;
        indices_[0] = first;
    }
    bool ok() const { return ok_; }
    LONG *data() { return indices_.data(); }

  private:
    std::vector<LONG> indices_;
    bool ok_ = true;
};

// The bounds of one dimension, or false when the system will not give them.
bool bounds_of(SAFEARRAY *array, UINT dim, LONG *lower, LONG *upper) {
    return SafeArrayGetLBound(array, dim, lower) == S_OK && SafeArrayGetUBound(array, dim, upper) == S_OK;
}

// Owns a string copied out of an array, and frees it on every path.
struct OwnedString {
    BSTR text = nullptr;
    OwnedString() = default;
    OwnedString(const OwnedString &) = delete;
    OwnedString &operator=(const OwnedString &) = delete;
    ~OwnedString() { SysFreeString(text); }
};

} // namespace

std::optional<size_t> element_width(int16_t code) noexcept {
    switch (static_cast<ElementType>(code)) {
    case ElementType::Integer:
        return 2;
    case ElementType::Long:
    case ElementType::Single:
        return 4;
    case ElementType::Double:
        return 8;
    case ElementType::Byte:
        return 1;
    }
    return std::nullopt;
}

ArrayElements::ArrayElements(SAFEARRAY **ref) noexcept : array_(ref == nullptr ? nullptr : *ref) {
    LONG lower = 0, upper = -1;
    if (array_ == nullptr || SafeArrayGetDim(array_) < 1 || !bounds_of(array_, 1, &lower, &upper)) {
        array_ = nullptr;
        return;
    }
    dims_ = SafeArrayGetDim(array_);
    lower_ = lower;
    upper_ = upper;
    count_ = bound_count(lower, upper);
    element_size_ = SafeArrayGetElemsize(array_);
    references_ = owns_references(array_);
    strings_ = holds_bstrs(array_);
}

void ArrayElements::read(int32_t index, void *out, size_t out_size) const noexcept {
    // An array that holds references would hand out a copy of a string or a
    // variant here, to be taken for a number and lost.
    if (array_ == nullptr || references_ || index < lower_ || index > upper_)
        return;
    try {
        ElementBuffer buffer(element_size_ > out_size ? element_size_ : out_size);
        IndexVector at(array_, dims_, index);
        if (at.ok() && SafeArrayGetElement(array_, at.data(), buffer.data()) == S_OK)
            std::memcpy(out, buffer.data(), out_size);
    } catch (...) {
        // No memory for a wide element: the value stays T{}.
    }
}

bool ArrayElements::write(int32_t index, const void *in, size_t in_size) noexcept {
    // SafeArrayPutElement takes a string array's value as the string handle
    // itself and a variant array's as a VARIANT: a number's bytes are neither.
    if (array_ == nullptr || references_ || index < lower_ || index > upper_)
        return false;
    try {
        ElementBuffer buffer(element_size_ > in_size ? element_size_ : in_size);
        std::memcpy(buffer.data(), in, in_size);
        IndexVector at(array_, dims_, index);
        return at.ok() && SafeArrayPutElement(array_, at.data(), buffer.data()) == S_OK;
    } catch (...) {
        return false;
    }
}

std::optional<std::string> ArrayElements::get_string(int32_t index) const {
    if (array_ == nullptr || !strings_ || index < lower_ || index > upper_)
        return std::nullopt;
    IndexVector at(array_, dims_, index);
    OwnedString copy;
    if (!at.ok() || SafeArrayGetElement(array_, at.data(), &copy.text) != S_OK || copy.text == nullptr)
        return std::nullopt;
    return std::string(reinterpret_cast<const char *>(copy.text), SysStringByteLen(copy.text));
}

bool ArrayElements::put_string(int32_t index, std::string_view bytes) noexcept {
    if (array_ == nullptr || !strings_ || index < lower_ || index > upper_ || bytes.size() > 0xFFFFFFF0u)
        return false;
    try {
        IndexVector at(array_, dims_, index);
        if (!at.ok())
            return false;
        // The array keeps a copy of its own: this one is freed on every path.
        OwnedString value;
        value.text = SysAllocStringByteLen(bytes.empty() ? nullptr : bytes.data(), static_cast<UINT>(bytes.size()));
        return value.text != nullptr && SafeArrayPutElement(array_, at.data(), value.text) == S_OK;
    } catch (...) {
        return false;
    }
}

double ArrayElements::get_number(int16_t code, int32_t index) const noexcept {
    switch (static_cast<ElementType>(code)) {
    case ElementType::Integer:
        return get<int16_t>(index);
    case ElementType::Long:
        return get<int32_t>(index);
    case ElementType::Single:
        return get<float>(index);
    case ElementType::Double:
        return get<double>(index);
    case ElementType::Byte:
        return get<uint8_t>(index);
    }
    return 0.0;
}

bool ArrayElements::put_number(int16_t code, int32_t index, double value) noexcept {
    switch (static_cast<ElementType>(code)) {
    case ElementType::Integer:
        return put(index, saturate<int16_t>(value));
    case ElementType::Long:
        return put(index, saturate<int32_t>(value));
    case ElementType::Single:
        return put(index, static_cast<float>(value));
    case ElementType::Double:
        return put(index, value);
    case ElementType::Byte:
        return put(index, saturate<uint8_t>(value));
    }
    return false;
}

ArrayBlock::ArrayBlock(SAFEARRAY **ref) noexcept {
    SAFEARRAY *array = ref == nullptr ? nullptr : *ref;
    if (array == nullptr)
        return;
    dims_ = SafeArrayGetDim(array);
    if (dims_ < 1 || dims_ > 2)
        return;
    LONG lower = 0, upper = -1;
    if (!bounds_of(array, 1, &lower, &upper))
        return;
    lower1_ = lower;
    count1_ = bound_count(lower, upper);
    count2_ = 1;
    if (dims_ == 2) {
        if (!bounds_of(array, 2, &lower, &upper))
            return;
        lower2_ = lower;
        count2_ = bound_count(lower, upper);
    }
    element_size_ = SafeArrayGetElemsize(array);
    references_ = owns_references(array);
    void *data = nullptr;
    if (SafeArrayAccessData(array, &data) != S_OK)
        return;
    array_ = array; // locked from here: the destructor unlocks
    data_ = data;
    if (data_ == nullptr) // an array without elements may have no block
        count1_ = count2_ = 0;
}

ArrayBlock::~ArrayBlock() {
    // The lock is this object's own, so the release cannot be refused while
    // the descriptor is valid; a destructor has no one to report to anyway.
    if (array_ != nullptr)
        (void)SafeArrayUnaccessData(array_);
}

bool is_string_array(SAFEARRAY **ref) noexcept {
    SAFEARRAY *array = ref == nullptr ? nullptr : *ref;
    return array != nullptr && holds_bstrs(array);
}

std::optional<std::string> string_element(SAFEARRAY **ref, std::initializer_list<int32_t> indices) {
    if (!is_string_array(ref) || SafeArrayGetDim(*ref) != indices.size())
        return std::nullopt;
    SAFEARRAY *array = *ref;
    std::vector<LONG> at(indices.begin(), indices.end());
    OwnedString copy;
    if (SafeArrayGetElement(array, at.data(), &copy.text) != S_OK || copy.text == nullptr)
        return std::nullopt;
    return std::string(reinterpret_cast<const char *>(copy.text), SysStringByteLen(copy.text));
}

bool redim_last(SAFEARRAY **ref, size_t count) noexcept {
    SAFEARRAY *array = ref == nullptr ? nullptr : *ref;
    const UINT dims = SafeArrayGetDim(array);
    if (dims < 1 || count > 0x7FFFFFFFu)
        return false;
    SAFEARRAYBOUND bound{static_cast<ULONG>(count), 0};
    return SafeArrayGetLBound(array, dims, &bound.lLbound) == S_OK && SafeArrayRedim(array, &bound) == S_OK;
}

WholeArray::WholeArray(SAFEARRAY **ref) noexcept {
    SAFEARRAY *array = ref == nullptr ? nullptr : *ref;
    if (array == nullptr)
        return;
    const UINT dims = SafeArrayGetDim(array);
    if (dims < 1)
        return;
    size_t count = 1;
    for (UINT d = 1; d <= dims; ++d) {
        LONG lower = 0, upper = -1;
        if (!bounds_of(array, d, &lower, &upper))
            return;
        if (__builtin_mul_overflow(count, bound_count(lower, upper), &count))
            return;
    }
    element_size_ = SafeArrayGetElemsize(array);
    size_t total = 0;
    if (__builtin_mul_overflow(count, element_size_, &total))
        return;
    references_ = owns_references(array);
    strings_ = holds_bstrs(array);
    void *data = nullptr;
    if (SafeArrayAccessData(array, &data) != S_OK)
        return;
    array_ = array; // locked from here: the destructor unlocks
    data_ = data;
    elements_ = data_ == nullptr ? 0 : count;
}

WholeArray::~WholeArray() {
    if (array_ != nullptr)
        (void)SafeArrayUnaccessData(array_);
}

std::optional<std::string_view> WholeArray::string_at(size_t i) const noexcept {
    if (!strings_ || i >= elements_)
        return std::nullopt;
    const BSTR s = static_cast<const BSTR *>(data_)[i];
    if (s == nullptr)
        return std::string_view();
    return std::string_view(reinterpret_cast<const char *>(s), SysStringByteLen(s));
}

bool WholeArray::set_string(size_t i, std::string_view bytes) noexcept {
    if (!strings_ || i >= elements_ || bytes.size() > UINT32_MAX)
        return false;
    const BSTR fresh = SysAllocStringByteLen(bytes.data(), static_cast<UINT>(bytes.size()));
    if (fresh == nullptr)
        return false;
    BSTR &slot = static_cast<BSTR *>(data_)[i];
    SysFreeString(slot);
    slot = fresh;
    return true;
}

} // namespace brindle::frame
