#!/usr/bin/env bash
# A silent run of the Windows build under Wine on its sample disc (BUILD_DIR/disc), as an
# administrator starts it with a recorded answer file (tests/win32/Tovel_Auto.ini, docs/DEPLOYMENT.md):
#   TOVELSETUP.EXE /silent=<folder>\Tovel_Auto.ini /log
# No display and no input: it must install the recorded selection and end with 1641, since the
# sample's licence manager asks for a restart at the end, which a silent run carries out (Wine
# gives the status's low byte, 105). Fails unless the log shows the answers read, only the
# silent run's pages and the restart, and the stand-in setups' log shows the products that the
# answers left out were not installed. The logs stay in BUILD_DIR/silent-test.
#
#   tests/win32/silent-test.sh BUILD_DIR BASE_PREFIX
set -euo pipefail
build_dir=$(cd "$1" && pwd)
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
# shellcheck source=tests/win32/wine-bed.sh
source "$source_dir/tests/win32/wine-bed.sh"
bed_disc silent-test "$build_dir" "$2"
mkdir "$work/kit"
cp "$source_dir/tests/win32/Tovel_Auto.ini" "$work/kit/"

set +e
timeout 120 wine "$work/disc/TOVELSETUP.EXE" "/silent=$(winpath "$work/kit/Tovel_Auto.ini")" /log >/dev/null 2>&1
status=$?
timeout 30 wineserver -w
set -e
drive_c=$work/prefix/drive_c
for file in TOVELSETUP.LOG FAKESETUP.LOG; do
    [[ -f $drive_c/$file ]] && tr -d '\r' <"$drive_c/$file" >"$out/$file"
done
failed=0
fail() { echo "silent-test: $*" >&2; failed=1; }
[[ $status -eq $((1641 & 0xFF)) ]] || fail "exit status $status, not 1641 (the restart at the end)"
for line in "Erfolgreich Tovel_Auto.ini eingelesen." "Pages: frmSearch, frmInstallation, frmDone" "Restart Windows." \
    "Log file closed."; do
    grep -aqF "$line" "$out/TOVELSETUP.LOG" 2>/dev/null || fail "the log has no \"$line\""
done
for product in TOVBASE LICMGR HMIRT SAMPLES; do
    grep -aq "^$product: exit 0" "$out/FAKESETUP.LOG" 2>/dev/null || fail "$product was not installed"
done
for product in DESIGNER REPORT; do
    grep -aq "^$product: start" "$out/FAKESETUP.LOG" 2>/dev/null && fail "$product was installed, the answers leave it out"
done
echo "silent-test: logs in $out"
exit $failed
