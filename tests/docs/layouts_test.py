#!/usr/bin/env python3
"""The drawings of docs/pictures are those of scripts/docs/layouts.py, and what they show is what the library reads:
samples are packed by the tables that are drawn, and converted.

    layouts_test.py <repository> <liborvella.so>
"""
import ctypes
import pathlib
import random
import struct
import sys

repository, library = pathlib.Path(sys.argv[1]), ctypes.CDLL(sys.argv[2])
sys.path.insert(0, str(repository / "scripts/docs"))
import layouts  # noqa: E402

MONO16 = 7


def pack(layout, samples):
    """Bits go where the drawing has them; cells without a bit get noise."""
    pixels = 1 + max(place[0] for byte in layout for place in byte if place)
    packed = bytearray()
    for start in range(0, len(samples), pixels):
        for byte in layout:
            bits = [samples[start + place[0]] >> place[1] & 1 if place else random.getrandbits(1) for place in byte]
            packed.append(int("".join(map(str, bits)), 2))
    return bytes(packed)


def words(call, source, n, order="<"):
    result = ctypes.create_string_buffer(2 * n)
    code = call(result, source)
    assert code == 0, f"refused: {code}"
    return list(struct.unpack(f"{order}{n}H", result.raw))


def shifted(bits_used, alignment, endianness):
    record = struct.pack("=5I", 0, alignment, bits_used, endianness, 255)
    return lambda to, source: library.OrvY16ImageTransformEx(to, source, 64, MONO16, record)


READERS = {
    "10p": lambda to, source: library.OrvY10pImageTransform(to, source, 64, MONO16),
    "12p": lambda to, source: library.OrvY12pImageTransform(to, source, 64, MONO16),
    "12packed": lambda to, source: library.OrvPacked12BitTo16Bit(to, source, 64, 1),
    "word-low": shifted(12, 1, 0),
    "word-high": shifted(12, 0, 0),
    "word-big-endian": shifted(12, 1, 1),
}


def check_drawings():
    for name, svg in layouts.drawings().items():
        assert (repository / "docs/pictures" / name).read_text() == svg, f"{name} is out of date: scripts/docs/layouts.py"


def check_bits():
    for name, read in READERS.items():
        bits = 10 if name == "10p" else 12
        samples = [random.getrandbits(bits) for _ in range(64)]
        seen = words(read, pack(layouts.LAYOUTS[name], samples), 64, ">" if name == "12packed" else "<")
        # What a word holds below a sample at its top is not taken away.
        assert [value >> (16 - bits) for value in seen] == samples, f"{name}: the library reads other samples than are drawn"


def check_yuv():
    for name, parts in layouts.YUV.items():
        pixels = sum(part[0] == "Y" for part in parts)
        luma = [random.randrange(256) for _ in range(pixels)]
        source = bytes({"U": 128, "V": 128}.get(part) or luma[int(part[1:])] for part in parts)
        planes = [ctypes.create_string_buffer(pixels * 2) for _ in range(4)]
        # Twice, because 4:2:2 is split from two lines on.
        assert getattr(library, f"Orv{name.upper()}ToRGBYPlanes")(*planes, source * 2, pixels, 2) == 0
        assert list(planes[3].raw) == luma * 2, f"{name}: the library reads another luma than is drawn"
        for chroma, fully in (("U", 2), ("V", 0)):  # which of red, green and blue it moves most
            strong = bytes(255 if part == chroma else 128 for part in parts)
            assert getattr(library, f"Orv{name.upper()}ToRGBYPlanes")(*planes, strong * 2, pixels, 2) == 0
            assert set(planes[fully].raw) == {255} and set(planes[2 - fully].raw) == {128}, f"{name}: {chroma}"


def check_bayer():
    rgb = {"R": 200, "G": 100, "B": 50}
    for name, colours in layouts.BAYER.items():
        pattern = ["RGGB", "GBRG", "GRBG", "BGGR"].index(colours)
        picture = ctypes.create_string_buffer(12)
        assert library.OrvRaw8ToBGR(picture, bytes(rgb[colour] for colour in colours), 2, 2, pattern) == 0
        assert picture.raw == bytes([50, 100, 200]) * 4, name


def check_cygm():
    # A green subject: only magenta cells do not see it. In any other order of lines or cells it is not green all over.
    cells = [0 if part == "Mg" else 255 for line in layouts.CYGM_MEMORY for part in layouts.CYGM_LINES[line] * 2]
    picture = ctypes.create_string_buffer(16 * 3)
    assert library.OrvIRaw8CYGMToBGR(picture, bytes(cells), 4, 4) == 0
    blue, green, red = (set(picture.raw[channel::3]) for channel in range(3))
    assert max(blue | red) < 50 and green == {255}, "CYGM"


random.seed(1)
check_drawings()
check_bits()
check_yuv()
check_bayer()
check_cygm()
