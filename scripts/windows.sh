#!/usr/bin/env bash
# Builds the Windows programs on Debian.
#   --deps   only builds what they are linked with, and prints the folder where it is
# What they are linked with is built once from Debian's source packages into a cache folder,
# ${Z7_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/z7cashflow-windows}.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/steps.sh
. scripts/lib/packages.sh
. scripts/lib/windowsDependencies.sh

step "Packages"
install_packages scripts/packages.txt build windows

step "Dependencies"
time windows_dependencies x64 x86
printf '%s\n' "$windows_dependencies_folder"
