#!/usr/bin/env bash
# check_windows.sh FOLDER: the programs and DLLs in a folder need nothing that Windows does not bring along, and a DLL for COM
# contains its type library and exports nothing but the entry points of COM. Test programs (test_*) are left out.
set -euo pipefail
folder=$1

# What every supported Windows has. A name missing here, such as libstdc++-6.dll, would have to be delivered.
system='advapi32|bcrypt|comctl32|comdlg32|gdi32|imm32|kernel32|msimg32|msvcrt|odbc32|ole32|oleacc|oleaut32|rpcrt4|shell32|shlwapi|user32|uuid|uxtheme|version|winmm|winspool\.drv|ws2_32'

checked=0
for file in "$folder"/*.exe "$folder"/*.dll; do
    case ${file##*/} in test_* | replay_* | \*.exe | \*.dll) continue ;; esac
    headers=$(x86_64-w64-mingw32-objdump -p "$file")
    needed=$(sed -n 's/^\tDLL Name: //p' <<<"$headers")
    foreign=$(grep -viE "^($system)(\.dll)?$" <<<"$needed" || true)
    if [ -n "$foreign" ]; then
        printf '%s needs what Windows does not bring along: %s\n' "$file" "${foreign//$'\n'/, }" >&2
        exit 1
    fi
    if grep -q 'DllGetClassObject' <<<"$headers"; then
        if ! x86_64-w64-mingw32-objdump -s -j .rsrc "$file" | cut -d' ' -f3-6 | tr -d ' \n' | grep -qi 5400590050004500; then
            printf '%s contains no type library\n' "$file" >&2
            exit 1
        fi
        exports=$(sed -n 's/^\t\[ *[0-9]*\] //p' <<<"$headers" | grep -v '^+base' | sort | tr '\n' ' ')
        if [ "$exports" != 'DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer ' ]; then
            printf '%s exports %s names, such as: %s\n' "$file" "$(wc -w <<<"$exports")" "$(cut -d' ' -f1-9 <<<"$exports")" >&2
            exit 1
        fi
    fi
    checked=$((checked + 1))
done
if [ "$checked" -eq 0 ]; then
    echo "there is no program in $folder" >&2
    exit 1
fi
echo "$checked programs and DLLs need only what Windows brings along."
