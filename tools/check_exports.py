#!/usr/bin/env python3
"""Check that a built library exports exactly the listed names.

Linux:   check_exports.py --library libbrindle32p.so --list exports.txt [--extra ole.txt]
Windows: check_exports.py --library BRINDLE32P.dll --list exports.txt [--system-imports]
         check_exports.py --stack-sizes libbrindle_static.a --list exports.txt

exports.txt holds "name stack-bytes" per export. The shared object's dynamic
symbol table is read with nm; a DLL's export and import tables with objdump
(--objdump or OBJDUMP names a cross objdump).

--system-imports  also require that the DLL imports from system DLLs only (a
                  runtime DLL such as libstdc++-6.dll, libgcc_s_*.dll,
                  libwinpthread-1.dll or zlib1.dll is not on a user's machine).
--stack-sizes A   instead of a library, read the 32-bit objects of archive A and
                  require that every export is defined as _name@N with the N of
                  the list (the bytes the callee pops, which VB checks).
"""
import argparse
import os
import re
import subprocess
import sys


def listed(path):
    names = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            parts = line.split()
            if parts and not parts[0].startswith("#"):
                names[parts[0]] = int(parts[1]) if len(parts) > 1 else None
    return names


def elf_exports(library):
    out = subprocess.run(["nm", "-D", "--defined-only", library], check=True,
                         capture_output=True, text=True).stdout
    names = set()
    for line in out.splitlines():
        fields = line.split()
        if len(fields) >= 3 and fields[1] in "TWiDBRV":
            names.add(fields[2].split("@")[0])
    return names


# What a Windows DLL may import: the system's own DLLs, present on every
# supported Windows.
SYSTEM_DLLS = {"kernel32.dll", "oleaut32.dll", "ole32.dll", "advapi32.dll", "user32.dll",
               "shell32.dll", "ws2_32.dll", "wsock32.dll", "msvcrt.dll"}

OBJDUMP = os.environ.get("OBJDUMP", "objdump")


def objdump(*args):
    return subprocess.run([OBJDUMP, *args], check=True, capture_output=True, text=True).stdout


def dll_imports(library):
    return {m.group(1) for m in re.finditer(r"^\s*DLL Name:\s*(\S+)", objdump("-p", library), re.M)}


def decorated_definitions(archive):
    """name -> N for every external _name@N defined in the archive's objects."""
    found = {}
    for line in objdump("-t", archive).splitlines():
        # [  5](sec  1)(fl 0x00)(ty   20)(scl   2) (nx 1) 0x00000000 _cReverse@4
        m = re.match(r"\[\s*\d+\]\(sec\s+(-?\d+)\).*\(scl\s+2\).*\s_(\w+)@(\d+)$", line)
        if m and int(m.group(1)) > 0:
            found.setdefault(m.group(2), set()).add(int(m.group(3)))
    return found


def check_stack_sizes(archive, expected):
    found = decorated_definitions(archive)
    bad = 0
    for name, size in sorted(expected.items()):
        sizes = found.get(name)
        if not sizes:
            print(f"no 32-bit __stdcall definition: {name} (expected _{name}@{size})")
            bad += 1
        elif sizes != {size}:
            print(f"stack size of {name}: defined as {sorted(sizes)}, listed as {size}")
            bad += 1
    print(f"{len(expected)} listed, {bad} with a wrong or missing stack size")
    return 1 if bad else 0


def dll_exports(library):
    out = objdump("-p", library)
    names, in_table = set(), False
    for line in out.splitlines():
        if "[Ordinal/Name Pointer] Table" in line:
            in_table = True
            continue
        if in_table:
            m = re.match(r"\s+\[\s*\d+\]\s+(\S+)", line)
            if m:
                names.add(m.group(1))
            elif line.strip() == "":
                in_table = False
    return names


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("--library")
    ap.add_argument("--list", required=True)
    ap.add_argument("--extra")
    ap.add_argument("--objdump")
    ap.add_argument("--system-imports", action="store_true")
    ap.add_argument("--stack-sizes", metavar="ARCHIVE")
    args = ap.parse_args()
    global OBJDUMP
    if args.objdump:
        OBJDUMP = args.objdump
    if args.stack_sizes:
        return check_stack_sizes(args.stack_sizes, listed(args.list))
    if not args.library:
        ap.error("--library or --stack-sizes is required")

    expected = set(listed(args.list))
    if args.extra:
        expected |= set(listed(args.extra))
    actual = dll_exports(args.library) if args.library.lower().endswith(".dll") else elf_exports(args.library)
    missing = sorted(expected - actual)
    unlisted = sorted(actual - expected)
    for name in missing:
        print(f"missing export: {name}")
    for name in unlisted:
        print(f"unlisted export: {name}")
    print(f"{len(actual)} exported, {len(expected)} listed, {len(missing)} missing, {len(unlisted)} unlisted")
    failed = bool(missing or unlisted)
    if args.system_imports:
        imports = dll_imports(args.library)
        foreign = sorted(d for d in imports if d.lower() not in SYSTEM_DLLS)
        print("imports: " + ", ".join(sorted(imports)))
        for dll in foreign:
            print(f"imports a DLL that is not a system DLL: {dll}")
        failed = failed or bool(foreign) or not imports
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
