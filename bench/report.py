#!/usr/bin/python3
"""Draws docs/performance/*.png and rewrites the generated sections of docs/performance.md from the JSON files beside
the plots. Called by report.sh.

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

DOCUMENT = "docs/performance.md"
DATA = "docs/performance/"
LEVELS = ["plain", "sse4", "avx2", "avx512"]
PLAIN = "plain loop"
PEERS = {"OpenCV": "libopencv-imgproc406", "libyuv": "libyuv0", "libdc1394": "libdc1394-25", "swscale": "libswscale6"}
TIE = 0.95  # what is no further behind counts as level: runs differ by that much


def load(name):
    with open(DATA + name + ".json") as file:
        return json.load(file)


# ---- The table


class Row:
    """One conversion at one size: figures are memcpy's time over the contestant's."""

    def __init__(self, fields):
        self.name = fields["conversion"]
        self.size = "%dx%d" % (fields["width"], fields["height"])
        self.ns = fields["nsPerPixel"]
        self.ours = max((fields[level], level) for level in LEVELS if level in fields)[0]
        self.plain = fields.get(PLAIN)
        near = fields["near"].split(",")
        peers = [(fields[peer], peer, peer in near) for peer in PEERS if peer in fields]
        self.best_peer = max(peers, default=None)

    def rivals(self):
        """(figure, name) of the plain loop and of the best peer."""
        rivals = [(self.plain, PLAIN)] if self.plain else []
        if self.best_peer:
            figure, peer, near = self.best_peer
            rivals.append((figure, peer + (" (similar)" if near else "")))
        return rivals


def peer_cell(row):
    if not row.best_peer:
        return ""
    figure, peer, near = row.best_peer
    return "%s%.2f %s" % ("~" if near else "", figure, peer)


def sizes_of(rows):
    return list(dict.fromkeys(row.size for row in rows))


def table_section(rows):
    sizes = sizes_of(rows)
    by_key = {(row.name, row.size): row for row in rows}
    head = "| conversion |" + "".join(" %s: ours | plain loop | best peer | ns/pixel |" % size for size in sizes)
    lines = [head, "|---|" + "---:|---:|---:|---:|" * len(sizes)]
    for name in dict.fromkeys(row.name for row in rows):
        line = "| %s |" % name
        for size in sizes:
            row = by_key[name, size]
            plain = "%.2f" % row.plain if row.plain else ""
            line += " **%.2f** | %s | %s | %.3f |" % (row.ours, plain, peer_cell(row), row.ns)
        lines.append(line)
    return "\n".join(lines)


def goals_section(rows):
    lines = []
    for size in sizes_of(rows):
        here = [row for row in rows if row.size == size]
        behind = [(row, rival) for row in here for rival in row.rivals() if row.ours < TIE * rival[0]]
        short = [(row, max(row.rivals())) for row in here
                 if row.rivals() and max(row.rivals())[0] < 0.5 and row.ours < 2 * TIE * max(row.rivals())[0]]
        lines.append("At %s, %d conversions: %d as fast as memcpy or nearly (0.9 and more)." %
                     (size, len(here), sum(row.ours >= 0.9 for row in here)))
        lines += ["", "Behind a contestant by more than 5 %%: %s" % ("none." if not behind else ""), ""]
        lines += ["- %s: %.2f, %s %.2f" % (row.name, row.ours, rival, figure) for row, (figure, rival) in behind]
        lines += ["", "Not twice as fast as the best contestant, which stays below half of memcpy: %s" %
                  ("none." if not short else ""), ""]
        lines += ["- %s: %.2f, %s %.2f" % (row.name, row.ours, rival, figure) for row, (figure, rival) in short]
        lines.append("")
    return re.sub("\n{3,}", "\n\n", "\n".join(lines)).strip()


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
    lines = ["| process | dlopen | private memory |", "|---|---:|---:|"]
    for row in load("load"):
        lines.append("| %s | %.2f ms | %d kB |" % (row["process"], row["milliseconds"], row["privateKilobytes"]))
    return "\n".join(lines) + "\n\n`liborvella.so`, stripped: %.2f MB." % megabytes


# ---- What binds


def bounds_section():
    if not os.path.exists(DATA + "bounds.json"):
        return "(not measured)"
    cycles_of = lambda ns: ns * 64 * load("machine")[0]["gigahertz"]  # noqa: E731
    lines = ["| conversion | call | in L1 | memcpy | loop: instructions | cycles | p0 | p5 | share |",
             "|---|---:|---:|---:|---:|---:|---:|---:|---:|"]
    for row in load("bounds"):
        figures = [cycles_of(row[key]) for key in ("nsPerPixel", "inCacheNsPerPixel", "memcpyNsPerPixel")]
        head = "| %s | %s |" % (row["conversion"], " | ".join("%.1f" % figure for figure in figures))
        for loop in row["loops"]:
            lines.append("%s %d | %.1f | %.1f | %.1f | %.0f %% |" % (head, loop["instructions"], loop["cycles"],
                         loop["ports"].get("p0", 0), loop["ports"].get("p5", 0), 100 * loop["share"]))
            head = "| | | | |"
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


def rewrite(document, sections):
    for name, text in sections.items():
        begin, end = "<!-- generated: %s -->" % name, "<!-- end -->"
        pattern = re.escape(begin) + ".*?" + re.escape(end)
        document, count = re.subn(pattern, lambda _: "%s\n%s\n%s" % (begin, text, end), document, flags=re.S)
        if count != 1:
            sys.exit("%s has no section '%s'" % (DOCUMENT, name))
    return document


def main(build):
    rows = [Row(fields) for fields in load("table")]
    with open(DOCUMENT) as file:
        document = file.read()
    document = rewrite(document, {
        "machine": machine_section(),
        "goals": goals_section(rows),
        "table": table_section(rows),
        "scaling": scaling_section(),
        "load": load_section(build),
        "bounds": bounds_section(),
    })
    with open(DOCUMENT, "w") as file:
        file.write(document)
    plots()


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
