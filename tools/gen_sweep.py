#!/usr/bin/env python3
"""Generate the adversarial sweep's table of exports from the one list.

Usage: gen_sweep.py EXPORTS_DIR OUTPUT_FILE

For every export of exports/*.bas writes one entry of the sweep's table
(tests/sweep/sweep.h): the export's name and family file, the kind of each
argument, the kind of its result, and a call thunk that takes the arguments
from the sweep's cells and hands the result to the sweep. For every record a
mirror of its layout is written, with the offsets of its String fields, so that
the sweep can fill it with random bytes or with string handles. An argument or
record field of a kind the sweep does not know stops the build: decide how to
sweep it (tests/sweep/sweep.cpp) and add it here.
"""
import os
import re
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import gen_exports  # noqa: E402

# VB type -> (sweep kind suffix, C type of one value)
SCALAR_KINDS = {
    "Integer": ("I16", "int16_t"),
    "Long": ("I32", "int32_t"),
    "Single": ("F32", "float"),
    "Double": ("F64", "double"),
    "Byte": ("U8", "uint8_t"),
    "Boolean": ("Bool", "VARIANT_BOOL"),
    "Currency": ("Cy", "CY"),
    "Date": ("Date", "DATE"),
    "String": ("Str", "BSTR"),
    "Variant": ("Var", "VARIANT"),
}
ARRAY_KINDS = {
    "Integer": "ArrI16", "Long": "ArrI32", "Single": "ArrF32", "Double": "ArrF64",
    "Byte": "ArrU8", "Boolean": "ArrBool", "Currency": "ArrCy", "Date": "ArrDate",
    "String": "ArrStr", "Variant": "ArrVar", "Any": "ArrAny",
}
RESULT_KINDS = {
    "Integer": "Number", "Long": "Number", "Single": "Number", "Double": "Number",
    "Byte": "Number", "Boolean": "Number", "Currency": "Number", "Date": "Number", "LongPtr": "Number",
    "String": "String", "Variant": "Variant",
}
FIELD = re.compile(r"^(\w+)\s*(?:\(\s*(?:(-?\d+)\s+To\s+)?(-?\d+)\s*\))?\s+As\s+(\w+)(?:\s*\*\s*(\d+))?$",
                   re.IGNORECASE)

# A variable passed "As Any" by reference (the bytes of an element of a store,
# say) is given a zeroed buffer this long: more than any element can take.
ANY_RECORD = "SweepAnyBuffer"
ANY_BYTES = 65536

MAX_ARGS = 8  # kMaxArgs of tests/sweep/sweep.h

ARG_TYPE = re.compile(r"As\s+(\w+)$", re.IGNORECASE)


class SweepError(Exception):
    pass


def arg_kind(decl, arg, records):
    vbtype = ARG_TYPE.search(arg["vb"]).group(1)
    where = f"{decl['file']}:{decl['line']} {decl['name']}({arg['name']})"
    if arg["c"] == "SAFEARRAY**":
        if vbtype not in ARRAY_KINDS:
            raise SweepError(f"{where}: the sweep has no arrays of {vbtype}")
        return ARRAY_KINDS[vbtype], "SAFEARRAY*", True, None
    if vbtype in records:
        return "Record", None, True, vbtype
    if vbtype == "Any" and arg["c"].endswith("*"):
        return "Record", None, True, ANY_RECORD
    if vbtype == "LongPtr" and not arg["c"].endswith("*"):
        # A window handle or the like by value: the Long pool, sign-extended.
        return "I32", "int32_t", False, None
    if vbtype not in SCALAR_KINDS:
        raise SweepError(f"{where}: the sweep does not know how to pass {vbtype}")
    suffix, ctype = SCALAR_KINDS[vbtype]
    byref = arg["c"].endswith("*")
    if vbtype == "Variant" and not byref:
        raise SweepError(f"{where}: a Variant by value")
    if vbtype == "Variant":
        return "VarRef", ctype, True, None
    return suffix + ("Ref" if byref else ""), ctype, byref, None


