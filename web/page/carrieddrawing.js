// Stands for the interpreter in a page that has none: hands on what the program that made the page
// has drawn and found.
import { unpack } from './carried.js';

export class CarriedDrawing {
  // Of the elements that carry it. `listener(message)` takes the messages as those of an interpreter.
  constructor({ pages, report }, listener) {
    this.pages = pages;
    this.report = report;
    this.listener = listener;
  }

  async open() {
    for (const element of this.pages) {
      const [left, bottom, right, top] = element.dataset.area.split(' ').map(Number);
      // One after the other, for they may be large.
      // eslint-disable-next-line no-await-in-loop
      const svg = new Blob([await unpack(element)], { type: 'image/svg+xml' });
      this.listener({ type: 'page', area: { left, bottom, right, top }, svg });
    }
    const report = JSON.parse(new TextDecoder().decode(await unpack(this.report)));
    this.listener({ type: 'drawn', ...report });
  }

  // Nobody is here to answer.
  ask() {
    return Promise.resolve(null);
  }

  stop() {
    this.pages = [];
  }
}
