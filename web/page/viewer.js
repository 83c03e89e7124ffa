// Shows one page: moves it, changes its size, and says where on the paper a point of the screen is.
//
// The page is an image, so nothing in a drawing can become a part of this document. While its size
// changes, the browser scales what it has painted; when it comes to rest, it paints anew.

const SVG = 'http://www.w3.org/2000/svg';
const LEAST_SCALE = 0.02; // pixels for a point
const MOST_SCALE = 400;
const REST = 150; // milliseconds without a change
const MARGIN = 24; // pixels around the whole page
const CLICK = 4; // pixels that a click may move

export class Viewer {
  // `onPoint(point)` is told where the pointer is, in points; `onClick(point, reach)` what was
  // asked about, `reach` being a few pixels; `onScale(percent)` of a new size.
  constructor(stage, { onPoint, onClick, onScale }) {
    this.stage = stage;
    this.sheet = stage.querySelector('#sheet');
    this.picture = stage.querySelector('#picture');
    this.events = { onPoint, onClick, onScale };
    this.area = null;
    this.scale = 1;
    this.painted = 1; // the scale at which the browser has painted
    this.x = 0;
    this.y = 0;
    this.pointers = new Map();
    this.travelled = 0;
    this.addOverlay();
    this.listen();
  }

  // `area` is what the page shows of the plane, in points, y upwards; null shows nothing.
  show(area, address) {
    const isSame = this.area !== null && area !== null && this.picture.src === address;
    this.area = area;
    this.sheet.hidden = area === null;
    if (area === null) return;
    this.picture.src = address;
    const width = area.right - area.left;
    const height = area.top - area.bottom;
    this.overlay.setAttribute('viewBox', `0 0 ${width} ${height}`);
    this.plane.setAttribute('transform', `matrix(1 0 0 -1 ${-area.left} ${area.top})`);
    this.clear();
    if (!isSame) this.fit();
  }

  fit() {
    if (this.area === null) return;
    const { width, height } = this.pageSize();
    const box = this.stage.getBoundingClientRect();
    const scale = Math.min((box.width - 2 * MARGIN) / width, (box.height - 2 * MARGIN) / height);
    this.scale = Math.max(LEAST_SCALE, Math.min(scale, MOST_SCALE));
    this.x = (box.width - width * this.scale) / 2;
    this.y = (box.height - height * this.scale) / 2;
    this.paint();
  }

  pageSize() {
    return {
      width: this.area.right - this.area.left,
      height: this.area.top - this.area.bottom,
    };
  }

  // Keeps what lies at a point of the stage where it is.
  zoom(factor, at = this.middle()) {
    if (this.area === null) return;
    const scale = Math.max(LEAST_SCALE, Math.min(this.scale * factor, MOST_SCALE));
    this.x = at.x - ((at.x - this.x) * scale) / this.scale;
    this.y = at.y - ((at.y - this.y) * scale) / this.scale;
    this.scale = scale;
    this.place();
    clearTimeout(this.rest);
    this.rest = setTimeout(() => this.paint(), REST);
  }

  move(dx, dy) {
    this.x += dx;
    this.y += dy;
    this.place();
  }

  middle() {
    return { x: this.stage.clientWidth / 2, y: this.stage.clientHeight / 2 };
  }

  // The place on the paper, in points.
  pointAt({ x, y }) {
    return {
      x: this.area.left + (x - this.x) / this.scale,
      y: this.area.top - (y - this.y) / this.scale,
    };
  }

  // Asks about what lies in the middle, for the keyboard.
  clickMiddle() {
    this.click(this.middle());
  }

  clear() {
    this.plane.replaceChildren();
  }

  // Draws the outline of a shape over the page.
  addShape({ outline, kind }, isNext = false) {
    const path = this.addPath(outline, 'found');
    path.classList.toggle('area', kind !== 'stroke');
    path.classList.toggle('next', isNext);
  }

