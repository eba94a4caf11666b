#!/usr/bin/env bash
# Installs the packages in a fresh Debian 12 and runs debian/tests there. Needs root and Debian's mirror; ends with 77 where a
# fresh Debian cannot be made.
#
#     scripts/try-packages.sh [FOLDER]     where scripts/package.sh put them, out/packages by default
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$(realpath "${1:-out/packages}")
mirror=${DEBIAN_MIRROR:-http://deb.debian.org/debian}
[ "$(id -u)" = 0 ] || exec sudo DEBIAN_MIRROR="$mirror" "$0" "$folder"

root=$(mktemp -d)
chmod 755 "$root"
trap 'rm -rf --one-file-system "$root"' EXIT

echo "A fresh Debian 12"
debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.log" 2>&1 || { tail "$root.log"; exit 77; }
rm "$root.log"
mkdir "$root/packages"
cp "$folder"/*.deb "$root/packages"
(cd "$root/packages" && dpkg-scanpackages --multiversion . >Packages 2>/dev/null)
echo 'deb [trusted=yes] file:/packages ./' >"$root/etc/apt/sources.list.d/packages.list"
cp /etc/resolv.conf "$root/etc/resolv.conf"
mkdir "$root/source"
tar -xf "$folder"/orvella_*.orig.tar.gz -C "$root/source" --strip-components=1
cp -r debian "$root/source"

within() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/root "$@"; }
install_packages() {
    within DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >"$root/log" 2>&1 </dev/null || {
        tail "$root/log"
        exit 1
    }
}
within apt-get update -qq >"$root/log" 2>&1 || { cat "$root/log"; exit 1; }

# Paragraph by paragraph: the names of tests, and the packages that they need.
sed -nE 's/^Tests: //p; s/^Depends: //p' debian/tests/control | while read -r tests && read -r packages; do
    # shellcheck disable=SC2046
    install_packages $(echo "$packages" | tr -d ,)
    for test in $tests; do
        echo "$test ($packages)"
        within sh -c "cd /source && debian/tests/$test" >"$root/log" 2>&1 </dev/null || {
            cat "$root/log"
            echo "$test failed"
            exit 1
        }
    done
done

within apt-get purge -y -qq 'liborvella*' 'orvella' '*-orvella' >"$root/log" 2>&1 || { cat "$root/log"; exit 1; }
left=$(find "$root/usr" "$root/etc" -iname '*orvella*')
[ -z "$left" ] || { echo "left behind by a purge: $left"; exit 1; }
echo "All tests of the packages pass"
