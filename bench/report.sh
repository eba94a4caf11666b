#!/usr/bin/env bash
# Measures everything on this machine and brings docs/performance.md, its plots and its data up to date.
#
#     bench/report.sh [--quick] [BUILD_DIR]     BUILD_DIR: of the preset "bench", which is built where it is missing
#
# Takes about half an hour; run it on a machine that does nothing else. --quick shows in some minutes whether it works.
# Its packages: scripts/packages.sh bench. Without perf and llvm-mca the inner loops are left as they were.
set -euo pipefail
cd "$(dirname "$0")/.."

quick=()
if [ "${1:-}" = --quick ]; then quick=(--quick) && shift; fi
build=${1:-build/bench}
data=docs/performance

if [ $# = 0 ]; then
    cmake --preset bench >/dev/null
    cmake --build --preset bench --parallel "$(nproc)" >/dev/null
fi

step() { printf '%s  %s\n' "$(date +%T)" "$*"; }
step "Machine"
"$build/bench/orvella_bench" machine --json $data/machine.json >/dev/null
step "Every conversion, by everybody"
"$build/bench/orvella_bench" table "${quick[@]}" --size 640x480 --size 2448x2048 --json $data/table.json >/dev/null
step "Tiny frames"
"$build/bench/orvella_bench" table "${quick[@]}" --json $data/small.json --size 16x16 --size 64x64 --size 160x120 \
    --filter '^(Mono12p -> Mono16|RGB8 -> BGR24|YUV 4:2:2 -> BGR24|Bayer8 (2x2|3x3|LCAA) -> BGR24|Bayer12p 2x2 -> BGR24)$' >/dev/null
step "Two threads"
"$build/bench/orvella_bench" scaling "${quick[@]}" --json $data/scaling.json >/dev/null
step "Small to large, narrow to wide"
"$build/bench/orvella_bench" linearity "${quick[@]}" --json $data/linearity.json >/dev/null
step "Loading"
"$build/bench/orvella_bench_load" "$build/src/liborvella.so" >$data/load.json
if command -v perf >/dev/null && command -v llvm-mca-19 >/dev/null; then
    step "Inner loops"
    bench/bounds.py "$build" $data/table.json >$data/bounds.new
    mv $data/bounds.new $data/bounds.json
fi
step "Plots and docs/performance.md"
bench/report.py "$build"
