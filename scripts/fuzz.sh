#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang (installed by
# scripts/install-deps.sh) and runs each for a given time.
#
#   scripts/fuzz.sh [SECONDS] [TARGET...]     (default: 300 seconds, every target)
#
# A target starts from its committed corpus, tests/data/fuzz/<target>/ (seed
# inputs, and every input that once found a fault; the engine tests replay
# them all), and from its working corpus, build/fuzz/corpus/<target>/, which
# keeps what earlier runs on this machine discovered. A finding (a crash, a
# failed check, a leak, an input that takes more than 10 seconds or 2 GB)
# fails the run; its input is left in build/fuzz/findings/<target>/. Fix the
# fault, then commit that input under tests/data/fuzz/<target>/.
set -uo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-300}
[ $# -gt 0 ] && shift
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: scripts/fuzz.sh [SECONDS] [TARGET...]" >&2
    exit 2
fi

bash scripts/install-deps.sh || { echo "fuzz: scripts/install-deps.sh could not install clang" >&2; exit 1; }

build=build/fuzz
cmake -S fuzz -B "$build" -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ >/dev/null &&
    cmake --build "$build" -j2 >"$build/build.log" 2>&1 || {
    cat "$build/build.log" 2>/dev/null
    echo "fuzz: the targets did not build" >&2
    exit 1
}

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for source in fuzz/*_fuzz.cpp; do
        name=$(basename "$source" .cpp)
        targets+=("${name%_fuzz}")
    done
fi

# Runs one target; its verdict goes to build/fuzz/logs/<target>.verdict.
run_target() {
    local target=$1 program=$build/${1}_fuzz
    local corpus=$build/corpus/$target findings=$PWD/$build/findings/$target
    local log=$build/logs/$target.log verdict=$build/logs/$target.verdict
    mkdir -p "$corpus" "$findings" "tests/data/fuzz/$target"
    "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 \
        -artifact_prefix="$findings/" "$corpus" "tests/data/fuzz/$target" >"$log" 2>&1
    local rc=$?
    local runs
    runs=$(grep -o '^Done [0-9]* runs' "$log" | tail -1 | cut -d' ' -f2)
    if [ "$rc" -eq 0 ]; then
        printf '  %-22s PASS (%s runs in %s s)\n' "$target" "${runs:-?}" "$seconds" >"$verdict"
    else
        {
            printf '  %-22s FAIL (exit %s)\n' "$target" "$rc"
            grep -E 'ERROR|check failed|SUMMARY' "$log" | head -5 | sed 's/^/      /'
            grep -o "Test unit written to .*" "$log" | sed 's/^/      /'
            echo "      full log: $log"
        } >"$verdict"
    fi
}

# The targets are single-threaded: run as many at once as there are
# processors (FUZZ_JOBS to choose), and report them in order at the end.
jobs=${FUZZ_JOBS:-$(nproc 2>/dev/null || echo 2)}
mkdir -p "$build/logs"
failed=0
running=0
for target in "${targets[@]}"; do
    rm -f "$build/logs/$target.verdict"
    if [ ! -x "$build/${target}_fuzz" ]; then
        echo "fuzz: no target named $target" >&2
        failed=1
        continue
    fi
    if [ "$running" -ge "$jobs" ]; then
        wait -n
        running=$((running - 1))
    fi
    run_target "$target" &
    running=$((running + 1))
done
wait
for target in "${targets[@]}"; do
    verdict=$build/logs/$target.verdict
    [ -f "$verdict" ] || continue
    cat "$verdict"
    grep -q ' FAIL ' "$verdict" && failed=1
done
exit "$failed"
