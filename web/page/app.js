// The page: files come in, one drawing is shown, and what is asked about it goes to its interpreter.
import { carriedFiles, hasInterpreter } from './carried.js';
import { CompareDialog } from './comparedialog.js';
import { Comparison } from './comparison.js';
import { Measure } from './measure.js';
import { OpenFile } from './openfile.js';
import { Questions } from './questions.js';
import { RemarkList } from './remarks.js';
import { SourceView } from './sourceview.js';
import { pair, size } from './units.js';
import { Viewer } from './viewer.js';

const byId = (id) => document.getElementById(id);
const stage = byId('stage');
const drawings = []; // files that are open, and comparisons
let shown = null; // the drawing that is shown

const viewer = new Viewer(stage, {
  onPoint: (point) => {
    byId('place').value = point === null ? '–' : pair(point.x, point.y);
  },
  onClick: (point, reach) => {
    if (measure.isOn) return measure.take(point);
    byId('place').value = pair(point.x, point.y);
    return questions.askAbout(point, reach);
  },
  onScale: (percent) => {
    byId('zoom').value = `${percent < 10 ? percent.toFixed(1) : Math.round(percent)} %`;
  },
});
const measure = new Measure(byId('measure'), stage, byId('distance'), viewer);
const boxes = [byId('source'), byId('source-after')];
const captions = [byId('name-before'), byId('name-after')];
const sources = boxes.map((box, side) => new SourceView(box, (line) => questions.askWhatIsDrawnBy(side, line)));
const remarks = new RemarkList(byId('findings'), byId('findings-summary'), (item) => questions.show(item));
const questions = new Questions({ viewer, sources, remarks, output: byId('shape'), goToPage });
const dialog = new CompareDialog(byId('comparing'), byId('compare'), compare);

function add(drawing) {
  drawings.push(drawing);
  byId('documents').append(new Option(drawing.name, drawings.length - 1));
  byId('documents').disabled = false;
}

// Opens files, with what the page carries of each where it carries drawings.
function open(blobs, carried = []) {
  const files = blobs.map((blob, i) => new OpenFile(blob.name, update, carried[i]));
  files.forEach(add);
  files.forEach((file, i) => file.open(blobs[i]));
  if (files.length > 0) show(files[0]);
}

// The person's own files.
function openChosen(blobs) {
  if (hasInterpreter()) open(blobs);
  else questions.say('This page carries drawings and opens no other files: it has no interpreter.');
}

function compare(before, after) {
  const comparison = new Comparison(before, after, update);
  add(comparison);
  show(comparison);
  comparison.draw().catch((error) => comparison.fail(`Cannot be compared: ${error.message}`));
}

function show(drawing) {
  shown = drawing;
  byId('documents').value = drawings.indexOf(drawing);
  byId('invitation').hidden = true;
  document.title = `${drawing.name} – orxprint`;
  sources.forEach((source) => source.show(null));
  viewer.show(null);
  questions.begin(drawing);
  update(drawing);
}

// Brings the page up to date with what is new about a drawing.
function update(drawing) {
  dialog.offer(drawings.filter((each) => each.isRead));
  if (drawing !== shown) return;
  showSources(drawing);
  showPage(drawing);
  const count = drawing.pages.length;
  byId('page-number').value = count === 0 ? '–' : `${drawing.page + 1} / ${count}`;
  byId('previous').disabled = drawing.page === 0;
  byId('next').disabled = drawing.page + 1 >= count;
  showProgress(drawing);
  byId('messages').replaceChildren(...drawing.messages.map(messageItem));
  remarks.show(drawing.remarks);
}

function showPage(drawing) {
  const page = drawing.pages[drawing.page];
  if (!page) {
    byId('size').value = '–';
    return;
  }
  const { area, address, number } = page;
  if (viewer.area !== area) viewer.show(area, address);
  const name = number === drawing.page + 1 ? 'Page' : `Page ${number}`;
  byId('size').value = `${name} ${size(area.right - area.left, area.top - area.bottom)}`;
}

// Of a comparison both files, each under its name.
function showSources(drawing) {
  sources.forEach((source, side) => {
    const { name = '', lines = null } = drawing.sources[side] ?? {};
    boxes[side].hidden = side >= drawing.sources.length;
    captions[side].hidden = drawing.sources.length === 1;
    captions[side].textContent = `${side === 0 ? 'Before' : 'After'}: ${name}`;
    if (source.lines !== lines) source.show(lines);
  });
}

function showProgress({ progress }) {
  byId('progress').hidden = progress === null;
  if (progress === null) return;
  byId('progress').querySelector('progress').value = progress;
  byId('progress-text').textContent = `Drawing… ${Math.round(100 * progress)} %`;
}

function messageItem({ text, isAlarm }) {
  const item = document.createElement('li');
  item.textContent = text;
  item.classList.toggle('alarm', isAlarm);
  return item;
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

// Light or dark as the person chose it, or else as the desktop has it.
const desktopIsDark = matchMedia('(prefers-color-scheme: dark)');
let theme = 'system';

function applyTheme() {
  const usual = desktopIsDark.matches ? 'dark' : 'light';
  document.documentElement.dataset.theme = theme === 'system' ? usual : theme;
  byId('theme').textContent = `Theme: ${theme}`;
}

function changeTheme() {
  const themes = ['system', 'light', 'dark'];
  theme = themes[(themes.indexOf(theme) + 1) % themes.length];
  applyTheme();
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

function openCarried() {
  for (const id of ['choose', 'compare']) byId(id).hidden = !hasInterpreter();
  byId('carries').hidden = hasInterpreter();
  const carried = carriedFiles();
  open(
    carried.map(({ file }) => file),
    carried.map(({ drawing }) => drawing),
  );
}

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
    openChosen([...target.files]);
    target.value = '';
  });
  byId('documents').addEventListener('change', ({ target }) => show(drawings[target.value]));
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
    openChosen([...event.dataTransfer.files]);
  });
}

desktopIsDark.addEventListener('change', applyTheme);
applyTheme();
listenToButtons();
listenToKeys();
listenToDrops();
openCarried();
