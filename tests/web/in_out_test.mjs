// SPDX-License-Identifier: MIT
// What comes in and goes out by the page, in Chromium: node --test tests/web/in_out_test.mjs
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { FormOnPage, sample, startBrowser } from './support/form_on_page.mjs';

const Phone = { viewport: { width: 360, height: 740 }, deviceScaleFactor: 2, hasTouch: true, isMobile: true };
const climate = { name: 'climate.qvd', buffer: sample('climate.qvd') };
const other = { name: 'other.qvd', buffer: Buffer.from(String(climate.buffer).replace(/Climate Meter\|.*/, 'Other Meter|other.txt')) };
const bin = new URL('../../build/dev/bin/', import.meta.url).pathname;

let chromium;
let folder;
before(async () => {
  chromium = await startBrowser();
  folder = mkdtempSync(join(tmpdir(), 'quorin-'));
});
after(async () => {
  await chromium?.close();
  rmSync(folder, { recursive: true, force: true });
});

/// A page on which saved files are downloads, as in most browsers.
async function opened(options) {
  const form = await FormOnPage.open(chromium, options);
  await form.page.evaluate(() => { delete window.showSaveFilePicker; });
  return form;
}

const close = (form) => {
  assert.deepEqual(form.errors, []);
  return form.page.context().close();
};
const told = (form) => form.page.locator('#told p').first();
const confirm = (form) => form.page.locator('#told').getByRole('button', { name: 'OK' }).click();

/// After an import the page begins anew.
async function confirmImport(form) {
  await Promise.all([form.page.waitForEvent('load'), confirm(form)]);
  await form.page.locator('#form').waitFor({ state: 'visible' });
  await form.page.evaluate(() => { delete window.showSaveFilePicker; });
}

async function textIn(place, part) {
  await place.filter({ hasText: part }).waitFor();
  return place.textContent();
}

async function remark(form, text) {
  await form.click('Remark', 600);
  await form.page.locator('#field input').fill(text);
  await form.page.keyboard.press('Enter');
  await form.untilShown(text);
}

async function goHome(form) {
  await form.choose('Close');
  await form.choose('Back');
  await form.choose('Back');
  await form.until((mirror) => mirror.box === null && mirror.title === 'Quorin', 'the first screen');
}

/// Clicks a button of the dialog, and returns what the browser has downloaded.
async function saved(form) {
  const button = form.page.locator('#out').getByText('Save…');
  await form.page.locator('#out button.usual:enabled').waitFor();
  const [download] = await Promise.all([form.page.waitForEvent('download'), button.click()]);
  const path = join(folder, `${Math.random()}`);
  await download.saveAs(path);
  return { name: download.suggestedFilename(), bytes: readFileSync(path), path };
}

async function installed(form) {
  await form.choose('inf editor...');
  await form.untilShown('Climate Meter');
}

// --- drivers ---------------------------------------------------------------------------------------------------------

test('a driver from a file dialog is installed', async () => {
  const form = await opened();
  await form.give('Install a driver…', climate);
  await form.until((mirror) => mirror.box !== null, 'the box of the installation');
  await form.answer('OK');
  await installed(form);
  await close(form);
});

test('a driver that is dropped is installed', async () => {
  const form = await opened();
  await form.drop(climate);
  await form.until((mirror) => mirror.box !== null, 'the box of the installation');
  await form.answer('OK');
  await installed(form);
  await close(form);
});

test('a driver that the system opens is installed', async () => {
  const made = await chromium.browser.newContext();
  const page = await made.newPage();
  await page.addInitScript((text) => {
    const handle = { getFile: async () => new File([text], 'climate.qvd') };
    Object.defineProperty(window, 'launchQueue', { value: { setConsumer: (take) => take({ files: [handle] }) } });
  }, String(climate.buffer));
  await page.goto(chromium.address);
  await page.locator('#box').getByText('OK').click({ timeout: 20000 });
  await installed(new FormOnPage(page));
  await made.close();
});

