// PNG files of 8 bits.

/**
 * @param {{ rgba: Uint8Array, width: number, height: number, channels: 1 | 3 }} picture
 * @returns {Promise<Blob>}
 */
export async function encodePng({ rgba, width, height, channels }) {
  const header = new DataView(new ArrayBuffer(13));
  header.setUint32(0, width);
  header.setUint32(4, height);
  header.setUint8(8, 8);
  header.setUint8(9, channels === 1 ? 0 : 2); // grey or RGB
  const data = await compress(filteredRows(rgba, width, height, channels));
  const signature = Uint8Array.of(0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a);
  return new Blob([signature, chunk("IHDR", new Uint8Array(header.buffer)), chunk("IDAT", data), chunk("IEND", new Uint8Array())],
    { type: "image/png" });
}

/** Each row begins with the number of its filter, up: differences to the row above. */
function filteredRows(rgba, width, height, channels) {
  const row = width * channels;
  const rows = new Uint8Array((row + 1) * height);
  let to = 0;
  for (let y = 0; y < height; ++y) {
    rows[to++] = 2;
    for (let from = 4 * y * width; from < 4 * (y + 1) * width; from += 4)
      for (let c = 0; c < channels; ++c) rows[to++] = rgba[from + c] - (y > 0 ? rgba[from + c - 4 * width] : 0);
  }
  return rows;
}

async function compress(bytes) {
  const stream = new Blob([bytes]).stream().pipeThrough(new CompressionStream("deflate"));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

function chunk(name, data) {
  const bytes = new Uint8Array(12 + data.length);
  const view = new DataView(bytes.buffer);
  view.setUint32(0, data.length);
  for (let i = 0; i < 4; ++i) bytes[4 + i] = name.charCodeAt(i);
  bytes.set(data, 8);
  view.setUint32(8 + data.length, crc(bytes.subarray(4, 8 + data.length)));
  return bytes;
}

const crcTable = Uint32Array.from({ length: 256 }, (_, value) => {
  for (let bit = 0; bit < 8; ++bit) value = value & 1 ? 0xedb88320 ^ (value >>> 1) : value >>> 1;
  return value;
});

function crc(bytes) {
  let value = 0xffffffff;
  for (const byte of bytes) value = crcTable[(value ^ byte) & 0xff] ^ (value >>> 8);
  return ~value;
}
