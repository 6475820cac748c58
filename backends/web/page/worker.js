// SPDX-License-Identifier: MIT
// Runs the program. It blocks in its sleeps, which a worker may do and a page may not.
import { lockOf } from './data_folders.js';
import { openPool, originFiles, reachFoldersByDescriptor } from './origin_files.js';
import createProgram from './quorin-web.js';
import { RingReader } from './ring.js';

const TryAgain = 6; // EAGAIN of the C library
const CanBeRead = 1; // POLLIN

/// Files and folders that one run can make.
const SpareFiles = 100;

/// How long the page before this one, of the same tab, may take to go.
const Patience = 3000; // milliseconds

/// Takes the folder for this page alone, for as long as the worker runs.
function takeData(folder) {
  const inUse = 'it is open in another tab or window of this browser. Go on there, or close that one first.';
  return new Promise((taken, refused) => {
    navigator.locks.request(lockOf(folder), { signal: AbortSignal.timeout(Patience) }, () => {
      taken();
      return new Promise(() => {});
    }).catch((why) => refused(why.name === 'TimeoutError' ? new Error(inUse) : why));
  });
}

/// Mounts the data folder over the files that the browser keeps for the page.
async function prepareFiles(module, name) {
  await takeData(name);
  const folder = await (await navigator.storage.getDirectory()).getDirectoryHandle(name, { create: true });
  const handles = await openPool(folder, SpareFiles);
  reachFoldersByDescriptor(module.FS);
  module.FS.mkdir('/data');
  module.FS.mount(originFiles(module.FS, handles, (files) => postMessage({ files })), {}, '/data');
}

/// A ring as a device that the program reads.
function makeDevice(FS, path, minor, ring) {
  const device = FS.makedev(64, minor);
  FS.registerDevice(device, {
    read(stream, buffer, offset, length) {
      if (ring.isEmpty()) throw new FS.ErrnoError(TryAgain);
      return ring.take(buffer.subarray(offset, offset + length));
    },
    poll: () => (ring.isEmpty() ? 0 : CanBeRead),
  });
  FS.mkdev(path, device);
}

async function run({ acts, portBytes, fonts, folder, words }) {
  const ring = new RingReader(acts);
  const said = [];
  const module = await createProgram({
    wake: ring.wake,
    print: (line) => console.log(line),
    printErr: (line) => { said.push(line); console.error(line); },
  });
  await prepareFiles(module, folder);
  module.FS.mkdir('/page');
  module.FS.writeFile('/page/fonts.json', JSON.stringify(fonts));
  makeDevice(module.FS, '/dev/page', 0, ring); // what a person does
  makeDevice(module.FS, '/dev/page-port', 1, new RingReader(portBytes));
  const status = module.callMain(words);
  postMessage({ ended: status, said: said.join('\n') });
}

onmessage = ({ data }) => {
  run(data).catch((error) => postMessage({ failed: String(error?.message ?? error) }));
};
