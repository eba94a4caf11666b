// Orvella for JavaScript: raw camera frames become images, by the library compiled to WebAssembly.
//
//     import { load } from "./orvella.mjs";
//     const orvella = await load();
//     const rgba = orvella.convert(bytes, "BayerRG12p", { width: 2448, height: 2048 }, "RGBA32");
//
// orvella.d.mts says what there is. In browsers and in node, without other files than orvella.wasm beside this one.

/**
 * @param {ArrayBufferView | ArrayBuffer | WebAssembly.Module} [wasm] the content of orvella.wasm, if it is not to be
 *     fetched from beside this file
 * @returns {Promise<import("./orvella.mjs").Orvella>}
 */
export async function load(wasm) {
  const source = wasm ?? (await readBeside("orvella.wasm"));
  const module = source instanceof WebAssembly.Module ? source : await WebAssembly.compile(source);
  const instance = await WebAssembly.instantiate(module, imports);
  instance.exports._initialize();
  return new Orvella(instance.exports);
}

/** @type {ReturnType<typeof load> | undefined} */
let loaded;

/**
 * Loads the module at the first call.
 * @param {Parameters<import("./orvella.mjs").Orvella["convert"]>} how
 */
export async function convert(...how) {
  loaded ??= load();
  return (await loaded).convert(...how);
}

const imports = {
  env: { emscripten_notify_memory_growth() {} },
  wasi_snapshot_preview1: {
    proc_exit(code) {
      throw new Error(`the module ended with ${code}`);
    },
  },
};

async function readBeside(name) {
  const url = new URL(name, import.meta.url);
  if (url.protocol === "file:" && globalThis.process?.versions?.node) {
    const { readFile } = await import("node:fs/promises");
    return readFile(url);
  }
  const response = await fetch(url);
  if (!response.ok) throw new Error(`cannot load ${url}: ${response.status}`);
  return response.arrayBuffer();
}

const encoder = new TextEncoder();
const decoder = new TextDecoder();

/** The module, its memory, and the ways in and out. */
class Orvella {
  #exports;

  constructor(exports) {
    this.#exports = exports;
  }

  convert(bytes, format, size, output, options = {}) {
    this.#call("convert", { ...options, format, size, to: output }, bytes);
    return this.#result();
  }

  formats() {
    return this.#json("formats");
  }

  named(name) {
    return this.#json("named", name.replace(/\.[^.]*$/, ""));
  }

  header(name, beginning) {
    const { skip, frame } = this.#json("header", name, beginning);
    return frame && { skip, frame };
  }

  guess(bytes, count = 5) {
    return this.#json("guess", undefined, bytes, count);
  }

  stored(frame) {
    return this.#json("stored", frame);
  }

  look(bytes, frame) {
    this.#call("load", frame, bytes);
  }

  statistics() {
    return this.#json("statistics");
  }

  chart(frame) {
    this.#call("chart", frame);
    return this.#result();
  }

  render(options) {
    const rendering = this.renderInPlace(options);
    return { ...rendering, rgba: rendering.rgba.slice() };
  }

  renderInPlace(options) {
    const about = this.#json("render", options);
    return { ...about, rgba: this.#made() };
  }

  histograms(rgba, channels) {
    return this.#json("histograms", undefined, rgba, channels);
  }

  samples(left, top, width, height) {
    this.#call("samples", undefined, undefined, left, top, width, height);
    return new Uint16Array(this.#result().buffer);
  }

  #json(name, ...given) {
    this.#call(name, ...given);
    return JSON.parse(this.#text());
  }

  /**
   * Calls an exported function; throws an Error with its message if it fails.
   * @param {string} name
   * @param {string | object} [words] options, or a text
   * @param {ArrayBufferView | ArrayBuffer} [bytes]
   * @param {...number} numbers
   */
  #call(name, words, bytes, ...numbers) {
    const borrowed = [];
    const given = [];
    try {
      if (words !== undefined) {
        const text = typeof words === "string" ? words : lines(words);
        borrowed.push(this.#lend(encoder.encode(`${text}\0`)));
        given.push(borrowed[0]);
      }
      if (bytes !== undefined) {
        borrowed.push(this.#lend(asBytes(bytes)));
        given.push(borrowed.at(-1), bytes.byteLength);
      }
      if (!this.#exports[`orvella_${name}`](...given, ...numbers)) throw new Error(this.#text());
    } finally {
      for (const address of borrowed) this.#exports.orvella_release(address);
    }
  }

  #lend(bytes) {
    const address = this.#exports.orvella_allocate(Math.max(bytes.length, 1)) >>> 0;
    if (!address) throw new Error("not enough memory");
    new Uint8Array(this.#exports.memory.buffer, address, bytes.length).set(bytes);
    return address;
  }

  #text() {
    const memory = new Uint8Array(this.#exports.memory.buffer);
    const start = this.#exports.orvella_text() >>> 0;
    return decoder.decode(memory.subarray(start, memory.indexOf(0, start)));
  }

  #result() {
    return this.#made().slice();
  }

  #made() {
    const { memory, orvella_bytes, orvella_byte_count } = this.#exports;
    return new Uint8Array(memory.buffer, orvella_bytes() >>> 0, orvella_byte_count() >>> 0);
  }
}

function asBytes(data) {
  return data instanceof ArrayBuffer ? new Uint8Array(data) : new Uint8Array(data.buffer, data.byteOffset, data.byteLength);
}

/** {whiteBalance: [2, 1, 1.5], auto: false} becomes "white-balance=2,1,1.5", a line for each. */
function lines(options) {
  return Object.entries(options)
    .filter(([, value]) => value !== undefined && value !== false && value !== "")
    .map(([name, value]) => `${name.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`)}=${textOf(value)}`)
    .join("\n");
}

function textOf(value) {
  if (Array.isArray(value)) return value.join(",");
  return typeof value === "object" ? `${value.width}x${value.height}` : String(value).replaceAll("\n", " ");
}
