#!/usr/bin/env bash
# Makes every picture of docs/pictures, and the tables that belong to them.
#
#     scripts/docs/pictures.sh [build/release] [folder of photographs]        wants 'scripts/packages.sh docs'
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build/release}

scripts/docs/layouts.py
scripts/docs/mistakes.py "$build"
scripts/docs/formats.py "$build/tools/orvella"
"$build/tools/orvella" chart -f BayerRG12p -s 640x480 - |
    "$build/tools/orvella" convert -f BayerRG12p -s 640x480 - docs/pictures/chart.png
scripts/docs/gallery.py --build "$build" ${2:+--photos "$2"}
