#!/usr/bin/python3
"""What the inner loops of conversions wait for.

    bench/bounds.py BUILD_DIR TABLE_JSON > bounds.json

For each conversion below: the time per pixel on an image that stays in the first-level cache, where memory plays no
part; the inner loops in which perf finds the program during that; and what llvm-mca makes of these loops: cycles per
iteration, and how busy it keeps the execution ports. Needs perf, objdump and llvm-mca (Debian packages linux-perf,
binutils, llvm-19).
"""
import bisect
import json
import os
import re
import subprocess
import sys
import tempfile

CONVERSIONS = [
    "Mono8 -> BGR24",
    "Mono8 -> BGRA32",
    "Mono16 -> BGR24",
    "Mono10p -> Mono8",
    "Mono12p -> Mono16",
    "Mono12Packed -> BGR24",
    "Mono12 big-endian -> Mono8",
    "RGB8 -> Mono8",
    "RGB8 -> BGR24",
    "RGBA8 -> Mono8",
    "YUV 4:1:1 -> BGR24",
    "YUV 4:2:2 -> BGR24",
    "YUV 4:2:2 -> Mono8",
    "YUV 4:4:4 -> BGR24",
    "Bayer8 2x2 -> BGR24",
    "Bayer8 2x2 -> Mono8",
    "Bayer8 2x2 -> UYVY",
    "Bayer8 2x2 -> Mono16",
    "Bayer8 3x3 -> BGR24",
    "Bayer8 3x3 -> Mono8",
    "Bayer8 LCAA -> BGR24",
    "Bayer8 LCAAV -> BGR24",
    "Bayer8 YUV422 -> BGR24",
    "Bayer12 2x2 -> BGR24",
    "Bayer12 2x2 -> Mono8",
    "Bayer12 2x2 -> BGR48",
    "Bayer12Packed 2x2 -> BGR24",
    "Bayer10p 2x2 -> BGR24",
    "Bayer10p 2x2 -> Mono8",
    "Bayer12p 2x2 -> Mono16",
    "RGB8 double precision -> Mono8",
    "RGB8 planes -> R G B Y",
    "YUV 4:4:4 planes -> R G B",
    "RGB8 matrix -> BGR24",
    "Bayer8 matrix -> BGR24",
    "Bayer16 matrix -> BGR48",
    "CYGM8 -> BGR24",
    "CYGM8 3x3 -> BGR24",
    "Mono8 nearest -> Mono8",
    "Mono8 linear -> Mono8",
]
WIDTH, CACHE = 640, 40 * 1024  # rows as in the table; as many as the first-level data cache holds
CORES = {"avx2": "skylake", "avx512": "icelake-server"}  # that llvm-mca is to imitate
LOAD_ADDRESS = 0x555555554000  # of a position-independent program without address randomisation
MATTERS = 0.05  # loops with a smaller share of the samples are left out,
DENSE = 1 / 3  # and those with so many fewer samples an instruction than the densest: they run once a row


class Code:
    """The program's instructions, by address."""

    def __init__(self, program):
        self.addresses, self.texts = [], []
        listing = subprocess.run(["objdump", "-d", "--no-show-raw-insn", program], capture_output=True, text=True, check=True)
        for line in listing.stdout.splitlines():
            match = re.match(r"\s*([0-9a-f]+):\t(.*)", line)
            if match:
                self.addresses.append(int(match[1], 16))
                self.texts.append(match[2].split("#")[0].strip())

    def index(self, address):
        return bisect.bisect_left(self.addresses, address)

    def loops(self):
        """The innermost loops, (index of the first instruction, index of the backward jump)."""
        result, last_target = [], -1
        for index, text in enumerate(self.texts):
            match = re.match(r"j\w+\s+([0-9a-f]+)", text)
            if not match or int(match[1], 16) > self.addresses[index]:
                continue
            target = self.index(int(match[1], 16))
            if target > last_target:  # else it holds the loop before
                result.append((target, index))
            last_target = max(last_target, target)
        return result

    def assembly(self, loop):
        lines = []
        for text in self.texts[loop[0]:loop[1]]:
            if not re.match(r"j|call|nop|cs nop|data16", text):
                lines.append(re.sub(r"<.*>", "", text))
        return "\n".join(lines) + "\n"


