#!/usr/bin/env python3
"""A recording converted on a Dask cluster: where one machine's disks and cores end, each worker reads its own frames.

    dask_recording.py FOLDER OUTPUT [SCHEDULER]     SCHEDULER: tcp://host:8786; none: a cluster on this machine

Workers need the module, the library (or ORVELLA_LIBRARY) and both folders at the same paths, on shared storage.
"""

import sys
import time
from pathlib import Path

from distributed import Client, LocalCluster

import orvella


def convert(path: str, output: str) -> float:
    """Runs on a worker: a dump becomes an array in a file, only its mean comes back."""
    data, format, size = orvella.read(path)
    picture = orvella.convert(data, format, size, to="RGB24", debayer="3x3")
    orvella.write(Path(output, Path(path).stem + ".npy"), picture)
    return float(picture.mean())


def main(folder: str, output: str, scheduler: str = "") -> None:
    paths = sorted(str(path) for path in Path(folder).glob("*.raw"))
    Path(output).mkdir(parents=True, exist_ok=True)
    # Threads do: a conversion releases the GIL.
    with Client(scheduler or LocalCluster(n_workers=1, threads_per_worker=2, dashboard_address=None)) as client:
        start = time.perf_counter()
        # In batches, so that the scheduler knows thousands of tasks at a time, not millions.
        means = []
        for first in range(0, len(paths), 1000):
            means += client.gather(client.map(convert, paths[first : first + 1000], output=output))
        rate = len(paths) / (time.perf_counter() - start)
    print(f"{len(paths)} frames, mean {sum(means) / len(means):.1f}, {rate:.1f} frames/s")


if __name__ == "__main__":
    main(*sys.argv[1:])
