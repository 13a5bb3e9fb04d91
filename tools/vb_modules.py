"""The VB declaration modules, generated from the list of exports.

Two whole modules (BRINDLE32P.bas for VB4/5/6, BRINDLE64P.bas for VBA7) declare every
export and record; for users who import only what they need, one module per family
(vb6/BrindleStrings.bas, vba7/BrindleStrings.bas, ...) declares that family's exports and
the records only it uses, and one small module per dialect (BrindleCore.bas) holds the
loader helper and the records several families share. Each Declare carries the first
sentence of its reference text as the comment above it, so it shows in the VB editor.
"""
import re

# Families in the order of the list: a file exports/<prefix>_*.bas belongs to the family
# of its prefix. (module name, title in the reference)
FAMILIES = {
    "strings": ("BrindleStrings", "Strings"),
    "convert": ("BrindleConversions", "Conversions"),
    "datetime": ("BrindleDates", "Dates, times and timers"),
    "arrays": ("BrindleArrays", "Arrays and bit strings"),
    "stores": ("BrindleStores", "Large data stores"),
    "math": ("BrindleMath", "Mathematics"),
    "files": ("BrindleFiles", "Files and directories"),
    "streams": ("BrindleStreams", "File streams"),
    "compress": ("BrindleCompression", "Compression and checksums"),
    "crypto": ("BrindleCiphers", "Encryption"),
    "system": ("BrindleSystem", "System services"),
}
CORE_MODULE = "BrindleCore"


def family_of(file_name):
    """The family key of an export file (its name up to the first underscore)."""
    prefix = file_name.split("_", 1)[0].split(".", 1)[0]
    if prefix not in FAMILIES:
        raise ValueError(f"{file_name}: no family for the prefix '{prefix}' (tools/vb_modules.py)")
    return prefix


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
        raise ValueError(f"{head}: too many arguments for one VB statement")
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


def vb_types(records, vb6, summaries, indent=""):
    out = []
    for name, fields in records.items():
        out += comment_lines(summaries.get(name, ""), indent)
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



def comment_lines(text, indent="", width=100):
    """text as ' comment lines of at most about `width` characters."""
    out, line = [], ""
    for word in text.split():
        if line and len(indent) + 2 + len(line) + 1 + len(word) > width:
            out.append(f"{indent}' {line}")
            line = word
        else:
            line = f"{line} {word}" if line else word
    if line:
        out.append(f"{indent}' {line}")
    return out


def declares(decls, lib, vb6, summaries, indent=""):
    """Every Declare of `decls` from `lib`, each under its first sentence."""
    out = []
    for d in decls:
        out += comment_lines(summaries.get(d["name"], ""), indent)
        out += vb_lines(d, lib, vb6=vb6, indent=indent)
    return out


def vb6_text(name, intro, decls, records, summaries, loader=False):
    out = [f'Attribute VB_Name = "{name}"'] + intro + ["Option Explicit", ""]
    out += vb_types(records, True, summaries)
    out += declares(decls, "BRINDLE32P", True, summaries)
    if loader:
        out.append("")
        out += vb_block(VB6_LOADER)
    return "\r\n".join(out) + "\r\n"


def vba7_text(name, intro, decls, records, summaries, loader=False):
    out = [f'Attribute VB_Name = "{name}"'] + intro + ["Option Explicit", ""]
    out += vb_types(records, False, summaries)
    if decls:
        out.append("#If Win64 Then")
        out += declares(decls, "BRINDLE64P", False, summaries, indent="    ")
        out.append("#Else")
        out += declares(decls, "BRINDLE32P", False, summaries, indent="    ")
        out.append("#End If")
    if loader:
        out.append("")
        out += vb_block(VBA7_LOADER)
    return "\r\n".join(out) + "\r\n"


def record_homes(decls, records):
    """Record name -> family key of the one family that uses it, or None when several
    families (or none) use it and it belongs in the core module."""
    users = {name: set() for name in records}
    for d in decls:
        for a in d["args"]:
            vbtype = a["vb"].split()[-1]
            if vbtype in users:
                users[vbtype].add(family_of(d["file"]))
    # A record used as a field of another is used wherever that one is.
    changed = True
    while changed:
        changed = False
        for outer, fields in records.items():
            for field in fields:
                inner = field.split()[-1]
                if inner in users and not users[outer] <= users[inner]:
                    users[inner] |= users[outer]
                    changed = True
    return {name: (next(iter(f)) if len(f) == 1 else None) for name, f in users.items()}


VB6_WHOLE_INTRO = ["' Declarations of BRINDLE32P.dll for Visual Basic 4, 5 and 6.",
                   "' Generated from the library's list of exports. Do not edit."]
VBA7_WHOLE_INTRO = ["' Declarations of BRINDLE64P.dll (64-bit Office) and BRINDLE32P.dll (32-bit Office)",
                    "' for VBA7. Generated from the library's list of exports. Do not edit."]


def modules(decls, records, summaries):
    """Every declaration module: {relative path: text}.

    summaries: export or record name -> first sentence of its reference text.
    """
    out = {
        "BRINDLE32P.bas": vb6_text("BRINDLE32P", VB6_WHOLE_INTRO, decls, records, summaries, True),
        "BRINDLE64P.bas": vba7_text("BRINDLE64P", VBA7_WHOLE_INTRO, decls, records, summaries, True),
    }
    homes = record_homes(decls, records)
    families = []
    for d in decls:
        key = family_of(d["file"])
        if key not in families:
            families.append(key)
    for key in families:
        name, title = FAMILIES[key]
        members = [d for d in decls if family_of(d["file"]) == key]
        own = {r: f for r, f in records.items() if homes[r] == key}
        for folder, text, dialect in (("vb6", vb6_text, "Visual Basic 4, 5 and 6"),
                                      ("vba7", vba7_text, "VBA7")):
            intro = [f"' {title}: declarations of the library for {dialect}.",
                     f"' Import {CORE_MODULE}.bas beside it (BrindleLoad and the shared records),",
                     "' and not BRINDLE32P.bas or BRINDLE64P.bas, which declare everything.",
                     "' Generated from the library's list of exports. Do not edit."]
            out[f"{folder}/{name}.bas"] = text(name, intro, members, own, summaries)
    shared = {r: f for r, f in records.items() if homes[r] is None}
    for folder, text in (("vb6", vb6_text), ("vba7", vba7_text)):
        intro = ["' The loader helper and the records several families share.",
                 "' Import it with the family modules you use. Generated. Do not edit."]
        out[f"{folder}/{CORE_MODULE}.bas"] = text(CORE_MODULE, intro, [], shared, summaries, True)
    return out
