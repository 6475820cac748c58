// SPDX-License-Identifier: MIT
// A person at the form on a page, in Chromium: node --test tests/web/form_test.mjs
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { FormOnPage, startBrowser } from './support/form_on_page.mjs';

const Phone = { viewport: { width: 360, height: 740 }, deviceScaleFactor: 2, hasTouch: true, isMobile: true };

let chromium;
before(async () => { chromium = await startBrowser(); });
after(async () => { await chromium?.close(); });

const opened = (options) => FormOnPage.open(chromium, options);

test('the first screen is shown on each size of screen', async () => {
  for (const context of [{}, Phone, { viewport: { width: 800, height: 1280 }, hasTouch: true }]) {
    const form = await opened(context);
    assert.ok((await form.texts()).some((text) => text.startsWith('V ')));
    assert.deepEqual(form.errors, []);
    await form.page.context().close();
  }
});

test('a typed value is in the record that was left', async () => {
  const form = await opened({});
  await form.openClimate();
  await form.click('Remark', 600);
  await form.page.locator('#field input').waitFor();
  await form.page.keyboard.type('wet, näss & 湿');
  await form.untilShown('wet, näss & 湿');
  await form.choose('New Record');
  await form.until((mirror) => /record 2 of 2/.test(mirror.title), 'the second record');
  await form.choose('Previous Record');
  await form.untilShown('1/2');
  await form.untilShown('wet, näss & 湿');
  assert.deepEqual(form.errors, []);
});

test('a finger opens a field and types into it', async () => {
  const form = await opened(Phone);
  await form.openClimate();
  await form.tap('Remark', 120);
  await form.page.locator('#field input').fill('damp');
  await form.page.keyboard.press('Enter');
  await form.until((mirror) => mirror.input === null, 'the field closed');
  await form.untilShown('damp');
  await form.page.context().close();
});

test('a question is answered by a click', async () => {
  const form = await opened({});
  await form.openClimate();
  await form.choose('New Record');
  await form.untilShown('2/2');
  await form.choose('Delete Record');
  await form.until((mirror) => mirror.box?.asks, 'the question');
  await form.answer('No');
  await form.until((mirror) => mirror.box === null, 'no box');
  assert.ok((await form.texts()).includes('2/2'));
  await form.choose('Delete Record');
  await form.until((mirror) => mirror.box?.asks, 'the question');
  await form.answer('Yes');
  await form.until((mirror) => mirror.box?.text === 'Are you sure?', 'the second question');
  await form.answer('Yes');
  await form.untilShown('1/1');
  await form.page.context().close();
});

test('keys move the selection and walk the fields', async () => {
  const form = await opened({});
  await form.openClimate();
  const { row } = (await form.mirror()).grid;
  await form.page.keyboard.press('ArrowDown');
  await form.until(({ grid }) => grid.row === row + 1, 'the next row');
  await form.click('Site', 600);
  await form.until(({ input }) => input?.name === 'Site', 'the first field');
  await form.page.keyboard.type('north');
  await form.page.keyboard.press('Tab');
  await form.until(({ input }) => input?.name === 'Operator', 'the second field');
  await form.untilShown('north');
  await form.page.keyboard.press('Enter');
  await form.until(({ input }) => input === null, 'the field closed');
  await form.page.keyboard.press('F1');
  await form.page.keyboard.press('ArrowUp');
  assert.equal(await form.page.locator('#popup').isVisible(), true);
  await form.page.keyboard.press('Escape');
  assert.equal(await form.page.locator('#popup').isVisible(), false);
  await form.page.context().close();
});

test('the form follows the size of the page', async () => {
  const form = await opened({});
  await form.openClimate();
  await form.click('Remark', 600);
  await form.page.locator('#field input').fill('kept');
  await form.page.setViewportSize({ width: 500, height: 260 });
  const mirror = await form.until((seen) => seen.form[0] <= 500 && seen.grid.last > 0, 'a smaller form');
  assert.equal(mirror.input?.text, 'kept');
  const field = await form.page.locator('#field').boundingBox();
  assert.ok(field.x + field.width <= 500 && field.y + field.height <= 260, JSON.stringify(field));
  await form.page.context().close();
});

