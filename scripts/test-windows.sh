#!/usr/bin/env bash
# Builds BRINDLE32P.dll and BRINDLE64P.dll with MinGW-w64 and runs the whole
# suite against them under Wine (32-bit programs with `wine`, 64-bit with
# `wine64`): the test programs, the export, import and stack-size checks of
# each DLL, and the demonstration client; then packs both DLLs into the
# archive users download and checks it. scripts/install-deps.sh installs the
# toolchain and Wine.
#
# Without the 32-bit Wine (wine32:i386) the 64-bit DLL is still tested and the
# untested 32-bit DLL is reported loudly; without any Wine, or without a
# compiler, the run fails. Nothing is skipped silently.
#
#   scripts/test-windows.sh [win32|win64]...     (default: both)
set -uo pipefail
cd "$(dirname "$0")/.."

WINE_DIR=${WINE_DIR:-/usr/lib/wine}
export WINEPREFIX=${WINEPREFIX:-$PWD/build/wine}
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="

presets=("$@")
[ ${#presets[@]} -gt 0 ] || presets=(win32 win64)

declare -a lines
overall=0
note() { lines+=("$1"); }

loader_of() { [ "$1" = win32 ] && echo "$WINE_DIR/wine" || echo "$WINE_DIR/wine64"; }
compiler_of() { [ "$1" = win32 ] && echo i686-w64-mingw32-g++-posix || echo x86_64-w64-mingw32-g++-posix; }
dll_of() { [ "$1" = win32 ] && echo BRINDLE32P.dll || echo BRINDLE64P.dll; }

# Which halves can run at all.
runnable=()
for p in "${presets[@]}"; do
    if ! command -v "$(compiler_of "$p")" >/dev/null; then
        echo "!!! $p: $(compiler_of "$p") is not installed (run scripts/install-deps.sh); NOT TESTED" >&2
        note "$p: NOT TESTED (no MinGW-w64 compiler)"
        overall=1
    elif [ ! -x "$(loader_of "$p")" ]; then
        # Only the 32-bit Wine may be missing (wine32:i386 cannot always be
        # installed); the run goes on with the other DLL but says so loudly.
        # A missing 64-bit Wine fails the run.
        echo "!!!" >&2
        echo "!!! $p: $(loader_of "$p") is not installed (run scripts/install-deps.sh):" >&2
        echo "!!! $(dll_of "$p") IS NOT TESTED" >&2
        echo "!!!" >&2
        note "$p: NOT TESTED (no Wine loader $(loader_of "$p"))"
        [ "$p" = win32 ] || overall=1
    else
        runnable+=("$p")
    fi
done
if [ ${#runnable[@]} -eq 0 ]; then
    echo "!!! no Windows DLL could be tested" >&2
    exit 1
fi

# One prefix for both bitnesses, made once (about 10 s). A warm wineserver
# keeps each program start at about 0.1 s; it and Wine's helper processes
# are started here, outside ctest, with their output detached: a helper that
# inherits ctest's output pipe makes every test wait for it.
wineserver="$WINE_DIR/wineserver"
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    mkdir -p "$(dirname "$WINEPREFIX")"
    echo "Creating the Wine prefix $WINEPREFIX"
    "$WINE_DIR/wine64" wineboot -i </dev/null >/dev/null 2>&1
    "$wineserver" -w
fi
# Wine's windowless display driver: the progress windows and the client's
# progress bar are really made and driven, with no screen (and no X server)
# needed. Set once per prefix (the marker file says so), an older prefix too.
if [ "$(cat "$WINEPREFIX/.brindle-graphics" 2>/dev/null)" != null ]; then
    "$WINE_DIR/wine64" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f </dev/null >/dev/null 2>&1
    "$wineserver" -w
    echo null >"$WINEPREFIX/.brindle-graphics"
fi
"$wineserver" -p </dev/null >/dev/null 2>&1 &
trap '"$wineserver" -k >/dev/null 2>&1' EXIT
"$WINE_DIR/wine64" cmd /c exit </dev/null >/dev/null 2>&1

for p in "${runnable[@]}"; do
    echo
    echo "--- $p: build"
    if ! { cmake --preset "$p" >/dev/null && cmake --build --preset "$p"; }; then
        note "$p: BUILD FAILED"
        overall=1
        continue
    fi
    echo "--- $p: tests under $(basename "$(loader_of "$p")")"
    if ctest --preset "$p"; then
        note "$p: tests passed"
    else
        note "$p: TESTS FAILED"
        overall=1
    fi
    echo "--- $p: demonstration client"
    dll=$(dll_of "$p")
    if out=$(cd "build/$p" && "$(loader_of "$p")" brindle_demo.exe "$dll" </dev/null 2>&1) &&
        grep -q 'Every checked answer was right' <<<"$out"; then
        echo "$out"
        note "$p: demo ran"
    else
        echo "$out"
        note "$p: DEMO FAILED"
        overall=1
    fi
done

# The archive a user downloads, made from the DLLs tested above.
if [ ${#runnable[@]} -eq 2 ] && [ "$overall" -eq 0 ]; then
    echo
    echo "--- package"
    if archive=$(bash scripts/package.sh --no-build) &&
        python3 tools/check_package.py "$archive" build/win32 build/win64; then
        note "package: $archive checked"
    else
        note "package: FAILED"
        overall=1
    fi
fi

echo
echo "--- Windows summary"
printf '  %s\n' "${lines[@]}"
exit "$overall"
