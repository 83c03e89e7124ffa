// What the person asks about the drawing that is shown, with the pointer or by keyboard, and how it
// is answered: outlines in the drawing, marks in the source, a sentence.
import { aboutShape, marksOf } from './messages.js';

export class Questions {
  constructor({ viewer, sources, remarks, output, goToPage }) {
    this.viewer = viewer;
    this.sources = sources; // views, of the file or of both
    this.remarks = remarks;
    this.output = output;
    this.goToPage = goToPage;
    this.hint = output.textContent;
    this.drawing = null;
  }

  begin(drawing) {
    this.drawing = drawing;
    const [before, after] = drawing.sources;
    if (drawing.isCarried) this.say('');
    else if (!after) this.say(this.hint);
    else this.say(`Red: only in ${before.name}. Blue: only in ${after.name}. Pale: in both.`);
  }

  // What lies at a point of the page?
  async askAbout(point, reach) {
    const found = await this.answer((drawing) => drawing.at(point, reach));
    if (found === null) return;
    this.outline(found.shapes);
    this.mark(found.shapes);
    this.remarks.mark(found.number);
    const isComparison = this.drawing.sources.length > 1;
    if (found.shapes.length > 0) this.say(found.shapes.map((shape) => this.about(shape)).join(' '));
    else this.say(isComparison ? 'Nothing differs there.' : 'Nothing is drawn there.');
  }

  // What does a line draw?
  async askWhatIsDrawnBy(side, line) {
    const found = await this.answer((drawing) => drawing.drawnBy(side, line));
    if (found === null) return;
    const { shapes, next } = found;
    const first = shapes[0] ?? next;
    if (!first) {
      this.viewer.clear();
      this.say(`Line ${line + 1} draws nothing, and nothing is drawn behind it.`);
      return;
    }
    this.outline(next ? [next] : shapes, next !== null);
    const what = this.about(first);
    if (next) this.say(`Line ${line + 1} itself draws nothing. What is drawn next: ${what}`);
    else this.say(shapes.length === 1 ? what : `Line ${line + 1} draws ${shapes.length} shapes.`);
  }

  // Where is that remark about?
  async show(item) {
    this.sources.forEach((source, side) => source.mark(item.marks[side] ?? []));
    if (item.number === undefined) return;
    const shapes = await this.answer((drawing) => drawing.difference(item.number));
    if (shapes !== null) this.outline(shapes);
  }

  // Null when nobody answers, or another drawing is shown by then.
  async answer(ask) {
    const { drawing } = this;
    if (drawing.isCarried) this.say('This page has no interpreter that could tell what draws what.');
    const found = await ask(drawing);
    return drawing === this.drawing ? found : null;
  }

  // Outlines shapes that are on the page of the first one, which comes into sight.
  outline(shapes, isNext = false) {
    const number = shapes[0]?.page;
    const { drawing } = this;
    const page = drawing.pages.findIndex((each) => each.number === number);
    if (page >= 0 && page !== drawing.page) this.goToPage(page);
    this.viewer.clear();
    if (number !== undefined && page < 0) return;
    for (const shape of shapes) if (shape.page === number) this.viewer.addShape(shape, isNext);
  }

  mark(shapes) {
    this.sources.forEach((source, side) => {
      source.mark(shapes.filter((shape) => shape.side === side).flatMap(marksOf));
    });
  }

  about(shape) {
    const { sources } = this.drawing;
    const source = sources[shape.side];
    const name = sources.length > 1 ? `${source.name}: ` : '';
    return name + aboutShape(source, shape);
  }

  say(text) {
    this.output.textContent = text;
  }
}