test('a larger form is kept, as far as it fits', async () => {
  const form = await opened(Phone);
  const width = async () => (await form.mirror()).form[0];
  const before = await width();
  const pick = async (text) => {
    await form.page.locator('#more').tap();
    await form.page.locator('#popup button', { hasText: text }).tap();
  };
  await pick('Larger');
  await form.until((mirror) => mirror.form[0] < before, 'a form with fewer pixels');
  await form.page.locator('#more').tap();
  assert.equal(await form.page.locator('#popup button', { hasText: 'Larger' }).isDisabled(), true);
  await form.page.locator('#popup button', { hasText: 'Smaller' }).tap();
  await form.until((mirror) => mirror.form[0] === before, 'the first size');
  await pick('Smaller');
  const small = await form.until((mirror) => mirror.form[0] > before, 'a form with more pixels');
  await form.page.reload();
  await form.until((mirror) => mirror.form[0] === small.form[0], 'the same size');
  await form.page.context().close();
});

test('a phone that lies has its menus beside the form', async () => {
  const form = await opened({ ...Phone, viewport: { width: 740, height: 360 } });
  await form.page.locator('#notice').getByText('Not now').click();
  await form.page.locator('#notice').waitFor({ state: 'hidden' });
  const menu = await form.page.locator('#menus').boundingBox();
  const shown = await form.page.locator('#form').boundingBox();
  const state = await form.page.locator('#state').boundingBox();
  assert.ok(menu.x >= shown.x + shown.width, 'beside');
  assert.ok(shown.height > 290, `${shown.height} pixels of 360`);
  assert.ok(Math.round(state.y + state.height) === 360, JSON.stringify(state));
  await form.page.context().close();
});

test('a wheel scrolls the page', async () => {
  const form = await opened({ viewport: { width: 600, height: 250 } });
  await form.openClimate();
  await form.page.mouse.move(200, 150);
  await form.page.mouse.wheel(0, 100);
  await form.until(({ grid }) => grid.top > 0, 'a row further down');
  await form.page.context().close();
});

test('what was saved is there when the page is opened again', async () => {
  const form = await opened({});
  await form.openClimate();
  await form.click('Remark', 600);
  await form.page.locator('#field input').fill('to keep');
  await form.choose('New Record');
  await form.untilShown('2/2');
  await form.page.reload();
  await form.openFirst();
  await form.untilShown('to keep');
  await form.page.context().close();
});

test('a page with a record that is not saved asks before it goes', async () => {
  const form = await opened({});
  await form.openClimate();
  await form.typeRemark('not saved');
  const asked = new Promise((done) => form.page.once('dialog', async (dialog) => { await dialog.dismiss(); done(dialog.type()); }));
  await form.page.close({ runBeforeUnload: true });
  assert.equal(await asked, 'beforeunload');
  await form.page.context().close();
});

/// A page whose tab has gone while a record on it was not saved, opened again.
async function withDraft() {
  const form = await opened({});
  await form.openClimate();
  await form.typeRemark('not saved');
  await form.page.waitForTimeout(2500); // a draft is written when a record has not changed for a second
  const again = await form.inNewTab(chromium.address);
  await again.page.locator('#recovery').waitFor({ state: 'visible' });
  return again;
}

test('a record that was not saved is put back', async () => {
  const form = await withDraft();
  assert.match(await form.page.locator('#recovery p').textContent(), /was not saved: qrn0001.txt, record 1/);
  assert.deepEqual(await form.page.locator('#recovery tr.differs td').allTextContents(), ['Remark', 'not saved', '']);
  await form.page.locator('#recovery .put').click();
  await form.openFirst();
  await form.untilShown('not saved');
  await form.page.reload();
  await form.until((mirror) => mirror.title !== '', 'the form');
  assert.equal(await form.page.locator('#recovery').isVisible(), false);
  await form.page.context().close();
});

test('a record that is forgotten is asked about, and gone', async () => {
  const form = await withDraft();
  form.page.once('dialog', (dialog) => dialog.dismiss());
  await form.page.locator('#recovery .forget').click();
  assert.equal(await form.page.locator('#recovery').isVisible(), true);
  form.page.once('dialog', (dialog) => dialog.accept());
  await form.page.locator('#recovery .forget').click();
  await form.openFirst();
  assert.ok(!(await form.texts()).includes('not saved'));
  await form.page.reload();
  await form.until((mirror) => mirror.title !== '', 'the form');
  await form.page.context().close();
});

