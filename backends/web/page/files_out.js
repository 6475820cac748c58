// SPDX-License-Identifier: MIT
// Files that a person is given. The file is made when the dialog opens: a browser saves and shares only at once after a
// click.

const Rest = 60000; // milliseconds, in which the browser has begun its own copy

function download(file) {
  const link = document.createElement('a');
  Object.assign(link, { href: URL.createObjectURL(file), download: file.name });
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), Rest);
}

async function save(file) {
  if (!window.showSaveFilePicker) return download(file);
  const handle = await window.showSaveFilePicker({ suggestedName: file.name });
  const target = await handle.createWritable();
  await target.write(file);
  await target.close();
}

const share = (file) => navigator.share({ files: [file], title: file.name });

/// Any file will do to ask whether the browser shares at all.
export const canShare = () => Boolean(navigator.canShare?.({ files: [new File(['x'], 'x.csv', { type: 'text/csv' })] }));

const sizeOf = (bytes) => (bytes < 1000 ? `${bytes} bytes` : `${Math.round(bytes / 1000)} KB`);

export class FilesOut {
  constructor(send) {
    this.send = send;
    this.request = 0;
    this.dialog = document.createElement('dialog');
    this.dialog.id = 'out';
    this.dialog.setAttribute('aria-labelledby', 'outtitle');
    this.dialog.innerHTML = '<h1 id="outtitle"></h1><fieldset></fieldset><p role="status"></p><div class="answers">'
      + '<button type="button">Cancel</button><button type="button">Share…</button>'
      + '<button type="button" class="usual">Save…</button></div>';
    document.body.append(this.dialog);
    this.formats = this.dialog.querySelector('fieldset');
    this.words = this.dialog.querySelector('p');
    const [cancel, sharing, saving] = this.dialog.querySelectorAll('button');
    Object.assign(this, { sharing, saving });
    cancel.addEventListener('click', () => this.close());
    sharing.addEventListener('click', () => this.pass(share, 'shared'));
    saving.addEventListener('click', () => this.pass(save, 'saved'));
  }

  /// `formats`: {name, words}, of which one is chosen.
  open(title, formats) {
    this.dialog.querySelector('h1').textContent = title;
    this.formats.hidden = formats.length < 2;
    this.formats.replaceChildren(...formats.map(({ name, words }, i) => this.choice(name, words, i === 0)));
    this.ask(formats[0].name);
    if (!this.dialog.open) this.dialog.showModal();
    this.saving.focus();
  }

  choice(name, words, checked) {
    const label = document.createElement('label');
    const radio = document.createElement('input');
    Object.assign(radio, { type: 'radio', name: 'format', checked });
    radio.addEventListener('change', () => this.ask(name));
    label.append(radio, words);
    return label;
  }

  ask(format) {
    this.request += 1;
    this.show(null, 'Making the file…');
    this.send('give', { item: this.request, data: format });
  }

  show(file, words) {
    this.file = file;
    this.words.textContent = words;
    this.saving.disabled = file === null;
    this.sharing.disabled = file === null;
    this.sharing.hidden = !canShare();
  }

  take(given, bytes) {
    if (given.request !== this.request || !this.dialog.open) return;
    if (given.why) return this.show(null, given.why);
    const file = new File([bytes], given.name, { type: given.type });
    this.show(file, `${given.name}: ${sizeOf(file.size)}${given.words ? `\n${given.words}` : ''}`);
  }

  /// Gives the file to the person in a way, and tells the program when they have it.
  async pass(way, done) {
    const { file, request } = this;
    try {
      await way(file);
    } catch (why) {
      if (why.name !== 'AbortError') this.words.textContent = `${file.name} could not be ${done}: ${reasonOf(why)}`;
      return;
    }
    this.send('saved', { item: request });
    this.close();
  }

  close() {
    if (this.dialog.open) this.dialog.close();
  }
}

/// A browser shares a few kinds of files only.
function reasonOf(why) {
  return why.name === 'NotAllowedError' ? 'the browser refuses this kind of file. Save it.' : why.message;
}
