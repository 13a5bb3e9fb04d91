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
