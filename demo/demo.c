/*
 * A short tour of the library, written the way a VB program uses it: load the
 * library, look each export up by its plain name, build the arguments with the
 * OLE helpers (the library's own on Linux, oleaut32's on Windows), call, print
 * what went in and came back. One stop per subsystem: a string, a date, a
 * sort, a checksum, a compression round trip, a path, a huge string.
 *
 *   brindle_demo [path-to-library]
 *
 * Where the answer is known (a CRC-32 of a standard sentence, a sort, a round
 * trip) the tour checks it and exits with 1 on a wrong answer, so the test
 * scripts can run it as a smoke test of a freshly built library.
 */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#ifdef _WIN32
#include <windows.h>
#include <oleauto.h>
#define LOAD(path) ((void *)LoadLibraryA(path))
#define LOOKUP(lib, name) ((void *)GetProcAddress((HMODULE)(lib), name))
#define CALL __stdcall
#else
#include <dlfcn.h>
#define LOAD(path) dlopen(path, RTLD_NOW | RTLD_LOCAL)
#define LOOKUP(lib, name) dlsym(lib, name)
#define CALL
typedef uint16_t OLECHAR;
typedef OLECHAR *BSTR;
typedef uint32_t UINT;
typedef int32_t LONG;
typedef int32_t HRESULT;
typedef uint16_t VARTYPE;
typedef struct SAFEARRAY SAFEARRAY;
#endif

/* The OLE helpers, as a client finds them: in the library on Linux, in the
 * system on Windows. */
static struct {
    BSTR(CALL *alloc_bytes)(const char *, UINT);
    void(CALL *free_string)(BSTR);
    UINT(CALL *byte_len)(BSTR);
    SAFEARRAY *(CALL *create_vector)(VARTYPE, LONG, UINT);
    HRESULT(CALL *access)(SAFEARRAY *, void **);
    HRESULT(CALL *unaccess)(SAFEARRAY *);
    HRESULT(CALL *destroy)(SAFEARRAY *);
} ole;

/* The exports called here, with the signatures their Declare lines give. */
static struct {
    BSTR(CALL *reverse)(BSTR *);                                  /* cReverse(Txt) */
    BSTR(CALL *get_in)(BSTR *, BSTR *, int32_t);                  /* cGetIn(Txt, Sep, ByVal n) */
    int32_t(CALL *in_str)(int32_t, BSTR, BSTR, int16_t);          /* cInStr(ByVal ...) */
    BSTR(CALL *spell_number)(double, int16_t, BSTR);              /* cSpellNumber(ByVal ...) */
    BSTR(CALL *format_date)(int32_t, BSTR *);                     /* cDT_FormatDate(ByVal d, Picture) */
    int32_t(CALL *add_days)(int32_t, int32_t);                    /* cDT_AddDays(ByVal d, ByVal n) */
    int16_t(CALL *sort_long)(SAFEARRAY **);                       /* cSortL(Arr() As Long) */
    double(CALL *mean_long)(SAFEARRAY **);                        /* cMeanL(Arr() As Long) */
    int32_t(CALL *crc32)(BSTR *);                                 /* cStringCRC32(Txt) */
    BSTR(CALL *compress)(BSTR *);                                 /* cStringCompress(Txt) */
    BSTR(CALL *expand)(BSTR *);                                   /* cStringExpand(Txt) */
    BSTR(CALL *truncate_path)(BSTR, int32_t);                     /* cTruncatePath(ByVal ...) */
    int32_t(CALL *huge_create)(int32_t);                          /* cHugeStrCreate(ByVal n) */
    int16_t(CALL *huge_append)(int32_t, BSTR *);                  /* cHugeStrAppend(ByVal h, Txt) */
    int32_t(CALL *huge_length)(int32_t);                          /* cHugeStrLength(ByVal h) */
    BSTR(CALL *huge_mid)(int32_t, int32_t, int32_t);              /* cHugeStrMid(ByVal h, ...) */
    int32_t(CALL *huge_free)(int32_t);                            /* cHugeStrFree(ByVal h) */
} fn;

static void *library;
static int wrong;

static int need(void *slot, const char *name) {
    void *f = LOOKUP(library, name);
    if (f == NULL)
        fprintf(stderr, "demo: export %s not found\n", name);
    memcpy(slot, &f, sizeof f);
    return f != NULL;
}

static BSTR make(const char *text) { return ole.alloc_bytes(text, (UINT)strlen(text)); }

