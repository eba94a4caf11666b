#!/usr/bin/env bash
# Builds what the converter for Windows takes and Debian has no packages of: libpng and libtiff, from Debian's sources, as
# static libraries, and beside them the headers of CLI11. Asks for no rights: apt works in a folder of its own.
#
#     scripts/windows-libraries.sh        into build/windows-libraries, where the preset 'windows' looks
#
# Exit code 77: the sources cannot be had here.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD prefix=$PWD/build/windows-libraries
[ ! -e "$prefix/complete" ] || exit 0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The machine's own sources of Debian packages, asked for what those are built from.
mkdir -p "$work/lists/partial" "$work/cache/archives/partial"
apt-get indextargets 'Created-By: Packages' 'Origin: Debian' \
    --format 'deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $(REPO_URI) $(RELEASE) main' |
    sort -u >"$work/sources.list"
sources() { # arguments of apt-get
    apt-get -qq -o Dir::Etc::sourcelist="$work/sources.list" -o Dir::Etc::sourceparts=- -o Dir::State::lists="$work/lists" \
        -o Dir::Cache="$work/cache" -o APT::Sandbox::User="$(id -un)" "$@"
}
build() { # Debian's source package, options of cmake
    (cd "$work" && { sources source "$1" || sources source "$1/bookworm"; }) || exit 77 # where a mirror lacks the latest
    cmake -S "$work/${1%1.6}"*/ -B "$work/build/$1" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/x86_64-w64-mingw32.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" "${@:2}"
    cmake --build "$work/build/$1" --parallel "$(nproc)"
    cmake --install "$work/build/$1"
}

sources update || exit 77
build libpng1.6 -DPNG_SHARED=OFF -DPNG_TESTS=OFF
build tiff -DBUILD_SHARED_LIBS=OFF -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF
mkdir -p "$prefix/share/cmake"
cp -r /usr/include/CLI "$prefix/include/"
cp -r /usr/share/cmake/CLI11 "$prefix/share/cmake/"
touch "$prefix/complete"
