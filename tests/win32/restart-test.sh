#!/usr/bin/env bash
# The restart in the middle of a run, on the sample disc of the Windows build (BUILD_DIR/disc)
# under Wine, where the licence manager is made to ask for a restart now (RebootRequested=2 in
# its FAKESETUP.INI). The wizard is walked to the installation and the restart notice answered;
# the setup saves its state, registers itself under RunOnce as "ZZZ_TovelSetup" and restarts
# Windows, which under Wine ends the session's programs and runs RunOnce at once. The resumed
# setup shows the installation and done pages, installs the products after the licence manager
# and ends. Fails unless both logs and the stand-in setups' log show that, and the state file
# and the RunOnce entry are gone. The logs stay in BUILD_DIR/restart-test.
#
#   tests/win32/restart-test.sh BUILD_DIR BASE_PREFIX
set -euo pipefail
build_dir=$(cd "$1" && pwd)
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
# shellcheck source=tests/win32/wine-bed.sh
source "$source_dir/tests/win32/wine-bed.sh"
bed_disc restart-test "$build_dir" "$2"
sed -i 's/^RebootRequested=1/RebootRequested=2/' "$work/disc/Products/License Manager/Setup/FAKESETUP.INI"
# The first run: the wizard's pages as in the walk test, without the designer (its setup
# counts as running 40 s after it ended: the waiting dialog), then OK to the restart notice.
sed -e '/^frmDone/d' -e 's/^frmCustomSetup toggle DOCVIEW$/&\nfrmCustomSetup toggle DESIGNER/' \
    "$source_dir/tests/win32/walk.txt" >"$work/walk.txt"
echo "frmMessage click MessageButton 0" >>"$work/walk.txt"
drive_c=$work/prefix/drive_c

# The windows need no display here: the prefix's null driver makes them, and the walk acts
# on them through their messages.
# The prefix is started first: in a copy nothing has run in yet, the setup's first window
# could be asked for before Wine's desktop is up, and Windows would make none.
timeout 60 wine cmd /c exit >/dev/null 2>&1 || true
TOVEL_WALK=$(winpath "$work/walk.txt") timeout 120 wine "$work/disc/TOVELSETUP.EXE" >/dev/null 2>&1 &
first=$!
# The resumed run inherits the environment: once the first has read the walk, the file is
# changed to the resumed run's.
for ((tick = 0; tick < 600; ++tick)); do
    grep -aq '^Walk: ' "$drive_c/TOVELSETUP.LOG" 2>/dev/null && break
    kill -0 "$first" 2>/dev/null || break
    sleep 0.1
done
echo "frmDone click DoneBtn" >"$work/walk.txt"
set +e
wait "$first"   # ended by the restart: its status tells nothing
# The resumed run is Wine's now; the server ends after it.
timeout 120 wineserver -w
status=$?
set -e
[[ $status -eq 0 ]] || { WINEPREFIX=$work/prefix wineserver -k; echo "restart-test: the resumed run did not end within 120 s" >&2; }

for file in TOVELSETUP1.LOG TOVELSETUP.LOG FAKESETUP.LOG; do
    [[ -f $drive_c/$file ]] && tr -d '\r' <"$drive_c/$file" >"$out/$file"
done
failed=0
fail() { echo "restart-test: $*" >&2; failed=1; }
has() { grep -aqF -- "$2" "$out/$1" 2>/dev/null || fail "$1 has no \"$2\""; }
# Before the restart (the log kept as the newest backup) and after it.
has TOVELSETUP1.LOG "Walk: frmMessage click MessageButton 0"
has TOVELSETUP1.LOG "The installation will carry on automatically after the restart."
has TOVELSETUP.LOG "Walk: frmDone click DoneBtn"
has TOVELSETUP.LOG "Log file closed."
# The licence manager ran once; the products after it ran after the restart.
[[ $(grep -ac '^LICMGR: start' "$out/FAKESETUP.LOG") -eq 1 ]] || fail "the licence manager did not run exactly once"
grep -aA1000 '^LICMGR: exit' "$out/FAKESETUP.LOG" | grep -aq '^HMIRT: start' || fail "the HMI runtime did not run after the restart"
[[ -f $drive_c/INSTDUMP.TMP ]] && fail "the state file INSTDUMP.TMP is left"
grep -aq 'ZZZ_TovelSetup' "$work/prefix/system.reg" && fail "the RunOnce entry ZZZ_TovelSetup is left"
echo "restart-test: logs in $out"
exit $failed
