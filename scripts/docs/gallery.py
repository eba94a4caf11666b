#!/usr/bin/python3
"""The demosaic methods side by side: photographs are made into mosaics, every method makes pictures of these, and the
pictures are compared with the photographs. Writes the crops and the table of docs/demosaic.md.

    scripts/docs/gallery.py [--build build/release] [--photos folder]

Needs the packages of 'scripts/packages.sh docs'. Photographs are <name>.png or photo_<name>.png of the folder, which is
scikit-image's own unless said otherwise; a sensor's frame is rose_BayerRG14lsb_768x512.raw, if it is there. The chart is
ours. What is missing is left as it is.
"""
import argparse
import ctypes
import pathlib
import re
import subprocess
import tempfile
import time

import cv2
import numpy as np
import skimage
from PIL import Image, ImageDraw, ImageFont
from scipy.ndimage import shift, uniform_filter
from skimage.color import deltaE_ciede2000, rgb2lab
from skimage.metrics import peak_signal_noise_ratio, structural_similarity

ROOT = pathlib.Path(__file__).parents[2]
PHOTOS = ["coffee", "chelsea", "astronaut"]
BORDER = 8  # pixels that no figure counts: methods differ in what they do there
HALF = (0.5, 0.5)


class Method:
    """How a mosaic becomes a picture, and where: output (y, x) shows what the scene has at (y, x) + place."""

    def __init__(self, name, convert, place=(0, 0)):
        self.name, self.convert, self.place = name, convert, place


def our(library, suffix):
    call = getattr(library, f"OrvRaw8ToBGR{suffix}")

    def convert(mosaic, picture=None):
        height, width = mosaic.shape
        # Some methods overwrite their source. Only they get a copy, which counts.
        source = mosaic.copy() if "Int" in suffix else mosaic
        picture = np.empty((height, width, 3), np.uint8) if picture is None else picture
        code = call(picture.ctypes.data_as(ctypes.c_void_p), source.ctypes.data_as(ctypes.c_void_p), width, height, 0)
        if code != 0:
            raise SystemExit(f"{call.__name__}: {code}")
        return picture[..., ::-1]
    return convert


def by_opencv(code):
    return lambda mosaic, picture=None: cv2.cvtColor(mosaic, code, picture)


def methods(library):
    # OpenCV names a mosaic by the second and third sample of its second line: BG is what others call RGGB. Its VNG (4.6)
    # writes every line two lines higher than it belongs.
    return [
        Method("2x2", our(library, ""), HALF),
        Method("3x3", our(library, "_3x3")),
        Method("LCAA", our(library, "_IntLCAA"), HALF),
        Method("LCAAV", our(library, "_IntLCAAV"), HALF),
        Method("YUV422", our(library, "_IntYUV422"), HALF),
        Method("OpenCV bilinear", by_opencv(cv2.COLOR_BayerBG2RGB)),
        Method("OpenCV VNG", by_opencv(cv2.COLOR_BayerBG2RGB_VNG), (2, 0)),
        Method("OpenCV edge-aware", by_opencv(cv2.COLOR_BayerBG2RGB_EA)),
    ]


def check_names():
    """What docs/coming-from.md says of OpenCV's names."""
    for first_line, theirs in (("RGGB", "BG"), ("GRBG", "GB"), ("GBRG", "GR"), ("BGGR", "RG")):
        if getattr(cv2, f"COLOR_Bayer{theirs}2BGR") != getattr(cv2, f"COLOR_Bayer{first_line}2BGR"):
            raise SystemExit(f"OpenCV's Bayer{theirs} is not {first_line}")


