// SPDX-License-Identifier: MIT
// A browser without a window, and a server for the pages of the tests: the files of this tree, with the two headers that
// shared memory needs.
import { spawn } from 'node:child_process';
import { createReadStream, existsSync, mkdtempSync, rmSync, statSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { extname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

const tree = fileURLToPath(new URL('../../..', import.meta.url));
const Types = { '.html': 'text/html', '.js': 'text/javascript', '.mjs': 'text/javascript', '.wasm': 'application/wasm',
  '.css': 'text/css', '.json': 'application/json', '.svg': 'image/svg+xml', '.png': 'image/png' };

function answer(request, response) {
  const path = join(tree, normalize(new URL(request.url, 'http://localhost').pathname));
  if (!existsSync(path) || !statSync(path).isFile()) {
    response.writeHead(404).end();
    return;
  }
  response.writeHead(200, {
    'Content-Type': Types[extname(path)] ?? 'application/octet-stream',
    'Cross-Origin-Opener-Policy': 'same-origin',
    'Cross-Origin-Embedder-Policy': 'require-corp',
  });
  createReadStream(path).pipe(response);
}

/// Starts the server. Returns it and its address, without a slash at the end.
export async function serve() {
  const server = createServer(answer);
  await new Promise((done) => server.listen(0, '127.0.0.1', done));
  return { server, address: `http://localhost:${server.address().port}` };
}

export const BrowserPath = process.env.QUORIN_BROWSER ?? '/usr/bin/chromium';

const Words = ['--headless=new', '--no-sandbox', '--disable-dev-shm-usage', '--no-first-run', '--remote-debugging-port=0',
  'about:blank'];

/// A browser whose origins keep their files in a folder of its own from one start to the next.
export class Browser {
  constructor() {
    this.profile = mkdtempSync(join(tmpdir(), 'quorin-browser-'));
  }

  /// Returns its window, a context of the library.
  async start() {
    this.process = spawn(BrowserPath, [`--user-data-dir=${this.profile}`, ...Words],
      { detached: true, stdio: ['ignore', 'ignore', 'pipe'] });
    this.address = await this.#address(); // of its socket
    this.connection = await chromium.connectOverCDP(this.address);
    return this.connection.contexts()[0];
  }

  #address() {
    return new Promise((done, failed) => {
      let told = '';
      this.process.stderr.on('data', (bytes) => {
        told += bytes;
        const found = told.match(/DevTools listening on (\S+)/);
        if (found) done(found[1]);
      });
      this.process.on('exit', () => failed(new Error('the browser has ended: ' + told)));
    });
  }

  /// Ends every process of it at once, in the middle of what it does.
  async kill() {
    if (this.process.exitCode !== null || this.process.signalCode !== null) return;
    const ended = new Promise((done) => this.process.on('exit', done));
    process.kill(-this.process.pid, 'SIGKILL');
    await ended;
  }

  async stop() {
    const ended = new Promise((done) => this.process.on('exit', done));
    const session = await this.connection.newBrowserCDPSession();
    await session.send('Browser.close').catch(() => {});
    const late = setTimeout(() => this.kill(), 5000); // it does not always go by itself
    await ended;
    clearTimeout(late);
  }

  remove() {
    rmSync(this.profile, { recursive: true, force: true, maxRetries: 10 });
  }
}
