#!/usr/bin/env python3
"""Generate everything that names an export from the one list in exports/*.bas.

Usage: gen_exports.py EXPORTS_DIR OUTPUT_DIR [EXTRA_EXPORTS]

Reads every .bas file of EXPORTS_DIR in name order (Declare lines and Type
blocks, VB syntax, no Lib clause) and writes into OUTPUT_DIR:

  brindle/exports.h   C prototypes (the compiler checks each definition)
  exports.txt         "name stack-bytes" per export, for the export test
  BRINDLE32P.def      32-bit module definition: plain names bound to name@N
  BRINDLE64P.def      64-bit module definition
  BRINDLE32P.bas      VB6 declaration module
  BRINDLE64P.bas      VBA7 declaration module (PtrSafe, LongPtr)
  brindle32p.map      Linux version script: the exports, plus the names listed
                      in EXTRA_EXPORTS (the OLE subset), and nothing else

Files are rewritten only when their content changes, so the build does not
recompile everything after an unrelated edit of the list.
"""
import os
import re
import sys

SCALARS = {
    # VB type: (C by value, C by reference, 32-bit stack bytes by value)
    "Integer": ("int16_t", "int16_t*", 4),
    "Long": ("int32_t", "int32_t*", 4),
    "Single": ("float", "float*", 4),
    "Double": ("double", "double*", 8),
    "Byte": ("uint8_t", "uint8_t*", 4),
    "Boolean": ("VARIANT_BOOL", "VARIANT_BOOL*", 4),
    "Currency": ("CY", "CY*", 8),
    "Date": ("DATE", "DATE*", 8),
    "LongPtr": ("intptr_t", "intptr_t*", 4),
    "String": ("BSTR", "BSTR*", 4),
    "Variant": ("VARIANT", "VARIANT*", 16),
    "Any": ("void*", "void*", 4),
}

RESULTS = {
    "Integer": "int16_t",
    "Long": "int32_t",
    "Single": "float",
    "Double": "double",
    "Byte": "uint8_t",
    "Boolean": "VARIANT_BOOL",
    "Currency": "CY",
    "Date": "DATE",
    "LongPtr": "intptr_t",
    "String": "BSTR",
    # Returned through a hidden first argument pointing at the caller's
    # VARIANT. A __stdcall callee removes it with the others, but the
    # decorated name GCC gives it (@N) does not count it, nor does exports.txt.
    "Variant": "VARIANT",
}

DECLARE = re.compile(
    r"^Declare\s+(Function|Sub)\s+(\w+)\s*\((.*)\)\s*(?:As\s+(\w+))?\s*$", re.IGNORECASE
)
ARG = re.compile(
    r"^(?:(Optional)\s+)?(?:(ByVal|ByRef)\s+)?(\w+)\s*(\(\s*\))?\s+As\s+(\w+)$", re.IGNORECASE
)
TYPE_START = re.compile(r"^(?:Public\s+)?Type\s+(\w+)\s*$", re.IGNORECASE)
TYPE_END = re.compile(r"^End\s+Type\s*$", re.IGNORECASE)


class ListError(Exception):
    pass


def logical_lines(path):
    """Yield (line number, text) with comments removed and ' _' continuations joined."""
    pending, start = "", 0
    with open(path, encoding="utf-8") as f:
        for number, raw in enumerate(f, 1):
            line = raw.rstrip("\n")
            if not pending:
                start = number
            stripped = line.strip()
            if stripped.startswith("'"):
                continue
            if stripped.endswith(" _"):
                pending += stripped[:-2] + " "
                continue
            text = (pending + stripped).strip()
            pending = ""
            if text:
                yield start, text


# Argument names that VB allows but C or C++ reserve.
C_RESERVED = {
    "auto", "bool", "break", "case", "catch", "char", "class", "const", "continue", "default",
    "delete", "do", "double", "else", "enum", "explicit", "extern", "false", "float", "for",
    "friend", "goto", "if", "inline", "int", "long", "mutable", "namespace", "new", "operator",
    "private", "protected", "public", "register", "return", "short", "signed", "sizeof",
    "static", "struct", "switch", "template", "this", "throw", "true", "try", "typedef",
    "typename", "union", "unsigned", "using", "virtual", "void", "volatile", "while",
}


