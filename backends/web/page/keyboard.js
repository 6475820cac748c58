// SPDX-License-Identifier: MIT
// Keys of the keyboard as keys of the device. A device without a key of a kind does not get it.

const HandsRest = 500; // milliseconds; after this time without a character, nobody is typing

const Everywhere = {
  ArrowLeft: 37, ArrowUp: 38, ArrowRight: 39, ArrowDown: 40, PageUp: 33, PageDown: 34, Enter: 13, Escape: 27, Backspace: 8,
};
const WithControl = { ArrowLeft: 308, ArrowRight: 309, Enter: 310, m: 261 };
const OfDevice = {
  F3: 2, F5: 516, F6: 517, F7: 518, F8: 519, F9: 1280, F10: 264, F11: 266, F12: 267, Pause: 520,
};
const OfPage = { Home: -3, End: -4 }; // by these numbers the program knows keys that no device has
const Tab = -1;
const BackTab = -2;
const SelectingEnter = -5;

export class Keyboard {
  constructor(view, send, fields, menus, popup) {
    Object.assign(this, { view, send, fields, menus, popup });
    this.held = new Map();
    this.lastCharacter = -HandsRest;
    document.addEventListener('keydown', (event) => this.down(event));
    document.addEventListener('keyup', (event) => this.up(event));
    addEventListener('blur', () => this.held.clear()); // their releases go elsewhere
  }

  has(code) {
    return this.view.mirror.keys.some((key) => key.code === code);
  }

  codeOf(event) {
    if (event.altKey || event.metaKey) return undefined;
    if (event.ctrlKey) return this.has(WithControl[event.key]) ? WithControl[event.key] : undefined;
    if (event.key === 'Tab') return event.shiftKey ? BackTab : Tab;
    if (event.key === 'Enter' && !this.fields.isOpen() && this.selects()) return SelectingEnter;
    const code = Everywhere[event.key] ?? OfPage[event.key];
    if (code !== undefined) return code;
    if (event.shiftKey && event.key === 'Pause') return this.has(276) ? 276 : undefined;
    if (OfDevice[event.key]) return this.has(OfDevice[event.key]) ? OfDevice[event.key] : undefined;
    return /^[a-z0-9 ]$/i.test(event.key) ? event.key.toUpperCase().charCodeAt(0) : undefined;
  }

  /// A bar-code scanner types its digits and Enter: no row is selected by that.
  selects() {
    return this.view.mirror.resizable && performance.now() - this.lastCharacter >= HandsRest;
  }

  down(event) {
    if (!this.view.mirror || document.querySelector('dialog[open]') || event.isComposing) return;
    if (event.key.length === 1 && event.key !== ' ') this.lastCharacter = performance.now();
    if (this.popup.isOpen()) return this.popup.key(event);
    const menu = { F1: 0, F2: 1 }[event.key];
    if (menu !== undefined) {
      event.preventDefault();
      return this.menus.open(menu, true);
    }
    if (event.target instanceof HTMLButtonElement && (event.key === 'Enter' || event.key === ' ')) return;
    if (this.fields.isOpen() && this.fields.isOwnKey(event)) return;
    const key = this.codeOf(event);
    if (key === undefined) return;
    if (!this.fields.movesInField(event)) event.preventDefault();
    if (event.repeat && key < 0) return; // a key that is held acts once
    this.fields.flush();
    this.held.set(event.code, key);
    this.send('keydown', { key, repeated: event.repeat });
  }

  up(event) {
    const key = this.held.get(event.code);
    if (key === undefined) return;
    this.held.delete(event.code);
    this.send('keyup', { key });
  }
}
