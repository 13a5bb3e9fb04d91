// The OLE Automation types and calls on Windows come from the system
// (oleaut32 and ole32). Only the platform layer includes this header, through
// platform/ole.h.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX // std::min and std::max stay usable everywhere above
#endif

#include <windows.h>
#include <oleauto.h>

#ifdef __cplusplus
// MinGW-w64 declares the sources of VariantCopy and VariantChangeType
// without the const of the Windows SDK (the calls never write them). These
// overloads accept what the SDK accepts, so the same code compiles on POSIX,
// with MinGW-w64 and with the Microsoft compiler.
inline HRESULT VariantCopy(VARIANTARG *target, const VARIANTARG *source) {
    return ::VariantCopy(target, const_cast<VARIANTARG *>(source));
}
inline HRESULT VariantChangeType(VARIANTARG *target, const VARIANTARG *source, USHORT flags, VARTYPE vt) {
    return ::VariantChangeType(target, const_cast<VARIANTARG *>(source), flags, vt);
}
#endif