def c_name(name):
    return name + "_" if name in C_RESERVED else name


def parse_arg(text, where, records):
    m = ARG.match(text.strip())
    if not m:
        raise ListError(f"{where}: cannot read argument '{text}'")
    optional, passing, name, array, vbtype = m.groups()
    byval = (passing or "ByRef").lower() == "byval"
    if vbtype not in SCALARS and vbtype not in records:
        raise ListError(f"{where}: unknown type {vbtype}")
    if array:
        if byval:
            raise ListError(f"{where}: arrays are passed by reference")
        return dict(name=name, c="SAFEARRAY**", stack=4, vb=text.strip())
    if vbtype in records:
        if byval:
            raise ListError(f"{where}: records are passed by reference")
        return dict(name=name, c=f"struct {vbtype}*", stack=4, vb=text.strip())
    by_value, by_ref, stack = SCALARS[vbtype]
    if byval and vbtype == "Any":
        raise ListError(f"{where}: use ByVal ... As LongPtr for a pointer value")
    return dict(name=name, c=by_value if byval else by_ref, stack=stack if byval else 4,
                vb=text.strip(), optional=bool(optional))


def read_list(directory):
    files = sorted(f for f in os.listdir(directory) if f.endswith(".bas"))
    decls, records, seen = [], {}, {}
    # First pass: record names, so that arguments may name records of any file.
    for fname in files:
        in_type = None
        for number, text in logical_lines(os.path.join(directory, fname)):
            if in_type is None:
                m = TYPE_START.match(text)
                if m:
                    in_type = m.group(1)
                    records[in_type] = []
            elif TYPE_END.match(text):
                in_type = None
            else:
                records[in_type].append(text)
    for fname in files:
        in_type = False
        for number, text in logical_lines(os.path.join(directory, fname)):
            where = f"{fname}:{number}"
            if TYPE_START.match(text):
                in_type = True
                continue
            if in_type:
                in_type = not TYPE_END.match(text)
                continue
            m = DECLARE.match(text)
            if not m:
                raise ListError(f"{where}: not a Declare line: {text}")
            kind, name, args_text, result = m.groups()
            if name in seen:
                raise ListError(f"{where}: {name} is already declared at {seen[name]}")
            seen[name] = where
            if kind.lower() == "function":
                if result not in RESULTS:
                    raise ListError(f"{where}: unsupported result type {result}")
            elif result:
                raise ListError(f"{where}: a Sub has no result type")
            args = [parse_arg(a, where, records) for a in args_text.split(",")] if args_text.strip() else []
            decls.append(dict(kind=kind.capitalize(), name=name, args=args, result=result,
                              args_text=args_text.strip(), file=fname))
    return decls, records


