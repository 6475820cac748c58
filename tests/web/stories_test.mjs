// SPDX-License-Identifier: MIT
// The device of the page in a browser: all stories, and the suites of a form. node --test tests/web/stories_test.mjs.
// The stories are played by the program of the dev preset, which runs each of their commands there.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { existsSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Browser, BrowserPath, serve } from './support/browser.mjs';

const skip = existsSync(BrowserPath) ? false : `there is no ${BrowserPath}`;
const tree = (path) => fileURLToPath(new URL(`../../${path}`, import.meta.url));

/// Returns the exit status and the output of a program.
function run(program, words, more, folder = '.') {
  return new Promise((done) => {
    const process_ = spawn(program, words, { cwd: folder, env: { ...process.env, ...more }, stdio: ['ignore', 'pipe', 'pipe'] });
    let output = '';
    for (const stream of [process_.stdout, process_.stderr]) stream.on('data', (bytes) => { output += bytes; });
    process_.on('exit', (status) => done({ status, output }));
  });
}

/// Starts a browser, and gives a program what run_in_browser.mjs needs to run a module there.
async function inBrowser(module, step) {
  const { server, address } = await serve();
  const browser = new Browser();
  try {
    await browser.start();
    const ended = await step({
      QUORIN_WEB_PROGRAM: `/build/web/bin/${module}.js`, QUORIN_BROWSER_AT: browser.address, QUORIN_SERVER: address,
    });
    assert.equal(ended.status, 0, ended.output);
    return ended.output;
  } finally {
    await browser.kill().catch(() => {});
    browser.remove();
    server.close();
  }
}
const Runner = tree('tests/web/support/run_in_browser.mjs');

// A browser has no symbolic links, which one story is about.
const AllButLinks = '--gtest_filter=-*18WhatTheFormDoesNotSay';

test('the stories go as written but for sizes', { skip, timeout: 600_000 }, () =>
  inBrowser('page-console-module', (env) =>
    run(tree('build/dev/bin/test_page_stories'), [AllButLinks], { ...env, QUORIN_CONSOLE: Runner })));

test('the device of the page passes the suites of a form', { skip, timeout: 300_000 }, async () => {
  const empty = mkdtempSync(join(tmpdir(), 'quorin-suites-'));
  const output = await inBrowser('form-suites-module', (env) => run(Runner, [], env, empty));
  assert.match(output, /PASSED {2}\] 1\d\d tests/);
  rmSync(empty, { recursive: true });
});
