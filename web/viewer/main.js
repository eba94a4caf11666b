// The page: what is open, how it is looked at, and what happens when either changes.
import { Controls } from "./controls.js";
import { embedded, Engine, latest } from "./engine.js";
import { filesOf, framesAmong } from "./files.js";
import { showHistograms } from "./histogram.js";
import { sensorPixel } from "./orientation.js";
import { showPixel } from "./readout.js";
import { commandLine, fromFragment, toFragment } from "./settings.js";
import { Stage } from "./stage.js";

const byId = (id) => document.getElementById(id);
const engine = new Engine();
const controls = new Controls(byId("controls"));
const stage = new Stage(byId("panes"));

const state = {
  /** @type {File[]} */
  files: [],
  file: 0,
  /** @type {File | undefined} */
  current: undefined,
  size: 0, // bytes of its frames
  header: {}, // what that says of them
  number: 0, // of the frame in the file
  count: 1, // of frames in the file
  /** @type {Partial<import("./settings.js").Frame>} */
  frame: {},
  chosen: false, // by a link or by hand, rather than by the file's name
  /** @type {[import("./settings.js").Look, import("./settings.js").Look]} */
  looks: [{ auto: true }, { auto: true }],
  compare: false,
  sensor: [], // histograms
  pictures: [], // what is known of each side's
};

// ---- From files to pictures

/** @param {Iterable<File> | Promise<Iterable<File>>} given */
async function open(given) {
  try {
    const files = framesAmong(await given);
    if (files.length === 0) return complain("There are no files in it.");
    state.files = files;
    if (state.current) state.chosen = false; // for the files before
    await goTo(0, 0);
  } catch (error) {
    complain(error.message);
  }
}

async function goTo(file, number) {
  const another = state.files[file] !== state.current;
  Object.assign(state, { file, number, current: state.files[file] });
  document.body.dataset.state = "ready";
  byId("welcome").hidden = true;
  try {
    if (another) await identify(state.current);
  } catch (error) {
    complain(error.message);
    return showPosition();
  }
  controls.writeFrame(state.frame);
  controls.writeLook(state.looks[controls.side]);
  show();
}

/** What the file is: as its header or its name says, as was chosen if that fits, or else as its bytes look. */
async function identify(file) {
  Object.assign(state, { header: {}, size: 0 });
  const { header, named: byName, size } = await engine.ask("open", file);
  const named = header ?? byName;
  Object.assign(state, { header: header ?? {}, size });
  controls.guesses = [];
  if (state.chosen && (await fits(state.frame))) return;
  if (named.format && named.size) state.frame = named;
  else if (await fits(state.frame)) return;
  else {
    const guesses = await engine.ask("guesses");
    controls.guesses = guesses;
    state.frame = { format: "Mono8", size: "640x480", ...guesses[0], ...named };
  }
  state.chosen = false;
}

async function fits(frame) {
  if (!frame.format || !frame.size || state.size === 0) return false;
  const layout = await engine.ask("layout", frame).catch(() => ({ count: 0 }));
  return layout.count > 0 && layout.left === 0;
}

const show = latest(async () => {
  const start = performance.now();
  byId("panes").hidden = false;
  stage.compare(state.compare);
  const [layout, ...rest] = await Promise.allSettled([ // asked for at once: an answer takes a while to come
    engine.ask("layout", state.frame),
    engine.ask("take", state.frame, state.number),
    ...sides().map(renderSide),
  ]);
  try {
    const { count, left, bytes } = valueOf(layout);
    state.count = Math.max(1, count);
    state.number = Math.min(state.number, state.count - 1);
    rest.forEach(valueOf);
    settled();
    describe({ count, left, bytes }, performance.now() - start);
    showPosition();
    await painted(); // which the counting would slow down
    await showStatistics();
  } catch (error) {
    complain(error.message);
    showPosition();
  }
});

/** The picture is on screen; or the page is not. */
const painted = () => new Promise((done) => {
  requestAnimationFrame(() => setTimeout(done));
  setTimeout(done, 200);
});

function valueOf({ status, value, reason }) {
  if (status === "rejected") throw reason;
  return value;
}

const sides = () => (state.compare ? [0, 1] : [0]);

async function renderSide(side) {
  const { bitmap, ...about } = await engine.ask("render", state.looks[side], side);
  state.pictures[side] = about;
  stage.show(bitmap, side);
}

