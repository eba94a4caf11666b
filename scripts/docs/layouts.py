#!/usr/bin/env python3
"""Draws how pixels lie in memory, to scale: every bit is a cell. The drawings are made from the tables below, and
tests/docs/layouts_test.py packs samples by the same tables and asks the library what it sees.

    scripts/docs/layouts.py [folder]        docs/pictures unless said otherwise
"""
import pathlib
import sys

INK, FAINT, PAPER, RULE = "#1b1f24", "#59636e", "#ffffff", "#8c959f"
UNUSED = "#eef1f4"
PIXELS = ["#9fd0f5", "#ffd08a", "#b5e3b0", "#f3b6cf"]  # neighbouring pixels
PARTS = {"R": "#ff9d96", "G": "#9fdc9a", "B": "#9cc3ff", "U": "#b9bdf7", "V": "#f5b3c8", "Y": "#f4f4f4",
         "Cy": "#8fe3ea", "Ye": "#fff08a", "Gr": "#9fdc9a", "Mg": "#f3a8e6"}


def stream(pixels, bits):
    """A little-endian bit stream: for each byte, from bit 7 down to bit 0, the (pixel, bit) that it holds."""
    order = [(pixel, bit) for pixel in range(pixels) for bit in range(bits)]
    return [order[start:start + 8][::-1] for start in range(0, len(order), 8)]


def word(bits, shift, big_endian=False):
    """A sample of so many bits in a 16-bit word, moved up by shift."""
    places = [(0, place - shift) if 0 <= place - shift < bits else None for place in range(15, -1, -1)]
    return [places[:8], places[8:]] if big_endian else [places[8:], places[:8]]


LAYOUTS = {
    "10p": stream(4, 10),
    "12p": stream(2, 12),
    "12packed": [[(0, bit) for bit in range(11, 3, -1)],
                 [(1, bit) for bit in range(3, -1, -1)] + [(0, bit) for bit in range(3, -1, -1)],
                 [(1, bit) for bit in range(11, 3, -1)]],
    "word-low": word(12, 0),
    "word-high": word(12, 4),
    "word-big-endian": word(12, 0, big_endian=True),
}
# One letter and one pixel number for each byte; chroma belongs to all pixels of its group.
YUV = {
    "yuv411": ["U", "Y0", "Y1", "V", "Y2", "Y3"],
    "yuv422": ["U", "Y0", "V", "Y1"],
    "yuv444": ["U", "Y0", "V"],
}
BAYER = {"BayerRG": "RGGB", "BayerGR": "GRBG", "BayerGB": "GBRG", "BayerBG": "BGGR"}
CYGM_LINES = [["Cy", "Ye"], ["Gr", "Mg"], ["Cy", "Ye"], ["Mg", "Gr"]]
CYGM_MEMORY = [1, 3, 0, 2]  # the lines of the image in the order in which they are stored, field after field


class Drawing:
    def __init__(self):
        self.shapes = []
        self.right = self.bottom = 0

    def box(self, x, y, width, height, fill, label="", size=12, weight="normal"):
        self.shapes.append(f'<rect x="{x}" y="{y}" width="{width}" height="{height}" fill="{fill}" stroke="{RULE}"/>')
        if label != "":
            self.text(x + width / 2, y + height / 2 + size * 0.36, label, size, weight=weight)
        self.right, self.bottom = max(self.right, x + width), max(self.bottom, y + height)

    def text(self, x, y, label, size=12, anchor="middle", colour=INK, weight="normal"):
        self.shapes.append(f'<text x="{x:g}" y="{y:g}" font-size="{size}" text-anchor="{anchor}" fill="{colour}" '
                           f'font-weight="{weight}">{label}</text>')
        # Widths of text are only known to who draws it: six tenths of its height per letter is enough.
        half = len(str(label)) * size * 0.6
        self.right = max(self.right, x + {"start": half, "middle": half / 2, "end": 0}[anchor])
        self.bottom = max(self.bottom, y + size * 0.3)

    def frame(self, x, y, width, height):
        self.shapes.append(f'<rect x="{x}" y="{y}" width="{width}" height="{height}" fill="none" stroke="{INK}" '
                           'stroke-width="2"/>')

    def svg(self, title):
        width, height = round(self.right + 16), round(self.bottom + 14)
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}" '
                f'font-family="DejaVu Sans, Verdana, Arial, sans-serif" role="img">\n<title>{title}</title>\n'
                f'<rect width="{width}" height="{height}" rx="8" fill="{PAPER}"/>\n' + "\n".join(self.shapes) + "\n</svg>\n")


CELL, GAP, TALL = 20, 10, 30


def draw_bytes(drawing, layout, left, top, name=str):
    for number, byte in enumerate(layout):
        x = left + number * (8 * CELL + GAP)
        drawing.text(x + 4 * CELL, top - 18, f"byte {number}", 12, weight="bold")
        for column, place in enumerate(byte):
            drawing.text(x + (column + 0.5) * CELL, top - 4, str(7 - column), 9, colour=FAINT)
            fill = UNUSED if place is None else PIXELS[place[0]]
            drawing.box(x + column * CELL, top, CELL, TALL, fill, "" if place is None else place[1], 11)
        drawing.frame(x, top, 8 * CELL, TALL)
        # The pixels that share the byte, under their bits.
        column = 0
        while column < 8:
            end = column
            while end < 8 and (byte[end] and byte[end][0]) == (byte[column] and byte[column][0]):
                end += 1
            if byte[column]:
                high, low = byte[column][1], byte[end - 1][1]
                middle = x + (column + end) / 2 * CELL
                drawing.text(middle, top + TALL + 15, name(byte[column][0]), 10.5)
                drawing.text(middle, top + TALL + 28, f"{high}..{low}" if high > low else f"{high}", 9.5, colour=FAINT)
            column = end


