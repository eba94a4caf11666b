#!/usr/bin/python3
"""Draws docs/performance/*.png and writes docs/performance/table.md and the generated sections of docs/performance.md and
docs/performance/bounds.md, from the JSON files beside the plots. Called by report.sh.

    bench/report.py BUILD_DIR
"""
import json
import os
import platform
import re
import subprocess
import sys
import tempfile
from datetime import date

import matplotlib

matplotlib.use("agg")
from matplotlib import pyplot  # noqa: E402

DATA = "docs/performance/"
LEVELS = ["avx2", "avx512"]  # those the pages speak of; the whole table has them all
PLAIN = "plain loop"
PEERS = {"OpenCV": "libopencv-imgproc406", "libyuv": "libyuv0", "libdc1394": "libdc1394-25", "swscale": "libswscale6"}
TIE = 0.95  # what is no further behind counts as level: runs differ by that much
KEY_ROWS = [
    "Mono8 -> BGR24", "Mono8 -> BGRA32", "Mono12 -> Mono8", "Mono12 -> Mono16", "Mono16 big-endian -> Mono8",
    "Mono10p -> Mono8", "Mono12p -> Mono16", "Mono12Packed -> BGR24",
    "RGB8 -> Mono8", "RGB8 -> BGR24", "RGB8 -> BGRA32", "BGRA8 -> Mono8", "BGRA8 -> BGR24",
    "RGB8 planes -> R G B", "RGB8 planes -> R G B Y", "RGB8 double precision -> Mono8", "RGB8 matrix -> BGR24",
    "YUV 4:2:2 -> BGR24", "YUV 4:2:2 -> BGRA32", "YUV 4:2:2 -> Mono8", "YUV 4:4:4 -> BGR24",
    "Bayer8 2x2 -> BGR24", "Bayer8 2x2 -> Mono8", "Bayer8 3x3 -> BGR24", "Bayer8 3x3 -> Mono8",
    "Bayer8 LCAA -> BGR24", "Bayer8 LCAAV -> BGR24", "Bayer12 2x2 -> BGR24", "Bayer12 2x2 -> BGR48",
    "Bayer10p 2x2 -> BGR24", "Bayer12p 2x2 -> BGR24", "Bayer12Packed 2x2 -> BGR24", "CYGM8 -> BGR24",
]

README_ROWS = [
    "Bayer8 2x2 -> BGR24", "Bayer8 3x3 -> BGR24", "Bayer12p 2x2 -> BGR24", "Bayer12 2x2 -> BGR48", "Mono12p -> Mono16",
    "YUV 4:2:2 -> BGR24", "RGB8 -> Mono8", "RGB8 matrix -> BGR24",
]


def load(name):
    with open(DATA + name + ".json") as file:
        return json.load(file)


# ---- The tables


class Row:
    """One conversion at one size: figures are memcpy's time over the contestant's."""

    def __init__(self, fields):
        self.fields = fields
        self.name = fields["conversion"]
        self.size = "%dx%d" % (fields["width"], fields["height"])
        self.pixels = fields["width"] * fields["height"]
        self.near = fields["near"].split(",")

    def ours(self, level):
        return self.fields[level]

    def nanoseconds(self, figure):
        """of a call"""
        return self.fields["memcpyNsPerPixel"] / figure * self.pixels

    def plain(self, level):
        return self.fields.get("%s %s" % (PLAIN, level))

    def best_peer(self, level):
        """(figure, its name, whether it does only something similar), or None. Those that cannot be limited to a level
        have one figure for all."""
        peers = [(self.fields[key], peer, key in self.near)
                 for peer in PEERS for key in (peer, "%s %s" % (peer, level)) if key in self.fields]
        return max(peers, default=None)

    def rivals(self, level):
        """(figure, name) of the plain loop and of the best peer."""
        rivals = [(self.plain(level), PLAIN)] if self.plain(level) else []
        if self.best_peer(level):
            figure, peer, near = self.best_peer(level)
            rivals.append((figure, peer + (" (similar)" if near else "")))
        return rivals


