// SPDX-License-Identifier: MIT
// Files that last for a program in a browser, on a medium in memory whose power can be cut: node --test tests/web
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { originFiles } from '../../backends/web/origin_files.js';
import { ran, started } from './support/console.mjs';
import { meterFiles, numbersIn, OpenDownload, session } from './support/meter.mjs';
import { byChance, Cut, Medium, randomNumbers } from './support/memory_pool.mjs';

const text = (module, path) => module.FS.readFile('/data/' + path, { encoding: 'utf8' });
const names = (module, path) => module.FS.readdir('/data' + path).filter((name) => !/^\.\.?$/.test(name)).sort();

/// Puts the data folder of a meter on the medium.
async function meterOn(medium) {
  const { FS } = await started(medium.handles());
  FS.mkdir('/data/Quorin');
  for (const [path, content] of Object.entries(meterFiles)) FS.writeFile(path, content);
  sync(FS);
}

function sync(FS) {
  for (const name of FS.readdir('/data/Quorin').slice(2)) syncOne(FS, '/data/Quorin/' + name);
  syncOne(FS, '/data');
}

function syncOne(FS, path) {
  const stream = FS.open(path, 0);
  stream.stream_ops.fsync(stream);
  FS.close(stream);
}

test('what was saved is there after a new start', async () => {
  const medium = new Medium(40);
  await meterOn(medium);
  const { lines, status } = await ran(medium.handles(), session(3), ['--strict']);
  assert.equal(status, 0, lines.join('\n'));
  const module = await started(medium.handles());
  assert.equal(text(module, 'Quorin/qrn0001.txt'), 'Place|Count\nplace 1|1\nplace 2|2\nplace 3|3\n|\n');
  assert.deepEqual(names(module, '/Quorin'), ['drivers.txt', 'meter.txt', 'qrn0001.txt', 'qrnctrl.txt']);
});

test('a saved record is brought to the medium', async () => {
  const medium = new Medium(40);
  await meterOn(medium);
  await ran(medium.handles(), [...OpenDownload, 'choose Close']);
  const without = medium.flushes;
  await ran(medium.handles(), session(5));
  assert.ok(medium.flushes - without - without >= 5, `${medium.flushes} flushes, ${without} without a record`);
});

/// Runs a session that is cut at a step, and returns how many records had been saved by then, and the medium after it.
async function cutAt(step, seed) {
  const medium = new Medium(24);
  await meterOn(medium);
  const numbers = randomNumbers(seed);
  medium.cutAt = medium.steps + step;
  let lines = [];
  let wasCut = false;
  try {
    lines = (await ran(medium.handles(), session(4), ['--verdicts'])).lines;
  } catch (why) {
    wasCut = true;
    lines = why.lines;
  }
  const saved = lines.filter((line) => line.includes('"event":"saved"')).length;
  return { wasCut, saved, medium: medium.cut(byChance(numbers)) };
}

test('a power cut loses no record that was saved', async (context) => {
  const fewer = process.env.QUORIN_FEWER ? 7 : 1;
  let cuts = 0;
  for (let step = 1; ; step += fewer) {
    const { wasCut, saved, medium } = await cutAt(step, step);
    if (!wasCut) break;
    cuts++;
    const module = await started(medium.handles());
    const found = numbersIn(text(module, 'Quorin/qrn0001.txt'));
    assert.deepEqual(found, found.map((_, i) => i + 1), `cut at step ${step}`);
    assert.ok(found.length >= saved, `cut at step ${step}: ${saved} were saved, ${found.length} are there`);
    assert.equal(text(module, 'Quorin/drivers.txt'), 'NAME|INFFILE\nMeter|meter.txt\n');
  }
  context.diagnostic(`${cuts} cuts`);
  assert.ok(cuts > 10);
});

test('a name is never without a file while another one takes it', async () => {
  for (let step = 1; step <= 12; step++) {
    const medium = new Medium(8);
    const { FS } = await started(medium.handles());
    FS.writeFile('/data/a', 'old');
    syncOne(FS, '/data/a');
    medium.cutAt = medium.steps + step;
    try {
      FS.writeFile('/data/b', 'new');
      syncOne(FS, '/data/b');
      FS.rename('/data/b', '/data/a');
    } catch (why) {
      if (!(why instanceof Cut)) throw why;
    }
    const after = await started(medium.cut(byChance(randomNumbers(step))).handles());
    assert.match(text(after, 'a'), /^(old|new)$/, `cut at step ${step}`);
  }
});

test('a file that was removed does not come back', async () => {
  const medium = new Medium(4);
  const { FS } = await started(medium.handles());
  FS.mkdir('/data/folder');
  FS.writeFile('/data/folder/a', 'a');
  FS.rename('/data/folder', '/data/moved');
  FS.writeFile('/data/b', 'b');
  FS.rename('/data/b', '/data/moved/a');
  FS.unlink('/data/moved/a');
  assert.ok(!FS.analyzePath('/data/moved/a').exists);
  FS.writeFile('/data/c', 'c');
  const after = await started(medium.handles());
  assert.deepEqual(names(after, ''), ['c', 'moved']);
  assert.deepEqual(names(after, '/moved'), []);
  assert.equal(text(after, 'c'), 'c');
});