test('a record that is left for later is offered again', async () => {
  const form = await withDraft();
  await form.page.locator('#recovery .later').click();
  await form.until((mirror) => mirror.title !== '', 'the form');
  await form.page.reload();
  await form.page.locator('#recovery').waitFor({ state: 'visible' });
  await form.page.context().close();
});

test('what a person has to know stands above the state', async () => {
  const form = await opened(Phone); // with the hint of a page without drivers
  const notice = await form.page.locator('#notice').boundingBox();
  const state = await form.page.locator('#state').boundingBox();
  assert.ok(notice.y + notice.height <= state.y + 1, JSON.stringify([notice, state]));
  await form.page.context().close();
});

test('a browser that keeps no marks shows the form', async () => {
  const made = await chromium.browser.newContext();
  const page = await made.newPage();
  await page.addInitScript(() => {
    const refuse = { get() { throw new DOMException('denied', 'SecurityError'); } };
    Object.defineProperty(window, 'localStorage', refuse);
    Object.defineProperty(window, 'sessionStorage', refuse);
  });
  await page.goto(chromium.address);
  await page.locator('#form').waitFor({ state: 'visible', timeout: 20000 });
  await made.close();
});

test('a page whose program has ended offers nothing else', async () => {
  const form = await opened({});
  await form.page.locator('#link').click();
  assert.equal(await form.page.locator('#ports').isVisible(), true);
  await form.page.evaluate(() => { // no hand reaches the menus now, but the program may end by itself
    document.querySelector('#menus button[data-menu="1"]').click();
    [...document.querySelectorAll('#popup button')].find((button) => button.textContent === 'Exit').click();
  });
  await form.page.getByText('The program has ended.').waitFor();
  assert.equal(await form.page.locator('#more').isDisabled(), true);
  assert.equal(await form.page.locator('#link').isDisabled(), true);
  assert.equal(await form.page.locator('dialog[open]').count(), 0);
  await form.page.context().close();
});

test('a second tab says that the first one has the data', async () => {
  const form = await opened({});
  const second = await form.page.context().newPage();
  await second.goto(chromium.address);
  await second.waitForFunction(() => document.getElementById('message').textContent.includes('another tab'));
  await form.page.close();
  await second.getByText('Start again').click();
  await second.locator('#form').waitFor({ state: 'visible' });
  await second.context().close();
});

test('a device that does not exist is told in words', async () => {
  const made = await chromium.browser.newContext();
  const page = await made.newPage();
  await page.goto(`${chromium.address}?device=abacus`);
  await page.waitForFunction(() => document.getElementById('message').textContent.includes('abacus'));
  await made.close();
});

test('what the form does not say stands on the page', async () => {
  const made = await chromium.browser.newContext();
  const page = await made.newPage();
  await page.addInitScript(() => {
    const { parse } = JSON;
    const offers = [{ name: 'ports', words: 'Choose a port…' }, { name: 'of-the-window', words: 'Elsewhere' }];
    const notices = [
      { about: 'loss', text: 'Row 2 is NOT saved.', look: 'loss', confirmed: true, offers: [] },
      { about: 'link', text: 'No port is chosen.', look: 'hint', confirmed: false, offers },
      { about: 'data', text: 'Nothing is wrong.', look: 'note', confirmed: false, offers: [] },
    ];
    JSON.parse = (text) => ({ ...parse(text), notices }); // as the program says it
  });
  await page.goto(chromium.address);
  const shown = page.locator('#notice');
  await shown.waitFor({ state: 'visible' });
  assert.equal(await shown.locator('span').textContent(), 'Row 2 is NOT saved. (and 1 more)');
  assert.equal(await shown.getByText('OK').isVisible(), true);
  await shown.locator('span').click();
  assert.deepEqual(await page.locator('#notices li span').allTextContents(),
    ['Row 2 is NOT saved.', 'No port is chosen.', 'Nothing is wrong.']);
  assert.equal(await page.locator('#notices').getByText('Elsewhere').count(), 0);
  await page.locator('#notices').getByText('Choose a port…').click();
  assert.equal(await page.locator('#ports').isVisible(), true);
  await made.close();
});

test('a page without its headers says what it needs', async () => {
  const made = await chromium.browser.newContext();
  const page = await made.newPage();
  await page.addInitScript(() => Object.defineProperty(window, 'crossOriginIsolated', { value: false }));
  await page.goto(chromium.address);
  await page.waitForFunction(() => document.getElementById('message').textContent.includes('Cross-Origin'));
  await made.close();
});
