// The worker, as seen from the page: questions and answers.

export class Engine {
  #worker = startWorker();
  #waiting = new Map();
  #last = 0;

  constructor() {
    this.#worker.onmessage = ({ data: { id, error, result } }) => {
      const { resolve, reject } = this.#waiting.get(id);
      this.#waiting.delete(id);
      if (error === undefined) resolve(result);
      else reject(new Error(error));
    };
    this.#worker.onerror = (event) => {
      for (const { reject } of this.#waiting.values()) reject(new Error(event.message || "the worker does not start"));
    };
  }

  /**
   * @param {keyof import("./worker.js").Answers} what
   * @param {...unknown} given
   * @returns {Promise<any>}
   */
  ask(what, ...given) {
    const id = ++this.#last;
    this.#worker.postMessage({ id, what, given });
    return new Promise((resolve, reject) => this.#waiting.set(id, { resolve, reject }));
  }
}

/** Does one thing at a time; of what is asked for meanwhile, only the last. */
export function latest(work) {
  let running = false;
  let next;
  return async function run(...given) {
    next = given;
    if (running) return;
    running = true;
    while (next) {
      const now = next;
      next = undefined;
      await work(...now);
    }
    running = false;
  };
}

/** The content of orvella.wasm, compressed, where the page is a single file; otherwise nothing. */
export const embedded = () => document.getElementById("module")?.textContent;

// A page that was opened from a file can start no worker from another one, but from a text of its own.
function startWorker() {
  const source = document.getElementById("worker")?.textContent;
  if (source === undefined) return new Worker(new URL("worker.js", import.meta.url), { type: "module" });
  return new Worker(URL.createObjectURL(new Blob([source], { type: "text/javascript" })));
}
