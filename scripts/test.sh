#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test and every check:
#   1. a build by clang with address and undefined-behaviour sanitizers, whose findings are fatal, and all tests in it;
#   2. a build by g++ with warnings as errors, all tests in it, and the checks of the house: clang-tidy, format,
#      directions of includes, names of files, a test for every option, a project that uses the installed package.
# What apt and the compilers write goes to build/log. The last lines are ctest's own. Any failure ends the script with a
# code other than 0, after both builds were tested.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/steps.sh
. scripts/lib/packages.sh

# Objects that the compiler cache holds serve every clone, wherever it lies.
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
