#!/usr/bin/env bash
# Installs what is missing, then builds and runs the tests, a line for each step. A step that fails shows what failed.
#
#     ./test.sh        a release build at every instruction-set level that the machine has (and, emulated, on older ones),
#                      a static library, the installed package, the sanitizers, the formatting
#     ./test.sh all    what takes longer, too: clang's memory and conversion sanitizers, two analysers, other machines, and
#                      the Debian packages of the last commit, installed into a fresh Debian 12
#     MINUTES=N ./test.sh all       begins no step after so many minutes; those that are left out are named
set -euo pipefail
cd "$(dirname "$0")"
case ${1:-} in
'') all=false ;;
all) all=true ;;
*) sed -n '2,8s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac
jobs=$(nproc)
log=$(mktemp)
trap 'rm -f "$log"' EXIT

step() { # what it is called, command...
    local name=$1 start=$SECONDS
    shift
    printf '%-58s' "$name"
    if ((SECONDS > 60 * ${MINUTES:-1000})); then
        echo "skipped: begins after $MINUTES minutes"
        return
    fi
    if ! "$@" >"$log" 2>&1; then
        printf 'failed after %d s\n' $((SECONDS - start))
        # Of many tests, those that failed.
        if grep -q 'tests passed' "$log"; then sed -n '/tests passed/,$p' "$log"; else cat "$log"; fi
        exit 1
    fi
    # A step that is not for this machine says so.
    printf '%4d s  %s\n' $((SECONDS - start)) "$(sed -n 's/^Skipped: /skipped: /p' "$log" | paste -sd ';')"
}
build() { # preset, options of the configuration
    cmake --preset "$@" && cmake --build --preset "$1" --parallel "$jobs"
}
run_tests() { # preset, options of ctest
    ctest --preset "$@" --parallel "$jobs" || {
        ctest --preset "$1" --rerun-failed || true
        return 1
    }
}
build_for_windows() {
    local code=0
    scripts/windows-libraries.sh || code=$?
    case $code in
    0) build windows ;;
    77)
        echo "Skipped: the converter, because the sources of its libraries cannot be had here"
        cmake --preset windows -DORVELLA_TOOLS=OFF &&
            cmake --build --preset windows --parallel "$jobs" --target orvella orvella_{conversions,calls,threads,machine}_test
        ;;
    *) return $code ;;
    esac
}
# Wine does not run everywhere: then the build alone is the test.
# A test is tried twice: now and then Wine loses the connection between its processes.
test_in_wine() {
    local prefix=$PWD/build/windows/windows
    mkdir -p "$prefix"
    WINEPREFIX=$prefix wineserver -p60 || true # one that ends with a program may take the next one's connection along
    if WINEDEBUG=-all WINEPREFIX=$prefix timeout 120 wine cmd /c exit; then
        run_tests windows
    else
        echo "Skipped: Wine does not run here"
    fi
}
try_packages() {
    scripts/try-packages.sh || {
        [ $? = 77 ] && echo "Skipped: no fresh Debian can be made here"
    }
}
check_format() { git ls-files '*.h' '*.hpp' '*.cpp' '*.c' | xargs clang-format-14 --dry-run -Werror; }

scripts/packages.sh test
step "Formatting" check_format
step "Release build" build release
step "All tests, at every instruction-set level" run_tests release
step "Build of a static library, lowest level" build static
step "Its conversions, its package" run_tests static
# Kernels of the higher levels take long to build like this, and guard pages have watched them above.
step "Build with address and undefined sanitizers, up to sse4" build asan -DORVELLA_SIMD_LEVEL=sse4
step "Tests with address and undefined-behaviour sanitizers" run_tests asan
step "Build with clang's thread sanitizer, lowest level" build tsan
step "Tests with it" run_tests tsan
$all || exit 0

# ---- What takes longer
step "Build with clang 14" build clang
step "Its conversions" run_tests clang
step "Build with clang's memory sanitizer, up to sse4" build msan
step "The catalogue with it" run_tests msan
step "Build that watches conversions of values, lowest level" build ubsan
step "Tests with it" run_tests ubsan
step "clang-tidy and g++ -fanalyzer over the library" scripts/analyse.sh
step "Fuzzers, a minute each" fuzz/run.sh 60
step "Packages for other machines" scripts/packages.sh cross
step "aarch64: build" build aarch64
step "aarch64: tests, in an emulator" run_tests aarch64
step "aarch64: build with clang 14, level plain too" build aarch64-clang
step "aarch64: its conversions, its package" run_tests aarch64-clang
step "Windows: build" build_for_windows
step "Windows: tests, the converter's and of the package, in Wine" test_in_wine
step "Packages for browsers" scripts/packages.sh web
step "WebAssembly" web/run_tests.sh
step "Debian packages, built twice with the same bytes; lintian" scripts/package.sh --twice
step "Debian packages in a fresh Debian 12" try_packages
