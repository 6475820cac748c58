#!/usr/bin/env -S node --no-experimental-fetch
// SPDX-License-Identifier: MIT
// Runs a program of WebAssembly in a browser as if it were one of this machine: with its working folder, its input, its
// words and its exit status. QUORIN_WEB_PROGRAM is the program's module, QUORIN_BROWSER_AT the browser's socket, and
// QUORIN_SERVER the address of the tree.
import { chmodSync, existsSync, mkdirSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { chromium } from 'playwright-core';

function filesOf(folder = '', found = []) {
  for (const name of readdirSync(`./${folder}`)) {
    const path = folder + name;
    const status = statSync(path);
    const mode = status.mode & 0o7777;
    if (status.isDirectory()) {
      found.push({ path, mode });
      filesOf(path + '/', found);
    } else if (status.isFile()) {
      found.push({ path, mode, bytes: readFileSync(path).toString('base64') });
    }
  }
  return found;
}

function bringBack(before, after) {
  const there = new Set(after.map(({ path }) => path));
  for (const { path } of before) if (!there.has(path)) rmSync(path, { recursive: true, force: true });
  for (const { path, mode, bytes } of after) {
    if (bytes !== undefined) writeFileSync(path, Buffer.from(bytes, 'base64'));
    else if (!existsSync(path)) mkdirSync(path);
    chmodSync(path, mode);
  }
}

const browser = await chromium.connectOverCDP(process.env.QUORIN_BROWSER_AT);
const page = await browser.contexts()[0].newPage();
await page.goto(process.env.QUORIN_SERVER + '/tests/web/support/program.html');
const files = filesOf();
const ended = await page.evaluate((run) => window.runProgram(run), {
  module: process.env.QUORIN_WEB_PROGRAM, files, input: readFileSync(0).toString('base64'), words: process.argv.slice(2),
});
await page.close();
bringBack(files, ended.files);
writeFileSync(1, Buffer.from(ended.output, 'base64'));
writeFileSync(2, Buffer.from(ended.errors, 'base64'));
process.exit(ended.status);
