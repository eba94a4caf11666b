"""Pixel formats and outputs, and what is known about them."""

from __future__ import annotations

import ctypes
import enum
import functools
from typing import NamedTuple, Union

from . import _library


class Error(ValueError):
    """What is refused. ``code`` is the code of the C functions, the text names the rule."""

    def __init__(self, text: str, code: int = -7) -> None:
        super().__init__(text)
        self.code = code


class PixelFormat(enum.IntEnum):
    """What a frame holds: codes of the GenICam Pixel Format Naming Convention (PFNC)."""

    Mono8 = 0x01080001
    Mono10 = 0x01100003
    Mono12 = 0x01100005
    Mono12Packed = 0x010C0006
    Mono10p = 0x010A0046
    Mono12p = 0x010C0047
    Mono14 = 0x01100025
    Mono16 = 0x01100007
    BayerGR8 = 0x01080008
    BayerRG8 = 0x01080009
    BayerGB8 = 0x0108000A
    BayerBG8 = 0x0108000B
    BayerGR10 = 0x0110000C
    BayerRG10 = 0x0110000D
    BayerGB10 = 0x0110000E
    BayerBG10 = 0x0110000F
    BayerGR12 = 0x01100010
    BayerRG12 = 0x01100011
    BayerGB12 = 0x01100012
    BayerBG12 = 0x01100013
    BayerGR12Packed = 0x010C002A
    BayerRG12Packed = 0x010C002B
    BayerGB12Packed = 0x010C002C
    BayerBG12Packed = 0x010C002D
    BayerGR10p = 0x010A0056
    BayerRG10p = 0x010A0058
    BayerGB10p = 0x010A0054
    BayerBG10p = 0x010A0052
    BayerGR12p = 0x010C0057
    BayerRG12p = 0x010C0059
    BayerGB12p = 0x010C0055
    BayerBG12p = 0x010C0053
    BayerGR16 = 0x0110002E
    BayerRG16 = 0x0110002F
    BayerGB16 = 0x01100030
    BayerBG16 = 0x01100031
    Rgb8 = 0x02180014
    Bgr8 = 0x02180015
    Rgba8 = 0x02200016
    Bgra8 = 0x02200017
    Rgb12 = 0x0230001A
    Rgb16 = 0x02300033
    Yuv411 = 0x020C001E
    Yuv422 = 0x0210001F
    Yuv444 = 0x02180020
    YCbCr411_8_CbYYCrYY = 0x020C003C
    YCbCr422_8_CbYCrY = 0x02100043
    YCbCr8_CbYCr = 0x0218003A
    Argb8 = 0x02200016  # another name of Rgba8


class Output(enum.IntEnum):
    """What a picture holds."""

    Mono8 = 0
    Bgr24 = 1
    Bgra32 = 2
    Rgb24 = 3
    Rgba32 = 4
    Mono8Rec709 = 5
    Yuv422 = 6
    Mono16 = 7
    Mono16Rec709 = 8
    Bgr48 = 9
    Rgb48 = 10


class Debayer(enum.IntEnum):
    """How a mosaic becomes colour. As a string: "2x2", "3x3", "LCAA", "LCAAV", "YUV422"."""

    Mode2x2 = 0
    Mode3x3 = 1
    LCAA = 2
    LCAAV = 3
    YUV422 = 4


FormatLike = Union[PixelFormat, int, str]
OutputLike = Union[Output, int, str]
DebayerLike = Union[Debayer, int, str]

_ALIASES = {"BGR8": 1, "RGB8": 3, "UYVY": 6, "YCBCR422": 6, "MONO8REC601": 0, "MONO16REC601": 7}
_FORMATS = {name.upper(): member for name, member in PixelFormat.__members__.items()}
_OUTPUTS = {**{name.upper(): member for name, member in Output.__members__.items()},
            **{name: Output(value) for name, value in _ALIASES.items()}}
_METHODS = {name.upper().replace("MODE", ""): member for name, member in Debayer.__members__.items()}


