// What can be set, as plain objects that hold only what is set, and their two texts: the link's fragment and the command
// line. The names are those of the module's options and, with hyphens, of the converter's.

/** @typedef {import("../orvella.mjs").Look} Look */
/** @typedef {import("../orvella.mjs").Frame & { skip?: number }} Frame */
/** @typedef {{ frame: Partial<Frame>, looks: [Look, Look], compare: boolean }} Settings */

const frameNames = ["format", "size", "bitsUsed", "msbAligned", "bigEndian", "skip", "stride"];
const lookNames = ["debayer", "matrix", "auto", "black", "whiteBalance", "exposure", "stretch", "gamma", "flip"];
const rightSide = "right.";

/** @param {Settings} settings */
export function toFragment({ frame, looks, compare }) {
  const words = [...entries(frame, frameNames), ...entries(looks[0], lookNames)];
  if (compare) words.push(...entries(looks[1], lookNames).map(([name, value]) => [rightSide + name, value]), ["compare", "true"]);
  return words.map(([name, value]) => `${name}=${encodeURIComponent(value).replaceAll("%2C", ",")}`).join("&");
}

/**
 * @param {string} fragment with or without its #
 * @returns {Settings | undefined} nothing if the fragment is empty
 */
export function fromFragment(fragment) {
  const words = new URLSearchParams(fragment.replace(/^#/, "").replaceAll("+", "%2B"));
  if ([...words].length === 0) return undefined;
  const take = (names, prefix = "") => Object.fromEntries(
    names.filter((name) => words.has(prefix + name)).map((name) => [name, typed(words.get(prefix + name))]));
  return { frame: take(frameNames), looks: [take(lookNames), take(lookNames, rightSide)], compare: words.has("compare") };
}

/**
 * The command that makes the same picture.
 * @param {Partial<Frame>} frame
 * @param {Look} look
 * @param {{ header: Partial<Frame>, grey: boolean, name: string, number?: number }} source `header`: what the file's says, so
 *     that the converter need not be told; `number`: which frame of several, from 1
 */
export function commandLine(frame, look, { header, grey, name, number }) {
  const words = ["orvella", "convert", "-f", frame.format, "-s", frame.size];
  const add = ([option, value]) => words.push(`--${hyphened(option)}`, ...(value === "true" ? [] : [value]));
  entries(frame, frameNames.slice(2)).filter(([option, value]) => String(header[option]) !== value).forEach(add);
  if (number) add(["frame", String(number)]);
  words.push("-t", grey ? "Mono8" : "RGB24");
  entries(look, lookNames).forEach(add);
  return [...words, name, `${name.replace(/\.[^.]*$/, "")}.png`].map(quoted).join(" ");
}

function entries(settings, names) {
  return names
    .filter((name) => ![undefined, "", false].includes(settings[name]))
    .map((name) => [name, String(settings[name])]);
}

const typed = (text) => (text === "true" ? true : text);
const hyphened = (name) => name.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`);
const quoted = (word) => (/^[\w.,:=+/-]+$/.test(word) ? word : `'${word.replaceAll("'", "'\\''")}'`);
