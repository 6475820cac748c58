// SPDX-License-Identifier: MIT
// The browser's own serial ports, over a pseudo terminal: node --test tests/web/real_port_test.mjs
import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import { existsSync } from 'node:fs';
import { test } from 'node:test';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { FormOnPage, startBrowser } from './support/form_on_page.mjs';

const support = (name) => fileURLToPath(new URL(`support/${name}`, import.meta.url));

function whyNot() {
  if (process.getuid() !== 0) return 'only root can put a terminal in the place of a port';
  if (!existsSync('/dev/ttyS0') || !existsSync('/etc/chromium')) return 'this machine has no serial port to stand in for';
  if (spawnSync('unshare', ['--mount', 'true']).status !== 0) return 'this machine allows no mounts';
  return false;
}

class Terminal {
  static async open() {
    const terminal = new Terminal();
    terminal.process = spawn(support('terminal.py'), { stdio: ['pipe', 'pipe', 'inherit'] });
    [terminal.path] = await new Promise((heard) =>
      createInterface({ input: terminal.process.stdout }).once('line', (line) => heard([line])));
    return terminal;
  }
  sends(text) {
    this.process.stdin.write(Buffer.from(text, 'latin1').toString('hex') + '\n');
  }
  goes() {
    this.process.stdin.end();
  }
}

const reading = (type, value, unit) =>
  `[BLob]\r\n[RESULT_TYPE "${type}"]\r\n[RESULT_VALUE "${value}"]\r\n[RESULT_UNIT "${unit}"]\r\n[/BLob]\r\n`;
const Readings = [['Moisture', '18.8', '%'], ['Temperature', '-20.6', '°C'], ['Humidity', '55', '%']];

test('readings of a real port land, and its end is told', { skip: whyNot() }, async () => {
  const terminal = await Terminal.open();
  const chromium = await startBrowser((address) => ({
    executablePath: support('browser_with_port.sh'),
    env: { ...process.env, QUORIN_TERMINAL: terminal.path, QUORIN_ORIGIN: new URL(address).origin },
  }));
  try {
    const form = await FormOnPage.open(chromium);
    const linkSays = (words) => form.page.waitForFunction(
      (wanted) => document.getElementById('link').textContent.includes(wanted), words, { timeout: 20000 });
    await form.openClimate();
    await form.page.locator('#link').click();
    await form.page.locator('#ports button', { hasText: 'Use this one' }).click();
    await linkSays('Link open');
    for (const [type, value, unit] of Readings) {
      terminal.sends(reading(type, value, unit));
      await form.untilShown(`${value} ${unit}`);
    }
    terminal.sends(reading('Moisture', '1', '%').slice(0, 40));
    terminal.goes();
    await linkSays('Link down');
    assert.deepEqual(form.errors, []);
  } finally {
    await chromium.close();
    terminal.process.kill();
  }
});
