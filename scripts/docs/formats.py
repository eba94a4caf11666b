#!/usr/bin/env python3
"""Writes the table of conversions in docs/outputs.md from what 'orvella formats' prints, which asks the library.

    scripts/docs/formats.py <orvella> [--check]
"""
import pathlib
import re
import subprocess
import sys

PAGE = pathlib.Path(__file__).parents[2] / "docs/outputs.md"
PATTERN = r"(<!-- generated: conversions -->\n).*?(<!-- end -->)"
PHASE = re.compile(r"^Bayer(RG|GR|GB|BG)")


def table(listing):
    outputs = [match[1] for match in re.finditer(r"^ +\d+  (\w+)", listing, re.M)]
    offers, groups = {}, {}
    for name, marks, sizes in re.findall(r"^  (\w+) +(?:0x\w+|-)  +((?:[x.] +)+)(.*)$", listing.split("\n\n")[1], re.M):
        if PHASE.match(name) and not name.startswith("BayerRG"):
            if offers[PHASE.sub("BayerRG", name)] != (marks, sizes):
                sys.exit(f"{name} differs from other phases")
            continue
        offers[name] = marks, sizes
        groups.setdefault((marks, sizes), []).append(PHASE.sub("Bayer..", name))
    # Outputs that the same sources offer share a column.
    columns = {}
    for number, output in enumerate(outputs):
        columns.setdefault(tuple(marks.split()[number] for marks, _ in groups), []).append(output)
    columns = {marks: names for marks, names in columns.items() if "x" in marks}
    lines = ["| Source | " + " | ".join(map(", ".join, columns.values())) + " | Sizes |",
             "|---|" + ":-:|" * len(columns) + "---|"]
    for row, ((_, sizes), names) in enumerate(groups.items()):
        cells = [marks[row].replace(".", "") for marks in columns]
        lines.append("| " + " | ".join([", ".join(names), *cells, sizes]) + " |")
    return "\n".join(lines)


listing = subprocess.run([sys.argv[1], "formats"], capture_output=True, text=True, check=True).stdout
before = PAGE.read_text()
after = re.sub(PATTERN, lambda match: match[1] + table(listing) + "\n" + match[2], before, flags=re.S)
if "--check" in sys.argv:
    sys.exit(0 if before == after else f"{PAGE} is out of date: {__file__}")
PAGE.write_text(after)
