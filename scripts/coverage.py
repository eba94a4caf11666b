#!/usr/bin/env python3
"""Which lines and branches of src/ the tests run, by gcovr, at the levels plain and sse4; written to docs/proof/coverage.json.

Fails where less than 98 % of the lines run, or where a line does not run and uncovered.txt does not say why.
"""
import argparse
import datetime
import json
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = ROOT / "build/coverage"
TESTS = ["calls", "catalogue", "correction", "correction_failures", "machine", "threads", "conversions"]


def run(*command, folder=ROOT):
    subprocess.run([str(part) for part in command], cwd=folder, check=True, stdout=subprocess.DEVNULL)


def measure(jobs):
    run("cmake", "--preset", "coverage", "-DORVELLA_SIMD_LEVEL=sse4", "-DORVELLA_TOOLS=OFF", "-DORVELLA_GSTREAMER=OFF")
    run("cmake", "--build", BUILD, "-j", jobs, "--target", *[f"orvella_{test}_test" for test in TESTS])
    for old in BUILD.glob("**/*.gcda"):
        old.unlink()
    for test in TESTS:
        run(next(BUILD.glob(f"tests/**/orvella_{test}_test")), "--gtest_brief=1")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("-j", "--jobs", type=int, default=2)
    parser.add_argument("--measured", action="store_true", help="only look at what is there")
    options = parser.parse_args()
    if not options.measured:
        measure(options.jobs)
    # Branches that only an exception takes, or that the compiler made for no code, are nobody's.
    run("gcovr", "-r", ROOT, "--filter", f"{ROOT}/src/", "--exclude-throw-branches", "--exclude-unreachable-branches",
        "--gcov-ignore-parse-errors", "--json", BUILD / "coverage.json", BUILD, folder=BUILD)

    reasons = [line.split(" | ") for line in (ROOT / "scripts/uncovered.txt").read_text().splitlines() if "|" in line]
    lines = branches = ran = taken = 0
    uncovered, unexplained = [], []
    for file in json.loads((BUILD / "coverage.json").read_text())["files"]:
        texts = (ROOT / file["file"]).read_text().splitlines()
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            lines, ran = lines + 1, ran + (line["count"] > 0)
            branches, taken = branches + len(line["branches"]), taken + sum(b["count"] > 0 for b in line["branches"])
            if line["count"] > 0:
                continue
            text = texts[line["line_number"] - 1].strip()
            why = next((why for name, part, why in reasons if name == file["file"] and part in text), None)
            (uncovered if why else unexplained).append(f"{file['file']}: {text}" + (f" ({why})" if why else ""))

    for line in unexplained:
        print(f"does not run: {line}")
    print(f"{ran} of {lines} lines run ({ran / lines:.1%}), {taken} of {branches} branches ({taken / branches:.1%}); "
          f"{len(uncovered)} lines do not, for a reason")
    commit = subprocess.check_output(["git", "rev-parse", "--short", "HEAD"], cwd=ROOT, text=True).strip()
    result = {"title": "Line coverage of src/", "command": "scripts/coverage.py", "date": f"{datetime.date.today()}",
              "commit": commit, "figures": {
                  "lines": lines, "that run": f"{ran} ({ran / lines:.1%})", "branches": branches,
                  "that are taken": f"{taken} ({taken / branches:.1%})", "without a reason": len(unexplained)},
              "uncovered": uncovered}
    (ROOT / "docs/proof").mkdir(exist_ok=True)
    (ROOT / "docs/proof/coverage.json").write_text(json.dumps(result, indent=2) + "\n")
    return 1 if unexplained or ran < 0.98 * lines else 0


if __name__ == "__main__":
    sys.exit(main())
