#!/usr/bin/env bash
# Installs from Debian's packages what the builds need. "linux": the Linux build and its
# tests; "win64", "win32": that Windows cross build (the tests of win64 run under Wine, its
# pages under Xvfb, with a Japanese font for the Japanese pages); "all": everything, and
# clang with libFuzzer for the fuzz targets.
set -euo pipefail
what=${1:-all}
packages=(cmake ninja-build)
wine_tests=(wine wine64 xvfb xauth locales fonts-ipafont-gothic)
case $what in
  linux) packages+=(g++ libgtest-dev nlohmann-json3-dev) ;;
  win64) packages+=(g++-mingw-w64-x86-64 googletest "${wine_tests[@]}") ;;
  win32) packages+=(g++-mingw-w64-i686) ;;
  all) packages+=(g++ libgtest-dev nlohmann-json3-dev g++-mingw-w64-x86-64 g++-mingw-w64-i686 googletest "${wine_tests[@]}" clang-14 libclang-rt-14-dev) ;;
  *) echo "unknown set $what (linux, win64, win32, all)" >&2; exit 2 ;;
esac
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo=sudo
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
