// What differs between two files that are open. Both are drawn once more, by an interpreter of its
// own.
import { Drawing } from './drawing.js';
import { aboutDifferences, aboutEnd } from './messages.js';

export class Comparison extends Drawing {
  constructor(before, after, onChange) {
    super(`${before.name} → ${after.name}`, onChange);
    this.sources = [before.sources[0], after.sources[0]];
  }

  // The shapes of a difference: of one, or of the earlier and the later one.
  difference(number) {
    return this.interpreter.ask('difference', { number });
  }

  finish({ ends, comparison }) {
    this.remarks = aboutDifferences(this.sources, comparison);
    comparison.pages.forEach((number, i) => {
      this.pages[i].number = number;
    });
    return this.sources.flatMap((source, side) => {
      const messages = aboutEnd(source, ends[side]);
      return messages.map(({ text, isAlarm }) => ({ text: `${source.name}: ${text}`, isAlarm }));
    });
  }
}
