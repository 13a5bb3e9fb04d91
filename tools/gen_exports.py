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


# Words that VB does not accept as the name of a procedure; an export named
# like one of them is declared under another name with an Alias clause.
VB_RESERVED = {
    w.lower() for w in """
    AddressOf And Any As Attribute Boolean ByRef Byte ByVal Call Case CBool CByte CCur CDate
    CDbl CDec CInt CLng CLngLng CLngPtr Close Const CSng CStr Currency CVar CVErr Date Debug
    Decimal Declare DefBool DefByte DefCur DefDate DefDbl DefDec DefInt DefLng DefLngLng
    DefLngPtr DefObj DefSng DefStr DefVar Dim Do Double Each Else ElseIf Empty End EndIf Enum
    Eqv Erase Error Event Exit False Fix For Friend Function Get Global GoSub GoTo If Imp
    Implements In Input InputB Int Integer Is LBound Len LenB Let Like Line Lock Long LongLong
    LongPtr Loop LSet Me Mid MidB Mod New Next Not Nothing Null Object On Open Option Optional
    Or ParamArray Preserve Print Private PtrSafe Public Put RaiseEvent ReDim Rem Resume Return
    RSet Seek Select Set Sgn Shared Single Spc Static Step Stop String Sub Tab Then To True
    Type TypeOf UBound Unlock Until Variant Wend While With WithEvents Write Xor
    """.split()
}
VB_IDENTIFIER = re.compile(r"^[A-Za-z][A-Za-z0-9_]{0,254}$")

# VB refuses physical lines longer than 1023 characters and statements of
# more than 25 physical lines; long Declares are wrapped well inside both.
VB_WRAP = 110


def vb_name(name):
    """The name VB declares an export under (its own, unless VB refuses it)."""
    if VB_IDENTIFIER.match(name) and name.lower() not in VB_RESERVED:
        return name
    base = re.sub(r"[^A-Za-z0-9_]", "_", name).lstrip("_") or "x"
    if not base[0].isalpha():
        base = "x" + base
    return base + "_"


def wrap_declare(head, args, tail, indent):
    """One Declare statement, continued with " _" when it is long."""
    one = f"{head}({', '.join(args)}){tail}"
    if len(indent) + len(one) <= VB_WRAP:
        return [indent + one]
    lines, current = [], f"{head}("
    for i, arg in enumerate(args):
        piece = arg + (", " if i + 1 < len(args) else f"){tail}")
        if len(current) + len(piece) > VB_WRAP and current.strip():
            lines.append(current.rstrip() + " _")
            current = "        "
        current += piece
    lines.append(current)
    if len(lines) > 24:
        raise ListError(f"{head}: too many arguments for one VB statement")
    return [indent + l for l in lines]


def split_args(text):
    return [a.strip() for a in text.split(",")] if text.strip() else []


def vb_lines(decl, lib, vb6, indent=""):
    result = decl["result"]
    if vb6 and result == "LongPtr":
        result = "Long"
    head = "Declare" if vb6 else "Declare PtrSafe"
    name = vb_name(decl["name"])
    alias = f' Alias "{decl["name"]}"' if name != decl["name"] else ""
    tail = f" As {result}" if decl["kind"] == "Function" else ""
    return wrap_declare(f'{head} {decl["kind"]} {name} Lib "{lib}.dll"{alias} ',
                        split_args(vb_args(decl, vb6)), tail, indent)


def vb_line(decl, lib, vb6):
    return "\r\n".join(vb_lines(decl, lib, vb6))


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


# The loader helper. Declare finds a DLL through the system's search order,
# in which the folder of a document is not, and the folder of a VB program
# only when the program runs compiled. Loading the DLL once by its full path
# makes every Declare of the module find it. VB6 takes the program's folder;
# VBA asks the host for the folder of the workbook, document or database
# that holds the code.
VB6_LOADER = r"""
' Loader helper: call BrindleLoad once before the first call of the library
' (in Form_Load or Sub Main). It loads BRINDLE32P.dll from the program's
' folder, or from Folder when given, and says in plain words what is wrong
' when it cannot. Returns True when the library is ready.
Private Declare Function BrindleLoadLibrary Lib "kernel32" Alias "LoadLibraryA" (ByVal FileName As String) As Long
Private Declare Function BrindleModuleHandle Lib "kernel32" Alias "GetModuleHandleA" (ByVal ModuleName As String) As Long

Public Function BrindleLoad(Optional ByVal Folder As String = "") As Boolean
    Const DllName As String = "BRINDLE32P.dll"
    Dim Path As String, Problem As String, Found As Boolean, Failure As Long
    If BrindleModuleHandle(DllName) <> 0 Then
        BrindleLoad = True
        Exit Function
    End If
    If Len(Folder) = 0 Then Folder = App.Path
    If Right$(Folder, 1) <> "\" Then Folder = Folder & "\"
    Path = Folder & DllName
    On Error Resume Next
    Found = Len(Dir$(Path, vbNormal Or vbReadOnly Or vbHidden Or vbSystem Or vbArchive)) > 0
    On Error GoTo 0
    If Found Then
        If BrindleLoadLibrary(Path) = 0 Then Failure = Err.LastDllError Else Failure = -1
    End If
    If Not Found Then
        Problem = DllName & " was not found in " & Folder & "." & vbCrLf & _
            "Copy it into the program's folder."
    ElseIf Failure <> -1 Then
        If Failure = 193 Then
            Problem = Path & " is not a 32-bit DLL." & vbCrLf & _
                "A VB6 program needs BRINDLE32P.dll, the 32-bit library."
        Else
            Problem = Path & " could not be loaded (Windows error " & Failure & ")."
        End If
    Else
        BrindleLoad = True
        Exit Function
    End If
    MsgBox Problem, vbExclamation, DllName
End Function
"""

