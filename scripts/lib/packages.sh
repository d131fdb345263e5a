# shellcheck shell=bash
# Installs the Debian packages that are missing. To be sourced after steps.sh; needs bash.
#
# install_packages LIST GROUP...
#   LIST   file with a group and a package on each line; of alternatives "a|b" the first known to the system is used
#   GROUP  the groups to install
# If nothing is missing, nothing is run, and no permission to install is needed.

package_is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# The packages of the groups, one per line, alternatives as written.
packages_of_groups() {
    local list=$1 group package wanted
    shift
    while read -r group package; do
        for wanted in "$@"; do
            [ "$group" = "$wanted" ] && printf '%s\n' "$package"
        done
    done < <(sed -e 's/#.*//' "$list")
}

# Those of which no alternative is installed.
packages_missing() {
    local line alternative found
    local -a alternatives
    while read -r line; do
        found=no
        IFS='|' read -ra alternatives <<<"$line"
        for alternative in "${alternatives[@]}"; do
            package_is_installed "$alternative" && found=yes
        done
        [ $found = yes ] || printf '%s\n' "$line"
    done < <(packages_of_groups "$@")
}

# The first alternative in the system's package lists.
package_to_install() {
    local alternative
    local -a alternatives
    IFS='|' read -ra alternatives <<<"$1"
    for alternative in "${alternatives[@]}"; do
        if [ -n "$(apt-cache madison "$alternative" 2>/dev/null)" ]; then
            printf '%s\n' "$alternative"
            return
        fi
    done
    printf '%s\n' "${alternatives[0]}" # apt-get then says what is wrong with it
}

packages_out_of_reach() {
    echo "The packages could not be installed. Without a network that reaches a Debian mirror they have to be installed by other means" \
        "first: ${missing[*]}. After that this script needs no network." >&2
    return 1
}

install_packages() {
    local line
    local -a missing names=() privilege=()
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This is not a Debian system: install the equivalents of $1 yourself, then build with CMake." >&2
        return 1
    fi
    mapfile -t missing < <(packages_missing "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Missing packages: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            for line in "${missing[@]}"; do
                names+=("$(package_to_install "$line")")
            done
            echo "Installing them needs root or sudo. As root: apt-get update && apt-get install ${names[*]}" >&2
            return 1
        fi
        privilege=(sudo)
    fi
    logged packages-lists "${privilege[@]}" apt-get update -q || packages_out_of_reach || return
    for line in "${missing[@]}"; do
        names+=("$(package_to_install "$line")")
    done
    logged packages "${privilege[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${names[@]}" || packages_out_of_reach
}
