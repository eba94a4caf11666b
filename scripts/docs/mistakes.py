#!/usr/bin/python3
"""What a frame looks like when it is taken for something that it is not: the chart, converted with wrong options.

    scripts/docs/mistakes.py [build/release]        needs Debian's python3-pil
"""
import pathlib
import subprocess
import sys
import tempfile

from PIL import Image, ImageDraw, ImageFont

ROOT = pathlib.Path(__file__).parents[2]
TILE = (200, 150)
GAP, TITLE = 8, 22

# What is shown below the title; how the chart is made; what it is then taken for.
MISTAKES = [
    ("right", "BayerRG12p", "-f BayerRG12p"),
    ("right size, wrong width", "BayerRG12p", "-f BayerRG12p -s 208x144"),
    ("BayerRG taken for BayerGR", "BayerRG12p", "-f BayerGR12p"),
    ("BayerRG taken for BayerBG", "BayerRG12p", "-f BayerBG12p"),
    ("12p taken for 12Packed", "BayerRG12p", "-f BayerRG12Packed"),
    ("12Packed taken for 12p", "BayerRG12Packed", "-f BayerRG12p"),
    ("12p taken for 8 bits", "BayerRG12p", "-f BayerRG8"),
    ("mosaic taken for grey", "BayerRG8", "-f Mono8"),
    ("12 bits taken for 16 bits", "BayerRG12", "-f BayerRG16"),
    ("big-endian taken for little", "Mono12 --big-endian", "-f Mono12 -t Mono8"),
    ("4:2:2 taken for Mono16", "Yuv422", "-f Mono16 -t Mono8"),
    ("RGB taken for BGR", "RGB8", "-f BGR8"),
]


# Bits of a pixel in memory.
BITS = {"BayerRG12p": 12, "BayerGR12p": 12, "BayerBG12p": 12, "BayerRG12Packed": 12, "BayerRG8": 8, "Mono8": 8,
        "BayerRG16": 16, "Mono12": 16, "Mono16": 16, "BGR8": 24}


def make(tool, folder, source, taken_for):
    frame, picture = folder / "frame.raw", folder / "picture.png"
    options = taken_for.split()
    if "-s" not in options:
        options += ["-s", f"{TILE[0]}x{TILE[1]}"]
    width, height = map(int, options[options.index("-s") + 1].split("x"))
    subprocess.run([tool, "chart", "-f", *source.split(), "-s", f"{TILE[0]}x{TILE[1]}", frame], check=True)
    frame.write_bytes(frame.read_bytes()[:width * height * BITS[options[1]] // 8])
    subprocess.run([tool, "convert", *options, frame, picture], check=True)
    return Image.open(picture).convert("RGB").crop((0, 0, *TILE))


def main():
    tool = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build/release") / "tools/orvella"
    font = ImageFont.truetype("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 12)
    columns, across, down = 4, TILE[0] + GAP, TILE[1] + TITLE + GAP
    rows = -(-len(MISTAKES) // columns)
    sheet = Image.new("RGB", (columns * across + GAP, rows * down + GAP), "white")
    draw = ImageDraw.Draw(sheet)
    with tempfile.TemporaryDirectory() as folder:
        for number, (title, source, taken_for) in enumerate(MISTAKES):
            left, top = GAP + number % columns * across, GAP + number // columns * down
            draw.text((left + 1, top + 3), title, "black", font)
            sheet.paste(make(tool, pathlib.Path(folder), source, taken_for), (left, top + TITLE))
    sheet.save(ROOT / "docs/pictures/mistakes.png", optimize=True)


if __name__ == "__main__":
    main()
