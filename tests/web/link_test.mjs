// SPDX-License-Identifier: MIT
// Instruments at the page: node --test tests/web/link_test.mjs
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { FormOnPage, startBrowser } from './support/form_on_page.mjs';

const FakeSerial = fileURLToPath(new URL('support/fake_serial.js', import.meta.url));
const Settings = { path: '/data/settings.ini', bytes: '[Quorin]\nComPort=Com1\n' };

let chromium;
before(async () => { chromium = await startBrowser(); });
after(async () => { await chromium?.close(); });

/// A page with a record on the screen whose link is Com1.
async function onRecord(more = {}) {
  const form = await FormOnPage.open(chromium, { scripts: [FakeSerial], ...more });
  await form.openClimate();
  return form;
}

const choosePort = async (form, button) => {
  await form.page.locator('#link').click();
  await form.page.locator('#ports button', { hasText: button }).first().click();
};
const linkSays = (form, words) => form.page.waitForFunction(
  (wanted) => document.getElementById('link').textContent.includes(wanted), words, { timeout: 20000 });
const instrument = (form, act, ...words) => form.page.evaluate(
  ([name, given]) => navigator.serial.ports[0][name](...given), [act, words]);
const bytesOf = (text) => [...Buffer.from(text, 'latin1')];
const reading = (type, value, unit) =>
  `[BLob]\r\n[RESULT_TYPE "${type}"]\r\n[RESULT_VALUE "${value}"]\r\n[RESULT_UNIT "${unit}"]\r\n[/BLob]\r\n`;

/// A page with a record on the screen and its link open.
async function linked(more) {
  const form = await onRecord(more);
  await choosePort(form, 'Use this one');
  await linkSays(form, 'Link open');
  return form;
}

test('a reading of an instrument lands in its field', async () => {
  const form = await linked();
  await instrument(form, 'sends', bytesOf(reading('Moisture', '23.4', '%')));
  await form.untilShown('23.4 %');
  await linkSays(form, '23.4');
  const [options] = await form.page.evaluate(() => navigator.serial.ports[0].opened);
  assert.deepEqual(options, {
    baudRate: 9600, dataBits: 8, parity: 'none', stopBits: 1, bufferSize: 65536, flowControl: 'none',
  });
  assert.deepEqual(form.errors, []);
  await form.page.context().close();
});

test('bytes of an old code page are their letters', async () => {
  const form = await linked();
  await instrument(form, 'sends', bytesOf(reading('Temperature', '20.6', '\xB0C')));
  await form.untilShown('20.6 °C');
  await form.page.context().close();
});

test('an instrument that comes back goes on by itself', async () => {
  const form = await linked();
  const whole = bytesOf(reading('Moisture', '23.4', '%'));
  await instrument(form, 'sends', whole.slice(0, 30));
  await instrument(form, 'goes');
  await linkSays(form, 'out of reach');
  await instrument(form, 'comes');
  await linkSays(form, 'Link open');
  await instrument(form, 'sends', bytesOf(reading('Moisture', '12.5', '%')));
  await form.untilShown('12.5 %');
  assert.ok(!(await form.texts()).includes('23.4 %'));
  await form.page.context().close();
});

test('a port says why it can not be opened', async () => {
  const form = await onRecord();
  await form.page.evaluate(() => { navigator.serial.ports[0].inReach = false; });
  await choosePort(form, 'Use this one');
  await linkSays(form, 'out of reach, switched off, or in use');
  await form.page.context().close();
});

test('an instrument that is added is used', async () => {
  const form = await onRecord();
  await choosePort(form, 'Add an instrument');
  await linkSays(form, 'Link open: Com2 (Bluetooth instrument)');
  await form.page.locator('#link').click();
  const rows = await form.page.locator('#ports li span').allTextContents();
  assert.deepEqual(rows, ['Com1: USB adapter 0403:6001not open', 'Com2: Bluetooth instrumentopen']);
  await form.page.context().close();
});

