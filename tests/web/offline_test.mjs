// SPDX-License-Identifier: MIT
// The page without its server, its newer versions, and what a person is told of both: node --test tests/web/offline_test.mjs
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, afterEach, before, test } from 'node:test';
import { gzipSync } from 'node:zlib';
import { chromium } from 'playwright-core';
import { BrowserPath } from './support/browser.mjs';
import { FormOnPage } from './support/form_on_page.mjs';
import { buildOf, filesOf, otherVersion, removeVersions, Site, SiteServer } from './support/site.mjs';

let browser;
let context;
let server;
before(async () => {
  const args = ['--no-sandbox', '--host-resolver-rules=MAP a.invalid 127.0.0.1'];
  browser = await chromium.launch({ executablePath: BrowserPath, args });
});
after(async () => {
  await browser?.close();
  removeVersions();
});
afterEach(async () => {
  await context?.close();
  await server?.stop().catch(() => {});
});

/// A browser of somebody who has not seen the page yet, and a server for it. `prepare` runs in each page before its own.
async function arrive(given, prepare = () => {}) {
  server = await new SiteServer(given).start();
  context = await browser.newContext({ viewport: { width: 1280, height: 800 } });
  await context.addInitScript(prepare);
}

/// Opens the page in a tab of its own.
async function opened({ query = '' } = {}) {
  const page = await context.newPage();
  const form = new FormOnPage(page);
  page.on('pageerror', (error) => form.errors.push(String(error)));
  page.on('console', (message) => { if (message.type() === 'error') form.errors.push(message.text()); });
  await page.goto(server.address + query);
  await form.page.locator('#form').waitFor({ state: 'visible' });
  return form;
}

/// Waits until the browser's books of the page fulfil a condition.
async function untilBooks({ page }, holds) {
  for (let tries = 0; tries < 400; tries++) {
    const books = await page.evaluate(async () => {
      const { installing, waiting, active } = (await navigator.serviceWorker.getRegistration()) ?? {};
      return { installing: installing?.state, waiting: waiting?.state, active: active?.state };
    });
    if (holds(books)) return;
    await page.waitForTimeout(25);
  }
  throw new Error(`never came: ${holds}`);
}

/// Waits until the browser keeps the page.
const kept = (form) => untilBooks(form, ({ active }) => active === 'activated');

/// Waits until a newer version is there, which the browser looks for by itself when a page is opened.
async function updated({ page }) {
  await page.evaluate(async () => (await navigator.serviceWorker.getRegistration()).update());
  await untilBooks({ page }, ({ waiting }) => waiting === 'installed');
}

const buildIn = ({ page }) => page.evaluate(() => document.querySelector('script[type=module]').src.split('/').at(-2));

async function saveRecord(form, words) {
  await form.openClimate();
  await form.click('Remark', 600);
  await form.page.locator('#field input').fill(words);
  await form.choose('New Record');
  await form.untilShown('2/2');
}

async function readRecord(form, words) {
  await form.choose('Start...');
  await form.untilShown('Climate Meter');
  await form.choose('Ok');
  await form.choose('Open');
  await form.untilShown(words);
}

async function about({ page }) {
  await page.locator('#more').click();
  await page.locator('#popup button', { hasText: 'About this page' }).click();
  await page.locator('#about').waitFor({ state: 'visible' });
  return page.locator('#about dl').innerText();
}

/// The page has other things to say, too.
const isTold = async (form, words) => (await notice(form).innerText()).includes(words);
const notice = ({ page }) => page.locator('#notice');
const noticeWords = (form) => notice(form).locator('span').textContent();

// --- without its server ----------------------------------------------------------------------------------------------

test('a record is made and read without the server', async () => {
  await arrive();
  const first = await opened();
  await kept(first);
  await first.page.close();
  await server.stop();
  const form = await opened();
  await saveRecord(form, 'in the cellar');
  await form.page.close();
  const again = await opened();
  await readRecord(again, 'in the cellar');
});

