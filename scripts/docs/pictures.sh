#!/usr/bin/env bash
# Makes every picture of the documents but those of timings, and the tables that belong to them.
#
#     scripts/docs/pictures.sh [build/release] [folder of photographs]        wants 'scripts/packages.sh docs'
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build/release}

scripts/docs/layouts.py
scripts/docs/mistakes.py "$build"
scripts/docs/formats.py "$build/tools/orvella"
dump=$(mktemp)
trap 'rm -f "$dump"' EXIT
"$build/tools/orvella" chart -f BayerRG12p -s 640x480 "$dump"
"$build/tools/orvella" convert -f BayerRG12p -s 640x480 --type png "$dump" docs/pictures/chart.png
"$build/tools/orvella" guess --sheet docs/guess.png "$dump" >/dev/null
scripts/docs/gallery.py --build "$build" ${2:+--photos "$2"}
if [ -n "${2:-}" ] && [ -e build/web/web/orvella-viewer.html ]; then
    scripts/docs/viewer.py build/web/web "$2"/rose_BayerRG14lsb_768x512.raw
fi
