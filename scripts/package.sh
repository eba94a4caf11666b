#!/usr/bin/env bash
# Builds the Debian packages of the last commit, and has lintian look at them.
#
#     scripts/package.sh [--check] [--twice] [FOLDER]
#
#     FOLDER     where they go, out/packages by default
#     --check    run the tests in the build, too
#     --twice    build them again elsewhere, at another time and under other settings, and compare
set -euo pipefail
cd "$(dirname "$0")/.."
check=false twice=false folder=out/packages
for argument; do
    case $argument in
    --check) check=true ;;
    --twice) twice=true ;;
    -*) sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"; exit 2 ;;
    *) folder=$argument ;;
    esac
done
folder=$(realpath -m "$folder")
scripts/packages.sh package
PATH=/usr/sbin:/usr/bin:/sbin:/bin # Debian's own Python, compilers and tools

version=$(dpkg-parsechangelog -S Version)
upstream=${version%-*}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tarball=$(scripts/source.sh "$work")
[ "$tarball" = "$work/orvella-$upstream.tar.gz" ] || {
    echo "debian/changelog says $upstream, CMakeLists.txt another version" >&2
    exit 1
}
DEB_BUILD_OPTIONS="parallel=$(nproc) ${DEB_BUILD_OPTIONS-}"
$check || DEB_BUILD_OPTIONS="nocheck $DEB_BUILD_OPTIONS" DEB_BUILD_PROFILES=nocheck
export DEB_BUILD_OPTIONS DEB_BUILD_PROFILES

build() { # folder
    mkdir -p "$1"
    gzip -dc "$tarball" | tar --delete "orvella-$upstream/debian" | gzip --no-name >"$1/orvella_$upstream.orig.tar.gz"
    tar -xf "$tarball" -C "$1"
    (cd "$1/orvella-$upstream" && dpkg-buildpackage -us -uc) >"$1/log" 2>&1 || {
        tail -n 50 "$1/log"
        return 1
    }
}

echo "Building the packages of orvella $version"
build "$work/one"
lintian --fail-on error,warning --allow-root "$work/one"/*.changes
if $twice; then
    echo "Building them again"
    (umask 027 && TZ=Pacific/Kiritimati LC_ALL=C.UTF-8 build "$work/another/folder")
    (cd "$work/one" && sha256sum ./*.deb) | (cd "$work/another/folder" && sha256sum --check --quiet)
    echo "Both builds are the same, bit for bit"
fi

mkdir -p "$folder"
rm -f "$folder"/*orvella*_*
cp "$work/one"/*.deb "$work/one"/*.dsc "$work/one"/*.tar.* "$work/one"/*.changes "$work/one"/*.buildinfo "$folder"
ls "$folder"/*.deb
