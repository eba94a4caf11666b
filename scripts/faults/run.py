#!/usr/bin/env python3
"""Plants small faults in a copy of the project, one after the other, and says which of them the tests catch.

faults.txt is the list. A fault whose text does not stand exactly once in its file is stale: it is named and left out. One
that changes no byte of any result says so, with the reason, and does not count. The verdicts stay in out/faults, so that a
run that was interrupted goes on: what is tried anew is what was not caught, and what stands in a file that has changed.
"""
import argparse
import datetime
import hashlib
import io
import json
import pathlib
import re
import subprocess
import sys
import tarfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]

# The programs that link the library; what takes long comes last.
TESTS = ["orvella_calls_test", "orvella_catalogue_test", "orvella_correction_test", "orvella_correction_failures_test",
         "orvella_machine_test", "orvella_threads_test", "orvella_conversions_test"]


class Fault:
    def __init__(self, file, old, new, harmless):
        self.file, self.old, self.new, self.harmless = file, "\n".join(old), "\n".join(new), harmless

    def __str__(self):
        return f"{self.file.removeprefix('src/')}: {self.old.splitlines()[0].strip()[:60]} -> " \
               f"{self.new.splitlines()[0].strip()[:60]}"

    def key(self, tree):
        """Of the fault in the code of its file, whatever the comments say."""
        code = re.sub(r"\s*//[^\n]*", "", (tree / self.file).read_text())
        return hashlib.sha256("\0".join([self.old, self.new, code]).encode()).hexdigest()[:16]

    def is_stale(self, tree):
        return not (tree / self.file).exists() or (tree / self.file).read_text().count(self.old) != 1


def faults_of(path):
    found, file = [], None
    for line in path.read_text().splitlines():
        if line.startswith("- "):
            if not found or found[-1][2] or found[-1][0] != file:
                found.append((file, [], [], []))
            found[-1][1].append(line[2:])
        elif line.startswith("+ "):
            found[-1][2].append(line[2:])
        elif line.startswith("= "):
            found[-1][3].append(line[2:])
        elif line.strip() and not line.startswith("#"):
            file = line
    return [Fault(file, old, new, " ".join(harmless)) for file, old, new, harmless in found]


def refresh(tree, commit):
    """Puts the project's files there. Those that are the same keep their time, so that a second run builds little."""
    archive = subprocess.check_output(["git", "archive", commit], cwd=ROOT)
    members = {}
    with tarfile.open(fileobj=io.BytesIO(archive)) as files:
        for member in files:
            if member.isfile():
                members[tree / member.name] = (files.extractfile(member).read(), member.mode)
    # Kernels that are optimised less are built in half the time.
    kernels = tree / "cmake/kernels.cmake"
    members[kernels] = (members[kernels][0].replace(b"set(optimisation -O3)", b"set(optimisation -O1)"), 0o644)
    for path in [path for path in tree.glob("**/*") if path.is_file() and tree / "build" not in path.parents]:
        if path not in members:
            path.unlink()
    for path, (content, mode) in members.items():
        if not path.exists() or path.read_bytes() != content:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
            path.chmod(mode)


