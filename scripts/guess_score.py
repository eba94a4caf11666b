#!/usr/bin/env python3
"""How often 'orvella guess' is right: dumps in all formats are made of photographs, as a camera would send them.

    scripts/guess_score.py build/release/tools/orvella 6 photo.jpg ...          6 dumps of each photograph
    scripts/guess_score.py build/release/tools/orvella several photo.jpg ...    3 files of several frames of each

Prints the misses, then the score. Needs python3-numpy and python3-pil.
"""
import pathlib
import random
import re
import subprocess
import sys
import tempfile

import numpy as np
from PIL import Image

Image.MAX_IMAGE_PIXELS = None
PHASES = {"RG": (0, 1, 1, 2), "GR": (1, 0, 2, 1), "GB": (1, 2, 0, 1), "BG": (2, 1, 1, 0)}
EXCHANGED = {"RG": "BG", "BG": "RG", "GR": "GB", "GB": "GR"}
DEPTHS = ["8", "10", "12", "16", "10p", "12p", "12Packed"]
FORMATS = (["Mono" + d for d in DEPTHS] + ["Bayer" + p + d for d in DEPTHS for p in PHASES]
           + ["Rgb8", "Bgr8", "Rgba8", "Bgra8", "Yuv411", "Yuv422", "Yuv444"])
SIZES = [(640, 480), (1280, 720), (1024, 768), (800, 600), (1280, 1024), (1440, 1080), (1456, 1088), (512, 512)]


def sensor(photo, rng, bits):
    """Linear samples with a colour cast, a black level and noise."""
    linear = (photo / 255.0) ** 2.2 * rng.uniform(0.6, 1.0) * np.array([0.55, 1.0, 0.7])
    full = 2.0 ** bits - 1
    electrons = linear * 8000
    noisy = (electrons + np.random.normal(0, 1, linear.shape) * np.sqrt(electrons + 36)) / 8000
    return np.clip(noisy * 0.96 * full + 0.03 * full, 0, full).round().astype(np.uint16)


def pack(samples, depth):
    s = samples.reshape(-1).astype(np.uint32)
    if depth == "8":
        return s.astype(np.uint8).tobytes()
    if depth in ("10", "12", "16"):
        return s.astype("<u2").tobytes()
    if depth == "12Packed":
        a, b = s[0::2], s[1::2]
        return np.stack([a >> 4, (a & 15) | (b & 15) << 4, b >> 4], 1).astype(np.uint8).tobytes()
    bits = int(depth[:-1])
    stream = (s[:, None] >> np.arange(bits) & 1).astype(np.uint8).reshape(-1)
    return np.packbits(stream, bitorder="little").tobytes()


def yuv(photo, name):
    r, g, b = (photo[..., c].astype(float) for c in range(3))
    y = 0.299 * r + 0.587 * g + 0.114 * b
    u, v = 128 + (b - y) / 1.772, 128 + (r - y) / 1.402
    group = {"Yuv444": 1, "Yuv422": 2, "Yuv411": 4}[name]
    mean = lambda plane: plane.reshape(-1, group).mean(1)
    y, u, v = y.reshape(-1, group), mean(u), mean(v)
    columns = {1: [u, y[:, 0], v], 2: [u, y[:, 0], v, y[:, -1]],
               4: [u, y[:, 0], y[:, 1 % group], v, y[:, 2 % group], y[:, -1]]}[group]
    return np.clip(np.stack(columns, 1).round(), 0, 255).astype(np.uint8).tobytes()


