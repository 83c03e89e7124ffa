// A file that is open: its bytes and lines, its pages, and what is lost or different in it.
import { Drawing } from './drawing.js';
import { Lines } from './lines.js';
import { aboutEnd, aboutFindings, aboutProgram } from './messages.js';

export class OpenFile extends Drawing {
  constructor(name, onChange, carried = null) {
    super(name, onChange, carried);
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

  finish({ ends, messages, findings }) {
    if (findings !== null) this.remarks = aboutFindings(this.sources[0], findings);
    return ends ? aboutEnd(this.sources[0], ends[0]) : messages.map(aboutProgram);
  }
}
