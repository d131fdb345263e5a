#!/usr/bin/env bash
# Installs the Debian packages of a folder in a fresh minimal Debian 12, uses them there as a user and as a developer, installs
# them once more as an upgrade would, and purges them: nothing of theirs may stay but the databases that were created.
#   try_packages.sh FOLDER
# Needs root, mmdebstrap and a network that reaches a Debian mirror; exits with 77 (skipped) without them. The system is
# created in the folder for temporary files and removed again; it takes about 2 GB and some minutes.
set -euo pipefail
packages=$(realpath "${1:?which folder holds the packages?}")

skip() {
    echo "skipped: $*"
    exit 77
}
[ "$(id -u)" = 0 ] || skip "a system of its own can be created by root only"
command -v mmdebstrap >/dev/null || skip "mmdebstrap is not installed"

work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT
root=$work/root
export LC_ALL=C.UTF-8

# The mirror's settings of this system, such as a proxy, hold for the new one, too.
apt-config dump | grep -E '^Acquire::(https?::|Check-)' | grep -v '""' >"$work/apt.conf" || true
if ! mmdebstrap --quiet --variant=minbase --aptopt="$work/apt.conf" bookworm "$root" >"$work/log" 2>&1; then
    grep '^E:' "$work/log" | tail -3 >&2 || true
    skip "no minimal Debian system could be installed, perhaps for want of a network"
fi

inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
step() { printf '== %s\n' "$*"; }
# Shows the output of a command only if it fails.
quietly() {
    "$@" >"$work/output" 2>&1 && return
    tail -n 40 "$work/output" >&2
    echo "failed: $*" >&2
    return 1
}
# Patterns in the words are those of the new system.
install() { quietly inside sh -c "apt-get install -y --no-install-recommends $*"; }
# Files that are there because of our packages, or through them.
ours() { (cd "$root" && find . -xdev \( -path ./proc -o -path ./packages -o -path ./root \) -prune -o -ipath '*z7c*' -print); }

cp /etc/resolv.conf "$root/etc/resolv.conf"
mkdir "$root/packages"
cp "$packages"/*.deb "$root/packages/"

step "z7cf in a system without anything else"
quietly inside apt-get update
install '/packages/z7cf_*.deb'
inside z7cf init /root/company.db --sample
outcome=0
inside z7cf allot /root/company.db --year 2024 >"$work/output" 2>&1 || outcome=$?
[ $outcome = 1 ] || { cat "$work/output" && echo "allot ended with $outcome" && exit 1; } # some are refused in the sample
grep ^Total "$work/output"
outcome=0
inside z7cf statement /root/company.db --year 2024 >"$work/output" || outcome=$?
[ $outcome = 1 ] && tail -n 1 "$work/output"
inside sh -c 'zcat /usr/share/man/man1/z7cf.1.gz' | grep '^\.TH' >/dev/null || { echo "there is no manual page" && exit 1; }

step "A program of one's own, with -dev and the examples of -doc"
install g++ cmake ninja-build pkg-config '/packages/*.deb'
examples=/usr/share/doc/z7cashflow/examples
inside sh -c 'ldconfig -p' | grep 'libz7cashflow\.so\.1 ' >/dev/null || { echo "the loader does not know libz7cashflow.so.1" && exit 1; }
quietly inside cmake -S $examples -B /root/build -G Ninja
quietly inside cmake --build /root/build
inside sh -c 'ldd /root/build/host' | grep 'libz7cashflow\.so\.1 => /' >/dev/null || { echo "host is not linked with the library" && exit 1; }
inside /root/build/host /root/company.db 2024-03-04 3 1 1
inside sh -c "g++ -std=c++20 -I$examples $examples/host/main.cpp -o /root/host \$(pkg-config --cflags --libs z7cashflow-sqlite z7cashflow-texts)"
inside /root/host /root/company.db 2024-03-04 3 1 1 >/dev/null
quietly inside cmake -S $examples -B /root/static -G Ninja -D Z7CashFlow_USE_STATIC_LIBS=ON
quietly inside cmake --build /root/static --target host
if inside sh -c 'ldd /root/static/host' | grep libz7cashflow; then
    echo "the static host is linked with the shared library" && exit 1
fi

step "Upgrade and removal"
quietly inside sh -c 'dpkg -i /packages/*.deb'
quietly inside apt-get purge -y z7cf 'libz7cashflow*' z7cashflow-doc
left=$(ours)
[ -z "$left" ] || { printf 'left after the removal:\n%s\n' "$left" && exit 1; }
[ -s "$root/root/company.db" ] || { echo "the database is gone" && exit 1; }
if inside sh -c 'ldconfig -p' | grep libz7cashflow; then
    echo "the loader still knows the libraries" && exit 1
fi
echo "Nothing is left but the databases."
