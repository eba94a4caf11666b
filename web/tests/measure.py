"""How soon a frame of 5 megapixels is on screen after it was dropped, from the event to the paint. Wants ORVELLA and MODULE,
as viewer_test.py; further folders of pages, as arguments, are measured in turn with MODULE."""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

from browser import Browser

CLOCK = """let start;
addEventListener("drop", () => { start = performance.now(); }, true);
const painted = () => requestAnimationFrame(() => setTimeout(() => { window.took ??= performance.now() - start; }));
new MutationObserver(painted).observe(document.body, { attributeFilter: ["data-renderings"] });"""
pages = [pathlib.Path(folder) / "orvella-viewer.html" for folder in [os.environ["MODULE"], *sys.argv[1:]]]
browser = Browser(pages[0].as_uri())
with tempfile.TemporaryDirectory() as folder:
    for format in ["BayerRG8", "BayerRG12p", "Mono12p", "Rgb8"]:
        named, nameless = pathlib.Path(folder) / f"x_{format}_2448x2048.raw", pathlib.Path(folder) / "dump.bin"
        subprocess.run([os.environ["ORVELLA"], "chart", "-f", format, "-s", "2448x2048", named], check=True)
        nameless.write_bytes(named.read_bytes())
        ways = [("automatic", "#auto=true", named), ("as it is", "#auto=false", named), ("guessed", "#auto=true", nameless)]
        times = {(page, way[0]): [] for page in pages for way in ways}
        for page, (way, fragment, frame) in [(page, way) for page in pages for way in ways] * 5:
            browser.url = page.as_uri()
            browser.open(fragment)
            browser.run(CLOCK)
            time.sleep(1)  # a user takes longer
            browser.drop(frame)
            browser.wait_for("window.took !== undefined")
            times[page, way].append(browser.run("return window.took"))
        for (page, way), took in times.items():
            print(f"{format:11} {way:10} {min(took):4.0f} ms, median {statistics.median(took):4.0f}   {page.parent}", flush=True)
browser.close()