test('a removed file can be read while it is open', async () => {
  const medium = new Medium(2);
  const { FS } = await started(medium.handles());
  FS.writeFile('/data/a', 'old');
  const file = FS.open('/data/a', 0);
  FS.writeFile('/data/b', 'new');
  FS.rename('/data/b', '/data/a');
  const bytes = new Uint8Array(3);
  FS.read(file, bytes, 0, 3);
  assert.equal(new TextDecoder().decode(bytes), 'old');
  FS.close(file);
  FS.writeFile('/data/c', 'c'); // takes the file that is free again
  assert.deepEqual(names(await started(medium.handles()), ''), ['a', 'c']);
});

const Nothing = () => 0; // of what was not flushed

test('a rename is on the medium when it returns', async () => {
  const medium = new Medium(4);
  const { FS } = await started(medium.handles());
  FS.writeFile('/data/a', 'old');
  FS.writeFile('/data/b', 'new');
  syncOne(FS, '/data/a');
  syncOne(FS, '/data/b');
  FS.rename('/data/b', '/data/a');
  const after = await started(medium.cut(Nothing).handles());
  assert.deepEqual(names(after, ''), ['a']);
  assert.equal(text(after, 'a'), 'new');
});

test('a file that was synced is in its folder', async () => {
  const medium = new Medium(4);
  const { FS } = await started(medium.handles());
  FS.mkdir('/data/folder');
  FS.writeFile('/data/folder/a', 'a');
  syncOne(FS, '/data/folder/a');
  assert.equal(text(await started(medium.cut(Nothing).handles()), 'folder/a'), 'a');
});

test('the journal is on the medium, not only its name', async () => {
  const medium = new Medium(40);
  await meterOn(medium);
  await ran(medium.handles(), session(2), ['--journal', '/data/journal']);
  const after = await started(medium.cut(Nothing).handles());
  const [day] = names(after, '/journal').filter((name) => name.endsWith('.jsonl'));
  assert.match(text(after, 'journal/' + day), /place 2/);
});

test('what was removed from a synced folder is gone', async () => {
  const medium = new Medium(4);
  const { FS } = await started(medium.handles());
  FS.writeFile('/data/a', 'a');
  syncOne(FS, '/data/a');
  FS.unlink('/data/a');
  syncOne(FS, '/data');
  assert.deepEqual(names(await started(medium.cut(Nothing).handles()), ''), []);
});

test('a removed name does not get the content of another', async () => {
  const medium = new Medium(1);
  const { FS } = await started(medium.handles());
  FS.writeFile('/data/a', 'old');
  syncOne(FS, '/data/a');
  FS.unlink('/data/a');
  FS.writeFile('/data/b', 'new');
  const after = await started(medium.cut((write) => Number(write.at >= 4096)).handles());
  assert.deepEqual(names(after, ''), []);
});

test('what an earlier run left unsynced is synced first', async () => {
  const medium = new Medium(2);
  const earlier = await started(medium.handles());
  earlier.FS.mkdir('/data/folder');
  earlier.FS.writeFile('/data/folder/a', 'old');
  syncOne(earlier.FS, '/data/folder/a');
  earlier.FS.unlink('/data/folder/a');
  const { FS } = await started(medium.handles());
  FS.writeFile('/data/folder/b', 'new');
  const content = (write) => Number(write.at >= 4096);
  assert.deepEqual(names(await started(medium.cut(content).handles()), '/folder'), []);
  syncOne(FS, '/data/folder/b');
  assert.equal(text(await started(medium.cut(Nothing).handles()), 'folder/b'), 'new');
});

test('a damaged header is not believed', async () => {
  const medium = new Medium(1);
  const { FS } = await started(medium.handles());
  FS.writeFile('/data/before', 'a');
  FS.rename('/data/before', '/data/behind');
  const bytes = medium.files[0].live;
  bytes[Buffer.from(bytes).indexOf('behind')] = 'B'.charCodeAt(0);
  assert.deepEqual(names(await started(medium.handles()), ''), ['before']);
});

test('a byte in the middle leaves the rest of a file', async () => {
  const medium = new Medium(1);
  const { FS } = await started(medium.handles());
  FS.writeFile('/data/a', 'abc');
  const file = FS.open('/data/a', 'r+');
  FS.write(file, new TextEncoder().encode('B'), 0, 1, 1);
  assert.equal(FS.stat('/data/a').size, 3);
  assert.equal(FS.readFile('/data/a', { encoding: 'utf8' }), 'aBc');
});

test('a pool without a free file is a full disk', async () => {
  const { FS } = await started(new Medium(1).handles());
  FS.writeFile('/data/a', 'a');
  const NoSpace = 51;
  assert.throws(() => FS.writeFile('/data/b', 'b'), { errno: NoSpace });
});

