#!/usr/bin/env bash
# Installs what a fresh Debian bookworm machine lacks for building and
# testing: the native toolchain, clang with its sanitizer and libFuzzer
# runtimes (scripts/fuzz.sh), Chromium and its WebDriver (the reference
# page is tested in a real browser), and for the Windows DLLs the MinGW-w64
# cross compilers, zlib built for MinGW and Wine (64-bit, and 32-bit from the
# i386 architecture), OpenSSL's headers (libssl-dev: the Linux engine
# tests compare the cipher cores with it; nothing shipped links it) and
# Crypto++ (libcrypto++-dev: the cipher benchmark's anchor for DES and IDEA,
# which OpenSSL 3 keeps out of its default provider, and the engine tests'
# oracle for the ciphers OpenSSL lacks; tests and benchmarks only). Safe
# to run again; installs nothing that is already there, and returns at
# once, silently, when everything is. scripts/demo.sh
# and scripts/test.sh call it first.
#
# The 32-bit Wine is optional: when it cannot be installed, the Windows tests
# still run the 64-bit DLL and say loudly that the 32-bit one was not run.
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive

# apt-get needs root; a user's machine may offer sudo instead.
if [ "$(id -u)" -ne 0 ]; then
    apt-get() { sudo DEBIAN_FRONTEND=noninteractive apt-get "$@"; }
    dpkg() { if [ "$1" = --add-architecture ]; then sudo dpkg "$@"; else command dpkg "$@"; fi; }
fi

missing() {
    local out=()
    for pkg in "$@"; do
        dpkg -s "$pkg" >/dev/null 2>&1 || out+=("$pkg")
    done
    echo "${out[@]}"
}

updated=0
update_once() {
    if [ "$updated" -eq 0 ]; then
        apt-get update || true
        updated=1
    fi
}

need=$(missing g++ cmake python3 libgtest-dev libbenchmark-dev zlib1g-dev clang libclang-rt-dev chromium chromium-driver \
    g++-mingw-w64-i686 g++-mingw-w64-x86-64 libz-mingw-w64-dev wine64 \
    libssl-dev \
    libcrypto++-dev)
if [ -n "$need" ]; then
    update_once
    # shellcheck disable=SC2086
    apt-get install -y --no-install-recommends -t bookworm $need
fi

# wine32 lives in the i386 architecture.
if ! dpkg -s wine32:i386 >/dev/null 2>&1; then
    if ! dpkg --print-foreign-architectures | grep -qx i386; then
        dpkg --add-architecture i386
        updated=0
    fi
    update_once
    apt-get install -y --no-install-recommends -t bookworm wine32:i386 ||
        echo "install-deps: WARNING: wine32:i386 could not be installed; the 32-bit DLL will not be tested" >&2
fi
