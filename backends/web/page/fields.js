// SPDX-License-Identifier: MIT
// The input control of the form as one of the browser's own. What is typed is sent as the whole text with its caret; the
// form's text is shown once the form has heard of everything that was typed.
import { Family } from './fonts.js';
import { placeOver } from './painting.js';

/// A text area has one character for the two of a line end.
/// A text with bytes that are no UTF-8 comes, and goes, as the numbers of its units: JSON has no way to say it.
const textOf = (field) => (field.units ? String.fromCharCode(...field.units) : field.text);
const hasOddUnits = (text) => /\p{Surrogate}/u.test(text);
const unitsOf = (text) => Array.from({ length: text.length }, (_, i) => text.charCodeAt(i));

const linesOfForm = (text) => text.replace(/\r?\n/g, '\r\n');
const linesOfPage = (text) => text.replace(/\r\n?/g, '\n');
const placeOnForm = (text, place) => place + (text.slice(0, place).match(/\n/g)?.length ?? 0);
const placeOnPage = (text, place) => linesOfPage(text.slice(0, place)).length;

export class Fields {
  constructor(send, chooseFrom, frame) {
    this.send = send;
    this.chooseFrom = chooseFrom;
    this.frame = frame;
    this.lastEdit = 0;
  }

  isOpen() {
    return Boolean(this.shown);
  }

  /// True if the key is the browser's alone, as letters and arrows in a text are.
  isOwnKey(event) {
    const kind = this.shown?.kind;
    if (kind === 'date') return !['Enter', 'Escape'].includes(event.key);
    return !['Enter', 'Escape', 'Tab', 'ArrowUp', 'ArrowDown', 'PageUp', 'PageDown'].includes(event.key);
  }

  movesInField(event) {
    return Boolean(this.shown?.lines) && ['ArrowUp', 'ArrowDown', 'PageUp', 'PageDown'].includes(event.key);
  }

  draw(mirror, scale) {
    if (!mirror.input) return this.close();
    const field = { ...mirror.input, text: textOf(mirror.input) };
    if (this.shown?.id !== field.id || this.shown.kind !== field.kind) this.open(field);
    placeOver(this.frame, field.box, scale);
    this.frame.style.font = `${field.font.pixels * scale}px ${Family}`;
    this.shown = field;
    if (mirror.heard >= this.lastEdit && !this.composing) this.takeText(field);
    if (this.mustFocus && !document.querySelector('dialog[open]')) {
      this.control.focus({ preventScroll: true });
      this.mustFocus = false;
    }
  }

  open(field) {
    const date = field.kind === 'date';
    this.control = document.createElement(field.lines ? 'textarea' : 'input');
    this.control.type = date ? 'date' : 'text';
    Object.assign(this.control, { autocomplete: 'off', spellcheck: false });
    this.control.setAttribute('aria-label', field.name);
    this.control.setAttribute('autocapitalize', 'off');
    this.frame.replaceChildren(this.control);
    this.frame.hidden = false;
    this.sent = undefined;
    this.mustFocus = true;
    if (date) this.listenForDate();
    else this.listenForText();
    if (field.kind === 'combo') this.addList();
  }

  listenForText() {
    const { control } = this;
    control.addEventListener('compositionstart', () => (this.composing = true));
    control.addEventListener('compositionend', () => { this.composing = false; this.flush(); });
    control.addEventListener('input', () => this.flush());
  }

  /// A date that is chosen from the calendar is the answer; one that is typed is not complete before Enter.
  listenForDate() {
    const { control } = this;
    let typed = false;
    control.addEventListener('keydown', () => (typed = true));
    control.addEventListener('pointerdown', () => (typed = false));
    control.addEventListener('change', () => {
      if (control.value) this.send(typed ? 'setdate' : 'date', { field: this.shown.id, words: control.value });
    });
  }

  addList() {
    const open = document.createElement('button');
    open.type = 'button';
    open.textContent = '▾';
    open.setAttribute('aria-label', 'Choose from the list');
    open.addEventListener('pointerdown', (event) => event.preventDefault()); // the field keeps the focus
    open.addEventListener('click', () => this.chooseFrom(open, this.shown.list, (text) => {
      this.control.value = text;
      this.flush();
      this.control.focus();
    }));
    this.frame.append(open);
  }

  /// Sends the text and the caret if the form has others.
  flush() {
    if (!this.shown || this.shown.kind === 'date' || this.composing) return;
    const { value, selectionStart, selectionEnd } = this.control;
    const caret = placeOnForm(value, selectionStart);
    const edit = {
      field: this.shown.id,
      words: this.shown.lines ? linesOfForm(value) : value,
      caret,
      selected: placeOnForm(value, selectionEnd) - caret,
    };
    if (linesOfPage(this.shown.text) === value) edit.words = this.shown.text; // its line ends stay as they are
    if (hasOddUnits(edit.words)) edit.units = unitsOf(edit.words);
    const text = JSON.stringify(edit);
    if (text === this.sent) return;
    this.sent = text;
    this.lastEdit = this.send('edit', edit);
  }

  takeText(field) {
    const { control } = this;
    if (field.kind === 'date') {
      if (document.activeElement !== control || !control.value) control.value = field.text;
      return;
    }
    const text = field.lines ? linesOfPage(field.text) : field.text;
    if (control.value === text && !this.mustFocus) return;
    control.value = text;
    const caret = placeOnPage(field.text, field.caret);
    control.setSelectionRange(caret, placeOnPage(field.text, field.caret + field.selected));
  }

  close() {
    if (!this.shown) return;
    this.shown = undefined;
    this.composing = false;
    this.frame.hidden = true;
    this.frame.replaceChildren();
  }
}
