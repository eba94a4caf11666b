"""Conversions against the C function on dense copies made pixel by pixel, in memory between inaccessible pages."""

from __future__ import annotations

import ctypes
import threading

import numpy as np
import pytest
from guarded import Guarded, pack, pixel
from hypothesis import given
from hypothesis import strategies as st

import orvella
from orvella import Debayer, Output, _library

FORMATS = orvella.formats()
MATRIX = (1.5, -0.3, -0.2, -0.25, 1.4, -0.15, 0.05, -0.5, 1.6)
CODES = {None: ["RGGB", "GBRG", "GRBG", "BGGR"], MATRIX: ["RGGB", "GRBG", "GBRG", "BGGR"]}


def by_the_c_function(dense, info, size, to, method=0, matrix=None, words=(None, 1, 0), alpha=255):
    """The dense picture, or None where the library refuses."""
    width, height = size
    shape = orvella._convert._CHANNELS.get(to, 1)
    wide = to in orvella._convert._WIDE
    picture = np.full(width * height * shape * (2 if wide else 1), alpha, np.uint8)
    source = np.append(np.frombuffer(dense, np.uint8), np.uint8(0))
    image, target = (_library.Image(Size=ctypes.sizeof(_library.Image)) for _ in "12")
    _library.set_image_info(info.format, width, height, ctypes.byref(image))
    _library.set_output_info(9 if to is Output.Rgb48 else to, width, height, ctypes.byref(target))
    image.Data, target.Data = source.ctypes.data, picture.ctypes.data
    own = image.ImageInfo.PixelInfo
    own.BitsUsed, own.Alignment, own.Endianness = words[0] or own.BitsUsed, words[1], words[2]
    if info.is_mosaic:
        own.BayerPattern = CODES[matrix].index(info.pattern)
    option = _library.TransformInfo(TransformType=1)
    option.Parameter.DebayerMode = method
    if matrix:
        option.TransformType = 2
        option.Parameter.Matrix[:] = matrix
    if _library.transform(ctypes.addressof(image), ctypes.addressof(target), ctypes.addressof(option), 1) != 0:
        return None
    result = picture.view(np.uint16 if wide else np.uint8)
    return result.reshape(-1, 3)[:, ::-1].reshape(-1) if to is Output.Rgb48 else result


def top_bits(pixels, info, words):
    """A mosaic of 8 bits."""
    used, is_low, is_big = (words[0] or info.bits_used, words[1], words[2]) if info.has_words else (info.bits, 1, 0)

    def top(p):
        value = int.from_bytes(bytes(p), "big" if is_big else "little") if info.has_words else p[0]
        return ((value << (16 - used) if is_low else value) >> 8 & 0xFF,)

    mosaic = next(f for f in FORMATS if f.bits == 8 and f.pattern == info.pattern)
    return [[top(p) for p in line] for line in pixels], mosaic


