"""A headless Chromium that has the viewer open."""

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.support.ui import WebDriverWait


class Browser:
    def __init__(self, url, size=(1280, 800), dark=False):
        options = Options()
        for argument in ("--headless=new", "--no-sandbox", "--hide-scrollbars", "--force-device-scale-factor=1"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        scheme = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        self.command("Emulation.setEmulatedMedia", features=[scheme])
        self.resize(*size)
        self.url = url
        self.open()

    def command(self, name, **parameters):
        return self.driver.execute_cdp_cmd(name, parameters)

    def resize(self, width, height):
        metrics = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False}
        self.command("Emulation.setDeviceMetricsOverride", **metrics)

    def open(self, fragment=""):
        self.driver.get("about:blank")
        self.driver.get(self.url + fragment)
        self.wait_for("document.body.dataset.state === 'waiting'")

    def run(self, script, *given):
        return self.driver.execute_script(script, *given)

    def wait_for(self, condition, seconds=20):
        WebDriverWait(self.driver, seconds, 0.02).until(lambda _: self.run(f"return {condition}"))

    def element(self, selector):
        return self.driver.find_element("css selector", selector)

    def after(self, action):
        """Does something, and waits for the picture or the complaint that comes of it."""
        done = "const { renderings = 0, complaints = 0 } = document.body.dataset; return `${renderings} ${complaints}`"
        before = self.run(done)
        action()
        self.wait_for(f"(() => {{ {done} }})() !== '{before}'")

    def drop(self, *paths):
        """As the system does when files or folders are dragged into the window."""
        data = {"items": [], "files": [str(path) for path in paths], "dragOperationsMask": 1}
        for kind in ("dragEnter", "dragOver", "drop"):
            self.command("Input.dispatchDragEvent", type=kind, x=300, y=300, data=data)

    def set(self, name, value):
        """What typing into a field of the form, or choosing, does."""
        self.run("""const field = document.forms[0].elements[arguments[0]];
            if (field.type === "checkbox") field.checked = arguments[1]; else field.value = arguments[1];
            (field[0] && field.type === undefined ? [...field].find((f) => f.checked) : field)
                .dispatchEvent(new Event("input", { bubbles: true }));""", name, value)

    def pixels(self, side=0):
        """What the canvas shows: width, height, and R G B of every pixel."""
        width, height, rgba = self.driver.execute_async_script("""const [side, done] = arguments;
            const from = document.querySelectorAll("canvas.picture")[side], { width, height } = from;
            const copy = new OffscreenCanvas(width, height).getContext("2d");
            copy.drawImage(from, 0, 0);
            const reader = new FileReader();
            reader.onload = () => done([width, height, reader.result.split(",")[1]]);
            reader.readAsDataURL(new Blob([copy.getImageData(0, 0, width, height).data]));""", side)
        import base64
        data = bytearray(base64.b64decode(rgba))
        del data[3::4]
        return width, height, bytes(data)

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0]).textContent", selector)

    def log(self):
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def close(self):
        self.driver.quit()
