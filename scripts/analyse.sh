#!/usr/bin/env bash
# What two analysers say about the library's sources, those of the kernels at the lowest level: clang-tidy with the checks of
# .clang-tidy, and g++ -fanalyzer. Nothing is to be left; what is no fault says so where it stands (NOLINT, with the reason).
#
# scripts/analyse.sh [file...]
set -euo pipefail
cd "$(dirname "$0")/.."
build=out/analyse
cmake -S . -B $build -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++-14 -DORVELLA_SIMD_LEVEL=plain \
    -DORVELLA_TESTS=OFF -DORVELLA_TOOLS=OFF -DORVELLA_BENCH=OFF -DORVELLA_GSTREAMER=OFF \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
files=("$@")
[ $# -gt 0 ] || mapfile -t files < <(git ls-files 'src/*.cpp')
findings=$(printf '%s\n' "${files[@]}" |
    xargs -P "$(nproc)" -n 1 clang-tidy-14 --quiet -p $build 2>/dev/null | grep -E 'warning:|error:' | sort -u) || true
# g++ 12 takes operator new for one that returns null, and the object of a lambda without captures, too.
unknown=(-Wno-analyzer-possible-null-dereference -Wno-analyzer-null-argument)
includes=(-Isrc -Iinclude -I$build/generated -I$build/include)
findings+=$(printf '%s\n' "${files[@]}" | grep -v _kernels.cpp |
    xargs -P "$(nproc)" -I{} g++ -std=c++20 -O1 -fanalyzer "${unknown[@]}" "${includes[@]}" -c {} -o /dev/null 2>&1 |
    grep -E 'warning:|error:' | sort -u) || true
[ -z "$findings" ] || { echo "$findings"; exit 1; }
echo "${#files[@]} sources: nothing found"