@given(st.data())
def test_regions_and_flips_equal_dense_copies(data):
    draw = data.draw
    info = draw(st.sampled_from(FORMATS))
    to, matrix = draw(st.sampled_from(Output)), draw(st.sampled_from([None, None, None, MATRIX]))
    method = draw(st.sampled_from(Debayer)) if info.is_mosaic and not matrix else Debayer.Mode2x2
    words = (draw(st.sampled_from([None, 10, 12, 16])), draw(st.integers(0, 1)), draw(st.integers(0, 1))) \
        if info.has_words else (None, 1, 0)
    step = max(info.group, 2)
    width, height = draw(st.integers(2, 5)) * step, draw(st.integers(2, 6)) * 2
    x, y = draw(st.integers(0, 3)) * info.group, draw(st.integers(0, 3))
    columns, rows = x + width + draw(st.integers(0, 3)) * info.group, y + height + draw(st.integers(0, 3))
    length = info.line_bytes(columns)
    stride = length + draw(st.integers(0, 5))
    is_upside_down, at_end = draw(st.booleans()), draw(st.booleans())
    contents = np.random.default_rng(draw(st.integers(0, 99))).integers(0, 256, stride * (rows - 1) + length, np.uint8)
    memory = Guarded(contents.tobytes(), at_end)

    # The same by hand.
    lines = [contents[i * stride : i * stride + length].tobytes() for i in range(rows)]
    pixels = [[pixel(line, info, i) for i in range(columns)] for line in (lines[::-1] if is_upside_down else lines)]
    pixels = [line[x : x + width] for line in pixels[y : y + height]]
    colours = [[info.pattern[(i + y) % 2 * 2 + (j + x) % 2] if info.pattern else "" for j in range(width)] for i in range(height)]
    direction = draw(st.sampled_from([None, "horizontal", "vertical", "both"]))
    if direction in ("vertical", "both"):
        pixels, colours = pixels[::-1], colours[::-1]
    if direction in ("horizontal", "both"):
        pixels, colours = [line[::-1] for line in pixels], [line[::-1] for line in colours]
    pattern = "".join(colours[0][:2] + colours[1][:2])
    moved = next(f for f in [info, *FORMATS] if f._replace(format=info.format) == info._replace(pattern=pattern))

    view, format = orvella.crop(memory.array, info.format, (columns, rows), x, y, width, height,
                                stride=-stride if is_upside_down else stride)
    if direction:
        view, format = orvella.flip(view, format, (width, height), direction)
    assert format == moved.format
    dense = pack(pixels, info)
    ignored = info.bits != 8 and method is not Debayer.Mode2x2 and info.is_mosaic
    truth = None if ignored else by_the_c_function(dense, moved, (width, height), to, method, matrix, words)
    if truth is None and info.layout == 13 and not ignored:
        words16 = next(f for f in FORMATS if f.bits_used == 16 and f.pattern == moved.pattern and f.is_mosaic)
        shifted = [[tuple((p[0] << (16 - info.bits)).to_bytes(2, "little")) for p in line] for line in pixels]
        truth = by_the_c_function(pack(shifted, words16), words16, (width, height), to, method, matrix)
    if truth is None and info.is_mosaic:
        mosaic, eight = top_bits(pixels, moved, words)
        truth = by_the_c_function(pack(mosaic, eight), eight, (width, height), to, method, matrix)
    options = dict(debayer=method, matrix=matrix)
    if info.has_words:
        options.update(bits_used=words[0], alignment=("high", "low")[words[1]], byte_order=("little", "big")[words[2]])
    if truth is None:
        with pytest.raises(orvella.Error, match="does not become|by a matrix"):
            orvella.convert(view, format, (width, height), to, **options)
        return
    padded = np.zeros((height, width + 3, *orvella.convert(view, format, (width, height), to, **options).shape[2:]),
                      np.uint16 if truth.dtype == np.uint16 else np.uint8)
    out = padded[:, 1:-2] if draw(st.booleans()) else None
    picture = orvella.convert(view, format, (width, height), to, out=out, **options)
    assert out is None or picture is out and not padded[:, 0].any() and not padded[:, -2:].any()
    assert np.array_equal(picture.reshape(-1), truth)
    assert np.array_equal(memory.array, contents)


ANY = st.one_of(st.integers(-70, 70), st.sampled_from([0, 1, -(2**31), 2**31, 2**32, 2**62, -(2**63), 2**64, 10**30]))