def pixel_format(value: FormatLike) -> PixelFormat:
    """A pixel format by its name in any case ("BayerRG12p", "PixelFormatBayerRG12p") or its PFNC code.

    >>> pixel_format("bayerrg12P")
    <PixelFormat.BayerRG12p: 17563737>
    """
    if isinstance(value, str):
        name = value.upper()
        found = _FORMATS.get(name[11:] if name.startswith("PIXELFORMAT") else name)
        if found is None:
            raise Error(f"{value!r} is not the name of a pixel format; orvella.formats() lists them")
        return found
    try:
        return PixelFormat(value)
    except ValueError:
        raise Error(f"{value!r} is not the code of a pixel format; orvella.formats() lists them") from None


def output(value: OutputLike) -> Output:
    """An output by its name in any case, with or without underscores, or its number."""
    if isinstance(value, str):
        found = _OUTPUTS.get(value.upper().replace("_", ""))
        if found is None:
            raise Error(f"{value!r} is not the name of an output: these are {', '.join(Output.__members__)}")
        return found
    try:
        return Output(value)
    except ValueError:
        raise Error(f"{value!r} is not an output: these are {', '.join(Output.__members__)}") from None


def debayer_mode(value: DebayerLike) -> Debayer:
    """A demosaic method by its name in any case, or its number."""
    found = _METHODS.get(value.upper()) if isinstance(value, str) else None
    if found is None and not isinstance(value, str) and value in range(5):
        found = Debayer(value)
    if found is None:
        raise Error(f"{value!r} is not a demosaic method: these are {', '.join(_METHODS)}")
    return found


class FormatInfo(NamedTuple):
    """A pixel format: bits per pixel in memory and used, the mosaic's first two lines ("" if it has none), and the number
    of pixels that share bytes or colour."""

    format: PixelFormat
    bits: int
    bits_used: int
    pattern: str
    group: int
    layout: int

    @property
    def name(self) -> str:
        return self.format.name

    @property
    def is_mosaic(self) -> bool:
        return self.pattern != ""

    @property
    def has_words(self) -> bool:
        """One sample in a 16-bit word."""
        return self.bits == 16 and self.layout in (0, 2)

    def line_bytes(self, width: int) -> int:
        return (width * self.bits + 7) // 8


_PATTERNS = {0: "RGGB", 1: "GBRG", 2: "GRBG", 3: "BGGR", 255: ""}
_GROUPS = {1: 2, 3: 2, 8: 4, 9: 2}  # 12Packed, 4:1:1, 4:2:2
_STREAMS = (11, 13)  # 10p, 12p


@functools.lru_cache(maxsize=None)
def info(format: PixelFormat) -> FormatInfo:
    image = _library.Image(Size=ctypes.sizeof(_library.Image))
    _library.set_image_info(format, 1, 1, ctypes.byref(image))
    pixel = image.ImageInfo.PixelInfo
    bits, layout = pixel.BitsPerPixel, pixel.PixelLayout
    group = {10: 4, 12: 2}[bits] if layout in _STREAMS else _GROUPS.get(layout, 1)
    return FormatInfo(format, bits, pixel.BitsUsed, _PATTERNS[pixel.BayerPattern], group, layout)


def formats() -> list[FormatInfo]:
    """All pixel formats.

    >>> [f.name for f in formats() if f.bits == 10]
    ['Mono10p', 'BayerGR10p', 'BayerRG10p', 'BayerGB10p', 'BayerBG10p']
    """
    return [info(member) for member in PixelFormat]


def _moved(pattern: str, x: int, y: int) -> str:
    return "".join(pattern[(row + y) % 2 * 2 + (column + x) % 2] for row in (0, 1) for column in (0, 1))


@functools.lru_cache(maxsize=None)
def _sibling(format: PixelFormat, pattern: str) -> PixelFormat:
    """The same packing with another mosaic."""
    own = info(format)
    return next(other.format for other in formats() if other._replace(format=format) == own._replace(pattern=pattern))


def phase(format: FormatLike, x: int, y: int) -> PixelFormat:
    """The format of a mosaic seen from x columns further right and y lines further down; others stay as they are.

    >>> phase("BayerRG8", 1, 0).name, phase("BayerRG8", 1, 1).name, phase("Mono8", 1, 1).name
    ('BayerGR8', 'BayerBG8', 'Mono8')
    """
    own = info(pixel_format(format))
    return _sibling(own.format, _moved(own.pattern, x, y)) if own.is_mosaic else own.format
