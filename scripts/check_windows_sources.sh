#!/usr/bin/env bash
# Checks that the sources which only Windows needs compile without a warning, without building anything: the DLL, its adapter
# of ADO, the console, the example. scripts/windows.sh builds and runs them with their tests; it takes too long for every
# change. The window is left out, because its toolkit is not there. Exits with 77 (skipped) if the compilers are not
# installed.
#   check_windows_sources.sh GENERATED JOBS   GENERATED: folder with what the build generates for the library
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
generated=$1 jobs=$2

compiler=x86_64-w64-mingw32-g++-posix
definitions=/usr/include/wine/wine/windows
for tool in "$compiler" x86_64-w64-mingw32-widl; do
    if ! command -v "$tool" >/dev/null; then
        echo "skipped: $tool is not installed"
        exit 77
    fi
done
if [ ! -d "$definitions" ]; then
    echo "skipped: the interface definitions of the system (libwine-dev) are not installed"
    exit 77
fi

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/com"
x86_64-w64-mingw32-widl -I "$definitions" -h -o "$folder/com/Z7CashFlow.h" src/com/Z7CashFlow.idl >"$folder/log" 2>&1 ||
    { cat "$folder/log" >&2; exit 1; }

mapfile -t files < <(find src examples/windows \( -path 'src/com/*' -o -path 'src/adapters/ado/*' -o -path 'src/host/windows/*' \
    -o -path 'examples/windows/*' -o -name '*_windows.cpp' \) -name '*.cpp' ! -path '*/wx/*' | sort)
# The libraries' headers are the same on every system; those of this system's own C library must not come first.
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$jobs" \
    "$compiler" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -Wno-restrict -Isrc \
    -I"$generated" -isystem "$folder" -isystem "$folder/com" -idirafter /usr/include
echo "${#files[@]} sources compile for Windows."
