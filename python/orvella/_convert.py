"""Conversions of frames to numpy arrays."""

from __future__ import annotations

import ctypes
import functools
from collections.abc import Sequence
from typing import Any, Optional, Union, cast

import numpy as np
import numpy.typing as npt

from . import _library
from ._formats import (Debayer, DebayerLike, Error, FormatInfo, FormatLike, Output, OutputLike, PixelFormat,
                       debayer_mode, info, output, pixel_format)
from ._memory import Bytes, address, checked_size, lines_of

Picture = Union[npt.NDArray[np.uint8], npt.NDArray[np.uint16]]
Matrix = tuple[float, ...]

_NOT_IMPLEMENTED = -17
_CHANNELS = {Output.Bgr24: 3, Output.Rgb24: 3, Output.Bgr48: 3, Output.Rgb48: 3, Output.Bgra32: 4, Output.Rgba32: 4,
             Output.Yuv422: 2}
_WIDE = (Output.Mono16, Output.Mono16Rec709, Output.Bgr48, Output.Rgb48)
_ALIGNMENTS = {"high": 0, "low": 1}
_BYTE_ORDERS = {"little": 0, "big": 1}
_TARGET = ctypes.sizeof(_library.Image)  # where Pair has its second record
_MONO_LAYOUTS = {2: 0, 3: 1, 13: 11}  # the same samples without their mosaic


class _Plan:
    """A conversion that has passed the checks: the library's records but for the addresses, and what to do around the call."""

    def __init__(self, source: _library.Image, to: Output, option: _library.TransformInfo, shape: tuple[int, ...],
                 own: FormatInfo) -> None:
        self.option, self.to, self.info, self.shape = option, to, own, shape
        target = _library.Image(Size=ctypes.sizeof(_library.Image))
        code = Output.Bgr48 if to is Output.Rgb48 else to
        _library.set_output_info(code, shape[1], shape[0], ctypes.byref(target))
        self.records = _library.Pair(source, target)
        self.option_address = ctypes.addressof(option)
        self.frame_bytes = (shape[0] * shape[1] * own.bits + 7) // 8
        self.dtype = np.dtype(np.uint16 if to in _WIDE else np.uint8)
        self.line_bytes = int(np.prod(shape[1:])) * self.dtype.itemsize
        self.is_stream = False
        self.reads_beyond = False
        self.is_corrected = False
        self.mosaic: Optional[_Plan] = None  # makes another mosaic first
        self.is_plain = False  # one call does it all

    def call(self, source: int, target: int, count: int) -> None:
        """Converts `count` lines. The records are this call's own: others may run at once."""
        records = _library.Pair.from_buffer_copy(self.records)
        image, picture = records.source, records.target
        image.Data, picture.Data = source, target
        if count != self.shape[0]:
            image.ImageInfo.Height = picture.ImageInfo.Height = count
        start = ctypes.addressof(records)
        code = _library.transform(start, start + _TARGET, self.option_address, 1)
        if code != 0:
            raise Error(f"the library refuses the conversion: {_library.error_text(code)}", code)


def _record(own: FormatInfo, width: int, height: int, bits_used: Optional[int], alignment: str, byte_order: str) -> _library.Image:
    image = _library.Image(Size=ctypes.sizeof(_library.Image))
    _library.set_image_info(own.format, width, height, ctypes.byref(image))
    if own.has_words:
        pixel = image.ImageInfo.PixelInfo
        pixel.BitsUsed = own.bits_used if bits_used is None else bits_used
        pixel.Alignment = _ALIGNMENTS[alignment]
        pixel.Endianness = _BYTE_ORDERS[byte_order]
    return image


def _is_offered(source: _library.Image, to: Output, option: _library.TransformInfo) -> bool:
    """Asks the library, with an image of a few pixels."""
    memory = ctypes.create_string_buffer(8 * 4 * 8)
    sample = type(source).from_buffer_copy(source)
    sample.ImageInfo.Width, sample.ImageInfo.Height = 8, 4
    sample.Data = ctypes.addressof(memory)
    plan = _Plan(sample, to, option, (4, 8, 6), info(PixelFormat.Mono8))
    place = ctypes.create_string_buffer(8 * 4 * 6)
    plan.records.target.Data = ctypes.addressof(place)
    start = ctypes.addressof(plan.records)
    return bool(_library.transform(start, start + _TARGET, ctypes.addressof(option), 1) == 0)


