"""The shared library: where it is found, its records and its functions."""

from __future__ import annotations

import ctypes
import os
import sys
from ctypes import c_char_p, c_float, c_int32, c_uint32, c_void_p
from pathlib import Path

from ._version import __version__

_NAMES = {"win32": "orvella.dll", "darwin": "liborvella.0.dylib"}
_NAME = _NAMES.get(sys.platform, "liborvella.so.0")


class PixelInfo(ctypes.Structure):
    _fields_ = [
        ("BitsPerPixel", c_uint32),
        ("BitsUsed", c_uint32),
        ("Alignment", c_uint32),
        ("Endianness", c_uint32),
        ("PixelLayout", c_uint32),
        ("BayerPattern", c_uint32),
        ("ColorSpace", c_uint32),
    ]


class ImageInfo(ctypes.Structure):
    _fields_ = [("Width", c_uint32), ("Height", c_uint32), ("Stride", c_int32), ("PixelInfo", PixelInfo)]


class Image(ctypes.Structure):
    _fields_ = [("Size", c_uint32), ("Data", c_void_p), ("ImageInfo", ImageInfo)]


class Pair(ctypes.Structure):
    """Both records of a call, which are copied and passed together."""

    _fields_ = [("source", Image), ("target", Image)]


class _Parameter(ctypes.Union):
    _fields_ = [("DebayerMode", c_uint32), ("Matrix", c_float * 9), ("Gamma", c_float)]


class TransformInfo(ctypes.Structure):
    _fields_ = [("TransformType", c_uint32), ("Parameter", _Parameter)]


def _load() -> ctypes.CDLL:
    """The library that ORVELLA_LIBRARY names, else the one beside this module, else the loader's."""
    wanted = os.environ.get("ORVELLA_LIBRARY")
    beside = Path(__file__).with_name(_NAME)
    path = wanted or (str(beside) if beside.exists() else _NAME)
    try:
        library = ctypes.CDLL(path)
    except OSError as error:
        where = f"ORVELLA_LIBRARY names {path}" if wanted else f"{_NAME} is neither beside the module nor known to the loader"
        raise ImportError(f"orvella: the shared library cannot be loaded: {where} ({error})") from error
    try:
        number = c_uint32()
        library.OrvGetVersion(ctypes.byref(number))
    except AttributeError as error:
        raise ImportError(f"orvella: {path} is not the library: it has no OrvGetVersion") from error
    version = ".".join(str(number.value >> shift & 0xFF) for shift in (24, 16, 8))
    if version.split(".")[:2] != __version__.split(".")[:2]:
        raise ImportError(f"orvella: the module of version {__version__} needs such a library, {path} is {version}")
    return library


_library = _load()




transform = _library.OrvImageTransform
transform.argtypes = [c_void_p, c_void_p, c_void_p, c_uint32]
transform.restype = c_int32

set_image_info = _library.OrvSetImageInfoFromPixelFormat
set_image_info.argtypes = [c_uint32, c_uint32, c_uint32, c_void_p]
set_output_info = _library.OrvSetImageInfoOutput
set_output_info.argtypes = [c_uint32, c_uint32, c_uint32, c_void_p]

get_error_info = _library.OrvGetErrorInfo
get_error_info.argtypes = [c_int32, c_char_p, c_uint32]

RGBY_PLANES = {
    name: getattr(_library, f"Orv{name}ToRGBYPlanes") for name in ("RGB8", "YUV411", "YUV422", "YUV444")
}
for _planes in RGBY_PLANES.values():
    _planes.argtypes = [c_void_p] * 5 + [c_uint32] * 2


def error_text(code: int) -> str:
    text = ctypes.create_string_buffer(200)
    get_error_info(code, text, 199)
    return text.value.decode("ascii")


def library_version() -> str:
    number = c_uint32()
    _library.OrvGetVersion(ctypes.byref(number))
    return ".".join(str(number.value >> shift & 0xFF) for shift in (24, 16, 8, 0))


