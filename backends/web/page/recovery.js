// SPDX-License-Identifier: MIT
// What an earlier run had on the screen and not in its file: it is offered before the form is there.

const Question = 'Forget what was entered in this record? It can\'t be put back then.';

export class Recovery {
  constructor(dialog, send) {
    Object.assign(this, { dialog, send });
    [this.put, this.later, this.forget] = ['.put', '.later', '.forget'].map((name) => dialog.querySelector(name));
    this.put.addEventListener('click', () => this.decide('put'));
    this.later.addEventListener('click', () => this.decide('later'));
    this.forget.addEventListener('click', () => { if (confirm(Question)) this.decide('forget'); });
    dialog.addEventListener('cancel', (event) => {
      event.preventDefault();
      this.decide('later');
    });
  }

  show(offer) {
    if (offer === null) return this.dialog.close();
    this.dialog.querySelector('p').textContent = offer.words;
    this.dialog.querySelector('table').replaceChildren(
      this.row(['Field', 'Not saved', 'Saved before'], 'th'),
      ...offer.fields.map((fields) => this.row(fields, 'td')));
    for (const button of [this.put, this.later, this.forget]) button.disabled = false;
    this.put.disabled = !offer.puts;
    if (!this.dialog.open) this.dialog.showModal();
    (offer.puts ? this.put : this.later).focus();
  }

  row(texts, kind) {
    const row = document.createElement('tr');
    row.className = kind === 'td' && texts[1] !== texts[2] ? 'differs' : '';
    row.replaceChildren(...texts.map((text) => Object.assign(document.createElement(kind), { textContent: text })));
    return row;
  }

  /// Once: the program answers with the next record, or with none.
  decide(words) {
    for (const button of [this.put, this.later, this.forget]) button.disabled = true;
    this.send('recover', { words });
  }
}