test('the sample is offered where there is no driver', async () => {
  const form = await opened(Phone);
  const notice = form.page.locator('#notice');
  await notice.getByText('No driver is installed yet.').waitFor();
  await notice.getByText('Try the sample').click();
  await form.until((mirror) => mirror.box !== null, 'the box of the installation');
  await form.answer('OK');
  await notice.waitFor({ state: 'hidden' });
  await form.page.locator('#more').click();
  assert.equal(await form.page.locator('#popup').getByText('Install the sample driver').isDisabled(), true);
  await close(form);
});

test('a driver waits until the record is done', async () => {
  const form = await opened();
  await form.openClimate();
  await form.give('Install a driver…', other);
  assert.equal(await textIn(form.page.locator('#offer span'), 'Install'), 'Install other.qvd when this record is done.');
  await form.choose('Close');
  await form.choose('Back');
  await form.until((mirror) => mirror.box !== null, 'the box of the installation');
  await form.answer('OK');
  await form.untilShown('Other Meter');
  await close(form);
});

test('what waits can be called off', async () => {
  const form = await opened();
  await form.openClimate();
  await form.give('Install a driver…', other);
  await form.page.locator('#offer').getByText('Not now').click();
  await form.page.locator('#offer').waitFor({ state: 'hidden' });
  await close(form);
});

test('what is wrong with a driver is shown, and asked', async () => {
  const form = await opened();
  const bad = { name: 'bad.qvd', buffer: Buffer.from('Bad Meter|bad.txt\nFIELDNAME|VISIBLE|DATATYPE\nPlace|1|NOSUCH\n') };
  await form.give('Install a driver…', bad);
  const words = await textIn(told(form), 'Something is wrong with bad.qvd');
  assert.match(words, /line \d+, column \d+: .*NOSUCH/);
  assert.equal(await form.page.locator('#told .question').textContent(), 'Install it all the same?');
  await form.page.getByRole('button', { name: 'No', exact: true }).click();
  await form.page.locator('#told').waitFor({ state: 'hidden' });
  await form.give('Install a driver…', bad);
  await form.page.getByRole('button', { name: 'Yes', exact: true }).click();
  await form.until((mirror) => mirror.box !== null, 'the box of the installation');
  await close(form);
});

test('another package of the same name is asked about', async () => {
  const form = await opened();
  await form.installSample();
  await form.drop({ ...other, name: 'climate.qvd' });
  assert.match(await textIn(told(form), 'Replace it?'), /has a climate.qvd already/);
  await form.page.getByRole('button', { name: 'Yes', exact: true }).click();
  await form.until((mirror) => mirror.box !== null, 'the box of the installation');
  await close(form);
});

test('a bad file is told in words and changes nothing', async () => {
  const form = await opened();
  const cases = [
    [{ name: 'empty.qvd', buffer: Buffer.alloc(0) }, 'empty.qvd is no driver package'],
    [{ name: 'words.qvd', buffer: Buffer.from('only words') }, 'words.qvd is no driver package'],
    [{ name: 'picture.png', buffer: Buffer.from('PNG') }, 'picture.png is neither a driver package (.qvd) nor'],
  ];
  for (const [file, words] of cases) {
    await form.drop(file);
    await textIn(told(form), words);
    await confirm(form);
    await form.page.locator('#told').waitFor({ state: 'hidden' });
  }
  await form.page.evaluate(() => {
    const large = new File([new Uint8Array(100_000_000)], 'large.qvd');
    const gone = new File(['x'], 'gone.qvd');
    Object.defineProperty(gone, 'slice', { value: () => { throw new DOMException('', 'NotFoundError'); } });
    const event = new Event('drop', { bubbles: true, cancelable: true });
    Object.defineProperty(event, 'dataTransfer', { value: { types: ['Files'], files: [large, gone] } });
    document.getElementById('form').dispatchEvent(event);
  });
  await textIn(told(form), 'large.qvd is too long for a driver package');
  await confirm(form);
  await textIn(told(form), "gone.qvd can't be read: it is not there any more.");
  await confirm(form);
  assert.equal(await form.page.locator('#notice').getByText('No driver is installed yet.').isVisible(), true);
  await close(form);
});

