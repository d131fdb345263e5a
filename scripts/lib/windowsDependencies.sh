# shellcheck shell=bash
# Builds what the Windows programs are linked with, as static libraries, from the source packages of the system's own Debian
# release. To be sourced after steps.sh; needs bash.
#
# windows_dependencies ARCH...  (x64, x86) builds what is missing and sets windows_dependencies_folder
#
# The result is CACHE/KEY/ARCH with include, lib, share. KEY is a checksum of this file, of the compiler and of the versions
# of the packages, so nothing that is out of date is ever used. The link CACHE/CHECKSUM OF THIS FILE leads to the newest KEY;
# cmake/windows/common.cmake finds the folder by it.
#
# Consequences of what is left out: XML is read without iconv, so documents in files must be in UTF-8, UTF-16 or Latin-1.
# Texts that are handed to the library are always read as UTF-8, whatever encoding they declare.

windows_cache=${Z7_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/z7cashflow-windows}
windows_recipe=$(sha256sum "${BASH_SOURCE[0]}" | cut -c1-16)
windows_sources=(sqlite3 libxml2 utf8proc libcsv)
# Packages whose installed files are used: headers that need no compiling, and the sources of GoogleTest.
windows_installed=(libcli11-dev nlohmann-json3-dev libtomlplusplus-dev googletest)

windows_compiler() {
    case $1 in
    x64) printf 'x86_64-w64-mingw32' ;;
    x86) printf 'i686-w64-mingw32' ;;
    *) printf 'There is no architecture %s; there are x64 and x86.\n' "$1" >&2 && return 1 ;;
    esac
}

# Runs a command of apt with package lists of its own, so that the machine's lists of sources stay as they are. It verifies
# signatures in the same way.
windows_apt() { APT_CONFIG=$windows_cache/apt/apt.conf "$@"; }

windows_package_lists() {
    local apt=$windows_cache/apt release
    mkdir -p "$apt"/lists/partial "$apt"/archives/partial
    release=$(. /etc/os-release && printf '%s' "$VERSION_CODENAME")
    printf 'deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] %s main\n' \
        "http://deb.debian.org/debian $release" "http://deb.debian.org/debian-security $release-security" >"$apt/sources.list"
    cat >"$apt/apt.conf" <<EOF
Dir::Etc::sourcelist "$apt/sources.list";
Dir::Etc::sourceparts "/dev/null";
Dir::State::lists "$apt/lists";
Dir::Cache "$apt";
APT::Sandbox::User "";
EOF
    if ! logged windows-lists windows_apt apt-get update -q --error-on=any; then
        # Without a network the versions known from the last time are used.
        [ -n "$(find "$apt/lists" -maxdepth 1 -name '*Sources*' -print -quit)" ]
    fi
}

# Prints a line for each package: its name and its version.
windows_versions() {
    local package
    for package in "${windows_sources[@]}"; do
        windows_apt apt-cache showsrc --only-source "$package" | sed -n "s/^Version: /$package /p" | sort -rV -k2 | sed 1q
    done
    # shellcheck disable=SC2016
    dpkg-query -W -f '${Package} ${Version}\n' "${windows_installed[@]}"
}

# Fetches and unpacks the sources into the current folder, each into a folder of its name.
windows_unpack_sources() {
    local package
    for package in "${windows_sources[@]}"; do
        logged "windows-source-$package" windows_apt apt-get source -q --download-only --only-source "$package" &&
            logged "windows-unpack-$package" dpkg-source --no-check -x "$package"_*.dsc "$package" || return
    done
}

# licence NAME FILE...: keeps what the zip must contain for a library.
windows_licence() {
    local folder=$prefix/share/licences/$1
    shift
    mkdir -p "$folder"
    cp "$@" "$folder/"
}

# windows_cmake NAME SOURCE OPTION...: configures, builds and installs a project.
windows_cmake() {
    local name=$1 source=$2
    shift 2
    logged "windows-$arch-$name" bash -ec '
        build=$1 source=$2; shift 2
        cmake -S "$source" -B "$build" -G Ninja "$@"
        cmake --build "$build"
        cmake --install "$build" --strip' \
        - "$work/$arch/$name" "$source" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib -DBUILD_SHARED_LIBS=OFF "$@"
}

# windows_archive NAME SOURCE OPTION...: compiles one file into libNAME.a.
windows_archive() {
    local name=$1 source=$2 compiler
    shift 2
    compiler=$(windows_compiler "$arch")
    mkdir -p "$prefix/lib/pkgconfig" "$prefix/include"
    logged "windows-$arch-$name" "$compiler-gcc-posix" -O2 -c "$source" -o "$work/$arch/$name.o" "$@" &&
        "$compiler-ar" rcsD "$prefix/lib/lib$name.a" "$work/$arch/$name.o"
}

