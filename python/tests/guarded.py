"""Memory between pages that nothing may touch, and frames taken apart pixel by pixel."""

from __future__ import annotations

import ctypes
import mmap

import numpy as np

_libc = ctypes.CDLL(None, use_errno=True)
_PAGE = mmap.PAGESIZE


class Guarded:
    """An array of bytes that ends (or begins) at an inaccessible page."""

    def __init__(self, contents: bytes, at_end: bool = True) -> None:
        pages = max(-(-len(contents) // _PAGE), 1) * _PAGE
        self._memory = mmap.mmap(-1, pages + 2 * _PAGE)
        self._address = ctypes.addressof(ctypes.c_char.from_buffer(self._memory))
        start = _PAGE + (pages - len(contents) if at_end else 0)
        self.array = np.frombuffer(self._memory, np.uint8)[start : start + len(contents)]
        self.array[:] = np.frombuffer(contents, np.uint8)
        for page in (self._address, self._address + _PAGE + pages):
            assert _libc.mprotect(ctypes.c_void_p(page), ctypes.c_size_t(_PAGE), 0) == 0


def pixel(line: bytes, info, x: int) -> tuple[int, ...]:
    """Pixel x of a line as numbers: of YUV U, Y, V."""
    if info.layout in (11, 13):  # bit streams
        return (int.from_bytes(line, "little") >> x * info.bits & (1 << info.bits) - 1,)
    if info.layout in (1, 3):  # 12Packed
        b = line[x // 2 * 3 : x // 2 * 3 + 3]
        return (b[0] << 4 | b[1] & 15,) if x % 2 == 0 else (b[2] << 4 | b[1] >> 4,)
    if info.layout == 9:
        b = line[x // 2 * 4 : x // 2 * 4 + 4]
        return b[0], b[1 + x % 2 * 2], b[2]
    if info.layout == 8:
        b = line[x // 4 * 6 : x // 4 * 6 + 6]
        return b[0], b[(1, 2, 4, 5)[x % 4]], b[3]
    step = info.bits // 8
    return tuple(line[x * step : x * step + step])


def pack(pixels: list[list[tuple[int, ...]]], info) -> bytes:
    """Lines of pixels without padding."""
    result = b""
    for line in pixels:
        if info.layout in (11, 13):
            number = sum(p[0] << x * info.bits for x, p in enumerate(line))
            result += number.to_bytes(len(line) * info.bits // 8, "little")
        elif info.layout in (1, 3):
            for (a,), (b,) in zip(line[::2], line[1::2]):
                result += bytes([a >> 4, a & 15 | (b & 15) << 4, b >> 4])
        elif info.layout in (8, 9):
            for first in range(0, len(line), info.group):
                group = line[first : first + info.group]
                lumas, half = bytes(p[1] for p in group), info.group // 2
                result += bytes([group[0][0]]) + lumas[:half] + bytes([group[0][2]]) + lumas[half:]
        else:
            result += b"".join(bytes(p) for p in line)
    return result
