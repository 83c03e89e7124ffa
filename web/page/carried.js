// What the page carries inside itself, as letters in elements that nothing runs.

function carriedBytes(element) {
  return Uint8Array.from(atob(element.textContent), (letter) => letter.charCodeAt(0));
}

// What an element carries, unpacked.
export function unpack(element) {
  const packed = new Blob([carriedBytes(element)]);
  return new Response(packed.stream().pipeThrough(new DecompressionStream('deflate'))).arrayBuffer();
}

// Whether the interpreter is among it; without it, documents come with what they draw.
export function hasInterpreter() {
  return document.getElementById('library').textContent !== '';
}

// Behind a document stand its pages and the report about it, up to the next document.
function drawingOf(element) {
  const pages = [];
  let next = element.nextElementSibling;
  for (; next?.className === 'page'; next = next.nextElementSibling) pages.push(next);
  return { pages, report: next };
}

// The documents that somebody put into the page: {file, drawing}, the drawing null where there is an
// interpreter.
export function carriedFiles() {
  const elements = [...document.querySelectorAll('script.document')];
  return elements.map((element) => ({
    file: new File([carriedBytes(element)], element.dataset.name),
    drawing: hasInterpreter() ? null : drawingOf(element),
  }));
}
