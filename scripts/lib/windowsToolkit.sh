# shellcheck shell=bash
# Builds wxWidgets for Windows as static libraries, cut down to what a grid in a dialog needs, from the source package of the
# system's own Debian release. To be sourced after windowsDependencies.sh; needs bash.
#
# windows_toolkit ARCH...  (x64, x86) builds what is missing and sets windows_toolkit_folder
#
# The result is CACHE/wx-KEY/ARCH with include, lib and bin/wx-config. It has a KEY of its own, because it takes longer to
# build than everything else together. The link CACHE/wx-CHECKSUM OF THIS FILE leads to the newest KEY;
# cmake/windows/common.cmake finds the folder by it.

windows_toolkit_recipe=$(sha256sum "${BASH_SOURCE[0]}" | cut -c1-16)

# Whole libraries and what only they use. Single controls stay: some of them use each other, and without one that others
# expect, the toolkit does not compile.
windows_toolkit_left_out=(
    aui html mdi mdidoc docview propgrid ribbon richtext stc webview webviewie webviewedge mediactrl xrc
    protocols ftp http fileproto sockets ipv6 webrequest ipc url protocol
    help mshtmlhelp htmlhelp printarch ps-in-msw svg
    arcstream zipstream tarstream fs_archive fs_inet fs_zip
    debugreport dbghelp dialupman joystick sound secretstore spellcheck iniconf cmdline filehistory fswatcher
    wizarddlg aboutdlg tipdlg splash notifmsg taskbaricon animatectrl bannerwindow calendar datepick timepick treelist
    dataviewctrl richmsgdlg rearrangectrl infobar prefseditor addremovectrl hyperlink graphics_ctx graphics-d2d
    gif pcx tga iff pnm
)

windows_toolkit_build() {
    local arch=$1 source=$2 prefix=$3 compiler
    compiler=$(windows_compiler "$arch")
    logged "windows-$arch-wxwidgets" bash -ec '
        compiler=$1 source=$2 prefix=$3 build=$4; shift 4
        mkdir -p "$build" && cd "$build"
        "$source/configure" --host="$compiler" --build="$(gcc -dumpmachine)" --prefix="$prefix" --with-msw --with-cxx=17 \
            --disable-shared --disable-debug_flag --disable-precomp-headers --disable-dependency-tracking --disable-tests \
            --without-libpng --without-libjpeg --without-libtiff --without-expat --without-zlib --without-regex \
            --without-nanosvg --without-opengl --without-liblzma --without-libcurl "${@/#/--disable-}" \
            CC="$compiler-gcc-posix" CXX="$compiler-g++-posix" CFLAGS=-O1 CXXFLAGS="-O1 -w"
        make -j"$(nproc)"
        make install' \
        - "$compiler" "$source" "$prefix" "$source-$arch" "${windows_toolkit_left_out[@]}" || return
    mkdir -p "$prefix/share/licences/wxwidgets"
    cp "$source"/docs/{licence,lgpl,preamble}.txt "$prefix/share/licences/wxwidgets/"
}

windows_toolkit() {
    local work="" version key arch lock
    local -a windows_sources=(wxwidgets3.2) # for the functions that look up and unpack sources
    mkdir -p "$windows_cache"
    logs=$PWD/${logs#"$PWD"/}
    exec {lock}>"$windows_cache/wx-lock"
    flock "$lock"
    windows_package_lists || return
    version=$(windows_versions | sed -n '/^wxwidgets/p')
    [ -n "$version" ] || return
    key=$({ printf '%s\n' "$windows_toolkit_recipe" "$version" && x86_64-w64-mingw32-g++-posix --version; } | sha256sum | cut -c1-16)
    windows_toolkit_folder=$windows_cache/wx-$key
    for arch in "$@"; do
        [ ! -e "$windows_toolkit_folder/$arch/.complete" ] || continue
        if [ -z "$work" ]; then
            work=$(mktemp -d "$windows_cache/work-XXXXXX")
            (cd "$work" && windows_unpack_sources) || return
        fi
        rm -rf "${windows_toolkit_folder:?}/$arch"
        windows_toolkit_build "$arch" "$work/wxwidgets3.2" "$windows_toolkit_folder/$arch" || return
        printf '%s\n' "$version" >"$windows_toolkit_folder/$arch/versions"
        touch "$windows_toolkit_folder/$arch/.complete"
    done
    [ -z "$work" ] || rm -rf "$work"
    ln -sfn "wx-$key" "$windows_cache/wx-$windows_toolkit_recipe"
    exec {lock}>&-
}