VBA7_LOADER = r"""
' Loader helper: call BrindleLoad once before the first call of the library
' (in Workbook_Open or AutoExec, for instance). It loads the DLL that matches
' Office's bitness from the folder of the workbook, document or database
' holding this code, or from Folder when given, and says in plain words what
' is wrong when it cannot. Returns True when the library is ready.
Private Declare PtrSafe Function BrindleLoadLibrary Lib "kernel32" Alias "LoadLibraryA" (ByVal FileName As String) As LongPtr
Private Declare PtrSafe Function BrindleModuleHandle Lib "kernel32" Alias "GetModuleHandleA" (ByVal ModuleName As String) As LongPtr

Private Function BrindleHostFolder() As String
    Dim Host As Object
    Set Host = Application
    On Error Resume Next
    BrindleHostFolder = Host.ThisWorkbook.Path            ' Excel
    If Len(BrindleHostFolder) = 0 Then BrindleHostFolder = Host.MacroContainer.Path    ' Word
    If Len(BrindleHostFolder) = 0 Then BrindleHostFolder = Host.CurrentProject.Path    ' Access
    If Len(BrindleHostFolder) = 0 Then BrindleHostFolder = Host.ActivePresentation.Path ' PowerPoint
    On Error GoTo 0
End Function

Public Function BrindleLoad(Optional ByVal Folder As String = "") As Boolean
#If Win64 Then
    Const DllName As String = "BRINDLE64P.dll"
    Const Bits As String = "64"
#Else
    Const DllName As String = "BRINDLE32P.dll"
    Const Bits As String = "32"
#End If
    Dim Path As String, Problem As String, Found As Boolean, Failure As Long
    If BrindleModuleHandle(DllName) <> 0 Then
        BrindleLoad = True
        Exit Function
    End If
    If Len(Folder) = 0 Then Folder = BrindleHostFolder()
    If Len(Folder) = 0 Then
        Problem = "Save the file first: " & DllName & " is loaded from the folder that holds it."
    Else
        If Right$(Folder, 1) <> "\" Then Folder = Folder & "\"
        Path = Folder & DllName
        On Error Resume Next
        Found = Len(Dir$(Path, vbNormal Or vbReadOnly Or vbHidden Or vbSystem Or vbArchive)) > 0
        On Error GoTo 0
        If Found Then
            If BrindleLoadLibrary(Path) = 0 Then Failure = Err.LastDllError Else Failure = -1
        End If
        If Not Found Then
            Problem = DllName & " was not found in " & Folder & "." & vbCrLf & _
                "This is " & Bits & "-bit Office: copy " & DllName & " next to the file."
        ElseIf Failure <> -1 Then
            If Failure = 193 Then
                Problem = Path & " is not a " & Bits & "-bit DLL." & vbCrLf & _
                    "This is " & Bits & "-bit Office: it needs the " & Bits & "-bit library " & DllName & "."
            Else
                Problem = Path & " could not be loaded (Windows error " & Failure & ")."
            End If
        Else
            BrindleLoad = True
            Exit Function
        End If
    End If
    MsgBox Problem, vbExclamation, DllName
End Function
"""


def vb_block(text):
    return text.strip("\n").split("\n")


def vb6_module(decls, records):
    out = ['Attribute VB_Name = "BRINDLE32P"',
           "' Declarations of BRINDLE32P.dll for Visual Basic 4, 5 and 6.",
           "' Generated from the library's list of exports. Do not edit.",
           "Option Explicit", ""]
    out += vb_types(records, vb6=True)
    for d in decls:
        out += vb_lines(d, "BRINDLE32P", vb6=True)
    out.append("")
    out += vb_block(VB6_LOADER)
    return "\r\n".join(out) + "\r\n"


def vba7_module(decls, records):
    out = ['Attribute VB_Name = "BRINDLE64P"',
           "' Declarations of BRINDLE64P.dll (64-bit Office) and BRINDLE32P.dll (32-bit Office)",
           "' for VBA7. Generated from the library's list of exports. Do not edit.",
           "Option Explicit", ""]
    out += vb_types(records, vb6=False)
    out.append("#If Win64 Then")
    for d in decls:
        out += vb_lines(d, "BRINDLE64P", vb6=False, indent="    ")
    out.append("#Else")
    for d in decls:
        out += vb_lines(d, "BRINDLE32P", vb6=False, indent="    ")
    out.append("#End If")
    out.append("")
    out += vb_block(VBA7_LOADER)
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
