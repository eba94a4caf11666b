// The histogram's curves and figures.

const colours = { R: "--red", G: "--green", B: "--blue", Y: "--grey", U: "--blue", V: "--red", A: "--quiet" };

/**
 * @param {HTMLCanvasElement} canvas
 * @param {HTMLElement} table
 * @param {import("../orvella.mjs").Histogram[]} histograms
 */
export function showHistograms(canvas, table, histograms) {
  const style = getComputedStyle(document.documentElement);
  draw(canvas, histograms, (name) => style.getPropertyValue(name));
  table.replaceChildren(...histograms.map(row));
}

// The root of the counts, so that rare values are seen, too.
function draw(canvas, histograms, styleOf) {
  const { width, height } = canvas, context = canvas.getContext("2d");
  context.clearRect(0, 0, width, height);
  context.globalCompositeOperation = styleOf("--blend");
  const highest = Math.sqrt(Math.max(1, ...histograms.flatMap(({ counts }) => counts.slice(1, -1)))) * 1.05;
  for (const { name, counts } of histograms) {
    context.fillStyle = context.strokeStyle = styleOf(colours[name]);
    context.beginPath();
    context.moveTo(0, height);
    counts.forEach((count, i) => context.lineTo(((i + 0.5) / counts.length) * width, height * (1 - Math.min(1, Math.sqrt(count) / highest))));
    context.lineTo(width, height);
    context.globalAlpha = 0.35;
    context.fill();
    context.globalAlpha = 1;
    context.lineWidth = 2;
    context.stroke();
  }
}

function row({ name, least, mean, most }, _, all) {
  const alone = all.length === 1;
  const element = document.createElement("tr"), head = document.createElement("th");
  head.scope = "row";
  head.textContent = name === "Y" && alone ? "Grey" : name;
  head.style.setProperty("--swatch", `var(${colours[name]})`);
  element.append(head);
  for (const value of [least, mean, most]) element.insertCell().textContent = Number(value.toFixed(1)).toLocaleString("en");
  return element;
}
