// Where the work is done: reads files, asks the module, makes bitmaps. The page asks by name and waits for answers.
import { load } from "../orvella.mjs";
import { withoutHeader } from "./headers.js";
import { encodePng } from "./png.js";

/** @typedef {import("../orvella.mjs").Orvella} Orvella */
/** @typedef {typeof answers} Answers */

/** @type {Orvella} */
let orvella;
/** @type {Uint8Array | Blob} The frames of the file that is open, without its header. */
let data;
/** @type {Error | undefined} Why there is no frame to look at. */
let problem;
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
      orvella.renderInPlace({ auto });
    }
  },

  /** Memory is slow when it is used for the first time. */
  reserve() {
    const frame = { format: "BayerRG12p", size: "2448x2048" };
    orvella.look(new Uint8Array(orvella.stored(frame).frame), frame);
    orvella.renderInPlace({ auto: true });
  },

  /**
   * What a file's header and name say of its frames, and how many bytes these have.
   * @param {File} file
   */
  async open(file) {
    data = undefined;
    const opened = await withoutHeader(file, orvella);
    ({ data } = opened);
    return { header: opened.frame, named: orvella.named(file.name), size: sizeOf(data) };
  },

  async guesses() {
    if (sizeOf(data) === 0 || sizeOf(data) > mostToGuess) return [];
    return orvella.guess(await part(0, sizeOf(data)), 6);
  },

  /** How many such frames the file holds, and what is left over. */
  layout,

  /** Takes a frame to look at; the last one, if there are fewer. */
  async take(frame, number) {
    try {
      const { skip, stored, rest } = placeOf(frame);
      const start = skip + Math.min(number, Math.max(1, layout(frame).count) - 1) * stored.frame;
      orvella.look(await part(start, start + stored.frame), rest);
      problem = undefined;
    } catch (error) {
      problem = error;
      throw error;
    }
  },

  statistics: () => orvella.statistics(),

  async render(look, side) {
    if (problem) throw problem;
    const { rgba, ...about } = orvella.renderInPlace(look);
    const { width, height, channels } = about;
    const pixels = new Uint8ClampedArray(rgba.buffer, rgba.byteOffset, rgba.length);
    const bitmap = await createImageBitmap(new ImageData(pixels, width, height), { premultiplyAlpha: "none" }); // opaque
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

const sizeOf = (bytes) => bytes?.size ?? bytes?.length ?? 0;

const part = (start, end) => (data instanceof Blob ? data.slice(start, end).arrayBuffer() : data.subarray(start, end));

function placeOf({ skip = 0, ...rest }) {
  return { skip: Number(skip), stored: orvella.stored(rest), rest };
}

function layout(frame) {
  const { skip, stored, rest } = placeOf(frame);
  const inside = sizeOf(data) - skip;
  const lastPadding = rest.stride ? rest.stride - stored.row : 0;
  const count = Math.max(0, Math.floor((inside + lastPadding) / stored.frame));
  return { count, left: Math.max(0, inside - count * stored.frame), bytes: stored.frame };
}

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
