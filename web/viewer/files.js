// The files that are dropped or chosen, in order.

const notFrames = /(^\.|\.(png|jpe?g|txt|md|json|xml|csv|y4m|html?)$)/i;
const order = new Intl.Collator(undefined, { numeric: true });

/** @param {Iterable<File>} files */
export function framesAmong(files) {
  const all = [...files];
  const frames = all.filter((file) => !notFrames.test(file.name));
  return (frames.length > 0 ? frames : all).sort((a, b) => order.compare(pathOf(a), pathOf(b)));
}

/**
 * Files and those in folders. By handles where the browser has them: its entries are of no use to a page from a file.
 * @param {DataTransfer} transfer
 */
export async function filesOf(transfer) {
  const items = [...transfer.items].filter((item) => item.kind === "file");
  const plain = [...transfer.files];
  const entries = items.map((item) => item.webkitGetAsEntry?.());
  if (!entries.some((entry) => entry?.isDirectory)) return plain;
  if (!items[0].getAsFileSystemHandle) return (await Promise.all(entries.map(filesUnder))).flat();
  const handles = await Promise.all(items.map((item) => item.getAsFileSystemHandle()));
  return (await Promise.all(handles.map(filesIn))).flat();
}

/**
 * @param {FileSystemHandle} handle
 * @returns {Promise<File[]>}
 */
async function filesIn(handle) {
  if (handle.kind === "file") return [await handle.getFile()];
  const files = [];
  for await (const inside of handle.values()) files.push(...(await filesIn(inside)));
  return files;
}

/**
 * @param {FileSystemEntry | null} entry
 * @returns {Promise<File[]>}
 */
async function filesUnder(entry) {
  if (!entry) return [];
  if (entry.isFile) return [await new Promise((resolve, reject) => entry.file(resolve, reject))];
  const reader = entry.createReader();
  const files = [];
  for (;;) { // a part of them at a time
    const some = await new Promise((resolve, reject) => reader.readEntries(resolve, reject));
    if (some.length === 0) return files;
    files.push(...(await Promise.all(some.map(filesUnder))).flat());
  }
}

const pathOf = (file) => file.webkitRelativePath || file.name;
