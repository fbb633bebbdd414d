#!/usr/bin/env bash
# Opens pages of the sample disc in the Windows build under Wine and Xvfb, one after the other
# in English, German and Japanese (on an English Windows), and fails when one of them shows a
# fault (TOVELSETUP.EXE's page test, docs/WIZARD.md). The pictures stay in BUILD_DIR/page-test.
#
#   tests/win32/page-test.sh BUILD_DIR BASE_PREFIX
#
# BASE_PREFIX is a prepared Wine prefix (scripts/test-windows.sh makes it); it is copied, not
# changed. Needs xvfb-run. TOVEL_PAGES and TOVEL_LANGUAGES (language indices) choose others.
set -euo pipefail
build_dir=$(cd "$1" && pwd)
base_prefix=$2
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
exe=$(find "$build_dir" -name TOVELSETUP.EXE -type f | head -n 1)
[[ -n $exe ]] || { echo "page-test: no TOVELSETUP.EXE in $build_dir" >&2; exit 2; }
command -v xvfb-run >/dev/null || { echo "page-test: xvfb-run is missing (apt-get install xvfb)" >&2; exit 2; }

# shellcheck source=tests/win32/wine-bed.sh
source "$source_dir/tests/win32/wine-bed.sh"
bed_start page-test "$base_prefix"
out=$build_dir/page-test
rm -rf "$out" && mkdir -p "$out"
cp -a "$source_dir/examples/disc" "$work/disc"
cp "$exe" "$work/disc/"
# The same disc with the other form set.
cp -a "$work/disc" "$work/disc-msi"
sed -i 's/^OldForms=True/OldForms=False/' "$work/disc-msi/Setups.ini"
mkdir -p "$out/msi"

read -r -a pages <<<"${TOVEL_PAGES:-frmSetupLanguage frmWelcome2 frmLicense frmDestination frmCustomSetup frmInstallation frmDone frmMessage}"
read -r -a languages <<<"${TOVEL_LANGUAGES:-1 0 5}"
read -r -a msi_pages <<<"${TOVEL_MSI_PAGES:-frmWelcome2 frmLicense frmDestination}"
export PAGES="${pages[*]}" LANGUAGES="${languages[*]}" MSI_PAGES="${msi_pages[*]}" DISC=$work/disc OUT=$out
# One X server and one Wine server for all pages: windows on a real (virtual) display, Wine
# drawing the frames itself (no window manager), and the Japanese face mapped to the
# Japanese font the machine has.
xvfb-run -a -s "-screen 0 800x600x24" bash -c '
  set -u
  wine reg delete "HKCU\Software\Wine\Drivers" /v Graphics /f >/dev/null 2>&1
  wine reg add "HKCU\Software\Wine\X11 Driver" /v Managed /d N /f >/dev/null 2>&1
  wine reg add "HKCU\Software\Wine\Fonts\Replacements" /v "MS UI Gothic" /d "IPAPGothic" /f >/dev/null 2>&1
  failed=0
  open_page() {   # disc folder, output folder, page, language
    TOVEL_PAGE_TEST="$3:$4" TOVEL_PAGE_TEST_OUT="Z:${2//\//\\}" timeout 60 wine "$1/TOVELSETUP.EXE" >/dev/null 2>&1
    local status=$?
    [[ $status -eq 0 ]] && return
    echo "page-test: $3 in language $4 ($1): exit status $status" >&2
    grep -h "^FAULT" "$2/$3"-*.txt 2>/dev/null | tr -d "\r" | sed "s/^/  /" >&2
    failed=1
  }
  for language in $LANGUAGES; do
    for page in $PAGES; do open_page "$DISC" "$OUT" "$page" "$language"; done
  done
  for page in $MSI_PAGES; do open_page "$DISC-msi" "$OUT/msi" "$page" 1; done
  # The component page has the most to fit: its other form in every language as well.
  for language in $LANGUAGES; do open_page "$DISC-msi" "$OUT/msi" frmCustomSetup "$language"; done
  timeout 30 wineserver -w || wineserver -k
  exit $failed'
echo "page-test: pages in $out"
