#!/usr/bin/env bash
# Builds a target into its own folder: linux (build/), win64 (build-win/, with the tests and
# debug information), win32 (build-win32/: the release EXE, small and stripped, no tests).
# Installs what a target needs first (scripts/install-deps.sh). With CI=true warnings are errors.
set -euo pipefail
cd "$(dirname "$0")/.."
werror=OFF
[ "${CI:-}" = true ] && werror=ON
build() {
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja -DTOVEL_WERROR=$werror "$@" >/dev/null
  cmake --build "$dir" -j "$(nproc)"
}
for target in "$@"; do
  case $target in
    linux | win64 | win32) scripts/install-deps.sh "$target" ;;
    *) echo "unknown target $target (linux, win64, win32)" >&2; exit 2 ;;
  esac
  case $target in
    linux) build build ;;
    win64) build build-win -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-x86_64.cmake ;;
    win32) build build-win32 -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-i686.cmake -DTOVEL_TESTS=OFF -DCMAKE_BUILD_TYPE=MinSizeRel ;;
  esac
done
