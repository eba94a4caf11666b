"""The viewer in a real browser. Wants ORVELLA, the converter, and MODULE, the folder with the built pages; AXE, if set, is
axe-core's script."""

import functools
import http.server
import os
import pathlib
import shlex
import struct
import subprocess
import tempfile
import threading
import unittest
import zlib

from browser import Browser
from selenium.webdriver.common.keys import Keys

ORVELLA = os.environ["ORVELLA"]
MODULE = pathlib.Path(os.environ["MODULE"])
PAGE = (MODULE / "orvella-viewer.html").as_uri()


def unpack_png(content):
    """Width, height and R G B of every pixel, of a file with 8 bits, whose rows are plain or differences to those above."""
    at, data = 8, b""
    while at < len(content):
        length, kind = struct.unpack_from(">I4s", content, at)
        if kind == b"IHDR":
            width, height, bits, colour = struct.unpack_from(">IIBB", content, at + 8)
        if kind == b"IDAT":
            data += content[at + 8:at + 8 + length]
        at += 12 + length
    assert bits == 8
    rows, channels = zlib.decompress(data), {0: 1, 2: 3}[colour]
    above, pixels = bytes(width * channels), bytearray()
    for start in range(0, len(rows), width * channels + 1):
        row = rows[start + 1:start + 1 + width * channels]
        if rows[start] == 2:
            row = bytes((a + b) & 255 for a, b in zip(row, above))
        pixels += row
        above = row
    return width, height, bytes(pixels) if channels == 3 else bytes(value for value in pixels for _ in range(3))


