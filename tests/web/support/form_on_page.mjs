// SPDX-License-Identifier: MIT
// The page in Chromium, for the tests: a server of its own, the program's first screen, and what a person does.
import { spawn } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';
import { BrowserPath } from './browser.mjs';

const root = fileURLToPath(new URL('../../../', import.meta.url));

export const sample = (name) => readFileSync(`${root}samples/${name}`);

/// Starts server and browser. Call close() at the end. `more`: returns options of the library for a server's address.
export async function startBrowser(more = () => ({})) {
  const server = spawn(`${root}script/web-serve`, ['0'], { stdio: ['ignore', 'pipe', 'inherit'] });
  const address = await new Promise((heard) => server.stdout.once('data', (text) => heard(String(text).split('\n')[0])));
  const browser = await chromium.launch({ executablePath: BrowserPath, args: ['--no-sandbox'], ...more(address) });
  return {
    address,
    browser,
    async close() {
      await browser.close();
      server.kill();
    },
  };
}

/// A page with the program. `scripts`: paths of scripts that run in the page before its own.
export class FormOnPage {
  static async open({ browser, address }, { query = '', scripts = [], ...context } = {}) {
    const made = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...context });
    const page = await made.newPage();
    const form = new FormOnPage(page);
    page.on('pageerror', (error) => form.errors.push(String(error)));
    page.on('console', (message) => { if (message.type() === 'error') form.errors.push(message.text()); });
    for (const path of scripts) await page.addInitScript({ path });
    await page.goto(address + query);
    await page.locator('#form').waitFor({ state: 'visible', timeout: 20000 });
    return form;
  }

  constructor(page) {
    this.page = page;
    this.errors = [];
  }

  mirror() {
    return this.page.evaluate(() => window.quorin.mirror);
  }

  /// Waits until what the page was shown last fulfils a condition, and returns it.
  async until(holds, what) {
    for (let tries = 0; tries < 800; tries++) {
      const mirror = await this.mirror();
      if (mirror !== null && holds(mirror)) return mirror;
      await this.page.waitForTimeout(25);
    }
    throw new Error(`never came: ${what ?? holds}\n${JSON.stringify(await this.mirror()).slice(0, 3000)}`);
  }

  async texts() {
    return textsOf(await this.mirror());
  }

  /// Waits until a text stands on the form, which takes acts: while it is busy they would be meant for the screen before.
  untilShown(text) {
    return this.until((mirror) => mirror.status === null && textsOf(mirror).includes(text), text);
  }

  /// The point of the page on which a text of the grid stands, or that many pixels of the form beside it.
  async pointOf(text, beside = 0) {
    const mirror = await this.untilShown(text);
    const line = mirror.grid.cells.flatMap((cell) => cell.lines).find((each) => each[3] === text);
    const scale = await this.page.evaluate(() => window.quorin.scale);
    const corner = await this.page.locator('#grid').boundingBox();
    return { x: corner.x + (line[0] + 3 + beside) * scale, y: corner.y + (line[1] - 4) * scale };
  }

  /// A new screen is painted once more after a tenth of a second, which closes a field: no hand is as quick as that.
  async click(text, beside) {
    const { x, y } = await this.pointOf(text, beside);
    await this.page.waitForTimeout(200);
    await this.page.mouse.click(x, y);
  }

  async tap(text, beside) {
    const { x, y } = await this.pointOf(text, beside);
    await this.page.waitForTimeout(350); // a finger that is quicker was meant for the screen before
    await this.page.touchscreen.tap(x, y);
  }

  /// Chooses a command of the menus by clicks, as soon as one offers it.
  async choose(caption) {
    const mirror = await this.until(({ box, menus }) => box === null && placeOf(menus, caption) !== null, `menu ${caption}`);
    const { menu, isOnly } = placeOf(mirror.menus, caption);
    await this.page.locator(`#menus button[data-menu="${menu + 1}"]`).click();
    if (!isOnly) await this.page.locator('#popup button', { hasText: caption }).first().click();
  }

  /// Installs the sample driver and opens the first record of a new download.
  async openClimate() {
    await this.installSample();
    await this.choose('Start...');
    await this.untilShown('Climate Meter');
    await this.choose('Ok');
    await this.choose('New');
    await this.choose('Open');
    await this.untilShown('Remark');
  }

  /// Opens the first record of the climate meter's only download.
  async openFirst() {
    await this.choose('Start...');
    await this.untilShown('Climate Meter');
    await this.choose('Ok');
    await this.choose('Open');
    await this.untilShown('Remark');
  }

  /// Types into the field Remark and closes it: the record differs from its file then.
  async typeRemark(words) {
    await this.click('Remark', 600);
    await this.page.locator('#field input').fill(words);
    await this.page.keyboard.press('Enter');
    await this.until((mirror) => mirror.unsaved, 'a changed record');
  }

  /// The page in a new tab, after its own was closed.
  async inNewTab(address) {
    const page = await this.page.context().newPage();
    await this.page.close();
    await page.goto(address);
    return new FormOnPage(page);
  }

  /// Chooses what the page can do beside the form.
  async chooseMore(text) {
    await this.until((mirror) => mirror.box === null, 'no box');
    await this.page.locator('#more').click();
    await this.page.locator('#popup button', { hasText: text }).click();
  }

  /// Gives files to the dialog that an entry opens: {name, buffer}.
  async give(text, ...files) {
    const chooser = this.page.waitForEvent('filechooser');
    await this.chooseMore(text);
    await (await chooser).setFiles(files.map((file) => ({ mimeType: 'application/octet-stream', ...file })));
  }

  /// Drops a file on the page.
  async drop({ name, buffer }) {
    const data = await this.page.evaluateHandle(([called, bytes]) => {
      const transfer = new DataTransfer();
      transfer.items.add(new File([new Uint8Array(bytes)], called));
      return transfer;
    }, [name, [...buffer]]);
    await this.page.dispatchEvent('#form', 'dragover', { dataTransfer: data });
    await this.page.dispatchEvent('#form', 'drop', { dataTransfer: data });
  }

  /// Installs the sample driver, as a person does who has none.
  async installSample() {
    await this.chooseMore('Install the sample driver');
    await this.until((mirror) => mirror.box !== null, 'the box of the installation');
    await this.answer('OK');
    await this.until(({ menus, box }) => box === null && placeOf(menus, 'Start...') !== null, 'the first screen');
  }

  async answer(button) {
    await this.page.locator('#box .answers button', { hasText: button }).click();
  }
}

export function textsOf(mirror) {
  const cells = [...(mirror.heading?.cells ?? []), ...(mirror.grid?.cells ?? [])];
  return cells.flatMap((cell) => cell.lines.map((line) => line[3]));
}

function placeOf(menus, caption) {
  for (const [index, menu] of menus.entries()) {
    if (!menu.visible || !menu.enabled) continue;
    const items = menu.items.filter((item) => item.visible);
    if (items.some((item) => item.caption === caption && item.enabled)) return { menu: index, isOnly: items.length === 1 };
    if (items.length === 0 && menu.caption === caption) return { menu: index, isOnly: true };
  }
  return null;
}
