#!/usr/bin/env bash
# Installs from Debian's packages what the builds need. "linux": the Linux build and its
# tests; "all": also the Windows cross builds, Wine to run their tests, and clang with
# libFuzzer for the fuzz targets.
set -euo pipefail
what=${1:-all}
packages=(cmake ninja-build g++ libgtest-dev)
if [ "$what" = all ]; then
  packages+=(g++-mingw-w64-x86-64 g++-mingw-w64-i686 wine wine64 xvfb xauth locales clang-14 libclang-rt-14-dev)
fi
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