def record_mirror(name, fields):
    members, strings = [], []
    for text in fields:
        m = FIELD.match(text.strip())
        if not m:
            raise SweepError(f"record {name}: cannot read field '{text}'")
        fname, low, high, vbtype, fixed = m.groups()
        if fixed is not None:
            # A fixed-length String is its bytes in the record, no handle.
            if vbtype.lower() != "string" or high is not None:
                raise SweepError(f"record {name}: cannot read field '{text}'")
            members.append(f"    char {gen_exports.c_name(fname)}[{int(fixed)}];")
            continue
        if vbtype not in SCALAR_KINDS or vbtype == "Variant":
            raise SweepError(f"record {name}: the sweep does not know fields of {vbtype}")
        ctype = SCALAR_KINDS[vbtype][1]
        count = ""
        if high is not None:
            n = int(high) - int(low or 0) + 1
            if n <= 0:
                raise SweepError(f"record {name}: empty field {fname}")
            count = f"[{n}]"
            if vbtype == "String":
                raise SweepError(f"record {name}: arrays of strings in a record")
        members.append(f"    {ctype} {gen_exports.c_name(fname)}{count};")
        if vbtype == "String":
            strings.append(fname)
    body = "\n".join(members)
    offs = ", ".join(f"offsetof(SweepRecord_{name}, {gen_exports.c_name(f)})" for f in strings)
    return (
        # The client's layouts: members aligned to at most 4 bytes on 32-bit
        # builds, naturally (8-byte members, string handles among them, to 8)
        # on 64-bit ones, as common/record_layout.h gives them.
        f"#if INTPTR_MAX == INT32_MAX\n#pragma pack(push, 4)\n#endif\n"
        f"struct SweepRecord_{name} {{\n{body}\n}};\n"
        f"#if INTPTR_MAX == INT32_MAX\n#pragma pack(pop)\n#endif\n"
        f"const size_t kStrings_{name}[] = {{{offs or 'SIZE_MAX'}}};\n"
        f"const RecordInfo kRecord_{name} = {{\"{name}\", sizeof(SweepRecord_{name}), "
        f"kStrings_{name}, {len(strings)}}};\n"
    )


def thunk(decl, kinds):
    exprs = []
    for i, (a, (kind, ctype, byref, rec)) in enumerate(zip(decl["args"], kinds)):
        if kind == "Record" and rec == ANY_RECORD:
            exprs.append(f"c[{i}]")
        elif kind == "Record":
            exprs.append(f"static_cast<struct {rec} *>(c[{i}])")
        elif byref:
            exprs.append(f"static_cast<{ctype} *>(c[{i}])")
        else:
            exprs.append(f"*static_cast<{ctype} *>(c[{i}])")
    call = f"{decl['name']}({', '.join(exprs)})"
    if decl["kind"] == "Sub":
        body = f"{call};"
    else:
        rk = RESULT_KINDS.get(decl["result"])
        if rk is None:
            raise SweepError(f"{decl['file']}:{decl['line']} {decl['name']}: result {decl['result']}")
        if rk == "String":
            body = f"r.string({call});"
        elif rk == "Variant":
            body = f"r.variant({call});"
        else:
            body = f"(void){call};"
    unused = "" if decl["args"] else "(void)c; "
    unused_r = "" if RESULT_KINDS.get(decl["result"]) in ("String", "Variant") else "(void)r; "
    return f"void call_{decl['name']}(void *const *c, Result &r) {{ {unused}{unused_r}{body} }}\n"


def generate(directory):
    decls, records = gen_exports.read_list(directory)[:2]
    out = [
        "// Generated from the .bas files of exports/ by tools/gen_sweep.py. Do not edit.",
        '#include "sweep/sweep.h"',
        "",
        "#include <cstddef>",
        "#include <cstdint>",
        "",
        "namespace brindle::sweep {",
        "namespace {",
        "",
    ]
    for name in sorted(records):
        out.append(record_mirror(name, records[name]))
    out.append(f"const size_t kStrings_{ANY_RECORD}[] = {{SIZE_MAX}};\n"
               f"const RecordInfo kRecord_{ANY_RECORD} = {{\"Any\", {ANY_BYTES}, kStrings_{ANY_RECORD}, 0}};\n")
    entries = []
    for d in decls:
        kinds = [arg_kind(d, a, records) for a in d["args"]]
        if len(kinds) > MAX_ARGS:
            raise SweepError(f"{d['file']}:{d['line']} {d['name']}: more than {MAX_ARGS} arguments (kMaxArgs)")
        out.append(thunk(d, kinds))
        args = ", ".join(
            f"{{Kind::{k}, \"{a['name']}\", {('&kRecord_' + rec) if rec else 'nullptr'}}}"
            for a, (k, _, _, rec) in zip(d["args"], kinds))
        entries.append(f"    {{\"{d['name']}\", \"{d['file']}\", {len(kinds)}, {{{args}}}, call_{d['name']}}},")
    out += ["} // namespace", "", "const Export kExports[] = {"] + entries + [
        "};",
        "const size_t kExportCount = sizeof(kExports) / sizeof(kExports[0]);",
        "",
        "} // namespace brindle::sweep",
        "",
    ]
    return "\n".join(out)


def main(argv):
    if len(argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        text = generate(argv[1])
    except (gen_exports.ListError, SweepError) as e:
        print(f"gen_sweep: {e}", file=sys.stderr)
        return 1
    gen_exports.write_if_changed(argv[2], text)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