/* Prints "label  -> "result"" and frees the result. */
static void show(const char *label, BSTR result) {
    printf("  %-46s -> \"%.*s\"\n", label, (int)ole.byte_len(result), (const char *)result);
    ole.free_string(result);
}

static void check(int ok, const char *what) {
    if (!ok) {
        printf("  !! wrong answer: %s\n", what);
        wrong = 1;
    }
}

/* Finds an OLE helper: oleaut32's on Windows, the library's own on Linux. */
static int ole_helper(void *slot, const char *name) {
#ifdef _WIN32
    void *f = (void *)GetProcAddress(GetModuleHandleA("oleaut32.dll"), name);
    memcpy(slot, &f, sizeof f);
    return f != NULL;
#else
    return need(slot, name);
#endif
}

static int load(const char *path) {
    library = LOAD(path);
    if (library == NULL) {
        fprintf(stderr, "demo: cannot load %s\n", path);
        return 0;
    }
#ifdef _WIN32
    LoadLibraryA("oleaut32.dll");
#endif
#define OLE(slot, name) ole_helper(&(slot), name)
    int ok = OLE(ole.alloc_bytes, "SysAllocStringByteLen") & OLE(ole.free_string, "SysFreeString") &
             OLE(ole.byte_len, "SysStringByteLen") & OLE(ole.create_vector, "SafeArrayCreateVector") &
             OLE(ole.access, "SafeArrayAccessData") & OLE(ole.unaccess, "SafeArrayUnaccessData") &
             OLE(ole.destroy, "SafeArrayDestroy");
    ok &= need(&fn.reverse, "cReverse") & need(&fn.get_in, "cGetIn") & need(&fn.in_str, "cInStr") &
          need(&fn.spell_number, "cSpellNumber") & need(&fn.format_date, "cDT_FormatDate") &
          need(&fn.add_days, "cDT_AddDays") & need(&fn.sort_long, "cSortL") & need(&fn.mean_long, "cMeanL") &
          need(&fn.crc32, "cStringCRC32") & need(&fn.compress, "cStringCompress") &
          need(&fn.expand, "cStringExpand") & need(&fn.truncate_path, "cTruncatePath") &
          need(&fn.huge_create, "cHugeStrCreate") & need(&fn.huge_append, "cHugeStrAppend") &
          need(&fn.huge_length, "cHugeStrLength") & need(&fn.huge_mid, "cHugeStrMid") &
          need(&fn.huge_free, "cHugeStrFree");
    return ok;
}

static void strings_stop(void) {
    printf("Strings\n");
    BSTR text = make("Hello, Brindle");
    show("cReverse(\"Hello, Brindle\")", fn.reverse(&text));
    BSTR csv = make("north,south,east,west"), comma = make(",");
    show("cGetIn(\"north,south,east,west\", \",\", 3)", fn.get_in(&csv, &comma, 3));
    BSTR find = make("brindle");
    printf("  %-46s -> %d\n", "cInStr(1, text, \"brindle\", False)", fn.in_str(1, text, find, 0));
    printf("  %-46s -> %d  (case-sensitive: not found)\n", "cInStr(1, text, \"brindle\", True)",
           fn.in_str(1, text, find, -1));
    BSTR point = make("Point");
    show("cSpellNumber(21.25, 2, \"Point\")", fn.spell_number(21.25, 2, point));
    BSTR all[] = {text, csv, comma, find, point};
    for (size_t i = 0; i < sizeof all / sizeof all[0]; ++i)
        ole.free_string(all[i]);
}

static void dates_stop(void) {
    printf("\nDates (packed YYYYMMDD)\n");
    BSTR picture = make("dddd d mmmm yyyy");
    show("cDT_FormatDate(20261124, \"dddd d mmmm yyyy\")", fn.format_date(20261124, &picture));
    int32_t later = fn.add_days(20261124, 38);
    printf("  %-46s -> %d\n", "cDT_AddDays(20261124, 38)", later);
    check(later == 20270101, "38 days after 24 November 2026 is 1 January 2027");
    show("cDT_FormatDate(that, \"dddd d mmmm yyyy\")", fn.format_date(later, &picture));
    ole.free_string(picture);
}

