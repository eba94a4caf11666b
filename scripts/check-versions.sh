#!/usr/bin/env bash
# Compares the version in CMakeLists.txt with what else repeats it, and asks the changelog what linked programs must know.
set -euo pipefail
cd "$(dirname "$0")/.."
version=$(sed -nE 's/^project\(orvella VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
soversion=$(sed -nE 's/^set\(ORVELLA_SOVERSION ([0-9]+)\)/\1/p' CMakeLists.txt)
short=${version%.0} # of four numbers the last is left out where it is 0
failed=0

expect() { # file, what was found there, what was wanted
    [ "$2" = "$3" ] && return
    echo "$1 says '$2', CMakeLists.txt '$3'"
    failed=1
}
expect CITATION.cff "$(sed -n 's/^version: //p' CITATION.cff)" "$version"
expect CHANGELOG.md "$(sed -nE '/^## /{s/^## (Unreleased: )?([0-9.]+).*/\2/p;q}' CHANGELOG.md)" "$short"
expect debian/changelog "$(sed -nE '1s/.*\(([0-9.]+)-.*/\1/p' debian/changelog)" "$version"
expect debian/control "$(sed -n 's/^Package: liborvella\([0-9]*\)$/\1/p' debian/control)" "$soversion"
expect python/orvella/_version.py "$(sed -nE 's/^__version__ = "([0-9.]+)"/\1/p' python/orvella/_version.py)" "$short"
sed -n '/^## /,/^### /p' CHANGELOG.md | grep -q '^Compatibility: ' || {
    echo "CHANGELOG.md does not begin with 'Compatibility:'"
    failed=1
}
exit $failed
