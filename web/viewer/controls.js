// The form beside the picture: from settings to fields and back. Sends "frame", "look", "side" and "of".

/** @typedef {import("../orvella.mjs").PixelFormat} PixelFormat */

const numbers = ["skip", "stride", "bitsUsed"];

export class Controls extends EventTarget {
  /** @type {PixelFormat[]} */
  #formats = [];
  #guesses = [];

  /** @param {HTMLFormElement} form */
  constructor(form) {
    super();
    this.form = form;
    this.fields = form.elements;
    form.addEventListener("submit", (event) => event.preventDefault());
    form.addEventListener("input", ({ target }) => this.#changed(target));
    form.querySelector("#reset").addEventListener("click", () => {
      this.writeLook({ auto: true });
      this.#send("look");
    });
  }

  /** @param {PixelFormat[]} formats */
  set formats(formats) {
    this.#formats = formats;
    const kinds = new Map();
    for (const format of formats) {
      const kind = kindOf(format);
      if (!kinds.has(kind)) kinds.set(kind, document.createElement("optgroup"));
      kinds.get(kind).label = kind;
      kinds.get(kind).append(new Option(format.name));
    }
    this.fields.format.replaceChildren(...kinds.values());
  }

  get format() {
    return this.#formats.find(({ name }) => name === this.fields.format.value);
  }

  get side() {
    return Number(this.fields.side.value);
  }

  set sided(on) {
    this.form.querySelector("#sides").hidden = !on;
    if (!on) this.fields.side.value = "0";
  }

  /** What the bytes may be. */
  set guesses(guesses) {
    this.#guesses = guesses;
    this.form.querySelector("#guesses-row").hidden = guesses.length === 0;
    this.fields.guess.replaceChildren(new Option("choose…", ""), ...guesses.map((guess, i) => new Option(`${titleOf(guess)}`, i)));
  }

  readFrame() {
    const { format, width, height, msbAligned, bigEndian } = this.fields;
    const frame = { format: format.value, size: `${width.value}x${height.value}` };
    for (const name of numbers) if (this.fields[name].value) frame[name] = Number(this.fields[name].value);
    if (!this.format?.words) return { ...frame, bitsUsed: undefined };
    return { ...frame, msbAligned: msbAligned.checked, bigEndian: bigEndian.checked };
  }

  writeFrame(frame) {
    const [width, height] = frame.size.split("x");
    Object.assign(this.fields.width, { value: width });
    Object.assign(this.fields.height, { value: height });
    this.fields.format.value = frame.format;
    for (const name of numbers) this.fields[name].value = frame[name] ?? "";
    for (const name of ["msbAligned", "bigEndian"]) this.fields[name].checked = Boolean(frame[name]);
    const chosen = this.#guesses.findIndex((guess) => guess.format === frame.format && guess.size === frame.size);
    this.fields.guess.value = chosen < 0 ? "" : String(chosen);
    this.#show();
  }

  readLook() {
    const value = (name) => this.fields[name].value.trim();
    const balance = ["red", "green", "blue"].map(value), stretch = [value("low"), value("high")];
    const look = { debayer: this.#isMosaic() ? value("debayer") : "", auto: this.fields.auto.checked };
    for (const name of ["black", "gamma", "matrix", "flip"]) look[name] = value(name);
    if (balance.some(Boolean)) look.whiteBalance = balance.map((factor) => factor || "1").join();
    if (stretch.some(Boolean)) look.stretch = `${stretch[0] || 0},${stretch[1] || 100}`;
    if (value("exposure") !== "0") look.exposure = Number((2 ** value("exposure")).toPrecision(4));
    return look;
  }

  writeLook(look) {
    const [red = "", green = "", blue = ""] = String(look.whiteBalance ?? "").split(",");
    const [low = "", high = ""] = String(look.stretch ?? "").split(",");
    const values = { red, green, blue, low, high };
    for (const name of ["debayer", "black", "gamma", "matrix", "flip"]) values[name] = look[name] ?? "";
    for (const [name, value] of Object.entries(values)) this.fields[name].value = value;
    this.fields.auto.checked = Boolean(look.auto);
    this.fields.exposure.value = look.exposure ? Math.log2(look.exposure) : 0;
    this.#show();
  }

  /** What stands in fields that are empty. */
  showMeasured(measured) {
    const auto = this.fields.auto.checked, raw = !/^(rgb|bgr|yuv)/.test(this.format?.samples ?? "") || this.#isMosaic();
    const rounded = (value) => (auto && raw && value !== undefined ? String(Number(value.toPrecision(3))) : undefined);
    const placeholders = {
      black: rounded(measured?.black) ?? "0",
      red: rounded(measured?.whiteBalance[0]) ?? "1",
      green: rounded(measured?.whiteBalance[1]) ?? "1",
      blue: rounded(measured?.whiteBalance[2]) ?? "1",
      gamma: auto && raw ? "srgb" : "none",
      low: "0",
      high: auto ? "99.5" : "100",
    };
    this.form.classList.toggle("measured", auto);
    for (const [name, text] of Object.entries(placeholders)) this.fields[name].placeholder = text;
  }

  #isMosaic() {
    return /^(rggb|grbg|gbrg|bggr)$/.test(this.format?.samples ?? "");
  }

  #changed(target) {
    if (target.name === "guess") {
      if (target.value === "") return;
      this.writeFrame({ ...this.readFrame(), bitsUsed: undefined, msbAligned: false, bigEndian: false, ...this.#guesses[target.value] });
    }
    if (target.name === "format") this.fields.bitsUsed.value = "";
    this.#show();
    if (target.name === "side" || target.name === "of") this.#send(target.name);
    else this.#send(target.closest("fieldset").id === "frame-settings" ? "frame" : "look");
  }

  #show() {
    const ev = Number(this.fields.exposure.value);
    this.form.querySelector("#exposure-text").value = `${ev > 0 ? "+" : ""}${Number(ev.toFixed(1))} EV`;
    const show = (selector, on) => this.form.querySelectorAll(selector).forEach((element) => { element.hidden = !on; });
    show(".mosaic", this.#isMosaic());
    show(".colour", this.format?.samples !== "grey");
    show(".words", Boolean(this.format?.words));
  }

  #send(what) {
    this.dispatchEvent(new Event(what));
  }
}

function kindOf({ samples, name }) {
  if (samples === "grey") return "Grey";
  if (samples === "cygm") return "Complementary colours";
  if (/^y/i.test(samples)) return "YUV";
  return name.startsWith("Bayer") ? "Bayer mosaics" : "RGB";
}

function titleOf({ format, size, bitsUsed, bigEndian, msbAligned }) {
  const details = [bitsUsed && `${bitsUsed} bits`, bigEndian && "big-endian", msbAligned && "high bits"].filter(Boolean);
  return `${format} ${size.replace("x", "×")}${details.length > 0 ? ` (${details.join(", ")})` : ""}`;
}
