#!/usr/bin/env python3
"""Frames of a camera through Aravis (here its simulated one) to numpy arrays.

    aravis_live.py [FRAMES]
"""

import sys
import time

import gi

gi.require_version("Aravis", "0.8")
from gi.repository import Aravis  # noqa: E402

import orvella  # noqa: E402


def main(count: int = 20) -> None:
    Aravis.enable_interface("Fake")
    camera = Aravis.Camera.new("Fake_1")  # None: the first real camera
    camera.set_pixel_format_from_string("BayerRG8")
    stream = camera.create_stream(None, None)
    for _ in range(5):
        stream.push_buffer(Aravis.Buffer.new_allocate(camera.get_payload()))
    camera.start_acquisition()
    start, picture = time.perf_counter(), None
    for _ in range(count):
        buffer = stream.timeout_pop_buffer(2_000_000)
        if buffer is None or buffer.get_status() != Aravis.BufferStatus.SUCCESS:
            sys.exit("no frame came")
        size = buffer.get_image_width(), buffer.get_image_height()
        # Aravis names pixel formats by their PFNC codes too.
        picture = orvella.convert(buffer.get_data(), buffer.get_image_pixel_format(), size, debayer="3x3", out=picture)
        stream.push_buffer(buffer)
    rate = count / (time.perf_counter() - start)
    camera.stop_acquisition()
    print(f"{count} frames of {size[0]}x{size[1]}, mean colour {picture.mean(axis=(0, 1)).round(1)}, {rate:.1f} frames/s")


if __name__ == "__main__":
    main(*map(int, sys.argv[1:]))
