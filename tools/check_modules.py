#!/usr/bin/env python3
"""Check the generated declaration modules against the one list of exports.

Usage: check_modules.py EXPORTS_DIR GENERATED_DIR [--self-test]

Reads the list (exports/*.bas) and the modules BRINDLE32P.bas (VB6) and
BRINDLE64P.bas (VBA7) with a reader of its own (not the generator's), and
requires:

  - every export declared exactly once in the VB6 module (Lib
    "BRINDLE32P.dll") and exactly once in each branch of the VBA7 module's
    "#If Win64" (Lib "BRINDLE64P.dll", then "BRINDLE32P.dll"), under its own
    name or with an Alias naming it, and nothing else declared from the DLLs;
  - the arguments (count, names, ByVal/ByRef, arrays, Optional, types) and
    the result type of each Declare equal the list's; in the VB6 module a
    LongPtr of the list is a Long;
  - a comment line (the first sentence of the export's reference text) right
    above every Declare of the library;
  - PtrSafe on every Declare of the VBA7 module, on none of the VB6 module,
    and no LongPtr or LongLong anywhere in the VB6 module;
  - every record Type of the list declared once in each module, fields equal;
  - one module per family under vb6/ and vba7/ declaring exactly that family's
    exports, a BrindleCore.bas with the loader, and every record once per
    dialect, beside the exports that use it or in BrindleCore.bas;
  - what VB itself refuses: lines longer than 1023 characters, more than 24
    line continuations in one statement, a Declare or Type after the first
    procedure, unbalanced #If blocks, a name that is a VB keyword used
    without an Alias, lines not ended by CR LF.

--self-test also damages the modules in memory in ways the checks must
catch (a dropped PtrSafe, a LongPtr in VB6, a missing or doubled Declare, a
changed argument type, ...) and fails if any damage goes unnoticed.
"""
import os
import re
import subprocess
import sys
import tempfile

KEYWORDS = {w.lower() for w in """
    And As Boolean ByRef Byte ByVal Call Case Close Const Currency Date Declare Dim Do Double
    Each Else ElseIf End Enum Eqv Erase Error Event Exit False For Friend Function Get Global
    GoSub GoTo If Imp Implements In Input Integer Is Let Like Lock Long LongLong LongPtr Loop
    LSet Me Mod New Next Not Nothing Null On Open Option Optional Or ParamArray Preserve Print
    Private PtrSafe Public Put RaiseEvent ReDim Rem Resume Return RSet Select Set Single Static
    Step Stop String Sub Then To True Type TypeOf Until Variant Wend While With WithEvents
    Write Xor""".split()}

DECLARE = re.compile(
    r'^(?:(Public|Private)\s+)?Declare\s+(PtrSafe\s+)?(Function|Sub)\s+(\w+)\s+Lib\s+"([^"]*)"'
    r'(?:\s+Alias\s+"([^"]*)")?\s*\((.*)\)\s*(?:As\s+(\w+))?\s*$', re.I)
LIST_DECLARE = re.compile(r"^Declare\s+(Function|Sub)\s+(\w+)\s*\((.*)\)\s*(?:As\s+(\w+))?\s*$", re.I)
ARG = re.compile(r"^(Optional\s+)?(?:(ByVal|ByRef)\s+)?(\w+)\s*(\(\s*\))?\s+As\s+(\w+)(\s*=.*)?$", re.I)
TYPE_START = re.compile(r"^(?:(?:Public|Private)\s+)?Type\s+(\w+)\s*$", re.I)
TYPE_END = re.compile(r"^End\s+Type\s*$", re.I)
PROCEDURE = re.compile(r"^(?:(?:Public|Private|Friend)\s+)?(?:Static\s+)?(?:Function|Sub|Property)\s+\w+", re.I)


class Problems(list):
    def add(self, text):
        self.append(text)


def strip_comment(line):
    """The line without a trailing ' comment (quotes in strings respected)."""
    in_string = False
    for i, c in enumerate(line):
        if c == '"':
            in_string = not in_string
        elif c == "'" and not in_string:
            return line[:i]
    return line


