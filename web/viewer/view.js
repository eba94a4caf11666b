// Where the picture is looked at from: which of its points is in the middle, and how large its pixels are.

const least = 1 / 64, most = 128;

export class View {
  scale = 1;
  x = 0; // the point of the picture in the middle of the pane
  y = 0;
  fitted = true;

  /** @param {{ width: number, height: number }} picture @param {{ width: number, height: number }} pane */
  fit(picture, pane) {
    const margin = 16;
    this.scale = clamp(Math.min((pane.width - margin) / picture.width, (pane.height - margin) / picture.height), least, most);
    this.x = picture.width / 2;
    this.y = picture.height / 2;
    this.fitted = true;
  }

  /** Zooms, with a point of the pane staying where it is; it is given from the pane's middle. */
  zoom(scale, { x, y } = { x: 0, y: 0 }) {
    const to = clamp(scale, least, most);
    this.x += x / this.scale - x / to;
    this.y += y / this.scale - y / to;
    this.scale = to;
    this.fitted = false;
  }

  /** The next power of two. */
  step(up) {
    const power = Math.log2(this.scale);
    this.zoom(2 ** (up ? Math.floor(power + 1.001) : Math.ceil(power - 1.001)));
  }

  /** By so many pixels of the pane. */
  move(x, y) {
    this.x -= x / this.scale;
    this.y -= y / this.scale;
    this.fitted = false;
  }

  /** Moves as little as needed to have a pixel of the picture in sight. */
  show({ x, y }, pane) {
    const halfWidth = Math.max(0.5, pane.width / 2 / this.scale - 1), halfHeight = Math.max(0.5, pane.height / 2 / this.scale - 1);
    this.x = clamp(this.x, x + 0.5 - halfWidth, x + 0.5 + halfWidth);
    this.y = clamp(this.y, y + 0.5 - halfHeight, y + 0.5 + halfHeight);
  }
}

const clamp = (value, low, high) => Math.min(Math.max(value, low), high);