def dump(photo, name, rng):
    if name.startswith("Yuv"):
        return yuv(photo, name)
    if name in ("Rgb8", "Bgr8", "Rgba8", "Bgra8"):
        pixels = photo if name.startswith("Rgb") else photo[..., ::-1]
        if name[3] == "a":
            pixels = np.dstack([pixels, np.full(pixels.shape[:2], 255, np.uint8)])
        return np.ascontiguousarray(pixels).tobytes()
    depth = re.search(r"(\d+(p|Packed)?)$", name).group(1)
    samples = sensor(photo, rng, int(re.match(r"\d+", depth).group()))
    if name.startswith("Mono"):
        return pack((samples @ np.array([77, 150, 29]) >> 8).astype(np.uint16), depth)
    mosaic = np.empty(samples.shape[:2], np.uint16)
    for i, channel in enumerate(PHASES[name[5:7]]):
        mosaic[i // 2::2, i % 2::2] = samples[i // 2::2, i % 2::2, channel]
    return pack(mosaic, depth)


def size_for(name, width, height, rng):
    if rng.random() < 0.5:
        w, h = rng.choice([s for s in SIZES if s[0] <= width and s[1] <= height] or [(width // 4 * 4, height // 4 * 4)])
    else:
        w, h = rng.randint(min(200, width), min(1700, width)), rng.randint(min(150, height), min(1200, height))
    if name.startswith("Bayer"):
        return w // 2 * 2, h // 2 * 2
    if name.startswith("Yuv4"):
        return w // 4 * 4, h
    return (w // 2 * 2 if "Packed" in name or name.endswith("p") else w), h


def guesses(program, path):
    out = subprocess.run([program, "guess", "-n", "3", path], capture_output=True, text=True).stdout
    found = []
    for line in out.splitlines():
        match = re.match(r" *\d+ +[\d.]+ +-f (\w+) -s (\d+)x(\d+)(.*)", line)
        if match:
            found.append((match[1], int(match[2]), int(match[3])) if "--big" not in match[4] and "--msb" not in match[4]
                         else ("",))
    return found


def same(guess, name, size, exchange):
    if guess[1:] != size:
        return False
    if name.startswith("Bayer"):
        return guess[0] in (name, "Bayer" + EXCHANGED[name[5:7]] + name[7:])
    other = {"Rgb8": "Bgr8", "Bgr8": "Rgb8", "Rgba8": "Bgra8", "Bgra8": "Rgba8"}.get(name)
    return guess[0] == name or (exchange and guess[0] == other)


def several(program, photos):
    rng = random.Random(5)
    np.random.seed(5)
    names = list(FORMATS)
    rng.shuffle(names)
    total = first = three = 0
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "dump.bin"
        for i in range(3 * len(photos)):
            photo = np.asarray(Image.open(photos[i // 3]).convert("RGB"))
            height, width = photo.shape[:2]
            name = names[i % len(names)]
            w, h = size_for(name, width - 60, height - 60, rng)
            count = rng.choice([2, 3, 5, 8, 20]) if w * h < 400000 else rng.choice([2, 3, 4])
            x, y = rng.randint(0, width - w - 50), rng.randint(0, height - h - 50)
            drift = 0 if rng.random() < 0.3 else 1
            places = [(x + drift * min(50, 2 * k), y + drift * min(50, k)) for k in range(count)]
            path.write_bytes(b"".join(dump(photo[t:t + h, l:l + w], name, rng) for l, t in places))
            out = subprocess.run([program, "guess", "-n", "3", path], capture_output=True, text=True).stdout
            found = re.findall(r"^ *\d+ +[\d.]+ +-f (\w+) -s (\d+)x(\d+)(?:.* (\d+) frames)?", out, re.M)
            ranks = [same((f, int(a), int(b)), name, (w, h), True) and int(n or 1) == count for f, a, b, n in found]
            total += 1
            first += bool(ranks) and ranks[0]
            three += any(ranks)
            if not ranks or not ranks[0]:
                print(f"{pathlib.Path(photos[i // 3]).name} {name} {w}x{h}, {count} frames: {found}")
    print(f"{total} files: first in {100 * first / total:.0f} %, among the first three in {100 * three / total:.0f} %")


def main():
    program, each, photos = sys.argv[1], sys.argv[2], sys.argv[3:]
    if each == "several":
        return several(program, photos)
    each = int(each)
    rng = random.Random(1)
    np.random.seed(1)
    names = FORMATS * (each * len(photos) // len(FORMATS) + 1)
    rng.shuffle(names)
    total = first = firstExchanged = three = 0
    with tempfile.TemporaryDirectory() as folder:
        path = str(pathlib.Path(folder) / "dump.bin")
        for file in photos:
            photo = np.asarray(Image.open(file).convert("RGB"))
            for _ in range(each):
                name = names.pop()
                w, h = size_for(name, photo.shape[1], photo.shape[0], rng)
                x, y = rng.randint(0, photo.shape[1] - w), rng.randint(0, photo.shape[0] - h)
                pathlib.Path(path).write_bytes(dump(photo[y:y + h, x:x + w], name, rng))
                found = guesses(program, path)
                ranks = [same(g, name, (w, h), True) for g in found]
                total += 1
                first += bool(found) and same(found[0], name, (w, h), False)
                firstExchanged += bool(ranks) and ranks[0]
                three += any(ranks)
                if not ranks or not ranks[0]:
                    print(f"{pathlib.Path(file).name} {name} {w}x{h}: {found}")
    print(f"{total} dumps: first in {100 * firstExchanged / total:.0f} % ({100 * first / total:.0f} % if RGB and BGR are "
          f"not taken for each other), among the first three in {100 * three / total:.0f} %")


main()
