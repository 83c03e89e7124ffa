// The list beside the drawing: what is lost or different in a file, most serious first, or what
// differs between two.

export class RemarkList {
  // `onChoose(item)` is told of the one that the person wants to see.
  constructor(list, summary, onChoose) {
    this.list = list;
    this.summary = summary;
    this.onChoose = onChoose;
    this.remarks = undefined;
  }

  // What has not changed keeps its place and the keyboard's.
  show(remarks) {
    if (remarks === this.remarks) return;
    this.remarks = remarks;
    this.summary.textContent = remarks?.summary ?? 'What will be lost or differ: not known';
    this.list.replaceChildren(...(remarks?.items ?? []).map((item) => this.row(item)));
    if (remarks?.note) this.list.append(this.note(remarks.note));
  }

  // Brings the item of that number into sight and marks it; none for -1.
  mark(number) {
    const buttons = [...this.list.querySelectorAll('button')];
    buttons.forEach((button, i) => button.classList.toggle('current', i === number));
    buttons[number]?.scrollIntoView({ block: 'nearest' });
  }

  row(item) {
    const button = document.createElement('button');
    button.type = 'button';
    const title = document.createElement('strong');
    title.textContent = item.title;
    button.append(title, ` – ${item.text}`);
    for (const { sign, text } of item.details ?? []) {
      const line = document.createElement('span');
      line.className = sign === '+' ? 'after' : 'before';
      line.textContent = `${sign} ${text}`;
      button.append(line);
    }
    button.addEventListener('click', () => {
      this.mark(this.remarks.items.indexOf(item));
      this.onChoose(item);
    });
    const row = document.createElement('li');
    row.append(button);
    return row;
  }

  note(text) {
    const row = document.createElement('li');
    row.textContent = text;
    return row;
  }
}
