#!/usr/bin/env python3
"""A recording to try the other examples with: test charts in several formats.

    make_recording.py FOLDER [FRAMES]
"""

import sys
from pathlib import Path

import orvella


def main(folder: str, count: int = 8) -> None:
    Path(folder).mkdir(parents=True, exist_ok=True)
    for i in range(int(count)):
        format = ("BayerRG12p", "BayerGB8", "BayerBG10", "Mono12")[i % 4]
        data, _ = orvella.chart(format, (320, 240))
        orvella.write(Path(folder, f"{i:04}_{format}_320x240.raw"), data)


if __name__ == "__main__":
    main(*sys.argv[1:])
