// Files that say themselves what they hold: the frame, and the bytes of the frames alone, one after the other.
import { tiffPages } from "./tiff.js";

const longest = 4096;

/**
 * @param {File} file
 * @param {import("../orvella.mjs").Orvella} orvella
 * @returns {Promise<{ frame?: Partial<import("./settings.js").Frame>, data: Blob }>} no frame: the file is plain bytes
 */
export async function withoutHeader(file, orvella) {
  if (/\.tiff?$/i.test(file.name)) return fromTiff(file);
  const beginning = await file.slice(0, longest).arrayBuffer();
  const header = beginning.byteLength > 0 ? orvella.header(file.name, beginning) : undefined;
  return header ? { frame: header.frame, data: file.slice(header.skip) } : { data: file };
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
  const format = { "1,8": "Mono8", "1,16": "Mono16", "3,8": "Rgb8", "4,8": "Rgba8" }[[channels, bits].join()];
  if (!format) throw new Error(`the file holds ${channels} channels of ${bits} bits, which are no camera's frame`);
  return format;
}
