#!/usr/bin/env python3
"""A folder of raw dumps to PNG, on all cores: conversions release the GIL.

    dumps_to_png.py FOLDER [OUTPUT]     names say what a dump holds: anything_BayerRG12p_2448x2048.raw
"""

import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from PIL import Image

import orvella


def save(path: Path, output: Path) -> Path:
    data, format, size = orvella.read(path)
    is_grey = format.name.startswith("Mono")
    picture = orvella.convert(data, format, size, to="Mono8" if is_grey else "RGB24", debayer="3x3")
    target = output / path.with_suffix(".png").name
    Image.fromarray(picture).save(target, compress_level=1)
    return target


def main(folder: str, output: str = ".") -> None:
    start = time.perf_counter()
    Path(output).mkdir(parents=True, exist_ok=True)
    with ThreadPoolExecutor() as pool:
        done = list(pool.map(lambda path: save(path, Path(output)), sorted(Path(folder).glob("*.raw"))))
    print(f"{len(done)} pictures, {len(done) / (time.perf_counter() - start):.1f} frames/s")


if __name__ == "__main__":
    main(*sys.argv[1:])
