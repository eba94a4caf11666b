#!/usr/bin/python3
"""Counts the instructions of every conversion on aarch64, in QEMU, beside those of the plain loop, and lets llvm-mca
estimate the cycles of the hottest code on two cores. Writes docs/performance/aarch64.md and .json.

    bench/aarch64/counts.py [BUILD_DIR]     build/aarch64 of the preset "aarch64", which is built as far as needed

Needs what `scripts/packages.sh cross` installs; without llvm-mca (Debian package llvm-19) there are no cycles.
"""
import json
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
RESULT = os.path.join(ROOT, "docs/performance/aarch64")
EMULATOR = "qemu-aarch64"
MCA = "llvm-mca-19"
CORES = ["neoverse-n1", "cortex-a72"]
SHOWN = [
    "Mono8 -> BGR24",
    "Mono16 -> BGR24",
    "Mono12 big-endian -> Mono8",
    "Mono10p -> Mono8",
    "Mono12p -> Mono16",
    "Mono12Packed -> BGR24",
    "RGB8 -> Mono8",
    "RGB8 -> BGR24",
    "RGB8 matrix -> BGR24",
    "YUV 4:2:2 -> BGR24",
    "YUV 4:2:2 -> Mono8",
    "YUV 4:4:4 planes -> R G B",
    "Bayer8 2x2 -> BGR24",
    "Bayer8 2x2 -> Mono8",
    "Bayer8 2x2 -> Mono16",
    "Bayer8 2x2 -> UYVY",
    "Bayer8 3x3 -> BGR24",
    "Bayer8 LCAA -> BGR24",
    "Bayer12 2x2 -> BGR24",
    "Bayer10p 2x2 -> BGR24",
    "Bayer12p 2x2 -> Mono16",
    "Bayer12Packed 2x2 -> Mono8",
    "CYGM8 -> BGR24",
    "Mono8 linear -> Mono8",
]
GOAL_TWICE = re.compile(r"^(Bayer|CYGM)|^Mono1[02](p|Packed) ")  # mosaics and packed formats
HEADER = """# Instructions on aarch64

Counts, not times: no ARM machine was there to measure on. Instructions per pixel of our level `neon` and of the plain
loop (`definition/`, g++ `-O3`) on images of 640 pixels a row, counted by a plugin of QEMU, and the factor between them.
The cycles are llvm-mca's estimate per pixel for the pieces of code that hold most of these instructions: it knows the
core's units and latencies, and neither its caches nor its branches. Written by `bench/aarch64/counts.py`; the figures
of all conversions are in [aarch64.json](aarch64.json).

The goal is to be behind the plain loop nowhere, and twice as good in mosaics and packed formats.

"""


def run(*command, **options):
    return subprocess.run(command, check=True, text=True, **options)


def counted(program):
    """For each conversion: pixels, and of ours and the plain loop the number of instructions and the blocks."""
    with tempfile.TemporaryDirectory() as directory:
        plugin = os.path.join(directory, "plugin.so")
        run("gcc", "-O2", "-Wall", "-shared", "-fPIC", os.path.join(HERE, "plugin.c"), "-o", plugin)
        lines = run(EMULATOR, "-plugin", plugin, program, stderr=subprocess.PIPE).stderr.splitlines()
    rows, marks = [], []
    for line in lines:
        kind, *fields = line.split("\t")
        if kind == "row":
            marks = []
            rows.append((fields[0], int(fields[1]), marks))
        elif kind == "mark":
            blocks = [tuple(int(n, base) for n, base in zip(b.split(","), (16, 10, 10))) for b in fields[1:]]
            marks.append((int(fields[0]), blocks))
        else:
            sys.exit(line)
    return [(name, pixels, dict(zip(("ours", "plain"), marks[1:]))) for name, pixels, marks in rows]


