// One pane, or two beside each other that show the same part: dragging, pinching, the wheel, keys.
import { Pane } from "./pane.js";
import { View } from "./view.js";

const names = ["Left", "Right"];

/** Sends "pixel" when another pixel is looked at, and "view" when another part is. */
export class Stage extends EventTarget {
  view = new View();
  /** @type {{ x: number, y: number } | undefined} */
  pixel;
  #panes = [new Pane()];
  #picture = { width: 0, height: 0 };
  #pointers = new Map();

  /** @param {HTMLElement} element */
  constructor(element) {
    super();
    this.element = element;
    element.append(this.#panes[0].element);
    this.#listenTo(this.#panes[0]);
    this.#nameAll();
    new ResizeObserver(() => this.#place()).observe(element);
  }

  compare(on) {
    if (on === this.#panes.length > 1) return;
    if (on) {
      this.#panes.push(new Pane());
      this.element.append(this.#panes[1].element);
      this.#listenTo(this.#panes[1]);
    } else {
      this.#panes.pop().element.remove();
    }
    this.#nameAll();
    this.#place();
  }

  /** @param {ImageBitmap} bitmap */
  show(bitmap, side) {
    const { width, height } = bitmap;
    const another = width !== this.#picture.width || height !== this.#picture.height;
    this.#picture = { width, height };
    this.#panes[side]?.show(bitmap);
    if (another) this.view.fitted = true;
    if (another) this.pixel = undefined;
    this.#place();
  }

  /** @param {"in" | "out" | "fit" | "one"} how */
  zoom(how) {
    if (how === "fit") this.view.fitted = true;
    else if (how === "one") this.view.zoom(1 / devicePixelRatio);
    else this.view.step(how === "in");
    this.#place();
  }

  /** What of the picture could be written on, and a function that does so. */
  get legible() {
    const part = this.#panes[0].legiblePart(this.view, this.#picture);
    return part && { ...part, write: (samples) => this.#panes.forEach((pane) => pane.write(this.view, part, samples)) };
  }

  #nameAll() {
    this.#panes.forEach((pane, i) => pane.name(this.#panes.length > 1 ? names[i] : ""));
  }

  #place() {
    if (this.#picture.width === 0 || this.element.hidden) return;
    if (this.view.fitted) this.view.fit(this.#picture, this.#panes[0].size);
    for (const pane of this.#panes) pane.place(this.view, this.pixel);
    this.dispatchEvent(new Event("view"));
  }

  #lookAt({ x, y }) {
    const inside = x >= 0 && y >= 0 && x < this.#picture.width && y < this.#picture.height;
    if (!inside || (x === this.pixel?.x && y === this.pixel?.y)) return;
    this.pixel = { x, y };
    this.#place();
    this.dispatchEvent(new Event("pixel"));
  }

  #listenTo(pane) {
    const { element } = pane;
    element.addEventListener("wheel", (event) => {
      event.preventDefault();
      this.view.zoom(this.view.scale * 1.0015 ** -event.deltaY, pane.pointAt(event));
      this.#place();
    }, { passive: false });
    element.addEventListener("dblclick", (event) => {
      if (this.view.fitted) this.view.zoom(Math.max(1, this.view.scale * 4), pane.pointAt(event));
      else this.view.fitted = true;
      this.#place();
    });
    element.addEventListener("pointerdown", (event) => {
      if (event.button !== 0) return;
      element.setPointerCapture(event.pointerId);
      this.#pointers.set(event.pointerId, event);
      this.#lookAt(pane.pixelAt(this.view, event));
    });
    element.addEventListener("pointermove", (event) => this.#moved(pane, event));
    for (const end of ["pointerup", "pointercancel"])
      element.addEventListener(end, (event) => {
        this.#pointers.delete(event.pointerId);
        element.classList.remove("dragging");
      });
    element.addEventListener("keydown", (event) => this.#key(pane, event));
  }

  #moved(pane, event) {
    const before = this.#pointers.get(event.pointerId);
    if (!before) {
      if (event.pointerType !== "touch") this.#lookAt(pane.pixelAt(this.view, event));
      return;
    }
    const others = [...this.#pointers.values()].filter(({ pointerId }) => pointerId !== event.pointerId);
    if (others.length === 1) {
      const apart = (one) => Math.hypot(one.clientX - others[0].clientX, one.clientY - others[0].clientY);
      this.view.zoom(this.view.scale * apart(event) / Math.max(1, apart(before)), pane.pointAt(others[0]));
    } else {
      pane.element.classList.add("dragging");
      this.view.move(event.clientX - before.clientX, event.clientY - before.clientY);
    }
    this.#pointers.set(event.pointerId, event);
    this.#place();
  }

  #key(pane, event) {
    const far = event.shiftKey ? 10 : 1;
    const ways = { ArrowLeft: [-far, 0], ArrowRight: [far, 0], ArrowUp: [0, -far], ArrowDown: [0, far] };
    const zooms = { "+": "in", "=": "in", "-": "out", 0: "fit", 1: "one" };
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    if (zooms[event.key]) this.zoom(zooms[event.key]);
    else if (ways[event.key]) this.#step(pane, ways[event.key]);
    else return;
    event.preventDefault();
  }

  #step(pane, [x, y]) {
    const { width, height } = this.#picture;
    const from = this.pixel ?? { x: Math.floor(this.view.x) - x, y: Math.floor(this.view.y) - y };
    const within = (value, size) => Math.min(Math.max(value, 0), size - 1);
    const to = { x: within(from.x + x, width), y: within(from.y + y, height) };
    if (!this.view.fitted) this.view.show(to, pane.size);
    this.#lookAt(to);
  }
}
