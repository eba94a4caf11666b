"""Turns the pixel data of industrial cameras into numpy arrays.

>>> import orvella
>>> data, truth = orvella.chart("BayerRG12p", (64, 48))
>>> rgb = orvella.convert(data, "BayerRG12p", (64, 48), to="RGB24", debayer="3x3")
>>> rgb.shape, rgb.dtype
((48, 64, 3), dtype('uint8'))
"""

from ._chart import chart
from ._convert import convert
from ._files import Frame, read, write
from ._formats import Debayer, Error, FormatInfo, Output, PixelFormat, formats, phase
from ._geometry import crop, deinterlace, flip, planes
from ._library import library_version
from ._version import __version__

__all__ = ["Debayer", "Error", "FormatInfo", "Frame", "Output", "PixelFormat", "__version__", "chart", "convert", "crop",
           "deinterlace", "flip", "formats", "library_version", "phase", "planes", "read", "write"]
