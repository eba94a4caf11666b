#!/usr/bin/env bash
# From a fresh Debian 12 to pictures: installs what is missing, builds, makes raw camera frames, converts them to PNG.
set -euo pipefail
cd "$(dirname "$0")"

scripts/packages.sh build
cmake -S . -B build/demo -DORVELLA_TESTS=OFF -DORVELLA_BENCH=OFF -DORVELLA_GSTREAMER=OFF >/dev/null

# On a terminal one line that shows how far it is, elsewhere a line every now and then; what went wrong is shown whole.
build() {
    local log started=$SECONDS every=20
    [ -t 1 ] && every=1
    log=$(mktemp)
    cmake --build build/demo --parallel "$(nproc)" 2>&1 | tee "$log" | while IFS= read -r line; do
        [[ $line =~ ^\[\ *([0-9]+)%\] ]] || continue
        if [ -t 1 ]; then
            printf '\rBuilding: %3d %%' "${BASH_REMATCH[1]}"
        elif ((BASH_REMATCH[1] % every == 0 && BASH_REMATCH[1] != ${shown:--1})); then
            shown=${BASH_REMATCH[1]}
            printf 'Building: %3d %%\n' "$shown"
        fi
    done || { printf '\n'; cat "$log"; rm "$log"; exit 1; }
    rm "$log"
    printf '\rBuilt in %d s     \n' $((SECONDS - started))
}
build

orvella=build/demo/tools/orvella
out=out/demo
mkdir -p "$out"
size=1280x960

make_picture() { # format, options of convert...
    local format=$1
    shift
    echo "A chart as $format becomes a picture"
    "$orvella" chart -f "$format" -s $size "$out/chart-$format.raw"
    "$orvella" convert -f "$format" -s $size "$@" "$out/chart-$format.raw" "$out/chart-$format.png"
}
make_picture BayerRG8
make_picture BayerGR12p
make_picture Mono12
make_picture Yuv422
echo "The camera, real or simulated, takes a frame"
"$orvella" grab "$out/camera.png" || true # not without Aravis

echo
echo "Raw frames and the pictures made from them:"
ls -1 "$PWD/$out"/*.png