test('a page that is kept asks the server for nothing', async () => {
  await arrive();
  await kept(await opened());
  await context.pages()[0].close();
  server.asked = [];
  const form = await opened();
  await saveRecord(form, 'dry');
  await about(form);
  assert.deepEqual(server.asked.filter((name) => name !== 'service_worker.js'), []);
});

test('an address with words is answered without a server', async () => {
  await arrive();
  await kept(await opened());
  await context.pages()[0].close();
  await server.stop();
  const form = await opened({ query: '?device=palm' });
  assert.equal((await form.mirror()).resizable, false);
  await form.page.goto(server.address + 'index.html?device=palm');
  await form.page.locator('#form').waitFor({ state: 'visible' });
});

/// Waits until the server was asked for a file, and the browser has given the version up.
async function givenUp(form, name) {
  while (!server.asked.includes(name)) await form.page.waitForTimeout(25);
  await untilBooks(form, ({ installing, waiting, active }) => !installing && !waiting && !active);
}

test('a version with a missing or another file is not kept', async () => {
  for (const content of [() => null, (bytes) => Buffer.concat([bytes, Buffer.from(' ')])]) {
    await arrive();
    server.content = (name, bytes) => (name === 'icon-512.png' ? content(bytes) : bytes);
    const form = await opened();
    await givenUp(form, 'icon-512.png');
    assert.deepEqual(await form.page.evaluate(() => caches.keys()), []);
    assert.match(await about(form), /Not yet/);
    await context.close();
    await server.stop();
  }
});

test('a server without headers is enough', async () => {
  await arrive({ headers: {} });
  const first = await opened();
  assert.equal(await first.page.evaluate(() => crossOriginIsolated), true);
  await first.page.close();
  await server.stop();
  const form = await opened();
  await saveRecord(form, 'hung up');
  assert.deepEqual(form.errors, []);
});

// --- what the page may do --------------------------------------------------------------------------------------------

test('nothing is blocked, and nothing leaves the server', async () => {
  await arrive();
  const asked = new Set();
  context.on('request', (request) => asked.add(new URL(request.url()).origin));
  for (const time of ['from the server', 'from the browser']) {
    const form = await opened();
    if (time === 'from the server') await saveRecord(form, 'dry');
    else await readRecord(form, 'dry');
    await about(form);
    await kept(form);
    assert.deepEqual(form.errors, [], time);
    await form.page.close();
  }
  assert.deepEqual([...asked], [new URL(server.address).origin]);
});

test('the policy lets nothing in from elsewhere', async () => {
  await arrive();
  await kept(await opened());
  await context.pages()[0].close();
  const form = await opened({ query: 'index.html' });
  const blocked = await form.page.evaluate(async () => {
    const seen = [];
    addEventListener('securitypolicyviolation', (event) => seen.push(event.effectiveDirective));
    await fetch('https://quorin.invalid/').catch(() => {});
    document.body.append(Object.assign(document.createElement('script'), { textContent: 'window.wasRun = true' }));
    document.body.append(Object.assign(new Image(), { src: 'https://quorin.invalid/x.png' }));
    await new Promise((done) => setTimeout(done, 100));
    return [...seen, window.wasRun];
  });
  assert.deepEqual(new Set(blocked), new Set(['connect-src', 'script-src-elem', 'img-src', undefined]));
  const worker = await form.page.evaluate(async () => {
    const address = document.querySelector('script[type=module]').src.replace('page.js', 'worker.js');
    return Object.fromEntries((await fetch(address)).headers);
  });
  assert.match(worker['content-security-policy'], /^default-src 'none'.*; frame-ancestors 'none'$/);
  assert.equal(worker['cross-origin-embedder-policy'], 'require-corp');
});

