// SPDX-License-Identifier: MIT
// The two menus of the form, the list that a long press opens, the keys of the device, and the popup for all lists.

export class Popup {
  constructor(element) {
    this.element = element;
    document.addEventListener('pointerdown', (event) => {
      if (this.isOpen() && !element.contains(event.target) && !this.owner?.contains(event.target)) this.close();
    });
  }

  isOpen() {
    return !this.element.hidden;
  }

  /// Opens over or under `owner`. An entry is {text, enabled, choose}.
  open(owner, entries) {
    this.owner = owner;
    this.element.replaceChildren(...entries.map((entry) => this.button(entry)));
    this.element.hidden = false;
    const place = owner.getBoundingClientRect();
    const size = this.element.getBoundingClientRect();
    const below = place.bottom + size.height <= innerHeight;
    this.element.style.left = `${Math.max(8, Math.min(place.left, innerWidth - size.width - 8))}px`;
    this.element.style.top = `${below ? place.bottom : Math.max(8, place.top - size.height)}px`;
    owner.setAttribute('aria-expanded', 'true');
  }

  button({ text, enabled = true, choose }) {
    const button = document.createElement('button');
    Object.assign(button, { type: 'button', textContent: text, disabled: !enabled });
    button.setAttribute('role', 'menuitem');
    button.addEventListener('pointerdown', (event) => event.preventDefault());
    button.addEventListener('click', () => {
      this.close();
      choose();
    });
    return button;
  }

  markFirst() {
    this.element.querySelector('button:enabled')?.focus();
  }

  /// While it is open the keys are its own; Enter and blank are those of the marked entry.
  key(event) {
    const buttons = [...this.element.querySelectorAll('button:enabled')];
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    const marked = buttons.indexOf(document.activeElement);
    if (event.key === 'Escape' || event.key === 'Tab') this.close();
    else if (step) buttons.at((marked + (marked < 0 && step < 0 ? 0 : step)) % buttons.length)?.focus();
    else if (event.key !== 'Enter' && event.key !== ' ') return;
    else if (marked >= 0) buttons[marked].click();
    event.preventDefault();
  }

  close() {
    if (!this.isOpen()) return;
    const hadFocus = this.element.contains(document.activeElement);
    this.element.hidden = true;
    this.owner?.removeAttribute('aria-expanded');
    if (hadFocus) document.getElementById('form').focus();
  }
}

const visibleItems = (menu) => menu.items.map((item, i) => ({ ...item, number: i + 1 })).filter((item) => item.visible);

export class Menus {
  constructor(view, send, popup, buttons) {
    this.view = view;
    this.send = send;
    this.popup = popup;
    this.buttons = buttons;
    buttons.forEach((button, i) => {
      button.addEventListener('pointerdown', (event) => event.preventDefault()); // the focus stays where it is
      button.addEventListener('click', () => this.open(i, false));
    });
  }

  draw(mirror) {
    mirror.menus.forEach((menu, i) => {
      this.buttons[i].hidden = !menu.visible;
      this.buttons[i].textContent = menu.caption;
      this.buttons[i].disabled = !menu.enabled || mirror.box !== null;
    });
    if (mirror.stage !== this.stage || mirror.box) this.popup.close();
    this.stage = mirror.stage;
  }

  /// A list of one item in a bar is not opened: a click on its title runs the item. A key of the device without a list is
  /// itself a command.
  open(index, byKey) {
    const menu = this.view.mirror.menus[index];
    if (!menu.visible || !menu.enabled) return;
    const isOpen = this.popup.isOpen() && this.popup.owner === this.buttons[index];
    this.popup.close();
    if (isOpen) return;
    const items = visibleItems(menu);
    if (!this.view.mirror.softkeys && items.length === 1) {
      if (items[0].enabled) this.choose(index, items[0]);
      return;
    }
    this.send('title', { menu: index + 1 });
    if (items.length === 0) return;
    this.popup.open(this.buttons[index], items.map((item) => ({
      text: item.caption, enabled: item.enabled, choose: () => this.choose(index, item),
    })));
    if (byKey) this.popup.markFirst();
  }

  choose(index, item) {
    this.send('item', { menu: index + 1, item: item.number, words: item.caption });
  }
}

/// The list that a long press opens on the form.
export function drawList(element, list, scale, send) {
  element.hidden = list === null;
  if (list === null) return;
  const [left, top, width] = list.box;
  Object.assign(element.style, { left: `${left * scale}px`, top: `${top * scale}px`, minWidth: `${width * scale}px` });
  element.style.maxHeight = `calc(100% - ${top * scale}px)`;
  element.replaceChildren(...list.items.map((text, item) => {
    const button = document.createElement('button');
    Object.assign(button, { type: 'button', textContent: text, className: item === list.index ? 'current' : '' });
    button.addEventListener('pointerdown', (event) => event.preventDefault());
    button.addEventListener('click', () => send('list', { item, words: text }));
    return button;
  }));
}

/// The keys of a device without a keyboard, as buttons.
export function drawKeys(element, keys, send) {
  const names = JSON.stringify(keys);
  if (element.dataset.names === names) return;
  element.dataset.names = names;
  element.hidden = keys.length === 0;
  element.replaceChildren(...keys.map(({ code, name }) => {
    const button = document.createElement('button');
    Object.assign(button, { type: 'button', textContent: name, tabIndex: -1 });
    button.addEventListener('pointerdown', (event) => {
      event.preventDefault();
      button.setPointerCapture(event.pointerId);
      send('keydown', { key: code });
    });
    for (const kind of ['pointerup', 'pointercancel']) button.addEventListener(kind, () => send('keyup', { key: code }));
    return button;
  }));
}
