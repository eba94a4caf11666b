"""Lines of pixels in whatever holds bytes."""

from __future__ import annotations

import operator
from collections.abc import Sequence
from typing import Any, NamedTuple, Optional

import numpy as np
import numpy.typing as npt

from ._formats import Error, FormatInfo

Bytes = npt.NDArray[np.uint8]

MOST = 0xFFFFFFFF


def checked_size(size: Sequence[int]) -> tuple[int, int]:
    try:
        width, height = (operator.index(number) for number in size)
    except (TypeError, ValueError):
        raise Error(f"the size is (width, height) in pixels, not {size!r}") from None
    if not (1 <= width <= MOST and 1 <= height <= MOST):
        raise Error(f"an image of {width}x{height}: sizes are 1 to {MOST}")
    return width, height


class _Name(NamedTuple):
    """Spelt out only where something is refused."""

    info: FormatInfo
    width: int
    height: int

    def __str__(self) -> str:
        return f"{self.info.name} of {self.width}x{self.height}"


def _flat(data: Any, what: _Name) -> Bytes:
    try:
        return np.frombuffer(data, np.uint8) if len(memoryview(data)) else np.empty(0, np.uint8)
    except (TypeError, ValueError, BufferError) as error:
        raise Error(f"{what}: bytes, a buffer without gaps or an array of integers is needed, "
                    f"not {type(data).__name__} ({error})") from None


def _array_lines(data: npt.NDArray[Any], length: int, height: int, what: _Name) -> Bytes:
    """A region of an array: its first axis is lines, each without gaps."""
    line = data[:1]
    if data.ndim < 2 or not line.flags.c_contiguous:
        raise Error(f"{what}: an array with gaps within its lines, make a copy of it by numpy.ascontiguousarray")
    if data.shape[0] < height or line.nbytes < length:
        raise Error(f"{what} needs {height} lines of {length} bytes, but {data.shape[0]} of {line.nbytes} are given")
    return np.lib.stride_tricks.as_strided(data.view(), (height, line.nbytes // data.itemsize), (data.strides[0], data.itemsize),
                                           writeable=False).view(np.uint8)[:, :length]


def lines_of(data: Any, info: FormatInfo, width: int, height: int, stride: Optional[int]) -> Bytes:
    """The bytes of a frame: of one axis if line follows line without padding, else of lines by bytes. Nothing is copied."""
    length = info.line_bytes(width)
    what = _Name(info, width, height)
    if isinstance(data, np.ndarray):
        if data.dtype.kind not in "uib":
            raise Error(f"{what}: an array of integers is needed, not of {data.dtype}")
        if not data.flags.c_contiguous:
            if stride is not None:
                raise Error(f"{what}: the array has a stride of its own")
            return alone(_array_lines(data, length, height, what), info, width)
        flat = data.reshape(-1).view(np.uint8)
    else:
        flat = _flat(data, what)
    if stride is None:
        needed = (width * height * info.bits + 7) // 8
        if flat.size < needed:
            raise Error(f"{what} needs {needed} bytes, but {flat.size} are given")
        return alone(flat[:needed], info, width) if info.is_mosaic else flat[:needed]
    step = operator.index(stride)
    if abs(step) < length:
        raise Error(f"a stride of {step} bytes is less than a line of {info.name}: {length}")
    needed = (height - 1) * abs(step) + length
    if flat.size < needed:
        raise Error(f"{what} with this stride needs {needed} bytes, but {flat.size} are given")
    first = (height - 1) * -step if step < 0 else 0
    if height == 1 or step == length and width * info.bits % 8 == 0:
        return alone(flat[:needed], info, width)
    return alone(np.ndarray((height, length), np.uint8, flat, first, (step, 1)), info, width)


def alone(lines: Bytes, info: FormatInfo, width: int) -> Bytes:
    """Refuses lines that do not begin and end on whole bytes and groups."""
    if width % info.group != 0:
        raise Error(f"{info.name}: lines {'hold whole groups of pixels' if info.bits % 8 == 0 else 'begin and end on whole bytes'}, "
                    f"so the width must be a multiple of {info.group}, and {width} is not")
    return lines


def as_lines(data: Any, info: FormatInfo, width: int, height: int, stride: Optional[int]) -> Bytes:
    """The same, always as lines by bytes."""
    lines = alone(lines_of(data, info, width, height, stride), info, width)
    return lines.reshape(height, -1) if lines.ndim == 1 else lines


def address(array: npt.NDArray[Any]) -> int:
    return int(array.__array_interface__["data"][0])
