#!/usr/bin/env bash
# Checks that the sources are formatted as by clang-format 14 (other versions break lines differently); --fix formats
# them. The formatter leaves comments alone, so their width is checked here. Exits with 77 (skipped) if that version is
# not installed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

formatter=""
for name in clang-format-14 clang-format; do
    if command -v $name >/dev/null && $name --version | grep -q 'version 14\.'; then
        formatter=$name
        break
    fi
done
if [ -z "$formatter" ]; then
    echo "skipped: clang-format 14 is not installed"
    exit 77
fi

mapfile -t files < <(find src tests bench fuzz examples \( -name '*.cpp' -o -name '*.h' \) 2>/dev/null | sort)
if [ ${#files[@]} -eq 0 ]; then
    echo "no sources found"
    exit 2
fi
if [ "${1:-}" = --fix ]; then
    $formatter -i "${files[@]}"
    exit
fi
if ! $formatter --dry-run --Werror --ferror-limit=3 "${files[@]}"; then
    echo "Run scripts/check_format.sh --fix" >&2
    exit 1
fi
if LC_ALL=C.UTF-8 grep -nE '^.{121}' "${files[@]}" | grep -E '^[^:]*:[0-9]*: *//'; then
    echo "These comments are longer than 120 columns." >&2
    exit 1
fi
echo "${#files[@]} files are formatted."
