#!/usr/bin/env bash
# Runs what takes hours, and writes its results to docs/proof/ and docs/proof.md.
#
#     scripts/prove.sh [--hours N] [differential] [emulated] [fuzzers] [faults] [sanitizers] [coverage]
#
# The hours (1) are shared by what is asked for, which is everything unless said. Random conversions of the same commit and
# faults go on where the last run ended.
set -euo pipefail
cd "$(dirname "$0")/.."

hours=1
if [ "${1:-}" = --hours ]; then hours=${2:?of hours} && shift 2; fi
proofs=("${@:-differential emulated fuzzers faults sanitizers coverage}")
read -ra proofs <<<"${proofs[*]}"
if ! git diff --quiet HEAD -- . ':!docs'; then
    echo "Results are of a commit: commit the changes first" >&2
    exit 1
fi
commit=$(git log -1 --format=%h -- . ':!docs')
seconds=$(awk -v h="$hours" -v n=${#proofs[@]} 'BEGIN { printf "%d", h * 3600 / n }')
jobs=$(nproc)
work=out/proof
mkdir -p $work

build() { # preset, target, packages
    scripts/packages.sh "$3" && cmake --preset "$1" >/dev/null &&
        cmake --build --preset "$1" --parallel "$jobs" --target "$2" >/dev/null
}
say() { printf '%s  %s\n' "$(date +%T)" "$*"; }

# name, title, seconds, command before the program, program
run_batches() {
    local name=$1 title=$2 time=$3 emulator=$4 program=$5 pids=() pid
    say "$title"
    for ((share = 0; share < jobs; ++share)); do
        $emulator "$program" --state "$work/$name.jsonl" --commit "$commit" --seconds "$time" --share "$share/$jobs" &
        pids+=($!)
    done
    local status=0
    for pid in "${pids[@]}"; do wait "$pid" || status=1; done
    scripts/docs/proof.py differential "$name" "$title" "scripts/prove.sh --hours $hours ${proofs[*]}" "$work/$name.jsonl" ||
        status=1
    return $status
}

differential() {
    build release orvella_differential test || return 1
    run_batches differential "Random conversions, this machine" "$seconds" "" build/release/proof/orvella_differential
}

emulated() {
    build release orvella_differential test || return 1
    local cpu status=0
    for cpu in qemu64 Nehalem Haswell; do
        run_batches "differential-$cpu" "Random conversions, emulated $cpu" $((seconds / 5)) "qemu-x86_64 -cpu $cpu" \
            build/release/proof/orvella_differential || status=1
    done
    build aarch64 orvella_differential cross || return 1
    run_batches differential-aarch64 "Random conversions, emulated aarch64" $((seconds / 5)) \
        "qemu-aarch64 -L /usr/aarch64-linux-gnu" build/aarch64/proof/orvella_differential || status=1
    export NODE_PATH=/usr/share/nodejs
    scripts/packages.sh web && cmake --preset web -B build/web-proof -DORVELLA_PROOF=ON >/dev/null &&
        cmake --build build/web-proof --parallel "$jobs" --target orvella_differential >/dev/null || return 1
    # With node's fetch, emscripten's loader takes the module's path for an address.
    run_batches differential-webassembly "Random conversions, WebAssembly in node" $((seconds / 5)) \
        "node --no-experimental-fetch" build/web-proof/proof/orvella_differential.js || status=1
    return $status
}

fuzzers() { fuzz/run.sh "$seconds" $work "scripts/prove.sh --hours $hours ${proofs[*]}"; }

faults() {
    say "Faults"
    scripts/packages.sh test
    scripts/faults/run.py --revision HEAD -j "$jobs" --minutes $((seconds / 60)) --report docs/proof/faults.json
}

# name, preset, title, options of ctest
watch() {
    local name=$1 preset=$2 title=$3 status=0
    shift 3
    say "$title"
    cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" --parallel "$jobs" >/dev/null || return
    ctest --preset "$preset" --parallel "$jobs" "$@" >$work/$name.log 2>&1 || status=1
    scripts/docs/proof.py ctest "$name" "$title" "scripts/prove.sh sanitizers" $work/$name.log
    return $status
}

sanitizers() {
    local status=0
    scripts/packages.sh test
    watch unknown-bytes msan "Memory sanitizer over the catalogue, widths 1 to 130, levels plain and sse4" || status=1
    watch threads tsan "Thread sanitizer: every function at once, objects while the process exits" || status=1
    watch conversions-of-values ubsan "Clang: no conversion in src/ loses a value or a sign unsaid" || status=1
    ORVELLA_EVERY_WIDTH=1 watch guards release "Guard pages: widths 1 to 130 and around every block, every level" \
        -R '^conversions\.' -LE emulated || status=1
    return $status
}

coverage() {
    say "Coverage"
    scripts/packages.sh test
    scripts/coverage.py -j "$jobs"
}

status=0
for proof in "${proofs[@]}"; do
    case $proof in
    differential | emulated | fuzzers | faults | sanitizers | coverage) $proof || status=1 ;;
    *) sed -n '2,7s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
    esac
done
scripts/docs/proof.py
say "docs/proof.md is written"
exit $status
