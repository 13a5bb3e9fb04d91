#!/usr/bin/env bash
# Builds the Linux library and runs the demonstration client against it.
# With "windows" as argument, also builds both Windows DLLs and runs the
# same client (cross-built) against each under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh     # silent when nothing is missing
cmake --preset linux >/dev/null
cmake --build --preset linux
echo
./build/linux/demo/brindle_demo ./build/linux/libbrindle32p.so

if [ "${1:-}" = windows ]; then
    export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    [ -f "$WINEPREFIX/system.reg" ] || /usr/lib/wine/wine64 wineboot -i </dev/null >/dev/null 2>&1
    for p in win32:wine:BRINDLE32P.dll win64:wine64:BRINDLE64P.dll; do
        IFS=: read -r preset loader dll <<<"$p"
        cmake --preset "$preset" >/dev/null
        cmake --build --preset "$preset" --target brindle_demo
        echo
        (cd "build/$preset" && "/usr/lib/wine/$loader" brindle_demo.exe "$dll" </dev/null)
    done
    /usr/lib/wine/wineserver -k || true
fi