windows_module() {
    cat >"$prefix/lib/pkgconfig/$1.pc" <<EOF
prefix=\${pcfiledir}/../..
Name: $1
Description: $2
Version: $3
Cflags: -I\${prefix}/include $4
Libs: -L\${prefix}/lib -l${1#lib}
EOF
}

# The amalgamation, one source file for all architectures, is generated with tools that run here.
windows_sqlite_source() {
    mkdir -p "$work/amalgamation"
    logged windows-amalgamation bash -ec 'cd "$1"; ../sqlite3/configure --disable-tcl --disable-readline
        make sqlite3.c' - "$work/amalgamation"
}

# The options are those of Debian's own library as far as they change what statements mean or how large they may be.
windows_sqlite() {
    windows_archive sqlite3 "$work/amalgamation/sqlite3.c" -fno-strict-aliasing -DSQLITE_THREADSAFE=1 -DSQLITE_SECURE_DELETE \
        -DSQLITE_ENABLE_COLUMN_METADATA -DSQLITE_ENABLE_MATH_FUNCTIONS -DSQLITE_LIKE_DOESNT_MATCH_BLOBS -DSQLITE_USE_URI=1 \
        -DSQLITE_ALLOW_ROWID_IN_VIEW -DSQLITE_MAX_SCHEMA_RETRY=25 -DSQLITE_MAX_VARIABLE_NUMBER=250000 \
        -DSQLITE_OMIT_LOAD_EXTENSION &&
        cp "$work/amalgamation/sqlite3.h" "$prefix/include/" &&
        windows_module sqlite3 "SQL database" "$(cat "$work/sqlite3/VERSION")" "" &&
        windows_licence sqlite3 "$work/sqlite3/debian/copyright"
}

# Only the parser and the tree. Threads are those of the compiler's own library, whose destructors of thread values run when
# a thread ends, in a DLL too.
windows_libxml2() {
    local option
    local -a options=()
    for option in C14N CATALOG DEBUG DOCB FTP HTML HTTP ICONV ISO8859X LEGACY LZMA MODULES PROGRAMS PYTHON READER SCHEMAS \
        SCHEMATRON TESTS WRITER XINCLUDE XPTR ZLIB; do
        options+=("-DLIBXML2_WITH_$option=OFF")
    done
    # Without LIBXML_STATIC every DLL that contains it would export its functions, and its users would look for a DLL.
    windows_cmake libxml2 "$work/libxml2" -DCMAKE_C_FLAGS=-DLIBXML_STATIC "${options[@]}" &&
        sed -i '1i #define LIBXML_STATIC' "$prefix/include/libxml2/libxml/xmlexports.h" &&
        windows_licence libxml2 "$work/libxml2/Copyright"
}

windows_utf8proc() {
    windows_archive utf8proc "$work/utf8proc/utf8proc.c" -DUTF8PROC_STATIC &&
        cp "$work/utf8proc/utf8proc.h" "$prefix/include/" &&
        windows_module libutf8proc "UTF-8 processing" "$(sed -n 's/^utf8proc \(.*\)-.*/\1/p' "$work/versions")" -DUTF8PROC_STATIC &&
        windows_licence utf8proc "$work/utf8proc/LICENSE.md"
}

windows_libcsv() {
    windows_archive csv "$work/libcsv/libcsv.c" &&
        cp "$work/libcsv/csv.h" "$prefix/include/" &&
        windows_licence libcsv "$work/libcsv/COPYING.LESSER"
}

# Headers of installed packages with their CMake files, whose paths are relative.
windows_headers() {
    local name
    mkdir -p "$prefix/include" "$prefix/share/cmake" || return
    cp -r /usr/include/CLI /usr/include/nlohmann /usr/include/toml++ "$prefix/include/" &&
        cp -r /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$prefix/share/cmake/" || return
    # Debian's own file leads to a shared library for Linux; the headers do without.
    mkdir -p "$prefix/share/cmake/tomlplusplus" || return
    cat >"$prefix/share/cmake/tomlplusplus/tomlplusplusConfig.cmake" <<'EOF'
add_library(tomlplusplus::tomlplusplus INTERFACE IMPORTED)
target_include_directories(tomlplusplus::tomlplusplus INTERFACE "${CMAKE_CURRENT_LIST_DIR}/../../../include")
EOF
    for name in libcli11-dev nlohmann-json3-dev libtomlplusplus-dev; do
        windows_licence "$name" "/usr/share/doc/$name/copyright" || return
    done
}

windows_tests() { windows_cmake googletest /usr/src/googletest; }

windows_build() {
    local arch=$1 work=$2 target=$3 toolchain prefix
    toolchain=$PWD/cmake/windows/$arch.cmake
    prefix=$target/$arch
    mkdir -p "$prefix" "$work/$arch"
    windows_sqlite && windows_libxml2 && windows_utf8proc && windows_libcsv && windows_headers && windows_tests &&
        touch "$prefix/.complete"
}

windows_dependencies() {
    local work versions key arch lock
    mkdir -p "$windows_cache"
    logs=$PWD/${logs#"$PWD"/}
    exec {lock}>"$windows_cache/lock"
    flock "$lock"
    windows_package_lists || return 1
    versions=$(windows_versions) || return
    key=$({ printf '%s\n' "$windows_recipe" "$versions" && x86_64-w64-mingw32-g++-posix --version; } | sha256sum | cut -c1-16)
    windows_dependencies_folder=$windows_cache/$key
    for arch in "$@"; do
        [ ! -e "$windows_dependencies_folder/$arch/.complete" ] || continue
        if [ -z "${work:-}" ]; then
            work=$(mktemp -d "$windows_cache/work-XXXXXX")
            mkdir -p "$logs"
            printf '%s\n' "$versions" >"$work/versions"
            (cd "$work" && windows_unpack_sources) && windows_sqlite_source || return
        fi
        rm -rf "${windows_dependencies_folder:?}/$arch"
        windows_build "$arch" "$work" "$windows_dependencies_folder" || return
        cp "$work/versions" "$windows_dependencies_folder/$arch/versions"
    done
    [ -z "${work:-}" ] || rm -rf "$work"
    ln -sfn "$key" "$windows_cache/$windows_recipe"
    exec {lock}>&-
}
