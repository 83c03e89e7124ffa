// What an interpreter draws for the page: pages and progress as they come, how it ended, and the
// answers about what was drawn. OpenFile and Comparison say what of.
import { CarriedDrawing } from './carrieddrawing.js';
import { Interpreter } from './interpreter.js';

export const SECONDS = 60; // that drawing may take
const GRACE = 10; // more, for an operator that asks nobody whether to go on

export class Drawing {
  // `onChange(drawing)` is told whenever something about it has changed; `carried` is what the page
  // carries of it where no interpreter is to draw it.
  constructor(name, onChange, carried = null) {
    this.name = name;
    this.onChange = onChange;
    this.sources = []; // {name, lines}: one, or the earlier and the later one
    this.pages = []; // {area, number, svg, address}
    this.page = 0; // the one that is shown
    this.messages = []; // {text, isAlarm}
    this.remarks = null; // what the list says, once it is known: {summary, items, note}
    this.progress = 0; // null when it has come to its end
    this.isCarried = carried !== null;
    const listener = (message) => this.take(message);
    this.interpreter = carried ? new CarriedDrawing(carried, listener) : new Interpreter(listener);
  }

  get pageNumber() {
    return this.pages[this.page]?.number;
  }

  async draw() {
    const files = this.sources.map(({ lines }) => lines.bytes);
    const seconds = SECONDS + GRACE;
    this.watchdog = setTimeout(() => this.stop(`Stopped after ${seconds} s`), seconds * 1000);
    await this.interpreter.open(files, SECONDS);
  }

  stop(why = 'Stopped') {
    if (this.progress === null) return;
    this.interpreter.stop();
    const text = `${why}. Pages that were complete are shown; the one that was being drawn is lost.`;
    this.end([{ text, isAlarm: true }]);
  }

  take(message) {
    if (message.type === 'page') {
      const number = this.pages.length + 1;
      this.pages.push({ number, ...message, address: URL.createObjectURL(message.svg) });
    } else if (message.type === 'progress') {
      const size = this.sources.reduce((sum, { lines }) => sum + lines.bytes.length, 0);
      this.progress = Math.min(1, message.bytes / Math.max(1, size));
    } else if (message.type === 'drawn') {
      this.end(this.finish(message));
      return;
    } else {
      this.fail(`Cannot be drawn: ${message.reason}.`);
      return;
    }
    this.onChange(this);
  }

  fail(text) {
    this.end([{ text, isAlarm: true }]);
  }

  end(messages) {
    clearTimeout(this.watchdog);
    this.progress = null;
    this.messages = messages;
    this.onChange(this);
  }

  // The shapes that a line of a source draws, and the next one after it where it draws none.
  drawnBy(side, line) {
    const { lines } = this.sources[side];
    const range = { first: lines.start(line), end: lines.end(line) };
    return this.interpreter.ask('drawnBy', { side, ...range, most: 500 });
  }

  // What of the page that is shown lies at a point: {shapes, number}, the number being that of the
  // difference that it is, or -1. Null when nobody is there to answer.
  at(point, reach) {
    return this.interpreter.ask('at', { page: this.pageNumber, ...point, reach });
  }
}
