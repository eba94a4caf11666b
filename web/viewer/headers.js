// Files that say themselves what they hold: the frame, and the bytes of the frames alone, one after the other.
import { tiffPages } from "./tiff.js";

const longest = 4096, small = 1 << 26; // bytes

/**
 * Small files are read at once, which takes less time than piece by piece.
 * @param {File} file
 * @param {import("../orvella.mjs").Orvella} orvella
 * @returns {Promise<{ frame?: Partial<import("./settings.js").Frame>, data: Uint8Array | Blob }>} no frame: the file is
 *     plain bytes
 */
export async function withoutHeader(file, orvella) {
  if (/\.tiff?$/i.test(file.name)) return fromTiff(file);
  const bytes = file.size <= small && new Uint8Array(await file.arrayBuffer());
  const beginning = bytes ? bytes.subarray(0, longest) : await file.slice(0, longest).arrayBuffer();
  const header = file.size > 0 ? orvella.header(file.name, beginning) : undefined;
  const skip = header?.skip ?? 0;
  return { frame: header?.frame, data: bytes ? bytes.subarray(skip) : file.slice(skip) };
}

async function fromTiff(file) {
  const pages = await tiffPages(file);
  const [first] = pages;
  const frame = { format: formatOf(first), size: `${first.width}x${first.height}` };
  if (first.bits > 8) frame.bigEndian = first.bigEndian;
  const alike = ({ width, height, channels, bits }) =>
    [width, height, channels, bits].join() === [first.width, first.height, first.channels, first.bits].join();
  const parts = pages.filter(alike).flatMap(({ strips }) => strips.map(([start, count]) => file.slice(start, start + count)));
  return { frame, data: new Blob(parts) };
}

function formatOf({ channels, bits }) {
  const format = { "1,8": "Mono8", "1,16": "Mono16", "3,8": "Rgb8", "3,16": "Rgb16", "4,8": "Rgba8" }[[channels, bits].join()];
  if (!format) throw new Error(`the file holds ${channels} channels of ${bits} bits, which are no camera's frame`);
  return format;
}