def figure_cell(figure):
    return "%.2f" % figure if figure >= 0.1 else "%.3f" % figure


def peer_cell(peer):
    if not peer:
        return ""
    figure, name, near = peer
    return "%s%s %s" % ("~" if near else "", figure_cell(figure), name)


def cells(row, level):
    plain, rivals = row.plain(level), row.rivals(level)
    return [
        "**%s**" % figure_cell(row.ours(level)),
        figure_cell(plain) if plain else "",
        peer_cell(row.best_peer(level)),
        "%.1f" % (row.ours(level) / max(rivals)[0]) if rivals else "",
    ]


def table(rows, size):
    head = ["conversion"] + [level + word for level in LEVELS for word in (": ours", ": plain loop", ": best peer", ": times")]
    lines = ["| " + " | ".join(head) + " |", "|---" + "|---:" * (len(head) - 1) + "|"]
    for row in rows:
        if row.size == size:
            lines.append("| " + " | ".join([row.name] + [cell for level in LEVELS for cell in cells(row, level)]) + " |")
    return "\n".join(lines)


def key_rows(rows):
    return [row for name in KEY_ROWS for row in rows if row.name == name]


def listed(rows, level, is_short):
    """Rows that miss a goal, with the rival that they are measured by."""
    lines = []
    for row in rows:
        rivals = row.rivals(level)
        if rivals and is_short(row, row.ours(level), max(rivals)[0]):
            lines.append("- %s: %s, %s %s" % (row.name, figure_cell(row.ours(level)), max(rivals)[1], figure_cell(max(rivals)[0])))
    return lines or ["- none"]


def goals_section(rows):
    lines = []
    for size in dict.fromkeys(row.size for row in rows):
        here = [row for row in rows if row.size == size]
        for level in LEVELS:
            lines += ["**%s at %s**, %d conversions, %d of them as fast as memcpy or nearly (0.9 and more). Behind another:" %
                      (level, size, len(here), sum(row.ours(level) >= 0.9 for row in here)), ""]
            lines += listed(here, level, lambda row, ours, best: ours < TIE * best) + [""]
    return "\n".join(lines).strip()


def readme_section(rows):
    """Milliseconds, for README."""
    lines = ["| | Orvella, AVX2 | AVX-512 | memcpy | plain loop, AVX2 | best library |", "|---|---:|---:|---:|---:|---|"]
    for row in rows:
        if row.name in README_ROWS:
            milliseconds = lambda figure: row.nanoseconds(figure) / 1e6  # noqa: E731
            figures = [row.ours("avx2"), row.ours("avx512"), 1, row.plain("avx2")]
            line = [row.name.replace("->", "to")] + ["%.2f" % milliseconds(figure) for figure in figures]
            peer = row.best_peer("avx2")
            line.append("%s%.2f %s" % ("~" if peer[2] else "", milliseconds(peer[0]), peer[1]) if peer else "")
            lines.append("| " + " | ".join(line) + " |")
    return "\n".join(lines)


def small_section():
    rows = [Row(fields) for fields in load("small")]
    head = ["conversion", "size"] + [level + word for level in LEVELS for word in ("", ": best other")]
    lines = ["| " + " | ".join(head) + " |", "|---|---" + "|---:" * (len(head) - 2) + "|"]
    for row in rows:
        line = [row.name, row.size]
        for level in LEVELS:
            rival = max(row.rivals(level))
            line += ["**%.0f**" % row.nanoseconds(row.ours(level)), "%.0f %s" % (row.nanoseconds(rival[0]), rival[1])]
        lines.append("| " + " | ".join(line) + " |")
    return "\n".join(lines)


# ---- The machine


def version_of(package):
    result = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], capture_output=True, text=True)
    return result.stdout if result.returncode == 0 else "not installed"


