"""Test frames whose true colours are known."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any

import numpy as np
import numpy.typing as npt

from ._formats import Error, FormatInfo, FormatLike, info, pixel_format
from ._memory import Bytes, checked_size

Words = npt.NDArray[Any]  # of uint16

_PATCHES = np.array(
    [[0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF, 0xFF00FF, 0xFFFFFF, 0x000000],
     [0xC03030, 0xD08020, 0x80A030, 0x308050, 0x3070B0, 0x504090, 0xA04080, 0x808080],
     [0xF0C8A0, 0xB07850, 0x704828, 0x506838, 0x80B0D8, 0x284070, 0xE0D0E0, 0x404040]])
_PATCH_COLOURS = np.stack([_PATCHES >> shift & 0xFF for shift in (16, 8, 0)], axis=-1) * 257


def _picture(width: int, height: int) -> Any:
    """From top to bottom: five eighths patches, an eighth ramp, an eighth steps of grey, an eighth lines."""
    x, y = np.arange(width)[None, :], np.arange(height)[:, None]
    eighth, across = y * 8 // height, x * 8 // width
    patch_height = max(height - height * 3 // 8, 1)
    picture = _PATCH_COLOURS[np.minimum(y * 3 // patch_height, 2), across]
    ramp = np.zeros_like(x) if width == 1 else 0xFFFF * x // (width - 1)
    steps = x * 16 // width * 17 * 257
    thick = [x, x // 2, x // 3, x // 4, y, y // 2, (x + y) // 2, ((x - y) % (1 << 32)) // 2]
    lines = np.where(np.choose(across, np.broadcast_arrays(*thick)) % 2 == 0, 0xFFFF, 0)
    for row, grey in ((5, ramp), (6, steps), (7, lines)):
        picture = np.where((eighth == row)[..., None], np.broadcast_to(grey, (height, width))[..., None], picture)
    return picture.astype(np.uint16)


def _yuv(picture: Words, group: int) -> Any:
    """ITU-R BT.601 over the full range; groups of pixels share the mean of their chroma."""
    red, green, blue = (picture[..., i] / 257.0 for i in range(3))
    luma = 0.299 * red + 0.587 * green + 0.114 * blue

    def words(values: npt.NDArray[np.float64]) -> npt.NDArray[np.float64]:
        rounded: npt.NDArray[np.float64] = np.clip(np.floor(values + 0.5), 0, 255) * 257
        return rounded

    lumas = words(luma).reshape(-1, group)
    chroma = [sum(plane.reshape(-1, group)[:, i] for i in range(group)) / group
              for plane in (128 + (blue - luma) / 1.772, 128 + (red - luma) / 1.402)]
    half = (group + 1) // 2
    return np.column_stack([words(chroma[0]), lumas[:, :half], words(chroma[1]), lumas[:, half:]]).astype(np.uint16)


def _samples(picture: Words, own: FormatInfo) -> Any:
    if own.is_mosaic:
        channels = np.array(["RGB".index(colour) for colour in own.pattern]).reshape(2, 2)
        rows, columns = np.indices(picture.shape[:2])
        return picture[rows, columns, channels[rows % 2, columns % 2]]
    if own.layout in (8, 9, 10):
        return _yuv(picture, own.group)
    if own.layout in (0, 1, 11):
        return ((picture @ np.array([77, 150, 29], np.uint32)) >> 8).astype(np.uint16)
    order = {4: [0, 1, 2], 5: [2, 1, 0], 6: [0, 1, 2, 3], 7: [2, 1, 0, 3]}[own.layout]
    opaque = np.full((*picture.shape[:2], 1), 0xFFFF, np.uint16)
    return np.concatenate([picture, opaque], axis=-1)[..., order]


def _pack(samples: Words, own: FormatInfo) -> Any:
    flat = samples.reshape(-1)
    if own.layout in (11, 13):
        bits = flat[:, None] >> np.arange(16 - own.bits, 16, dtype=np.uint16) & 1
        return np.packbits(bits.astype(np.uint8).reshape(-1), bitorder="little")
    if own.layout in (1, 3):
        first, second = flat[0::2], flat[1::2]
        groups = [first >> 8, (first >> 4 & 0xF) | (second & 0xF0), second >> 8]
        return np.stack(groups, axis=-1).astype(np.uint8).reshape(-1)
    if own.bits in (16, 48) and own.layout in (0, 2, 4):
        used = own.bits_used * 16 // own.bits
        return (flat >> (16 - used)).astype("<u2").view(np.uint8)
    return (flat >> 8).astype(np.uint8)


def chart(format: FormatLike, size: Sequence[int]) -> tuple[Bytes, Words]:
    """A test chart as a frame of any format, and what it shows: colours (height, width, 3) as uint16. It is the one that
    ``orvella chart`` writes.

    >>> data, truth = chart("Mono12p", (32, 16))
    >>> data.size, truth.shape
    (768, (16, 32, 3))
    """
    own = info(pixel_format(format))
    width, height = checked_size(size)
    if own.layout in (8, 9) and width % own.group:
        raise Error(f"{own.name} of {width}x{height}: the width must be a multiple of {own.group}")
    if own.bits == 12 and own.group == 2 and width * height % 2:
        raise Error(f"{own.name} of {width}x{height}: the number of pixels must be even")
    truth = _picture(width, height)
    return _pack(_samples(truth, own), own), truth