class Viewer(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = Browser(PAGE)
        cls.addClassCleanup(cls.browser.close)
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.folder = pathlib.Path(scratch.name)
        downloads = {"behavior": "allow", "downloadPath": str(cls.folder / "saved")}
        cls.browser.command("Browser.setDownloadBehavior", **downloads)

    def setUp(self):
        self.browser.resize(1280, 800)
        self.browser.open()

    def tearDown(self):
        self.assertEqual(self.browser.log(), [])

    def chart(self, format, size="64x48", name=None):
        path = self.folder / (name or f"a_{format}_{size}.raw")
        path.parent.mkdir(exist_ok=True)
        subprocess.run([ORVELLA, "chart", "-f", format, "-s", size, path], check=True)
        return path

    def show(self, *paths):
        self.browser.after(lambda: self.browser.drop(*paths))

    def value(self, name):
        return self.browser.run("return document.forms[0].elements[arguments[0]].value", name)

    def copied_command(self):
        self.browser.run("document.querySelector('#done').textContent = ''")
        self.browser.element("#copy-command").click()
        self.browser.wait_for("document.querySelector('#done').textContent.includes('orvella convert')")
        text = self.browser.text("#done")
        return shlex.split(text[text.index("orvella convert"):])[1:]

    def test_the_canvas_and_the_saved_file_are_the_converters(self):
        looks = [{}, {"auto": False}, {"exposure": "0.5", "black": "2", "low": "1", "gamma": "2.2", "matrix": "grey"},
                 {"flip": "90"}]
        for format in ["Mono12p", "Mono16", "BayerRG8", "BayerGB12p", "BayerBG12Packed", "Bgr8", "Yuv422", "Cygm8"]:
            self.browser.open()
            path = self.chart(format)
            self.show(path)
            for look in looks + ([{"debayer": "3x3"}] if format.startswith("Bayer") else []):
                if format.startswith("Mono"):
                    look = {name: value for name, value in look.items() if name != "matrix"}
                for name, value in look.items():
                    self.browser.after(lambda: self.browser.set(name, value))
                command = self.copied_command()
                subprocess.run([ORVELLA, *command], check=True, cwd=self.folder)
                with self.subTest(command=command):
                    wanted = unpack_png((self.folder / command[-1]).read_bytes())
                    seen = self.browser.pixels()
                    self.assertEqual(seen[:2], wanted[:2])
                    self.assertEqual(sum(a != b for a, b in zip(seen[2], wanted[2])), 0)
        saved = self.folder / "saved" / "a_Cygm8_64x48.png"
        self.browser.element("#save").click()
        self.browser.wait_for("document.querySelector('#done').textContent.startsWith('Saved')")
        for _ in range(100):
            if saved.exists():
                break
            threading.Event().wait(0.05)
        self.assertTrue(unpack_png(saved.read_bytes()) == wanted)

    def test_headers_say_what_files_hold(self):
        raw = self.chart("Mono12")
        for name, options in [("deep.pgm", []), ("deep.tif", []), ("colour.ppm", ["-t", "RGB24"]), ("colours.tif", ["-t", "BGR48"]), ("grey.tiff", ["-t", "Mono8"])]:
            subprocess.run([ORVELLA, "convert", *options, raw, self.folder / name], check=True)
        header = b"{'descr': '<u2', 'fortran_order': False, 'shape': (2, 48, 64), }\n"
        (self.folder / "two.npy").write_bytes(b"\x93NUMPY\1\0" + struct.pack("<H", len(header)) + header + 2 * raw.read_bytes())
        for name, format in [("deep.pgm", "Mono16"), ("deep.tif", "Mono16"), ("colour.ppm", "Rgb8"), ("colours.tif", "Rgb16"), ("grey.tiff", "Mono8"),
                             ("two.npy", "Mono16")]:
            self.browser.open()
            self.show(self.folder / name)
            command = self.copied_command()
            subprocess.run([ORVELLA, *command], check=True, cwd=self.folder)
            with self.subTest(command=command):
                self.assertEqual(self.value("format"), format)
                self.assertTrue(self.browser.pixels() == unpack_png((self.folder / command[-1]).read_bytes()))
        (self.folder / "bad.tif").write_bytes(b"II*\0\xff\xff\0\0")
        self.show(self.folder / "bad.tif")
        self.assertIn("The TIFF file ends early", self.browser.text("#message"))

    def test_formats_and_sizes_are_guessed_and_can_be_changed(self):
        self.show(self.chart("BayerGR12p", "640x480", "unknown.bin"))
        self.assertIn(self.value("format"), ["BayerGR12p", "BayerGB12p"])
        self.assertEqual((self.value("width"), self.value("height")), ("640", "480"))
        self.browser.after(lambda: self.browser.set("format", "Mono12p"))
        self.browser.after(lambda: self.browser.set("height", "240"))
        self.assertEqual(self.browser.pixels()[:2], (640, 240))
        self.assertIn("frame 1 of 2", self.browser.text("#position"))
        self.assertIn("--frame", self.copied_command())
        self.browser.after(lambda: self.browser.set("guess", "0"))
        self.assertEqual(self.browser.pixels()[:2], (640, 480))

    def test_what_is_wrong_is_said(self):
        (self.folder / "short_Mono8_64x48.raw").write_bytes(bytes(100))
        (self.folder / "empty.raw").write_bytes(b"")
        for name, words in [("short_Mono8_64x48.raw", "Expected 3072 bytes for Mono8 at 64x48, found 100"),
                            ("empty.raw", "found 0")]:
            self.show(self.folder / name)
            self.assertIn(words, self.browser.text("#message"))
        self.show(self.chart("Mono8"))
        self.assertFalse(self.browser.element("#message").is_displayed())
        self.browser.after(lambda: self.browser.set("gamma", "x"))
        self.assertIn("--gamma takes", self.browser.text("#message"))

    def test_steps_through_files_and_frames(self):
        several = self.chart("Mono8", name="many/b_Mono8_64x48.raw")
        several.write_bytes(several.read_bytes() * 2)
        self.chart("BayerRG8", "32x16", name="many/a10_BayerRG8_32x16.raw")
        self.chart("Rgb8", "16x16", name="many/a9_Rgb8_16x16.raw")
        self.browser.after(lambda: self.browser.element("#files").send_keys(str(several)))
        self.assertEqual(self.browser.text("#position"), "b_Mono8_64x48.raw · frame 1 of 2")
        self.browser.after(lambda: self.browser.element("#folder").send_keys(str(self.folder / "many")))
        chosen = self.browser.text("#position")
        self.show(self.folder / "many")
        self.assertEqual(self.browser.text("#position"), chosen)
        seen = [self.browser.text("#position")]
        for _ in range(3):
            self.browser.after(lambda: self.browser.element("#next").click())
            seen.append(self.browser.text("#position"))
        names = ["1 of 3 · a9", "2 of 3 · a10", "3 of 3 · b", "3 of 3 · b"]
        self.assertTrue(all(text.startswith(name) for text, name in zip(seen, names)), seen)
        self.assertTrue(seen[2].endswith("frame 1 of 2") and seen[3].endswith("frame 2 of 2"), seen)
        self.assertFalse(self.browser.element("#next").is_enabled())
        self.browser.after(lambda: self.browser.element(".pane").send_keys(Keys.PAGE_UP))
        self.assertEqual(self.browser.text("#position"), seen[2])

    def test_a_link_holds_the_settings_of_both_sides(self):
        path = self.chart("BayerRG12p", "64x48", "nameless")
        self.browser.open("#format=BayerRG12p&size=64x48&exposure=2&compare=true&right.debayer=3x3&right.whiteBalance=2,1,1.5")
        self.show(path)
        left, right = self.browser.pixels(0), self.browser.pixels(1)
        self.assertTrue(left != right)
        link = self.browser.run("return location.hash")
        self.browser.open(link)
        self.show(path)
        self.assertTrue((self.browser.pixels(0), self.browser.pixels(1)) == (left, right))
        self.browser.after(lambda: self.browser.element("#compare").click())
        self.assertNotIn("right", self.browser.run("return location.hash"))

    def test_the_keyboard_reads_pixels_and_zooms(self):
        (self.folder / "p_BayerRG8_4x4.raw").write_bytes(bytes(range(16)))
        self.show(self.folder / "p_BayerRG8_4x4.raw")
        pane = self.browser.element(".pane")
        for key in [Keys.ARROW_LEFT] * 4 + [Keys.ARROW_UP] * 4 + [Keys.ARROW_RIGHT, Keys.ARROW_DOWN, Keys.ARROW_DOWN]:
            pane.send_keys(key)
        self.browser.wait_for("document.querySelector('#readout').textContent.startsWith('1, 2')")
        self.assertIn("sensor G 9 ", self.browser.text("#readout"))
        pane.send_keys("1")
        self.assertEqual(self.browser.run("return document.querySelector('#scale').value"), "100 %")
        pane.send_keys("++")
        self.assertEqual(self.browser.run("return document.querySelector('#scale').value"), "400 %")

    def test_two_fingers_zoom(self):
        self.show(self.chart("Rgb8"))
        self.browser.element(".pane").send_keys("1")
        scale, left = "return document.querySelector('#scale').value", 300
        for kind, apart in [("touchStart", 100), ("touchMove", 150), ("touchMove", 200), ("touchEnd", None)]:
            fingers = [{"x": left, "y": 300, "id": 0}, {"x": left + apart, "y": 300, "id": 1}] if apart else []
            self.browser.command("Input.dispatchTouchEvent", type=kind, touchPoints=fingers)
        self.assertEqual(self.browser.run(scale), "200 %")

    def test_nothing_stands_in_the_way_of_anybody(self):
        if "AXE" not in os.environ:
            self.skipTest("axe-core is missing")
        axe = pathlib.Path(os.environ["AXE"]).read_text()
        frame = self.chart("BayerRG8")

        def check(what):
            self.browser.run(axe)
            found = self.browser.driver.execute_async_script(
                "const done = arguments[0]; axe.run().then(({ violations }) => done(violations))")
            self.assertEqual([(rule["id"], [node["html"] for node in rule["nodes"]]) for rule in found], [], what)

        for scheme in ["light", "dark"]:
            self.browser.command("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
            self.browser.open()
            check(f"empty, {scheme}")
            self.show(frame)
            self.browser.after(lambda: self.browser.element("#compare").click())
            self.browser.after(lambda: self.browser.set("gamma", "x"))
            check(f"compared, {scheme}")
            self.browser.resize(390, 844)
            check(f"on a phone, {scheme}")
            overflow = self.browser.run("return document.documentElement.scrollWidth - innerWidth")
            self.assertLessEqual(overflow, 0)

    def test_the_page_in_several_files(self):
        class Handler(http.server.SimpleHTTPRequestHandler):
            def log_message(self, *_):
                pass

        handler = functools.partial(Handler, directory=MODULE)
        with http.server.ThreadingHTTPServer(("localhost", 0), handler) as server:
            threading.Thread(target=server.serve_forever, daemon=True).start()
            self.browser.url = f"http://localhost:{server.server_port}/viewer/index.html"
            try:
                self.browser.open()
                self.show(self.chart("Mono8"))
                self.assertEqual(self.browser.pixels()[:2], (64, 48))
            finally:
                self.browser.url = PAGE
                server.shutdown()


if __name__ == "__main__":
    unittest.main()
