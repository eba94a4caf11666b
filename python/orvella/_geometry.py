"""Regions, flips, planes and fields of frames."""

from __future__ import annotations

import operator
from collections.abc import Sequence
from typing import Any, Optional

import numpy as np
import numpy.typing as npt

from . import _library
from ._formats import Error, FormatInfo, FormatLike, PixelFormat, info, phase, pixel_format
from ._memory import Bytes, address, as_lines, checked_size, lines_of

_PLANES = {4: "RGB8", 8: "YUV411", 9: "YUV422", 10: "YUV444"}  # by layout


def crop(data: Any, format: FormatLike, size: Sequence[int], x: int, y: int, width: int, height: int, *,
         stride: Optional[int] = None) -> tuple[Bytes, PixelFormat]:
    """A region as a frame of its own: its lines (height, bytes of a line), without a copy, and the format with the phase that
    the mosaic has at its corner.

    Bit-packed formats, 4:1:1 and 4:2:2 are cut between their groups of pixels.

    >>> region, format = crop(bytes(64), "BayerRG8", (8, 8), 1, 2, 4, 4)
    >>> region.shape, format.name
    ((4, 4), 'BayerGR8')
    """
    own = info(pixel_format(format))
    columns, rows = checked_size(size)
    lines = as_lines(data, own, columns, rows, stride)
    x, y, width, height = (operator.index(number) for number in (x, y, width, height))
    if x < 0 or y < 0 or width < 1 or height < 1 or x + width > columns or y + height > rows:
        raise Error(f"a region of {width}x{height} at ({x}, {y}) is not inside {columns}x{rows}")
    if x % own.group or width % own.group:
        raise Error(f"{own.name} shares bytes or colour between {own.group} pixels: x and both widths must be multiples")
    left = own.line_bytes(x)
    return lines[y : y + height, left : left + own.line_bytes(width)], phase(own.format, x, y)


def _mirrored(lines: Bytes, own: FormatInfo) -> Bytes:
    height = lines.shape[0]
    if own.layout in (11, 13):  # 10p, 12p
        bits = np.unpackbits(lines, axis=1, bitorder="little").reshape(height, -1, own.bits)
        return np.packbits(bits[:, ::-1].reshape(height, -1), axis=1, bitorder="little")
    if own.layout in (1, 3):  # 12Packed: the low nibbles in the middle byte
        groups = lines.reshape(height, -1, 3)[:, ::-1, ::-1].copy()
        groups[..., 1] = groups[..., 1] << 4 | groups[..., 1] >> 4
        return groups.reshape(height, -1)
    within = {8: [0, 5, 4, 3, 2, 1], 9: [0, 3, 2, 1]}.get(own.layout, list(range(own.bits // 8)))
    return lines.reshape(height, -1, len(within))[:, ::-1][..., within].reshape(height, -1)


def flip(data: Any, format: FormatLike, size: Sequence[int], direction: str, *,
         stride: Optional[int] = None) -> tuple[Bytes, PixelFormat]:
    """The frame in a mirror ("horizontal"), upside down ("vertical") or turned by 180 degrees ("both"): a copy of its lines
    (height, bytes of a line), and the format with the phase that its mosaic has then.

    >>> lines, format = flip(bytes([1, 2, 3, 4]), "BayerRG8", (2, 2), "horizontal")
    >>> lines.tolist(), format.name
    ([[2, 1], [4, 3]], 'BayerGR8')
    """
    own = info(pixel_format(format))
    width, height = checked_size(size)
    if direction not in ("horizontal", "vertical", "both"):
        raise Error(f'a flip is "horizontal", "vertical" or "both", not {direction!r}')
    lines = as_lines(data, own, width, height, stride)
    is_vertical, is_horizontal = direction != "horizontal", direction != "vertical"
    if is_vertical:
        lines = lines[::-1]
    lines = _mirrored(np.ascontiguousarray(lines), own) if is_horizontal else lines.copy()
    return lines, phase(own.format, width - 1 if is_horizontal else 0, height - 1 if is_vertical else 0)


def planes(data: Any, format: FormatLike, size: Sequence[int], *, luma: bool = False,
           stride: Optional[int] = None) -> tuple[npt.NDArray[np.uint8], ...]:
    """Red, green, blue and, if asked for, luma of an RGB8 or YUV frame as arrays (height, width) of uint8.

    >>> [plane.tolist() for plane in planes(bytes([1, 2, 3, 4, 5, 6]), "Rgb8", (2, 1))]
    [[[1, 4]], [[2, 5]], [[3, 6]]]
    """
    own = info(pixel_format(format))
    width, height = checked_size(size)
    name = _PLANES.get(own.layout) if own.bits != 48 else None
    if name is None:
        raise Error(f"{own.name} has no planes: RGB8 and the YUV formats have", -17)
    lines = lines_of(data, own, width, height, stride)
    if width % own.group:
        raise Error(f"{own.name} of {width}x{height}: the width must be a multiple of {own.group}")
    source = np.ascontiguousarray(lines)
    result = tuple(np.empty((height, width), np.uint8) for _ in range(4 if luma else 3))
    addresses = [address(plane) for plane in result] + [None] * (not luma)
    code = _library.RGBY_PLANES[name](*addresses, address(source), width, height)
    if code != 0:
        raise Error(f"the library refuses: {_library.error_text(code)}", code)
    return result


def deinterlace(data: Any, format: FormatLike, size: Sequence[int], *, stride: Optional[int] = None) -> Bytes:
    """Two fields, one after the other, woven into a frame (height, bytes of a line): the first has the lines 1, 3, 5 ...

    >>> deinterlace(b"acbd", "Mono8", (1, 4)).tolist() == [[ord(c)] for c in "badc"]
    True
    """
    own = info(pixel_format(format))
    width, height = checked_size(size)
    if height % 2:
        raise Error(f"two fields have an even number of lines, not {height}")
    lines = as_lines(data, own, width, height, stride)
    frame = np.empty(lines.shape, np.uint8)
    frame[1::2], frame[0::2] = lines[: height // 2], lines[height // 2 :]
    return frame
