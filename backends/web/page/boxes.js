// SPDX-License-Identifier: MIT
// The message box. Enter and Esc give the harmless answer.

export class Boxes {
  constructor(send, dialog) {
    this.send = send;
    this.dialog = dialog;
    dialog.addEventListener('cancel', (event) => {
      event.preventDefault();
      this.answer(false);
    });
  }

  draw(box) {
    if (box === null) {
      if (this.dialog.open) this.dialog.close();
      this.shown = null;
      return;
    }
    if (this.shown?.id === box.id) return;
    this.shown = box;
    this.dialog.querySelector('#boxtitle').textContent = box.title;
    this.dialog.querySelector('#boxtext').textContent = box.text;
    this.dialog.querySelector('#boxnote').hidden = !box.piled;
    const answers = box.asks ? [['Yes', true], ['No', false]] : [['OK', false]];
    const buttons = answers.map(([text, yes]) => this.button(text, yes));
    this.dialog.querySelector('.answers').replaceChildren(...buttons);
    if (!this.dialog.open) this.dialog.showModal();
    buttons.at(-1).focus();
  }

  button(text, yes) {
    const button = document.createElement('button');
    Object.assign(button, { type: 'button', textContent: text, className: yes ? '' : 'usual' });
    button.addEventListener('click', () => this.answer(yes));
    return button;
  }

  answer(yes) {
    if (this.shown) this.send('answer', { box: this.shown.id, yes });
  }
}
