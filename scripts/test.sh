#!/usr/bin/env bash
# Every test: installs what it needs, builds all targets, runs the Linux tests with CTest and
# the same unit tests of the Windows build under Wine. Non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh all
scripts/build.sh linux win64 win32
(cd build && ctest --output-on-failure -j "$(nproc)")
# The release EXE goes on a disc and is started from it: one file of at most 2 MiB.
release=build-win32/app/TOVELSETUP.EXE
size=$(stat -c %s "$release")
echo "Release EXE: $size bytes"
[ "$size" -le 2097152 ] || { echo "$release is larger than 2 MiB" >&2; exit 1; }
scripts/test-windows.sh build-win
echo "All tests passed."