def bits(layout, title, note):
    drawing = Drawing()
    draw_bytes(drawing, layout, 16, 66, lambda pixel: f"pixel {pixel}")
    drawing.text(16, 22, note, 12, "start", FAINT)
    return drawing.svg(title)


def words():
    drawing = Drawing()
    rows = [("word-low", "sample in the low bits, little-endian: Mono12 and Bayer..12 as cameras send them"),
            ("word-high", "sample in the high bits (shifted by 4), little-endian: Alignment 0"),
            ("word-big-endian", "sample in the low bits, big-endian: Endianness 1")]
    for number, (name, label) in enumerate(rows):
        top = 66 + number * 128
        drawing.text(16, top - 44, label, 12, "start", FAINT)
        draw_bytes(drawing, LAYOUTS[name], 16, top, lambda pixel: "sample")
    return drawing.svg("A 12-bit sample in a 16-bit word: low bits, high bits, big-endian")


def yuv():
    drawing = Drawing()
    names = {"yuv411": "YUV 4:1:1, 12 bits per pixel", "yuv422": "YUV 4:2:2, 16 bits per pixel",
             "yuv444": "YUV 4:4:4, 24 bits per pixel"}
    width = 8 * CELL * 0.5
    for row, (key, parts) in enumerate(YUV.items()):
        top = 48 + row * 104
        drawing.text(16, top - 24, names[key], 12, "start", weight="bold")
        for number, part in enumerate(parts):
            x = 16 + number * (width + 4)
            drawing.text(x + width / 2, top - 6, f"byte {number}", 10, colour=FAINT)
            drawing.box(x, top, width, TALL, PARTS[part[0]], part[0], 13, "bold")
            pixels = sum(part[0] == "Y" for part in parts)
            whose = f"pixel {part[1:]}" if part[1:] else {1: "pixel 0", 2: "pixels 0, 1", 4: "pixels 0 to 3"}[pixels]
            drawing.text(x + width / 2, top + TALL + 14, whose, 9.5, colour=FAINT)
    return drawing.svg("The bytes of YUV 4:1:1, 4:2:2 and 4:4:4")


def mosaics():
    drawing = Drawing()
    cell = 34
    for number, (name, colours) in enumerate(BAYER.items()):
        left = 16 + number * (4 * cell + 28)
        drawing.text(left, 24, f"{name}..", 13, "start", weight="bold")
        for y in range(4):
            for x in range(4):
                colour = colours[y % 2 * 2 + x % 2]
                drawing.box(left + x * cell, 36 + y * cell, cell, cell, PARTS[colour], colour, 13)
        drawing.frame(left, 36, 2 * cell, 2 * cell)
        drawing.text(left, 36 + 4 * cell + 18, f"OrvBayerPattern{colours}", 10.5, "start", FAINT)
    return drawing.svg("The four phases of a Bayer mosaic, named by the first two samples of the first line")


def cygm():
    drawing = Drawing()
    width, height = 40, 30
    for title, left, order in (("the image", 70, [0, 1, 2, 3]), ("in memory", 380, CYGM_MEMORY)):
        drawing.text(left, 24, title, 12, "start", weight="bold")
        for row, line in enumerate(order):
            # The second field stands apart.
            y = 36 + row * height + (14 if title == "in memory" and row > 1 else 0)
            drawing.text(left - 8, y + height * 0.62, f"line {line}", 10.5, "end", FAINT)
            for x in range(4):
                part = CYGM_LINES[line][x % 2]
                drawing.box(left + x * width, y, width, height, PARTS[part], part, 11.5)
            if title == "in memory" and row % 2 == 0:
                field = ("first field: 1, 3, 5 ...", "second field: 0, 2, 4 ...")[row // 2]
                drawing.text(left + 4 * width + 10, y + height + 4, field, 10.5, "start", FAINT)
    return drawing.svg("A complementary-colour mosaic, as the image has it and as two fields in memory")


def pfnc_code():
    drawing = Drawing()
    parts = [("0x", "", UNUSED, 1.1), ("01", "one sample per pixel\n(02: several)", PIXELS[0], 1.7),
             ("0C", "bits of a pixel in memory:\n0C is 12", PIXELS[1], 1.8),
             ("0059", "the number of\nBayerRG12p", PIXELS[2], 1.8)]
    x, unit = 40, 90
    for digits, meaning, fill, width in parts:
        wide = unit * width * 1.15
        drawing.box(x, 16, wide, 40, fill, digits, 22, "bold")
        for line, text in enumerate(meaning.split("\n")):
            drawing.text(x + wide / 2, 74 + line * 15, text, 10.5, colour=FAINT)
        x += wide
    return drawing.svg("The PFNC code of BayerRG12p, 0x010C0059, in its parts")


def drawings():
    scale = "to scale: a cell is a bit, bit 7 of a byte on the left; numbers are bits of the sample"
    return {
        "layout-10p.svg": bits(LAYOUTS["10p"], "10p: four 10-bit samples in five bytes", scale),
        "layout-12p.svg": bits(LAYOUTS["12p"], "12p: two 12-bit samples in three bytes", scale),
        "layout-12packed.svg": bits(LAYOUTS["12packed"], "12Packed: two 12-bit samples in three bytes", scale),
        "layout-words.svg": words(),
        "layout-yuv.svg": yuv(),
        "layout-bayer.svg": mosaics(),
        "layout-cygm.svg": cygm(),
        "pfnc-code.svg": pfnc_code(),
    }


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parents[2] / "docs/pictures")
    for name, svg in drawings().items():
        (folder / name).write_text(svg)


if __name__ == "__main__":
    main()