def statements(text):
    """(first line number, physical line count, text) per logical statement."""
    out, pending, start, count = [], "", 0, 0
    for number, line in enumerate(text.split("\n"), 1):
        line = strip_comment(line.rstrip("\r"))
        if not pending:
            start, count = number, 0
        count += 1
        if line.rstrip().endswith(" _"):
            pending += line.rstrip()[:-2] + " "
            continue
        joined = (pending + line).strip()
        pending = ""
        if joined:
            out.append((start, count, joined))
    return out


def parse_args(text, where, problems):
    args = []
    for piece in [p.strip() for p in text.split(",")] if text.strip() else []:
        m = ARG.match(piece)
        if not m:
            problems.add(f"{where}: cannot read argument '{piece}'")
            continue
        optional, passing, name, array, vbtype, default = m.groups()
        args.append((bool(optional), (passing or "ByRef").lower(), name.lower(), bool(array),
                     vbtype.lower(), (default or "").replace(" ", "")))
    return args


def read_list(directory, problems, families=None):
    decls, records = {}, {}
    for fname in sorted(f for f in os.listdir(directory) if f.endswith(".bas")):
        with open(os.path.join(directory, fname), encoding="utf-8") as f:
            text = f.read()
        record = None
        for number, _, st in statements(text):
            where = f"{fname}:{number}"
            if record is not None:
                if TYPE_END.match(st):
                    record = None
                else:
                    records[record].append(" ".join(st.split()).lower())
                continue
            m = TYPE_START.match(st)
            if m:
                record = m.group(1)
                records[record] = []
                continue
            m = LIST_DECLARE.match(st)
            if not m:
                problems.add(f"{where}: not a Declare line")
                continue
            kind, name, args, result = m.groups()
            decls[name] = (kind.lower(), parse_args(args, where, problems), (result or "").lower())
            if families is not None:
                families[name] = fname.split("_", 1)[0]
    return decls, records


def vb6_type(t):
    return "long" if t == "longptr" else t


