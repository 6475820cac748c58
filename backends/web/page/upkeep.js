// SPDX-License-Identifier: MIT
// The page as something that lasts: its versions, the data that the browser keeps for it, and what a person is told of both.
import { About } from './about.js';
import { isDemo } from './demonstration.js';
import { readMark, writeMark } from './marks.js';
import { NoSerial } from './ports_dialog.js';
import { StoredData } from './stored_data.js';
import { Build, Version } from './version.js';
import { Versions } from './versions.js';

const PortsAreMissed = 'quorin was told that there are no ports';
const Installed = '(display-mode: standalone)';
const Looks = ['loss', 'warning', 'hint', 'note']; // the worst first

export class Upkeep {
  /// `about`: the dialog. `changed` is called when something else is to be told.
  constructor(more, about, changed) {
    this.notices = new Map();
    this.changed = changed;
    this.versions = new Versions(navigator.serviceWorker, changed);
    this.data = new StoredData();
    this.about = new About(about, () => this.facts());
    more.add('About this page…', () => this.about.open());
    addEventListener('appinstalled', () => this.data.askToKeep());
  }

  /// See Versions.beforeStart.
  beforeStart() {
    return this.versions.beforeStart(window.crossOriginIsolated);
  }

  startNewer() {
    return this.versions.startNewer();
  }

  see(mirror) {
    const isFirst = !this.mirror;
    this.mirror = mirror;
    if (isFirst) this.begin();
  }

  /// The program has shown its first screen: what is loaded from now on keeps nobody waiting.
  begin() {
    this.versions.keep();
    if (matchMedia(Installed).matches) this.data.askToKeep();
    if (!isDemo && !navigator.serial && !readMark(PortsAreMissed)) this.tell('no ports', 'hint', NoSerial);
  }

  /// Takes the number of files of the program, which each save changes for a moment. A browser that asks the person for its
  /// promise does it when the first record is saved: then there is something to keep.
  count(files) {
    const removed = this.data.count(files);
    if (this.mirror?.record) this.data.askToKeep();
    if (!removed) return;
    const before = removed.files === 1 ? 'one file' : `${removed.files} files`;
    this.tell('removed', 'loss', `The browser has removed the data of this page: ${before}, last seen on ${removed.day}. `
      + 'If you have a copy, bring it in again.');
  }

  tell(about, look, text) {
    this.notices.set(about, { about, look, text, confirmed: true, offers: [] });
    this.changed();
  }

  /// Returns the notices of the program and of the page, the worst first.
  withNotices(ofProgram) {
    this.lookForNewer();
    const all = [...this.notices.values(), ...ofProgram];
    return all.sort((one, other) => Looks.indexOf(one.look) - Looks.indexOf(other.look));
  }

  /// A newer version is started by a person where nothing is lost by it, never under a record.
  lookForNewer() {
    if (!this.versions.newerIsReady() || this.newerIsKnown) return this.notices.delete('newer version');
    const isFree = !this.mirror.record && !this.mirror.unsaved && !this.mirror.box;
    return this.notices.set('newer version', {
      about: 'newer version', look: 'hint', confirmed: true,
      text: 'A newer version is ready. It starts the next time this page is opened.',
      offers: isFree ? [{ name: 'version', words: 'Start it now' }] : [],
    });
  }

  /// Returns true if the notice was the page's own, which was read now.
  confirm(about) {
    if (!this.notices.delete(about)) return false;
    if (about === 'removed') this.data.confirm();
    if (about === 'newer version') this.newerIsKnown = true;
    if (about === 'no ports') writeMark(PortsAreMissed, true);
    this.changed();
    return true;
  }

  async facts() {
    return {
      version: Version,
      build: Build,
      worksOffline: this.versions.worksOffline(),
      newerIsReady: this.versions.newerIsReady(),
      isInstalled: matchMedia(Installed).matches,
      isKept: await this.data.isKept(),
      ...(await this.data.estimate()),
    };
  }
}
