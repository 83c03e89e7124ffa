// What is said about a file, in words.
import { length } from './units.js';

// How a drawing may have ended, by the numbers that the interpreter gives.
const ENDINGS = [
  null,
  (file) => `Stopped after ${file.seconds} s: it did not come to its end. What was drawn until then is shown.`,
  () => 'Memory ran low: what was drawn until then is shown.',
  (file, end) => `A limit of the interpreter was met (${end.error}, ${lineAt(file, end.place)}): something may be missing.`,
  () => 'A read failed: what was drawn until then is shown.',
  (file, end) => `Memory ran out (${lineAt(file, end.place)}): something is missing.`,
  () => 'The page failed to take the drawing: what was drawn until then is shown.',
];

function lineAt(file, byte) {
  return byte < 0 ? 'nowhere in the file' : `line ${file.lines.lineOf(byte) + 1}`;
}

// The messages about how a file was drawn, most serious first: {text, isAlarm}.
export function aboutEnd(file, end) {
  const messages = [];
  const ending = ENDINGS[end.result];
  if (ending) messages.push({ text: ending(file, end), isAlarm: true });
  if (end.lostPoints > 0) {
    const text = `${end.lostPoints} points have no finite place and were left out.`;
    messages.push({ text, isAlarm: true });
  }
  if (!end.startsLikePostScript) {
    const text = 'The file does not begin like a PostScript document (%!).';
    messages.push({ text, isAlarm: true });
  }
  if (!end.isIndexed) {
    const text = 'The drawing is so large that only its first part can be asked about.';
    messages.push({ text, isAlarm: false });
  }
  return messages;
}

// What a finding means, with its figures.
function meaningOf({ meaning, ratio, detail }) {
  const widths =
    ratio >= 1
      ? `up to ${ratio.toFixed(1)} times as wide as`
      : `down to 1/${(1 / ratio).toFixed(1)} of the width`;
  const text = ratio > 0 ? `lines are ${widths} meant: ${meaning}` : meaning;
  return detail === '' ? text : `${text} (${detail})`;
}

// A finding in a sentence: what it means, what it comes from, how often and where.
export function aboutFinding(file, finding) {
  const { name, times, places } = finding;
  const inFile = places.filter((byte) => byte >= 0);
  const lines = [...new Set(inFile.map((byte) => file.lines.lineOf(byte) + 1))];
  const more = times > places.length ? ', …' : '';
  const word = lines.length === 1 ? 'line' : 'lines';
  const where = lines.length === 0 ? '' : `; ${word} ${lines.join(', ')}${more}`;
  const cause = name === '' ? '' : `${name}: `;
  return `${cause}${meaningOf(finding)}. ${times} ×${where}`;
}

export function aboutShape(file, shape) {
  const width = shape.kind === 'stroke' ? `, ${length(shape.width)} wide` : '';
  const inProcedure = shape.definition >= 0;
  const definition = inProcedure ? `, in the procedure of ${lineAt(file, shape.definition)}` : '';
  return `A ${shape.kind}${width}: drawn by ${lineAt(file, shape.place)}${definition}.`;
}
