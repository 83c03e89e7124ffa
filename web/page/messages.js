// What is said about files, in words. A source is a file with its lines; bytes are places in it.
import { SECONDS } from './drawing.js';
import { length } from './units.js';

// How a drawing may have ended, by the numbers that the interpreter gives.
const ENDINGS = [
  null,
  () => `Stopped after ${SECONDS} s: it did not come to its end. What was drawn until then is shown.`,
  () => 'Memory ran low: what was drawn until then is shown.',
  (where, error) => `A limit of the interpreter was met (${error}, ${where}): something may be missing.`,
  () => 'A read failed: what was drawn until then is shown.',
  (where) => `Memory ran out (${where}): something is missing.`,
  () => 'The page failed to take the drawing: what was drawn until then is shown.',
];

function lineAt(source, byte) {
  return byte < 0 ? 'nowhere in the file' : `line ${source.lines.lineOf(byte) + 1}`;
}

// The messages about how a file was drawn, most serious first: {text, isAlarm}.
export function aboutEnd(source, end) {
  const messages = [];
  const ending = ENDINGS[end.result];
  if (ending) messages.push({ text: ending(lineAt(source, end.place), end.error), isAlarm: true });
  if (end.lostPoints > 0) {
    const text = `${end.lostPoints} points have no finite place and were left out.`;
    messages.push({ text, isAlarm: true });
  }
  if (!end.startsLikePostScript) {
    const text = 'The file does not begin like a PostScript document (%!).';
    messages.push({ text, isAlarm: true });
  }
  if (!end.isIndexed) {
    const text = 'The drawing is so large that only its first part can be asked about and compared.';
    messages.push({ text, isAlarm: false });
  }
  return messages;
}

// What the program that made the page said when it drew a file.
export function aboutProgram(text) {
  return { text: `orxprint: ${text}`, isAlarm: true };
}

// A finding in a sentence: what it means, what it comes from, how often and where.
function aboutFinding(source, finding) {
  const { name, meaning, times, places } = finding;
  const inFile = places.filter((byte) => byte >= 0);
  const lines = [...new Set(inFile.map((byte) => source.lines.lineOf(byte) + 1))];
  const more = times > places.length ? ', …' : '';
  const word = lines.length === 1 ? 'line' : 'lines';
  const where = lines.length === 0 ? '' : `; ${word} ${lines.join(', ')}${more}`;
  const cause = name === '' ? '' : `${name}: `;
  const text = `${cause}${meaning}. ${times} ×${where}`;
  return { title: finding.severity, text, marks: [inFile] };
}

// What is lost or different in a file, as a list of remarks.
export function aboutFindings(source, { items, drawn }) {
  const kinds = items.length === 1 ? 'kind' : 'kinds';
  const summary =
    items.length === 0
      ? 'Nothing is known to be lost or to differ'
      : `${items.length} ${kinds} of content lost or different`;
  const note = `Drawn: ${drawn}.`;
  return { summary, items: items.map((finding) => aboutFinding(source, finding)), note };
}

export function aboutShape(source, shape) {
  const width = shape.kind === 'stroke' ? `, ${length(shape.width)} wide` : '';
  const inProcedure = shape.definition >= 0;
  const definition = inProcedure ? `, in the procedure of ${lineAt(source, shape.definition)}` : '';
  return `A ${shape.kind}${width}: drawn by ${lineAt(source, shape.place)}${definition}.`;
}

// Where a file is to be marked to show what draws a shape.
export function marksOf(shape) {
  return [shape.place, shape.definition].filter((byte) => byte >= 0);
}

function aboutDifference(sources, { number, what, shapes }) {
  const [before, after] = [0, 1].map((side) => shapes.find((shape) => shape.side === side));
  const title = before && after ? 'changed' : after ? 'added' : 'removed';
  const details = shapes.map(({ side, place, description }) => ({
    sign: side === 0 ? '−' : '+',
    text: `${lineAt(sources[side], place)}: ${description}`,
  }));
  const text = `page ${shapes[0].page}${what === '' ? '' : `: ${what}`}`;
  return { number, title, text, details, marks: [before, after].map((shape) => (shape ? marksOf(shape) : [])) };
}

// What differs between two files, as a list of remarks.
export function aboutDifferences(sources, { count, added, removed, differences }) {
  const numbers = `${added} added, ${removed} removed, ${count - added - removed} changed`;
  const listed = differences.length;
  return {
    summary: count === 0 ? 'Both draw the same' : numbers,
    items: differences.map((difference) => aboutDifference(sources, difference)),
    note: listed < count ? `Only the first ${listed} of ${count} differences are listed.` : null,
  };
}
