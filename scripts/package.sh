#!/usr/bin/env bash
# Builds BRINDLE32P.dll and BRINDLE64P.dll (with their declaration modules and
# reference) and writes dist/brindle-<version>.zip, the archive a VB or VBA
# user downloads. scripts/test-windows.sh runs the same builds' tests and
# checks the archive this writes.
#
#   scripts/package.sh            build both DLLs, then pack
#   scripts/package.sh --no-build pack what build/win32 and build/win64 hold
set -euo pipefail
cd "$(dirname "$0")/.."
if [ "${1:-}" != --no-build ]; then
    bash scripts/install-deps.sh
    for preset in win32 win64; do
        cmake --preset "$preset" >/dev/null
        cmake --build --preset "$preset" --target brindle
    done
fi
python3 tools/package.py build/win32 build/win64 dist
