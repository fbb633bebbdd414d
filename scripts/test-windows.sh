#!/usr/bin/env bash
# Runs the unit tests of the Windows (MinGW) build under Wine.
#
#   scripts/test-windows.sh [BUILD_DIR] [test program arguments...]
#
# BUILD_DIR defaults to build-win; every tovel_tests_*.exe below it runs, headless, in a fresh
# copy of a prepared Wine prefix (Windows XP SP3, English (UK), windows without a display)
# that is removed afterwards.
# Further arguments go to each test program (e.g. --gtest_filter=Files*). Without arguments
# the pages of the setup are opened too, under Xvfb (tests/win32/page-test.sh), the wizard
# is walked through to its end on the Windows sample disc (tests/win32/walk-test.sh), a run
# is restarted in its middle and resumed (tests/win32/restart-test.sh), and the disc is
# installed silently from an answer file (tests/win32/silent-test.sh).
#
# Environment:
#   TOVEL_WINE_CACHE     where the prepared prefix is kept (default ~/.cache/tovelsetup)
#   TOVEL_TEST_TIMEOUT   seconds one test program may take (default 300)
#   TOVEL_KEEP_PREFIX=1  keep the run's prefix for a look afterwards
set -euo pipefail

build_dir=${1:-build-win}
[[ $# -gt 0 ]] && shift
test_args=("$@")

cache_dir=${TOVEL_WINE_CACHE:-${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/tovelsetup}
base_prefix=$cache_dir/wine-base
test_timeout=${TOVEL_TEST_TIMEOUT:-300}
# Bump when the prepared prefix changes, so cached copies are made again.
prefix_recipe=3

log() { printf 'test-windows: %s\n' "$*" >&2; }
die() { log "$*"; exit 2; }

for tool in wine wineboot wineserver timeout cp mktemp; do
    command -v "$tool" >/dev/null 2>&1 || die "'$tool' is missing (apt-get install wine wine64 coreutils)"
done
[[ -d $build_dir ]] || die "no build folder '$build_dir' (build with the MinGW toolchain first)"
[[ $test_timeout =~ ^[0-9]+$ ]] || die "TOVEL_TEST_TIMEOUT must be a number of seconds"

# No display: the tests need no windows, and a CI machine has no X server. Wine must not
# touch the desktop menus or download Mono/Gecko.
unset DISPLAY WAYLAND_DISPLAY
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
export WINEARCH=win64

wine_version=$(wine --version 2>/dev/null || true)
stamp="recipe=$prefix_recipe wine=$wine_version"

prepare_base() {
    local fresh=$cache_dir/wine-base.new.$$
    rm -rf "$fresh"
    log "preparing the Wine prefix in $base_prefix (once; about 15 s)"
    WINEPREFIX=$fresh timeout 300 wineboot -i >/dev/null 2>&1 || true
    WINEPREFIX=$fresh timeout 120 wineserver -w || WINEPREFIX=$fresh wineserver -k || true
    [[ -f $fresh/system.reg ]] || { rm -rf "$fresh"; die "wineboot did not create a prefix"; }
    # Every process reads the version from HKCU\Software\Wine as it starts; the HKLM values
    # are what Windows XP itself shows, so both sides of a test bed agree.
    local nt='HKLM\Software\Microsoft\Windows NT\CurrentVersion'
    # The null graphics driver lets programs create (invisible) windows without an X server,
    # so finding the windows of a setup can be tested headless.
    local -a settings=(
        "HKCU\\Software\\Wine|Version|winxp"
        "HKCU\\Software\\Wine\\Drivers|Graphics|null"
        "$nt|ProductName|Microsoft Windows XP"
        "$nt|CurrentVersion|5.1"
        "$nt|CurrentBuildNumber|2600"
        "$nt|CSDVersion|Service Pack 3"
    )
    local setting key name value
    for setting in "${settings[@]}"; do
        IFS='|' read -r key name value <<<"$setting"
        WINEPREFIX=$fresh timeout 120 wine reg add "$key" /v "$name" /d "$value" /f >/dev/null 2>&1 ||
            { rm -rf "$fresh"; die "could not set $key\\$name in the new prefix"; }
    done
    # The .reg files are complete only once the server has written them and exited.
    WINEPREFIX=$fresh timeout 120 wineserver -w || WINEPREFIX=$fresh wineserver -k || true
    grep -q '"Version"="winxp"' "$fresh/user.reg" || { rm -rf "$fresh"; die "the Windows version did not stick"; }
    printf '%s\n' "$stamp" >"$fresh/.tovel-stamp"
    rm -rf "$base_prefix"
    mv "$fresh" "$base_prefix"
}

# Wine takes the user's language (0x0809) from LC_ALL even when that locale is missing,
# but then falls back to ASCII for Unix file names, and names beyond ASCII fail. Without
# the locale on the machine, a private copy is compiled into the cache (needs the
# "locales" package's sources; localedef is part of libc).
test_locale=en_GB.UTF-8
prepare_locale() {
    locale -a 2>/dev/null | grep -qix 'en_GB.utf-\?8' && return 0
    local locale_dir=$cache_dir/locale
    if [[ ! -f $locale_dir/$test_locale/LC_CTYPE ]] && command -v localedef >/dev/null 2>&1 &&
        [[ -e /usr/share/i18n/locales/en_GB ]]; then
        rm -rf "$locale_dir.new.$$"
        mkdir -p "$locale_dir.new.$$" "$locale_dir"
        if localedef -i en_GB -f UTF-8 "$locale_dir.new.$$/$test_locale" >/dev/null 2>&1 ||
            [[ -f $locale_dir.new.$$/$test_locale/LC_CTYPE ]]; then
            rm -rf "${locale_dir:?}/$test_locale"
            mv "$locale_dir.new.$$/$test_locale" "$locale_dir/"
        fi
        rm -rf "$locale_dir.new.$$"
    fi
    if [[ -f $locale_dir/$test_locale/LC_CTYPE ]]; then
        export LOCPATH=$locale_dir
    else
        log "warning: no $test_locale locale (apt-get install locales); file names beyond ASCII will fail"
    fi
}

mkdir -p "$cache_dir"
{
    # One preparer at a time; others wait and then use its result.
    if command -v flock >/dev/null 2>&1; then flock -w 600 9 || log "waiting for the cache lock timed out"; fi
    if [[ ! -f $base_prefix/.tovel-stamp || "$(cat "$base_prefix/.tovel-stamp")" != "$stamp" ]]; then
        prepare_base
    fi
    prepare_locale
} 9>"$cache_dir/lock"

mapfile -t programs < <(find "$build_dir" -name 'tovel_tests_*.exe' -type f | sort)
if [[ ${#programs[@]} -eq 0 ]]; then
    log "no tovel_tests_*.exe in $build_dir"
    exit 1
fi

# The machine field of a PE file: 8664 for x86-64, 014c for i386.
pe_machine() {
    local offset
    offset=$(od -An -tu4 -j60 -N4 "$1" 2>/dev/null | tr -d ' ') || return 0
    [[ $offset =~ ^[0-9]+$ ]] || return 0
    od -An -tx2 -j$((offset + 4)) -N2 "$1" 2>/dev/null | tr -d ' '
}

run_prefix=$(mktemp -d "${TMPDIR:-/tmp}/tovel-wine.XXXXXX")
output=$(mktemp "${TMPDIR:-/tmp}/tovel-wine-out.XXXXXX")
cleanup() {
    WINEPREFIX=$run_prefix timeout 30 wineserver -k >/dev/null 2>&1 || true
    if [[ ${TOVEL_KEEP_PREFIX:-0} == 1 ]]; then
        log "prefix kept in $run_prefix"
    else
        rm -rf "$run_prefix"
    fi
    rm -f "$output"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

started=$SECONDS
cp -a --reflink=auto "$base_prefix/." "$run_prefix/"
export WINEPREFIX=$run_prefix

expect_summary=1
for arg in "${test_args[@]}"; do
    [[ $arg == --gtest_list_tests || $arg == --help || $arg == -h ]] && expect_summary=0
done

failed=()
for program in "${programs[@]}"; do
    name=$(basename "$program")
    log "running $name"
    program_started=$SECONDS
    # Output goes to a file, not a pipe: a process the test leaves running would hold a pipe
    # open and keep this script waiting.
    set +e
    (cd "$(dirname "$program")" &&
        env LC_ALL=$test_locale timeout -k 10 "$test_timeout" wine "./$name" --gtest_color=no "${test_args[@]}") \
        >"$output" 2>&1 </dev/null
    rc=$?
    set -e
    tr -d '\r' <"$output"
    if [[ $rc -eq 124 || $rc -eq 137 ]]; then
        log "$name did not finish within $test_timeout s"
    fi
    log "$name: exit code $rc after $((SECONDS - program_started)) s"
    # An exit code of 0 alone proves nothing: without wine32, Wine "runs" a 32-bit program
    # in an experimental mode that prints nothing and ends with 0.
    if [[ $rc -eq 0 && $expect_summary == 1 ]] && ! tr -d '\r' <"$output" | grep -q '^\[  PASSED  \] [0-9]* test'; then
        log "$name ended without a test summary"
        rc=1
    fi
    if [[ $rc -ne 0 && $(pe_machine "$program") == 014c ]]; then
        log "$name is a 32-bit program; this Wine may run 64-bit programs only (wine32 missing)"
    fi
    [[ $rc -eq 0 ]] || failed+=("$name")
done

# The pages themselves, on a virtual screen: skipped when the arguments choose tests, and
# where the setup was not built or Xvfb is missing.
if [[ ${#test_args[@]} -eq 0 ]] && find "$build_dir" -name TOVELSETUP.EXE -type f | grep -q .; then
    if command -v xvfb-run >/dev/null 2>&1; then
        log "running the page test"
        pages_started=$SECONDS
        "$(dirname "$0")/../tests/win32/page-test.sh" "$build_dir" "$base_prefix" || failed+=("page-test")
        log "page test: $((SECONDS - pages_started)) s"
        walk_started=$SECONDS
        "$(dirname "$0")/../tests/win32/walk-test.sh" "$build_dir" "$base_prefix" || failed+=("walk-test")
        log "walk test: $((SECONDS - walk_started)) s"
    else
        log "warning: no xvfb-run (apt-get install xvfb): the page test is skipped"
    fi
    # On the prefix's null display: a restart in the middle of a run, and a silent run.
    for wine_test in restart-test silent-test; do
        wine_test_started=$SECONDS
        "$(dirname "$0")/../tests/win32/$wine_test.sh" "$build_dir" "$base_prefix" || failed+=("$wine_test")
        log "$wine_test: $((SECONDS - wine_test_started)) s"
    done
fi

log "finished in $((SECONDS - started)) s"
if [[ ${#failed[@]} -gt 0 ]]; then
    log "FAILED: ${failed[*]}"
    exit 1
fi
log "all ${#programs[@]} test programs passed"
