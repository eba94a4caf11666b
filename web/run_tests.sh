#!/usr/bin/env bash
# Builds the module and the viewer and tests them, as far as what that takes is installed. Wants the converter of the
# release build.
set -euo pipefail
cd "$(dirname "$0")/.."
export ORVELLA=$PWD/build/release/tools/orvella MODULE=$PWD/build/web/web

wants() { # the test, programs...
    for program in "${@:2}"; do
        command -v "$program" >/dev/null || { echo "Skipped: $1, as $program is missing"; return 1; }
    done
}

wants "WebAssembly" em++ node || exit 0
cmake --preset web -DORVELLA_TESTS=ON
for targets in web web-tests; do cmake --build --preset "$targets" --parallel "$(nproc)"; done
node --test web/tests/module.test.mjs
ctest --preset web --verbose

wants "the viewer" esbuild chromium chromedriver || exit 0
/usr/bin/python3 -c 'import selenium' 2>/dev/null || { echo "Skipped: the viewer, as python3-selenium is missing"; exit 0; }
if wants "the viewer's accessibility" npm; then
    npm ci --prefix web --ignore-scripts --no-audit --no-fund
    export AXE=$PWD/web/node_modules/axe-core/axe.min.js
fi
cd web/tests
/usr/bin/python3 -m unittest viewer_test