def check_module(text, label, decls, records, vb6, problems):
    def bad(number, what):
        problems.add(f"{label}:{number}: {what}")

    lines = text.split("\n")
    if not text.endswith("\r\n"):
        bad(len(lines), "the module does not end with CR LF")
    for number, line in enumerate(lines[:-1], 1):
        if not line.endswith("\r"):
            bad(number, "line not ended by CR LF")
        if len(line.rstrip("\r")) > 1023:
            bad(number, "longer than the 1023 characters VB accepts")
    # Each Declare of the library carries the first sentence of its reference
    # text as the comment right above it, for the VB editor to show.
    for number, line in enumerate(lines[1:], 2):
        if re.match(r'\s*Declare\b.*\bLib\s+"BRINDLE', line, re.I) and \
                not lines[number - 2].lstrip().startswith("'"):
            bad(number, "a Declare without its comment line above it")
    module_name = os.path.splitext(os.path.basename(label))[0]
    if not lines or lines[0].rstrip("\r") != f'Attribute VB_Name = "{module_name}"':
        bad(1, f'the first line must be Attribute VB_Name = "{module_name}"')

    expected_libs = [("", "brindle32p.dll")] if vb6 else [("win64", "brindle64p.dll"), ("else", "brindle32p.dll")]
    seen = {branch: {} for branch, _ in expected_libs}
    found_records = {}
    branch, depth, record, procedures = "", 0, None, 0
    for number, count, st in statements(text):
        if count > 25:
            bad(number, f"{count - 1} line continuations (VB accepts 24)")
        if vb6 and re.search(r"\bLong(Ptr|Long)\b", st, re.I):
            bad(number, "LongPtr/LongLong in the VB6 module")
        low = st.lower()
        if low.startswith("#if "):
            depth += 1
            if depth == 1 and not procedures:
                branch = "win64" if re.match(r"#if\s+win64\s+then$", low) else "?"
            continue
        if low.startswith("#else"):
            if depth == 1 and not procedures:
                branch = "else"
            continue
        if low.startswith("#end if"):
            depth -= 1
            if depth < 0:
                bad(number, "#End If without #If")
            if depth == 0 and not procedures:
                branch = ""
            continue
        if record is not None:
            if TYPE_END.match(st):
                record = None
            else:
                found_records[record][-1].append(" ".join(st.split()).lower())
            continue
        m = TYPE_START.match(st)
        if m:
            if procedures:
                bad(number, f"Type {m.group(1)} after the first procedure")
            record = m.group(1)
            found_records.setdefault(record, []).append([])
            continue
        if PROCEDURE.match(st):
            procedures += 1
            continue
        m = DECLARE.match(st)
        if not m:
            if low.startswith("declare") or " declare " in f" {low} ":
                bad(number, "unreadable Declare")
            continue
        scope, ptrsafe, kind, vbname, lib, alias, args, result = m.groups()
        if procedures:
            bad(number, f"Declare {vbname} after the first procedure")
        if vb6 and ptrsafe:
            bad(number, f"PtrSafe in the VB6 module ({vbname})")
        if not vb6 and not ptrsafe:
            bad(number, f"Declare {vbname} without PtrSafe")
        if vbname.lower() in KEYWORDS:
            bad(number, f"{vbname} is a VB keyword")
        entry = alias if alias is not None else vbname
        if not lib.lower().startswith("brindle"):
            if (scope or "").lower() != "private":
                bad(number, f"helper Declare {vbname} must be Private")
            continue
        want_lib = dict(expected_libs).get(branch)
        if want_lib is None:
            bad(number, f"Declare {vbname} outside the expected #If Win64 branches")
            continue
        if lib.lower() != want_lib:
            bad(number, f'{vbname}: Lib "{lib}" where "{want_lib}" belongs')
        if entry not in decls:
            bad(number, f"{entry} is not in the list of exports")
            continue
        if entry in seen[branch]:
            bad(number, f"{entry} declared again (first at line {seen[branch][entry]})")
            continue
        seen[branch][entry] = number
        want_kind, want_args, want_result = decls[entry]
        got_args = parse_args(args, f"{label}:{number}", problems)
        if vb6:
            want_args = [a[:4] + (vb6_type(a[4]),) + a[5:] for a in want_args]
            want_result = vb6_type(want_result)
        if kind.lower() != want_kind:
            bad(number, f"{entry}: {kind} where the list has {want_kind}")
        if got_args != want_args:
            bad(number, f"{entry}: arguments {got_args} differ from the list's {want_args}")
        if (result or "").lower() != want_result:
            bad(number, f"{entry}: result {result} where the list has {want_result}")
    if depth != 0:
        bad(len(lines), "#If without #End If")
    for branch_name, _ in expected_libs:
        for name in decls:
            if name not in seen[branch_name]:
                where = f" in the {branch_name} branch" if branch_name else ""
                problems.add(f"{label}: {name} is not declared{where}")
    for name, fields in records.items():
        got = found_records.get(name, [])
        if len(got) != 1:
            problems.add(f"{label}: record Type {name} declared {len(got)} times")
            continue
        want = [re.sub(r"\blongptr\b", "long", f) for f in fields] if vb6 else fields
        if got[0] != want:
            problems.add(f"{label}: Type {name} fields {got[0]} differ from the list's {want}")
    for name in found_records:
        if name not in records:
            problems.add(f"{label}: Type {name} is not in the list")


def declared_records(text):
    """Names of the Type blocks of a module."""
    return [m.group(1) for _, _, st in statements(text) for m in [TYPE_START.match(st)] if m]


def check_family_modules(generated, decls, records, families, problems):
    """vb6/ and vba7/: one module per family declaring exactly that family's exports,
    and BrindleCore.bas with the loader; every record once per dialect, in the module of
    the exports that use it or in BrindleCore.bas."""
    for folder, vb6 in (("vb6", True), ("vba7", False)):
        path = os.path.join(generated, folder)
        names = sorted(f for f in os.listdir(path) if f.endswith(".bas")) if os.path.isdir(path) else []
        if "BrindleCore.bas" not in names:
            problems.add(f"{folder}: no BrindleCore.bas")
            continue
        texts = {}
        for name in names:
            with open(os.path.join(path, name), encoding="utf-8", newline="") as f:
                texts[name] = f.read()
        homes = {}
        for name, text in texts.items():
            for record in declared_records(text):
                if record in homes:
                    problems.add(f"{folder}: Type {record} in {homes[record]} and {name}")
                homes[record] = name
        covered = set()
        for name, text in texts.items():
            label = f"{folder}/{name}"
            own = {r: f for r, f in records.items() if homes.get(r) == name}
            if name == "BrindleCore.bas":
                if not re.search(r"^Public Function BrindleLoad\b", text, re.M):
                    problems.add(f"{label}: no BrindleLoad")
                check_module(text, label, {}, own, vb6, problems)
                continue
            declared = {m.group(6) or m.group(4) for _, _, st in statements(text)
                        for m in [DECLARE.match(st)] if m}
            keys = {families.get(d) for d in declared}
            if len(keys) != 1:
                problems.add(f"{label}: declares exports of {len(keys)} families")
                continue
            key = keys.pop()
            members = {d: v for d, v in decls.items() if families[d] == key}
            covered |= set(members)
            check_module(text, label, members, own, vb6, problems)
            for d in members:
                for arg in members[d][1]:
                    used = next((r for r in records if r.lower() == arg[4]), None)
                    if used and homes.get(used) not in (name, "BrindleCore.bas"):
                        problems.add(f"{label}: {d} takes Type {used}, declared in neither it nor BrindleCore.bas")
        for d in sorted(set(decls) - covered):
            problems.add(f"{folder}: {d} is in no family module")
        for r in sorted(set(records) - set(homes)):
            problems.add(f"{folder}: Type {r} is in no module")


