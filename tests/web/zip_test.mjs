// SPDX-License-Identifier: MIT
// The data of a device as one zip file, written and read by the program of this machine and by that of WebAssembly.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { meterFiles } from './support/meter.mjs';

const tree = new URL('../../build/', import.meta.url).pathname;
const programs = { native: join(tree, 'dev/bin/quorin-console'), web: join(tree, 'web/bin/quorin-console') };

const run = (program, ...words) => execFileSync(programs[program], ['--no-journal', ...words], { encoding: 'utf8' });

test('both programs write the same bytes and read those of the other', () => {
  const folder = mkdtempSync(join(tmpdir(), 'quorin-'));
  const place = (name) => join(folder, name);
  try {
    mkdirSync(place('root/Quorin'), { recursive: true });
    for (const [path, content] of Object.entries(meterFiles)) writeFileSync(place(path.replace('/data', 'root')), content);
    const rows = Array.from({ length: 5000 }, (_, i) => `place ${i}|${(i * 7919) % 1000}.${i % 10} %\n`);
    writeFileSync(place('root/Quorin/qrn0001.txt'), 'Place|Count\n' + rows.join(''));
    for (const program of ['native', 'web']) run(program, '--root', place('root'), '--export', place(program + '.zip'));
    assert.ok(readFileSync(place('native.zip')).equals(readFileSync(place('web.zip'))));
    run('web', '--root', place('in web'), '--import', place('native.zip'));
    run('native', '--root', place('in native'), '--import', place('web.zip'));
    for (const name of readdirSync(place('root/Quorin')))
      for (const root of ['in web', 'in native'])
        assert.equal(readFileSync(place(`${root}/Quorin/${name}`), 'utf8'), readFileSync(place('root/Quorin/' + name), 'utf8'));
  } finally {
    rmSync(folder, { recursive: true });
  }
});
