#!/usr/bin/env python3
"""Check the archive scripts/package.sh wrote against the builds the tests ran.

Usage: check_package.py ARCHIVE WIN32_BUILD WIN64_BUILD

Requires: one top folder brindle-<version>/ holding exactly the DLLs, the two whole
declaration modules, vb6/ and vba7/ each with BrindleCore.bas and the family modules,
reference.html, README.txt, LICENSE.txt and zlib-LICENSE.txt; DLLs byte for byte the ones
in the build folders (the tested ones); each DLL a PE file of its bitness whose version
resource carries the archive's version and the product name; modules and reference equal to
what the build generated; text files with CR LF line ends.
"""
import hashlib
import os
import re
import struct
import sys
import zipfile

MACHINES = {"BRINDLE32P.dll": 0x14C, "BRINDLE64P.dll": 0x8664}


def pe_machine(data):
    if data[:2] != b"MZ":
        return None
    offset = struct.unpack_from("<I", data, 0x3C)[0]
    if data[offset:offset + 4] != b"PE\0\0":
        return None
    return struct.unpack_from("<H", data, offset + 4)[0]


def file_version(data):
    """(major, minor, patch, build) of the VS_FIXEDFILEINFO, or None."""
    at = data.find(struct.pack("<I", 0xFEEF04BD))
    if at < 0:
        return None
    ms, ls = struct.unpack_from("<II", data, at + 8)
    return (ms >> 16, ms & 0xFFFF, ls >> 16, ls & 0xFFFF)


def utf16_value(data, key):
    """The string value after `key` in the version resource's string table."""
    at = data.find(key.encode("utf-16-le") + b"\0\0")
    if at < 0:
        return None
    at += len(key) * 2 + 2
    at += at % 4                                   # values start on a 32-bit boundary
    end = data.find(b"\0\0", at)
    while end >= 0 and (end - at) % 2:
        end = data.find(b"\0\0", end + 1)
    return data[at:end].decode("utf-16-le", "replace")


def main(argv):
    if len(argv) != 4:
        print(__doc__, file=sys.stderr)
        return 2
    archive, win32, win64 = argv[1:]
    problems = []
    with zipfile.ZipFile(archive) as z:
        names = z.namelist()
        tops = {n.split("/", 1)[0] for n in names}
        if len(tops) != 1 or not re.fullmatch(r"brindle-\d+\.\d+\.\d+", next(iter(tops))):
            print(f"FAIL: the archive must hold one folder brindle-<version>/, not {sorted(tops)}")
            return 1
        top = tops.pop()
        version = top.split("-", 1)[1]
        files = {n[len(top) + 1:]: z.read(n) for n in names if not n.endswith("/")}
    gen = os.path.join(win32, "generated")
    want = {"BRINDLE32P.dll", "BRINDLE64P.dll", "BRINDLE32P.bas", "BRINDLE64P.bas", "reference.html",
            "README.txt", "LICENSE.txt", "zlib-LICENSE.txt"}
    for folder in ("vb6", "vba7"):
        want |= {f"{folder}/{n}" for n in os.listdir(os.path.join(gen, folder)) if n.endswith(".bas")}
    if set(files) != want:
        problems.append(f"missing {sorted(want - set(files))}, unexpected {sorted(set(files) - want)}")
    for dll, build in (("BRINDLE32P.dll", win32), ("BRINDLE64P.dll", win64)):
        data = files.get(dll, b"")
        with open(os.path.join(build, dll), "rb") as f:
            tested = f.read()
        if hashlib.sha256(data).digest() != hashlib.sha256(tested).digest():
            problems.append(f"{dll} is not the one in {build}")
        if pe_machine(data) != MACHINES[dll]:
            problems.append(f"{dll} is not a PE file for machine {MACHINES[dll]:#x}")
        numbers = tuple(int(x) for x in version.split(".")) + (0,)
        if file_version(data) != numbers:
            problems.append(f"{dll}: file version {file_version(data)} where the archive says {numbers}")
        for key, value in (("ProductName", "Brindle"), ("FileVersion", version),
                           ("OriginalFilename", dll)):
            if utf16_value(data, key) != value:
                problems.append(f"{dll}: {key} is {utf16_value(data, key)!r}, not {value!r}")
    for path in sorted(want):
        if path.endswith((".bas", ".html")) and path in files:
            with open(os.path.join(gen, path), "rb") as f:
                if f.read() != files[path]:
                    problems.append(f"{path} differs from the generated one")
        if path.endswith((".bas", ".txt")) and path in files:
            if re.search(rb"(?<!\r)\n", files[path]):
                problems.append(f"{path} has line ends other than CR LF")
    if version.encode() not in files.get("README.txt", b""):
        problems.append("README.txt does not name the version")
    for p in problems:
        print(f"FAIL: {p}")
    print(f"{archive}: {len(files)} files, version {version}, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
