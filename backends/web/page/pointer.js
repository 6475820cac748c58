// SPDX-License-Identifier: MIT
// Mouse and finger on the grids. A finger may press a cell or drag the page: it presses when it is lifted or has rested,
// and drags if it moves before.
const FingerRest = 150; // milliseconds
const NewScreen = 300; // milliseconds; a finger that comes down earlier was meant for the last screen
const DragStart = 10; // pixels
const RowsOfAWheelStep = 3;
const WheelStep = 100; // pixels of a wheel's event

export class Pointer {
  /// `view` gives mirror, scale and stageSince; `send` sends an event of a kind.
  constructor(view, send, { heading, grid, bar }) {
    this.view = view;
    this.send = send;
    this.grid = grid;
    this.wheelLeft = 0;
    this.onGrid();
    this.onBar(bar);
    heading.addEventListener('pointerdown', (event) => {
      event.preventDefault();
      send('heading');
    });
  }

  onGrid() {
    const on = (kind, does) => this.grid.addEventListener(kind, does);
    on('pointerdown', (event) => this.down(event));
    on('pointermove', (event) => this.move(event));
    on('pointerup', () => this.up());
    on('pointercancel', () => this.cancel());
    on('contextmenu', (event) => event.preventDefault());
    on('wheel', (event) => this.wheel(event));
  }

  placeOf(event) {
    const corner = this.grid.getBoundingClientRect();
    const { scale } = this.view;
    return { x: Math.floor((event.clientX - corner.left) / scale), y: Math.floor((event.clientY - corner.top) / scale) };
  }

  down(event) {
    event.preventDefault();
    if (event.button !== 0 || !this.view.mirror?.grid || !event.isPrimary) return;
    this.grid.setPointerCapture(event.pointerId);
    const place = this.placeOf(event);
    if (event.pointerType !== 'touch') return this.isSecondOfOne(event, place) ? undefined : this.press(place);
    const taps = performance.now() - this.view.stageSince >= NewScreen;
    this.finger = { place, taps, from: event.clientY, top: this.view.mirror.grid.top, dragging: false };
    this.rest = setTimeout(() => this.fingerRests(), FingerRest);
  }

  /// A double click is one tap: its second press would act on what the first one has opened.
  isSecondOfOne(event, place) {
    const last = this.lastPress;
    const isQuick = last && event.timeStamp - last.time < 400;
    this.lastPress = { time: event.timeStamp, stage: this.view.mirror.stage, y: place.y };
    if (!isQuick) return false;
    const rowHeight = this.view.mirror.grid.rowheight;
    return last.stage !== this.view.mirror.stage || Math.abs(last.y - place.y) < rowHeight / 2;
  }

  press(place) {
    this.pressed = true;
    this.send('press', place);
  }

  fingerRests() {
    const { finger } = this;
    if (!finger || finger.dragging) return;
    this.finger = null;
    if (finger.taps) this.press(finger.place);
  }

  move(event) {
    const { finger } = this;
    if (!finger) return;
    const moved = event.clientY - finger.from;
    if (!finger.dragging && Math.abs(moved) < DragStart) return;
    finger.dragging = true;
    const rows = Math.trunc(-moved / (this.view.mirror.grid.rowheight * this.view.scale));
    this.scrollTo(finger.top + rows);
  }

  up() {
    clearTimeout(this.rest);
    const { finger } = this;
    this.finger = null;
    if (finger && !finger.dragging && finger.taps) this.press(finger.place);
    if (this.pressed) this.send('release');
    this.pressed = false;
  }

  cancel() {
    clearTimeout(this.rest);
    this.finger = null;
    if (this.pressed) this.send('release');
    this.pressed = false;
  }

  wheel(event) {
    if (!this.view.mirror?.grid) return;
    event.preventDefault();
    this.wheelLeft += event.deltaMode === 0 ? event.deltaY : event.deltaY * (WheelStep / 3);
    const steps = Math.trunc(this.wheelLeft / WheelStep);
    this.wheelLeft -= steps * WheelStep;
    if (steps !== 0) this.scrollTo(this.view.mirror.grid.top + steps * RowsOfAWheelStep);
  }

  scrollTo(top) {
    const { grid } = this.view.mirror;
    const row = Math.max(0, Math.min(grid.last, top));
    if (row !== grid.top && row !== this.asked) this.send('scroll', { row });
    this.asked = row;
    setTimeout(() => (this.asked = undefined), 50); // it may have been refused
  }

  onBar(bar) {
    const follow = (event) => {
      const { grid } = this.view.mirror ?? {};
      if (!grid || event.buttons === 0) return;
      const place = (event.clientY - bar.getBoundingClientRect().top) / bar.clientHeight;
      this.scrollTo(Math.round(place * (grid.last + 1) - 0.5));
    };
    bar.addEventListener('pointerdown', (event) => {
      event.preventDefault();
      bar.setPointerCapture(event.pointerId);
      follow(event);
    });
    bar.addEventListener('pointermove', follow);
  }
}

/// Shows where the page stands in the grid.
export function drawBar(bar, thumb, grid, scale) {
  bar.hidden = !grid || grid.last === 0 || grid.bar === 0;
  if (bar.hidden) return;
  const [left, top, width, height] = grid.box;
  bar.classList.toggle('thin', grid.bar < 8);
  Object.assign(bar.style, {
    left: `${(left + width - grid.bar) * scale}px`,
    top: `${top * scale}px`,
    width: `${grid.bar * scale}px`,
    height: `${height * scale}px`,
  });
  const whole = height * scale;
  const size = Math.max(24, (whole * Math.max(1, grid.rows - grid.last)) / Math.max(1, grid.rows));
  thumb.style.height = `${size}px`;
  thumb.style.top = `${((whole - size) * grid.top) / grid.last}px`;
}
