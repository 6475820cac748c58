// SPDX-License-Identifier: MIT
// The examples for nginx and Apache, by these servers themselves, in Chromium: node --test tests/web/servers_test.mjs
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { chromium } from 'playwright-core';
import { BrowserPath } from './support/browser.mjs';
import { areThere, startExample } from './support/real_server.mjs';

const skip = areThere ? false : 'script/web-servers was not run';

let browser;
before(async () => {
  browser = await chromium.launch({ executablePath: BrowserPath, args: ['--no-sandbox', '--ignore-certificate-errors'] });
});
after(() => browser?.close());

/// Opens the page, as soon as the server listens.
async function opened(page, address) {
  for (let tries = 0; tries < 100; tries++) {
    const answer = await page.goto(address).catch(() => null);
    if (answer) return answer;
    await page.waitForTimeout(50);
  }
  throw new Error(`nothing answers at ${address}`);
}

for (const [name, packing] of [['nginx.conf', 'gzip'], ['apache.conf', 'br']]) {
  test(`the page starts by the example ${name}`, { skip }, async () => {
    const server = await startExample(name);
    const context = await browser.newContext();
    try {
      const page = await context.newPage();
      const errors = [];
      page.on('console', (message) => { if (message.type() === 'error') errors.push(message.text()); });
      const program = page.waitForResponse((answer) => answer.url().endsWith('.wasm'));
      program.catch(() => {}); // what fails before is told
      const headers = (await opened(page, server.address)).headers();
      assert.equal(headers['cross-origin-opener-policy'], 'same-origin');
      assert.equal(headers['cross-origin-embedder-policy'], 'require-corp');
      const policy = await page.locator('meta[http-equiv]').getAttribute('content');
      assert.equal(headers['content-security-policy'], `${policy}; frame-ancestors 'none'`);
      const ofProgram = (await program).headers();
      assert.equal(ofProgram['content-type'], 'application/wasm');
      assert.equal(ofProgram['content-encoding'], packing);
      await page.locator('#form').waitFor({ state: 'visible' });
      assert.equal(await page.evaluate(() => crossOriginIsolated), true);
      assert.deepEqual(errors, []);
    } finally {
      await context.close();
      await server.stop();
    }
  });
}
