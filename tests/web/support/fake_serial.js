// SPDX-License-Identifier: MIT
// navigator.serial of a page, with instruments that a test turns on and off. It is run in the page before its own scripts.
(() => {
  class FakePort {
    constructor(info, test) {
      Object.assign(this, { info, test, readable: null, writable: null, connected: true, inReach: true, opened: [] });
    }
    getInfo() { return this.info; }
    async open(options) {
      if (!this.inReach) throw new DOMException('Failed to open serial port.', 'NetworkError');
      if (this.readable) throw new DOMException('The port is already open.', 'InvalidStateError');
      this.opened.push(options);
      this.makeStream();
    }
    makeStream() {
      this.readable = new ReadableStream({ start: (controller) => { this.controller = controller; } });
    }
    async close() {
      if (!this.readable) throw new DOMException('The port is already closed.', 'InvalidStateError');
      if (this.readable.locked) throw new TypeError('The stream is locked.');
      this.readable = null;
    }
    async forget() { this.test.ports = this.test.ports.filter((port) => port !== this); }

    // What happens to the instrument.
    sends(bytes) { this.controller.enqueue(Uint8Array.from(bytes)); }
    loses(name) {
      const { controller } = this;
      this.makeStream();
      controller.error(new DOMException('lost', name));
    }
    goes() {
      this.inReach = false;
      this.readable = null;
      this.controller.error(new DOMException('The device has been lost.', 'NetworkError'));
    }
    comes() { this.inReach = true; }
  }

  class FakeSerial extends EventTarget {
    constructor() {
      super();
      this.ports = [new FakePort({ usbVendorId: 0x403, usbProductId: 0x6001 }, this)];
      this.inRange = new FakePort({ bluetoothServiceClassId: '00001101-0000-1000-8000-00805f9b34fb' }, this);
    }
    async getPorts() { return this.ports; }
    /// The browser's own list: a person chooses the instrument in range, if there is one.
    async requestPort() {
      if (!this.inRange) throw new DOMException('No port selected by the user.', 'NotFoundError');
      this.ports.push(this.inRange);
      return this.inRange;
    }
  }
  Object.defineProperty(navigator, 'serial', { value: new FakeSerial() });
})();