class Tree:
    def __init__(self, path, level, jobs):
        self.path, self.jobs = path, jobs
        self.run("cmake", "-S", ".", "-B", "build", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1",
                 "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache", f"-DORVELLA_SIMD_LEVEL={level}", "-DORVELLA_BENCH=OFF",
                 "-DORVELLA_TOOLS=OFF", "-DORVELLA_GSTREAMER=OFF", check=True)

    def run(self, *command, check=False):
        return subprocess.run(command, cwd=self.path, check=check, text=True, errors="replace",
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def build(self):
        return self.run("cmake", "--build", "build", "-j", str(self.jobs), "--target", *TESTS)

    def first_failure(self):
        """The name of a test that fails; None if all pass."""
        for name in TESTS:
            program = next((self.path / "build").glob(f"tests/**/{name}"))
            done = self.run("timeout", "300", program, "--gtest_fail_fast", "--gtest_brief=1")
            if done.returncode != 0:
                failed = re.search(r"\[  FAILED  \] ([\w/.]+)", done.stdout)
                return failed[1] if failed else f"{name} (ends with {done.returncode})"
        return None

    def plant(self, fault):
        file = self.path / fault.file
        sound = file.read_text()
        file.write_text(sound.replace(fault.old, fault.new))
        try:
            if self.build().returncode != 0:
                return "DOES NOT BUILD"
            failure = self.first_failure()
            return f"caught by {failure}" if failure else "UNCAUGHT"
        finally:
            file.write_text(sound)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("words", nargs="*", help="only the faults whose file or text has one of these in it")
    parser.add_argument("--list", type=pathlib.Path, default=ROOT / "scripts/faults/faults.txt")
    parser.add_argument("--revision", help="of the project; the working tree unless given")
    parser.add_argument("--work", type=pathlib.Path, default=ROOT / "out/faults", help="where the copy is built")
    parser.add_argument("--level", default="sse4", help="the highest instruction-set level that is built")
    parser.add_argument("--again", action="store_true", help="try all anew")
    parser.add_argument("--minutes", type=float, default=1e9, help="begin no fault after this time; 0: only report")
    parser.add_argument("--report", type=pathlib.Path, help="write the figures to this JSON file")
    parser.add_argument("-j", "--jobs", type=int, default=2)
    options = parser.parse_args()

    commit = options.revision or subprocess.check_output(["git", "stash", "create"], cwd=ROOT, text=True).strip() or "HEAD"
    path = options.work / "tree"
    refresh(path, commit)
    chosen = [fault for fault in faults_of(options.list)
              if not options.words or any(word in f"{fault.file} {fault.old}" for word in options.words)]
    stale = [fault for fault in chosen if fault.is_stale(path)]
    for fault in stale:
        print(f"STALE: no such text, or more than one: {fault}")
    chosen = [fault for fault in chosen if fault not in stale]

    store = options.work / "verdicts.json"
    verdicts = json.loads(store.read_text()) if store.exists() and not options.again else {}
    left = [fault for fault in chosen if not verdicts.get(fault.key(path), "").startswith("caught")]
    start = time.monotonic()
    if options.minutes <= 0:
        left = []
    if left:
        tree = Tree(path, options.level, options.jobs)
        if (built := tree.build()).returncode != 0:
            sys.exit(f"The copy does not build:\n{built.stdout[-3000:]}")
        if failure := tree.first_failure():
            sys.exit(f"Without any fault, {failure} fails")
    for fault in left:
        began = time.monotonic()
        if began - start > 60 * options.minutes:
            break
        verdicts[fault.key(path)] = verdict = tree.plant(fault)
        store.write_text(json.dumps(verdicts))
        print(f"{time.monotonic() - began:4.0f} s  {fault}\n        {verdict}", flush=True)

    of = {fault: verdicts.get(fault.key(path), "not tried") for fault in chosen}
    caught = [fault for fault in chosen if of[fault].startswith("caught")]
    harmless = [fault for fault in chosen if fault.harmless and fault not in caught]
    untried = [fault for fault in chosen if of[fault] == "not tried" and fault not in harmless]
    uncaught = [fault for fault in chosen if fault not in [*caught, *harmless, *untried]]
    for fault in [*uncaught, *untried]:
        print(f"{of[fault]}: {fault}")
    print(f"{len(caught)} of {len(caught) + len(uncaught)} faults that change a result are caught; "
          f"{len(harmless)} change none, {len(untried)} were not tried, {len(stale)} are stale")
    if options.report:
        revision = subprocess.check_output(["git", "rev-parse", "--short", options.revision or "HEAD"], cwd=ROOT, text=True)
        options.report.write_text(json.dumps({
            "title": "Deliberate faults", "command": "scripts/faults/run.py", "date": f"{datetime.date.today()}",
            "commit": revision.strip(), "figures": {
                "faults": len(chosen), "caught": len(caught), "not caught": len(uncaught), "change no result": len(harmless),
                "not tried": len(untried), "stale": len(stale), "levels": f"plain to {options.level}"},
            "uncaught": [f"{of[fault]}: {fault}" for fault in uncaught],
            "harmless": [f"{fault}: {fault.harmless}" for fault in harmless]}, indent=1) + "\n")
    return 0 if not uncaught and not untried and not stale else 1


if __name__ == "__main__":
    sys.exit(main())
