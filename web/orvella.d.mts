/** Width and height in pixels; as a text, "2448x2048". */
export type Size = { width: number; height: number } | string;

/** How samples lie in the bytes, where the format does not say it. */
export interface Storage {
  /** Of 16-bit words, how many bits the samples have. */
  bitsUsed?: number;
  /** The samples are in the high bits of their words, not in the low ones. */
  msbAligned?: boolean;
  /** The high byte of a word comes first. */
  bigEndian?: boolean;
  /** Bytes from row to row, if rows are padded. */
  stride?: number;
}

/** What happens on the way to a picture; the same words as `orvella convert --help`. */
export interface Look {
  debayer?: "2x2" | "3x3" | "lcaa" | "lcaav" | "yuv422";
  /** R' G' B' from R G B, row by row. */
  matrix?: number[] | "identity" | "swap-red-blue" | "grey" | string;
  /** A sample's value that is dark, or "auto". */
  black?: number | string;
  /** Factors of red, green and blue, or "auto". */
  whiteBalance?: number[] | string;
  exposure?: number;
  /** Percentages of the samples that may become black and white. */
  stretch?: number[] | string;
  /** The curve of the display: 2.2, or "srgb". */
  gamma?: number | string;
  /** All of them by themselves. */
  auto?: boolean;
  flip?: "h" | "v" | "90" | "180" | "270";
  half?: boolean;
  deinterlace?: boolean;
}

export interface Frame extends Storage {
  format: string;
  size: Size;
}

export type Output =
  | "Mono8" | "Mono8_Rec709" | "Mono16" | "Mono16_Rec709"
  | "BGR24" | "BGRA32" | "RGB24" | "RGBA32" | "BGR48" | "RGB48" | "YUV422";

export interface PixelFormat {
  name: string;
  /** Of a sample. */
  bits: number;
  samples:
    | "grey" | "rggb" | "grbg" | "gbrg" | "bggr" | "rgb" | "bgr" | "rgba" | "bgra"
    | "yuv411" | "yuv422" | "yuv444" | "cygm";
  /** Samples lie in 16-bit words. */
  words: boolean;
}

export interface Histogram {
  name: string;
  least: number;
  mean: number;
  most: number;
  /** 256, over all values that samples can have. */
  counts: number[];
}

export interface Rendering {
  /** R, G, B and 255 of every pixel. */
  rgba: Uint8Array;
  /** 1 if the picture is grey, 3 otherwise. */
  channels: 1 | 3;
  width: number;
  height: number;
  remark: string;
  /** What was used where "auto" was asked for, if the picture was developed; low and high from 0 to 1. */
  measured?: { black: number; whiteBalance: number[]; low: number; high: number };
}

/** Every method throws an Error with a message that says what could be changed. */
export interface Orvella {
  /** A frame's bytes become the bytes of an image, exactly those that the library makes; 16-bit samples are little-endian. */
  convert(
    bytes: ArrayBuffer | ArrayBufferView,
    format: string,
    size: Size,
    output: Output,
    options?: Storage & Look,
  ): Uint8Array;

  /** Those that become pictures. */
  formats(): PixelFormat[];
  /** What a file's name, like "x_BayerRG12p_2448x2048.raw", says. */
  named(name: string): { format?: string; size?: string; bitsUsed?: number };
  /**
   * Of a PGM, PPM, PAM or .npy file, by its name: the bytes before its first frame, and the frame, in which a mosaic is grey.
   * Nothing for others. `beginning` has 4096 bytes of the file, or all.
   */
  header(name: string, beginning: ArrayBuffer | ArrayBufferView): { skip: number; frame: Frame & { size: string } } | undefined;
  /** What a dump without a header may hold, from its bytes alone, the best first. */
  guess(bytes: ArrayBuffer | ArrayBufferView, count?: number): (Frame & { size: string })[];
  /** A test chart, as a camera would send it. */
  chart(frame: Frame): Uint8Array;
  /** Bytes of a stored frame and of its rows, 0 if they are not whole bytes. */
  stored(frame: Frame): { frame: number; row: number };

  /** Takes a frame to be rendered again and again. */
  look(bytes: ArrayBuffer | ArrayBufferView, frame: Frame): void;
  /** Of that frame's samples. A warning, if some are above what so many bits can hold. */
  statistics(): { histograms: Histogram[]; warning: string };
  /** A picture of that frame, as the converter makes it in Mono8 or RGB24. */
  render(look: Look): Rendering;
  /** The same without a copy: `rgba` lies in the module's memory and lasts until the next call. */
  renderInPlace(look: Look): Rendering;
  /** Of such a picture: one histogram of a grey one, otherwise three. */
  histograms(rgba: Uint8Array, channels: 1 | 3): Histogram[];
  /** What the camera gave for the pixels of a part of that frame, row by row: one sample of grey and mosaics, others more. */
  samples(left: number, top: number, width: number, height: number): Uint16Array;
}

/** `wasm` is the content of orvella.wasm, if that does not lie beside this module. */
export function load(wasm?: ArrayBuffer | ArrayBufferView | WebAssembly.Module): Promise<Orvella>;

/** The same as load and then convert. */
export function convert(...how: Parameters<Orvella["convert"]>): Promise<Uint8Array>;
