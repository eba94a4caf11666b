#!/usr/bin/env python3
"""Results of proofs: a JSON file each in docs/proof/, and docs/proof.md, whose table is made of them.

    proof.py differential NAME TITLE COMMAND STATE    the batches of the last commit in a state of orvella_differential
    proof.py fuzzer NAME TITLE COMMAND LOG            what libFuzzer printed
    proof.py ctest NAME TITLE COMMAND LOG             what ctest printed
    proof.py [--check]                                only writes the table, or says whether it is up to date

Other scripts (coverage.py, faults/run.py) write their files themselves; lists in these are named below the table.
"""
import datetime
import json
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
RESULTS, PAGE = ROOT / "docs/proof", ROOT / "docs/proof.md"
BEGIN, END = "<!-- generated: results -->\n", "<!-- /generated -->"


def commit():
    """The last one that changed more than documents."""
    command = ["git", "log", "-1", "--format=%h", "--", ".", ":!docs"]
    return subprocess.check_output(command, cwd=ROOT, text=True).strip()


def differential(state):
    """Every batch counts once, and with the differences of all its runs."""
    lines = [json.loads(line) for line in pathlib.Path(state).read_text().splitlines()]
    lines = [line for line in lines if line["commit"] == lines[-1]["commit"]]
    batches = list({line["batch"]: line for line in lines}.values())

    def total(key):
        return sum(batch[key] for batch in batches)

    numbers = sorted(batch["batch"] for batch in batches)
    figures = {"conversions": total("conversions"), "compared with the definition": total("definition"),
               "levels": ", ".join(sorted({batch["levels"].replace(" ", ", ") for batch in batches})),
               "batches": f"{len(numbers)}, {numbers[0]} to {numbers[-1]}", "seconds": round(total("seconds")),
               "differences": sum(line["differences"] for line in lines)}
    return figures, lines[-1]["commit"]


def fuzzer(log):
    text = pathlib.Path(log).read_text(errors="replace")
    runs, seconds = (re.findall(r"Done (\d+) runs in (\d+) second", text) or [(0, 0)])[-1]  # 0: ended by a finding
    edges, features = (re.findall(r"cov: (\d+) ft: (\d+)", text) or [(0, 0)])[-1]
    return {"inputs": int(runs), "edges reached": int(edges), "features": int(features), "seconds": int(seconds),
            "findings": len(re.findall(r"ERROR: |runtime error:", text))}, commit()


def ctest(log):
    failed, tests = re.findall(r"(\d+) tests failed out of (\d+)", pathlib.Path(log).read_text(errors="replace"))[-1]
    return {"tests": int(tests), "failures": int(failed)}, commit()


def record(name, title, command, figures, of):
    result = {"title": title, "command": command, "date": datetime.date.today().isoformat(), "commit": of,
              "figures": figures}
    RESULTS.mkdir(exist_ok=True)
    (RESULTS / f"{name}.json").write_text(json.dumps(result, indent=2) + "\n")


def shown(figures):
    """1,000,000,000 conversions; levels plain, sse4; ..."""
    return "; ".join(f"{value:,} {key}" if isinstance(value, int) else f"{key}: {value}"
                     for key, value in figures.items())


def page():
    rows, lists = ["| What | Figures | By | Date | Commit |", "|---|---|---|---|---|"], []
    for file in sorted(RESULTS.glob("*.json")):
        result = json.loads(file.read_text())
        rows.append(f"| {result['title']} | {shown(result['figures'])} | `{result['command']}` | {result['date']} "
                    f"| {result['commit']} |")
        for key, values in result.items():
            if isinstance(values, list) and values:
                lists += ["", f"{result['title']}, {key}:", "", *(f"- `{value}`" for value in values)]
    before, rest = PAGE.read_text().split(BEGIN)
    return before + BEGIN + "\n".join(rows + lists) + "\n" + END + rest.split(END, 1)[1]


def main(arguments):
    if arguments == ["--check"]:
        return 0 if PAGE.read_text() == page() else "docs/proof.md is not what scripts/docs/proof.py makes of docs/proof/"
    kinds = {"differential": differential, "fuzzer": fuzzer, "ctest": ctest}
    if len(arguments) == 5 and arguments[0] in kinds:
        kind, name, title, command, source = arguments
        record(name, title, command, *kinds[kind](source))
    elif arguments:
        return __doc__
    PAGE.write_text(page())
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
