// What the page carries inside itself, as letters in elements that nothing runs.

export function carriedBytes(element) {
  return Uint8Array.from(atob(element.textContent), (letter) => letter.charCodeAt(0));
}

// The documents that somebody put into the page.
export function carriedFiles() {
  const elements = [...document.querySelectorAll('script.document')];
  return elements.map((element) => new File([carriedBytes(element)], element.dataset.name));
}
