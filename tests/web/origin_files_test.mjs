// SPDX-License-Identifier: MIT
// Files that last for a program in a browser, on a medium in memory whose power can be cut: node --test tests/web
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { ran, started } from './support/console.mjs';
import { Cut, Medium, randomNumbers } from './support/memory_pool.mjs';

const text = (module, path) => module.FS.readFile('/data/' + path, { encoding: 'utf8' });
const names = (module, path) => module.FS.readdir('/data' + path).filter((name) => !/^\.\.?$/.test(name)).sort();

/// A data folder with a driver of two fields and an empty download.
async function meterOn(medium) {
  const { FS } = await started(medium.handles());
  FS.mkdir('/data/Quorin');
  const put = (name, lines) => FS.writeFile('/data/Quorin/' + name, lines.join('\n') + '\n');
  put('drivers.txt', ['NAME|INFFILE', 'Meter|meter.txt']);
  put('qrnctrl.txt', ['DRIVER|FILE|DATE|ALIAS', 'Meter|qrn0001.txt|20070301|']);
  put('meter.txt', ['FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA', 'Place|1||||||', 'Count|1||||||']);
  put('qrn0001.txt', ['Place|Count', '|']);
  sync(FS);
}

function sync(FS) {
  const folder = FS.open('/data', 0);
  folder.stream_ops.fsync(folder);
  for (const name of FS.readdir('/data/Quorin').slice(2)) {
    const file = FS.open('/data/Quorin/' + name, 0);
    file.stream_ops.fsync(file);
  }
}

const OpenDownload = ['choose Start...', 'choose Ok', 'choose Open'];
const record = (number) => ['tap 0 1', `set place ${number}`, 'tap 1 1', `set ${number}`, 'choose New Record'];
const session = (count) => [...OpenDownload, ...Array.from({ length: count }, (_, i) => record(i + 1)).flat(), 'choose Close'];

/// The numbers of the rows of a download, in their order.
const numbersIn = (download) =>
  download.split('\n').slice(1).filter((row) => /\d/.test(row)).map((row) => Number(row.split('|')[1]));

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
  const share = numbers();
  return { wasCut, saved, medium: medium.cut(() => numbers() < share) };
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
    const folder = FS.open('/data', 0);
    folder.stream_ops.fsync(folder);
    const old = FS.open('/data/a', 0);
    old.stream_ops.fsync(old);
    medium.cutAt = medium.steps + step;
    try {
      FS.writeFile('/data/b', 'new');
      const file = FS.open('/data/b', 0);
      file.stream_ops.fsync(file);
      FS.rename('/data/b', '/data/a');
    } catch (why) {
      if (!(why instanceof Cut)) throw why;
    }
    const numbers = randomNumbers(step);
    const after = await started(medium.cut(() => numbers() < 0.5).handles());
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
  FS.writeFile('/data/c', 'c');
  const after = await started(medium.handles());
  assert.deepEqual(names(after, ''), ['c', 'moved']);
  assert.deepEqual(names(after, '/moved'), []);
  assert.equal(text(after, 'c'), 'c');
});

test('a removed file can be read while it is open', async () => {
  const medium = new Medium(3);
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
      const numbers = randomNumbers(step);
      const after = await started(medium.cut(() => numbers() < 0.5).handles());
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
