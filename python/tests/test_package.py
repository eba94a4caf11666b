"""The module as it is installed: found, typed, of the library's version, and clear about what is missing."""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

import orvella

SOURCE = Path(__file__).resolve().parents[1]
LIBRARY = os.environ["ORVELLA_LIBRARY"]
is_instrumented = "LD_PRELOAD" in os.environ


def run(*command: object, **environment: str) -> subprocess.CompletedProcess:
    plain = {k: v for k, v in os.environ.items() if k not in ("PYTHONPATH", "ORVELLA_LIBRARY")}
    return subprocess.run([str(c) for c in command], env={**plain, **environment}, capture_output=True, text=True, cwd="/")


def test_version_is_the_librarys():
    assert orvella.library_version().startswith(orvella.__version__ + ".")


@pytest.mark.parametrize("source, text", [
    (None, "ORVELLA_LIBRARY names .*orvella.so"),
    ("int other;", "is not the library"),
    ("int OrvGetVersion(unsigned* v) { *v = 9u << 24; return 0; }", r"the module of version \S+ needs such a library, .* is 9.0.0"),
])
def test_a_missing_or_other_library_is_named(source, text, tmp_path):
    if source:
        (tmp_path / "other.c").write_text(source)
        assert run("gcc", "-shared", "-fPIC", tmp_path / "other.c", "-o", tmp_path / "orvella.so").returncode == 0
    failed = run(sys.executable, "-c", "import orvella", PYTHONPATH=str(SOURCE), ORVELLA_LIBRARY=str(tmp_path / "orvella.so"))
    assert failed.returncode == 1
    assert re.search("ImportError: orvella: .*" + text, failed.stderr), failed.stderr


@pytest.mark.skipif(is_instrumented, reason="pip does not run under the sanitizer")
def test_installs_without_a_network_and_finds_the_library_beside_itself(tmp_path):
    assert run(sys.executable, "-m", "venv", "--system-site-packages", tmp_path / "venv").returncode == 0
    python = tmp_path / "venv/bin/python"
    shutil.copytree(SOURCE, tmp_path / "source", ignore=shutil.ignore_patterns("build", "*.egg-info", "__pycache__"))
    done = run(python, "-m", "pip", "install", "--no-index", "--no-build-isolation", tmp_path / "source")
    assert done.returncode == 0, done.stdout + done.stderr
    script = "import orvella; print(orvella.__file__, orvella.convert(b'1', 'Mono8', (1, 1)).tolist())"
    by_variable = run(python, "-c", script, ORVELLA_LIBRARY=LIBRARY)
    assert "[[[49, 49, 49]]]" in by_variable.stdout, by_variable.stderr
    package = Path(by_variable.stdout.split()[0]).parent
    assert (package / "py.typed").exists() and package.is_relative_to(tmp_path)
    shutil.copy(LIBRARY, package / "liborvella.so.0")
    assert "[[[49, 49, 49]]]" in run(python, "-c", script).stdout


@pytest.mark.skipif(shutil.which("mypy") is None or is_instrumented, reason="mypy is not installed")
def test_types_are_checked(tmp_path):
    program = tmp_path / "program.py"
    program.write_text("import orvella\nreveal_type(orvella.crop(b'', 'Mono8', (1, 1), 0, 0, 1, 1))\n"
                       "orvella.convert(b'', 'Mono8', size=(1, 1), to=orvella.Output.Rgb24)\norvella.convert(b'', 1.5, (1, 1))\n")
    assert "no issues" in run("/usr/bin/mypy", "--strict", "--cache-dir", tmp_path, SOURCE / "orvella").stdout
    checked = run("/usr/bin/mypy", "--strict", "--cache-dir", tmp_path, program, MYPYPATH=str(SOURCE)).stdout
    assert "PixelFormat]" in checked and 'incompatible type "float"' in checked and "Found 1 error" in checked