test('closing the list of the browser adds nothing', async () => {
  const form = await onRecord();
  await form.page.evaluate(() => { navigator.serial.inRange = null; });
  await choosePort(form, 'Add an instrument');
  assert.equal(await form.page.locator('#ports li').count(), 1);
  assert.deepEqual(form.errors, []);
  await form.page.context().close();
});

test('an instrument that is forgotten is closed', async () => {
  const form = await linked();
  await choosePort(form, 'Forget');
  await form.page.locator('#ports .close').click();
  await linkSays(form, 'it was not added to this page yet');
  assert.equal(await form.page.evaluate(() => navigator.serial.ports.length), 0);
  await form.page.context().close();
});

test('characters that the browser lost are told', async () => {
  const form = await linked();
  await instrument(form, 'loses', 'BufferOverrunError');
  await form.page.waitForFunction(() => document.getElementById('notice').textContent.includes('were lost'));
  await instrument(form, 'sends', bytesOf(reading('Moisture', '23.4', '%')));
  await form.untilShown('23.4 %');
  await form.page.context().close();
});

test('more than the memory between takes comes whole', async () => {
  const form = await linked();
  const filler = `[BLob]\r\n[RESULT_TYPE "Nothing"]\r\n${'[RESULT_X "padding of a line"]\r\n'.repeat(6000)}[/BLob]\r\n`;
  await instrument(form, 'sends', bytesOf(filler + reading('Moisture', '23.4', '%')));
  await form.untilShown('23.4 %');
  await form.page.context().close();
});

test('a reading comes under a question', async () => {
  const form = await linked();
  await form.choose('Delete Record');
  await form.until((mirror) => mirror.box?.asks, 'the question');
  await instrument(form, 'sends', bytesOf(reading('Moisture', '23.4', '%')));
  await form.untilShown('23.4 %');
  await form.answer('No');
  await form.page.context().close();
});

test('a page without instruments says how to add one', async () => {
  const form = await FormOnPage.open(chromium, {});
  await form.page.locator('#link').click();
  assert.match(await form.page.locator('#ports .why').textContent(), /No instrument was added/);
  await form.page.context().close();
});

test('a browser without serial ports says so', async () => {
  const made = await chromium.browser.newContext();
  const page = await made.newPage();
  await page.addInitScript(() => Object.defineProperty(navigator, 'serial', { value: undefined }));
  await page.goto(chromium.address);
  await page.locator('#link').click();
  assert.match(await page.locator('#ports .why').textContent(), /reach/);
  assert.equal(await page.locator('#ports .add').isVisible(), false);
  await made.close();
});

test('readings that are stored nowhere stand until they are seen', async () => {
  const made = await chromium.browser.newContext();
  const page = await made.newPage();
  await page.addInitScript({ path: FakeSerial });
  await page.addInitScript(() => {
    const { parse } = JSON;
    window.lost = 'The reading 7 is not stored.';
    JSON.parse = (text) => { const read = parse(text); return 'losses' in (read ?? {}) ? { ...read, losses: window.lost } : read; };
  });
  await page.goto(chromium.address);
  const box = page.locator('#losses');
  await box.waitFor({ state: 'visible' });
  await page.keyboard.press('Escape'); // it has to be read
  assert.equal(await box.isVisible(), true);
  await box.getByText('OK').click();
  await page.locator('#link').click();
  await page.locator('#ports button', { hasText: 'Use this one' }).click();
  await page.waitForFunction(() => document.getElementById('link').textContent.includes('no download is open for Com1'));
  assert.equal(await box.isVisible(), false); // the program has said it again
  await page.evaluate(() => { window.lost = 'The readings 7 and 8 are not stored.'; });
  await page.locator('#link').click();
  await page.locator('#ports button', { hasText: 'Add an instrument' }).click();
  await box.waitFor({ state: 'visible' });
  assert.match(await box.textContent(), /7 and 8/);
  await made.close();
});