  // Draws the line between two points that are measured.
  addMeasure(a, b) {
    this.addPath(`M${a.x} ${a.y}L${b.x} ${b.y}`, 'measured');
  }

  addPath(data, name) {
    const path = document.createElementNS(SVG, 'path');
    path.setAttribute('d', data);
    path.setAttribute('class', name);
    this.plane.append(path);
    return path;
  }

  addOverlay() {
    this.overlay = document.createElementNS(SVG, 'svg');
    this.overlay.setAttribute('preserveAspectRatio', 'none');
    this.overlay.setAttribute('aria-hidden', 'true');
    this.plane = document.createElementNS(SVG, 'g');
    this.overlay.append(this.plane);
    this.sheet.append(this.overlay);
  }

  place() {
    const factor = this.scale / this.painted;
    this.sheet.style.transform = `translate(${this.x}px, ${this.y}px) scale(${factor})`;
    this.events.onScale((this.scale * 72 * 100) / 96);
  }

  paint() {
    const { width, height } = this.pageSize();
    this.painted = this.scale;
    this.sheet.style.width = `${width * this.scale}px`;
    this.sheet.style.height = `${height * this.scale}px`;
    this.place();
  }

  listen() {
    const { stage } = this;
    stage.addEventListener('wheel', (event) => this.takeWheel(event), { passive: false });
    stage.addEventListener('pointerdown', (event) => this.takeDown(event));
    stage.addEventListener('pointermove', (event) => this.takeMove(event));
    stage.addEventListener('pointerup', (event) => this.takeUp(event));
    stage.addEventListener('pointercancel', (event) => this.pointers.delete(event.pointerId));
    stage.addEventListener('pointerleave', () => this.events.onPoint(null));
  }

  onStage(event) {
    const box = this.stage.getBoundingClientRect();
    return { x: event.clientX - box.left, y: event.clientY - box.top };
  }

  takeWheel(event) {
    event.preventDefault();
    const pixels = event.deltaY * (event.deltaMode === 1 ? 16 : 1);
    this.zoom(Math.exp(-pixels / (event.ctrlKey ? 100 : 400)), this.onStage(event));
  }

  takeDown(event) {
    if (this.area === null || event.button !== 0) return;
    this.stage.setPointerCapture(event.pointerId);
    this.stage.classList.add('dragged');
    if (this.pointers.size === 0) this.travelled = 0;
    this.pointers.set(event.pointerId, this.onStage(event));
  }

  takeMove(event) {
    if (this.area === null) return;
    const now = this.onStage(event);
    this.events.onPoint(this.pointAt(now));
    const before = this.pointers.get(event.pointerId);
    if (before === undefined) return;
    this.travelled += Math.hypot(now.x - before.x, now.y - before.y);
    this.pinch(event.pointerId, before, now);
    this.pointers.set(event.pointerId, now);
    if (this.travelled > CLICK) this.move(...this.shift(before, now));
  }

  // What one of the pointers moves the page by.
  shift(before, now) {
    const share = this.pointers.size;
    return [(now.x - before.x) / share, (now.y - before.y) / share];
  }

  // Two fingers: the page grows as they part.
  pinch(moved, before, now) {
    if (this.pointers.size !== 2) return;
    const other = [...this.pointers].find(([id]) => id !== moved)[1];
    const distance = (point) => Math.max(1, Math.hypot(point.x - other.x, point.y - other.y));
    const middle = { x: (now.x + other.x) / 2, y: (now.y + other.y) / 2 };
    this.zoom(distance(now) / distance(before), middle);
  }

  takeUp(event) {
    const wasDown = this.pointers.delete(event.pointerId);
    if (this.pointers.size === 0) this.stage.classList.remove('dragged');
    if (wasDown && this.travelled <= CLICK) this.click(this.onStage(event));
  }

  click(at) {
    if (this.area !== null) this.events.onClick(this.pointAt(at), CLICK / this.scale);
  }
}
