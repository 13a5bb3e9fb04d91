// TEMPORARY weak placeholder until ole_coerce.cpp lands. Not for commit.
#include <brindle/ole.h>
#include <cmath>
#include <cstdlib>
#include <string>
extern "C" {
__attribute__((weak)) HRESULT VariantChangeType(VARIANTARG *t, const VARIANTARG *s, USHORT, VARTYPE vt) {
    double d = 0;
    switch (V_VT(s)) {
    case VT_I4: d = V_I4(s); break;
    case VT_R8: d = V_R8(s); break;
    case VT_BSTR: { std::string a; for (UINT i = 0; i < SysStringLen(V_BSTR(s)); ++i) a += (char)V_BSTR(s)[i]; char *e; d = strtod(a.c_str(), &e); if (*e || a.empty()) return DISP_E_TYPEMISMATCH; break; }
    default: return DISP_E_TYPEMISMATCH;
    }
    VARIANT r; VariantInit(&r);
    if (vt == VT_I4) { if (std::fabs(d) > 2147483647.0) return DISP_E_OVERFLOW; V_VT(&r) = VT_I4; V_I4(&r) = (LONG)std::nearbyint(d); }
    else if (vt == VT_R8) { V_VT(&r) = VT_R8; V_R8(&r) = d; }
    else if (vt == VT_BSTR) { std::string a = std::to_string((long long)d); V_VT(&r) = VT_BSTR; V_BSTR(&r) = SysAllocStringLen(nullptr, (UINT)a.size()); for (size_t i = 0; i < a.size(); ++i) V_BSTR(&r)[i] = a[i]; }
    else return DISP_E_TYPEMISMATCH;
    VariantClear(t); *t = r; return S_OK;
}
__attribute__((weak)) HRESULT VarR8FromCy(CY v, double *r) { *r = v.int64 / 10000.0; return S_OK; }
}
