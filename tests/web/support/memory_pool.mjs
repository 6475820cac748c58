// SPDX-License-Identifier: MIT
// Files of an origin in memory, with what a browser's access handles do, and a power cut: what was not flushed is on the
// medium only in part.

/// Thrown where a run is cut.
export class Cut extends Error {}

export class Medium {
  constructor(count) {
    this.files = Array.from({ length: count }, () => ({ live: new Uint8Array(0), kept: new Uint8Array(0), writes: [] }));
    this.steps = 0;
    this.flushes = 0;
    this.cutAt = Infinity;
  }

  handles() {
    return this.files.map((file) => this.#handle(file));
  }

  #step() {
    if (++this.steps >= this.cutAt) throw new Cut();
  }

  #handle(file) {
    return {
      read: (bytes, { at }) => {
        const found = file.live.subarray(at, at + bytes.length);
        bytes.set(found);
        return found.length;
      },
      write: (bytes, { at }) => {
        this.#step();
        const write = { at, bytes: bytes.slice() };
        file.writes.push(write);
        file.live = after(file.live, write);
        return bytes.length;
      },
      truncate: (size) => {
        this.#step();
        file.writes.push({ size });
        file.live = after(file.live, { size });
      },
      flush: () => {
        this.#step();
        this.flushes++;
        file.kept = file.live;
        file.writes = [];
      },
      getSize: () => file.live.length,
    };
  }

  /// The medium after the power has gone: of the writes since the last flush of a file, those that `survives` names;
  /// one that it gives a number for has that share of its bytes on the medium.
  cut(survives) {
    const next = new Medium(0);
    next.files = this.files.map((file) => {
      const kept = file.writes.reduce((bytes, write) => after(bytes, torn(write, Number(survives(write)))), file.kept);
      return { live: kept, kept, writes: [] };
    });
    return next;
  }
}

function torn(write, share) {
  if (share === 0) return null;
  return write.bytes ? { at: write.at, bytes: write.bytes.subarray(0, Math.ceil(write.bytes.length * share)) } : write;
}

function after(bytes, write) {
  if (write === null) return bytes;
  const size = write.size ?? Math.max(bytes.length, write.at + write.bytes.length);
  const next = new Uint8Array(size);
  next.set(bytes.subarray(0, size));
  if (write.bytes) next.set(write.bytes, write.at);
  return next;
}

/// A power cut in which each write survives, is lost or is torn by chance.
export function byChance(numbers) {
  const share = numbers();
  return () => (numbers() < share ? 1 : numbers() < 0.5 ? 0 : numbers());
}

/// Numbers between 0 and 1, the same ones for the same seed.
export function randomNumbers(seed) {
  let state = seed >>> 0;
  return () => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return state / 2 ** 32;
  };
}
