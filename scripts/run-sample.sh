#!/usr/bin/env bash
# The setup of the bundled sample disc on the built-in default machine (created on first use
# in ~/.local/share/tovelsetup/machine, or in $TOVEL_MACHINE). Extra arguments go to tovelsetup.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh linux
cmake -S . -B build -G Ninja >/dev/null
cmake --build build --target tovelsetup
exec build/app/tovelsetup --disc=examples/disc "$@"
