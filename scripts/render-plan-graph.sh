#!/usr/bin/env bash
# Draws the sample disc's catalogue (`--plan --format=dot`) into docs/sample-disc-plan.png
# with Graphviz, which it installs from Debian's packages when missing. Nothing that builds or
# tests needs it. Usage: scripts/render-plan-graph.sh [build folder, default build]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
binary=$build/app/tovelsetup
[ -x "$binary" ] || { echo "no $binary; build first (scripts/build.sh linux)" >&2; exit 2; }
if ! command -v dot >/dev/null; then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq graphviz >/dev/null
fi
machine=$(mktemp -d)
trap 'rm -rf "$machine"' EXIT
"$binary" --machine="$machine/xp" --create=xppro --disc=examples/disc --plan --format=dot | dot -Tpng -Gdpi=80 -o docs/sample-disc-plan.png
echo "docs/sample-disc-plan.png"
