#!/usr/bin/env bash
# Installs what a fresh Debian bookworm machine lacks for building and
# testing. Safe to run again; installs nothing that is already there.
set -euo pipefail
need=()
for pkg in g++ cmake python3 libgtest-dev zlib1g-dev; do
    dpkg -s "$pkg" >/dev/null 2>&1 || need+=("$pkg")
done
if [ "${#need[@]}" -gt 0 ]; then
    apt-get update || true
    DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${need[@]}"
fi
