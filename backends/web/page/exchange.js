// SPDX-License-Identifier: MIT
// What comes in and goes out by the page: the entries of the list, the line that offers something, and the dialog in
// which the program tells or asks.
import { FilesIn } from './files_in.js';
import { canShare, FilesOut } from './files_out.js';

function buttonOf(text, choose, look = '') {
  const button = document.createElement('button');
  Object.assign(button, { type: 'button', textContent: text, className: look });
  button.addEventListener('click', choose);
  return button;
}

/// The question stands behind what it is about, which may be long: it is seen all the same.
function withoutQuestion(words) {
  const end = words.lastIndexOf('\n\n');
  return end < 0 ? [words, ''] : [words.slice(0, end), words.slice(end + 2)];
}

export class Exchange {
  constructor(send, more) {
    this.send = send;
    this.in = new FilesIn(send);
    this.out = new FilesOut(send);
    this.state = { offer: '', dialog: null, download: '', formats: [], driver: false };
    this.makeOffer();
    this.makeDialog();
    more.add('Install a driver…', () => this.chooseDriver());
    more.add('Install the sample driver', () => this.accept('sample'), () => !this.state.driver);
    more.add(canShare() ? 'Save or share the download…' : 'Save the download…',
      () => this.out.open(this.state.download, this.state.formats), () => this.state.download !== '');
    more.add('Hand over (zip)…', () => this.handOver());
    more.add('Take in a zip…', () => this.in.choose('zip', '.zip,application/zip'));
  }

  /// What the page does for an offer of a notice.
  acts() {
    return {
      install: () => this.chooseDriver(),
      sample: () => this.accept('sample'),
      handover: () => this.handOver(),
      later: () => this.accept('later'),
      nohints: () => this.accept('nohints'),
    };
  }

  accept(name) {
    this.send('offer', { words: name });
  }

  /// Takes what the worker has said, if it belongs here.
  hear({ exchange, given, bytes }) {
    if (given !== undefined) return this.out.take(JSON.parse(given), bytes);
    const said = JSON.parse(exchange);
    if (said.want !== undefined) return this.in.sendPart(said);
    this.state = said;
    this.drawOffer(said.offer);
    this.drawDialog(said.dialog);
  }

  /// The program has ended.
  stop() {
    this.drawOffer('');
    this.drawDialog(null);
    this.out.close();
  }

  chooseDriver() {
    this.in.choose('driver', '.qvd,text/plain,application/octet-stream');
  }

  handOver() {
    this.out.open('Hand over', [{ name: 'zip', words: '' }]);
  }

  // --- the line of the offer -----------------------------------------------------------------------------------------

  makeOffer() {
    this.offer = document.createElement('div');
    Object.assign(this.offer, { id: 'offer', hidden: true });
    this.offer.setAttribute('role', 'status');
    document.getElementById('notice').after(this.offer);
  }

  /// What waits until the form is free.
  drawOffer(offer) {
    this.offer.hidden = offer === '';
    const words = document.createElement('span');
    words.textContent = offer;
    this.offer.replaceChildren(words, buttonOf('Not now', () => this.accept('notnow')));
  }

  // --- the dialog ----------------------------------------------------------------------------------------------------

  makeDialog() {
    this.dialog = document.createElement('dialog');
    this.dialog.id = 'told';
    this.dialog.setAttribute('aria-labelledby', 'toldtitle');
    this.dialog.innerHTML = '<h1 id="toldtitle"></h1><p tabindex="0"></p><p class="question"></p><div class="answers"></div>';
    this.dialog.addEventListener('cancel', (event) => {
      event.preventDefault();
      this.reply(false);
    });
    document.body.append(this.dialog);
  }

  drawDialog(dialog) {
    if (dialog?.id === this.shown) return;
    this.shown = dialog?.id;
    this.beginsAnew = dialog?.anew;
    if (!dialog) return this.dialog.close();
    this.dialog.querySelector('h1').textContent = dialog.title;
    const [words, question] = dialog.asks ? withoutQuestion(dialog.words) : [dialog.words, ''];
    this.dialog.querySelector('p').textContent = words;
    this.dialog.querySelector('.question').textContent = question;
    this.dialog.querySelector('.question').hidden = question === '';
    const answers = dialog.asks ? [['Yes', true], ['No', false]] : [['OK', false]];
    const buttons = answers.map(([text, yes]) => buttonOf(text, () => this.reply(yes), yes ? '' : 'usual'));
    this.dialog.querySelector('.answers').replaceChildren(...buttons);
    if (!this.dialog.open) this.dialog.showModal();
    buttons.at(-1).focus();
  }

  reply(yes) {
    if (this.beginsAnew) return location.reload(); // with new spare files for the program
    if (this.shown !== undefined) this.send('reply', { item: this.shown, yes });
  }
}
