#!/usr/bin/env bash
# Builds the Linux library and runs the demonstration client against it.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset linux >/dev/null
cmake --build --preset linux
echo
./build/linux/demo/brindle_demo ./build/linux/libbrindle32p.so