const changed = new Set(); // sides
const rerender = latest(async () => {
  const now = [...changed];
  changed.clear();
  try {
    for (const side of now) await renderSide(side);
    settled();
  } catch (error) {
    complain(error.message);
  }
});

function settled() {
  byId("message").hidden = true;
  const picture = state.pictures[controls.side];
  controls.showMeasured(picture.measured);
  byId("remark").textContent = picture.remark && `${capital(picture.remark.replace("--debayer", "demosaicing by"))}.`;
  showHistogram();
  readPixel();
  writeSamples();
  history.replaceState(null, "", `#${toFragment(state)}`);
  document.body.dataset.renderings = Number(document.body.dataset.renderings ?? 0) + 1;
}

async function showStatistics() {
  const { histograms, warning } = await engine.ask("statistics");
  state.sensor = histograms;
  if (warning) byId("about").append(` ${capital(warning)}.`);
  showHistogram();
}

const showHistogram = latest(async () => {
  const ofPicture = controls.fields.of.value === "picture", picture = state.pictures[controls.side];
  if (ofPicture && picture) picture.histograms ??= await engine.ask("histograms", controls.side);
  showHistograms(byId("curves"), byId("figures"), (ofPicture ? picture?.histograms : state.sensor) ?? []);
});

const sensorAt = (pixel) => sensorPixel(pixel, state.looks[0].flip, state.frame.size);

const readPixel = latest(async () => {
  if (!stage.pixel) return void byId("readout").replaceChildren("Point at a pixel to read its values.");
  const { pixel } = stage, sensor = sensorAt(pixel);
  const values = [engine.ask("samples", [sensor]), engine.ask("colours", pixel, sides().length)];
  const [samples, colours] = await Promise.all(values).catch(() => []);
  if (samples) showPixel(byId("readout"), pixel, sensor, { samples, colours }, controls.format.samples);
});

const writeSamples = latest(async () => {
  const part = stage.legible;
  if (!part) return;
  const { left, top, width, height } = part;
  const pixels = Array.from({ length: width * height }, (_, i) => sensorAt({ x: left + (i % width), y: top + Math.floor(i / width) }));
  const samples = await engine.ask("samples", pixels).catch(() => undefined);
  if (samples && sameView(part)) part.write(samples);
});
const sameView = ({ left, top, width, height }) => {
  const now = stage.legible;
  return now && [now.left, now.top, now.width, now.height].join() === [left, top, width, height].join();
};

// ---- Words

function complain(text) {
  byId("message").textContent = capital(text);
  byId("message").hidden = false;
  document.body.dataset.complaints = Number(document.body.dataset.complaints ?? 0) + 1;
}

function say(text) {
  byId("done").textContent = text;
}

const capital = (text) => text.charAt(0).toUpperCase() + text.slice(1);

function describe({ count, left, bytes }, time) {
  const parts = [`${bytes.toLocaleString("en")} bytes${count > 1 ? ` each, ${count} frames` : ""}`];
  if (state.frame.bitsUsed) parts.push(`samples of ${state.frame.bitsUsed} bits`);
  if (left > 0) parts.push(`${left.toLocaleString("en")} bytes are left over`);
  byId("about").textContent = `${parts.join("; ")}.`;
  say(`Shown in ${Math.round(time)} ms`);
}

function showPosition() {
  const total = state.files.length > 1 ? `${state.file + 1} of ${state.files.length} · ` : "";
  const frame = state.count > 1 ? ` · frame ${state.number + 1} of ${state.count}` : "";
  byId("position").textContent = `${total}${state.current.name}${frame}`;
  byId("position").title = state.current.name;
  byId("steps").hidden = false;
  const first = state.file === 0 && state.number === 0;
  const last = state.file === state.files.length - 1 && state.number === state.count - 1;
  for (const [id, end] of [["previous", first], ["next", last]]) {
    byId(id).hidden = state.files.length === 1 && state.count === 1;
    byId(id).disabled = end;
  }
  document.title = `${state.current.name} – Orvella viewer`;
}

// ---- What the user does

function step(by) {
  const number = state.number + by;
  if (number >= 0 && number < state.count) return goTo(state.file, number);
  const file = state.file + by;
  if (file >= 0 && file < state.files.length) goTo(file, by > 0 ? 0 : Infinity);
}

