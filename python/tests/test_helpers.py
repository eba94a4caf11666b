"""Planes, fields, charts and files; and the docstrings' examples."""

from __future__ import annotations

import doctest
import importlib
import os
import pkgutil
import subprocess

import numpy as np
import pytest

import orvella

FORMATS = orvella.formats()


@pytest.mark.parametrize("module", ["orvella", *(f"orvella.{m.name}" for m in pkgutil.iter_modules(orvella.__path__))])
def test_examples_in_docstrings(module):
    assert doctest.testmod(importlib.import_module(module)).failed == 0


@pytest.mark.parametrize("info", FORMATS, ids=lambda info: info.name)
def test_charts_are_those_of_the_command_line_tool(info, tmp_path):
    tool = os.environ.get("ORVELLA_TOOL")
    if not tool:
        pytest.skip("the converter is not built")
    for width, height in ((64, 46), (4, 2), (7, 9)):
        if (width % info.group and info.layout in (8, 9)) or (info.bits == 12 and info.group == 2 and width * height % 2):
            with pytest.raises(orvella.Error, match="must be"):
                orvella.chart(info.format, (width, height))
            continue
        path = tmp_path / "chart.raw"
        subprocess.run([tool, "chart", "-f", info.name, "-s", f"{width}x{height}", path], check=True)
        data, truth = orvella.chart(info.format, (width, height))
        assert data.tobytes() == path.read_bytes()
        assert truth.shape == (height, width, 3)


def test_planes_are_the_channels():
    rng = np.random.default_rng(1)
    for name in ("Rgb8", "Yuv422"):
        data = rng.integers(0, 256, 8 * 4 * 3, np.uint8)
        rgb = orvella.convert(data, name, (8, 4))
        assert np.array_equal(np.dstack(orvella.planes(data, name, (8, 4))), rgb)
    *_, luma = orvella.planes(data, "Yuv444", (8, 4), luma=True)
    assert luma.tobytes() == data[1::3].tobytes()
    with pytest.raises(orvella.Error, match="Mono8 has no planes"):
        orvella.planes(data, "Mono8", (8, 4))


def test_fields_are_woven():
    lines = np.arange(18, dtype=np.uint8).reshape(6, 3)
    fields = np.concatenate([lines[1::2], lines[0::2]])
    assert np.array_equal(orvella.deinterlace(fields, "Mono8", (3, 6)), lines)
    with pytest.raises(orvella.Error, match="an even number of lines, not 5"):
        orvella.deinterlace(fields, "Mono8", (3, 5))


def test_files_come_back(tmp_path):
    data, _ = orvella.chart("BayerRG12p", (32, 16))
    for name, options in (("a_BayerRG12p_32x16.raw", {}), ("b.raw", {"format": "BayerRG12p", "size": (32, 16)}),
                          ("c_BayerRG12p_32x16.npy", {}), ("d_bayerRG12P_1x1.raw", {"size": (32, 16)})):
        orvella.write(tmp_path / name, data)
        frame = orvella.read(tmp_path / name, **options)
        assert frame.data.tobytes() == data.tobytes() and frame.format.name == "BayerRG12p" and frame.size == (32, 16)
    orvella.write(tmp_path / "e_YCbCr422_8_CbYCrY_4x2.raw", bytes(4) + bytes(range(16)))
    assert orvella.read(tmp_path / "e_YCbCr422_8_CbYCrY_4x2.raw", skip=4).data.tobytes() == bytes(range(16))
    for name, options, text in (("b.raw", {}, "a name like"), ("a_BayerRG12p_32x16.raw", {"skip": 1}, "behind the first 1"),
                                ("a_BayerRG12p_32x16.raw", {"size": (33, 16)}, "holds 768 bytes"),
                                ("a_BayerRG12p_32x16.raw", {"skip": -1}, "holds")):
        with pytest.raises(orvella.Error, match=text):
            orvella.read(tmp_path / name, **options)