def _check_words(own: FormatInfo, bits_used: Optional[int], alignment: str, byte_order: str) -> None:
    if alignment not in _ALIGNMENTS or byte_order not in _BYTE_ORDERS:
        raise Error(f'alignment is "low" or "high", byte_order "little" or "big", not {alignment!r} and {byte_order!r}')
    if (bits_used is not None or alignment != "low" or byte_order != "little") and not own.has_words:
        raise Error(f"bits used, alignment and byte order are for samples in 16-bit words, {own.name} has none")
    used = own.bits_used if bits_used is None else bits_used
    if own.has_words and used not in ((10, 12, 13, 14, 15, 16) if alignment == "low" else range(1, 17)):
        raise Error(f"{used} bits used: 10, 12 to 16 are known in the low bits of a word, 1 to 16 in the high")


def _check_size(own: FormatInfo, width: int, height: int, to: Output, method: Debayer, is_corrected: bool) -> None:
    rules = [
        (own.is_mosaic and not is_corrected and (width % 2 or height % 2), "a mosaic needs an even width and height"),
        (own.is_mosaic and min(width, height) < 2, "a mosaic needs two lines and columns"),
        (own.is_mosaic and method is Debayer.Mode3x3 and min(width, height) < 4, "the method 3x3 needs four lines and columns"),
        ((to is Output.Yuv422 or own.layout == 9) and width % 2, "the width must be even"),
        (own.layout == 8 and width % 4, "the width must be a multiple of 4"),
        (own.bits == 12 and own.group == 2 and width * height % 2, "the number of pixels must be even"),
        (is_corrected and width > 0x3FFFFFFF, "lines are too long for a matrix"),
    ]
    for is_broken, rule in rules:
        if is_broken:
            raise Error(f"{own.name} of {width}x{height} to {to.name}: {rule}")


@functools.lru_cache(maxsize=1024)
def _plan(format: FormatLike, size: tuple[int, ...], what: OutputLike, debayer: DebayerLike, matrix: Optional[Matrix],
          bits_used: Optional[int], alignment: str, byte_order: str) -> _Plan:
    own = info(pixel_format(format))
    width, height = checked_size(size)
    to, method = output(what), debayer_mode(debayer)
    _check_words(own, bits_used, alignment, byte_order)
    if own.is_mosaic and matrix is not None and method is not Debayer.Mode2x2:
        raise Error("mosaics are corrected by a matrix with the method 2x2 only", _NOT_IMPLEMENTED)
    option = _library.TransformInfo(TransformType=1)
    option.Parameter.DebayerMode = method if own.is_mosaic else 0
    source = _record(own, width, height, bits_used, alignment, byte_order)
    if matrix is not None:
        option.TransformType = 2
        option.Parameter.Matrix[:] = matrix
        # With a matrix the library takes the codes of GBRG and GRBG the other way round.
        pixel = source.ImageInfo.PixelInfo
        pixel.BayerPattern = {1: 2, 2: 1}.get(pixel.BayerPattern, pixel.BayerPattern)

    def is_offered(image: _library.Image, what: Output) -> bool:
        return _is_offered(image, Output.Bgr48 if what is Output.Rgb48 else what, option)

    # Deep mosaics ignore the method in the library; here they do what is asked for, in two steps: 10p and 12p by way of
    # 16-bit words, all by way of their top eight bits.
    ignores_method = own.is_mosaic and own.bits != 8 and method is not Debayer.Mode2x2
    ways = [] if ignores_method else [source]
    if own.is_mosaic and own.bits != 8:
        ways += [_as_mosaic(source, 16)] * (own.layout == 13 and not ignores_method) + [_as_mosaic(source, 8)]
    way = next((way for way in ways if is_offered(way, to)), None)
    if way is None:
        by = f" by {method.name.replace('Mode', '')}" if own.is_mosaic else ""
        listed = ", ".join(other.name for other in Output if any(is_offered(way, other) for way in ways))
        raise Error(f"{own.name}{by}{' and a matrix' if matrix is not None else ''} does not become {to.name}: "
                    f"it becomes {listed or 'nothing'}", _NOT_IMPLEMENTED)
    deep, source = (None if way is source else source), way
    _check_size(own, width, height, to, method, matrix is not None)
    shape = (height, width, _CHANNELS[to]) if to in _CHANNELS else (height, width)
    plan = _Plan(source, to, option, shape, own)
    plan.is_stream = own.is_mosaic and method > Debayer.Mode3x3
    plan.is_corrected = matrix is not None and not own.is_mosaic
    # Little-endian words of 16 bits become colour with the byte behind each, the next pixel's.
    pixel = source.ImageInfo.PixelInfo
    plan.reads_beyond = (own.layout == 0 and own.bits == 16 and pixel.BitsUsed == 16 and pixel.Endianness == 0
                         and Output.Bgr24 <= to <= Output.Rgba32)
    if deep is not None:
        pixel = deep.ImageInfo.PixelInfo
        pixel.PixelLayout, pixel.BayerPattern = _MONO_LAYOUTS[own.layout], 255
        grey = Output.Mono16 if source.ImageInfo.PixelInfo.BitsPerPixel == 16 else Output.Mono8
        plan.mosaic = _Plan(deep, grey, _library.TransformInfo(TransformType=1), (height, width),
                                own)
    plan.is_plain = not (plan.is_stream or plan.is_corrected or plan.reads_beyond or deep or to is Output.Rgb48
                         or own.is_mosaic and width % own.group)
    return plan