@given(st.data())
def test_nothing_outside_the_given_memory_is_touched(data):
    draw = data.draw
    size = (draw(ANY), draw(ANY)) if draw(st.booleans()) else (draw(st.integers(1, 40)), draw(st.integers(1, 20)))
    memory = Guarded(bytes(draw(st.integers(0, 3000))), draw(st.booleans()))
    before = memory.array.copy()
    frame = (memory.array, draw(st.sampled_from(FORMATS)).format, size)
    stride = draw(st.one_of(st.none(), ANY))
    calls = [
        lambda: orvella.convert(*frame, draw(st.sampled_from(Output)), stride=stride, debayer=draw(st.sampled_from(Debayer)),
                                matrix=draw(st.sampled_from([None, MATRIX])), alpha=draw(st.one_of(st.none(), ANY)),
                                bits_used=draw(st.one_of(st.none(), st.integers(0, 20)))),
        lambda: orvella.crop(*frame, draw(ANY), draw(ANY), draw(ANY), draw(ANY), stride=stride)[0].sum(),
        lambda: orvella.flip(*frame, draw(st.sampled_from(["horizontal", "vertical", "both"])), stride=stride),
        lambda: orvella.planes(*frame, luma=draw(st.booleans()), stride=stride),
        lambda: orvella.deinterlace(*frame, stride=stride),
    ]
    try:
        draw(st.sampled_from(calls))()
    except orvella.Error as error:
        assert str(error)
    assert np.array_equal(memory.array, before)


GREY = bytes(range(24))


@pytest.mark.parametrize("data", [
    GREY, bytearray(GREY), memoryview(GREY), np.frombuffer(GREY, np.uint8), np.frombuffer(GREY, "<u4"),
    np.frombuffer(GREY, np.int16).reshape(3, 4), GREY + b"behind", np.frombuffer(GREY, np.uint8).reshape(4, 6)[:, :],
    np.pad(np.frombuffer(GREY, np.uint8).reshape(4, 6), 2)[2:-2, 2:-2], memoryview(np.frombuffer(GREY, np.uint8).reshape(4, 6)),
    np.frombuffer(GREY, np.uint8).reshape(4, 6)[::-1].copy()[::-1]], ids=lambda data: type(data).__name__)
def test_data_is_anything_that_holds_bytes(data):
    assert orvella.convert(data, "Mono8", (6, 4), "mono8").tobytes() == GREY


BUFFER = np.zeros(300, np.uint8)
F = ("BayerRG8", (8, 8))


