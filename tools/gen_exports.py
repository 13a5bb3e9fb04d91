#!/usr/bin/env python3
"""Generate everything that names an export from the one list in exports/*.bas.

Usage: gen_exports.py EXPORTS_DIR OUTPUT_DIR [EXTRA_EXPORTS] [--version X.Y.Z]

Reads every .bas file of EXPORTS_DIR in name order (Declare lines and Type
blocks, VB syntax, no Lib clause) and writes into OUTPUT_DIR:

  brindle/exports.h   C prototypes (the compiler checks each definition)
  exports.txt         "name stack-bytes" per export, for the export test
  BRINDLE32P.def      32-bit module definition: plain names bound to name@N
  BRINDLE64P.def      64-bit module definition
  BRINDLE32P.bas      VB6 declaration module
  BRINDLE64P.bas      VBA7 declaration module (PtrSafe, LongPtr)
  vb6/*.bas, vba7/*.bas  one module per family, and BrindleCore.bas (tools/vb_modules.py)
  reference.html      the searchable reference (tools/reference_html.py)
  brindle32p.map      Linux version script: the exports, plus the names listed
                      in EXTRA_EXPORTS (the OLE subset), and nothing else

Files are rewritten only when their content changes, so the build does not
recompile everything after an unrelated edit of the list.
"""
import os
import re
import sys

import reference_html
import reference_text
import vb_modules

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
    """Yield (line number, text, comment block) per statement, ' _' continuations joined.

    The comment block is the run of ' lines directly above the statement (no empty
    line between), as written: the statement's reference text.
    """
    pending, start, block = "", 0, []
    with open(path, encoding="utf-8") as f:
        for number, raw in enumerate(f, 1):
            line = raw.rstrip("\n")
            if not pending:
                start = number
            stripped = line.strip()
            if stripped.startswith("'"):
                block.append(stripped)
                continue
            if not stripped and not pending:
                block = []
                continue
            if stripped.endswith(" _"):
                pending += stripped[:-2] + " "
                continue
            text = (pending + stripped).strip()
            pending = ""
            if text:
                yield start, text, block
                block = []


def file_intro(path):
    """The family introduction: the first comment block of the file when an empty line
    ends it (comment lines, quote included)."""
    block = []
    with open(path, encoding="utf-8") as f:
        for raw in f:
            stripped = raw.strip()
            if stripped.startswith("'"):
                block.append(stripped)
            else:
                return block if not stripped else []
    return []


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
    """The list: (exports, records, record_docs, intros).

    exports: dicts of kind, name, args, result, args_text, file, line, doc;
    records: name -> field lines; record_docs: name -> dict(file, line, doc);
    intros: file name -> the family introduction's comment lines.
    """
    files = sorted(f for f in os.listdir(directory) if f.endswith(".bas"))
    decls, records, record_docs, intros, seen = [], {}, {}, {}, {}
    # First pass: record names, so that arguments may name records of any file.
    for fname in files:
        path = os.path.join(directory, fname)
        intros[fname] = file_intro(path)
        in_type = None
        for number, text, doc in logical_lines(path):
            if in_type is None:
                m = TYPE_START.match(text)
                if m:
                    in_type = m.group(1)
                    if in_type in records:
                        raise ListError(f"{fname}:{number}: Type {in_type} is already declared")
                    records[in_type] = []
                    record_docs[in_type] = dict(file=fname, line=number, doc=doc)
            elif TYPE_END.match(text):
                in_type = None
            else:
                records[in_type].append(text)
    for fname in files:
        in_type = False
        for number, text, doc in logical_lines(os.path.join(directory, fname)):
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
                              args_text=args_text.strip(), file=fname, line=number, doc=doc))
    return decls, records, record_docs, intros


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


def main(argv):
    version = "0.0.0"
    if "--version" in argv:
        i = argv.index("--version")
        version = argv[i + 1]
        argv = argv[:i] + argv[i + 2:]
    if len(argv) not in (3, 4):
        print(__doc__, file=sys.stderr)
        return 2
    exports_dir, out_dir = argv[1], argv[2]
    extra = []
    if len(argv) == 4:
        with open(argv[3], encoding="utf-8") as f:
            extra = [l.strip() for l in f if l.strip() and not l.startswith("#")]
    try:
        decls, records, record_docs, intros = read_list(exports_dir)
        # Missing or ill-fitting reference text is the checker's to report
        # (tools/check_reference.py); the build goes on with what there is.
        entries = reference_text.build(decls, records, record_docs, [])
        summaries = {}
        for e in entries:
            summaries[e.name] = e.summary
            for name, remark in e.follower_notes.items():
                summaries[name] = f"{e.summary} {remark[:1].upper()}{remark[1:]}".strip()
        texts = vb_modules.modules(decls, records, summaries)
        page = reference_html.render(entries, decls, records, intros, version)
    except (ListError, ValueError) as e:
        print(f"gen_exports: {e}", file=sys.stderr)
        return 1
    write_if_changed(os.path.join(out_dir, "brindle", "exports.h"), c_header(decls, records))
    write_if_changed(os.path.join(out_dir, "exports.txt"),
                     "".join(f"{d['name']} {stack_bytes(d)}\n" for d in decls))
    write_if_changed(os.path.join(out_dir, "BRINDLE32P.def"), def_file(decls, "BRINDLE32P", True))
    write_if_changed(os.path.join(out_dir, "BRINDLE64P.def"), def_file(decls, "BRINDLE64P", False))
    for path, text in texts.items():
        write_if_changed(os.path.join(out_dir, path), text)
    write_if_changed(os.path.join(out_dir, "reference.html"), page)
    names = [d["name"] for d in decls] + extra
    write_if_changed(os.path.join(out_dir, "brindle32p.map"),
                     "{\n  global:\n" + "".join(f"    {n};\n" for n in names) + "  local: *;\n};\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
