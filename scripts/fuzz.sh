#!/usr/bin/env bash
# Runs one fuzz target under the address and undefined-behaviour sanitizers: scripts/fuzz.sh NAME SECONDS
#   NAME     a folder of fuzz/, such as collection_load
#   SECONDS  how long to run; 0 runs until a finding
# Needs clang with libFuzzer (Debian: clang, libclang-rt-dev). Builds in build/fuzz, or in Z7_FUZZ_BUILD if that is set. The
# generated corpus is kept there in corpus/NAME, findings in findings/NAME. Exits with 0 if there was no finding.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    sed -n '2,6s/^# \{0,1\}//p' "$0" >&2
    echo "targets: $(cd fuzz && echo */ | tr -d /)" >&2
    exit 2
}

if [ $# -ne 2 ] || [ ! -d "fuzz/$1/corpus" ] || ! [[ $2 =~ ^[0-9]+$ ]]; then
    usage
fi
name=$1
seconds=$2
build=${Z7_FUZZ_BUILD:-build/fuzz}

if ! command -v clang++ >/dev/null; then
    echo "fuzz.sh: clang++ is missing. On Debian: apt-get install clang libclang-rt-14-dev" >&2
    exit 1
fi
cmake --preset fuzz -B "$build"
cmake --build "$build" --target "fuzz_$name"

corpus=$build/corpus/$name
findings=$build/findings/$name
mkdir -p "$corpus" "$findings"
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
status=0
"$build/bin/fuzz_$name" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=1024 -print_final_stats=1 \
    -dict="fuzz/$name/dictionary.txt" -artifact_prefix="$findings/" \
    "$corpus" "fuzz/$name/corpus" "fuzz/$name/crashes" || status=$?

shopt -s nullglob
found=("$findings"/*)
if [ ${#found[@]} -gt 0 ]; then
    echo
    echo "Findings of $name:"
    printf '  %s\n' "${found[@]}"
    echo "Run one again:        $build/bin/fuzz_$name FILE"
    echo "Minimize it:          $build/bin/fuzz_$name -minimize_crash=1 -max_total_time=60 FILE"
    echo "Keep it as a test:    copy it to fuzz/$name/crashes/ under a name that says what it shows, and fix the"
    echo "                      cause; from then on it is replayed by the test fuzz.$name.crashes.THAT_NAME."
    [ "$status" -ne 0 ] || status=1
fi
exit "$status"
