// SPDX-License-Identifier: MIT
// The serial ports that a person has granted to this page. The program in the worker asks for one to be opened; its bytes
// go to the worker as they come, never as text.

const BufferSize = 65536; // bytes; a browser's own choice is 255, less than one reading

const Parities = { N: 'none', E: 'even', O: 'odd' };

/// "9600,N,8,1" as a port of the browser is opened with.
export function optionsOf(settings) {
  const [speed, parity, size, stops] = settings.split(',');
  return {
    baudRate: Number(speed), parity: Parities[parity.toUpperCase()], dataBits: Number(size), stopBits: Number(stops),
    bufferSize: BufferSize, flowControl: 'none',
  };
}

const hex = (number) => number.toString(16).padStart(4, '0');

/// What a person knows a port by. The browser tells no more of it than this.
function kindOf(port) {
  const { usbVendorId, usbProductId, bluetoothServiceClassId } = port.getInfo();
  if (bluetoothServiceClassId !== undefined) return 'Bluetooth instrument';
  return usbVendorId === undefined ? 'serial port' : `USB adapter ${hex(usbVendorId)}:${hex(usbProductId)}`;
}

/// Why a port could not be opened, or ended, in words.
function reasonOf(error) {
  if (error.name === 'NetworkError') return 'it is out of reach, switched off, or in use by another program';
  if (error.name === 'NotFoundError') return 'it was unplugged';
  return error.message || error.name;
}

/// Errors after which a port goes on.
const Losses = {
  BufferOverrunError: 'they came faster than this machine took them',
  ParityError: 'the line was disturbed',
  FramingError: 'the line was disturbed, or the speed of the instrument is another one',
};

export class Ports {
  /// `serial`: navigator.serial, undefined in a browser without it. `bytes`: where the characters go.
  constructor(serial, send, bytes) {
    Object.assign(this, { serial, send, bytes });
    this.granted = []; // ComN is the Nth; null for one that was taken back
    this.work = Promise.resolve(); // one thing at a time
    this.attempt = 0;
    this.openNumber = 0;
    this.changed = () => {};
  }

  async start() {
    if (!this.serial) return;
    this.serial.addEventListener('connect', ({ target }) => this.add(target));
    this.serial.addEventListener('disconnect', () => this.changed());
    for (const port of await this.serial.getPorts()) this.add(port);
  }

  /// Returns the number of the port.
  add(port) {
    if (!this.granted.includes(port)) {
      this.granted.push(port);
      this.tell();
    }
    this.changed();
    return this.granted.indexOf(port) + 1;
  }

  /// Lets the person choose one. Returns its number; 0 if none was chosen.
  async choose() {
    try {
      return this.add(await this.serial.requestPort());
    } catch (error) {
      if (error.name === 'NotFoundError') return 0; // the browser's list was closed
      throw error;
    }
  }

  async forget(number) {
    const port = this.granted[number - 1];
    this.granted[number - 1] = null; // the numbers of the others stay, until the page is opened again
    this.tell();
    if (this.openNumber === number) {
      this.send('portended', { item: this.attempt, words: 'it was taken from this page' });
      this.work = this.work.then(() => this.close());
      await this.work;
    }
    await port.forget();
    this.changed();
  }

  /// Ports of one kind have the same name; what tells them apart is their number.
  names() {
    const kinds = this.granted.map((port) => port && kindOf(port));
    return kinds.map((kind, i) => {
      if (!kind) return '';
      const before = kinds.slice(0, i).filter((each) => each === kind).length;
      return before ? `${kind} (${before + 1})` : kind;
    });
  }

  tell() {
    this.send('ports', { names: this.names() });
  }

  hear({ act, number, attempt, settings }) {
    const acts = {
      open: () => this.open(number, attempt, settings),
      read: () => { this.reading = this.read(attempt); },
      close: () => this.close(),
    };
    this.work = this.work.then(acts[act]).catch((error) => console.error(error));
  }

  async open(number, attempt, settings) {
    await this.close();
    const port = this.granted[number - 1];
    Object.assign(this, { attempt, port, openNumber: number });
    try {
      await port.open(optionsOf(settings));
      this.send('portopened', { item: attempt });
    } catch (error) {
      await this.end(port ? reasonOf(error) : 'it was taken from this page');
    }
    this.changed();
  }

  /// Passes on what comes, until the port ends or is closed. After an error that is none of the port's, it has a new
  /// stream.
  async read(attempt) {
    const { port } = this;
    let why = 'it has ended';
    while (port?.readable && attempt === this.attempt) {
      this.reader = port.readable.getReader();
      try {
        for (;;) {
          const { value, done } = await this.reader.read();
          if (done) break;
          await this.bytes.writeBytes(value);
        }
      } catch (error) {
        why = reasonOf(error);
        if (Losses[error.name]) this.send('portlost', { item: attempt, words: Losses[error.name] });
      } finally {
        this.reader.releaseLock();
      }
    }
    if (attempt === this.attempt) await this.end(why);
  }

  /// Tells the program that the port is gone, behind its last bytes.
  async end(why) {
    this.send('portended', { item: this.attempt, words: why });
    this.attempt = 0;
    await this.letGo();
  }

  /// What has not reached the program yet is not wanted any more.
  async close() {
    this.attempt = 0;
    this.bytes.discard();
    await this.reader?.cancel().catch(() => {}); // its port may be gone
    await this.reading;
    await this.letGo();
  }

  async letGo() {
    const { port } = this;
    Object.assign(this, { port: null, openNumber: 0 });
    await port?.close().catch(() => {}); // it was not open, or is gone
    this.changed();
  }
}
