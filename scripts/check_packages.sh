#!/usr/bin/env bash
# Makes the Debian packages of a built folder and checks them without installing them.
#   check_packages.sh BUILD FOLDER     makes them in FOLDER, checks what they hold and depend on, and runs z7cf out of them
#   check_packages.sh --lint FOLDER    has lintian judge the packages of FOLDER
# BUILD must be configured with Z7_PACKAGES. Exits with 77 (skipped) if a tool is missing.
set -euo pipefail

need() {
    local tool
    for tool in "$@"; do
        command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed" && exit 77; }
    done
}

if [ "${1:-}" = --lint ]; then
    need lintian
    code=0
    output=$(lintian --display-info --tag-display-limit 0 --fail-on error,warning,info "${2:?which folder?}"/*.deb) || code=$?
    # Overrides have their reasons beside them in cmake/debian. Which of them are needed depends on the optimisation, so an
    # unused one is harmless; lintian counts it as a finding even when told to suppress it.
    findings=$(grep -Ev '^N: |^I: [^ ]+: unused-override |^$' <<<"$output" || true)
    [ -z "$findings" ] || { printf '%s\n' "$findings" && exit 1; }
    [ $code = 0 ] || [ $code = 2 ] || { echo "lintian ended with $code" && exit 1; }
    echo "lintian has nothing to say."
    exit
fi

build=$(realpath "${1:?which build folder?}")
folder=$(realpath -m "${2:?which folder for the packages?}")
need cpack dpkg-deb dpkg-shlibdeps strip gzip

rm -rf "$folder"
mkdir -p "$folder/root"
(cd "$build" && cpack -G DEB -B "$folder") >"$folder/cpack.log" 2>&1 || { cat "$folder/cpack.log" && exit 1; }
rm -rf "$folder/_CPack_Packages"

wrong=0
complain() {
    echo "$*"
    wrong=1
}

# The package with a name, and one of its fields.
package() { ls "$folder/$1"_*.deb; }
field() { dpkg-deb -f "$(package "$1")" "$2"; }

# holds PACKAGE PATTERN...: for each of the patterns the package has a file.
holds() {
    local name=$1 pattern list
    list=$(dpkg-deb -c "$(package "$name")" | awk '{ print substr($6, 2) }')
    for pattern in "${@:2}"; do
        grep -Eqx -- "$pattern" <<<"$list" || complain "$name has no file $pattern"
    done
}

# depends PACKAGE NAME...: the package depends on the others; a name with a minus before it must not be among them.
depends() {
    local name=$1 other list
    list=$(field "$name" Depends | sed "s/[,|]/\n/g" | sed 's/^ *//; s/ .*//')
    for other in "${@:2}"; do
        if [ "${other#-}" = "$other" ]; then
            grep -qx "$other" <<<"$list" || complain "$name does not depend on $other"
        elif grep -qx "${other#-}" <<<"$list"; then
            complain "$name depends on ${other#-}"
        fi
    done
}

names=$(for file in "$folder"/*.deb; do dpkg-deb -f "$file" Package; done | sort | tr '\n' ' ')
case $names in
"libz7cashflow-dev libz7cashflow-window1 libz7cashflow1 z7cashflow-doc z7cf ") window=yes ;;
"libz7cashflow-dev libz7cashflow1 z7cashflow-doc z7cf ") window=no ;;
*) echo "unexpected packages: $names" && exit 1 ;;
esac
for name in $names; do
    holds "$name" "/usr/share/doc/$name/(copyright|changelog.gz|changelog.Debian.gz)"
    [ -n "$(field "$name" Maintainer)" ] || complain "$name has no maintainer"
    dpkg-deb -x "$(package "$name")" "$folder/root"
done
lib="/usr/lib/[^/]*"
holds z7cf /usr/bin/z7cf /usr/share/man/man1/z7cf.1.gz /usr/share/man/man1/z7cf-allot.1.gz /usr/share/man/zh_CN/man1/z7cf.1.gz \
    /usr/share/bash-completion/completions/z7cf /usr/share/zsh/vendor-completions/_z7cf \
    /usr/share/z7cashflow/schema/sqlserver/account_tables.sql /usr/share/z7cashflow/schemas/codes.json
depends z7cf libc6 libsqlite3-0 libxml2 -libz7cashflow1
holds libz7cashflow1 "$lib/libz7cashflow(-sqlite|-odbc|-texts|-workbench|-databases)?\.so\.1"
depends libz7cashflow1 libc6 libsqlite3-0 libxml2 libodbc2 -libz7cashflow1 -libgtk-3-0
holds libz7cashflow-dev /usr/include/z7cashflow/providers/VoucherProvider.h /usr/include/z7cashflow/support/version.h \
    "$lib/libz7cashflow.a" "$lib/libz7cashflow.so" "$lib/pkgconfig/z7cashflow-sqlite.pc" \
    "$lib/cmake/Z7CashFlow/Z7CashFlowConfig.cmake"
depends libz7cashflow-dev libz7cashflow1 libxml2-dev libsqlite3-dev
holds z7cashflow-doc /usr/share/doc/z7cashflow/docs/z7cf.md /usr/share/doc/z7cashflow/examples/host/main.cpp
if [ "$window" = yes ]; then
    holds libz7cashflow-window1 "$lib/libz7cashflow-window\.so\.1"
    depends libz7cashflow-window1 libz7cashflow1 libgtk-3-0
    depends libz7cashflow-dev libz7cashflow-window1
fi

# Nothing in the packages says where they were built.
source=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$build/CMakeCache.txt")
if grep -rlF -e "$source/" -e "$build/" "$folder/root"; then
    complain "these files contain the path of the sources or of the build"
fi

"$folder/root/usr/bin/z7cf" init "$folder/company.db" --sample >/dev/null
"$folder/root/usr/bin/z7cf" vouchers "$folder/company.db" --year 2024 --period 1 >"$folder/vouchers" ||
    complain "the packaged z7cf does not list the vouchers of the sample company"
rm -f "$folder"/company.* "$folder/vouchers"
[ $wrong = 0 ] && echo "Packages: $names"
exit $wrong
