// SPDX-License-Identifier: MIT
// Runs the program. It blocks in its sleeps, which a worker may do and a page may not.
import createProgram from './quorin-web.js';
import { RingReader } from './ring.js';

const TryAgain = 6; // EAGAIN of the C library
const CanBeRead = 1; // POLLIN

/// Mounts the data folder. Its content is lost with the page so far.
async function prepareFiles(module, files) {
  module.FS.mkdir('/data');
  for (const { path, bytes } of files ?? []) {
    const folder = path.slice(0, path.lastIndexOf('/'));
    if (folder) module.FS.mkdirTree(folder);
    module.FS.writeFile(path, bytes);
  }
}

/// What a person does, as a device that the program reads.
function preparePage(FS, ring, fonts) {
  FS.mkdir('/page');
  FS.writeFile('/page/fonts.json', JSON.stringify(fonts));
  const device = FS.makedev(64, 0);
  FS.registerDevice(device, {
    read(stream, buffer, offset, length) {
      if (ring.isEmpty()) throw new FS.ErrnoError(TryAgain);
      return ring.take(buffer.subarray(offset, offset + length));
    },
    poll: () => (ring.isEmpty() ? 0 : CanBeRead),
  });
  FS.mkdev('/dev/page', device);
}

/// The files below a folder, for the tests and for whoever wants a copy.
function filesBelow(FS, folder) {
  return FS.readdir(folder).filter((name) => name !== '.' && name !== '..').flatMap((name) => {
    const path = folder + '/' + name;
    return FS.isDir(FS.stat(path).mode) ? filesBelow(FS, path) : [{ path, text: FS.readFile(path, { encoding: 'utf8' }) }];
  });
}

async function run({ shared, fonts, words, files }) {
  const ring = new RingReader(shared);
  const said = [];
  const module = await createProgram({
    wake: ring.wake,
    print: (line) => console.log(line),
    printErr: (line) => { said.push(line); console.error(line); },
  });
  await prepareFiles(module, files);
  preparePage(module.FS, ring, fonts);
  const status = module.callMain(words);
  postMessage({ ended: status, said: said.join('\n'), files: filesBelow(module.FS, '/data') });
}

onmessage = ({ data }) => {
  run(data).catch((error) => postMessage({ failed: String(error?.message ?? error) }));
};