def lscpu():
    text = subprocess.run(["lscpu"], capture_output=True, text=True, env={**os.environ, "LC_ALL": "C"}).stdout
    return dict((key.strip(), value.strip()) for key, _, value in (line.partition(":") for line in text.splitlines()))


def machine_section():
    machine, cpu = load("machine")[0], lscpu()
    virtual = ", virtual (%s)" % cpu["Hypervisor vendor"] if "Hypervisor vendor" in cpu else ""
    rows = [
        ("measured", date.today().isoformat()),
        ("processor", "%s, family %s model %s, %s CPUs%s" %
         (cpu["Model name"], cpu["CPU family"], cpu["Model"], cpu["CPU(s)"], virtual)),
        ("clock while measuring", "%.2f GHz" % machine["gigahertz"]),
        ("caches", ", ".join("%s %s" % (key[:-6], cpu[key]) for key in ("L1d cache", "L2 cache", "L3 cache") if key in cpu)),
        ("highest level", machine["level"]),
        ("system", "Linux %s, glibc %s" % (platform.release(), platform.libc_ver()[1])),
        ("compiler", machine["compiler"]),
    ]
    rows += [(peer, version_of(package)) for peer, package in PEERS.items()]
    return "| | |\n|---|---|\n" + "\n".join("| %s | %s |" % row for row in rows)


# ---- Scaling, loading


def scaling_section():
    lines = ["| conversion | size | two threads / one |", "|---|---|---:|"]
    for row in load("scaling"):
        size = "%dx%d" % (row["width"], row["height"]) if row["width"] else ""
        lines.append("| %s | %s | %.2f |" % (row["conversion"], size, row["speedUp"]))
    return "\n".join(lines)


def load_section(build):
    library = os.path.join(build, "src", "liborvella.so")
    with tempfile.NamedTemporaryFile() as stripped:
        subprocess.run(["strip", "-o", stripped.name, library], check=True)
        megabytes = os.path.getsize(stripped.name) / 1e6
    lines = ["| process | dlopen | private memory | first conversion of 64x64 | the next |", "|---|---:|---:|---:|---:|"]
    for row in load("load"):
        lines.append("| %s | %.2f ms | %d kB | %.1f us | %.1f us |" % (
            row["process"], row["milliseconds"], row["privateKilobytes"], row["firstCallMicroseconds"],
            row["secondCallMicroseconds"]))
    return "\n".join(lines) + "\n\n`liborvella.so`, stripped: %.2f MB." % megabytes


# ---- What binds


def bounds_section():
    if not os.path.exists(DATA + "bounds.json"):
        return "(not measured)"
    cycles_of = lambda ns: ns * 64 * load("machine")[0]["gigahertz"]  # noqa: E731
    lines = ["| conversion | level | call | in L1 | memcpy | loop: instructions | cycles | p0 | p5 | share |",
             "|---|---|---:|---:|---:|---:|---:|---:|---:|---:|"]
    for row in load("bounds"):
        figures = [cycles_of(row[key]) for key in ("nsPerPixel", "inCacheNsPerPixel", "memcpyNsPerPixel")]
        head = "| %s | %s | %s |" % (row["conversion"], row["level"], " | ".join("%.1f" % figure for figure in figures))
        for loop in row["loops"]:
            lines.append("%s %d | %.1f | %.1f | %.1f | %.0f %% |" % (head, loop["instructions"], loop["cycles"],
                         loop["ports"].get("p0", 0), loop["ports"].get("p5", 0), 100 * loop["share"]))
            head = "| | | | | |"
    return "\n".join(lines)


# ---- Plots