def check(exports_dir, modules, problems, generated=None):
    families = {}
    decls, records = read_list(exports_dir, problems, families)
    if not decls:
        problems.add("the list of exports is empty")
    check_module(modules["BRINDLE32P.bas"], "BRINDLE32P.bas", decls, records, True, problems)
    check_module(modules["BRINDLE64P.bas"], "BRINDLE64P.bas", decls, records, False, problems)
    if generated is not None:
        check_family_modules(generated, decls, records, families, problems)
    return decls


def first_declare(text, lib):
    """The first one-line Declare from `lib` that takes arguments and returns a value."""
    m = re.search(r'^.*Lib "' + lib + r'"[^(\r]*\([^)\r]+\) As \w+\r$', text, re.M)
    return m.group(0)


def other_type(line):
    """The line with its first argument's type replaced by another one."""
    def swap(m):
        return "As Integer" if m.group(1) != "Integer" else "As Long"
    head, _, args = line.partition("(")
    return head + "(" + re.sub(r"As (\w+)", swap, args, count=1)


def damages(modules, decls):
    """(description, module, damaged text): each must be caught."""
    vb6, vba7 = modules["BRINDLE32P.bas"], modules["BRINDLE64P.bas"]
    line6 = first_declare(vb6, "BRINDLE32P.dll")
    line7 = first_declare(vba7, "BRINDLE64P.dll")
    line7_32 = first_declare(vba7, "BRINDLE32P.dll")
    name = re.search(r"(?:Function|Sub) (\w+)", line6).group(1)
    out = [
        ("a PtrSafe dropped", "BRINDLE64P.bas", vba7.replace(line7, line7.replace("PtrSafe ", ""), 1)),
        ("PtrSafe in VB6", "BRINDLE32P.bas", vb6.replace(line6, line6.replace("Declare ", "Declare PtrSafe ", 1), 1)),
        ("a Declare missing", "BRINDLE32P.bas", vb6.replace(line6 + "\n", "", 1)),
        ("a Declare doubled", "BRINDLE32P.bas", vb6.replace(line6, line6 + "\n" + line6, 1)),
        ("a Declare missing from the 32-bit branch", "BRINDLE64P.bas", vba7.replace(line7_32 + "\n", "", 1)),
        ("the DLLs of the branches swapped", "BRINDLE64P.bas",
         vba7.replace("BRINDLE64P.dll", "@@").replace('Lib "BRINDLE32P.dll"', 'Lib "BRINDLE64P.dll"')
             .replace("@@", "BRINDLE32P.dll")),
        ("an argument type changed", "BRINDLE32P.bas", vb6.replace(line6, other_type(line6), 1)),
        ("ByVal dropped or added", "BRINDLE32P.bas", vb6.replace(line6, line6.replace("(", "(ByVal ", 1) if "(ByVal " not in line6 else line6.replace("(ByVal ", "(", 1), 1)),
        ("the result type changed", "BRINDLE64P.bas", vba7.replace(line7, re.sub(r"\) As \w+", ") As Variant", line7) if ") As " in line7 else line7 + " As Long", 1)),
        ("a LongPtr in VB6", "BRINDLE32P.bas", vb6.replace(line6, line6.replace(" As Long", " As LongPtr", 1) if " As Long" in line6 else line6.replace("(", "(ByVal Extra As LongPtr, ", 1), 1)),
        ("an export renamed without Alias", "BRINDLE32P.bas", vb6.replace(f" {name} Lib", f" {name}X Lib", 1)),
        ("LF line ends", "BRINDLE32P.bas", vb6.replace("\r\n", "\n")),
        ("a Declare after a procedure", "BRINDLE32P.bas", vb6.replace(line6 + "\n", "", 1) + line6 + "\n"),
        ("an unbalanced #If", "BRINDLE64P.bas", vba7.replace("#End If\r\n", "", 1)),
        ("a line VB cannot read", "BRINDLE32P.bas", vb6.replace(line6, line6 + " " * 1100, 1)),
        ("a Declare's comment dropped", "BRINDLE32P.bas", re.sub(r"'[^\r\n]*\r\n(" + re.escape(line6) + ")", r"\1", vb6, count=1)),
    ]
    return out