static void arrays_stop(void) {
    printf("\nArrays\n");
    static const int32_t values[] = {42, -7, 1999, 0, 13, -7, 365};
    enum { N = sizeof values / sizeof values[0] };
    SAFEARRAY *arr = ole.create_vector(3 /* VT_I4: Long */, 1, N);
    int32_t *data;
    if (arr == NULL || ole.access(arr, (void **)&data) != 0) {
        check(0, "SafeArrayCreateVector");
        return;
    }
    memcpy(data, values, sizeof values);
    ole.unaccess(arr);
    printf("  %-46s    ", "Dim A(1 To 7) As Long:");
    for (int i = 0; i < N; ++i)
        printf("%d ", values[i]);
    printf("\n  %-46s -> %d\n", "cSortL(A())", fn.sort_long(&arr));
    ole.access(arr, (void **)&data);
    printf("  %-46s    ", "A() afterwards:");
    int sorted = 1;
    for (int i = 0; i < N; ++i) {
        printf("%d ", data[i]);
        sorted &= i == 0 || data[i - 1] <= data[i];
    }
    ole.unaccess(arr);
    printf("\n  %-46s -> %.4f\n", "cMeanL(A())", fn.mean_long(&arr));
    check(sorted, "cSortL leaves the array in ascending order");
    ole.destroy(arr);
}

static void checksum_and_compression_stop(void) {
    printf("\nChecksums and compression\n");
    BSTR fox = make("The quick brown fox jumps over the lazy dog");
    int32_t crc = fn.crc32(&fox);
    printf("  %-46s -> &H%08X\n", "cStringCRC32(\"The quick brown fox ...\")", (unsigned)crc);
    check((uint32_t)crc == 0x414FA339u, "the CRC-32 of the fox sentence is &H414FA339");

    char text[600] = "";
    for (int i = 0; i < 12; ++i)
        strcat(text, "to be or not to be, that is the question; ");
    BSTR plain = make(text);
    BSTR packed = fn.compress(&plain);
    BSTR back = fn.expand(&packed);
    printf("  %-46s -> %u bytes\n", "cStringCompress(504 bytes of Hamlet)", ole.byte_len(packed));
    printf("  %-46s -> %u bytes, %s\n", "cStringExpand(that)", ole.byte_len(back),
           ole.byte_len(back) == ole.byte_len(plain) && memcmp(back, plain, ole.byte_len(plain)) == 0
               ? "the same text"
               : "NOT the same text");
    check(ole.byte_len(packed) < ole.byte_len(plain), "the repeated text gets shorter");
    check(ole.byte_len(back) == ole.byte_len(plain) && memcmp(back, plain, ole.byte_len(plain)) == 0,
          "expanding gives the text back");
    BSTR all[] = {fox, plain, packed, back};
    for (size_t i = 0; i < sizeof all / sizeof all[0]; ++i)
        ole.free_string(all[i]);
}

static void paths_stop(void) {
    printf("\nPaths\n");
    BSTR path = make("C:\\Projects\\Accounts 2026\\Quarterly reports\\march.xls");
    show("cTruncatePath(\"C:\\Projects\\...\\march.xls\", 40)", fn.truncate_path(path, 40));
    ole.free_string(path);
}

static void stores_stop(void) {
    printf("\nStores\n");
    int32_t h = fn.huge_create(1000000);
    printf("  %-46s -> handle %d\n", "cHugeStrCreate(1000000)", h);
    BSTR line = make("line of a long report\r\n");
    int appended = 0;
    while (appended < 1000 && fn.huge_append(h, &line) == -1)
        ++appended;
    printf("  %-46s -> %d bytes\n", "1000 x cHugeStrAppend(h, 23 bytes); Length", fn.huge_length(h));
    check(fn.huge_length(h) == 23 * 1000, "a thousand lines of 23 bytes make 23000");
    BSTR piece = fn.huge_mid(h, 23 * 500 + 1, 4);
    check(ole.byte_len(piece) == 4 && memcmp(piece, "line", 4) == 0, "line 501 starts with \"line\"");
    show("cHugeStrMid(h, 11501, 4)", piece);
    printf("  %-46s -> %d\n", "cHugeStrFree(h)", fn.huge_free(h));
    check(fn.huge_free(h) == 0, "a freed handle names nothing");
    ole.free_string(line);
}

int main(int argc, char **argv) {
    const char *path = argc > 1 ? argv[1] : "./" BRINDLE_LIBRARY_FILE;
    if (!load(path))
        return 1;
    printf("Brindle tour: %s\n\n", path);
    strings_stop();
    dates_stop();
    arrays_stop();
    checksum_and_compression_stop();
    paths_stop();
    stores_stop();
    printf("\n%s\n", wrong ? "Some answers were WRONG." : "Every checked answer was right.");
    return wrong;
}