test('a medium that is full is told, and keeps what it has', async () => {
  const medium = new Medium(12);
  await meterOn(medium);
  const { FS } = await started(medium.handles());
  for (let i = 0; medium.files.some((file) => file.live.length === 0); i++) FS.writeFile('/data/other' + i, 'x');
  const { lines } = await ran(medium.handles(), [...OpenDownload, 'tap 1 1', 'set 1', 'choose New Record', 'answer ok']);
  assert.ok(lines.some((line) => /full|no space|not saved|can't/i.test(line)), lines.join('\n'));
  assert.equal(text(await started(medium.handles()), 'Quorin/qrn0001.txt'), 'Place|Count\n|\n');
});

test('a line database is whole after a power cut', async (context) => {
  const folder = mkdtempSync(join(tmpdir(), 'quorin-'));
  const sql = (file, words) => execFileSync('sqlite3', [file, words], { encoding: 'utf8' });
  try {
    const driver = join(folder, 'soilqvd.sqlite');
    const rows = ["'Soil Meter|soil.txt'", "'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA'", "'Plot|1||||||'", "'Note|1||||||'"];
    sql(driver, `CREATE TABLE "DATABASE" (TypeCode, CreatorCode); INSERT INTO "DATABASE" VALUES (0x54455854, 0x5156524E);
      CREATE TABLE TEXT (Position INTEGER PRIMARY KEY, LineNumber, LineData);` +
      rows.map((row, i) => `INSERT INTO TEXT VALUES (${i}, ${i + 1}, ${row});`).join(''));
    const prepare = async (medium) => {
      const { FS } = await started(medium.handles());
      FS.mkdir('/data/Databases');
      FS.writeFile('/data/Databases/soilqvd.sqlite', readFileSync(driver));
      const { status, lines } = await ran(medium.handles(), ['choose Preferences...', 'tap 2', 'tap 1', 'title 1', 'choose inf editor...',
        'choose Add Driver...', 'tick 100', 'title 1', 'answer ok', 'title 2', 'choose Back', 'choose Start...', 'title 1', 'choose New', 'key 310', 'tick 100', 'choose Close'],
        ['--device', 'palm', '--strict']);
      assert.equal(status, 0, lines.join('\n'));
    };
    const commands = ['choose Start...', 'tick 100', 'key 310', 'tick 100', 'key 310', 'tick 100'];
    for (let i = 1; i <= 3; i++) commands.push('tap 0 1', `set plot ${i}`, 'tap 1 1', `set ${i}`, 'choose New Record', 'tick 100');
    const fewer = process.env.QUORIN_FEWER ? 23 : 5;
    let cuts = 0;
    for (let step = 1; ; step += fewer) {
      const medium = new Medium(40);
      await prepare(medium);
      medium.cutAt = medium.steps + step;
      let lines;
      let wasCut = false;
      try {
        lines = (await ran(medium.handles(), commands, ['--device', 'palm', '--verdicts'])).lines;
      } catch (why) {
        wasCut = true;
        lines = why.lines;
      }
      const saved = lines.filter((line) => line.includes('"event":"saved"')).length;
      if (!wasCut) {
        assert.ok(saved >= 2, lines.join('\n'));
        break;
      }
      cuts++;
      const after = await started(medium.cut(byChance(randomNumbers(step))).handles());
      for (const name of names(after, '/Databases').filter((each) => each.startsWith('qrn0001.')))
        writeFileSync(join(folder, name), after.FS.readFile('/data/Databases/' + name));
      const download = join(folder, 'qrn0001.sqlite');
      assert.equal(sql(download, 'PRAGMA integrity_check').trim(), 'ok', `cut at step ${step}`);
      const found = sql(download, "SELECT count(*) FROM TEXT WHERE LineData LIKE 'plot%'");
      assert.ok(Number(found) >= saved, `cut at step ${step}: ${saved} were saved, ${found} are there`);
      execFileSync('sh', ['-c', 'rm -f "$1"/qrn0001.sqlite*', 'sh', folder]);
    }
    context.diagnostic(`${cuts} cuts`);
    assert.ok(cuts > 5);
  } finally {
    rmSync(folder, { recursive: true });
  }
});

test('the number of files is told whenever it changes', async () => {
  const medium = new Medium(8);
  const told = [];
  const mounted = async () => {
    const { FS } = await started(new Medium(1).handles());
    FS.mkdir('/counted');
    FS.mount(originFiles(FS, medium.handles(), (files) => told.push(files)), {}, '/counted');
    return FS;
  };
  const FS = await mounted();
  FS.mkdir('/counted/folder');
  FS.writeFile('/counted/folder/one', '1');
  FS.writeFile('/counted/two', '2');
  FS.rename('/counted/two', '/counted/folder/one');
  FS.unlink('/counted/folder/one');
  FS.writeFile('/counted/three', '3');
  FS.mkdir('/counted/.journal'); // the program's own
  FS.writeFile('/counted/.journal/day', '4');
  await mounted();
  assert.deepEqual(told, [0, 1, 2, 1, 0, 1, 1]);
});
