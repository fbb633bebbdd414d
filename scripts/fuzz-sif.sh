#!/usr/bin/env bash
# Fuzzes the reading of description files (catalogue/clsSIFApplicationItem, clsSIFPacketItem
# and the search, with the INI reader, terms and versions sections below them) with libFuzzer
# under AddressSanitizer and UndefinedBehaviorSanitizer, on an emulated machine that the target
# makes in a temporary folder and removes again.
#
#   scripts/fuzz-sif.sh [SECONDS]
#
# Builds fuzz/ in build-fuzz/ (TOVEL_FUZZ_BUILD overrides) with clang++-14 and runs for
# SECONDS (default 60), starting from the seed corpus in fuzz/corpus-sif/ (left as it is;
# new inputs go to a temporary folder). Exit code 0 when nothing went wrong; non-zero on a
# crash, a leak, undefined behaviour or a broken promise of the readers, with the input kept
# in the build folder as crash-*, leak-* or timeout-* (replay:
# build-fuzz/tovel_fuzz_sif build-fuzz/crash-...).
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
build=${TOVEL_FUZZ_BUILD:-build-fuzz}
[[ $seconds =~ ^[0-9]+$ ]] || { echo "fuzz-sif: SECONDS must be a number" >&2; exit 2; }
command -v clang++-14 >/dev/null 2>&1 || { echo "fuzz-sif: clang++-14 is missing (apt-get install clang-14)" >&2; exit 2; }

CXX=clang++-14 cmake -S fuzz -B "$build" -G Ninja >/dev/null
cmake --build "$build" --target tovel_fuzz_sif

work=$(mktemp -d "${TMPDIR:-/tmp}/tovel-fuzz-sif.XXXXXX")
trap 'rm -rf "$work"' EXIT
"$build"/tovel_fuzz_sif "$work" fuzz/corpus-sif \
    -dict=fuzz/sif.dict -max_total_time="$seconds" -max_len=12288 -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$build"/ -print_final_stats=1
