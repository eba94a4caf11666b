#!/usr/bin/env bash
# Installs what is missing, then builds and runs all the tests: a release build at every instruction-set level the machine
# has (and, emulated, on older ones), clang, the sanitizers, the installed package, the formatting.
set -euo pipefail
cd "$(dirname "$0")"
jobs=$(nproc)

step() { printf '\n== %s\n' "$*"; }

# Shows the output only of a command that fails.
quietly() {
    local log
    log=$(mktemp)
    "$@" >"$log" 2>&1 || { cat "$log"; exit 1; }
    rm "$log"
}
build() { # preset, options of the configuration
    quietly cmake --preset "$@"
    quietly cmake --build --preset "$1" --parallel "$jobs"
}

step "Packages"
scripts/packages.sh test

step "Formatting"
git ls-files '*.h' '*.hpp' '*.cpp' '*.c' | xargs clang-format-14 --dry-run -Werror

step "Release build, all tests"
build release
ctest --preset release --parallel "$jobs"

step "clang 14"
build clang -DORVELLA_TESTS=OFF

step "Address and undefined-behaviour sanitizers"
build asan
ctest --preset asan --parallel "$jobs"

step "Thread sanitizer"
build tsan
ctest --preset tsan --parallel "$jobs"
