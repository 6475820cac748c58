// SPDX-License-Identifier: MIT
// The demonstration on the page, as a person sees it who has no instrument: node --test tests/web/demo_test.mjs
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { FormOnPage, startBrowser } from './support/form_on_page.mjs';

let chromium;
before(async () => { chromium = await startBrowser(); });
after(async () => { await chromium?.close(); });

const press = (form, words) => form.page.locator('#demo button', { hasText: words }).click();
const says = (form, words) => form.page.locator('#demo p', { hasText: words }).waitFor({ timeout: 20000 });
const untilLinked = (form) => says(form, 'it sends what you press');

async function openDownload(form) {
  await form.choose('Start...');
  await form.untilShown('Climate Meter');
  await form.choose('Ok');
  await form.choose('New');
  await form.choose('Open');
  await form.untilShown('Remark');
}

const valueOf = (mirror, unit) => mirror.grid.cells.flatMap((cell) => cell.lines.map((line) => line[3]))
  .find((text) => text.endsWith(unit));

test('a record fills without an instrument, on data of its own', async () => {
  const form = await FormOnPage.open(chromium);
  await form.installSample();
  await form.chooseMore('Demonstration');
  await form.page.waitForURL(/\?demo/);
  await form.page.locator('#demo').waitFor();
  await says(form, 'no record listens');
  assert.ok(await form.page.locator('#demo button', { hasText: 'Moisture' }).isDisabled());
  await openDownload(form);
  await untilLinked(form);
  await press(form, 'All');
  const mirror = await form.until((each) => valueOf(each, ' %') && valueOf(each, ' °C'), 'readings');
  assert.match(valueOf(mirror, ' %'), /^[\d.]+ %$/);
  await says(form, 'one of each sent');
  assert.match(await form.page.title(), /\(demonstration\)$/);

  await form.choose('Close');
  await form.chooseMore('Leave the demonstration');
  await form.page.waitForURL((address) => !address.search.includes('demo'));
  await form.choose('Start...');
  await form.untilShown('Climate Meter');
  await form.choose('Ok');
  await form.until(({ menus }) => menus.some(({ items }) => items.some(({ caption }) => caption === 'New')), 'the downloads');
  assert.ok(!(await form.texts()).some((text) => text.startsWith('qrn')), 'the download was made in the demonstration');
  assert.deepEqual(form.errors, []);
  await form.page.context().close();
});

test('the form keeps the keyboard while buttons are pressed', async () => {
  const form = await FormOnPage.open(chromium, { query: '?demo' });
  await openDownload(form);
  await untilLinked(form);
  await form.click('Remark', 600);
  await press(form, 'Moisture');
  await form.page.waitForFunction(() => document.querySelector('#field input')?.value.endsWith(' %')); // the open field takes it
  assert.equal(await form.page.evaluate(() => document.activeElement.tagName), 'INPUT');
  await form.page.context().close();
});

test('a pulled cable is told, and comes back', async () => {
  const form = await FormOnPage.open(chromium, { query: '?demo' });
  await openDownload(form);
  await untilLinked(form);
  await press(form, 'Unplug');
  await says(form, 'unplugged');
  await form.page.locator('#link', { hasText: 'simulated instrument: it is unplugged' }).waitFor({ timeout: 20000 });
  await press(form, 'Plug in');
  await untilLinked(form);
  await form.page.locator('#link', { hasText: 'Link open' }).waitFor({ timeout: 20000 });
  await form.page.context().close();
});

test('by itself it sends a result each 10 seconds', async () => {
  const form = await FormOnPage.open(chromium, { query: '?demo' });
  await openDownload(form);
  await untilLinked(form);
  await press(form, 'every 10 s');
  await form.page.locator('#demo button[aria-pressed="true"]').waitFor();
  await form.until((mirror) => valueOf(mirror, ' %'), 'a result nobody has asked for');
  await form.page.context().close();
});

test('what the demonstration has stored is deleted after a Yes alone', async () => {
  const form = await FormOnPage.open(chromium, { query: '?demo' });
  await openDownload(form);
  assert.ok(await form.page.locator('#demo button', { hasText: 'Start afresh' }).isDisabled());
  await form.choose('Close');
  await form.untilShown('qrn0001.txt');
  await form.choose('Back');
  await form.choose('Back');
  await form.page.locator('#demo button:enabled', { hasText: 'Start afresh' }).waitFor();
  for (const answer of ['No', 'Yes']) {
    await press(form, 'Start afresh');
    assert.match(await form.page.locator('#afresh p').textContent(), /will be deleted\.$/);
    await form.page.locator('#afresh button', { hasText: answer }).click();
    await form.page.waitForTimeout(1000);
    await form.choose('Start...');
    await form.untilShown('Climate Meter');
    await form.choose('Ok');
    await form.until(({ menus }) => menus.some(({ items }) => items.some(({ caption }) => caption === 'New')), 'the downloads');
    assert.equal((await form.texts()).some((text) => text.startsWith('qrn')), answer === 'No', answer);
    await form.choose('Back');
    await form.choose('Back');
  }
  await form.page.context().close();
});

test('"Ports…" says which instrument there is', async () => {
  const form = await FormOnPage.open(chromium, { query: '?demo' });
  await form.page.locator('#link').click();
  assert.match(await form.page.locator('#ports .why').textContent(), /which is simulated/);
  assert.deepEqual(await form.page.locator('#ports li span').allTextContents(), ['Com1: simulated instrument']);
  assert.equal(await form.page.locator('#ports button:visible').count(), 2, 'one to use it, one to close');
  await form.page.context().close();
});
