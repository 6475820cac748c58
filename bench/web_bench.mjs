// SPDX-License-Identifier: MIT
// What the page costs in a browser, beside the same work of the native programs: script/bench-web calls it, with the
// native console. Prints rows of a table.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, mkdirSync, readdirSync, readFileSync, rmSync, writeFileSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';
import { FormOnPage, startBrowser } from '../tests/web/support/form_on_page.mjs';
import { Browser, serve } from '../tests/web/support/browser.mjs';

const tree = (path) => fileURLToPath(new URL(`../${path}`, import.meta.url));
const native = process.argv[2];
const Runs = 5;

const median = (numbers) => numbers.sort((a, b) => a - b)[Math.floor(numbers.length / 2)];
const tell = (work, product, peer = '', takes = '', figure = '') =>
  console.log(`| ${work} | ${product} | ${peer} | ${takes} | ${figure} |`);
const ms = (number) => `${number < 10 ? number.toFixed(1) : Math.round(number)} ms`;

// --- the data --------------------------------------------------------------------------------------------------------

const Fields = 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA';
/// A data folder with a driver of some fields, and a download of some rows.
function folderWith(fields, rows) {
  const names = Array.from({ length: fields }, (_, i) => `Field ${i + 1}`);
  const row = names.map((_, i) => `value ${i}`).join('|');
  return {
    'Quorin/drivers.txt': 'NAME|INFFILE\nMeter|meter.txt\n',
    'Quorin/qrnctrl.txt': 'DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n',
    'Quorin/meter.txt': [Fields, ...names.map((name) => `${name}|1||${name}||||`)].join('\n') + '\n',
    'Quorin/qrn0001.txt': names.join('|') + '\n' + `${row}\n`.repeat(rows),
  };
}
const Open = ['choose Start...', 'choose Ok', 'choose Open'];
const blobs = (count) => Array.from({ length: count }, (_, i) =>
  `receive "[BLob]\\r\\n[RESULT_TYPE \\"Nobody\\"]\\r\\n[RESULT_VALUE \\"${i}\\"]\\r\\n[RESULT_UNIT \\"%\\"]\\r\\n[/BLob]\\r\\n"`);
const saves = (count) => Array.from({ length: count }, (_, i) =>
  ['tap 0 1', `set text ${i}`, 'tap 1 1', i % 2 ? 'choose Previous Record' : 'choose Next Record']).flat();

// --- the console, there and here -------------------------------------------------------------------------------------

function runHere(files, commands) {
  const folder = mkdtempSync(join(tmpdir(), 'quorin-bench-'));
  for (const [path, content] of Object.entries(files)) {
    mkdirSync(join(folder, dirname(path)), { recursive: true });
    writeFileSync(join(folder, path), content);
  }
  const start = performance.now();
  execFileSync(native, ['--root', folder], { input: commands.join('\n') + '\n', stdio: ['pipe', 'ignore', 'inherit'] });
  const took = performance.now() - start;
  rmSync(folder, { recursive: true });
  return took;
}

async function runThere(page, files, commands) {
  const base64 = (text) => Buffer.from(text).toString('base64');
  const folders = [...new Set(Object.keys(files).map((path) => dirname(path)))].map((path) => ({ path, mode: 0o755 }));
  const ended = await page.evaluate((run) => window.runProgram(run), {
    module: '/build/web/bin/quorin-console-worker.js',
    files: [...folders, ...Object.entries(files).map(([path, text]) => ({ path, mode: 0o644, bytes: base64(text) }))],
    input: base64(commands.join('\n') + '\n'), words: ['--root', '/data'],
  });
  if (ended.status !== 0) throw new Error(Buffer.from(ended.errors, 'base64').toString());
  return ended;
}

/// Tells what work takes for each of `count` commands, without what comes before them.
async function compare(page, work, files, count, commandsOf) {
  const here = [];
  const there = [];
  for (let run = 0; run < Runs; run++) {
    here.push(runHere(files, [...Open, ...commandsOf(count)]) - runHere(files, Open));
    const whole = await runThere(page, files, [...Open, ...commandsOf(count)]);
    const before = await runThere(page, files, Open);
    there.push(whole.milliseconds - before.milliseconds);
  }
  const [product, peer] = [median(there) / count, median(here) / count];
  tell(work, ms(product * count), 'the native console', ms(peer * count), (product / peer).toFixed(2));
}

