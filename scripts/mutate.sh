#!/usr/bin/env bash
# Makes small changes to the library, one at a time, and checks whether a test detects each. Survivors are listed in
# build/mutate/survivors.md. The options are those of scripts/lib/mutate.py, see --help. This is not part of the test run.
#   mutate.sh --most 200 --seed 7
#   mutate.sh --most 20 providers/      only sources whose path matches
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
if [ ! -f build/mutate/build.ninja ]; then
    cmake -S . -B build/mutate -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++-14 \
        "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0" -DZ7_BUILD_CHECKS=OFF >/dev/null
fi
exec python3 scripts/lib/mutate.py build/mutate "$@"