def bench_command(program, conversion, level, size, json_file):
    return [program, "--filter", "^" + re.escape(conversion) + "$", "--levels", level, "--peers", "none",
            "--size", size, "--json", json_file]


def timed(program, conversion, level, size):
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        subprocess.run(bench_command(program, conversion, level, size, file.name), check=True, stdout=subprocess.DEVNULL)
        return json.load(open(file.name))[0]["nsPerPixel"]


def sampled(program, conversion, level, size):
    """Where the program is while it converts: sorted addresses."""
    with tempfile.NamedTemporaryFile() as data:
        record = ["setarch", "-R", "perf", "record", "-q", "-e", "cpu-clock", "-F", "10000", "-o", data.name]
        subprocess.run(record + bench_command(program, conversion, level, size, "/dev/null"), check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        script = subprocess.run(["perf", "script", "-i", data.name, "-F", "ip,dso"], check=True, capture_output=True,
                                text=True)
    fields = [line.split() for line in script.stdout.splitlines()]
    return sorted(int(address, 16) - LOAD_ADDRESS for address, where in fields if program in where)


def analysed(assembly, level):
    """llvm-mca's cycles per iteration, and in how many of them each port is busy."""
    iterations = 100
    text = subprocess.run(["llvm-mca-19", "-mcpu=" + CORES[level], "-iterations=%d" % iterations, "-instruction-info=0"],
                          input=assembly, capture_output=True, text=True, check=True).stdout
    names = re.findall(r"^\[[\d.]+\]\s+- \w*?Port(\w+)", text, re.M)
    busy = re.search(r"Resource pressure per iteration:\n.*\n(.*)", text)[1].split()
    ports = {"p%d" % int(name): float(cycles) for name, cycles in zip(names, busy) if name.isdigit() and cycles != "-"}
    return int(re.search(r"Total Cycles:\s+(\d+)", text)[1]) / iterations, ports


def bound(code, loops, program, row, level):
    size = "%dx%d" % (WIDTH, CACHE / row["bytesPerPixel"] / WIDTH // 2 * 2)
    samples = sampled(program, row["conversion"], level, size)
    result = {"conversion": row["conversion"], "level": level, "nsPerPixel": row["memcpyNsPerPixel"] / row[level],
              "memcpyNsPerPixel": row["memcpyNsPerPixel"],
              "inCacheNsPerPixel": timed(program, row["conversion"], level, size), "loops": []}
    shares = {}
    for loop in loops:
        first, last = (code.addresses[index] for index in loop)
        shares[loop] = (bisect.bisect_right(samples, last) - bisect.bisect_left(samples, first)) / len(samples)
    instructions = {loop: loop[1] - loop[0] + 1 for loop in loops}
    densest = max(shares[loop] / instructions[loop] for loop in loops)
    for loop in loops:
        if shares[loop] >= MATTERS and shares[loop] / instructions[loop] >= DENSE * densest:
            cycles, ports = analysed(code.assembly(loop), level)
            result["loops"].append({"share": shares[loop], "instructions": instructions[loop], "cycles": cycles, "ports": ports})
    return result


def main(build, table_file):
    program = os.path.abspath(os.path.join(build, "bench", "orvella_bench"))
    code = Code(program)
    loops = code.loops()
    rows = {row["conversion"]: row for row in json.load(open(table_file)) if row["width"] == WIDTH}
    print(json.dumps([bound(code, loops, program, rows[name], level) for name in CONVERSIONS for level in CORES], indent=1))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
