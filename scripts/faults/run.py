#!/usr/bin/env python3
"""Plants small faults in a copy of the project, one after the other, and says which of them the tests catch.

faults.txt is the list. Each text of it must stand exactly once in its file, or nothing is run.
"""
import argparse
import io
import pathlib
import re
import subprocess
import sys
import tarfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]


class Fault:
    def __init__(self, block):
        lines = [line for line in block.splitlines() if not line.startswith("#")]
        self.file = lines[0]
        self.old = "\n".join(line[2:] for line in lines if line.startswith("- "))
        self.new = "\n".join(line[2:] for line in lines if line.startswith("+ "))

    def __str__(self):
        return f"{self.file.removeprefix('src/')}: {self.old.splitlines()[0].strip()[:70]}"


def faults_of(path):
    blocks = (block.strip("\n") for block in re.split(r"\n\s*\n", path.read_text()))
    return [Fault(block) for block in blocks if re.search("^- ", block, re.MULTILINE)]


def refresh(tree, revision):
    """Puts the project's files there. Those that are the same keep their time, so that a second run builds little."""
    commit = revision or subprocess.check_output(["git", "stash", "create"], cwd=ROOT, text=True).strip() or "HEAD"
    archive = subprocess.check_output(["git", "archive", commit], cwd=ROOT)
    members = {}
    with tarfile.open(fileobj=io.BytesIO(archive)) as files:
        for member in files:
            if member.isfile():
                members[tree / member.name] = (files.extractfile(member).read(), member.mode)
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
        return subprocess.run(command, cwd=self.path, check=check, text=True, capture_output=True)

    def build(self, targets=()):
        return self.run("cmake", "--build", "build", "-j", str(self.jobs), *(["--target", *targets] if targets else []))

    def first_failure(self):
        """The name of a test of the library that fails; None if all pass. What takes long comes last."""
        return self.failure_among("^[A-Z]|^level") or self.failure_among("^conversions")

    def failure_among(self, tests):
        done = self.run("ctest", "--test-dir", "build", "-j", str(self.jobs), "-LE", "emulated", "-R", tests,
                        "--stop-on-failure", "--timeout", "600")
        if done.returncode == 0:
            return None
        failed = re.search(r".*Test +#\d+: *(\S+).*\*\*\*(Failed|Timeout|Exception\S*)", done.stdout)
        return f"{failed[1]} ({failed[2].lower()})" if failed else done.stdout

    def plant(self, fault, targets):
        file = self.path / fault.file
        sound = file.read_text()
        file.write_text(sound.replace(fault.old, fault.new))
        try:
            built = self.build(targets)
            if built.returncode != 0:
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
    parser.add_argument("--target", action="append", help="build this only for each fault: quicker, other tests are blind")
    parser.add_argument("-j", "--jobs", type=int, default=2)
    options = parser.parse_args()

    path = options.work / "tree"
    refresh(path, options.revision)
    faults = faults_of(options.list)
    stale = [fault for fault in faults
             if not (path / fault.file).exists() or (path / fault.file).read_text().count(fault.old) != 1]
    for fault in stale:
        print(f"STALE: no such text, or more than one: {fault}")
    if stale:
        return 2

    tree = Tree(path, options.level, options.jobs)
    built = tree.build(options.target)
    if built.returncode != 0:
        sys.exit(f"The copy does not build:\n{built.stdout[-3000:]}{built.stderr[-3000:]}")
    if failure := tree.first_failure():
        sys.exit(f"Without any fault, {failure} fails")

    chosen = [fault for fault in faults
              if not options.words or any(word in f"{fault.file} {fault.old}" for word in options.words)]
    caught = 0
    for fault in chosen:
        start = time.monotonic()
        verdict = tree.plant(fault, options.target)
        caught += verdict.startswith("caught")
        print(f"{time.monotonic() - start:4.0f} s  {fault}\n        {verdict}", flush=True)
    print(f"{caught} of {len(chosen)} faults caught")
    return 0 if caught == len(chosen) else 1


if __name__ == "__main__":
    sys.exit(main())
