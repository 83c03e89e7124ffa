// The interpreter in a worker of its own, one for each file and each comparison: whatever a file
// does to it, it ends with that file.
import { unpack } from './carried.js';

async function prepare() {
  const [script, library] = await Promise.all(
    ['worker', 'library'].map((id) => unpack(document.getElementById(id))),
  );
  const address = URL.createObjectURL(new Blob([script], { type: 'text/javascript' }));
  return { address, library: await WebAssembly.compile(library) };
}

let prepared = null; // the promise of the script's address and of the library, for all workers

export class Interpreter {
  // `listener(message)` takes the messages about the drawing: page, progress, drawn, failure.
  constructor(listener) {
    this.listener = listener;
    this.worker = null;
    this.questions = new Map();
    this.asked = 0;
    this.isStopped = false;
  }

  // Draws the bytes of a file, or compares those of two, for at most that many seconds.
  async open(files, seconds) {
    prepared ??= prepare();
    const { address, library } = await prepared;
    if (this.isStopped) return;
    this.worker = new Worker(address);
    this.worker.onmessage = ({ data }) => this.take(data);
    this.worker.onerror = (event) => {
      event.preventDefault();
      this.end(`the interpreter ended: ${event.message ?? 'its script does not run here'}`);
    };
    this.worker.postMessage({ type: 'open', library, files, seconds });
  }

  // The answer to a question about what was drawn; null when nobody is there to answer.
  ask(type, content) {
    if (this.worker === null) return Promise.resolve(null);
    const question = ++this.asked;
    return new Promise((resolve) => {
      this.questions.set(question, resolve);
      this.worker.postMessage({ type, question, ...content });
    });
  }

  stop() {
    this.isStopped = true;
    this.worker?.terminate();
    this.worker = null;
    for (const resolve of this.questions.values()) resolve(null);
    this.questions.clear();
  }

  end(reason) {
    this.stop();
    this.listener({ type: 'failure', reason });
  }

  take(message) {
    if (message.type === 'failure') {
      this.end(message.reason);
    } else if (message.type === 'answer') {
      this.questions.get(message.question)?.(message.answer);
      this.questions.delete(message.question);
    } else {
      this.listener(message);
    }
  }
}
