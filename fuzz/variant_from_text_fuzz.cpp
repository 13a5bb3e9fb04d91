// VariantChangeType from a String to every type a Variant can hold (and to
// codes that name none): a defined result; on success the Variant holds the
// type asked for, on failure the target is untouched; the source is never
// changed; converting in place gives what converting into another Variant
// gives; integers, Booleans and Currency come back through their own text
// unchanged. Layout of an input: the target type's index, a byte of flags
// (bits 0, 1, 2, 4: the conversion flags; bit 6: the String by reference;
// bit 7: the text as 16-bit characters instead of bytes), then the text.
#include "fuzz_target.h"
#include "platform/ole.h"

#include <cstring>
#include <string>

namespace {

// The last ones name no type a Variant can hold: 15, 24 (VT_VOID), 72
// (VT_CLSID), and a Long array, by reference, vector and reserved.
constexpr VARTYPE kTargets[] = {VT_EMPTY, VT_NULL,    VT_I2,      VT_I4,       VT_R4,      VT_R8,  VT_CY,
                                VT_DATE,  VT_BSTR,    VT_ERROR,   VT_BOOL,     VT_DECIMAL, VT_I1,  VT_UI1,
                                VT_UI2,   VT_UI4,     VT_I8,      VT_UI8,      VT_INT,     VT_UINT, VT_VARIANT,
                                VT_DISPATCH, VT_UNKNOWN, 15,      24,          72,         0x2003, 0x4003,
                                0x1003,   0x8003};

// Bytes of the value a Variant of type vt holds (its other bytes are free).
size_t value_size(VARTYPE vt) {
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
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    default:
        return 0;
    }
}

bool round_trips(VARTYPE vt) {
    switch (vt) {
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
    case VT_CY:
        return true;
    default:
        return false;
    }
}

std::u16string text_of(BSTR b) { return b == nullptr ? std::u16string() : std::u16string(reinterpret_cast<const char16_t *>(b), SysStringLen(b)); }

// Same type and value; strings by their text, DECIMAL by its 14 value bytes.
bool same(const VARIANT &a, const VARIANT &b) {
    if (V_VT(&a) != V_VT(&b))
        return false;
    if (V_VT(&a) == VT_BSTR)
        return text_of(V_BSTR(&a)) == text_of(V_BSTR(&b));
    if (V_VT(&a) == VT_DECIMAL)
        return std::memcmp(reinterpret_cast<const char *>(&a) + 2, reinterpret_cast<const char *>(&b) + 2, 14) == 0;
    return std::memcmp(&V_UI8(&a), &V_UI8(&b), value_size(V_VT(&a))) == 0;
}

} // namespace

BRINDLE_FUZZ_TARGET(variant_from_text) {
    if (size < 2)
        return 0;
    const VARTYPE vt = kTargets[data[0] % (sizeof kTargets / sizeof kTargets[0])];
    const auto flags = static_cast<USHORT>(data[1] & 0x17);
    const bool by_ref = (data[1] & 0x40) != 0;
    std::u16string text;
    if (data[1] & 0x80) {
        for (size_t i = 2; i + 1 < size; i += 2)
            text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
    } else {
        for (size_t i = 2; i < size; ++i)
            text += static_cast<char16_t>(data[i]);
    }
    BSTR bstr = SysAllocStringLen(reinterpret_cast<const OLECHAR *>(text.data()), static_cast<UINT>(text.size()));
    FUZZ_CHECK(bstr != nullptr);
    VARIANT source;
    VariantInit(&source);
    if (by_ref) {
        V_VT(&source) = VT_BSTR | VT_BYREF;
        V_UNION(&source, pbstrVal) = &bstr;
    } else {
        V_VT(&source) = VT_BSTR;
        V_BSTR(&source) = bstr;
    }

    VARIANT out;
    VariantInit(&out);
    V_VT(&out) = VT_I4;
    V_I4(&out) = 0x5A5A5A5A;
    const HRESULT hr = VariantChangeType(&out, &source, flags, vt);
    FUZZ_CHECK(V_VT(&source) == (by_ref ? VT_BSTR | VT_BYREF : VT_BSTR));
    FUZZ_CHECK(text_of(bstr) == text);
    if (hr == S_OK) {
        FUZZ_CHECK(V_VT(&out) == vt);
        FUZZ_CHECK(vt != VT_BSTR || V_BSTR(&out) != nullptr);
    } else {
        FUZZ_CHECK(V_VT(&out) == VT_I4 && V_I4(&out) == 0x5A5A5A5A);
    }

    // In place, on a copy of the String.
    VARIANT copy;
    VariantInit(&copy);
    V_VT(&copy) = VT_BSTR;
    V_BSTR(&copy) = SysAllocStringLen(bstr, SysStringLen(bstr));
    const HRESULT in_place = VariantChangeType(&copy, &copy, flags, vt);
    FUZZ_CHECK(in_place == hr);
    FUZZ_CHECK(hr != S_OK || same(copy, out));
    VariantClear(&copy);

    if (hr == S_OK && round_trips(vt)) {
        VARIANT as_text, back;
        VariantInit(&as_text);
        VariantInit(&back);
        FUZZ_CHECK(VariantChangeType(&as_text, &out, 0, VT_BSTR) == S_OK);
        FUZZ_CHECK(VariantChangeType(&back, &as_text, 0, vt) == S_OK);
        FUZZ_CHECK(same(back, out));
        VariantClear(&as_text);
        VariantClear(&back);
    }
    VariantClear(&out);
    SysFreeString(bstr);
    return 0;
}
