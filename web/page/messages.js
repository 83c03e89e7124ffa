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

export function aboutShape(file, shape) {
  const width = shape.kind === 'stroke' ? `, ${length(shape.width)} wide` : '';
  const inProcedure = shape.definition >= 0;
  const definition = inProcedure ? `, in the procedure of ${lineAt(file, shape.definition)}` : '';
  return `A ${shape.kind}${width}: drawn by ${lineAt(file, shape.place)}${definition}.`;
}
