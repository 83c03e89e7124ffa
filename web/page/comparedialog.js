// Asks which two of the open files are to be compared.

export class CompareDialog {
  // `onCompare(before, after)` is told of the two.
  constructor(dialog, opener, onCompare) {
    this.dialog = dialog;
    this.opener = opener;
    this.files = [];
    this.choices = [...dialog.querySelectorAll('select')];
    opener.addEventListener('click', () => dialog.showModal());
    dialog.querySelector('.cancel').addEventListener('click', () => dialog.close());
    dialog.querySelector('.start').addEventListener('click', () => {
      dialog.close();
      onCompare(...this.choices.map((choice) => this.files[choice.value]));
    });
  }

  // The two that were opened last are proposed, in their order.
  offer(files) {
    if (files.length === this.files.length) return;
    this.files = files;
    this.opener.disabled = files.length < 2;
    this.choices.forEach((choice, side) => {
      choice.replaceChildren(...files.map(({ name }, i) => new Option(name, i)));
      choice.value = Math.max(0, files.length - 2 + side);
    });
  }
}
