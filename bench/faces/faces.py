#!/usr/bin/env python3
"""The table of docs/faces.md: C, C++ (by the program given), Python, and numpy with OpenCV, one thread, best of many.

    PYTHONPATH=python ORVELLA_LIBRARY=.../liborvella.so bench/faces/faces.py build/bench/bench/faces/orvella_bench_faces
"""

import ctypes
import subprocess
import sys
import time

import cv2
import numpy as np

import orvella
from orvella import _convert, _library

ROUNDS = 100


def unpacked(data, size):
    """12p by numpy, samples in the low bits."""
    groups = data.reshape(-1, 3).astype(np.uint16)
    samples = np.empty((groups.shape[0], 2), np.uint16)
    samples[:, 0] = groups[:, 0] | (groups[:, 1] & 15) << 8
    samples[:, 1] = groups[:, 1] >> 4 | groups[:, 2] << 4
    return samples.reshape(size[1], size[0])


def bayer12p(data, size):
    return cv2.cvtColor((unpacked(data, size) >> 4).astype(np.uint8), cv2.COLOR_BayerBG2RGB)


CASES = [
    ("BayerRG12p to RGB24", "BayerRG12p", (2448, 2048), "RGB24", "2x2", 1, bayer12p),
    ("Mono12p to Mono16", "Mono12p", (2448, 2048), "MONO16", "2x2", 1, lambda data, size: unpacked(data, size) << 4),
    ("BayerRG8 3x3 to RGB24", "BayerRG8", (2448, 2048), "RGB24", "3x3", 1,
     lambda data, size: cv2.cvtColor(data.reshape(size[::-1]), cv2.COLOR_BayerBG2RGB)),
    ("BayerRG8 to RGB24, 64x64", "BayerRG8", (64, 64), "RGB24", "2x2", 100,
     lambda data, size: cv2.cvtColor(data.reshape(size[::-1]), cv2.COLOR_BayerBG2RGB)),
]


def measure(format, size, to, debayer, calls, peer):
    data, _ = orvella.chart(format, size)
    out = orvella.convert(data, format, size, to, debayer=debayer)
    plan = _convert._plan(format, size, to, debayer, None, None, "low", "little")
    records = _library.Pair.from_buffer_copy(plan.records)
    records.source.Data, records.target.Data = data.ctypes.data, out.ctypes.data
    arguments = ctypes.addressof(records.source), ctypes.addressof(records.target), plan.option_address
    faces = {
        "C by ctypes": lambda: _library.transform(*arguments, 1),
        "Python": lambda: orvella.convert(data, format, size, to, debayer=debayer, out=out),
        "Python, new array": lambda: orvella.convert(data, format, size, to, debayer=debayer),
        "numpy, OpenCV": lambda: peer(data, size),
    }
    best = dict.fromkeys(faces, 1e30)
    for turn in range(ROUNDS if calls == 1 else ROUNDS * 5):
        # Forwards and backwards in turn, so that none is always behind the same other one.
        for name, call in list(faces.items())[:: 1 if turn % 2 == 0 else -1]:
            call()  # after which the caches hold what it leaves there, not what another face has left
            start = time.perf_counter()
            for _ in range(calls):
                call()
            best[name] = min(best[name], (time.perf_counter() - start) / calls * 1e6)
    return best


def main(program):
    cv2.setNumThreads(1)
    lines = [line.split("\t") for line in subprocess.run([program, str(ROUNDS)], check=True, capture_output=True, text=True).stdout.splitlines()]
    columns = ["C", "C++", "C++, new picture", "C++, bands", "C++, frames", "C by ctypes", "Python", "Python, new array", "numpy, OpenCV"]
    print("| |", " | ".join(columns), "|")
    print("|---|" + "---:|" * len(columns))
    for name, *case in CASES:
        times = {face: float(best) for which, face, best in lines if which == name}
        times.update(measure(*case))
        unit, scale = ("ms", 1e3) if case[4] == 1 else ("us", 1)
        print(f"| {name}, {unit} |", " | ".join(f"{times[c] / scale:.2f}" if c in times else "" for c in columns), "|")


if __name__ == "__main__":
    main(sys.argv[1])
