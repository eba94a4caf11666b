// The module gives the converter's bytes. Wants ORVELLA, the converter, and MODULE, the folder of orvella.mjs and
// orvella.wasm.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, test } from "node:test";
import { pathToFileURL } from "node:url";

const { load, convert } = await import(pathToFileURL(join(process.env.MODULE, "orvella.mjs")));
const orvella = await load();
const folder = mkdtempSync(join(tmpdir(), "orvella-"));
after(() => rmSync(folder, { recursive: true }));

const program = (...words) => execFileSync(process.env.ORVELLA, words, { maxBuffer: 1 << 28, stdio: "pipe" });
const width = 100, height = 52;
const chart = (format) => program("chart", "-f", format, "-s", `${width}x${height}`, "-");

// As the converter takes them, and as the module does.
const looks = [
  [[], {}],
  [["--auto"], { auto: true }],
  [["--black", "3", "--white-balance", "1.5,1,2", "--exposure", "1.25", "--stretch", "1,99", "--gamma", "2.2"],
    { black: 3, whiteBalance: [1.5, 1, 2], exposure: 1.25, stretch: [1, 99], gamma: 2.2 }],
];
const mosaicLooks = [
  [["--debayer", "3x3", "--gamma", "srgb"], { debayer: "3x3", gamma: "srgb" }],
  [["--debayer", "lcaav"], { debayer: "lcaav" }],
  [["--matrix", "1.5,-.25,-.25,0,1,0,0,-.5,1.5"], { matrix: [1.5, -.25, -.25, 0, 1, 0, 0, -.5, 1.5] }],
];

test("every format becomes the converter's bytes, with every look", () => {
  const formats = orvella.formats();
  assert.ok(formats.length > 40);
  for (const { name, samples } of formats) {
    const frame = chart(name);
    const output = samples === "grey" ? "Mono8" : "RGB24";
    const mosaic = /^[rgb]{4}$/.test(samples) && samples !== "rgba" && samples !== "bgra";
    for (const [words, options] of mosaic ? [...looks, ...mosaicLooks] : looks) {
      writeFileSync(join(folder, "frame"), frame);
      const wanted = program("convert", "-f", name, "-s", `${width}x${height}`, "-t", output, ...words, "--raw",
        join(folder, "frame"), "-");
      const what = `${name} ${words.join(" ")}`;
      const bytes = orvella.convert(frame, name, { width, height }, output, options);
      assert.ok(wanted.equals(bytes), what);
      orvella.look(frame, { format: name, size: `${width}x${height}` });
      const { rgba, channels } = orvella.render(options);
      const seen = rgba.filter((_, i) => i % 4 < channels);
      assert.ok(wanted.equals(seen), `rendered ${what}`);
    }
  }
});

test("samples are those that the camera gave", () => {
  const grey = chart("Mono16"); // the same chart in other storages
  const samples = (format, bytes, more = {}) => {
    orvella.look(bytes, { format, size: { width, height }, ...more });
    return orvella.samples(0, 0, width, height);
  };
  const words = new Uint16Array(grey.buffer.slice(grey.byteOffset, grey.byteOffset + grey.length));
  for (const format of ["Mono8", "Mono10", "Mono10p", "Mono12p", "Mono12Packed", "Mono14", "Mono16"]) {
    const { bits } = orvella.formats().find(({ name }) => name === format);
    assert.deepEqual(samples(format, chart(format)), words.map((word) => word >> (16 - bits)), format);
  }
  assert.deepEqual(samples("Mono16", grey.swap16(), { bigEndian: true }), words);
  const yuv = Uint8Array.of(10, 1, 20, 2, 11, 3, 21, 4); // U Y V Y
  orvella.look(yuv, { format: "Yuv422", size: "2x2" });
  assert.deepEqual([...orvella.samples(0, 1, 2, 1)], [3, 11, 21, 4, 11, 21]);
});

test("padded rows, histograms, names", async () => {
  const padded = Uint8Array.of(1, 2, 99, 3, 4);
  assert.deepEqual([...await convert(padded, "Mono8", "2x2", "Mono8", { stride: 3 })], [1, 2, 3, 4]);
  assert.deepEqual(orvella.stored({ format: "Mono8", size: "2x2", stride: 3 }), { frame: 6, row: 2 });
  orvella.look(Uint16Array.of(7, 1023, 8, 2000), { format: "Mono10", size: "2x2" });
  const { histograms: [grey], warning } = orvella.statistics();
  assert.deepEqual([grey.least, grey.mean, grey.most, grey.counts[1], grey.counts[255]], [7, 759.5, 2000, 1, 2]);
  assert.match(warning, /1 samples are above the 1023 of 10 bits/);
  assert.deepEqual(orvella.named("rose_BayerRG14lsb_768x512.raw"), { format: "BayerRG16", bitsUsed: 14, size: "768x512" });
  assert.deepEqual(orvella.named("nothing.bin"), {});
  const guesses = orvella.guess(orvella.chart({ format: "Mono12p", size: "320x240" }));
  assert.deepEqual(guesses[0], { format: "Mono12p", size: "320x240" });
});

test("what is wrong is said, and nothing breaks", () => {
  const bytes = new Uint8Array(307200);
  const refused = [
    [[bytes, "BayerXX8", "640x480", "RGB24"], /unknown pixel format 'BayerXX8'; did you mean/],
    [[bytes, "BayerRG8", "640x481", "RGB24"], /expected 307840 bytes for BayerRG8 at 640x481, found 307200; that fits/],
    [[bytes, "BayerRG8", "640x480", "RGB25"], /unknown output 'RGB25'/],
    [[bytes, "BayerRG8", "640x480", "RGB24", { colour: 1 }], /unknown option 'colour'/],
    [[bytes, "BayerRG8", "1000000x1000000", "RGB24"], /too large/],
    [[bytes, "Mono8", "640x480", "Mono8", { debayer: "3x3" }], /for Bayer mosaics, not for Mono8/],
  ];
  for (const [how, message] of refused) assert.throws(() => orvella.convert(...how), message);
  assert.equal(orvella.convert(bytes, "Mono8", "640x480", "Mono8").length, 307200);
});
