#!/usr/bin/env bash
# Builds the fuzzers and runs each for some seconds, beginning with its corpus.
#
#     fuzz/run.sh SECONDS [FOLDER COMMAND]
#
# FOLDER: for logs, findings and the inputs that were found, of which docs/proof.md is told, by what COMMAND. Otherwise
# nothing is kept but findings, in out/fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:?seconds}
folder=${2:-out/fuzz}
mkdir -p "$folder"

if ! ls /usr/lib/llvm-14/lib/clang/*/lib/linux/libclang_rt.fuzzer-*.a >/dev/null 2>&1; then
    echo "Skipped: clang's libFuzzer is missing (Debian package libclang-rt-14-dev)"
    exit 0
fi
cmake --preset fuzz && cmake --build --preset fuzz --parallel "$(nproc)"

run() { # fuzzer
    local found=$folder/$1.inputs
    mkdir -p "$found"
    build/fuzz/fuzz/"$1"_fuzzer -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -max_len=512 \
        -artifact_prefix="$folder/$1-" "$found" "fuzz/corpus/$1" >"$folder/$1.log" 2>&1
}
pids=()
fuzzers=(conversions descriptions files)
for fuzzer in "${fuzzers[@]}"; do
    run "$fuzzer" &
    pids+=($!)
done
status=0
for i in "${!fuzzers[@]}"; do
    fuzzer=${fuzzers[$i]}
    wait "${pids[$i]}" || { status=1; tail -n 40 "$folder/$fuzzer.log"; }
    [ $# -lt 3 ] || scripts/docs/proof.py fuzzer "fuzzer-$fuzzer" "Fuzzer \`$fuzzer\`" "$3" "$folder/$fuzzer.log"
done
exit $status
