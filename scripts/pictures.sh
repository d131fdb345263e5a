#!/usr/bin/env bash
# Creates the pictures of docs/pictures: the dialog and its pop-ups in both languages, on a virtual screen.
#   pictures.sh Z7CF [SCALE [FOLDER]]
#     Z7CF    the built program, with windows
#     SCALE   1 (the default) or 2, the scale factor of the screen
#     FOLDER  where the pictures go, by default docs/pictures
# Installs missing packages.
set -euo pipefail
program=$(realpath "${1:?which z7cf?}")
scale=${2:-1}
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$(realpath -m "${3:-$root/docs/pictures}")
cd "$root"
. scripts/lib/packages.sh
install_packages scripts/packages.txt test docs
mkdir -p "$folder"
exec python3 -B "$root/tests/window/pictures.py" "$program" "$scale" "$folder"
