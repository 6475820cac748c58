// SPDX-License-Identifier: MIT
// The demonstration: the form on data of its own, with a strip of buttons below it that says what a simulated instrument
// sends.
import { Demo, folderOfPage } from './data_folders.js';

export const isDemo = folderOfPage() === Demo;

/// In place of what a person has granted to the page.
export const simulatedPorts = {
  words: 'The demonstration has one instrument, which is simulated: the buttons below the form say what it sends.',
  granted: [{}],
  openNumber: 0,
  names: () => ['simulated instrument'],
  start() {},
  hear() {},
};

/// Opens the other one of the form and its demonstration, in place of this page.
export function changeOver() {
  const address = new URL(location.href);
  if (isDemo) address.searchParams.delete('demo');
  else address.searchParams.set('demo', '');
  location.assign(address);
}

export class Demonstration {
  /// `strip`: a line of words and a row of buttons. `afresh`: the dialog that asks whether the data may be deleted.
  constructor(strip, afresh, send) {
    Object.assign(this, { strip, afresh, send, buttons: [] });
    [this.words, this.row] = strip.children;
    const [no, yes] = afresh.querySelectorAll('button');
    no.addEventListener('click', () => afresh.close());
    yes.addEventListener('click', () => {
      afresh.close();
      this.act({ act: 'afresh' });
    });
  }

  /// The buttons are always the same ones: one that is pressed stays.
  show({ words, buttons }) {
    this.strip.hidden = false;
    this.words.textContent = words;
    while (this.buttons.length < buttons.length) this.buttons.push(this.makeButton(this.buttons.length));
    this.shown = buttons;
    buttons.forEach((button, i) => {
      const drawn = this.buttons[i];
      if (drawn.textContent !== button.words) drawn.textContent = button.words;
      drawn.disabled = !button.enabled;
      if (button.ticked !== undefined) drawn.setAttribute('aria-pressed', String(button.ticked));
    });
  }

  makeButton(place) {
    const button = document.createElement('button');
    button.type = 'button';
    button.addEventListener('pointerdown', (event) => event.preventDefault()); // the form keeps the keyboard
    button.addEventListener('click', () => this.press(this.shown[place]));
    this.row.append(button);
    return button;
  }

  press(button) {
    if (!button.asks) return this.act(button);
    this.afresh.querySelector('p').textContent = button.asks;
    this.afresh.showModal();
  }

  act({ act, item = 0 }) {
    this.send('instrument', { data: act, item });
  }
}
