// SPDX-License-Identifier: MIT
// What the page can do beside the form, in one list: the button at the end of the state line opens it.

export class More {
  constructor(button, popup) {
    this.button = button;
    this.popup = popup;
    this.entries = [];
    button.addEventListener('pointerdown', (event) => event.preventDefault()); // the focus stays where it is
    button.addEventListener('click', (event) => this.open(event.detail === 0));
  }

  /// `isOffered` is asked with the mirror when the list opens.
  add(text, choose, isOffered = () => true) {
    this.entries.push({ text, choose, isOffered });
  }

  draw(mirror) {
    this.mirror = mirror;
    this.button.hidden = this.entries.length === 0;
    this.button.disabled = mirror.box !== null;
  }

  open(byKey) {
    if (this.popup.isOpen() && this.popup.owner === this.button) return this.popup.close();
    this.popup.open(this.button, this.entries.map(({ text, choose, isOffered }) => ({
      text, choose, enabled: isOffered(this.mirror),
    })));
    if (byKey) this.popup.markFirst();
  }
}