@pytest.mark.parametrize("arguments, options, text", [
    ((bytes(63), *F), {}, "BayerRG8 of 8x8 needs 64 bytes, but 63 are given"),
    ((b"", *F), {}, "but 0 are given"),
    ((bytes(99), *F), {"stride": 7}, "a stride of 7 bytes is less than a line"),
    ((bytes(99), *F), {"stride": 0}, "a stride of 0 bytes is less than a line"),
    ((bytes(99), *F), {"stride": -16}, "with this stride needs 120 bytes, but 99 are given"),
    ((np.zeros((8, 8)), *F), {}, "an array of integers is needed, not of float64"),
    ((BUFFER[::2], *F), {}, "numpy.ascontiguousarray"),
    ((np.zeros((8, 9), np.uint8)[:, ::2], *F), {}, "numpy.ascontiguousarray"),
    ((np.zeros((8, 9), np.uint8)[:, :7], *F), {}, "needs 8 lines of 8 bytes, but 8 of 7 are given"),
    ((np.zeros((8, 9), np.uint8)[:, :8], *F), {"stride": 9}, "has a stride of its own"),
    ((memoryview(BUFFER)[::2], *F), {}, "a buffer without gaps"),
    (([1, 2, 3], *F), {}, "a buffer without gaps or an array of integers is needed, not list"),
    ((BUFFER, "Bayer", (8, 8)), {}, "'Bayer' is not the name of a pixel format"),
    ((BUFFER, 0x01080002, (8, 8)), {}, "is not the code of a pixel format"),
    ((BUFFER, "Mono8", (8, 8, 1)), {}, r"the size is \(width, height\)"),
    ((BUFFER, "Mono8", (8.5, 8)), {}, r"the size is \(width, height\)"),
    ((BUFFER, "Mono8", (0, 8)), {}, "sizes are 1 to"),
    ((BUFFER, *F, "RGB"), {}, "'RGB' is not the name of an output"),
    ((BUFFER, *F, 11), {}, "11 is not an output"),
    ((BUFFER, *F), {"debayer": "4x4"}, "'4x4' is not a demosaic method"),
    ((BUFFER, *F), {"debayer": 5}, "5 is not a demosaic method"),
    ((BUFFER, *F), {"matrix": range(8)}, "a matrix has nine numbers, not 8"),
    ((BUFFER, *F), {"matrix": MATRIX, "debayer": "LCAA"}, "with the method 2x2 only"),
    ((BUFFER, *F, "RGB48"), {}, "BayerRG8 by 2x2 does not become Rgb48: it becomes Mono8, Bgr24"),
    ((BUFFER, "Rgb16", (4, 4)), {}, "Rgb16 does not become Rgb24: it becomes nothing"),
    ((BUFFER, *F), {"bits_used": 8}, "BayerRG8 has none"),
    ((BUFFER, "Mono12", (4, 4)), {"bits_used": 11}, "11 bits used"),
    ((BUFFER, "Mono12", (4, 4)), {"byte_order": "native"}, '"little" or "big"'),
    ((BUFFER, "BayerRG8", (7, 8)), {}, "a mosaic needs an even width and height"),
    ((BUFFER, "BayerRG8", (2, 8)), {"debayer": "3x3"}, "3x3 needs four lines and columns"),
    ((BUFFER, "BayerRG10p", (6, 8)), {}, "begin and end on whole bytes, so the width must be a multiple of 4"),
    ((BUFFER, "Mono12p", (5, 5)), {}, "the number of pixels must be even"),
    ((BUFFER, "Yuv411", (6, 2)), {}, "the width must be a multiple of 4"),
    ((BUFFER, *F), {"alpha": 256}, "alpha is 0 to 255 or None"),
    ((BUFFER, *F), {"out": np.zeros((8, 8, 3))}, r"a writeable array of uint8 of shape \(8, 8, 3\), not float64"),
    ((BUFFER, *F), {"out": np.zeros((8, 9, 3), np.uint8)}, r"not uint8 of shape \(8, 9, 3\)"),
    ((BUFFER, *F), {"out": np.frombuffer(bytes(192), np.uint8).reshape(8, 8, 3)}, "writeable"),
    ((BUFFER, *F), {"out": BUFFER[:192].reshape(8, 8, 3)}, "overlaps"),
])
def test_refusals_say_which_rule(arguments, options, text):
    with pytest.raises(ValueError, match=text):
        orvella.convert(*arguments, **options)


def test_fourth_bytes_sources_and_what_is_behind():
    data = np.random.default_rng(0).integers(0, 256, 64, np.uint8)
    kept = np.full((8, 8, 4), 9, np.uint8)
    assert (orvella.convert(data, *F, "RGBA32")[..., 3] == 255).all()
    assert (orvella.convert(data, *F, "RGBA32", alpha=None, out=kept)[..., 3] == 9).all()
    assert orvella.convert(data, "Rgba8", (4, 4), "RGBA32").tobytes() == data.tobytes()
    before = data.copy()
    filtered = orvella.convert(data, *F, debayer="LCAA")
    assert np.array_equal(data, before)
    assert np.array_equal(orvella.convert(data, *F, debayer="LCAA", overwrite=True), filtered)
    assert not np.array_equal(data, before)
    for behind in (b"\x00", b"\xff"):
        words = orvella.convert(b"\xff\x40\x00\x80" + behind, "Mono16", (2, 1))
        assert words.tolist() == [[[0x40] * 3, [0x80] * 3]]


def test_threads_convert_at_once():
    data = np.random.default_rng(0).integers(0, 256, 256 * 256 * 3 // 2, np.uint8)
    truth = orvella.convert(data, "BayerRG12p", (256, 256), debayer="3x3")
    results: list[bool] = []

    def work():
        for _ in range(20):
            results.append(np.array_equal(orvella.convert(data, "BayerRG12p", (256, 256), debayer="3x3"), truth))

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert results == [True] * 80
