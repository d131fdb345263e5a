#!/usr/bin/env bash
# Builds with instrumentation, runs the tests, and prints line and branch coverage by folder of src.
#   coverage.sh [--report] [--json] [PATTERN]
#     --report  only prints the figures of the last run
#     --json    prints them as JSON
#     PATTERN   also lists the uncovered lines of the sources whose path matches this regular expression
# The two directions of a branch are counted separately. This is not part of the test run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=build/coverage
version=14
report="" options=()
while [ $# -gt 0 ]; do
    case $1 in
    --report) report=1 ;;
    *) options+=("$1") ;;
    esac
    shift
done

for tool in llvm-profdata-$version llvm-cov-$version; do
    if ! command -v $tool >/dev/null; then
        echo "$tool is missing: install the package llvm-$version" >&2
        exit 2
    fi
done

if [ -z "$report" ]; then
    export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
    cmake --preset coverage
    cmake --build --preset coverage -j "$(nproc)"
    rm -rf $build/profiles
    # A set of profile files for each program, into which its runs are merged when they end.
    LLVM_PROFILE_FILE="$PWD/$build/profiles/%4m.profraw" ctest --preset coverage -j "$(nproc)" --quiet ||
        echo "Some tests failed; the figures cover what ran." >&2
    llvm-profdata-$version merge -sparse $build/profiles/*.profraw -o $build/coverage.profdata
fi

programs=()
while IFS= read -r program; do
    programs+=(-object "$program")
done < <(find $build/bin $build/tests $build/fuzz -type f \( -perm -u+x -o -name '*.so' \) ! -name '*.cmake' | sort)
llvm-cov-$version export -format=lcov -instr-profile $build/coverage.profdata \
    "${programs[@]}" >$build/coverage.lcov 2>$build/coverage.log
python3 scripts/lib/coverage.py $build/coverage.lcov "${options[@]+"${options[@]}"}"
