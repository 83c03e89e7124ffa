// Shows the lines of a file, however many there are: only those in sight are in the page.

const LINE_HEIGHT = 18;
const TALLEST = 10_000_000; // pixels; browsers lose their way far beyond

export class SourceView {
  // `onChoose(line)` is told of the line that the person wants to know about.
  constructor(box, onChoose) {
    this.box = box;
    this.extent = box.querySelector('.extent');
    this.list = box.querySelector('.lines');
    this.onChoose = onChoose;
    this.lines = null;
    this.marked = new Map(); // line to the byte of interest in it
    this.current = 0;
    box.addEventListener('scroll', () => this.draw());
    box.addEventListener('keydown', (event) => this.takeKey(event));
    this.list.addEventListener('click', (event) => this.takeClick(event));
    new ResizeObserver(() => this.draw()).observe(box);
  }

  show(lines) {
    this.lines = lines;
    this.marked = new Map();
    this.current = 0;
    const height = lines === null ? 0 : Math.min(lines.count * LINE_HEIGHT, TALLEST);
    this.extent.style.height = `${height}px`;
    this.box.scrollTop = 0;
    this.draw();
  }

  // Marks lines by bytes in them and brings the first of them into sight.
  mark(bytes) {
    this.marked = new Map(bytes.map((byte) => [this.lines.lineOf(byte), byte]));
    if (bytes.length > 0) this.goTo(this.lines.lineOf(bytes[0]));
    this.draw();
  }

  goTo(line) {
    this.current = line;
    const first = this.firstInSight();
    const rows = this.rows();
    if (line < first || line >= first + rows - 1) this.scrollTo(line - Math.floor(rows / 2));
    this.draw();
  }

  rows() {
    return Math.max(1, Math.floor(this.box.clientHeight / LINE_HEIGHT));
  }

  // How many lines lie above those in sight when it is scrolled to the end.
  mostAbove() {
    return Math.max(0, this.lines.count - this.rows());
  }

  range() {
    return Math.max(1, this.extent.offsetHeight - this.box.clientHeight);
  }

  firstInSight() {
    const share = Math.min(1, this.box.scrollTop / this.range());
    return Math.round(share * this.mostAbove());
  }

  scrollTo(line) {
    const most = this.mostAbove();
    const share = most === 0 ? 0 : Math.max(0, Math.min(line, most)) / most;
    this.box.scrollTop = share * this.range();
  }

  draw() {
    if (this.lines === null) {
      this.list.replaceChildren();
      return;
    }
    const first = this.firstInSight();
    const end = Math.min(this.lines.count, first + this.rows() + 1);
    const items = [];
    for (let line = first; line < end; ++line) items.push(this.item(line));
    this.list.replaceChildren(...items);
    this.list.style.top = `${this.box.scrollTop}px`;
  }

  item(line) {
    const item = document.createElement('li');
    item.dataset.number = line + 1;
    item.setAttribute('role', 'option');
    item.textContent = this.lines.text(line, this.marked.get(line));
    item.classList.toggle('marked', this.marked.has(line));
    item.classList.toggle('current', line === this.current);
    item.setAttribute('aria-selected', String(line === this.current));
    return item;
  }

  takeClick(event) {
    const item = event.target.closest('li');
    if (item !== null) this.choose(Number(item.dataset.number) - 1);
  }

  takeKey(event) {
    if (this.lines === null) return;
    const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: this.rows(), PageUp: -this.rows() };
    if (event.key in steps) {
      const line = this.current + steps[event.key];
      this.goTo(Math.max(0, Math.min(line, this.lines.count - 1)));
    } else if (event.key === 'Enter') {
      this.choose(this.current);
    } else {
      return;
    }
    event.preventDefault();
  }

  choose(line) {
    this.current = line;
    this.draw();
    this.onChoose(line);
  }
}
