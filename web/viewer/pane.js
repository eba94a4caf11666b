// One picture in its pane: a canvas of its size, moved and scaled by the browser, a frame around the pixel that is looked
// at, and the samples written on the pixels where they are large enough.

const legible = 44; // pixels of the screen, for a sample's digits

export class Pane {
  element = make("div", "pane");
  #canvas = make("canvas", "picture");
  #numbers = make("canvas", "numbers");
  #cursor = make("div", "cursor");
  #name = make("span", "name");
  #context = this.#canvas.getContext("bitmaprenderer", { alpha: false });

  constructor() {
    this.element.tabIndex = 0;
    this.element.setAttribute("role", "application");
    this.#numbers.setAttribute("aria-hidden", "true");
    this.#cursor.hidden = true;
    this.element.append(this.#canvas, this.#numbers, this.#cursor, this.#name);
  }

  /** @param {string} name shown in the corner, if any */
  name(name) {
    this.#name.hidden = name === "";
    this.#name.textContent = name;
    this.element.setAttribute("aria-label",
      `Picture${name && `, ${name.toLowerCase()}`}. Arrow keys go from pixel to pixel, plus and minus zoom, 0 shows all of it.`);
  }

  get size() {
    return { width: this.element.clientWidth, height: this.element.clientHeight };
  }

  /** @param {ImageBitmap} bitmap */
  show(bitmap) {
    const { width, height } = bitmap;
    if (width !== this.#canvas.width || height !== this.#canvas.height) Object.assign(this.#canvas, { width, height });
    this.#context.transferFromImageBitmap(bitmap); // handed over, not drawn
  }

  /** @param {import("./view.js").View} view @param {{ x: number, y: number } | undefined} pixel */
  place(view, pixel) {
    const { left, top } = this.#origin(view);
    this.#canvas.style.transform = `translate(${left}px, ${top}px) scale(${view.scale})`;
    this.#canvas.classList.toggle("large", view.scale >= 1);
    this.#cursor.hidden = !pixel || view.scale < 5;
    if (pixel) {
      this.#cursor.style.transform = `translate(${left + pixel.x * view.scale}px, ${top + pixel.y * view.scale}px)`;
      this.#cursor.style.width = this.#cursor.style.height = `${view.scale}px`;
    }
    this.#numbers.hidden = true;
  }

  /** The pixel of the picture at a point of the window; it may lie outside. */
  pixelAt(view, { clientX, clientY }) {
    const box = this.element.getBoundingClientRect(), { left, top } = this.#origin(view);
    return { x: Math.floor((clientX - box.left - left) / view.scale), y: Math.floor((clientY - box.top - top) / view.scale) };
  }

  /** From the middle. */
  pointAt({ clientX, clientY }) {
    const box = this.element.getBoundingClientRect();
    return { x: clientX - box.left - box.width / 2, y: clientY - box.top - box.height / 2 };
  }

  /** The part of the picture in sight, if its pixels are large enough to be written on. */
  legiblePart(view, picture) {
    if (view.scale < legible) return undefined;
    const { width, height } = this.size;
    const left = Math.max(0, Math.floor(view.x - width / 2 / view.scale)), top = Math.max(0, Math.floor(view.y - height / 2 / view.scale));
    const right = Math.min(picture.width, Math.ceil(view.x + width / 2 / view.scale)), bottom = Math.min(picture.height, Math.ceil(view.y + height / 2 / view.scale));
    return right > left && bottom > top ? { left, top, width: right - left, height: bottom - top } : undefined;
  }

  /** Writes the samples of a part of the picture, so many to a pixel. */
  write(view, part, samples) {
    const { width, height } = this.size, ratio = devicePixelRatio, count = samples.length / (part.width * part.height);
    Object.assign(this.#numbers, { width: width * ratio, height: height * ratio });
    Object.assign(this.#numbers.style, { width: `${width}px`, height: `${height}px` });
    const context = this.#numbers.getContext("2d"), { left, top } = this.#origin(view), line = Math.min(16, view.scale / (count + 0.6));
    context.scale(ratio, ratio);
    context.font = `600 ${line * 0.9}px system-ui, sans-serif`;
    context.textAlign = "center";
    context.textBaseline = "middle";
    context.lineWidth = 3;
    context.strokeStyle = "#000a";
    context.fillStyle = "#fff";
    samples.forEach((sample, i) => {
      const pixel = Math.floor(i / count), row = (i % count) - (count - 1) / 2;
      const x = left + (part.left + (pixel % part.width) + 0.5) * view.scale;
      const y = top + (part.top + Math.floor(pixel / part.width) + 0.5) * view.scale + row * line;
      context.strokeText(sample, x, y);
      context.fillText(sample, x, y);
    });
    this.#numbers.hidden = false;
  }

  #origin(view) {
    const { width, height } = this.size;
    return { left: width / 2 - view.x * view.scale, top: height / 2 - view.y * view.scale };
  }
}

function make(tag, name) {
  const element = document.createElement(tag);
  element.className = name;
  return element;
}
