# shellcheck shell=bash
# What the scripts have in common: headings, output to a file, and the build. To be sourced; needs bash.

logs=build/log

step() { printf '\n== %s\n' "$*"; }

# Shows a command as it would be typed, then runs it.
shown() {
    printf '\n$ %s\n' "$*"
    "$@"
}

# Copies standard input to a file. On a terminal it shows the last counter "[n/m]" of a build, or the number of lines, on one line.
keep_in() {
    local log=$1 line count=0 counter=""
    if [ ! -t 1 ]; then
        cat >"$log"
        return
    fi
    while IFS= read -r line; do
        printf '%s\n' "$line"
        count=$((count + 1))
        counter="line $count"
        if [[ $line =~ ^\[[0-9]+/[0-9]+\] ]]; then
            counter=${BASH_REMATCH[0]}
        fi
        printf '\r%-20s' "$counter" >&3
    done 3>&1 >"$log"
    printf '\r%-20s\r' ""
}

# logged NAME COMMAND...: runs a command with its output in build/log/NAME.log. If it fails, the end of the log is shown.
logged() {
    local log=$logs/$1.log outcome
    shift
    mkdir -p "$logs"
    printf '$ %s   (output: %s)\n' "$*" "$log"
    set +e
    "$@" </dev/null 2>&1 | keep_in "$log"
    outcome=${PIPESTATUS[0]}
    set -e
    if [ "$outcome" -ne 0 ]; then
        tail -n 40 "$log" >&2
        printf 'That failed with %s; all of its output is in %s.\n' "$outcome" "$log" >&2
    fi
    return "$outcome"
}

# Further words for the configuration of presets, such as -DNAME=VALUE.
configure_options=()

# build_preset PRESET [OPTION...]: configures and builds build/PRESET; further words go to the build.
build_preset() {
    local preset=$1 cache=build/$1/CMakeCache.txt home
    shift
    if [ -f "$cache" ]; then
        home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$cache")
        if [ "$home" != "$(pwd -P)" ] && [ "$home" != "$PWD" ]; then
            printf 'The folder build/%s was made in %s and cannot be used here. Remove it and start again: rm -rf build/%s\n' \
                "$preset" "$home" "$preset" >&2
            return 1
        fi
    fi
    logged "configure-$preset" cmake --preset "$preset" "${configure_options[@]}" || return
    logged "build-$preset" cmake --build --preset "$preset" "$@"
}
