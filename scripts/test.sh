#!/usr/bin/env bash
# Runs the whole test suite: the native Linux build, the same tests under
# AddressSanitizer and UndefinedBehaviorSanitizer, every fuzz target for 10
# seconds (scripts/fuzz.sh; a finding fails the stage), and (where the MinGW-w64
# toolchain and Wine are installed, see scripts/install-deps.sh) both Windows
# DLLs under Wine. Ends with one line per stage and an overall verdict.
set -uo pipefail
cd "$(dirname "$0")/.."

# What a fresh machine lacks (silent when nothing is missing).
bash scripts/install-deps.sh || { echo "TESTS FAILED: scripts/install-deps.sh could not install what the tests need"; exit 1; }

declare -a names results
overall=0

stage() {
    local name=$1
    shift
    echo
    echo "=== ${name} ==="
    if "$@"; then
        names+=("$name")
        results+=("PASS")
    else
        names+=("$name")
        results+=("FAIL")
        overall=1
    fi
}

build_and_test() {
    local preset=$1
    cmake --preset "$preset" >/dev/null &&
        cmake --build --preset "$preset" &&
        ctest --preset "$preset"
}

stage "linux" build_and_test linux
stage "linux-asan" build_and_test linux-asan
stage "fuzz" bash scripts/fuzz.sh 10
if [ -x scripts/test-windows.sh ]; then
    stage "windows (Wine)" scripts/test-windows.sh
fi

echo
echo "=== summary ==="
for i in "${!names[@]}"; do
    printf '  %-16s %s\n' "${names[$i]}" "${results[$i]}"
done
if [ "$overall" -eq 0 ]; then
    echo "ALL TESTS PASSED"
else
    echo "TESTS FAILED"
fi
exit "$overall"