// --- the data as a zip file ------------------------------------------------------------------------------------------

test('the zip has the bytes that the console exports', async () => {
  const form = await opened();
  await form.openClimate();
  await remark(form, 'wet, näss & 湿');
  await goHome(form);
  await form.chooseMore('Hand over (zip)…');
  const zip = await saved(form);
  assert.match(zip.name, /^quorin-\d{8}\.zip$/);
  const root = join(folder, 'of the console');
  const run = (...words) => execFileSync(join(bin, 'quorin-console'), ['--no-journal', '--root', root, ...words]);
  run('--import', zip.path);
  run('--export', join(folder, 'again.zip'));
  assert.ok(readFileSync(join(folder, 'again.zip')).equals(zip.bytes));
  assert.match(readFileSync(join(root, 'Quorin/qrn0001.txt'), 'utf8'), /wet, näss & 湿/);
  await close(form);
});

test('a zip comes in, and its report is told in full', async () => {
  const form = await opened();
  await form.openClimate();
  await remark(form, 'to keep');
  await goHome(form);
  await form.chooseMore('Hand over (zip)…');
  const zip = { name: 'data.zip', buffer: (await saved(form)).bytes };
  const second = await opened();
  await second.give('Take in a zip…', zip);
  const words = await textIn(told(second), 'qrn0001.txt is taken in');
  assert.match(words, /drivers.txt is taken in/);
  assert.match(words, /^\d+ files of data.zip taken in, 0 were there already/);
  assert.equal(await second.page.locator('#toldtitle').textContent(), 'Take in data.zip');
  await confirmImport(second);
  await openFirstDownload(second);
  await second.untilShown('to keep');
  await remark(second, 'changed');
  await goHome(second);
  await second.drop(zip);
  const conflict = await textIn(told(second), 'qrn0001.txt, record 1 differs');
  assert.match(conflict, /here: .*changed/);
  assert.match(conflict, /zip: .*to keep/);
  assert.match(conflict, /keep data.zip until you have compared them/);
  await close(form);
  await close(second);
});

async function openFirstDownload(form) {
  await form.choose('Start...');
  await form.untilShown('Climate Meter');
  await form.choose('Ok');
  await form.choose('Open');
}

