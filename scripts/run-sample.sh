#!/usr/bin/env bash
# The setup of the bundled sample disc on the built-in default machine (created on first use
# in ~/.local/share/tovelsetup/machine, or in $TOVEL_MACHINE). Extra arguments go to tovelsetup.
# Its product setups are the stand-in setup (docs/FAKESETUP.md).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh linux
cmake -S . -B build -G Ninja >/dev/null
cmake --build build --target tovelsetup tovelfakesetup
# The disc's product setups are launchers of the stand-in setup, found on PATH.
export PATH="$PWD/build/fakesetup:$PATH"
exec build/app/tovelsetup --disc=examples/disc "$@"