class Code:
    """The program's instructions by address, as assembly."""

    def __init__(self, program):
        listing = run("aarch64-linux-gnu-objdump", "-d", "--no-show-raw-insn", program, stdout=subprocess.PIPE).stdout
        self.texts = {}
        for line in listing.splitlines():
            match = re.match(r"\s*([0-9a-f]+):\t(.*)", line)
            if match:
                self.texts[int(match[1], 16)] = re.sub(r"\s*(<.*>|//.*)", "", match[2])

    def cycles(self, address, instructions, core):
        """llvm-mca's cycles for one run of a block, in a row of many."""
        repeats = 100
        texts = [self.texts[address + 4 * i] for i in range(instructions)]
        assembly = "\n".join(t for t in texts if not re.match(r"(b|bl|b\.\w+|cbn?z|tbn?z|ret|br|blr|adrp)\b", t))
        if not assembly:
            return 0  # a branch alone
        text = run(MCA, "-march=aarch64", "-mcpu=" + core, "-iterations=%d" % repeats, "-instruction-info=0",
                   "-resource-pressure=0", input=assembly + "\n", stdout=subprocess.PIPE).stdout
        return int(re.search(r"Total Cycles:\s+(\d+)", text)[1]) / repeats


def cycles_per_pixel(code, counts, pixels, core):
    return sum(code.cycles(address, instructions, core) * times for address, instructions, times in counts[1]) / pixels


def is_copy(counts):
    """Whether ours and the plain loop spend their time in the same code: memmove."""
    return len({max(blocks, key=lambda b: b[1] * b[2])[0] for _, blocks in counts.values()}) == 1


def measured(program):
    code = Code(program) if shutil.which(MCA) else None
    result = []
    for name, pixels, counts in counted(program):
        row = {"conversion": name, **({"copy": True} if is_copy(counts) else {})}
        for who in counts:
            row[who] = round(counts[who][0] / pixels, 3)
            if code and name in SHOWN:
                for core in CORES:
                    row["%s %s" % (who, core)] = round(cycles_per_pixel(code, counts[who], pixels, core), 3)
        result.append(row)
    return result


def factor(row, unit=""):
    return row["plain" + unit] / row["ours" + unit]


def table(rows):
    units = [""] + [" " + core for core in CORES if "ours " + core in rows[0]]
    titles = ["%s: ours | plain loop | factor" % (unit.strip() or "instructions") for unit in units]
    lines = ["| conversion | " + " | ".join(titles) + " |",
             "|---|" + "---:|" * (3 * len(units))]
    for row in rows:
        cells = ["%.2f | %.2f | %.2f" % (row["ours" + u], row["plain" + u], factor(row, u)) for u in units]
        lines.append("| %s | %s |" % (row["conversion"], " | ".join(cells)))
    return "\n".join(lines)


def listed(rows):
    return "\n".join("- %s: %.2f" % (row["conversion"], factor(row)) for row in sorted(rows, key=factor))


def document(rows):
    by_name = {row["conversion"]: row for row in rows}
    copies = [row for row in rows if "copy" in row]
    behind = [row for row in rows if factor(row) < 1 and row not in copies]
    twice = [row for row in rows if GOAL_TWICE.match(row["conversion"])]
    mean = math.exp(sum(math.log(factor(row)) for row in rows) / len(rows))
    return HEADER + "\n\n".join([
        table([by_name[name] for name in SHOWN]),
        "Of all %d conversions, instructions of the plain loop over ours: geometric mean %.2f; below 1 in %d%s"
        % (len(rows), mean, len(behind), ":\n\n" + listed(behind) if behind else "."),
        "Not among these: %d copies, for which both call memmove. Ours looks at its arguments first: %.2f or more."
        % (len(copies), min(map(factor, copies))),
        "Mosaics and packed formats, %d conversions: below 2 in %d." % (len(twice), sum(factor(row) < 2 for row in twice)),
    ]) + "\n"


def main(build):
    if build is None:
        build = os.path.join(ROOT, "build/aarch64")
        run("cmake", "--preset", "aarch64", cwd=ROOT, stdout=subprocess.DEVNULL)
    run("cmake", "--build", build, "--target", "orvella_instructions", cwd=ROOT, stdout=subprocess.DEVNULL)
    rows = measured(os.path.join(build, "bench/aarch64/orvella_instructions"))
    with open(RESULT + ".json", "w") as file:
        file.write("[\n" + ",\n".join(" " + json.dumps(row) for row in rows) + "\n]\n")
    with open(RESULT + ".md", "w") as file:
        file.write(document(rows))


if __name__ == "__main__":
    if len(sys.argv) > 2 or sys.argv[1:] in (["-h"], ["--help"]):
        sys.exit(__doc__)
    main(sys.argv[1] if len(sys.argv) == 2 else None)