controls.addEventListener("frame", () => {
  if (!controls.form.checkValidity()) return;
  state.frame = controls.readFrame();
  state.chosen = true;
  if (state.current) show();
});
controls.addEventListener("look", () => {
  const look = controls.readLook(), { flip } = state.looks[0];
  state.looks[controls.side] = look;
  for (const each of state.looks) each.flip = look.flip;
  if (!state.current) return;
  for (const side of look.flip === flip ? [controls.side] : sides()) changed.add(side);
  rerender();
});
controls.addEventListener("side", () => {
  controls.writeLook(state.looks[controls.side]);
  settled();
});
controls.addEventListener("of", showHistogram);

stage.addEventListener("pixel", () => readPixel());
stage.addEventListener("view", () => {
  byId("scale").value = `${Number((stage.view.scale * devicePixelRatio * 100).toPrecision(3))} %`;
  writeSamples();
});
byId("zoom").addEventListener("click", ({ target }) => target.dataset.zoom && stage.zoom(target.dataset.zoom));

byId("compare").addEventListener("click", async () => {
  state.compare = !state.compare;
  if (state.compare) state.looks[1] = { ...state.looks[0] };
  showCompare();
  await show();
});
function showCompare() {
  byId("compare").setAttribute("aria-pressed", String(state.compare));
  controls.sided = state.compare;
  controls.writeLook(state.looks[controls.side]);
}

byId("copy-command").addEventListener("click", () => {
  if (!state.frame.format) return say("There is no frame to convert");
  const several = state.count > 1 || byId("about").textContent.includes("left over");
  copy("command", commandLine(state.frame, state.looks[controls.side], {
    header: state.header, grey: controls.format.samples === "grey", name: state.current.name,
    number: several ? state.number + 1 : undefined }));
});
byId("copy-link").addEventListener("click", () => copy("link", `${location.href.replace(/#.*/, "")}#${toFragment(state)}`));
async function copy(what, text) {
  try {
    await navigator.clipboard.writeText(text);
    say(`Copied the ${what}: ${text}`);
  } catch {
    say(text); // to be copied by hand
  }
}

byId("save").addEventListener("click", async () => {
  const blob = await engine.ask("png", controls.side);
  const link = document.createElement("a");
  link.href = URL.createObjectURL(blob);
  link.download = `${state.current.name.replace(/\.[^.]*$/, "")}.png`;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10_000);
  say(`Saved ${link.download}`);
});

for (const [button, input] of [["open", "files"], ["open-too", "files"], ["open-folder", "folder"]])
  byId(button).addEventListener("click", () => byId(input).click());
for (const id of ["files", "folder"])
  byId(id).addEventListener("change", ({ target }) => {
    open([...target.files]); // which the next line empties
    target.value = ""; // so that the same file can be chosen again
  });
byId("chart").addEventListener("click", async () => {
  const [format, size] = ["BayerRG12p", "1280x960"];
  open([new File([await engine.ask("chart", { format, size })], `chart_${format}_${size}.raw`)]);
});
byId("previous").addEventListener("click", () => step(-1));
byId("next").addEventListener("click", () => step(1));
addEventListener("keydown", (event) => {
  const by = { PageDown: 1, PageUp: -1 }[event.key];
  if (!by || !state.current || /^(INPUT|SELECT)$/.test(event.target.tagName)) return;
  event.preventDefault();
  step(by);
});

let dragged = 0; // into how many elements
addEventListener("dragenter", () => document.body.classList.toggle("dragged", ++dragged > 0));
addEventListener("dragleave", () => document.body.classList.toggle("dragged", --dragged > 0));
addEventListener("dragover", (event) => event.preventDefault());
addEventListener("drop", (event) => {
  event.preventDefault();
  dragged = 0;
  document.body.classList.remove("dragged");
  open(filesOf(event.dataTransfer));
});

function takeLink() {
  const link = fromFragment(location.hash);
  if (!link) return;
  Object.assign(state, link, { chosen: Boolean(link.frame.format) });
  showCompare();
  if (state.current) goTo(state.file, state.number);
}
addEventListener("hashchange", takeLink);
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", showHistogram);

try {
  controls.formats = await engine.ask("start", embedded());
  takeLink();
  document.body.dataset.state = "waiting";
  for (const format of ["BayerRG12p", "BayerRG8", "Mono12p", "Mono8", "Rgb8"])
    if (!state.current) await engine.ask("warmUp", format);
  if (!state.current) await engine.ask("reserve");
  document.body.dataset.warm = "true";
} catch (error) {
  complain(`The viewer does not start: ${error.message}`);
}
