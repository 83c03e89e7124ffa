// The lines of a file, whatever is in it: text, binary data, lines without an end.

const MOST_SHOWN = 400; // characters of one line
const BEFORE_FOCUS = 60;

const TAB = 9;
const NEWLINE = 10;
const RETURN = 13;

function findStarts(bytes) {
  let starts = new Uint32Array(1024);
  let count = 1;
  for (let i = 0; i < bytes.length; ++i) {
    const byte = bytes[i];
    if (byte !== NEWLINE && byte !== RETURN) continue;
    if (byte === RETURN && bytes[i + 1] === NEWLINE) ++i;
    if (i + 1 === bytes.length) break;
    if (count === starts.length) {
      const larger = new Uint32Array(2 * count);
      larger.set(starts);
      starts = larger;
    }
    starts[count++] = i + 1;
  }
  return starts.slice(0, count);
}

// Bytes beyond ASCII and control characters are shown as a dot.
function shownAs(byte) {
  if (byte === TAB) return '  ';
  return byte >= 32 && byte < 127 ? String.fromCharCode(byte) : '·';
}

export class Lines {
  constructor(bytes) {
    this.bytes = bytes;
    this.starts = findStarts(bytes);
  }

  get count() {
    return this.starts.length;
  }

  // Lines count from 0 here.
  start(line) {
    return this.starts[line];
  }

  end(line) {
    return line + 1 < this.count ? this.starts[line + 1] : this.bytes.length;
  }

  lineOf(byte) {
    let low = 0;
    let high = this.count - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (this.starts[middle] <= byte) low = middle;
      else high = middle - 1;
    }
    return low;
  }

  // What a line shows; of a long one the part around a byte of interest.
  text(line, focus = -1) {
    const end = this.end(line);
    let start = this.start(line);
    const isLong = end - start > MOST_SHOWN;
    if (isLong && focus > start && focus < end) start = Math.max(start, focus - BEFORE_FOCUS);
    let text = start > this.start(line) ? '…' : '';
    for (let i = start; i < Math.min(end, start + MOST_SHOWN); ++i) {
      const byte = this.bytes[i];
      if (byte === NEWLINE || byte === RETURN) break;
      text += shownAs(byte);
    }
    return start + MOST_SHOWN < end ? `${text}… (${end - this.start(line)} bytes)` : text;
  }
}
