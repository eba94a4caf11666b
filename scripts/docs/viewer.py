#!/usr/bin/python3
"""Makes the picture of the viewer.

    viewer.py <build/web/web> <a dump, named so that it says what it is>     wants 'scripts/packages.sh web', python3-pil
"""
import io
import pathlib
import sys

from PIL import Image

repository = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(repository / "web/tests"))
from browser import Browser  # noqa: E402

pages, dump = map(pathlib.Path, sys.argv[1:])
browser = Browser((pages.resolve() / "orvella-viewer.html").as_uri(), (1280, 720), dark=True)
browser.open("#auto=true&compare=true&right.auto=false")
browser.after(lambda: browser.drop(dump.resolve()))
browser.run("""const pane = document.querySelector(".pane"), { left, top, width, height } = pane.getBoundingClientRect();
    pane.dispatchEvent(new PointerEvent("pointermove", { clientX: left + 0.62 * width, clientY: top + 0.45 * height }));""")
browser.wait_for("document.querySelector('#readout').textContent.includes('right')")
browser.wait_for("document.querySelector('#figures').children.length > 0")
picture = Image.open(io.BytesIO(browser.driver.get_screenshot_as_png())).convert("RGB")
picture.save(repository / "docs/pictures/viewer.jpg", quality=88, subsampling=0, optimize=True)
browser.close()
