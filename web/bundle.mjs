// Makes one HTML file of the viewer, which opens from a file, too: styles, scripts, the worker and the module, compressed,
// stand in it.
//
//     node bundle.mjs FOLDER OUTPUT      FOLDER has orvella.mjs, orvella.wasm and viewer/
import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { gzipSync } from "node:zlib";

const [folder, output] = process.argv.slice(2);
const viewer = (name) => join(folder, "viewer", name);
const script = (name) => execFileSync("esbuild", [viewer(name), "--bundle", "--minify", "--format=esm", "--target=es2022",
  "--external:node:fs/promises", "--define:import.meta.url=''", "--log-level=error"], { encoding: "utf8" });
// In an HTML page, a script ends at the first such tag.
const inline = (text) => text.replaceAll("</script", "<\\/script");
// As functions: texts may hold what replace() takes for references.
const pieces = [
  [/<link rel="stylesheet"[^>]*>/, () => `<style>\n${readFileSync(viewer("style.css"), "utf8")}</style>`],
  [/ *<script type="module"[^>]*><\/script>\n/, () => ""],
  [/<\/body>/, () => `<script type="text/plain" id="worker">${inline(script("worker.js"))}</script>
<script type="text/plain" id="module">${gzipSync(readFileSync(join(folder, "orvella.wasm")), { level: 9 }).toString("base64")}</script>
<script type="module">${inline(script("main.js"))}</script>
</body>`],
];
let page = readFileSync(viewer("index.html"), "utf8");
for (const [place, piece] of pieces) page = page.replace(place, piece);
writeFileSync(output, page);