test('the browser offers to install the page', async () => {
  await arrive();
  const form = await opened();
  await kept(form);
  const session = await context.newCDPSession(form.page);
  const { errors, manifest } = await session.send('Page.getAppManifest');
  assert.deepEqual(errors, []);
  assert.equal(manifest.name ?? manifest.shortName, 'Quorin');
  const { installabilityErrors } = await session.send('Page.getInstallabilityErrors');
  assert.deepEqual(installabilityErrors.filter(({ errorId }) => errorId !== 'in-incognito'), []);
  const { icons } = JSON.parse(readFileSync(join(server.site, 'manifest.webmanifest')));
  for (const { src, sizes } of icons.filter(({ type }) => type === 'image/png')) {
    const bytes = readFileSync(join(server.site, src));
    assert.equal(`${bytes.readUInt32BE(16)}x${bytes.readUInt32BE(20)}`, sizes, src);
  }
});

test('what is loaded is small', (context) => {
  const sizes = filesOf(Site).map((name) => gzipSync(readFileSync(join(Site, name)), { level: 9 }).length);
  const sum = sizes.reduce((one, other) => one + other, 0);
  context.diagnostic(`${sum} bytes, packed by gzip -9`);
  assert.ok(sum < 1_500_000, `${sum} bytes`);
});

test('a page without HTTPS says what it needs', async () => {
  await arrive();
  const page = await context.newPage();
  await page.goto(server.address.replace('localhost', 'a.invalid'));
  await page.waitForFunction(() => document.getElementById('message').textContent.includes('https://'));
});

test('a page whose files are gone says so', async () => {
  await arrive();
  const folder = buildOf(server.site);
  server.content = (name, bytes) => (name.startsWith(folder) ? null : bytes);
  const page = await context.newPage();
  const words = page.getByText('files of this page are missing');
  await page.goto(server.address);
  assert.equal(await words.isVisible(), true);
  server.content = (name, bytes) => (name.endsWith('/page.js') ? null : bytes);
  await page.reload();
  assert.equal(await words.isVisible(), false); // it may only be slow
  await words.waitFor({ state: 'visible' });
  server.content = (name, bytes) => bytes;
  await page.reload();
  await page.locator('#form').waitFor({ state: 'visible' });
  assert.equal(await words.isVisible(), false);
});

// --- newer versions --------------------------------------------------------------------------------------------------

/// A page of one version, and a newer one that has come while it was open.
async function newerCame(prepare) {
  await arrive({}, prepare);
  const form = await opened();
  await kept(form);
  const before = server.site;
  server.site = otherVersion('99.1');
  server.asked = [];
  return { form, before: buildOf(before), newer: buildOf(server.site) };
}

test('a newer version waits for the next start', async () => {
  const { form, before, newer } = await newerCame();
  await form.openClimate();
  await updated(form);
  assert.match(await noticeWords(form), /A newer version is ready. It starts the next time/);
  const second = await context.newPage(); // the newer one must not start under a record
  await second.goto(server.address);
  await second.waitForFunction(() => document.getElementById('message').textContent.includes('another tab'));
  assert.equal(await buildIn({ page: second }), before);
  await second.close();
  await form.click('Remark', 600);
  await form.page.locator('#field input').fill('of the old one');
  await form.choose('New Record');
  await form.untilShown('2/2');
  assert.equal(await buildIn(form), before);
  assert.deepEqual(server.asked.filter((name) => name.startsWith(before)), []);
  await form.page.close();
  const next = await opened();
  assert.equal(await buildIn(next), newer);
  await readRecord(next, 'of the old one');
  assert.match(await about(next), /99\.1/);
  assert.deepEqual(await next.page.evaluate(() => caches.keys()), [`quorin ${server.address} ${newer}`]);
});

test('a newer version waits for an open demonstration, too', async () => {
  const { form, before } = await newerCame();
  const demonstration = await context.newPage();
  await demonstration.goto(`${server.address}?demo`);
  await demonstration.locator('#demo').waitFor();
  await updated(form);
  await form.page.close();
  const next = await opened();
  assert.equal(await buildIn(next), before);
});

test('a page that is loaded again is the newer version', async () => {
  const { form, newer } = await newerCame();
  await updated(form);
  await form.page.reload();
  await form.page.waitForFunction((build) => document.querySelector('script[type=module]')?.src.includes(build), newer);
  await form.page.locator('#form').waitFor({ state: 'visible' });
  assert.deepEqual(form.errors, []);
});

