#!/usr/bin/env bash
# The Linux unit tests once more, built with AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTOVEL_SANITIZE=ON >/dev/null
cmake --build build-asan -j "$(nproc)"
cd build-asan
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j "$(nproc)"