def _as_mosaic(source: _library.Image, bits: int) -> _library.Image:
    """The record of a mosaic with the same colours, of bytes or of little-endian words."""
    image = type(source).from_buffer_copy(source)
    pixel = image.ImageInfo.PixelInfo
    pixel.BitsPerPixel, pixel.BitsUsed, pixel.Alignment, pixel.Endianness, pixel.PixelLayout = bits, bits, 1, 0, 2
    return image


def _checked_out(out: Picture, plan: _Plan, lines: Bytes) -> None:
    if not isinstance(out, np.ndarray) or out.dtype != plan.dtype or out.shape != plan.shape or not out.flags.writeable:
        given = f"{out.dtype} of shape {out.shape}" if isinstance(out, np.ndarray) else type(out).__name__
        raise Error(f"out must be a writeable array of {plan.dtype} of shape {plan.shape}, not {given}")
    if np.may_share_memory(out, lines):
        raise Error("the memory of out overlaps that of the frame")


def _transform(plan: _Plan, source: Bytes, picture: Picture) -> None:
    height, line = plan.shape[0], source.size // plan.shape[0]
    start, target = address(source), address(picture)
    if plan.reads_beyond:
        # Behind the last pixel of all stands a zero, whatever the memory holds there.
        if height > 1:
            plan.call(start, target, height - 1)
        last = np.append(source[-line:], np.uint8(0))
        plan.call(address(last), target + (height - 1) * plan.line_bytes, 1)
        return
    # The library counts the pixels that it corrects in 31 bits.
    step = max(0x3FFFFFFF // plan.shape[1], 1) if plan.is_corrected else height
    for first in range(0, height, step):
        plan.call(start + first * line, target + first * plan.line_bytes, min(step, height - first))


def convert(data: Any, format: FormatLike, size: Sequence[int], to: OutputLike = "RGB24", *,
            debayer: DebayerLike = "2x2", matrix: Optional[npt.ArrayLike] = None, stride: Optional[int] = None,
            out: Optional[Picture] = None, bits_used: Optional[int] = None, alignment: str = "low",
            byte_order: str = "little", alpha: Optional[int] = 255, overwrite: bool = False) -> Picture:
    """A frame of a camera as a picture.

    Parameters
    ----------
    data:       the frame's bytes: anything with a buffer (bytes, bytearray, memoryview, mmap) or an array of integers.
                Read-only memory will do; bytes behind the image are ignored. An array without gaps is taken as its bytes,
                whatever its type and shape; of one with gaps the first axis is lines, which must have none.
    format:     PixelFormat, its name ("BayerRG12p") or its PFNC code.
    size:       (width, height) in pixels.
    to:         Output or its name.
    debayer:    "2x2", "3x3", "LCAA", "LCAAV" or "YUV422"; mosaics only. Of deeper mosaics, the methods behind the first, and
                outputs that these do not become otherwise, take the top eight bits of the samples.
    matrix:     nine floats, row by row: R', G', B' from R, G, B.
    stride:     bytes from line to line; negative: the first line is the last one in memory. None: no padding.
    out:        the array to write into, with any strides; it is returned.
    bits_used, alignment, byte_order:
                of samples in 16-bit words: "low" or "high" bits of the word, "little" or "big".
    alpha:      the fourth byte of Bgra32 and Rgba32 where the frame has none; None: out's own bytes stay.
    overwrite:  whether LCAA, LCAAV and YUV422 may use the frame's memory as scratch, which spares a copy of it.

    Returns
    -------
    An array of uint8 or, for Mono16 and the outputs of 48 bits, uint16: (height, width) for grey, (height, width, 3) or
    (height, width, 4) for colour, in the order of the output's name, (height, width, 2) for Yuv422.

    Raises
    ------
    Error (a ValueError) that names the rule; then nothing has been written.

    >>> import numpy as np
    >>> frame = bytes([200, 100, 50, 30])  # R G, G B
    >>> convert(frame, "BayerRG8", (2, 2))[0, 0]
    array([200,  75,  30], dtype=uint8)
    >>> convert(frame, "Mono12p", (2, 2))
    Traceback (most recent call last):
    ...
    orvella._formats.Error: Mono12p of 2x2 needs 6 bytes, but 4 are given
    """
    try:
        plan = _plan(format, tuple(size), to, debayer, None if matrix is None else _checked_matrix(matrix), bits_used,
                     alignment, byte_order)
    except TypeError:  # of what cannot be a format, a size or an option at all
        raise Error(f"format, size or options of types that they cannot have: {format!r}, {size!r}, {to!r}") from None
    height, width = plan.shape[:2]
    # What most calls are: nothing to be copied, and one call of the library.
    is_plain = (plan.is_plain and stride is None and type(data) is np.ndarray and data.flags.c_contiguous
                and data.nbytes >= plan.frame_bytes and data.dtype.kind in "uib")
    lines = data if is_plain else lines_of(data, plan.info, width, height, stride)
    if alpha is not None and not 0 <= alpha <= 255:
        raise Error(f"alpha is 0 to 255 or None, not {alpha}")

    has_fourth = plan.shape[2:] == (4,)
    picture: Any
    if out is not None:
        _checked_out(out, plan, lines)
        picture = out
        if not (out.flags.c_contiguous and out.flags.aligned):
            picture = np.empty(plan.shape, plan.dtype)
            if has_fourth and alpha is None:
                picture[...] = out
    else:
        picture = np.empty(plan.shape, plan.dtype)
        if has_fourth and alpha is None:
            picture.fill(0)
    if has_fourth and alpha is not None:
        picture.fill(alpha)

    if is_plain and (out is None or picture is out):
        plan.call(address(lines), address(picture), height)
        return cast(Picture, picture)
    if is_plain:
        lines = lines_of(data, plan.info, width, height, stride)
    source = lines if lines.ndim == 1 else np.ascontiguousarray(lines).reshape(-1)
    if plan.mosaic is not None:
        mosaic: Any = np.empty(plan.mosaic.shape, plan.mosaic.dtype)
        _transform(plan.mosaic, source, mosaic)
        source = mosaic.reshape(-1).view(np.uint8)
    elif plan.is_stream and np.may_share_memory(source, lines) and not (overwrite and lines.flags.writeable):
        source = source.copy()
    _transform(plan, source, picture)
    if plan.to is Output.Rgb48:
        picture[..., [0, 2]] = picture[..., [2, 0]]
    if out is not None and picture is not out:
        out[...] = picture
        return out
    return cast(Picture, picture)


def _checked_matrix(matrix: npt.ArrayLike) -> Matrix:
    numbers = np.asarray(matrix, np.float32).reshape(-1)
    if numbers.size != 9:
        raise Error(f"a matrix has nine numbers, not {numbers.size}")
    return tuple(numbers.tolist())
