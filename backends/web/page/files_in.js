// SPDX-License-Identifier: MIT
// Files that a person gives to the page, by a dialog, a drop or the system's "open with". The program asks for their
// parts when it has room for them.

/// An array of bytes as base64.
const asText = (bytes) => btoa(String.fromCharCode(...bytes));

const holdsFiles = (event) => event.dataTransfer?.types.includes('Files');

export class FilesIn {
  constructor(send) {
    this.send = send;
    this.files = new Map(); // by their numbers
    this.last = 0;
    this.listenForDrops();
    window.launchQueue?.setConsumer(async ({ files }) => {
      for (const handle of files) this.take(await handle.getFile());
    });
  }

  /// `use`: what the person wants with them, "driver" or "zip".
  choose(use, accept) {
    this.input = document.createElement('input');
    Object.assign(this.input, { type: 'file', accept, multiple: use === 'driver' });
    this.input.addEventListener('change', () => [...this.input.files].forEach((file) => this.take(file, use)));
    this.input.click();
  }

  take(file, use = '') {
    const item = ++this.last;
    this.files.set(item, file);
    this.send('file', { item, words: file.name, bytes: file.size, data: use });
  }

  async sendPart({ want: item, at, count }) {
    const file = this.files.get(item);
    try {
      const bytes = new Uint8Array(await file.slice(at, at + count).arrayBuffer());
      if (at + count >= file.size) this.files.delete(item);
      this.send('part', { item, data: asText(bytes) });
    } catch (why) {
      this.files.delete(item);
      this.send('unread', { item, words: why.name === 'NotFoundError' ? 'it is not there any more' : 'the browser refuses it' });
    }
  }

  /// A file that is dropped beside a target would replace the page.
  listenForDrops() {
    const mark = (isOver) => document.body.classList.toggle('dropping', isOver);
    addEventListener('dragover', (event) => {
      if (!holdsFiles(event)) return;
      event.preventDefault();
      mark(true);
    });
    addEventListener('dragleave', (event) => { if (!event.relatedTarget) mark(false); });
    addEventListener('drop', (event) => {
      if (!holdsFiles(event)) return;
      event.preventDefault();
      mark(false);
      [...event.dataTransfer.files].forEach((file) => this.take(file));
    });
  }
}
