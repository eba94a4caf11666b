#!/usr/bin/env python3
"""Every code block of the documents compiles and runs, and prints what the documents say that it prints.

    blocks_test.py <repository> <build> <folder to work in> <C++ compiler> <C compiler>

C and C++ blocks without a main() become functions of one program; all others are run one after the other, page by page,
in a folder of the page's own. Comments in front of a block, which no reader sees, say what else there is to it:

    <!-- with: CODE -->         goes before the block's own code (CMake projects have a main.cpp)
    <!-- file: NAME -->         save the block (its shell blocks use it)
    <!-- not run: REASON -->    shell blocks are parsed only
    <!-- prints -->             this block is what the one before it has printed
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys

repository, build, work = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
cxx, cc = sys.argv[4:6]
shutil.rmtree(work, ignore_errors=True)
prefix = work / "prefix"
subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
FENCE = re.compile(r"^((?:<!-- .*? -->\n+)*)```(\w*)\n(.*?)^```$", re.M | re.S)
LIBRARIES = next(prefix.glob("lib*/**/liborvella.so")).parent
ENVIRONMENT = {**os.environ, "PATH": f"{prefix}/bin:/usr/bin:{os.environ['PATH']}", "LD_LIBRARY_PATH": str(LIBRARIES),
               "PKG_CONFIG_PATH": f"{LIBRARIES}/pkgconfig", "CMAKE_PREFIX_PATH": str(prefix), "CXX": cxx, "CC": cc,
               "PYTHONPATH": str(repository / "python"), "ORVELLA_LIBRARY": str(LIBRARIES / "liborvella.so")}
MARK = "\f"  # between the outputs of fragments
LANGUAGES = {"c": (cc, ["-std=c99"]), "cpp": (cxx, ["-std=c++20"])}


class Block:
    def __init__(self, page, text, match):
        self.page, self.language, self.code = page, match[2], match[3]
        self.where = f"{page.relative_to(repository)}:{text[:match.start(2)].count(chr(10)) + 1}"
        self.marks = dict(re.findall(r"<!-- (with|file|not run|prints):? ?(.*?) -->", match[1], re.S))
        self.printed = None
        self.is_fragment = self.language in LANGUAGES and "main(" not in self.code and "file" not in self.marks


def fail(block, text):
    sys.exit(f"{block.where}: {text}\n--- {block.language}\n{block.code}(How blocks are set up: {__file__})")


def run(block, command, folder):
    result = subprocess.run(command, cwd=folder, env=ENVIRONMENT, capture_output=True, text=True)
    if result.returncode != 0:
        fail(block, f"exit code {result.returncode}\n{(result.stdout + result.stderr)[:3000]}")
    return result.stdout


def compiled(block, language, source, folder):
    compiler, standard = LANGUAGES[language]
    (folder / f"program.{language}").write_text(source)
    warnings = ["-Wall", "-Wextra", "-Wno-unused", "-Wno-unknown-pragmas"]
    run(block, [compiler, *standard, *warnings, f"-I{prefix}/include", f"program.{language}", "-o", "program",
                f"-L{LIBRARIES}", "-lorvella"], folder)
    return run(block, ["./program"], folder)


def run_fragments(language, blocks):
    if not blocks:
        return
    headers = ["assert.h", "stdint.h", "stdio.h", "stdlib.h", "string.h", "orvella/orv.h"]
    headers += ["vector", "cstddef", "orvella/orvella.hpp"] if language == "cpp" else []
    includes, functions, calls = [f"#include <{header}>" for header in headers], [], []
    for number, block in enumerate(blocks):
        code = block.marks.get("with", "") + "\n" + block.code
        includes += re.findall(r"^#include.*$", code, re.M)
        code = re.sub(r"^#include.*$", "", code, flags=re.M)
        functions.append(f"static void block{number}(void) {{\n#line 1 \"{block.where}\"\n{code}}}")
        calls.append(f'block{number}(); printf("{MARK}"); fflush(stdout);')
    source = "\n".join([*includes, *functions, "int main(void) {", *calls, "return 0; }", ""])
    for block, printed in zip(blocks, compiled(blocks[0], language, source, work).split(MARK)):
        block.printed = printed


def run_whole(block, folder):
    code = block.marks.get("with", "") + "\n" + block.code
    if "file" in block.marks:
        (folder / block.marks["file"]).write_text(block.code)
    elif block.language == "sh":
        is_run = "not run" not in block.marks
        for script in re.findall(r"^(?:\./|scripts/|bench/)\S+", "" if is_run else block.code, re.M):
            if not (repository / script).exists():
                fail(block, f"{script} does not exist")
        options = [] if is_run else ["-n"]
        block.printed = run(block, ["bash", "-euo", "pipefail", *options, "-c", code], folder)
    elif block.language == "python":
        block.printed = run(block, ["/usr/bin/python3", "-c", code], folder)
    elif block.language == "cmake":
        (folder / "CMakeLists.txt").write_text(code)
        (folder / "main.cpp").write_text("#include <orvella/orvella.hpp>\nint main() {}\n")
        run(block, ["bash", "-c", "cmake -S . -B cmake-build && cmake --build cmake-build"], folder)
    elif block.language in LANGUAGES:
        block.printed = compiled(block, block.language, block.code, folder)
    elif "prints" not in block.marks and block.language not in ("", "text"):
        fail(block, f"nobody knows how to test '{block.language}'")


pages = [repository / "README.md", repository / "CONTRIBUTING.md", *sorted((repository / "docs").glob("*.md")),
         *repository.glob("integrations/*/README.md"),
         repository / "python/README.md"]
blocks = [Block(page, text, match) for page in pages for text in [page.read_text()] for match in FENCE.finditer(text)]
for language in LANGUAGES:
    run_fragments(language, [block for block in blocks if block.is_fragment and block.language == language])
for before, block in zip([None, *blocks], blocks):
    folder = work / "-".join(block.page.relative_to(repository).with_suffix("").parts)
    folder.mkdir(exist_ok=True)
    if not block.is_fragment:
        run_whole(block, folder)
    if "prints" in block.marks and block.code.strip() != (before.printed or "").strip():
        fail(block, f"the block before it printed\n{before.printed}")
print(f"{len(blocks)} blocks")
