#!/usr/bin/env python3
"""Generate the test programs' client side of the Windows DLL.

Usage: gen_dll_client.py EXPORTS_DIR OUTPUT_FILE

For every export of the one list (exports/*.bas) writes a definition of the
prototype in brindle/exports.h that looks the export up by its plain name in
the DLL (LoadLibrary + GetProcAddress, once) and calls it through a pointer of
the type the list declares. The test programs therefore call the DLL exactly
as a VB client does: by plain name, with the list's stack layout. A missing
DLL or export is a test failure and a zero result, never a crash.
"""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import gen_exports  # noqa: E402

HEAD = """// Generated from the .bas files of exports/ by tools/gen_dll_client.py. Do not edit.
#include "platform/win32/ole_system.h"

#include <brindle/exports.h>

#include <gtest/gtest.h>

#ifndef BRINDLE_DLL_FILE
#error "BRINDLE_DLL_FILE names the DLL under test"
#endif

namespace {

// The DLL, loaded once from the program's own folder.
HMODULE brindle_dll() {
    static const HMODULE dll = LoadLibraryA(BRINDLE_DLL_FILE);
    return dll;
}

void *brindle_export(const char *name) {
    const HMODULE dll = brindle_dll();
    void *f = dll == nullptr ? nullptr : reinterpret_cast<void *>(GetProcAddress(dll, name));
    if (dll == nullptr)
        ADD_FAILURE() << "cannot load " BRINDLE_DLL_FILE " (error " << GetLastError() << ") for " << name;
    else if (f == nullptr)
        ADD_FAILURE() << BRINDLE_DLL_FILE " does not export " << name;
    return f;
}

} // namespace

extern "C" {
"""


def thunk(d):
    ret = gen_exports.RESULTS[d["result"]] if d["kind"] == "Function" else "void"
    params = ", ".join(f"{a['c']} {gen_exports.c_name(a['name'])}" for a in d["args"]) or "void"
    names = ", ".join(gen_exports.c_name(a["name"]) for a in d["args"])
    name = d["name"]
    fail = "return {};" if ret != "void" else "return;"
    call = f"brindle_fn({names})"
    body = f"return {call};" if ret != "void" else f"{call};"
    return (
        f"{ret} BRINDLE_CALL {name}({params}) {{\n"
        f"    static const auto brindle_fn = reinterpret_cast<decltype(&{name})>(brindle_export(\"{name}\"));\n"
        f"    if (brindle_fn == nullptr)\n"
        f"        {fail}\n"
        f"    {body}\n"
        f"}}\n"
    )


def main(argv):
    if len(argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        decls = gen_exports.read_list(argv[1])[0]
    except gen_exports.ListError as e:
        print(f"gen_dll_client: {e}", file=sys.stderr)
        return 1
    text = HEAD + "\n".join(thunk(d) for d in decls) + "\n} // extern \"C\"\n"
    gen_exports.write_if_changed(argv[2], text)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
