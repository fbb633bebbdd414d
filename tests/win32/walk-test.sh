#!/usr/bin/env bash
# Walks the whole wizard of the Windows build on its sample disc (BUILD_DIR/disc) under Wine
# and Xvfb: every page through its real windows (tests/win32/walk.txt, TOVEL_WALK in
# docs/WIZARD.md), the products installed by the Windows stand-in setup, to the done page.
# Fails unless the run ends as done (the sample's licence manager asks for a restart: 3010,
# which Wine gives as its low byte, 194), every line of the walk was done, and the log shows
# the user's choice on the component page, setups run and the done page. The log stays in BUILD_DIR/walk-test.
#
#   tests/win32/walk-test.sh BUILD_DIR BASE_PREFIX
set -euo pipefail
build_dir=$(cd "$1" && pwd)
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
command -v xvfb-run >/dev/null || { echo "walk-test: xvfb-run is missing (apt-get install xvfb)" >&2; exit 2; }
# shellcheck source=tests/win32/wine-bed.sh
source "$source_dir/tests/win32/wine-bed.sh"
bed_disc walk-test "$build_dir" "$2"
cp "$source_dir/tests/win32/walk.txt" "$work/walk.txt"

WALK=$(winpath "$work/walk.txt")
export WALK DISC=$work/disc
set +e
xvfb-run -a -s "-screen 0 800x600x24" bash -c '
  wine reg delete "HKCU\Software\Wine\Drivers" /v Graphics /f >/dev/null 2>&1
  wine reg add "HKCU\Software\Wine\X11 Driver" /v Managed /d N /f >/dev/null 2>&1
  TOVEL_WALK="$WALK" timeout 150 wine "$DISC/TOVELSETUP.EXE" >/dev/null 2>&1
  status=$?
  timeout 30 wineserver -w || wineserver -k
  exit $status'
status=$?
set -e
log=$work/prefix/drive_c/TOVELSETUP.LOG
[[ -f $log ]] && tr -d '\r' <"$log" >"$out/TOVELSETUP.LOG"
failed=0
fail() { echo "walk-test: $*" >&2; failed=1; }
[[ $status -eq 0 || $status -eq $((3010 & 0xFF)) ]] || fail "exit status $status"
[[ -f $out/TOVELSETUP.LOG ]] || { fail "no C:\\TOVELSETUP.LOG"; exit 1; }
lines=$(grep -cv '^\s*\(#\|$\)' "$work/walk.txt")
done=$(grep -ac 'Walk: frm' "$out/TOVELSETUP.LOG" || true)
[[ $done -eq $lines ]] || fail "$done of $lines lines of the walk were done"
grep -a 'Walk: .*skipped' "$out/TOVELSETUP.LOG" >&2 && fail "lines of the walk were skipped"
for line in "Component DOCVIEW selected by the user." "Setup Exitcode: 0" "Page frmDone"; do
    grep -aqF "$line" "$out/TOVELSETUP.LOG" || fail "the log has no \"$line\""
done
echo "walk-test: log in $out/TOVELSETUP.LOG"
exit $failed
