#!/usr/bin/env bash
# Fuzzes one reader with libFuzzer under AddressSanitizer and UndefinedBehaviorSanitizer.
#
#   scripts/fuzz.sh TARGET [SECONDS]
#
#   ini    the INI reader (settings/clsIniText)
#   term   condition terms (catalogue/clsSetupTerm with common/clsVersion), on an emulated
#          machine the target makes in a temporary folder and removes again
#   sif    product and packet description files read as the search reads them
#
# Builds fuzz/ in build-fuzz/ (TOVEL_FUZZ_BUILD overrides) with clang++-14 and runs for
# SECONDS (default 60), starting from the seed corpus fuzz/corpus-TARGET/ (left as it is; new
# inputs go to a temporary folder). Exit code 0 when nothing went wrong; non-zero on a crash,
# a leak, undefined behaviour or a broken promise of the reader, with the input kept in the
# build folder as crash-*, leak-* or timeout-* (replay: build-fuzz/tovel_fuzz_TARGET
# build-fuzz/crash-...).
set -euo pipefail
cd "$(dirname "$0")/.."

target=${1:-}
seconds=${2:-60}
build=${TOVEL_FUZZ_BUILD:-build-fuzz}
case $target in
  ini) max_len=4096 ;;
  term) max_len=1024 ;;
  sif) max_len=12288 ;;
  *) echo "fuzz: TARGET must be ini, term or sif" >&2; exit 2 ;;
esac
[[ $seconds =~ ^[0-9]+$ ]] || { echo "fuzz: SECONDS must be a number" >&2; exit 2; }
command -v clang++-14 >/dev/null 2>&1 || { echo "fuzz: clang++-14 is missing (apt-get install clang-14)" >&2; exit 2; }

CXX=clang++-14 cmake -S fuzz -B "$build" -G Ninja >/dev/null
cmake --build "$build" --target "tovel_fuzz_$target"

work=$(mktemp -d "${TMPDIR:-/tmp}/tovel-fuzz-$target.XXXXXX")
trap 'rm -rf "$work"' EXIT
"$build/tovel_fuzz_$target" "$work" "fuzz/corpus-$target" \
    -dict="fuzz/$target.dict" -max_total_time="$seconds" -max_len="$max_len" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$build"/ -print_final_stats=1