test('a newer version is started by a click without a record', async () => {
  const { form, newer } = await newerCame();
  await form.openClimate();
  await updated(form);
  await notice(form).waitFor({ state: 'visible' });
  assert.equal(await notice(form).getByText('Start it now').count(), 0);
  await form.choose('Close');
  await form.until((mirror) => !mirror.record, 'no record');
  await notice(form).getByText('Start it now').click();
  await form.page.waitForFunction((build) => document.querySelector('script[type=module]')?.src.includes(build), newer);
  await form.page.locator('#form').waitFor({ state: 'visible' });
  assert.deepEqual(form.errors, []);
});

test('a newer version that was read of is not told again', async () => {
  const { form } = await newerCame();
  await updated(form);
  await notice(form).getByText('OK').click();
  await form.choose('inf editor...');
  await form.untilShown('Add Driver...').catch(() => {});
  assert.equal(await isTold(form, 'newer version'), false);
});

// --- the data --------------------------------------------------------------------------------------------------------

test('data that the browser has removed is told', async () => {
  await arrive();
  const form = await opened();
  await saveRecord(form, 'gone');
  const files = await form.page.evaluate(() => JSON.parse(localStorage.getItem('quorin data was here')).files);
  assert.ok(files >= 3, `${files} files`);
  await form.page.close();
  const elsewhere = await context.newPage();
  await elsewhere.goto(`${server.address}quorin.svg`);
  await elsewhere.evaluate(async () => {
    await navigator.locks.request('quorin data', () => {}); // the page before has gone
    for (let isGone = false; !isGone; ) // though its files are not closed at once
      isGone = await (await navigator.storage.getDirectory()).removeEntry('quorin', { recursive: true }).then(() => true, () => false);
  });
  await elsewhere.close();
  for (const time of ['first', 'not confirmed yet']) {
    const empty = await opened();
    const day = new Date().toLocaleDateString('en-GB', { day: 'numeric', month: 'long', year: 'numeric' });
    assert.ok((await noticeWords(empty)).includes(`${files} files, last seen on ${day}`), time);
    if (time !== 'first') await notice(empty).getByText('OK').click();
    await empty.page.close();
  }
  assert.equal(await isTold(await opened(), 'removed'), false);
});

test('the browser is asked to keep what was saved', async () => {
  await arrive({}, () => {
    window.timesAsked = 0;
    let isKept = false;
    navigator.storage.persisted = async () => isKept;
    navigator.storage.persist = async () => {
      window.timesAsked++;
      isKept = true;
      return isKept;
    };
  });
  const form = await opened();
  assert.match(await about(form), /may remove the data when its disk is full/);
  await form.page.locator('#about button').click();
  await form.openClimate();
  assert.equal(await form.page.evaluate(() => window.timesAsked), 0);
  await form.click('Remark', 600);
  await form.page.locator('#field input').fill('to keep');
  await form.choose('New Record');
  await form.untilShown('2/2');
  assert.equal(await form.page.evaluate(() => window.timesAsked), 1);
  const words = await about(form);
  assert.match(words, /keeps the data until you remove it/);
  assert.match(words, /[\d.]+ MB used, of at most [\d,]+ MB/);
});

test('a page that is kept says so, with its version', async () => {
  await arrive();
  const form = await opened();
  await kept(form);
  const words = await about(form);
  assert.match(words, new RegExp(`\\(${buildOf(server.site)}\\)`));
  assert.match(words, /Works without a network\s+Yes/);
});

test('a browser without serial ports is told what it lacks', async () => {
  await arrive({}, () => { delete Navigator.prototype.serial; });
  const form = await opened();
  assert.match(await noticeWords(form), /reaches no instruments/);
  await notice(form).getByText('OK').click();
  await form.page.close();
  assert.equal(await isTold(await opened(), 'instruments'), false);
});