# A list with what the real one may not have yet: records with pointer-sized
# fields, a Sub, an export named like a VB keyword, a Declare too long for
# one line, arrays, Optional and Any.
SYNTHETIC_LIST = """' Synthetic: a list with what the real one may not have yet.

' A span.
Type Span
    Start As Long
    Data As LongPtr
    Name As String * 16
End Type
' A pair of spans.
Type Pair
    Left As Span
    Right As Double
End Type
' Clears a span.
Declare Sub cClearSpan (S As Span)
' Opens a handle.
Declare Function Open (ByVal Handle As LongPtr, Buffer As Any) As LongPtr
' Takes every type there is.
Declare Function cWide (ByVal Alpha As Long, ByVal Beta As Double, Gamma As String, ByVal Delta As String, _
    Epsilon() As Long, ByVal Zeta As Currency, ByVal Eta As Date, Theta As Variant, ByVal Iota As Boolean, _
    ByVal Kappa As Byte, ByVal Lambda As Single, ByVal Mu As Integer, P As Pair, Optional ByVal Nu As Long) As Double
"""


def synthetic_self_test():
    """Generates modules from SYNTHETIC_LIST and checks them; problems or []."""
    here = os.path.dirname(os.path.abspath(__file__))
    with tempfile.TemporaryDirectory() as tmp:
        exports = os.path.join(tmp, "exports")
        out = os.path.join(tmp, "out")
        os.makedirs(exports)
        with open(os.path.join(exports, "strings_synthetic.bas"), "w", encoding="utf-8") as f:
            f.write(SYNTHETIC_LIST)
        subprocess.run([sys.executable, os.path.join(here, "gen_exports.py"), exports, out], check=True)
        modules = {}
        for name in ("BRINDLE32P.bas", "BRINDLE64P.bas"):
            with open(os.path.join(out, name), encoding="utf-8", newline="") as f:
                modules[name] = f.read()
        problems = Problems()
        check(exports, modules, problems, out)
        if 'Alias "Open"' not in modules["BRINDLE32P.bas"]:
            problems.add("synthetic: the keyword-named export has no Alias")
        if " _\r\n" not in modules["BRINDLE64P.bas"]:
            problems.add("synthetic: the long Declare was not wrapped")
        return problems


def main(argv):
    args = [a for a in argv[1:] if not a.startswith("--")]
    if len(args) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    exports_dir, generated = args
    modules = {}
    for name in ("BRINDLE32P.bas", "BRINDLE64P.bas"):
        with open(os.path.join(generated, name), encoding="utf-8", newline="") as f:
            modules[name] = f.read()
    problems = Problems()
    decls = check(exports_dir, modules, problems, generated)
    for p in problems:
        print(p)
    print(f"{len(decls)} exports, {len(problems)} problems in the declaration modules")
    failed = bool(problems)
    if "--self-test" in argv:
        for what, module, text in damages(modules, decls):
            damaged = dict(modules, **{module: text})
            found = Problems()
            check(exports_dir, damaged, found)
            if text == modules[module] or not found:
                print(f"self-test: damage not caught: {what}")
                failed = True
        for p in synthetic_self_test():
            print(f"self-test: {p}")
            failed = True
        print("self-test: every damage caught" if not failed else "self-test failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
