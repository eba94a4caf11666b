"""How soon a frame of 5 megapixels is on screen after it was dropped, from the event to the paint; and for how long a frame of
50 megapixels keeps the page from answering. Wants ORVELLA and MODULE, as viewer_test.py; further folders of pages, as
arguments, are measured in turn with MODULE."""

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
new MutationObserver(painted).observe(document.body, { attributeFilter: ["data-renderings"] });
let last = performance.now();
window.gap = 0;
(function tick() {
  const now = performance.now();
  window.gap = Math.max(window.gap, now - last);
  last = now;
  setTimeout(tick, 4);
})();"""


def chart(format, size, path):
    subprocess.run([os.environ["ORVELLA"], "chart", "-f", format, "-s", size, path], check=True)


def shown(page, fragment, frame):
    """Milliseconds until the frame is on screen, and the longest that the page did not answer."""
    browser.url = page.as_uri()
    browser.open(fragment)
    time.sleep(1)  # a user takes longer
    browser.run(CLOCK)
    browser.drop(frame)
    browser.wait_for("window.took !== undefined")
    return browser.run("return window.took"), browser.run("return window.gap")


pages = [pathlib.Path(folder) / "orvella-viewer.html" for folder in [os.environ["MODULE"], *sys.argv[1:]]]
browser = Browser(pages[0].as_uri())
with tempfile.TemporaryDirectory() as folder:
    for format in ["BayerRG8", "BayerRG12p", "Mono12p", "Rgb8"]:
        named, nameless = pathlib.Path(folder) / f"x_{format}_2448x2048.raw", pathlib.Path(folder) / "dump.bin"
        chart(format, "2448x2048", named)
        nameless.write_bytes(named.read_bytes())
        ways = [("automatic", "#auto=true", named), ("as it is", "#auto=false", named), ("guessed", "#auto=true", nameless)]
        times = {(page, way[0]): [] for page in pages for way in ways}
        for page, (way, fragment, frame) in [(page, way) for page in pages for way in ways] * 5:
            times[page, way].append(shown(page, fragment, frame)[0])
        for (page, way), took in times.items():
            print(f"{format:11} {way:10} {min(took):4.0f} ms, median {statistics.median(took):4.0f}   {page.parent}", flush=True)
    large = pathlib.Path(folder) / "x_BayerRG12p_8192x6144.raw"
    chart("BayerRG12p", "8192x6144", large)
    for page in pages:
        took, gap = map(min, zip(*[shown(page, "#auto=true", large) for _ in range(3)]))
        print(f"50 megapixels in {took:.0f} ms, no answer for {gap:.0f} ms   {page.parent}")
browser.close()
