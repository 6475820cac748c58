// SPDX-License-Identifier: MIT
// Files that last, in a browser: its own storage, and its own processes killed.
import assert from 'node:assert/strict';
import { existsSync } from 'node:fs';
import { test } from 'node:test';
import { Browser, BrowserPath, serve } from './support/browser.mjs';
import { randomNumbers } from './support/memory_pool.mjs';
import { meterFiles, numbersIn, OpenDownload, record, session } from './support/meter.mjs';

const skip = existsSync(BrowserPath) ? false : `there is no ${BrowserPath}`;
const Page = '/tests/web/support/console.html';

async function withBrowser(step) {
  const { server, address } = await serve();
  const browser = new Browser();
  try {
    await step(browser, address + Page);
  } finally {
    await browser.kill().catch(() => {});
    browser.remove();
    server.close();
  }
}

/// Opens the page, and runs the console there. Each line of the program goes to `heard` as it comes.
async function runs(browser, address, { files = {}, commands = [], words = [] }, heard = () => {}) {
  const page = await (await browser.start()).newPage();
  await page.exposeFunction('heard', heard);
  await page.goto(address);
  return page.evaluate(([files, commands, words]) => window.runConsole(files, commands, words), [files, commands, words]);
}

test('what was saved is there after the browser was closed', { skip, timeout: 60_000 }, () =>
  withBrowser(async (browser, address) => {
    const first = await runs(browser, address, { files: meterFiles, commands: session(3), words: ['--strict'] });
    assert.equal(first.status, 0);
    await browser.stop();
    const { files } = await runs(browser, address, {});
    assert.equal(files['/data/Quorin/qrn0001.txt'], 'Place|Count\nplace 1|1\nplace 2|2\nplace 3|3\n|\n');
  }));

test('a killed browser loses no record that was saved', { skip, timeout: 3_000_000 }, (context) =>
  withBrowser(async (browser, address) => {
    const numbers = randomNumbers(Number(process.env.QUORIN_SEED ?? 1));
    const kills = Number(process.env.QUORIN_KILLS ?? 5);
    let before = 0;
    let lastIsEmpty = true;
    for (let kill = 0; kill < kills; kill++) {
      const commands = [...OpenDownload, 'choose Last Record', ...(lastIsEmpty ? [] : ['choose New Record'])];
      for (let number = before + 1; number <= before + 40; number++) commands.push(...record(number), 'tick 150'); // a new record is painted once more
      let saved = before;
      let atSave;
      const lines = [];
      const moment = new Promise((done) => { atSave = done; });
      const last = before + 1 + Math.floor(numbers() * 6);
      const words = ['--clock', 'real', '--verdicts', '--strict'];
      const run = runs(browser, address, { files: kill === 0 ? meterFiles : {}, commands, words }, (line) => {
        lines.push(line);
        if (line.includes('"event":"saved"') && ++saved === last) atSave();
      });
      const early = run.then(({ status }) => `status ${status}`, (why) => String(why));
      const why = await Promise.race([moment, early]); // behind the kill its page goes away
      assert.equal(why, undefined, `kill ${kill}: ${why}, before ${last} were saved\n${lines.slice(-20).join('\n')}`);
      await new Promise((done) => setTimeout(done, numbers() * 20));
      await browser.kill();
      const { files } = await runs(browser, address, {});
      await browser.stop();
      const download = files['/data/Quorin/qrn0001.txt'];
      const found = numbersIn(download);
      assert.deepEqual(found, found.map((_, i) => i + 1), `kill ${kill}`);
      assert.ok(found.length >= last, `kill ${kill}: ${last} were saved, ${found.length} are there`);
      before = found.length;
      lastIsEmpty = download.endsWith('\n|\n');
    }
    context.diagnostic(`${kills} kills, ${before} records`);
  }));
