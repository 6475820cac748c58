// SPDX-License-Identifier: MIT
// The console as a module of node, on the files of an origin that are in memory.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { originFiles, reachFoldersByDescriptor } from '../../../backends/web/origin_files.js';

const bin = new URL('../../../build/web/bin/', import.meta.url);
globalThis.require ??= createRequire(import.meta.url); // which the module's loader asks for
globalThis.__dirname ??= bin.pathname;
const { default: makeConsole } = await import(new URL('quorin-console-worker.js', bin));
const wasm = new WebAssembly.Module(readFileSync(new URL('quorin-console-worker.wasm', bin)));

/// Starts a program whose files in /data are those of these handles. Returns its module.
export async function started(handles) {
  const output = [];
  const module = await makeConsole({
    instantiateWasm: (imports, done) => {
      done(new WebAssembly.Instance(wasm, imports));
      return {};
    },
    print: (line) => output.push(line),
    printErr: (line) => output.push('stderr: ' + line),
    quit: (status, why) => { throw why; },
  });
  module.output = output;
  reachFoldersByDescriptor(module.FS);
  module.FS.mkdir('/data');
  module.FS.mount(originFiles(module.FS, handles), {}, '/data');
  return module;
}

/// Runs the console with these commands, in /data. Returns its lines and its exit status.
export async function ran(handles, commands, words = []) {
  const module = await started(handles);
  module.FS.writeFile('/commands', commands.join('\n') + '\n');
  let status = 0;
  try {
    status = module.callMain(['--root', '/data', ...words, '/commands']);
  } catch (why) {
    if (why?.name !== 'ExitStatus') {
      why.lines = module.output;
      throw why;
    }
    status = why.status;
  }
  return { lines: module.output, status };
}
