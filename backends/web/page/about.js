// SPDX-License-Identifier: MIT
// "About this page…": which version it is, whether it needs its server, and how safe the data is.
import { megabytes } from './stored_data.js';

const Kept = 'The browser keeps the data until you remove it.';
const NotKept = 'The browser may remove the data when its disk is full: take copies of it often. Most browsers keep that of an '
  + 'installed page.';
const Private = 'A private window forgets everything when it is closed. A page can’t see whether it is in one.';

export class About {
  constructor(dialog, facts) {
    Object.assign(this, { dialog, facts });
    dialog.querySelector('button').addEventListener('click', () => dialog.close());
  }

  async open() {
    await this.draw();
    if (!this.dialog.open) this.dialog.showModal();
  }

  async draw() {
    const rows = this.rows(await this.facts());
    this.dialog.querySelector('dl').replaceChildren(...rows.flatMap(([name, ...texts]) => [
      this.element('dt', name), ...texts.map((text) => this.element('dd', text)),
    ]));
  }

  rows({ version, build, worksOffline, newerIsReady, isInstalled, isKept, usage, quota }) {
    return [
      ['Version', `${version} (${build})`, ...(newerIsReady ? ['A newer one starts the next time.'] : [])],
      ['Works without a network', worksOffline ? 'Yes' : 'Not yet: it still needs its server to start.'],
      ['Opened as', isInstalled ? 'An installed application' : 'A page of the browser'],
      ['Data', isKept ? Kept : NotKept, Private],
      ['Room', usage === undefined ? 'The browser does not say.'
        : `${megabytes(usage)} MB used, of at most ${megabytes(quota)} MB by the browser’s estimate.`],
    ];
  }

  element(name, text) {
    const element = document.createElement(name);
    element.textContent = text;
    return element;
  }
}
