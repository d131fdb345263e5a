#!/usr/bin/env bash
# From an empty Debian system to the allocated vouchers of a company: installs missing packages, builds the program, creates the
# sample company, allocates its year and shows some of the results.
#
# Needs root or sudo only if packages are missing. Writes only to build/, and does not remove databases there. Exits with 0 if
# everything went as expected; the sample contains vouchers that must be refused, so refusals are not a failure here. Headings
# are in English; the program uses the language of LANG.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/steps.sh
. scripts/lib/packages.sh

# The first of build/sample, build/sample-2 ... that does not exist, because an earlier database may still be in use.
new_folder() {
    local folder=build/sample number=1
    while [ -e "$folder" ]; do
        number=$((number + 1))
        folder=build/sample-$number
    done
    mkdir -p "$folder"
    printf '%s\n' "$folder"
}

# Runs a command that may exit with 1, because some vouchers of the sample are refused.
shown_with_refusals() {
    local outcome=0
    shown "$@" || outcome=$?
    if [ "$outcome" -gt 1 ]; then
        echo "$1 $2 exited with $outcome" >&2
        exit "$outcome"
    fi
}

step "Packages (on an empty Debian: 100 MB to download, 410 MB of disk)"
install_packages scripts/packages.txt build
echo "All there."

step "Build (the first time: about 5 minutes of one processor)"
build_preset run

PATH="$PWD/build/run/bin:$PATH"
sample=$(new_folder)
year=2024
step "The sample company, a small trading firm with a year of vouchers, in $sample"
shown z7cf init "$sample/company.db" --sample

step "Every voucher of $year allocated"
shown_with_refusals z7cf allot "$sample/company.db" --year "$year"

step "The vouchers of January"
shown z7cf vouchers "$sample/company.db" --year "$year" --period 1

# The first voucher of January with rows.
voucher=$(z7cf vouchers "$sample/company.db" --year "$year" --period 1 --json |
    sed -n '/"stored":[1-9]/s/.*"voucher":"\([^"]*\)".*/\1/p' | sed -n 1p)
if [ -z "$voucher" ]; then
    echo "No voucher of January has rows: the allocation failed." >&2
    exit 1
fi
step "The rows of voucher $voucher"
shown z7cf rows "$sample/company.db" "$voucher"

step "Rows from a document for the refused voucher 2024/7/2/12, a voucher of the sales system, and one that exists only as XML"
shown z7cf sample-xml "$sample/documents"
shown z7cf import "$sample/company.db" 2024/7/2/12 "$sample/documents/advertising-rows.xml"
shown z7cf outside save "$sample/company.db" sales_voucher AR-2024-0301 --year "$year"
shown z7cf voucher-xml "$sample/company.db" "$sample/documents/sales-voucher.xml"

step "The cash-flow statement of $year, proved against the cash accounts, and the vouchers that it lacks"
shown_with_refusals z7cf statement "$sample/company.db" --year "$year"

printf '\nThe database is %s. Go on with: build/run/bin/z7cf --help\n' "$sample/company.db"
