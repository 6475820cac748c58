// SPDX-License-Identifier: MIT
// Whether the browser keeps the data of the page. What it has promised, it says; what it has removed is known by a mark
// that lies elsewhere in the browser.
import { Demo, folderOfPage, lockOf } from './data_folders.js';
import { readMark, writeMark } from './marks.js';

const Mark = `${lockOf(folderOfPage())} was here`;

export const megabytes = (bytes) => (bytes / 1e6).toLocaleString('en', { maximumFractionDigits: bytes < 1e7 ? 1 : 0 });

const dayOf = (date) => date.toLocaleDateString('en-GB', { day: 'numeric', month: 'long', year: 'numeric' });

export class StoredData {
  /// Takes the number of files of the data folder. Returns what was there before if the browser has removed it: {files,
  /// day}; else nothing. The first number of a page is that of its start.
  count(files) {
    const isStart = this.files === undefined;
    this.files = files;
    if (isStart) this.lookBack();
    if (!this.removed && files > 0) writeMark(Mark, { files, day: dayOf(new Date()) });
    return isStart ? this.removed : undefined;
  }

  /// A loss that was not confirmed yet is told again.
  lookBack() {
    const before = readMark(Mark);
    if (!before?.removed && !(before?.files > 0 && this.files === 0)) return;
    this.removed = { ...before, removed: true };
    writeMark(Mark, this.removed);
  }

  /// A person knows of what was removed.
  confirm() {
    this.removed = undefined;
    if (this.files > 0) writeMark(Mark, { files: this.files, day: dayOf(new Date()) });
    else writeMark(Mark, null);
  }

  /// Has the browser promise to keep the data; some ask the person. Nobody misses that of a demonstration.
  async askToKeep() {
    if (this.asked || folderOfPage() === Demo) return;
    this.asked = true;
    if (!(await this.isKept())) await navigator.storage.persist?.().catch(() => false);
  }

  isKept() {
    return navigator.storage.persisted?.().catch(() => false) ?? Promise.resolve(false);
  }

  /// Returns {usage, quota} in bytes, as the browser estimates them.
  estimate() {
    return navigator.storage.estimate?.().catch(() => ({})) ?? Promise.resolve({});
  }
}
