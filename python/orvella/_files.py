"""Frames in files."""

from __future__ import annotations

import os
import re
from collections.abc import Sequence
from pathlib import Path
from typing import Any, NamedTuple, Optional, Union

import numpy as np
import numpy.typing as npt

from ._formats import Error, FormatLike, PixelFormat, info, pixel_format
from ._memory import Bytes, checked_size

PathLike = Union[str, "os.PathLike[str]"]

_IN_NAME = re.compile(r"([A-Za-z][A-Za-z0-9]+(?:_8_Cb[A-Za-z]+)?)_(\d+)x(\d+)$")


class Frame(NamedTuple):
    """A frame as ``convert`` takes it: ``convert(*frame)``."""

    data: Bytes
    format: PixelFormat
    size: tuple[int, int]


def read(path: PathLike, format: Optional[FormatLike] = None, size: Optional[Sequence[int]] = None, *, skip: int = 0) -> Frame:
    """A frame from a raw dump or a ``.npy`` file, mapped, not loaded, without the first `skip` bytes of a dump.

    Format and size may be in the name: ``anything_BayerRG12p_2448x2048.raw``.

    >>> import tempfile
    >>> path = Path(tempfile.mkdtemp(), "dark_Mono8_4x2.raw")
    >>> write(path, bytes(8))
    >>> read(path)
    Frame(data=memmap([0, 0, 0, 0, 0, 0, 0, 0], dtype=uint8), format=<PixelFormat.Mono8: 17301505>, size=(4, 2))
    """
    path = Path(path)
    named = _IN_NAME.search(path.stem)
    if (format is None or size is None) and named is None:
        raise Error(f"{path.name}: format and size are needed, or a name like x_BayerRG12p_2448x2048.raw")
    own = info(pixel_format(named[1] if format is None and named else format or ""))
    width, height = checked_size([int(named[2]), int(named[3])] if size is None and named else size or ())
    length = path.stat().st_size
    needed = (width * height * own.bits + 7) // 8
    data: npt.NDArray[Any]
    if path.suffix == ".npy":
        data = np.load(path, mmap_mode="r", allow_pickle=False)
        data = np.ascontiguousarray(data).reshape(-1).view(np.uint8)
        length = data.size
    elif length - skip >= needed > 0 <= skip:
        data = np.memmap(path, np.uint8, "r", skip)
    if length - skip < needed or skip < 0:
        raise Error(f"{path.name} holds {length} bytes, {own.name} of {width}x{height} needs {needed}"
                    + (f" behind the first {skip}" if skip else ""))
    return Frame(data, own.format, (width, height))


def write(path: PathLike, data: Any) -> None:
    """A frame or a picture to a file: with its shape and type as ``.npy``, else its bytes."""
    path = Path(path)
    array = data if isinstance(data, np.ndarray) else np.frombuffer(data, np.uint8)
    if path.suffix == ".npy":
        np.save(path, array, allow_pickle=False)
    else:
        np.ascontiguousarray(array).tofile(path)
