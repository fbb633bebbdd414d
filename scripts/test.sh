#!/usr/bin/env bash
# Every test: installs what it needs, builds all targets, runs the Linux tests with CTest and
# the same unit tests of the Windows build under Wine. Non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh all
scripts/build.sh linux win64 win32
(cd build && ctest --output-on-failure -j "$(nproc)")
scripts/test-windows.sh build-win
echo "All tests passed."
