// Where the work is done: reads files, asks the module, makes bitmaps. The page asks by name and waits for answers.
import { load } from "../orvella.mjs";
import { encodePng } from "./png.js";

/** @typedef {import("../orvella.mjs").Orvella} Orvella */
/** @typedef {typeof answers} Answers */

/** @type {Orvella} */
let orvella;
/** What was rendered last for each side, and the frame it is of. */
const pictures = [];
let size = { width: 0, height: 0 };
const mostToGuess = 1 << 28;

const answers = {
  /** @param {string} [compressed] the module, gzipped, in base64 */
  async start(compressed) {
    orvella = await load(compressed && (await unzipped(compressed)));
    return orvella.formats();
  },

  named: (name) => orvella.named(name),

  async guesses(file) {
    if (file.size === 0 || file.size > mostToGuess) return [];
    return orvella.guess(await file.arrayBuffer(), 6);
  },

  /** How many such frames the file holds, and what is left over. */
  layout(frame, fileSize) {
    const { skip = 0, ...rest } = frame;
    const stored = orvella.stored(rest);
    const inside = fileSize - Number(skip);
    const lastPadding = rest.stride ? rest.stride - stored.row : 0;
    const count = Math.max(0, Math.floor((inside + lastPadding) / stored.frame));
    return { count, left: Math.max(0, inside - count * stored.frame), bytes: stored.frame };
  },

  /** @param {File} file */
  async take(file, frame, number) {
    const { skip = 0, ...rest } = frame;
    const start = Number(skip) + number * orvella.stored(rest).frame;
    const [width, height] = rest.size.split("x").map(Number);
    orvella.look(await file.slice(start, start + orvella.stored(rest).frame).arrayBuffer(), rest);
    size = { width, height };
  },

  statistics: () => orvella.statistics(),

  async render(look, side) {
    const { rgba, ...about } = orvella.render(look);
    pictures[side] = { rgba, ...size, channels: about.channels };
    const bitmap = await createImageBitmap(new ImageData(new Uint8ClampedArray(rgba.buffer), size.width, size.height));
    return { ...about, bitmap };
  },

  /** The samples of a part of the frame. */
  samples: (left, top, width, height) => orvella.samples(left, top, width, height),

  /** The samples of a pixel and what became of it on each side. */
  pixel(x, y, sides) {
    const at = 4 * (y * size.width + x);
    return {
      samples: [...orvella.samples(x, y, 1, 1)],
      colours: pictures.slice(0, sides).map(({ rgba }) => [...rgba.subarray(at, at + 3)]),
    };
  },

  png: (side) => encodePng(pictures[side]),

  chart: (frame) => orvella.chart(frame),
};

async function unzipped(base64) {
  const bytes = Uint8Array.from(atob(base64.trim()), (character) => character.charCodeAt(0));
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
  return new Response(stream).arrayBuffer();
}

let before = Promise.resolve();
self.onmessage = ({ data: { id, what, given } }) => {
  before = before.then(async () => { // one after the other
    try {
      const result = await answers[what](...given);
      postMessage({ id, result }, result?.bitmap ? [result.bitmap] : []);
    } catch (error) {
      postMessage({ id, error: error.message });
    }
  });
};
