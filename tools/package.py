#!/usr/bin/env python3
"""Write the archive a VB or VBA user downloads, from the two Windows builds.

Usage: package.py WIN32_BUILD WIN64_BUILD OUT_DIR

Reads BRINDLE32P.dll from WIN32_BUILD and BRINDLE64P.dll from WIN64_BUILD (the
builds the Windows tests ran), the declaration modules and reference.html that
the build generated, and writes OUT_DIR/brindle-<version>.zip holding one folder
brindle-<version>/ with the DLLs, the modules, the reference, the read-me and the
licences. Text files get CR LF line ends, as Notepad and the VB editor expect.
The version is the one set in the top-level CMakeLists.txt. Prints the archive's path.
"""
import os
import re
import sys
import zipfile

HERE = os.path.dirname(os.path.abspath(__file__))
TOP = os.path.dirname(HERE)


def project_version():
    with open(os.path.join(TOP, "CMakeLists.txt"), encoding="utf-8") as f:
        m = re.search(r"^project\(brindle VERSION ([0-9.]+)", f.read(), re.M)
    if not m:
        raise SystemExit("package: no project version in CMakeLists.txt")
    return m.group(1)


def read(path):
    with open(path, "rb") as f:
        return f.read()


def crlf(data):
    return data.replace(b"\r\n", b"\n").replace(b"\n", b"\r\n")


def contents(win32, win64, version):
    """{path inside the archive: bytes}."""
    gen32, gen64 = os.path.join(win32, "generated"), os.path.join(win64, "generated")
    files = {
        "BRINDLE32P.dll": read(os.path.join(win32, "BRINDLE32P.dll")),
        "BRINDLE64P.dll": read(os.path.join(win64, "BRINDLE64P.dll")),
        "reference.html": read(os.path.join(gen32, "reference.html")),
        "BRINDLE32P.bas": read(os.path.join(gen32, "BRINDLE32P.bas")),
        "BRINDLE64P.bas": read(os.path.join(gen32, "BRINDLE64P.bas")),
        "LICENSE.txt": crlf(read(os.path.join(TOP, "LICENSE"))),
        "zlib-LICENSE.txt": crlf(read(os.path.join(TOP, "packaging", "zlib-LICENSE.txt"))),
    }
    for folder in ("vb6", "vba7"):
        for name in sorted(os.listdir(os.path.join(gen32, folder))):
            files[f"{folder}/{name}"] = read(os.path.join(gen32, folder, name))
    # Both builds generate the modules from the same list; a difference means
    # one of them is stale.
    for path in [p for p in files if p.endswith(".bas") or p == "reference.html"]:
        if read(os.path.join(gen64, path)) != files[path]:
            raise SystemExit(f"package: {path} differs between the two builds; rebuild both")
    text = read(os.path.join(TOP, "packaging", "README.txt")).decode("utf-8")
    lines = text.replace("@VERSION@", version).split("\n")
    lines[1] = "=" * len(lines[0])
    files["README.txt"] = crlf("\n".join(lines).encode("utf-8"))
    return files


def main(argv):
    if len(argv) != 4:
        print(__doc__, file=sys.stderr)
        return 2
    win32, win64, out_dir = argv[1:]
    version = project_version()
    files = contents(win32, win64, version)
    os.makedirs(out_dir, exist_ok=True)
    target = os.path.join(out_dir, f"brindle-{version}.zip")
    partial = target + ".part"
    with zipfile.ZipFile(partial, "w", zipfile.ZIP_DEFLATED) as z:
        for path in sorted(files):
            info = zipfile.ZipInfo(f"brindle-{version}/{path}", date_time=(2026, 1, 1, 0, 0, 0))
            info.compress_type = zipfile.ZIP_DEFLATED
            info.external_attr = 0o644 << 16
            z.writestr(info, files[path])
    os.replace(partial, target)
    print(target)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