def even(picture):
    return picture[:picture.shape[0] // 2 * 2, :picture.shape[1] // 2 * 2, :3]


def load_photos(folder):
    for name in PHOTOS:
        found = [path for path in (folder / f"{name}.png", folder / f"photo_{name}.png") if path.exists()]
        if found:
            yield name, even(np.asarray(Image.open(found[0]).convert("RGB")))


def make_chart(tool):
    with tempfile.TemporaryDirectory() as folder:
        frame = pathlib.Path(folder) / "chart.raw"
        subprocess.run([tool, "chart", "-f", "RGB8", "-s", "640x480", frame], check=True)
        return np.frombuffer(frame.read_bytes(), np.uint8).reshape(480, 640, 3)


def mosaic_of(picture):
    mosaic = picture[..., 1].copy()
    mosaic[0::2, 0::2] = picture[0::2, 0::2, 0]
    mosaic[1::2, 1::2] = picture[1::2, 1::2, 2]
    return mosaic


def moved(truth, place):
    if place == (0, 0):
        return truth
    back = [(-place[0], -place[1])] * 3
    channels = [shift(truth[..., c].astype(float), back[c], order=5, mode="mirror") for c in range(3)]
    return np.clip(np.stack(channels, -1), 0, 255).round().astype(np.uint8)


def inner(picture):
    return picture[BORDER:-BORDER, BORDER:-BORDER]


def compare(truth, picture, place):
    """PSNR as the picture lies; then PSNR, SSIM and colour error where its content is."""
    there, picture = inner(moved(truth, place)), inner(picture)
    return (peak_signal_noise_ratio(inner(truth), picture), peak_signal_noise_ratio(there, picture),
            structural_similarity(there, picture, channel_axis=2, gaussian_weights=True, sigma=1.5,
                                  use_sample_covariance=False),
            deltaE_ciede2000(rgb2lab(there), rgb2lab(picture)).mean())


FIELDS = ["upright 1", "2", "3", "4", "lying 1", "2", "slanted /", "\\"]


def false_colour(picture):
    """Mean chroma in each of the fields where the chart has nothing but black and white lines."""
    lab = rgb2lab(picture[428:472])
    chroma = np.hypot(lab[..., 1], lab[..., 2])
    return [chroma[:, 80 * field + BORDER:80 * (field + 1) - BORDER].mean() for field in range(len(FIELDS))]


def false_colours(made):
    lines = ["| | " + " | ".join(FIELDS) + " |", "|---|" + "--:|" * len(FIELDS)]
    for name, picture in made:
        lines.append(f"| {name} | " + " | ".join(f"{chroma:.0f}" for chroma in false_colour(picture)) + " |")
    return "\n".join(lines)


def times(all_methods, photo):
    """CPU time of each method on one thread, as a multiple of the first's: lower quartiles of rounds that take turns."""
    cv2.setNumThreads(1)
    mosaic = mosaic_of(even(np.tile(photo, (5, 4, 1))[:2048, :2448]))
    picture = np.zeros((*mosaic.shape, 3), np.uint8)
    rounds = np.empty((25, len(all_methods)))
    for turn in rounds:
        for number, method in enumerate(all_methods):
            start = time.process_time()
            method.convert(mosaic, picture)
            turn[number] = time.process_time() - start
    quartiles = np.percentile(rounds, 25, axis=0)
    return quartiles / quartiles[0]


def interesting(pictures, width, height):
    """The window in which the methods differ most."""
    spread = np.std(np.stack([picture.astype(np.float32) for picture in pictures]), axis=0).sum(-1)
    score = uniform_filter(spread, (height, width))
    top, left = height // 2 + BORDER, width // 2 + BORDER
    y, x = np.unravel_index(score[top:-top, left:-left].argmax(), score[top:-top, left:-left].shape)
    return int(x) + left - width // 2, int(y) + top - height // 2


def sheet(tiles, window, scale, columns, path):
    """The same window of every picture, enlarged pixel by pixel, with its name."""
    x, y, width, height = window
    title, gap = 22, 6
    font = ImageFont.truetype("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 14)
    across, down = width * scale + gap, height * scale + title + gap
    rows = -(-len(tiles) // columns)
    result = Image.new("RGB", (columns * across + gap, rows * down + gap), "white")
    draw = ImageDraw.Draw(result)
    for number, (name, picture) in enumerate(tiles):
        left, top = gap + number % columns * across, gap + number // columns * down
        draw.text((left + 2, top + 2), name, "black", font)
        crop = Image.fromarray(np.ascontiguousarray(picture[y:y + height, x:x + width]))
        result.paste(crop.resize((width * scale, height * scale), Image.NEAREST), (left, top + title))
    result.save(path, optimize=True)


def rose(frame, tool, all_methods, pictures):
    """A sensor's own samples: linear, with a black level, and no truth to compare with."""
    samples = np.fromfile(frame, "<u2").reshape(512, 768).astype(float) - 600
    samples[0::2, 0::2] *= 2.0  # daylight: red, blue
    samples[1::2, 1::2] *= 1.4
    mosaic = (np.clip(samples / np.percentile(samples, 99.8), 0, 1) ** (1 / 2.2) * 255).astype(np.uint8)
    made = [(method.name, method.convert(mosaic)) for method in all_methods]
    window = (*interesting([picture for _, picture in made[:5]], 60, 45), 60, 45)
    sheet([("the samples", np.dstack([mosaic] * 3)), *made], window, 4, 3, pictures / "demosaic-rose.png")

    both = Image.new("RGB", (776, 256), "white")
    for number, looks in enumerate(([], ["--auto"])):
        with tempfile.NamedTemporaryFile(suffix=".png") as picture:
            subprocess.run([tool, "convert", *looks, "-f", "BayerRG14", "-s", "768x512", "-t", "RGB24", frame, picture.name],
                           check=True)
            both.paste(Image.open(picture.name).resize((384, 256), Image.LANCZOS), (number * 392, 0))
    both.save(pictures / "linear.jpg", quality=88)


def table(names, all_methods, figures, durations):
    head = "| | moved by | " + " | ".join(names) + " | mean | PSNR, not moved | time |"
    lines = [head, "|---|---|" + ":-:|" * len(names) + ":-:|" + "--:|" * 2]
    for method, duration in zip(all_methods, durations):
        rows = [figures[method.name, name] for name in names]
        place = {(0, 0): "0, 0", HALF: "½, ½", (2, 0): "0, 2"}[method.place]
        mean = np.mean(rows, axis=0)
        cells = [f"{psnr:.1f} / {ssim:.3f} / {error:.1f}" for _, psnr, ssim, error in [*rows, mean]]
        lines.append(f"| {method.name} | {place} | " + " | ".join(cells) + f" | {mean[0]:.1f} | {duration:.1f} |")
    return "\n".join(lines)


def replace_generated(page, mark, text):
    pattern = rf"(<!-- generated: {mark} -->\n).*?(<!-- end -->)"
    new, count = re.subn(pattern, lambda match: match[1] + text + "\n" + match[2], page.read_text(), flags=re.S)
    if count != 1:
        raise SystemExit(f"{page} has no place for the {mark}")
    page.write_text(new)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/release")
    parser.add_argument("--photos", type=pathlib.Path, default=pathlib.Path(skimage.__file__).parent / "data")
    arguments = parser.parse_args()
    pictures = ROOT / "docs/pictures"
    all_methods = methods(ctypes.CDLL(str(arguments.build / "src/liborvella.so.0")))
    check_names()

    tool = arguments.build / "tools/orvella"
    chart = make_chart(tool)
    made = [(method.name, method.convert(mosaic_of(chart))) for method in all_methods]
    replace_generated(ROOT / "docs/demosaic.md", "false colour", false_colours(made))
    sheet([("the chart", chart), *made], (462, 424, 60, 45), 4, 3, pictures / "demosaic-chart.png")

    figures, names = {}, []
    for name, photo in load_photos(arguments.photos):
        names.append(name)
        made = [(method.name, method.convert(mosaic_of(photo))) for method in all_methods]
        for method, (_, picture) in zip(all_methods, made):
            figures[method.name, name] = compare(photo, picture, method.place)
        aligned = [picture for method, (_, picture) in zip(all_methods, made) if method.place == (0, 0)]
        x, y = interesting([photo, *aligned, made[3][1]], 60, 45)
        sheet([("the photograph", photo), *made], (x, y, 60, 45), 4, 3, pictures / f"demosaic-{name}.png")
        print(f"{name}: crop at {x}, {y}")
    frame = arguments.photos / "rose_BayerRG14lsb_768x512.raw"
    if frame.exists():
        rose(frame, tool, all_methods, pictures)
    if names:
        replace_generated(ROOT / "docs/demosaic.md", "figures",
                          table(names, all_methods, figures, times(all_methods, photo)))


if __name__ == "__main__":
    main()
