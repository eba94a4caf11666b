// Where the work is done: reads files, asks the module, makes bitmaps. The page asks by name and waits for answers.
import { load } from "../orvella.mjs";
import { withoutHeader } from "./headers.js";
import { encodePng } from "./png.js";

/** @typedef {import("../orvella.mjs").Orvella} Orvella */
/** @typedef {typeof answers} Answers */

/** @type {Orvella} */
let orvella;
/** What was rendered last for each side. */
const pictures = [];
/** What is left to do once an answer is on its way. */
let afterwards = () => {};
const mostToGuess = 1 << 28;

const answers = {
  /** @param {string} [compressed] the module, gzipped, in base64 */
  async start(compressed) {
    orvella = await load(compressed && (await unzipped(compressed)));
    return orvella.formats();
  },

  /** Browsers compile quickly first, and well what has run for a while: so that the first frame does not wait for that. */
  warmUp(format) {
    const frame = { format, size: "640x480" }, bytes = orvella.chart(frame);
    orvella.guess(bytes, 1);
    for (const auto of [true, false, true, false, true, false]) {
      orvella.look(bytes, frame);
      orvella.render({ auto });
    }
  },

  /** @param {File} file */
  opened: (file) => withoutHeader(file, orvella),

  named: (name) => orvella.named(name),

  /** @param {Blob} data */
  async guesses(data) {
    if (data.size === 0 || data.size > mostToGuess) return [];
    return orvella.guess(await data.arrayBuffer(), 6);
  },

  /** How many such frames the file holds, and what is left over. */
  layout(frame, size) {
    const { skip = 0, ...rest } = frame;
    const stored = orvella.stored(rest);
    const inside = size - Number(skip);
    const lastPadding = rest.stride ? rest.stride - stored.row : 0;
    const count = Math.max(0, Math.floor((inside + lastPadding) / stored.frame));
    return { count, left: Math.max(0, inside - count * stored.frame), bytes: stored.frame };
  },

  /** @param {Blob} data */
  async take(data, frame, number) {
    const { skip = 0, ...rest } = frame;
    const stored = orvella.stored(rest).frame, start = Number(skip) + number * stored;
    orvella.look(await data.slice(start, start + stored).arrayBuffer(), rest);
  },

  statistics: () => orvella.statistics(),

  async render(look, side) {
    const { rgba, ...about } = orvella.renderInPlace(look);
    const { width, height, channels } = about;
    const pixels = new Uint8ClampedArray(rgba.buffer, rgba.byteOffset, rgba.length);
    const bitmap = await createImageBitmap(new ImageData(pixels, width, height));
    afterwards = () => { pictures[side] = { rgba: rgba.slice(), width, height, channels }; };
    return { ...about, bitmap };
  },

  histograms: (side) => orvella.histograms(pictures[side].rgba, pictures[side].channels),

  /** The samples of the frame's pixels, one pixel after the other. */
  samples: (pixels) => pixels.flatMap(({ x, y }) => [...orvella.samples(x, y, 1, 1)]),

  /** The colours of the pictures on so many sides. */
  colours: ({ x, y }, sides) => pictures.slice(0, sides).map(({ rgba, width }) => {
    const at = 4 * (y * width + x);
    return [...rgba.subarray(at, at + 3)];
  }),

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
    afterwards();
    afterwards = () => {};
  });
};
