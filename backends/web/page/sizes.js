// SPDX-License-Identifier: MIT
// How large the form is drawn on the page: a person may change it, and the page remembers it.
import { readMark, writeMark } from './marks.js';

const Steps = [1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3];
const ForFinger = 1.75; // a row of the form is then about 33 pixels high
const ForMouse = 1.1;
const LeastForm = 160; // pixels, the smallest form
const Name = 'quorin scale';

export class Sizes {
  constructor(room, isTouched) {
    this.room = room;
    const kept = readMark(Name);
    this.wanted = Steps.includes(kept) ? kept : isTouched ? ForFinger : ForMouse;
  }

  /// The wanted scale, or the largest with which the smallest form fits.
  scale() {
    return Math.min(this.wanted, Math.max(this.largest(), Steps[0]));
  }

  largest() {
    const most = Math.min(this.room.clientWidth, this.room.clientHeight) / LeastForm;
    return Steps.filter((step) => step <= most).at(-1) ?? Steps[0];
  }

  next(by) {
    return Steps[Steps.indexOf(this.scale()) + by];
  }

  can(by) {
    const next = this.next(by);
    return next !== undefined && next <= this.largest();
  }

  change(by) {
    this.wanted = this.next(by);
    writeMark(Name, this.wanted);
  }
}
