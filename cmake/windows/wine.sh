#!/usr/bin/env bash
# wine.sh PREFIX PROGRAM ARGUMENT...: runs a Windows program under Wine with its exit code, for tests.
# PREFIX is the folder with Wine's own files; it is created when it is needed first.
#
# The output goes through files, because Wine's services keep a pipe open after the program has ended.
set -uo pipefail
export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d'
shift

# Names of files are not ASCII only.
case ${LC_ALL:-} in *UTF-8) ;; *) export LC_ALL=C.UTF-8 ;; esac

wine=$(command -v wine || command -v wine64) || { echo "Wine is not installed: apt-get install wine wine64" >&2; exit 127; }

if [ ! -e "$WINEPREFIX/.ready" ]; then
    mkdir -p "$WINEPREFIX" || exit
    (
        flock 9
        [ -e "$WINEPREFIX/.ready" ] && exit
        "$wine" wineboot --init >"$WINEPREFIX/wineboot.log" 2>&1 9>&- </dev/null || exit
        # The services end by themselves soon; until then their settings are only in memory.
        "$wine" wineboot --end-session >>"$WINEPREFIX/wineboot.log" 2>&1 9>&- </dev/null
        touch "$WINEPREFIX/.ready"
    ) 9>"$WINEPREFIX/lock" || { cat "$WINEPREFIX/wineboot.log" >&2; exit 127; }
fi

folder=$(mktemp -d) || exit
trap 'rm -rf "$folder"' EXIT
"$wine" "$@" >"$folder/out" 2>"$folder/err"
code=$?
cat "$folder/out"
cat "$folder/err" >&2
exit $code
