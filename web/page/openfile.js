// A file that is open: its bytes and lines, its pages as they come, and the interpreter that draws
// it and then answers what lies where.
import { Interpreter } from './interpreter.js';
import { Lines } from './lines.js';
import { aboutEnd } from './messages.js';

const SECONDS = 60; // that a drawing may take
const GRACE = 10; // more, for an operator that asks nobody whether to go on

export class OpenFile {
  // `onChange(file)` is told whenever something about it has changed.
  constructor(name, onChange) {
    this.name = name;
    this.onChange = onChange;
    this.seconds = SECONDS;
    this.lines = null;
    this.pages = []; // {area, svg, address}
    this.page = 0; // the one that is shown
    this.messages = []; // {text, isAlarm}
    this.findings = null; // what is lost or different; null when nobody has looked
    this.progress = 0; // null when it has come to its end
    this.interpreter = new Interpreter((message) => this.take(message));
  }

  async open(blob) {
    try {
      const bytes = await blob.arrayBuffer();
      this.lines = new Lines(new Uint8Array(bytes));
      this.watchdog = setTimeout(() => this.stop(`Stopped after ${SECONDS + GRACE} s`), (SECONDS + GRACE) * 1000);
      await this.interpreter.open(bytes, SECONDS);
    } catch (error) {
      this.end([{ text: `Cannot be opened: ${error.message}`, isAlarm: true }]);
    }
    this.onChange(this);
  }

  stop(why = 'Stopped') {
    if (this.progress === null) return;
    this.interpreter.stop();
    const text = `${why}. Pages that were complete are shown; the one that was being drawn is lost.`;
    this.end([{ text, isAlarm: true }]);
  }

  take(message) {
    if (message.type === 'page') {
      this.pages.push({ ...message, address: URL.createObjectURL(message.svg) });
    } else if (message.type === 'progress') {
      this.progress = message.bytes / Math.max(1, this.lines.bytes.length);
    } else if (message.type === 'drawn') {
      this.findings = message.findings;
      this.end(aboutEnd(this, message));
      return;
    } else {
      this.end([{ text: `Cannot be drawn: ${message.reason}.`, isAlarm: true }]);
      return;
    }
    this.onChange(this);
  }

  end(messages) {
    clearTimeout(this.watchdog);
    this.progress = null;
    this.messages = messages;
    this.onChange(this);
  }

  // The uppermost shape of the page that is shown, or null.
  shapeAt(point, reach) {
    return this.interpreter.ask('shapeAt', { page: this.page, ...point, reach });
  }

  // The shapes that a line draws, and the next one after it where it draws none.
  drawnBy(line) {
    const range = { first: this.lines.start(line), end: this.lines.end(line) };
    return this.interpreter.ask('drawnBy', { ...range, most: 500 });
  }
}
