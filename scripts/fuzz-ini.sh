#!/usr/bin/env bash
# Fuzzes the INI reader (settings/clsIniText) with libFuzzer under AddressSanitizer and
# UndefinedBehaviorSanitizer.
#
#   scripts/fuzz-ini.sh [SECONDS]
#
# Builds fuzz/ in build-fuzz/ with clang++-14 and runs for SECONDS (default 60), starting
# from the seed corpus in fuzz/corpus-ini/ (left as it is; new inputs go to a temporary
# folder). Exit code 0 when nothing went wrong; non-zero on a crash, a leak, undefined
# behaviour or a broken promise of the reader, with the input kept in build-fuzz/ as
# crash-*, leak-* or timeout-* (replay: build-fuzz/tovel_fuzz_ini build-fuzz/crash-...).
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
[[ $seconds =~ ^[0-9]+$ ]] || { echo "fuzz-ini: SECONDS must be a number" >&2; exit 2; }
command -v clang++-14 >/dev/null 2>&1 || { echo "fuzz-ini: clang++-14 is missing (apt-get install clang-14)" >&2; exit 2; }

CXX=clang++-14 cmake -S fuzz -B build-fuzz -G Ninja >/dev/null
cmake --build build-fuzz --target tovel_fuzz_ini

work=$(mktemp -d "${TMPDIR:-/tmp}/tovel-fuzz-ini.XXXXXX")
trap 'rm -rf "$work"' EXIT
build-fuzz/tovel_fuzz_ini "$work" fuzz/corpus-ini \
    -dict=fuzz/ini.dict -max_total_time="$seconds" -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix=build-fuzz/ -print_final_stats=1
