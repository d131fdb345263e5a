#!/usr/bin/env bash
# Writes the reference of the public headers to build/docs/html. Installs missing packages. Any warning of Doxygen, such
# as a public declaration without a comment, ends it with an error.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/steps.sh
. scripts/lib/packages.sh
install_packages scripts/packages.txt build docs
logged configure-run cmake --preset run -D Z7_DOCS_FOLDER="$PWD/build/docs"
logged docs cmake --build --preset run --target docs
echo "build/docs/html/index.html"
