// SPDX-License-Identifier: MIT
// The console in a worker, on the files of the origin. Takes one message { files, commands, words } and posts each line
// of the program as it comes, and at the end { status, files }: the contents of all files by their paths.
import makeConsole from '../../../build/web/bin/quorin-console-worker.js';
import { openPool, originFiles, reachFoldersByDescriptor } from '../../../backends/web/origin_files.js';

const SpareFiles = 40;

function contents(FS, folder, found = {}) {
  for (const name of FS.readdir(folder).slice(2)) {
    const path = folder + '/' + name;
    if (FS.isDir(FS.stat(path).mode)) contents(FS, path, found);
    else found[path] = FS.readFile(path, { encoding: 'utf8' });
  }
  return found;
}

function run(module, commands, words) {
  module.FS.writeFile('/commands', commands.join('\n') + '\n');
  try {
    return module.callMain(['--root', '/data', ...words, '/commands']);
  } catch (why) {
    if (why?.name === 'ExitStatus') return why.status;
    throw why;
  }
}

onmessage = async ({ data: { files, commands, words } }) => {
  const handles = await openPool(await (await navigator.storage.getDirectory()).getDirectoryHandle('files', { create: true }), SpareFiles);
  const module = await makeConsole({
    print: (line) => postMessage({ line }),
    printErr: (line) => postMessage({ line: 'stderr: ' + line }),
    quit: (status, why) => { throw why; },
  });
  reachFoldersByDescriptor(module.FS);
  module.FS.mkdir('/data');
  module.FS.mount(originFiles(module.FS, handles), {}, '/data');
  for (const [path, content] of Object.entries(files)) {
    module.FS.createPath('/', path.slice(0, path.lastIndexOf('/')), true, true);
    module.FS.writeFile(path, content);
  }
  const status = commands.length > 0 ? run(module, commands, words) : 0;
  postMessage({ status, files: contents(module.FS, '/data') });
  handles.forEach((handle) => handle.close());
};
