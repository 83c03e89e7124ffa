// A file that is open: its bytes and lines, its pages, and what is lost or different in it.
import { Drawing } from './drawing.js';
import { Lines } from './lines.js';
import { aboutEnd, aboutFindings } from './messages.js';

export class OpenFile extends Drawing {
  constructor(name, onChange) {
    super(name, onChange);
    this.sources = [{ name, lines: null }];
  }

  get isRead() {
    return this.sources[0].lines !== null;
  }

  async open(blob) {
    try {
      this.sources[0].lines = new Lines(new Uint8Array(await blob.arrayBuffer()));
      await this.draw();
    } catch (error) {
      this.fail(`Cannot be opened: ${error.message}`);
    }
    this.onChange(this);
  }

  finish({ ends, findings }) {
    this.remarks = aboutFindings(this.sources[0], findings);
    return aboutEnd(this.sources[0], ends[0]);
  }
}
