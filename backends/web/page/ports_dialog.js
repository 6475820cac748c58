// SPDX-License-Identifier: MIT
// "Ports…": what was granted to the page, which of them the form uses, and the browser's own list of all others.

export const NoSerial = 'This browser reaches no instruments. Chromium, Chrome and Edge do: on a desktop since version 117, on '
  + 'Android since 138. Typing, the demonstration, and what comes in and goes out work here too.';
const Nothing = 'No instrument was added to this page yet. Pair a Bluetooth instrument with this machine first, or plug its '
  + 'adapter in; then add it here.';
const Some = 'Com1 is the instrument that was added first, Com2 the second.';

export class PortsDialog {
  constructor(dialog, ports, send) {
    Object.assign(this, { dialog, ports, send });
    this.add = dialog.querySelector('.add');
    this.add.addEventListener('click', () => this.addOne());
    dialog.querySelector('.close').addEventListener('click', () => dialog.close());
    ports.changed = () => { if (dialog.open) this.draw(); };
  }

  open() {
    this.draw();
    if (!this.dialog.open) this.dialog.showModal();
  }

  draw() {
    const names = this.ports.names();
    const any = names.some((name) => name);
    this.dialog.querySelector('.why').textContent = this.ports.words ?? (!this.ports.serial ? NoSerial : any ? Some : Nothing);
    this.add.hidden = !this.ports.serial;
    const rows = names.map((name, i) => ({ name, number: i + 1 })).filter(({ name }) => name);
    this.dialog.querySelector('ul').replaceChildren(...rows.map((row) => this.row(row)));
  }

  row({ name, number }) {
    const row = document.createElement('li');
    const text = document.createElement('span');
    const state = document.createElement('small');
    text.textContent = `Com${number}: ${name}`;
    state.textContent = this.ports.serial ? this.stateOf(number) : '';
    text.append(state);
    row.append(text, this.button('Use this one', () => this.use(number)));
    if (this.ports.serial) row.append(this.button('Forget', () => this.ports.forget(number)));
    return row;
  }

  stateOf(number) {
    if (number === this.ports.openNumber) return 'open';
    const { connected } = this.ports.granted[number - 1];
    return connected === false ? 'unplugged, or out of reach' : 'not open';
  }

  button(text, act) {
    const button = document.createElement('button');
    Object.assign(button, { type: 'button', textContent: text });
    button.addEventListener('click', act);
    return button;
  }

  use(number) {
    this.send('useport', { item: number });
    this.dialog.close();
  }

  async addOne() {
    try {
      const number = await this.ports.choose();
      if (number) this.use(number);
    } catch (error) {
      this.dialog.querySelector('.why').textContent = `The browser did not let the page ask: ${error.message}`;
    }
  }
}
