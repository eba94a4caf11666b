#!/usr/bin/env bash
# Makes the source tarball orvella-VERSION.tar.gz, of the last commit or, without git, of the folder; the same bytes each
# time.
#
#     scripts/source.sh [FOLDER]     prints the path; the folder is out/ by default
set -euo pipefail
cd "$(dirname "$0")/.."
version=$(sed -nE 's/^project\(orvella VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
folder=$(realpath -m "${1:-out}")
tarball=$folder/orvella-$version.tar.gz
mkdir -p "$folder"

if [ -e .git ]; then
    git -c tar.umask=0022 archive --format=tar --prefix="orvella-$version/" HEAD
else
    date=$(sed -n 's/^ -- .*>  //p;T;q' debian/changelog)
    tar --create --sort=name --owner=0 --group=0 --numeric-owner --mode=u=rwX,go=rX --mtime="$date" \
        --exclude=./build --exclude=./out --exclude=./.git --transform="s|^\.|orvella-$version|" .
fi | gzip --no-name --best >"$tarball.part"
mv "$tarball.part" "$tarball"
echo "$tarball"
