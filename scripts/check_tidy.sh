#!/usr/bin/env bash
# Runs clang-tidy 14 on every source of the product that a build folder compiles.
#   check_tidy.sh BUILD [JOBS] [PATTERN]
#     BUILD    a configured build folder with a compile_commands.json
#     JOBS     number of parallel jobs, by default one per processor
#     PATTERN  only sources whose path matches this regular expression, by default all in src/
# Exits with 77 (skipped) if that version is not installed.
set -euo pipefail
build=${1:?which build folder?}
jobs=${2:-$(nproc)}
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
pattern=${3:-^$root/src/}

tidy="" runner=""
for suffix in -14 ""; do
    if command -v clang-tidy$suffix >/dev/null && command -v run-clang-tidy$suffix >/dev/null &&
        clang-tidy$suffix --version | grep -q 'version 14\.'; then
        tidy=clang-tidy$suffix runner=run-clang-tidy$suffix
        break
    fi
done
if [ -z "$tidy" ]; then
    echo "skipped: clang-tidy 14 is not installed"
    exit 77
fi

output=$(mktemp)
trap 'rm -f "$output"' EXIT
code=0
# If the build is by g++, clang does not know all of its warning options.
$runner -quiet -clang-tidy-binary "$(command -v $tidy)" -p "$build" -j "$jobs" \
    -extra-arg=-Wno-unknown-warning-option "$pattern" >"$output" 2>&1 || code=$?
sed -i 's/\x1b\[[0-9;]*m//g' "$output"
# For each source clang-tidy prints its command and a count of suppressed warnings; neither is a finding.
grep -Ev '^[^ ]*clang-tidy[^ ]* |^[0-9]+ warnings? generated|^Suppressed |^Use -header-filter|^$' "$output" || true
checked=$(grep -Ec '^[^ ]*clang-tidy[^ ]* ' "$output" || true)
if [ "$checked" -eq 0 ]; then
    echo "no source matches $pattern" >&2
    exit 2
fi
echo "clang-tidy checked $checked sources."
exit $code
