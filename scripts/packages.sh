#!/usr/bin/env bash
# Makes the source archive and the Debian packages in build/packages, and checks them.
#   packages.sh               builds, packs, runs lintian, and tries the packages in a minimal system of their own (as root)
#   packages.sh --reproduce   then also builds them from the source archive in another folder, without the compiler cache, and
#                             compares them byte for byte
# Installs missing packages. Needs a clone of the repository, because the source archive is made of its last commit.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/steps.sh
. scripts/lib/packages.sh

step "Packages needed"
install_packages scripts/packages.txt build packages

step "Build"
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
build_preset package
logged docs cmake --build --preset package --target docs

step "Packages and source archive"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/package/CMakeCache.txt)
packages=build/packages
bash scripts/check_packages.sh build/package $packages
archive=$packages/z7cashflow-$version.tar.gz
git archive --format=tar --prefix="z7cashflow-$version/" HEAD | gzip -9n >"$archive"

step "lintian"
bash scripts/check_packages.sh --lint $packages

step "Installed, used and removed in a minimal system"
bash scripts/try_packages.sh $packages || [ $? = 77 ]

if [ "${1:-}" = --reproduce ]; then
    step "Built once more from the source archive, in another folder"
    other=$(mktemp -d)
    trap 'rm -rf "$other"' EXIT
    tar -xf "$archive" -C "$other"
    (
        cd "$other/z7cashflow-$version"
        export CCACHE_DISABLE=1
        build_preset package
        logged docs cmake --build --preset package --target docs
        bash scripts/check_packages.sh build/package build/packages
    )
    same=0
    for package in "$packages"/*.deb; do
        cmp "$package" "$other/z7cashflow-$version/$package" || same=1
    done
    [ $same = 0 ] || exit 1
    echo "The packages of both builds are the same."
fi

step "Done"
(cd $packages && sha256sum -- *.deb *.tar.gz)
