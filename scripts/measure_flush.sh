#!/usr/bin/env bash
# measure_flush.sh Z7CF [FOLDER YEAR]
# Measures `allot` on a disk whose flush takes 5 ms, and without that delay, five times in alternation, for the sample company or for a
# folder of table files.

set -euo pipefail
z7cf=$(realpath "$1")
root=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
c++ -O1 -shared -fPIC -o "$work/flush.so" "$root/bench/slowFlush.cpp" -ldl
if [ $# -gt 1 ]; then "$z7cf" init "$work/account.db" --from "$(realpath "$2")" > /dev/null
else "$z7cf" init "$work/account.db" --sample > /dev/null; fi
year=${3:-2024}
TIMEFORMAT='  %R s elapsed, %U s + %S s of processor time'
for turn in 1 2 3 4 5; do
  for microseconds in 5000 0; do
    cp "$work/account.db" "$work/run.db"; cp "$work/account.zqsystem.db" "$work/run.zqsystem.db"
    echo "round $turn, a flush takes $microseconds microseconds:"
    time Z7_FLUSH_MICROSECONDS=$microseconds LD_PRELOAD="$work/flush.so" \
      "$z7cf" allot "$work/run.db" --year "$year" --quiet > /dev/null 2> "$work/errors" || [ $? = 1 ]
    grep flushes "$work/errors"
  done
done
