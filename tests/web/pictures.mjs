// SPDX-License-Identifier: MIT
// Pictures of each main screen of the page, for a person to look at: script/pictures web
import { mkdirSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { FormOnPage, startBrowser } from './support/form_on_page.mjs';

const folder = process.argv[2];
const FakeSerial = fileURLToPath(new URL('support/fake_serial.js', import.meta.url));
const Touch = { hasTouch: true, isMobile: true };
const Sizes = {
  phone: { viewport: { width: 360, height: 740 }, deviceScaleFactor: 2, ...Touch },
  'phone-dark': { viewport: { width: 360, height: 740 }, deviceScaleFactor: 2, colorScheme: 'dark', ...Touch },
  lying: { viewport: { width: 740, height: 360 }, deviceScaleFactor: 2, ...Touch },
  tablet: { viewport: { width: 800, height: 1280 }, ...Touch },
  desktop: { viewport: { width: 1280, height: 800 } },
  softkeys: { viewport: { width: 360, height: 740 }, deviceScaleFactor: 2, query: '?device=smartphone', ...Touch },
};

const reading = (type, value, unit) => [...Buffer.from(
  `[BLob]\r\n[RESULT_TYPE "${type}"]\r\n[RESULT_VALUE "${value}"]\r\n[RESULT_UNIT "${unit}"]\r\n[/BLob]\r\n`, 'latin1')];

async function take(chromium, size, options) {
  const form = await FormOnPage.open(chromium, { scripts: [FakeSerial], ...options });
  const shot = (name) => form.page.screenshot({ path: `${folder}/${size}-${name}.png` });
  await shot('start');
  await form.installSample();
  await form.choose('Start...');
  await form.untilShown('Climate Meter');
  await shot('drivers');
  await form.choose('Ok');
  await form.choose('New');
  await shot('downloads');
  await form.choose('Open');
  await form.untilShown('Remark');
  await form.page.locator('#link').click();
  await shot('ports');
  await form.page.locator('#ports button', { hasText: 'Use this one' }).first().click();
  await form.page.waitForFunction(() => document.getElementById('link').textContent.includes('Link open'));
  for (const [type, value, unit] of [['Moisture', '23.4', '%'], ['Temperature', '20.6', '\xB0C'], ['Humidity', '55', '%']]) {
    await form.page.evaluate((bytes) => navigator.serial.ports[0].sends(bytes), reading(type, value, unit));
    await form.untilShown(`${value} ${unit}`);
  }
  await form.page.waitForTimeout(500); // the line of the link
  await shot('record');
  await form.click('Remark', 0.6 * (await form.mirror()).form[0]);
  await form.page.locator('#field input').fill('wet, behind the pipe');
  await shot('typing');
  await form.page.keyboard.press('Enter');
  await form.choose('New Record');
  await form.untilShown('2/2');
  await form.choose('Delete Record');
  await form.until((mirror) => mirror.box?.asks, 'the question');
  await shot('question');
  await form.answer('No');
  await form.page.locator('#more').click();
  await shot('more');
  await form.page.context().close();
}

async function takeDemonstration(chromium, size, options) {
  const query = options.query ? `${options.query}&demo` : '?demo';
  const form = await FormOnPage.open(chromium, { ...options, query });
  await form.choose('Start...');
  await form.untilShown('Climate Meter');
  await form.choose('Ok');
  await form.choose('New');
  await form.choose('Open');
  await form.page.locator('#demo button:enabled', { hasText: 'All' }).click({ timeout: 20000 });
  await form.page.locator('#link', { hasText: /^● Humidity/ }).waitFor({ timeout: 20000 });
  await form.page.screenshot({ path: `${folder}/${size}-demo.png` });
  await form.page.context().close();
}

mkdirSync(folder, { recursive: true });
const chromium = await startBrowser();
try {
  for (const [size, options] of Object.entries(Sizes)) {
    await take(chromium, size, options);
    await takeDemonstration(chromium, size, options);
  }
} finally {
  await chromium.close();
}