/// A page has a hundred spare files a start.
test('a zip with many files comes in by two steps', async () => {
  const root = join(folder, 'many');
  const put = (name, text) => writeFileSync(join(root, 'Quorin', name), text);
  mkdirSync(join(root, 'Quorin'), { recursive: true });
  const names = Array.from({ length: 150 }, (_, i) => `qrn${String(i + 1).padStart(4, '0')}.txt`);
  put('drivers.txt', 'NAME|INFFILE\nMeter|meter.txt\n');
  put('meter.txt', 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\n');
  put('qrnctrl.txt', ['DRIVER|FILE|DATE|ALIAS', ...names.map((name) => `Meter|${name}|20260101|`), ''].join('\n'));
  names.forEach((name) => put(name, 'Place\nwall\n'));
  const path = join(folder, 'many.zip');
  execFileSync(join(bin, 'quorin-console'), ['--no-journal', '--root', root, '--export', path]);
  const zip = { name: 'many.zip', buffer: readFileSync(path) };
  const form = await opened();
  await form.drop(zip);
  assert.match(await textIn(told(form), 'failed'), /not everything is taken in.*\nTake it in again after OK/);
  await confirmImport(form);
  await form.drop(zip);
  assert.match(await textIn(told(form), 'failed'), /, 0 differ and were left, 0 failed;/);
  await confirmImport(form);
  await form.choose('Start...');
  await form.untilShown('Meter');
  await form.choose('Ok');
  await form.untilShown(names[0]);
  await close(form);
});

test('a zip waits until the record is done', async () => {
  const form = await opened();
  await form.openClimate();
  await form.drop({ name: 'data.zip', buffer: Buffer.from('no zip at all') });
  assert.equal(await textIn(form.page.locator('#offer span'), 'Take in'), 'Take in data.zip when this record is done.');
  await form.chooseMore('Hand over (zip)…');
  await textIn(form.page.locator('#out p'), 'The data can be handed over when this record is done.');
  await form.page.locator('#out').getByText('Cancel').click();
  await form.choose('Close');
  await form.choose('Back');
  await textIn(told(form), "data.zip can't be taken in");
  assert.equal(await form.page.locator('#toldtitle').textContent(), 'Nothing is taken in.');
  await close(form);
});

test('a hand-over is offered until it was made', async () => {
  const form = await opened();
  await form.openClimate();
  await remark(form, 'new');
  await goHome(form);
  const offer = form.page.locator('#notice span');
  assert.equal(await textIn(offer, 'handed over'), '1 record is not handed over. It is in this browser alone.');
  await form.page.locator('#notice').getByText('Not now').click();
  await form.page.locator('#notice').waitFor({ state: 'hidden' });
  await form.page.reload();
  await textIn(offer, '1 record is not handed over.');
  await form.page.evaluate(() => { delete window.showSaveFilePicker; });
  await form.page.locator('#notice').getByText('Hand over now…').click();
  await textIn(form.page.locator('#out p'), '1 record in');
  await form.page.locator('#out').getByText('Cancel').click();
  assert.equal(await form.page.locator('#notice').isVisible(), true);
  await form.page.locator('#notice').getByText('Hand over now…').click();
  await saved(form);
  await form.page.locator('#notice').waitFor({ state: 'hidden' });
  await form.page.reload();
  await form.page.locator('#form').waitFor({ state: 'visible' });
  await form.choose('Start...');
  await form.choose('Back');
  assert.equal(await form.page.locator('#notice').isVisible(), false);
  await close(form);
});

// --- downloads -------------------------------------------------------------------------------------------------------

test('a download is saved as quorin-export writes it', async () => {
  const form = await opened();
  await form.give('Take in a zip…', { name: 'data.zip', buffer: await zipOfReadings() });
  await confirmImport(form);
  await openFirstDownload(form);
  await form.untilShown('Remark');
  const out = form.page.locator('#out');
  const native = (...words) => execFileSync(join(bin, 'quorin-export'), ['--root', join(folder, 'readings'), 'qrn0001.txt', ...words]);
  for (const [label, name, words] of [['CSV', 'qrn0001.csv', ['--format', 'csv']], ['A plot', 'qrn0001.svg', ['--format', 'svg']]]) {
    await form.chooseMore('the download…');
    await out.locator('label', { hasText: label }).click();
    await textIn(out.locator('p'), name);
    const file = await saved(form);
    assert.equal(file.name, name);
    assert.equal(String(file.bytes), String(native(...words)));
  }
  await form.chooseMore('the download…');
  await out.getByText('The table as it is').click();
  await textIn(out.locator('p'), 'qrn0001.txt');
  assert.equal(String((await saved(form)).bytes), readFileSync(join(folder, 'readings/Quorin/qrn0001.txt'), 'utf8'));
  await close(form);
});

/// Sixty records of a climate meter, packed by the console of this machine.
async function zipOfReadings() {
  const form = await opened();
  await form.openClimate();
  await goHome(form);
  await form.chooseMore('Hand over (zip)…');
  const { path: first } = await saved(form);
  await close(form);
  const root = join(folder, 'readings');
  const run = (...words) => execFileSync(join(bin, 'quorin-console'), ['--no-journal', '--root', root, ...words], { input: '' });
  run('--import', first);
  const path = join(root, 'Quorin/qrn0001.txt');
  const header = readFileSync(path, 'utf8').split('\n')[0];
  const columns = header.split('|');
  const row = (i) => columns.map((name) => valueOf(name, i)).join('|');
  writeFileSync(path, [header, ...Array.from({ length: 60 }, (_, i) => row(i)), ''].join('\n'));
  const zip = join(folder, 'readings.zip');
  run('--export', zip);
  return readFileSync(zip);
}

const valueOf = (name, i) => ({ Moisture: `${(i * 7) % 40}.${i % 10} %`, Temperature: `${15 + (i % 9)}.5 C`, Remark: `round "${i}", wall` })[name] ?? '';

test('a line database goes out as it is', async () => {
  const form = await opened({ query: '?device=palm' });
  await form.openClimate();
  await form.chooseMore('the download…');
  await form.page.locator('#out label', { hasText: 'The line database as it is' }).click();
  await textIn(form.page.locator('#out p'), 'qrn0001.sqlite');
  const { name, bytes } = await saved(form);
  assert.equal(name, 'qrn0001.sqlite');
  assert.equal(bytes.subarray(0, 15).toString(), 'SQLite format 3');
  assert.match(bytes.toString('latin1'), /Moisture\|/);
  await close(form);
});

test('the browser saves where a person chooses', async () => {
  const form = await opened();
  await form.openClimate();
  await form.page.evaluate(() => {
    window.written = [];
    window.showSaveFilePicker = async ({ suggestedName }) => ({
      createWritable: async () => ({
        write: async (file) => window.written.push([suggestedName, await file.text()]),
        close: async () => window.written.push('closed'),
      }),
    });
  });
  await form.chooseMore('the download…');
  await form.page.locator('#out').getByText('The table as it is').click();
  await textIn(form.page.locator('#out p'), 'qrn0001.txt');
  await form.page.locator('#out').getByText('Save…').click();
  await form.page.locator('#out').waitFor({ state: 'hidden' });
  const [[name, text], end] = await form.page.evaluate(() => window.written);
  assert.equal(name, 'qrn0001.txt');
  assert.match(text, /^[A-Za-z ]+\|/);
  assert.equal(end, 'closed');
  await close(form);
});

test('a download is shared where the browser can', async () => {
  const made = await chromium.browser.newContext(Phone);
  const page = await made.newPage();
  await page.addInitScript(() => {
    window.shared = [];
    navigator.canShare = ({ files }) => files.length === 1;
    navigator.share = async ({ files: [file] }) => {
      if (window.refused) throw new DOMException('Permission denied', 'NotAllowedError');
      window.shared.push([file.name, file.type, await file.text()]);
    };
  });
  await page.goto(chromium.address);
  const form = new FormOnPage(page);
  await form.openClimate();
  await form.chooseMore('Save or share the download…');
  await page.locator('#out button.usual:enabled').waitFor();
  await page.evaluate(() => { window.refused = true; });
  await page.locator('#out').getByText('Share…').click();
  await textIn(page.locator('#out p'), 'the browser refuses this kind of file. Save it.');
  await page.evaluate(() => { window.refused = false; });
  await page.locator('#out').getByText('Share…').click();
  await page.locator('#out').waitFor({ state: 'hidden' });
  const [[name, type, text]] = await page.evaluate(() => window.shared);
  assert.deepEqual([name, type], ['qrn0001.csv', 'text/csv']);
  assert.match(text, /Moisture/i);
  await made.close();
});

test('sharing is not offered where the browser can not', async () => {
  const form = await opened();
  await form.page.locator('#more').click();
  assert.equal(await form.page.locator('#popup').getByText('Save the download…').isDisabled(), true); // none was open yet
  assert.equal(await form.page.locator('#popup').getByText('share').count(), 0);
  await close(form);
});
