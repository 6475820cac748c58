// SPDX-License-Identifier: MIT
// What a person should know and the form does not say: the worst in a bar, all of it in a list.

const shownInBar = (notice) => notice.look !== 'note';

export class Notices {
  /// `acts`: what the page does for an offer, by its name. An offer without one is not shown.
  constructor(bar, list, { confirm, acts }) {
    Object.assign(this, { bar, list, confirm, acts });
    [this.words, this.buttons] = bar.children;
    this.words.addEventListener('click', () => list.showModal());
    list.querySelector('.close').addEventListener('click', () => list.close());
  }

  draw(notices) {
    const text = JSON.stringify(notices);
    if (text === this.drawn) return; // a button that is pressed must not go
    this.drawn = text;
    this.drawBar(notices.filter(shownInBar));
    this.list.querySelector('ul').replaceChildren(...notices.map((notice) => this.row(notice)));
    if (notices.length === 0 && this.list.open) this.list.close();
  }

  drawBar([worst, ...others]) {
    this.bar.hidden = !worst;
    if (!worst) return;
    this.bar.className = worst.look;
    this.words.textContent = worst.text + (others.length > 0 ? ` (and ${others.length} more)` : '');
    this.buttons.replaceChildren(...this.buttonsOf(worst));
  }

  row(notice) {
    const row = document.createElement('li');
    const words = document.createElement('span');
    row.className = notice.look;
    words.textContent = notice.text;
    row.append(words, ...this.buttonsOf(notice));
    return row;
  }

  buttonsOf(notice) {
    const offers = notice.offers.filter(({ name }) => this.acts[name]);
    const buttons = offers.map(({ name, words }) => this.button(words, () => {
      this.list.close();
      this.acts[name]();
    }));
    return notice.confirmed ? [...buttons, this.button('OK', () => this.confirm(notice.about))] : buttons;
  }

  button(text, act) {
    const button = document.createElement('button');
    Object.assign(button, { type: 'button', textContent: text });
    button.addEventListener('click', act);
    return button;
  }
}
