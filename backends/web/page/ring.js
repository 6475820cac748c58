// SPDX-License-Identifier: MIT
// Bytes from the page to its worker through memory that both see. The worker sleeps on the first number of one of them:
// whoever has something for it adds one and wakes it.
const Header = 12; // bytes: wake, the place of the next byte to write, that of the next to read
const Capacity = 65536;

export function makeRing() {
  const Memory = globalThis.SharedArrayBuffer ?? ArrayBuffer; // a page that may share none says so, and does not start
  return new Memory(Header + Capacity);
}

/// Writes lines. What there is no room for waits here, in its order.
export class RingWriter {
  /// `alarm`: the ring whose first number the worker sleeps on.
  constructor(shared, alarm = shared) {
    this.alarm = new Int32Array(alarm, 0, 1);
    this.numbers = new Int32Array(shared, 0, 3);
    this.bytes = new Uint8Array(shared, Header);
    this.waiting = [];
    this.retry = 0;
  }

  writeLine(text) {
    this.waiting.push(new TextEncoder().encode(text + '\n'));
    this.write();
  }

  /// Resolves once all of it is in the ring: a source that is quicker than the program has to wait.
  async writeBytes(bytes) {
    this.waiting.push(bytes);
    this.write();
    while (this.waiting.length > 0) await new Promise((passed) => setTimeout(passed, 10));
  }

  discard() {
    this.waiting = [];
  }

  write() {
    clearTimeout(this.retry);
    while (this.waiting.length > 0) {
      const next = this.waiting.shift();
      const written = this.put(next);
      if (written === next.length) continue;
      this.waiting.unshift(next.subarray(written));
      this.retry = setTimeout(() => this.write(), 10);
      break;
    }
    Atomics.add(this.alarm, 0, 1);
    Atomics.notify(this.alarm, 0);
  }

  /// One place stays free: a full ring would look like an empty one.
  put(bytes) {
    const head = Atomics.load(this.numbers, 1);
    const room = (Atomics.load(this.numbers, 2) - head - 1 + Capacity) % Capacity;
    const count = Math.min(room, bytes.length);
    for (let i = 0; i < count; i++) this.bytes[(head + i) % Capacity] = bytes[i];
    Atomics.store(this.numbers, 1, (head + count) % Capacity);
    return count;
  }
}

export class RingReader {
  constructor(shared) {
    this.wake = new Int32Array(shared, 0, 1);
    this.numbers = new Int32Array(shared, 0, 3);
    this.bytes = new Uint8Array(shared, Header);
  }

  isEmpty() {
    return Atomics.load(this.numbers, 1) === Atomics.load(this.numbers, 2);
  }

  /// Fills `target` as far as there are bytes, and returns their number.
  take(target) {
    const tail = Atomics.load(this.numbers, 2);
    const there = (Atomics.load(this.numbers, 1) - tail + Capacity) % Capacity;
    const count = Math.min(there, target.length);
    for (let i = 0; i < count; i++) target[i] = this.bytes[(tail + i) % Capacity];
    Atomics.store(this.numbers, 2, (tail + count) % Capacity);
    return count;
  }
}
