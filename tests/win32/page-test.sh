#!/usr/bin/env bash
# Opens every page of the sample disc in both form sets in the Windows build under Wine and
# Xvfb, one after the other in English, German and Japanese (on an English Windows), and fails
# when one of them shows a fault (TOVELSETUP.EXE's page test, docs/WIZARD.md). The pictures
# stay in BUILD_DIR/page-test.
#
#   tests/win32/page-test.sh BUILD_DIR BASE_PREFIX
#
# BASE_PREFIX is a prepared Wine prefix (scripts/test-windows.sh makes it); it is copied, not
# changed. Needs xvfb-run. TOVEL_PAGES (form names of either set) and TOVEL_LANGUAGES
# (language indices) choose others.
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

# Every form of both sets (the page tester's, docs/WIZARD.md): the classic set, then the
# "frmMSI" twins and the golden component page (the installation page and the message box
# are the same in both).
classic="frmWelcome frmSetupLanguage frmWelcome2 frmReadme frmSearch frmOldVersion frmLicense
  frmInformation frmIdentification frmDestination frmLanguages frmUpdateOrNew frmSetupType
  frmBusSystem frmCustomSetup frmInstallation frmDone frmBrowseDir frmMessage"
msi="frmMSIWelcome frmMSISetupLanguage frmMSIWelcome2 frmMSIReadMe frmMSISearch frmMSIOldVersion
  frmMSILicense frmMSIInformation frmMSIIdentification frmMSIDestination frmMSILanguage
  frmMSIUpdateOrNew frmMSISetupType frmMSIBussystem frmMSICustomSetup frmMSICustomSetupGolden
  frmMSIDone frmMSIBrowseDir"
read -r -d '' -a pages <<<"${TOVEL_PAGES:-$classic $msi}" || true
read -r -a languages <<<"${TOVEL_LANGUAGES:-1 0 5}"
export PAGES="${pages[*]}" LANGUAGES="${languages[*]}" DISC=$work/disc OUT=$out
# One X server and one Wine server for all pages: windows on a real (virtual) display, Wine
# drawing the frames itself (no window manager), and the Japanese face mapped to the
# Japanese font the machine has.
xvfb-run -a -s "-screen 0 800x600x24" bash -c '
  set -u
  wine reg delete "HKCU\Software\Wine\Drivers" /v Graphics /f >/dev/null 2>&1
  wine reg add "HKCU\Software\Wine\X11 Driver" /v Managed /d N /f >/dev/null 2>&1
  wine reg add "HKCU\Software\Wine\Fonts\Replacements" /v "MS UI Gothic" /d "IPAPGothic" /f >/dev/null 2>&1
  failed=0
  for language in $LANGUAGES; do
    for page in $PAGES; do
      TOVEL_PAGE_TEST="$page:$language" TOVEL_PAGE_TEST_OUT="Z:${OUT//\//\\}" timeout 60 wine "$DISC/TOVELSETUP.EXE" >/dev/null 2>&1
      status=$?
      [[ $status -eq 0 ]] && continue
      echo "page-test: $page in language $language: exit status $status" >&2
      grep -h "^FAULT" "$(ls -t "$OUT/$page"-*.txt 2>/dev/null | head -n 1)" 2>/dev/null | tr -d "\r" | sed "s/^/  /" >&2
      failed=1
    done
  done
  timeout 30 wineserver -w || wineserver -k
  exit $failed'
echo "page-test: pages in $out"
