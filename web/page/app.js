// The page: files come in, one of them is shown, and what is asked about it goes to its interpreter.
import { carriedFiles } from './carried.js';
import { showFindings } from './findings.js';
import { Measure } from './measure.js';
import { aboutShape } from './messages.js';
import { OpenFile } from './openfile.js';
import { SourceView } from './sourceview.js';
import { pair, size } from './units.js';
import { Viewer } from './viewer.js';

const byId = (id) => document.getElementById(id);
const stage = byId('stage');
const HINT = byId('shape').textContent;
const files = [];
let shown = null; // the file that is shown

const viewer = new Viewer(stage, {
  onPoint: (point) => {
    byId('place').value = point === null ? '–' : pair(point.x, point.y);
  },
  onClick: (point, reach) => (measure.isOn ? measure.take(point) : askAbout(point, reach)),
  onScale: (percent) => {
    byId('zoom').value = `${percent < 10 ? percent.toFixed(1) : Math.round(percent)} %`;
  },
});
const measure = new Measure(byId('measure'), stage, byId('distance'), viewer);
const source = new SourceView(byId('source'), showWhatIsDrawnBy);

async function askAbout(point, reach) {
  byId('place').value = pair(point.x, point.y);
  const file = shown;
  const shape = await file.shapeAt(point, reach);
  if (file !== shown) return;
  viewer.clear();
  if (shape === null) {
    say('Nothing is drawn there.');
    source.mark([]);
    return;
  }
  viewer.addShape(shape);
  say(aboutShape(file, shape));
  source.mark([shape.place, shape.definition].filter((byte) => byte >= 0));
}

async function showWhatIsDrawnBy(line) {
  const file = shown;
  const found = await file.drawnBy(line);
  if (file !== shown || found === null) return;
  const { shapes, next } = found;
  const first = shapes[0] ?? next;
  if (!first) {
    viewer.clear();
    say(`Line ${line + 1} draws nothing, and nothing is drawn behind it.`);
    return;
  }
  if (first.page !== file.page) goToPage(first.page);
  viewer.clear();
  for (const shape of shapes) if (shape.page === first.page) viewer.addShape(shape);
  if (next) viewer.addShape(next, true);
  const what = aboutShape(file, first);
  if (next) say(`Line ${line + 1} itself draws nothing. What is drawn next: ${what}`);
  else say(shapes.length === 1 ? what : `Line ${line + 1} draws ${shapes.length} shapes.`);
}

function say(text) {
  byId('shape').textContent = text;
}

function open(blobs) {
  let first = null;
  for (const blob of blobs) {
    const file = new OpenFile(blob.name, update);
    files.push(file);
    byId('documents').append(new Option(blob.name, files.length - 1));
    byId('documents').disabled = false;
    file.open(blob);
    first ??= file;
  }
  if (first !== null) show(first);
}

function show(file) {
  shown = file;
  byId('documents').value = files.indexOf(file);
  byId('invitation').hidden = true;
  document.title = `${file.name} – orxprint`;
  source.show(null);
  viewer.show(null);
  say(HINT);
  update(file);
}

// Brings the page up to date with what is new about a file.
function update(file) {
  if (file !== shown) return;
  if (source.lines !== file.lines) source.show(file.lines);
  const page = file.pages[file.page];
  if (page && viewer.area !== page.area) viewer.show(page.area, page.address);
  const width = page ? page.area.right - page.area.left : 0;
  const height = page ? page.area.top - page.area.bottom : 0;
  byId('size').value = page ? `Page ${size(width, height)}` : '–';
  const count = file.pages.length;
  byId('page-number').value = count === 0 ? '–' : `${file.page + 1} / ${count}`;
  byId('previous').disabled = file.page === 0;
  byId('next').disabled = file.page + 1 >= count;
  showProgress(file);
  byId('messages').replaceChildren(...file.messages.map(messageItem));
  showFindings(byId('findings'), byId('findings-summary'), file, showFinding);
}

function showProgress(file) {
  byId('progress').hidden = file.progress === null;
  if (file.progress === null) return;
  byId('progress').querySelector('progress').value = file.progress;
  byId('progress-text').textContent = `Drawing… ${Math.round(100 * file.progress)} %`;
}

function messageItem({ text, isAlarm }) {
  const item = document.createElement('li');
  item.textContent = text;
  item.classList.toggle('alarm', isAlarm);
  return item;
}

function showFinding(finding) {
  source.mark(finding.places.filter((byte) => byte >= 0));
}

function goToPage(page) {
  if (shown === null || page < 0 || page >= shown.pages.length) return;
  shown.page = page;
  update(shown);
}

async function print() {
  if (shown === null) return;
  const pictures = shown.pages.map(({ area, address }) => {
    const picture = document.createElement('img');
    picture.alt = '';
    picture.src = address;
    picture.style.width = `${area.right - area.left}pt`;
    picture.style.height = `${area.top - area.bottom}pt`;
    return picture;
  });
  byId('paper').replaceChildren(...pictures);
  await Promise.allSettled(pictures.map((picture) => picture.decode()));
  window.print();
  byId('paper').replaceChildren();
}

function changeTheme() {
  const themes = ['system', 'light', 'dark'];
  const root = document.documentElement;
  const theme = themes[(themes.indexOf(root.dataset.theme ?? 'system') + 1) % themes.length];
  root.dataset.theme = theme;
  byId('theme').textContent = `Theme: ${theme}`;
}

const STEP = 60; // pixels that an arrow key moves
const KEYS = {
  '+': () => viewer.zoom(1.25),
  '=': () => viewer.zoom(1.25),
  '-': () => viewer.zoom(0.8),
  0: () => viewer.fit(),
  ArrowLeft: () => viewer.move(STEP, 0),
  ArrowRight: () => viewer.move(-STEP, 0),
  ArrowUp: () => viewer.move(0, STEP),
  ArrowDown: () => viewer.move(0, -STEP),
  PageUp: () => goToPage(shown.page - 1),
  PageDown: () => goToPage(shown.page + 1),
  m: () => measure.toggle(),
  Enter: () => viewer.clickMiddle(),
};

function listenToButtons() {
  const actions = {
    choose: () => byId('files').click(),
    previous: () => goToPage(shown.page - 1),
    next: () => goToPage(shown.page + 1),
    'zoom-in': () => viewer.zoom(1.25),
    'zoom-out': () => viewer.zoom(0.8),
    fit: () => viewer.fit(),
    print,
    theme: changeTheme,
    stop: () => shown.stop(),
  };
  for (const [id, action] of Object.entries(actions)) byId(id).addEventListener('click', action);
  byId('files').addEventListener('change', ({ target }) => {
    open([...target.files]);
    target.value = '';
  });
  byId('documents').addEventListener('change', ({ target }) => show(files[target.value]));
}

function listenToKeys() {
  stage.addEventListener('keydown', (event) => {
    if (shown === null || event.ctrlKey || event.metaKey || event.altKey) return;
    const action = KEYS[event.key.length === 1 ? event.key.toLowerCase() : event.key];
    if (!action) return;
    action();
    event.preventDefault();
  });
}

function listenToDrops() {
  const isDropping = (on) => stage.classList.toggle('dropping', on);
  document.addEventListener('dragover', (event) => {
    event.preventDefault();
    isDropping(true);
  });
  document.addEventListener('dragleave', (event) => isDropping(event.relatedTarget !== null));
  document.addEventListener('drop', (event) => {
    event.preventDefault();
    isDropping(false);
    open([...event.dataTransfer.files]);
  });
}

listenToButtons();
listenToKeys();
listenToDrops();
open(carriedFiles());
