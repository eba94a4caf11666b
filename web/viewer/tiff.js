// Where the pixels of a TIFF file lie. Of such that are not compressed, in strips.

const tags = { 256: "width", 257: "height", 258: "bits", 259: "compression", 273: "starts", 277: "channels", 278: "rows",
  279: "counts", 284: "planar", 322: "tiles" };
const sizes = { 1: 1, 3: 2, 4: 4 }; // bytes, words, long words

/**
 * @param {Blob} file
 * @returns {Promise<{ width: number, height: number, bits: number, channels: number, bigEndian: boolean,
 *     strips: [number, number][] }[]>}
 */
export async function tiffPages(file) {
  const read = async (start, count) => {
    if (start + count > file.size) throw new Error("the TIFF file ends early");
    return new DataView(await file.slice(start, start + count).arrayBuffer());
  };
  const head = await read(0, 8);
  const order = head.getUint16(0);
  const bigEndian = order === 0x4d4d, little = !bigEndian;
  if ((order !== 0x4949 && !bigEndian) || head.getUint16(2, little) !== 42) throw new Error("the file is no TIFF");
  const pages = [];
  const most = 10_000; // a chain of pages may be a circle
  for (let at = head.getUint32(4, little); at !== 0 && pages.length < most;) {
    const count = (await read(at, 2)).getUint16(0, little);
    const directory = await read(at + 2, 12 * count + 4);
    const found = {};
    for (let entry = 0; entry < 12 * count; entry += 12) {
      const name = tags[directory.getUint16(entry, little)], size = sizes[directory.getUint16(entry + 2, little)];
      if (name && size) found[name] = await values(directory, entry, size);
    }
    pages.push({ ...pageOf(found), bigEndian });
    at = directory.getUint32(12 * count, little);
  }
  return pages;

  async function values(directory, entry, size) {
    const count = directory.getUint32(entry + 4, little);
    const inside = count * size <= 4;
    const view = inside ? directory : await read(directory.getUint32(entry + 8, little), count * size);
    const start = inside ? entry + 8 : 0;
    return Array.from({ length: count }, (_, i) =>
      view[{ 1: "getUint8", 2: "getUint16", 4: "getUint32" }[size]](start + i * size, little));
  }
}

function pageOf({ width: [width] = [], height: [height] = [], bits = [1], compression: [compression] = [1], starts = [],
  channels: [channels] = [1], counts = [], planar: [planar] = [1], tiles }) {
  const plain = compression === 1 && !tiles && (planar === 1 || channels === 1) && bits.every((depth) => depth === bits[0]);
  const bytes = counts.reduce((sum, count) => sum + count, 0);
  if (!plain || bytes !== (width * height * channels * bits[0]) / 8 || starts.length !== counts.length)
    throw new Error("the TIFF file is compressed, or otherwise more than rows of pixels; 'orvella convert' may read it");
  return { width, height, bits: bits[0], channels, strips: starts.map((start, i) => [start, counts[i]]) };
}
