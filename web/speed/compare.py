#!/usr/bin/env python3
"""The speed of the module in node beside the native library's, by turns, into the table of web/README.md.

    cmake --build build/release --target orvella_speed
    cmake --preset web -DORVELLA_TESTS=ON && cmake --build build/web --target orvella_speed
    web/speed/compare.py
"""

import collections
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
CONVERSIONS = ["Mono12p -> Mono16", "RGB8 -> Mono8", "YUV 4:2:2 -> BGR24", "Bayer8 2x2 -> BGR24", "Bayer8 3x3 -> BGR24",
               "Bayer12 2x2 -> BGR48", "Bayer12p 2x2 -> RGBA32", "RGB8 matrix -> BGR24"]
# With node's fetch, emscripten's loader takes the module's path for an address.
WAYS = [[ROOT / "build/release/web/speed/orvella_speed"],
        ["node", "--no-experimental-fetch", ROOT / "build/web/web/speed/orvella_speed.js"]]

times = collections.defaultdict(list)
for _ in range(5):
    for way in WAYS:
        output = subprocess.run([*map(str, way), *CONVERSIONS], check=True, capture_output=True, text=True).stdout
        for line in output.splitlines():
            conversion, level, milliseconds = line.split("\t")
            times[conversion, level].append(float(milliseconds))

node = subprocess.run(["node", "--version"], check=True, capture_output=True, text=True).stdout.strip()
cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())[1].strip()
levels = ["wasm", "sse4", "avx2"]
table = [f"Milliseconds for 2448x2048 on one thread, in node {node} and natively, by turns, on {cpu}:", "",
         "| | WebAssembly | native, SSE4 | native, AVX2 | SSE4 / WebAssembly |", "|---|---:|---:|---:|---:|"]
for conversion in CONVERSIONS:
    wasm, sse4, avx2 = (min(times[conversion, level]) for level in levels)
    table.append(f"| {conversion.replace('->', 'to')} | {wasm:.2f} | {sse4:.2f} | {avx2:.2f} | {sse4 / wasm:.2f} |")

page = ROOT / "web/README.md"
text, count = re.subn(r"(<!-- generated: speed -->\n).*?(<!-- end -->)", lambda m: m[1] + "\n".join(table) + "\n" + m[2],
                      page.read_text(), flags=re.S)
assert count == 1, "web/README.md has no place for the table"
page.write_text(text)
print("\n".join(table))
