// SPDX-License-Identifier: MIT
// A program in a worker, on the files of the origin. Takes one message { module, files, input, words }, and posts
// { output, errors, status, files, milliseconds, memory } at its end. Files are { path, mode, bytes }, folders have no bytes; they are in the
// folder /data, which is the program's working folder.
import { openPool, originFiles, reachFoldersByDescriptor } from '../../../backends/web/origin_files.js';

const SpareFiles = 60;
const decode = (text) => Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
const encode = (bytes) => btoa(Array.from(bytes, (byte) => String.fromCharCode(byte)).join(''));

function put(FS, { path, mode, bytes }) {
  if (bytes === undefined) FS.mkdir('/data/' + path);
  else FS.writeFile('/data/' + path, decode(bytes));
  FS.chmod('/data/' + path, mode);
}

function contents(FS, folder = '', found = []) {
  for (const name of FS.readdir('/data/' + folder).slice(2)) {
    const path = folder + name;
    const { mode } = FS.stat('/data/' + path);
    if (FS.isDir(mode)) {
      found.push({ path, mode: mode & 0o7777 });
      contents(FS, path + '/', found);
    } else {
      found.push({ path, mode: mode & 0o7777, bytes: encode(FS.readFile('/data/' + path)) });
    }
  }
  return found;
}

onmessage = async ({ data: { module: name, files, input, words } }) => {
  const { default: make } = await import(name);
  const root = await navigator.storage.getDirectory();
  await root.removeEntry('program', { recursive: true }).catch(() => {}); // of the run before
  const handles = await openPool(await root.getDirectoryHandle('program', { create: true }), SpareFiles + files.length);
  const read = { bytes: decode(input), at: 0 };
  const output = [];
  const errors = [];
  const module = await make({
    stdin: () => (read.at < read.bytes.length ? read.bytes[read.at++] : null),
    stdout: (byte) => { if (byte !== null) output.push(byte & 0xff); },
    stderr: (byte) => { if (byte !== null) errors.push(byte & 0xff); },
    quit: (status, why) => { throw why; },
  });
  reachFoldersByDescriptor(module.FS);
  module.FS.mkdir('/data');
  module.FS.mount(originFiles(module.FS, handles), {}, '/data');
  for (const file of files) put(module.FS, file);
  module.FS.chdir('/data');
  let status;
  const start = performance.now();
  try {
    status = module.callMain(words);
  } catch (why) {
    if (why?.name !== 'ExitStatus') throw why;
    ({ status } = why);
  }
  const milliseconds = performance.now() - start;
  const memory = module.HEAPU8.length;
  postMessage({ output: encode(output), errors: encode(errors), status, files: contents(module.FS), milliseconds, memory });
  handles.forEach((handle) => handle.close());
};
