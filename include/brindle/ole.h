/*
 * brindle/ole.h - the OLE Automation subset that the Linux library carries.
 *
 * On Windows these types and functions come from the system (oleaut32, ole32).
 * On POSIX the library exports its own implementation with the Windows memory
 * layouts, so that a C, C++ or Python client can build the arguments the
 * exports expect:
 *
 *   BSTR       pointer to the first byte of a buffer preceded by a 4-byte
 *              byte count and followed by a zero OLECHAR;
 *   SAFEARRAY  the Windows descriptor, bounds stored last dimension first;
 *   VARIANT    the Windows tagged value (16 bytes on 32-bit, 24 on 64-bit).
 *
 * Only what the library and its clients need is here.
 */
#ifndef BRINDLE_OLE_H
#define BRINDLE_OLE_H

#ifdef _WIN32
#error "brindle/ole.h is the POSIX subset; on Windows include <oleauto.h>"
#endif

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define BRINDLE_OLE_API __attribute__((visibility("default")))
#else
#define BRINDLE_OLE_API
#endif

typedef int32_t HRESULT;
typedef int32_t SCODE;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint16_t USHORT;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int16_t SHORT;
typedef uint8_t BYTE;
typedef uint32_t UINT;
typedef int32_t INT;
typedef uint16_t VARTYPE;
typedef int16_t VARIANT_BOOL;
typedef double DATE;
typedef uint16_t OLECHAR;
typedef OLECHAR *BSTR;
typedef uint32_t LCID;

/* Currency: a 64-bit integer scaled by 10,000. */
typedef union tagCY {
    struct {
        uint32_t Lo;
        int32_t Hi;
    } s;
    int64_t int64;
} CY;

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_UNEXPECTED ((HRESULT)0x8000FFFFL)
#define E_OUTOFMEMORY ((HRESULT)0x8007000EL)
#define E_INVALIDARG ((HRESULT)0x80070057L)
#define DISP_E_TYPEMISMATCH ((HRESULT)0x80020005L)
#define DISP_E_BADVARTYPE ((HRESULT)0x80020008L)
#define DISP_E_OVERFLOW ((HRESULT)0x8002000AL)
#define DISP_E_BADINDEX ((HRESULT)0x8002000BL)
#define DISP_E_ARRAYISLOCKED ((HRESULT)0x8002000DL)

#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)

enum VARENUM {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_RECORD = 36,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
    VT_TYPEMASK = 0x0fff
};

/* VariantChangeType flags. */
#define VARIANT_NOVALUEPROP 0x01
#define VARIANT_ALPHABOOL 0x02

/* SAFEARRAY features. */
#define FADF_AUTO 0x0001
#define FADF_STATIC 0x0002
#define FADF_EMBEDDED 0x0004
#define FADF_FIXEDSIZE 0x0010
#define FADF_RECORD 0x0020
#define FADF_HAVEIID 0x0040
#define FADF_HAVEVARTYPE 0x0080
#define FADF_BSTR 0x0100
#define FADF_UNKNOWN 0x0200
#define FADF_DISPATCH 0x0400
#define FADF_VARIANT 0x0800

typedef struct tagSAFEARRAYBOUND {
    ULONG cElements;
    LONG lLbound;
} SAFEARRAYBOUND;

typedef struct tagSAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    void *pvData;
    SAFEARRAYBOUND rgsabound[1]; /* rgsabound[0] is the LAST dimension */
} SAFEARRAY;

typedef struct tagVARIANT VARIANT;
typedef VARIANT VARIANTARG;

struct tagVARIANT {
    union {
        struct {
            VARTYPE vt;
            WORD wReserved1;
            WORD wReserved2;
            WORD wReserved3;
            union {
                int64_t llVal;
                LONG lVal;
                BYTE bVal;
                SHORT iVal;
                float fltVal;
                double dblVal;
                VARIANT_BOOL boolVal;
                SCODE scode;
                CY cyVal;
                DATE date;
                BSTR bstrVal;
                void *punkVal;
                void *pdispVal;
                SAFEARRAY *parray;
                BYTE *pbVal;
                SHORT *piVal;
                LONG *plVal;
                float *pfltVal;
                double *pdblVal;
                VARIANT_BOOL *pboolVal;
                CY *pcyVal;
                DATE *pdate;
                BSTR *pbstrVal;
                SAFEARRAY **pparray;
                VARIANT *pvarVal;
                void *byref;
                int8_t cVal;
                USHORT uiVal;
                ULONG ulVal;
                uint64_t ullVal;
                INT intVal;
                UINT uintVal;
                struct {
                    void *pvRecord;
                    void *pRecInfo;
                } brecVal;
            } u;
        } s;
    } n1;
};

