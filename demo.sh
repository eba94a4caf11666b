#!/usr/bin/env bash
# From a fresh Debian 12 to pictures: installs what is missing, builds, makes raw camera frames, converts them to PNG.
set -euo pipefail
cd "$(dirname "$0")"

scripts/packages.sh build
echo "Building (a minute or two)"
cmake -S . -B build/demo -DORVELLA_TESTS=OFF -DORVELLA_BENCH=OFF >/dev/null
cmake --build build/demo --parallel "$(nproc)" >/dev/null

orvella=build/demo/tools/orvella
out=out/demo
mkdir -p "$out"
size=1280x960

make_picture() { # format, options of convert...
    local format=$1
    shift
    "$orvella" chart -f "$format" -s $size "$out/chart-$format.raw"
    "$orvella" convert -f "$format" -s $size "$@" "$out/chart-$format.raw" "$out/chart-$format.png"
}
make_picture BayerRG8
make_picture BayerGR12p
make_picture Mono12
make_picture Yuv422
# A camera's frame, if this build can reach the simulated camera.
"$orvella" grab "$out/camera.png" 2>/dev/null || true

echo
echo "Raw frames and the pictures made from them:"
ls -1 "$PWD/$out"/*.png
