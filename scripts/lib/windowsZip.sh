# shellcheck shell=bash
# Packs the programs for Windows. To be sourced after steps.sh; needs bash.
#
# windows_zip ARCH BUILD LICENCES...: makes build/z7cashflow-VERSION-windows-ARCH.zip from the programs in a folder of a build
# and the folders with the licences of what they are linked with.

windows_zip() {
    local arch=$1 build=$2 version name root strip licences
    shift 2
    version=$(sed -n 's/^project(Z7CashFlow VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    name=z7cashflow-$version-windows-$arch
    root=build/$name
    rm -rf "$root" "$root.zip"
    mkdir -p "$root/licences"
    strip=$(windows_compiler "$arch")-strip
    # One program that is missing ends the packing.
    cp "$build"/bin/{z7cf.exe,Z7CashFlow.dll,Z7CashFlow.tlb} "$root/"
    "$strip" "$root/z7cf.exe" "$root/Z7CashFlow.dll"
    cp README.md CHANGELOG.md LICENSE src/com/Z7CashFlow.idl "$root/"
    mkdir "$root/include"
    cp "$build"/src/com/generated/{com/Z7CashFlow.h,Z7CashFlow_i.c} "$root/include/"
    cp -r examples/windows "$root/examples"
    mkdir "$root/docs"
    cp docs/*.md "$root/docs/"
    cp -r docs/schemas "$root/docs/"
    for licences in "$@"; do
        cp -r "$licences/." "$root/licences/"
        cat "$licences/../../versions" >>"$root/licences/versions.txt"
    done
    # Parts of the compiler's own libraries are linked in.
    cp "/usr/share/doc/g++-mingw-w64-x86-64-posix/copyright" "$root/licences/gcc.txt"
    cp /usr/share/doc/mingw-w64-common/copyright "$root/licences/mingw-w64.txt"
    (cd build && cmake -E tar cf "$name.zip" --format=zip "$name")
    printf '%s\n' "$root.zip"
}
