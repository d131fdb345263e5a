#!/usr/bin/env bash
# From bare Debian to a zip for Windows: installs missing packages, builds what the programs are linked with, builds with
# warnings as errors for 64 and 32 bits, runs the tests for 64 bits under Wine, checks what the programs need of a system,
# and packs them.
#   --deps             only builds what they are linked with, and prints the folders where it is
#   --without-window   leaves out the window of the dialog, whose toolkit takes longest to build
# What they are linked with is built once, from Debian's source packages, into a cache folder,
# ${Z7_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/z7cashflow-windows}. Nothing but Debian packages is downloaded.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/steps.sh
. scripts/lib/packages.sh
. scripts/lib/windowsDependencies.sh
. scripts/lib/windowsToolkit.sh
. scripts/lib/windowsZip.sh

only_dependencies="" window=yes
for option in "$@"; do
    case $option in
    --deps) only_dependencies=yes ;;
    --without-window) window="" ;;
    *) printf 'Unknown option %s; the options are --deps and --without-window.\n' "$option" >&2 && exit 2 ;;
    esac
done

step "Packages"
install_packages scripts/packages.txt build windows

step "Dependencies"
windows_dependencies x64 x86
printf '%s\n' "$windows_dependencies_folder"
if [ -n "$window" ]; then
    step "Toolkit of the window"
    windows_toolkit x64 x86
    printf '%s\n' "$windows_toolkit_folder"
    configure_options=(-DZ7_BUILD_WINDOW=ON)
else
    configure_options=(-DZ7_BUILD_WINDOW=OFF)
fi
if [ -n "$only_dependencies" ]; then
    exit
fi

export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
jobs=$(nproc)
failed=""

step "Build for 64 bits"
build_preset windows-x64 -j "$jobs"

step "Tests under Wine"
ctest --preset windows-x64 -j "$jobs" || failed="the tests under Wine"

step "Build for 32 bits"
build_preset windows-x86 -j "$jobs"

for arch in x64 x86; do
    step "Zip for $arch"
    scripts/check_windows.sh build/windows-$arch/bin
    windows_zip "$arch" build/windows-$arch "$windows_dependencies_folder/$arch/share/licences" \
        ${window:+"$windows_toolkit_folder/$arch/share/licences"}
done

if [ -n "$failed" ]; then
    echo "FAILED before: $failed (see above)" >&2
    exit 1
fi