def write_if_changed(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    try:
        with open(path, encoding="utf-8", newline="") as f:
            if f.read() == content:
                return
    except FileNotFoundError:
        pass
    with open(path, "w", encoding="utf-8", newline="") as f:
        f.write(content)


def stack_bytes(decl):
    return sum(a["stack"] for a in decl["args"])


def c_header(decls, records):
    out = [
        "/* Generated from the .bas files of exports/ by tools/gen_exports.py. Do not edit. */",
        "#ifndef BRINDLE_EXPORTS_H",
        "#define BRINDLE_EXPORTS_H",
        "",
        "/* Include the OLE types first: <brindle/ole.h> on POSIX, <oleauto.h> on Windows. */",
        "#include <stdint.h>",
        "",
        "#ifndef BRINDLE_CALL",
        "#ifdef _WIN32",
        "#define BRINDLE_CALL __stdcall",
        "#else",
        "#define BRINDLE_CALL",
        "#endif",
        "#endif",
        "",
        "#ifndef BRINDLE_API",
        "#if defined(BRINDLE_BUILDING) && defined(__GNUC__) && !defined(_WIN32)",
        '#define BRINDLE_API __attribute__((visibility("default")))',
        "#else",
        "#define BRINDLE_API",
        "#endif",
        "#endif",
        "",
        "#ifdef __cplusplus",
        'extern "C" {',
        "#endif",
        "",
    ]
    for name in sorted(records):
        out.append(f"struct {name};")
    if records:
        out.append("")
    current = None
    for d in decls:
        if d["file"] != current:
            current = d["file"]
            out.append(f"/* {current} */")
        ret = RESULTS[d["result"]] if d["kind"] == "Function" else "void"
        params = ", ".join(f"{a['c']} {c_name(a['name'])}" for a in d["args"]) or "void"
        out.append(f"BRINDLE_API {ret} BRINDLE_CALL {d['name']}({params});")
    out += ["", "#ifdef __cplusplus", "}", "#endif", "", "#endif", ""]
    return "\n".join(out)


def def_file(decls, library, decorate):
    out = [f"LIBRARY {library}.dll", "EXPORTS"]
    for d in decls:
        if decorate:
            out.append(f"    {d['name']} = {d['name']}@{stack_bytes(d)}")
        else:
            out.append(f"    {d['name']}")
    return "\n".join(out) + "\n"


def vb_args(decl, vb6):
    text = decl["args_text"]
    return re.sub(r"\bLongPtr\b", "Long", text) if vb6 else text


def vb_line(decl, lib, vb6):
    result = decl["result"]
    if vb6 and result == "LongPtr":
        result = "Long"
    head = "Declare" if vb6 else "Declare PtrSafe"
    tail = f" As {result}" if decl["kind"] == "Function" else ""
    return f'{head} {decl["kind"]} {decl["name"]} Lib "{lib}.dll" ({vb_args(decl, vb6)}){tail}'


def vb_types(records, vb6, indent=""):
    out = []
    for name, fields in records.items():
        out.append(f"{indent}Type {name}")
        for field in fields:
            f = re.sub(r"\bLongPtr\b", "Long", field) if vb6 else field
            out.append(f"{indent}    {f}")
        out.append(f"{indent}End Type")
        out.append("")
    return out


def vb6_module(decls, records):
    out = ['Attribute VB_Name = "BRINDLE32P"',
           "' Declarations of BRINDLE32P.dll for Visual Basic 4, 5 and 6.",
           "' Generated from the library's list of exports. Do not edit.",
           "Option Explicit", ""]
    out += vb_types(records, vb6=True)
    out += [vb_line(d, "BRINDLE32P", vb6=True) for d in decls]
    return "\r\n".join(out) + "\r\n"


def vba7_module(decls, records):
    out = ['Attribute VB_Name = "BRINDLE64P"',
           "' Declarations of BRINDLE64P.dll (64-bit Office) and BRINDLE32P.dll (32-bit Office)",
           "' for VBA7. Generated from the library's list of exports. Do not edit.",
           "Option Explicit", ""]
    out += vb_types(records, vb6=False)
    out.append("#If Win64 Then")
    out += ["    " + vb_line(d, "BRINDLE64P", vb6=False) for d in decls]
    out.append("#Else")
    out += ["    " + vb_line(d, "BRINDLE32P", vb6=False) for d in decls]
    out.append("#End If")
    return "\r\n".join(out) + "\r\n"


def main(argv):
    if len(argv) not in (3, 4):
        print(__doc__, file=sys.stderr)
        return 2
    exports_dir, out_dir = argv[1], argv[2]
    extra = []
    if len(argv) == 4:
        with open(argv[3], encoding="utf-8") as f:
            extra = [l.strip() for l in f if l.strip() and not l.startswith("#")]
    try:
        decls, records = read_list(exports_dir)
    except ListError as e:
        print(f"gen_exports: {e}", file=sys.stderr)
        return 1
    write_if_changed(os.path.join(out_dir, "brindle", "exports.h"), c_header(decls, records))
    write_if_changed(os.path.join(out_dir, "exports.txt"),
                     "".join(f"{d['name']} {stack_bytes(d)}\n" for d in decls))
    write_if_changed(os.path.join(out_dir, "BRINDLE32P.def"), def_file(decls, "BRINDLE32P", True))
    write_if_changed(os.path.join(out_dir, "BRINDLE64P.def"), def_file(decls, "BRINDLE64P", False))
    write_if_changed(os.path.join(out_dir, "BRINDLE32P.bas"), vb6_module(decls, records))
    write_if_changed(os.path.join(out_dir, "BRINDLE64P.bas"), vba7_module(decls, records))
    names = [d["name"] for d in decls] + extra
    write_if_changed(os.path.join(out_dir, "brindle32p.map"),
                     "{\n  global:\n" + "".join(f"    {n};\n" for n in names) + "  local: *;\n};\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
