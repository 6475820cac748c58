// SPDX-License-Identifier: MIT
// The line of the link, and the box with readings that signalled that they were taken and that no row can hold.

export class Link {
  constructor(line, heard, losses, { choosePort, send }) {
    Object.assign(this, { line, heard, losses });
    line.addEventListener('click', choosePort);
    losses.querySelector('button').addEventListener('click', () => {
      this.seen = this.shown; // the program says it until it has heard of the click
      losses.close();
      send('losses');
    });
    losses.addEventListener('cancel', (event) => event.preventDefault()); // it has to be read
  }

  show({ text, look, news, losses }) {
    this.line.textContent = text;
    this.line.className = look;
    if (this.heard.textContent !== news) this.heard.textContent = news;
    this.shown = losses;
    this.losses.querySelector('p').textContent = losses;
    if (losses === '') this.seen = '';
    else if (losses !== this.seen && !this.losses.open) this.losses.showModal();
  }
}
