#!/usr/bin/env python3
"""Check that the source tree keeps its layers (docs/architecture.md).

Usage: check_layers.py SRC_DIR [--self-test]

- Client data is reached only through the frame: outside src/frame and src/platform no
  file calls the OLE subset (SafeArray*, Sys*, Variant*) or reads a VARIANT's fields (V_*).
- Only src/platform/win32 includes <windows.h> (or another Windows system header); only
  src/platform includes POSIX system headers (the win32 files use the Windows C runtime's
  sys/stat.h and fcntl.h).
- The lower layers do not reach up: src/common includes nothing of the library's, src/runtime
  only common and platform, src/platform only common, and the frame no family.

--self-test runs the checks on small damaged files and fails if a damage goes unnoticed.
"""
import os
import re
import sys

OLE_CALL = re.compile(r"\b(SafeArray[A-Z]\w*|Sys[A-Z]\w*|Variant[A-Z]\w*)\s*\(|\bV_[A-Z0-9_]+\s*\(")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)
WINDOWS_HEADERS = {"windows.h", "winsock2.h", "ws2tcpip.h", "shlobj.h", "oleauto.h", "objbase.h",
                   "shellapi.h", "winreg.h", "winbase.h", "winnls.h", "io.h", "direct.h"}
POSIX_HEADERS = re.compile(r"^(unistd\.h|fcntl\.h|dirent\.h|dlfcn\.h|pthread\.h|pwd\.h|termios\.h|"
                           r"langinfo\.h|sys/.*|netinet/.*|arpa/.*|netdb\.h|poll\.h|spawn\.h|fnmatch\.h|"
                           r"glob\.h|utime\.h|sched\.h|signal\.h)$")
FAMILIES = {"strings", "convert", "datetime", "arrays", "stores", "math", "files", "streams",
            "compress", "crypto", "system"}
MAY_INCLUDE = {
    "common": set(),
    "platform": {"common", "platform"},
    "runtime": {"common", "platform", "runtime"},
    "frame": {"common", "platform", "runtime", "frame", "brindle"},
}


def strip_comments(text):
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    return re.sub(r"//[^\n]*", "", text)


def check_text(rel, text):
    """Problems of one file, `rel` its path below src/ with forward slashes."""
    problems = []
    top = rel.split("/", 1)[0]
    code = strip_comments(text)
    if top not in ("frame", "platform"):
        for m in OLE_CALL.finditer(code):
            line = code.count("\n", 0, m.start()) + 1
            problems.append(f"{rel}:{line}: calls {m.group(0).rstrip('( ')} (client data goes through the frame)")
    for m in INCLUDE.finditer(code):
        kind, header = m.groups()
        line = code.count("\n", 0, m.start()) + 1
        if kind == "<":
            low = header.lower()
            if low in WINDOWS_HEADERS and not rel.startswith("platform/win32/"):
                problems.append(f"{rel}:{line}: includes <{header}> outside platform/win32")
            # The Windows C runtime has some of these too (sys/stat.h, fcntl.h):
            # the win32 platform files may use them.
            if POSIX_HEADERS.match(low) and not rel.startswith("platform/"):
                problems.append(f"{rel}:{line}: includes <{header}> outside platform/")
            continue
        used = header.split("/", 1)[0] if "/" in header else top
        allowed = MAY_INCLUDE.get(top)
        if allowed is not None and used not in allowed and used != "generated":
            problems.append(f'{rel}:{line}: the {top} layer includes "{header}"')
    return problems


def check_tree(src):
    problems = []
    for root, _, files in os.walk(src):
        for name in sorted(files):
            if not name.endswith((".cpp", ".h")):
                continue
            path = os.path.join(root, name)
            rel = os.path.relpath(path, src).replace(os.sep, "/")
            with open(path, encoding="utf-8", errors="replace") as f:
                problems += check_text(rel, f.read())
    return problems


DAMAGES = [
    ("strings/x.cpp", "void f(BSTR s) { SysFreeString(s); }"),
    ("arrays/x.cpp", "long n; SafeArrayGetUBound(a, 1, &n);"),
    ("convert/x.cpp", "int t = V_VT(&v);"),
    ("files/x.cpp", "#include <windows.h>"),
    ("strings/x.cpp", "#include <unistd.h>"),
    ("datetime/x.cpp", "#include <sys/stat.h>"),
    ("runtime/x.cpp", '#include "frame/frame.h"'),
    ("common/x.h", '#include "platform/file.h"'),
    ("frame/x.cpp", '#include "strings/fields.h"'),
]
FINE = [
    ("frame/x.cpp", "void f(BSTR s) { SysFreeString(s); }"),
    ("strings/x.cpp", "// SysFreeString(s) in a comment\n#include \"frame/frame.h\"\n#include <string>"),
    ("platform/posix/x.cpp", "#include <unistd.h>"),
]


def self_test():
    failed = [f"damage not caught: {rel}: {text}" for rel, text in DAMAGES if not check_text(rel, text)]
    failed += [f"refused: {rel}: {text}" for rel, text in FINE if check_text(rel, text)]
    return failed


def main(argv):
    args = [a for a in argv[1:] if not a.startswith("--")]
    if len(args) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    problems = check_tree(args[0])
    for p in problems:
        print(p)
    print(f"{len(problems)} problems in the layers")
    failed = bool(problems)
    if "--self-test" in argv:
        for p in self_test():
            print(f"self-test: {p}")
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
