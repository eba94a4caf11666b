#!/usr/bin/env bash
# Builds the module and tests it, where emscripten and node are installed. Wants the converter of the release build.
set -euo pipefail
cd "$(dirname "$0")/.."

for program in em++ node; do
    command -v $program >/dev/null || { echo "Skipped: $program is missing"; exit 0; }
done
cmake --preset web
cmake --build --preset web --parallel "$(nproc)"
ORVELLA=$PWD/build/release/tools/orvella MODULE=$PWD/build/web/web node --test web/tests/
