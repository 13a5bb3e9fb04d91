/*
 * A small client of the library, written the way a VB program uses it: load
 * the library, look each export up by its plain name, build the arguments
 * with the library's own OLE helpers, call, print what went in and came back.
 *
 *   brindle_demo [path-to-library]
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
#endif

/* The OLE helpers, as a client finds them: in the library on Linux, in the
 * system on Windows. */
typedef BSTR(CALL *AllocByteLen)(const char *, UINT); /* __stdcall on Windows, as oleaut32 */
typedef void(CALL *FreeString)(BSTR);
typedef UINT(CALL *ByteLen)(BSTR);

static AllocByteLen alloc_bytes;
static FreeString free_string;
static ByteLen byte_len;

/* Signatures of the exports called here, as the declaration module has them. */
typedef BSTR(CALL *StrFn1)(BSTR *);                 /* cReverse(Txt As String) */
typedef BSTR(CALL *StrFnSepN)(BSTR *, BSTR *, int32_t); /* cGetIn(Txt, Sep, ByVal n) */
typedef int32_t(CALL *InStrFn)(int32_t, BSTR, BSTR, int16_t);
typedef BSTR(CALL *ExtractFn)(BSTR, BSTR, BSTR, int16_t);
typedef int32_t(CALL *SetSepFn)(BSTR *);
typedef BSTR(CALL *GetFn)(BSTR *, int32_t);
typedef int16_t(CALL *ChangeFn)(BSTR *, BSTR *, BSTR *); /* cChangeChars(Txt, From, To): in place */

static void *library;

static void *need(const char *name) {
    void *f = LOOKUP(library, name);
    if (f == NULL) {
        fprintf(stderr, "demo: export %s not found\n", name);
        return NULL;
    }
    return f;
}

static BSTR make(const char *text) { return alloc_bytes(text, (UINT)strlen(text)); }

static void show(const char *label, BSTR s) {
    printf("%s\"%.*s\" (%u bytes)\n", label, (int)byte_len(s), (const char *)s, byte_len(s));
}

int main(int argc, char **argv) {
    const char *path = argc > 1 ? argv[1] : "./" BRINDLE_LIBRARY_FILE;
    library = LOAD(path);
    if (library == NULL) {
        fprintf(stderr, "demo: cannot load %s\n", path);
        return 1;
    }
#ifdef _WIN32
    {
        HMODULE ole = LoadLibraryA("oleaut32.dll");
        alloc_bytes = (AllocByteLen)(void *)GetProcAddress(ole, "SysAllocStringByteLen");
        free_string = (FreeString)(void *)GetProcAddress(ole, "SysFreeString");
        byte_len = (ByteLen)(void *)GetProcAddress(ole, "SysStringByteLen");
    }
#else
    *(void **)&alloc_bytes = need("SysAllocStringByteLen");
    *(void **)&free_string = need("SysFreeString");
    *(void **)&byte_len = need("SysStringByteLen");
#endif
    StrFn1 reverse, scroll_left;
    StrFnSepN get_in, get_in_part;
    InStrFn in_str;
    ExtractFn extract;
    SetSepFn set_separator;
    GetFn get;
    *(void **)&reverse = need("cReverse");
    *(void **)&scroll_left = need("cScrollL");
    *(void **)&get_in = need("cGetIn");
    *(void **)&get_in_part = need("cGetInPart");
    *(void **)&in_str = need("cInStr");
    *(void **)&extract = need("cExtract");
    *(void **)&set_separator = need("cSetDefaultSeparator");
    *(void **)&get = need("cGet");
    if (!alloc_bytes || !free_string || !byte_len || !reverse || !scroll_left || !get_in || !get_in_part ||
        !in_str || !extract || !set_separator || !get)
        return 1;

    printf("Loaded %s\n\n", path);

    BSTR text = make("Hello, Brindle");
    show("cReverse          sent ", text);
    BSTR r = reverse(&text);
    show("                  got  ", r);
    free_string(r);

    BSTR csv = make("north,south,east,west");
    BSTR comma = make(",");
    show("cGetIn(.., \",\", 3) sent ", csv);
    r = get_in(&csv, &comma, 3);
    show("                  got  ", r);
    free_string(r);

    BSTR tag_text = make("<title>Annual report</title>");
    BSTR open = make("<TITLE>"), close = make("</title>");
    show("cExtract           sent ", tag_text);
    r = extract(tag_text, open, close, 0);
    show("  (case-insensitive) got ", r);
    free_string(r);

    BSTR find = make("brindle");
    printf("cInStr(1, text, \"brindle\", 0)  = %d\n", in_str(1, text, find, 0));
    printf("cInStr(1, text, \"brindle\", -1) = %d (case-sensitive: not found)\n", in_str(1, text, find, -1));

    /* By reference: the library reads the caller's own variable. */
    BSTR semicolon = make(";");
    BSTR fields = make("a;b;c");
    printf("cSetDefaultSeparator(\";\") = %d\n", set_separator(&semicolon));
    r = get(&fields, 2);
    show("cGet(\"a;b;c\", 2)   got  ", r);
    free_string(r);

    /* Nothing to do: the caller's own handle comes back, not a copy. */
    BSTR one = make("x");
    r = scroll_left(&one);
    printf("cScrollL(\"x\") returned %s handle\n", r == one ? "the caller's own" : "a new");
    if (r != one)
        free_string(r);
    BSTR plain = make("no-separator");
    BSTR eq = make("=");
    r = get_in_part(&plain, &eq, 0);
    printf("cGetInPart(\"no-separator\", \"=\", 0) returned %s handle\n", r == plain ? "the caller's own" : "a new");
    if (r != plain)
        free_string(r);

    /* In place: cChangeChars edits the bytes of the caller's own string. */
    ChangeFn change_chars;
    *(void **)&change_chars = need("cChangeChars");
    if (!change_chars)
        return 1;
    BSTR edited = make("2026-11-21 05:54");
    BSTR from = make("- :"), to = make("/.h");
    BSTR before = edited;
    show("cChangeChars(\"- :\" -> \"/.h\") before ", edited);
    printf("cChangeChars returned %d\n", change_chars(&edited, &from, &to));
    show("                                after  ", edited);
    printf("the same handle afterwards: %s\n", edited == before ? "yes" : "no");
    free_string(edited);
    free_string(from);
    free_string(to);

    BSTR all[] = {text, csv, comma, tag_text, open, close, find, semicolon, fields, one, plain, eq};
    for (size_t i = 0; i < sizeof all / sizeof all[0]; ++i)
        free_string(all[i]);
    return 0;
}
