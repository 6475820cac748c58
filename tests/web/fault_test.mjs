// SPDX-License-Identifier: MIT
// What can go wrong around the page: node --test tests/web/fault_test.mjs. Readings and a port that goes are in
// link_test.mjs, a browser that is killed in browser_test.mjs.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { FormOnPage, startBrowser } from './support/form_on_page.mjs';

const FakeSerial = fileURLToPath(new URL('support/fake_serial.js', import.meta.url));

let chromium;
before(async () => { chromium = await startBrowser(); });
after(async () => { await chromium?.close(); });

test('a tab that is closed in a question loses nothing', async () => {
  const form = await FormOnPage.open(chromium);
  await form.openClimate();
  await form.typeRemark('kept');
  await form.choose('New Record');
  await form.untilShown('2/2');
  await form.choose('Previous Record');
  await form.choose('Delete Record');
  await form.until((mirror) => mirror.box?.asks, 'the question');
  const again = await form.inNewTab(chromium.address);
  await again.openFirst();
  await again.untilShown('kept');
  await again.untilShown('1/2');
  await again.page.context().close();
});

test('a full quota is told, and the record comes back', async () => {
  const form = await FormOnPage.open(chromium);
  await form.openClimate();
  await form.typeRemark('before');
  await form.choose('New Record');
  await form.untilShown('2/2');
  const control = await form.page.context().newCDPSession(form.page);
  const { origin } = new URL(chromium.address);
  await form.typeRemark('when it had no room');
  await form.page.waitForTimeout(2500); // its draft is there
  await control.send('Storage.overrideQuotaForOrigin', { origin, quotaSize: 1 });
  await form.choose('New Record');
  await form.page.getByText('Not saved: qrn0001.txt, the disk is full').first().waitFor({ timeout: 20000 });
  await control.send('Storage.overrideQuotaForOrigin', { origin });
  const again = await form.inNewTab(chromium.address);
  await again.page.locator('#recovery .put').click();
  await again.openFirst();
  await again.choose('Last Record');
  await again.untilShown('when it had no room');
  await again.page.context().close();
});

test('a page that was frozen takes readings again', async () => {
  const form = await FormOnPage.open(chromium, { scripts: [FakeSerial] });
  await form.openClimate();
  await form.page.locator('#link').click();
  await form.page.locator('#ports button', { hasText: 'Use this one' }).first().click();
  await form.page.waitForFunction(() => document.getElementById('link').textContent.includes('Link open'));
  const control = await form.page.context().newCDPSession(form.page);
  await control.send('Page.setWebLifecycleState', { state: 'frozen' });
  await new Promise((passed) => setTimeout(passed, 5000));
  await control.send('Page.setWebLifecycleState', { state: 'active' });
  await form.page.evaluate((bytes) => navigator.serial.ports[0].sends(bytes), [...Buffer.from(
    '[BLob]\r\n[RESULT_TYPE "Moisture"]\r\n[RESULT_VALUE "23.4"]\r\n[RESULT_UNIT "%"]\r\n[/BLob]\r\n')]);
  await form.untilShown('23.4 %');
  assert.deepEqual(form.errors, []);
  await form.page.context().close();
});
