#include "frame/variants.h"

#include <cstring>

namespace brindle::frame {

namespace {

// Variant types whose value a coercion reads from the Variant itself.
bool holds_own_value(VARTYPE vt) {
    switch (vt) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_ERROR:
    case VT_BOOL:
    case VT_DECIMAL:
    case VT_I1:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_I8:
    case VT_UI8:
    case VT_INT:
    case VT_UINT:
        return true;
    default:
        return false;
    }
}

} // namespace

VARIANT empty_variant() noexcept {
    VARIANT result;
    VariantInit(&result);
    return result;
}

VARIANT long_variant(int32_t value) noexcept {
    VARIANT result;
    VariantInit(&result);
    V_VT(&result) = VT_I4;
    V_I4(&result) = value;
    return result;
}

std::optional<VARIANT> variant_in_record(const void *bytes) noexcept {
    VARIANT v;
    std::memcpy(&v, bytes, sizeof v);
    if (!holds_own_value(V_VT(&v)))
        return std::nullopt;
    return v;
}

namespace {

// A local VARIANT holding the caller's value coerced to `vt`; cleared on
// every path. `ok()` is false when the coercion failed.
class CoercedCopy {
  public:
    CoercedCopy(const VARIANT *source, VARTYPE vt) noexcept {
        VariantInit(&value_);
        if (source == nullptr)
            return;
        if (VariantCopy(&value_, source) != S_OK)
            return;
        // Already of the wanted type: nothing to coerce.
        ok_ = V_VT(&value_) == vt || (VariantChangeType(&value_, &value_, 0, vt) == S_OK && V_VT(&value_) == vt);
    }
    // The copy is this object's own and holds only what VariantCopy and
    // VariantChangeType put there, which VariantClear always releases.
    ~CoercedCopy() { (void)VariantClear(&value_); }
    CoercedCopy(const CoercedCopy &) = delete;
    CoercedCopy &operator=(const CoercedCopy &) = delete;

    bool ok() const noexcept { return ok_; }
    const VARIANT &value() const noexcept { return value_; }

  private:
    VARIANT value_;
    bool ok_ = false;
};

} // namespace

int32_t variant_to_long(const VARIANT *value) noexcept {
    CoercedCopy copy(value, VT_I4);
    return copy.ok() ? V_I4(&copy.value()) : 0;
}

double variant_to_double(const VARIANT *value) noexcept {
    CoercedCopy copy(value, VT_R8);
    return copy.ok() ? V_R8(&copy.value()) : 0.0;
}

std::string variant_to_bytes(const VARIANT *value) {
    CoercedCopy copy(value, VT_BSTR);
    if (!copy.ok())
        return {};
    BSTR text = V_BSTR(&copy.value());
    return platform::wide_to_ansi(text, SysStringLen(text));
}

std::optional<double> variant_number(const VARIANT *value, VARTYPE vt) noexcept {
    CoercedCopy copy(value, vt);
    if (!copy.ok())
        return std::nullopt;
    const VARIANT &v = copy.value();
    switch (vt) {
    case VT_BOOL:
        return V_BOOL(&v);
    case VT_I1:
        return V_I1(&v);
    case VT_I2:
        return V_I2(&v);
    case VT_I4:
        return V_I4(&v);
    case VT_R4:
        return V_R4(&v);
    case VT_R8:
        return V_R8(&v);
    case VT_DATE:
        return V_DATE(&v);
    case VT_CY: {
        double d = 0.0;
        if (VarR8FromCy(V_CY(&v), &d) != S_OK)
            return std::nullopt;
        return d;
    }
    default:
        return std::nullopt;
    }
}

std::optional<std::basic_string<OLECHAR>> variant_wide(const VARIANT *value) {
    CoercedCopy copy(value, VT_BSTR);
    if (!copy.ok())
        return std::nullopt;
    BSTR text = V_BSTR(&copy.value());
    if (text == nullptr)
        return std::basic_string<OLECHAR>();
    return std::basic_string<OLECHAR>(text, SysStringLen(text));
}

} // namespace brindle::frame

namespace brindle::frame {

namespace {

VARTYPE element_vartype(ElementKind kind) noexcept {
    switch (kind) {
    case ElementKind::Currency:
        return VT_CY;
    case ElementKind::Double:
        return VT_R8;
    case ElementKind::Single:
        return VT_R4;
    case ElementKind::Long:
        return VT_I4;
    case ElementKind::Integer:
        return VT_I2;
    case ElementKind::Byte:
        return VT_UI1;
    case ElementKind::Text:
        break;
    }
    return VT_BSTR;
}

// The bytes of a number inside a VARIANT of its own type.
void *number_bytes(VARIANT &v, ElementKind kind) noexcept {
    switch (kind) {
    case ElementKind::Currency:
        return &V_CY(&v);
    case ElementKind::Double:
        return &V_R8(&v);
    case ElementKind::Single:
        return &V_R4(&v);
    case ElementKind::Long:
        return &V_I4(&v);
    case ElementKind::Integer:
        return &V_I2(&v);
    case ElementKind::Byte:
        return &V_UI1(&v);
    case ElementKind::Text:
        break;
    }
    return nullptr;
}

} // namespace

size_t number_size(ElementKind kind) noexcept {
    switch (kind) {
    case ElementKind::Currency:
    case ElementKind::Double:
        return 8;
    case ElementKind::Single:
    case ElementKind::Long:
        return 4;
    case ElementKind::Integer:
        return 2;
    case ElementKind::Byte:
        return 1;
    case ElementKind::Text:
        break;
    }
    return 0;
}

VARIANT element_variant(ElementKind kind, const uint8_t *bytes, size_t size) noexcept {
    VARIANT result;
    VariantInit(&result);
    if (kind == ElementKind::Text) {
        const void *zero = std::memchr(bytes, 0, size);
        const size_t length = zero ? static_cast<size_t>(static_cast<const uint8_t *>(zero) - bytes) : size;
        BSTR text = platform::ansi_to_wide(reinterpret_cast<const char *>(bytes), length);
        if (text == nullptr)
            return result;
        V_VT(&result) = VT_BSTR;
        V_BSTR(&result) = text;
        return result;
    }
    if (size < number_size(kind))
        return result;
    V_VT(&result) = element_vartype(kind);
    std::memcpy(number_bytes(result, kind), bytes, number_size(kind));
    return result;
}

bool element_from_variant(ElementKind kind, const VARIANT *value, uint8_t *out, size_t size) {
    if (kind == ElementKind::Text) {
        const std::optional<std::basic_string<OLECHAR>> wide = variant_wide(value);
        if (!wide)
            return false;
        const std::string text = platform::wide_to_ansi(wide->data(), wide->size());
        const size_t n = text.size() < size ? text.size() : size;
        std::memcpy(out, text.data(), n);
        std::memset(out + n, ' ', size - n);
        return true;
    }
    if (size < number_size(kind))
        return false;
    CoercedCopy copy(value, element_vartype(kind));
    if (!copy.ok())
        return false;
    VARIANT v = copy.value(); // a number: a plain copy of its bytes is safe
    std::memcpy(out, number_bytes(v, kind), number_size(kind));
    return true;
}

} // namespace brindle::frame
