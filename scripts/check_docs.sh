#!/usr/bin/env bash
# Checks that Doxygen has nothing to warn of in the public headers and the guides, and that it would warn of a
# declaration without a comment: check_docs.sh DOXYFILE FOLDER. Exits with 77 (skipped) if Doxygen is not installed.
set -euo pipefail
doxyfile=$1
folder=$2

if ! command -v doxygen >/dev/null; then
    echo "skipped: Doxygen is not installed"
    exit 77
fi
rm -rf "$folder"
mkdir -p "$folder"

# doxygen_with LINE...: runs Doxygen with lines that follow those of the file.
doxygen_with() {
    { cat "$doxyfile" && printf '%s\n' "$@"; } | doxygen - 2>&1
}

doxygen_with "OUTPUT_DIRECTORY = $folder"

printf '/// A type with a member that has no comment.\nstruct Sample {\n    int member = 0;\n};\n' >"$folder/sample.h"
if doxygen_with "OUTPUT_DIRECTORY = $folder/sample" "INPUT = $folder/sample.h" "USE_MDFILE_AS_MAINPAGE =" >"$folder/sample.log" ||
    ! grep -q 'Member member (variable) of struct Sample is not documented' "$folder/sample.log"; then
    echo "A member without a comment is not reported:" >&2
    cat "$folder/sample.log" >&2
    exit 1
fi
echo "$(find "$folder/html" -name '*.html' | wc -l) pages without a warning"
