// The values of the pixel that is looked at, in words.

const mosaics = ["rggb", "grbg", "gbrg", "bggr"];
const names = { rgb: "RGB", bgr: "BGR", rgba: "RGBA", bgra: "BGRA", yuv411: "YUV", yuv422: "YUV", yuv444: "YUV" };

/**
 * @param {HTMLElement} element
 * @param {{ x: number, y: number }} pixel
 * @param {{ x: number, y: number }} sensor that pixel of the frame
 * @param {{ samples: number[], colours: number[][] }} values
 * @param {string} kind of samples
 */
export function showPixel(element, { x, y }, sensor, { samples, colours }, kind) {
  const letter = mosaics.includes(kind) ? kind[(sensor.y % 2) * 2 + (sensor.x % 2)].toUpperCase() : "";
  const raw = samples.map((sample, i) => `${names[kind]?.[i] ?? letter} ${sample}`.trim()).join("  ");
  element.replaceChildren(bold(`${x}, ${y}`), `   sensor ${raw}`,
    ...colours.flatMap((colour, i) => [colours.length > 1 ? `   ${["left", "right"][i]} ` : "   picture ", swatch(colour), textOf(colour)]));
}

const textOf = (colour) => (colour.every((value) => value === colour[0]) ? String(colour[0]) : colour.join(" "));

function bold(text) {
  const element = document.createElement("b");
  element.textContent = text;
  return element;
}

function swatch(colour) {
  const element = document.createElement("span");
  element.className = "swatch";
  element.style.background = `rgb(${colour.join()})`;
  return element;
}
