// The distance between two clicks.
import { length, pair } from './units.js';

export class Measure {
  constructor(button, stage, output, viewer) {
    this.button = button;
    this.stage = stage;
    this.output = output;
    this.viewer = viewer;
    this.first = null;
    button.addEventListener('click', () => this.toggle());
  }

  get isOn() {
    return this.button.getAttribute('aria-pressed') === 'true';
  }

  toggle() {
    const isOn = !this.isOn;
    this.button.setAttribute('aria-pressed', String(isOn));
    this.stage.classList.toggle('measuring', isOn);
    this.first = null;
    this.output.value = isOn ? 'Click the two points to measure between.' : '';
    this.viewer.clear();
  }

  take(point) {
    this.viewer.clear();
    if (this.first === null) {
      this.first = point;
      this.output.value = `From ${pair(point.x, point.y)} to …`;
      this.viewer.addMeasure(point, point);
      return;
    }
    const { first } = this;
    this.first = null;
    this.viewer.addMeasure(first, point);
    const dx = point.x - first.x;
    const dy = point.y - first.y;
    this.output.value = `Distance ${length(Math.hypot(dx, dy))}; across ${pair(dx, dy)}`;
  }
}
