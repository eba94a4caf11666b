// Turned and mirrored pictures: which pixel of the frame a pixel of the picture is.

/**
 * @param {{ x: number, y: number }} pixel of the picture
 * @param {string | undefined} flip as the converter's option
 * @param {string} size of the frame, "2448x2048"
 */
export function sensorPixel({ x, y }, flip, size) {
  const [width, height] = size.split("x").map(Number);
  switch (flip) {
    case "h": return { x: width - 1 - x, y };
    case "v": return { x, y: height - 1 - y };
    case "180": return { x: width - 1 - x, y: height - 1 - y };
    case "90": return { x: y, y: height - 1 - x };
    case "270": return { x: width - 1 - y, y: x };
    default: return { x, y };
  }
}
