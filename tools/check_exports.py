#!/usr/bin/env python3
"""Check that a built library exports exactly the listed names.

Linux:   check_exports.py --library libbrindle32p.so --list exports.txt [--extra ole.txt]
Windows: check_exports.py --library BRINDLE32P.dll --list exports.txt [--decorated]

exports.txt holds "name stack-bytes" per export. The shared object's dynamic
symbol table is read with nm; a DLL's export table with objdump (set
OBJDUMP for a cross objdump).
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


def dll_exports(library):
    objdump = os.environ.get("OBJDUMP", "objdump")
    out = subprocess.run([objdump, "-p", library], check=True, capture_output=True, text=True).stdout
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
    ap.add_argument("--library", required=True)
    ap.add_argument("--list", required=True)
    ap.add_argument("--extra")
    args = ap.parse_args()

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
    return 1 if missing or unlisted else 0


if __name__ == "__main__":
    sys.exit(main())