async function consoleRows() {
  const { server, address } = await serve();
  const browser = new Browser();
  try {
    const page = await (await browser.start()).newPage();
    await page.goto(`${address}/tests/web/support/program.html`);
    await compare(page, '10,000 BLobs through the receive path', folderWith(12, 1), 10000, blobs);
    await compare(page, '20 saves in a table of 10,000 rows', folderWith(12, 10000), 20, saves);
    const none = await runThere(page, folderWith(12, 1), Open);
    const many = await runThere(page, folderWith(12, 100000), Open);
    tell('memory with 100,000 rows open', `${(many.memory / 1e6).toFixed(1)} MB`, 'with one row', `${(none.memory / 1e6).toFixed(1)} MB`);
  } finally {
    await browser.kill().catch(() => {});
    browser.remove();
    server.close();
  }
}

// --- the page --------------------------------------------------------------------------------------------------------

const noteFirstFrame = () => {
  const look = () => {
    if (document.getElementById('form')?.hidden === false) requestAnimationFrame(() => { window.firstFrame = performance.now(); });
    else setTimeout(look, 1);
  };
  look();
};

async function firstFrame(page, address) {
  await page.goto(address);
  return page.waitForFunction(() => window.firstFrame).then((handle) => handle.jsonValue());
}

async function startRows(chromium) {
  const cold = [];
  const warm = [];
  for (let run = 0; run < Runs; run++) {
    const context = await chromium.browser.newContext();
    const first = await context.newPage();
    await first.addInitScript(noteFirstFrame);
    cold.push(await firstFrame(first, chromium.address));
    await first.waitForTimeout(3000); // the files are kept for the next start
    await first.close();
    const second = await context.newPage();
    await second.addInitScript(noteFirstFrame);
    warm.push(await firstFrame(second, chromium.address));
    await context.close();
  }
  tell('from the address to the first frame, the first time', ms(median(cold)));
  tell('from the address to the first frame, from then on', ms(median(warm)));
}

/// From a key in the page to the frame with what it has done.
async function keyRow(chromium) {
  const form = await FormOnPage.open(chromium);
  const rows = folderWith(200, 1)['Quorin/meter.txt'];
  await form.give('Install a driver…', { name: 'meter.qvd', mimeType: 'text/plain', buffer: Buffer.from(`Meter|meter.txt\n${rows}`) });
  await form.until((mirror) => mirror.box !== null, 'a box');
  await form.answer('OK');
  for (const caption of ['Start...', 'Ok', 'New', 'Open']) await form.choose(caption);
  await form.untilShown('Field 1');
  await form.page.locator('#form').focus();
  const took = await form.page.evaluate(async () => {
    const press = (type, key) => document.activeElement.dispatchEvent(new KeyboardEvent(type, { key, bubbles: true }));
    const all = [];
    for (let i = 0; i < 150; i++) {
      const before = window.quorin.mirror;
      const start = performance.now();
      press('keydown', 'ArrowDown');
      while (window.quorin.mirror === before) await new Promise((passed) => { const { port1, port2 } = new MessageChannel(); port1.onmessage = passed; port2.postMessage(0); });
      all.push(performance.now() - start);
      press('keyup', 'ArrowDown');
      await new Promise((passed) => setTimeout(passed, 20));
    }
    return all;
  });
  took.sort((a, b) => a - b);
  tell('a key on a record of 200 fields to the drawn form, median', ms(median(took)), 'a frame of 16.7 ms');
  tell('the same, 99th percentile', ms(took[Math.floor(took.length * 0.99)]), 'a frame of 16.7 ms');
  await form.page.context().close();
}

function sizeRow() {
  const site = tree('build/web/site/');
  const files = readdirSync(site, { recursive: true }).map((name) => site + name).filter((path) => statSync(path).isFile())
    .map((path) => readFileSync(path));
  const packed = files.reduce((sum, bytes) => sum + gzipSync(bytes, { level: 9 }).length, 0);
  const plain = files.reduce((sum, bytes) => sum + bytes.length, 0);
  tell('bytes to load, packed by gzip', `${(packed / 1e6).toFixed(2)} MB`, 'not packed', `${(plain / 1e6).toFixed(2)} MB`);
}

const chromium = await startBrowser();
try {
  await startRows(chromium);
  await keyRow(chromium);
} finally {
  await chromium.close();
}
await consoleRows();
sizeRow();
