"""How soon a frame of 5 megapixels is on screen after it was dropped. Wants ORVELLA and MODULE, as viewer_test.py."""

import os
import pathlib
import re
import statistics
import subprocess
import tempfile

from browser import Browser

browser = Browser((pathlib.Path(os.environ["MODULE"]) / "orvella-viewer.html").as_uri())
with tempfile.TemporaryDirectory() as folder:
    for format in ["BayerRG8", "BayerRG12p", "Mono12p", "Rgb8"]:
        frame = f"{folder}/x_{format}_2448x2048.raw"
        subprocess.run([os.environ["ORVELLA"], "chart", "-f", format, "-s", "2448x2048", frame], check=True)
        times = {True: [], False: []}
        for automatic in [True, False] * 7:
            browser.open(f"#auto={str(automatic).lower()}")
            browser.after(lambda: browser.drop(frame))
            times[automatic].append(int(re.search(r"\d+", browser.text("#done"))[0]))
        print(f"{format:12} automatic {min(times[True])} ms (median {statistics.median(times[True]):.0f}), "
              f"as it is {min(times[False])} ms (median {statistics.median(times[False]):.0f})")
browser.close()