/* Field access as Windows spells it, so that the same code compiles on both. */
#define V_VT(X) ((X)->n1.s.vt)
#define V_UNION(X, Y) ((X)->n1.s.u.Y)
#define V_ISBYREF(X) (V_VT(X) & VT_BYREF)
#define V_ISARRAY(X) (V_VT(X) & VT_ARRAY)
#define V_I1(X) V_UNION(X, cVal)
#define V_UI1(X) V_UNION(X, bVal)
#define V_I2(X) V_UNION(X, iVal)
#define V_UI2(X) V_UNION(X, uiVal)
#define V_I4(X) V_UNION(X, lVal)
#define V_UI4(X) V_UNION(X, ulVal)
#define V_I8(X) V_UNION(X, llVal)
#define V_UI8(X) V_UNION(X, ullVal)
#define V_INT(X) V_UNION(X, intVal)
#define V_UINT(X) V_UNION(X, uintVal)
#define V_R4(X) V_UNION(X, fltVal)
#define V_R8(X) V_UNION(X, dblVal)
#define V_CY(X) V_UNION(X, cyVal)
#define V_DATE(X) V_UNION(X, date)
#define V_BSTR(X) V_UNION(X, bstrVal)
#define V_BOOL(X) V_UNION(X, boolVal)
#define V_ERROR(X) V_UNION(X, scode)
#define V_ARRAY(X) V_UNION(X, parray)
#define V_BYREF(X) V_UNION(X, byref)
#define V_VARIANTREF(X) V_UNION(X, pvarVal)

/* Counted strings. */
BRINDLE_OLE_API BSTR SysAllocString(const OLECHAR *text);
BRINDLE_OLE_API BSTR SysAllocStringLen(const OLECHAR *text, UINT length);
BRINDLE_OLE_API BSTR SysAllocStringByteLen(const char *bytes, UINT length);
BRINDLE_OLE_API INT SysReAllocString(BSTR *target, const OLECHAR *text);
BRINDLE_OLE_API INT SysReAllocStringLen(BSTR *target, const OLECHAR *text, UINT length);
BRINDLE_OLE_API void SysFreeString(BSTR text);
BRINDLE_OLE_API UINT SysStringByteLen(BSTR text);
BRINDLE_OLE_API UINT SysStringLen(BSTR text);

/* Array descriptors. */
BRINDLE_OLE_API SAFEARRAY *SafeArrayCreate(VARTYPE vt, UINT dims, SAFEARRAYBOUND *bounds);
BRINDLE_OLE_API SAFEARRAY *SafeArrayCreateVector(VARTYPE vt, LONG lower, ULONG count);
BRINDLE_OLE_API HRESULT SafeArrayDestroy(SAFEARRAY *array);
BRINDLE_OLE_API HRESULT SafeArrayCopy(SAFEARRAY *array, SAFEARRAY **copy);
BRINDLE_OLE_API UINT SafeArrayGetDim(SAFEARRAY *array);
BRINDLE_OLE_API UINT SafeArrayGetElemsize(SAFEARRAY *array);
BRINDLE_OLE_API HRESULT SafeArrayGetLBound(SAFEARRAY *array, UINT dim, LONG *lower);
BRINDLE_OLE_API HRESULT SafeArrayGetUBound(SAFEARRAY *array, UINT dim, LONG *upper);
BRINDLE_OLE_API HRESULT SafeArrayGetVartype(SAFEARRAY *array, VARTYPE *vt);
BRINDLE_OLE_API HRESULT SafeArrayLock(SAFEARRAY *array);
BRINDLE_OLE_API HRESULT SafeArrayUnlock(SAFEARRAY *array);
BRINDLE_OLE_API HRESULT SafeArrayAccessData(SAFEARRAY *array, void **data);
BRINDLE_OLE_API HRESULT SafeArrayUnaccessData(SAFEARRAY *array);
BRINDLE_OLE_API HRESULT SafeArrayPtrOfIndex(SAFEARRAY *array, LONG *indices, void **element);
BRINDLE_OLE_API HRESULT SafeArrayGetElement(SAFEARRAY *array, LONG *indices, void *value);
BRINDLE_OLE_API HRESULT SafeArrayPutElement(SAFEARRAY *array, LONG *indices, void *value);
BRINDLE_OLE_API HRESULT SafeArrayRedim(SAFEARRAY *array, SAFEARRAYBOUND *last_dim);

/* Tagged values. */
BRINDLE_OLE_API void VariantInit(VARIANTARG *value);
BRINDLE_OLE_API HRESULT VariantClear(VARIANTARG *value);
BRINDLE_OLE_API HRESULT VariantCopy(VARIANTARG *target, const VARIANTARG *source);
BRINDLE_OLE_API HRESULT VariantChangeType(VARIANTARG *target, const VARIANTARG *source,
                                          USHORT flags, VARTYPE vt);
BRINDLE_OLE_API HRESULT VarR8FromCy(CY value, double *result);

/* COM task memory. */
BRINDLE_OLE_API void *CoTaskMemAlloc(size_t size);
BRINDLE_OLE_API void *CoTaskMemRealloc(void *block, size_t size);
BRINDLE_OLE_API void CoTaskMemFree(void *block);

#ifdef __cplusplus
}
#endif

#endif /* BRINDLE_OLE_H */
