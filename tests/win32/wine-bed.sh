# Shared by the Wine tests of tests/win32 (sourced): each works in a private copy of the
# prepared prefix (scripts/test-windows.sh makes it) in a folder of its own that goes, with
# every Wine process of it, when the script ends.
#
#   bed_start NAME BASE_PREFIX            makes $work, copies the prefix to $work/prefix, sets Wine's environment
#   bed_disc NAME BUILD_DIR BASE_PREFIX   bed_start, then the build's sample disc copied to $work/disc and
#                                         an empty folder for the results, $out = BUILD_DIR/NAME
#   winpath PATH                          the Windows name of a Unix path (Wine's drive Z: is the root)

bed_start() {
    work=$(mktemp -d "${TMPDIR:-/tmp}/tovel-$1.XXXXXX")
    trap 'WINEPREFIX=$work/prefix timeout 30 wineserver -k >/dev/null 2>&1 || true; rm -rf "$work"' EXIT
    cp -a --reflink=auto "$2/." "$work/prefix/" 2>/dev/null || { mkdir -p "$work/prefix" && cp -a "$2/." "$work/prefix/"; }
    # An English (UK) Windows, as the unit tests have.
    export LC_ALL=en_GB.UTF-8 WINEPREFIX=$work/prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
}

bed_disc() {
    [[ -f $2/disc/TOVELSETUP.EXE ]] || { echo "$1: no disc in $2 (target tovel_disc)" >&2; exit 2; }
    bed_start "$1" "$3"
    out=$2/$1
    rm -rf "$out" && mkdir -p "$out"
    cp -a "$2/disc" "$work/disc"
}

winpath() { local path=${1//\//\\}; printf 'Z:%s' "$path"; }