def draw(file, rows, title, x_label, ticks):
    figure, axes = pyplot.subplots(figsize=(8, 5))
    for name in dict.fromkeys(row["conversion"] for row in rows):
        mine = [row for row in rows if row["conversion"] == name]
        widths = [row["width"] for row in mine]
        line, = axes.plot(widths, [row["nsPerPixel"] for row in mine], marker="o", markersize=3, label=name)
        axes.plot(widths, [row["memcpyNsPerPixel"] for row in mine], linewidth=0.8, linestyle=":", color=line.get_color())
    axes.plot([], [], linewidth=0.8, linestyle=":", color="black", label="memcpy of as many bytes")
    axes.set_xscale("log", base=2)
    axes.set_yscale("log")
    axes.set_xticks(ticks, [str(tick) for tick in ticks])
    axes.yaxis.set_major_formatter(matplotlib.ticker.FormatStrFormatter("%g"))
    axes.set_title(title)
    axes.set_xlabel(x_label)
    axes.set_ylabel("ns per pixel")
    axes.grid(True, linewidth=0.4)
    axes.legend(fontsize=8)
    figure.tight_layout()
    figure.savefig(DATA + file, dpi=110, metadata={"Software": None})
    pyplot.close(figure)


def plots():
    rows = load("linearity")
    squares = [row for row in rows if row["width"] == row["height"]]
    narrow = [row for row in rows if row["width"] <= 64 and row["width"] != row["height"]]
    draw("squares.png", squares, "Square images", "side (pixels)", [2**n for n in range(6, 14)])
    draw("narrow.png", narrow, "Narrow images of 1024 rows", "width (pixels)", [2, 4, 8, 16, 32, 64])


def draw_bars(file, rows, size):
    """Ours at each level and the best of the others, for the rows that matter."""
    rows = [row for row in key_rows(rows) if row.size == size and row.rivals("avx2")][::-1]
    figure, axes = pyplot.subplots(figsize=(8, 0.34 * len(rows) + 1))
    bars = [("best other, AVX2", "#bbbbbb", [max(row.rivals("avx2"))[0] for row in rows])]
    bars += [(level, color, [row.ours(level) for row in rows]) for level, color in (("avx2", "#4c8bc0"), ("avx512", "#1f4e79"))]
    for index, (label, color, values) in enumerate(bars):
        axes.barh([place + 0.28 * (1 - index) for place in range(len(rows))], values, 0.28, label=label, color=color)
    axes.set_yticks(range(len(rows)), [row.name for row in rows], fontsize=8)
    axes.axvline(1, color="black", linewidth=0.8, linestyle=":")
    axes.set_xlabel("speed, memcpy = 1, %s" % size)
    axes.margins(y=0.01)
    axes.legend(fontsize=8, loc="lower right")
    figure.tight_layout()
    figure.savefig(DATA + file, dpi=110, metadata={"Software": None})
    pyplot.close(figure)


def rewrite(document, sections):
    with open(document) as file:
        text = file.read()
    for name, section in sections.items():
        begin, end = "<!-- generated: %s -->" % name, "<!-- end -->"
        pattern = re.escape(begin) + ".*?" + re.escape(end)
        text, count = re.subn(pattern, lambda _: "%s\n%s\n%s" % (begin, section, end), text, flags=re.S)
        if count != 1:
            sys.exit("%s has no section '%s'" % (document, name))
    with open(document, "w") as file:
        file.write(text)


def main(build):
    rows = [Row(fields) for fields in load("table")]
    small, large = dict.fromkeys(row.size for row in rows)
    rewrite("docs/performance.md", {
        "machine": machine_section(),
        "small frames": table(key_rows(rows), small),
        "large frames": table(key_rows(rows), large),
        "tiny frames": small_section(),
        "goals": goals_section(rows),
        "scaling": scaling_section(),
        "load": load_section(build),
    })
    rewrite("README.md", {"speed": readme_section([row for row in rows if row.size == large])})
    rewrite(DATA + "bounds.md", {"bounds": bounds_section()})
    with open(DATA + "table.md", "w") as file:
        file.write("# Every conversion\n\nAs in [Performance](../performance.md), from [table.json](table.json), which has the "
                   "other levels and every peer as well.\n")
        for size in (small, large):
            file.write("\n## %s\n\n%s\n" % (size, table(rows, size)))
    draw_bars("bars.png", rows, small)
    plots()


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
