#!/usr/bin/env bash
# Installs missing packages, builds, and runs all tests and checks:
#   1. a clang build with address and undefined-behaviour sanitizers, whose findings are fatal, and all its tests;
#   2. a g++ build with warnings as errors, all its tests, and the checks: clang-tidy, format, direction of includes,
#      file names, a test for every option, a project that uses the installed package.
# The output of apt and of the compilers goes to build/log; the last lines are those of ctest. If anything fails, the
# script exits with a code other than 0, after both builds were tested.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/steps.sh
. scripts/lib/packages.sh

# Lets clones in other folders share the objects of the compiler cache.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1

step "Packages"
install_packages scripts/packages.txt build test

jobs=$(nproc)
failed=""

step "Build with sanitizers"
build_preset asan -j "$jobs"

step "Tests with sanitizers"
ctest --preset asan -j "$jobs" || failed="the tests with sanitizers"

step "Build"
build_preset dev -j "$jobs"

step "Tests and checks"
if [ -n "$failed" ]; then
    trap 'echo "FAILED before: $failed (see above)" >&2; exit 1' EXIT
fi
ctest --preset dev -j "$jobs"
