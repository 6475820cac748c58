// SPDX-License-Identifier: MIT
// A server for the page that counts what it is asked for, stops, comes back, and is given other versions of the page.
import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, readdirSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { basename, extname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

export const root = fileURLToPath(new URL('../../../', import.meta.url));
export const Site = join(root, 'build/web/site');

const Sources = ['backends/web/page', 'backends/web', 'packaging/web', 'packaging/desktop/icons', 'build/web/page'];
const Types = { '.html': 'text/html', '.js': 'text/javascript', '.wasm': 'application/wasm', '.css': 'text/css',
  '.svg': 'image/svg+xml', '.png': 'image/png', '.webmanifest': 'application/manifest+json' };
const Isolation = { 'Cross-Origin-Opener-Policy': 'same-origin', 'Cross-Origin-Embedder-Policy': 'require-corp' };

export const filesOf = (site) =>
  readdirSync(site, { recursive: true }).filter((name) => statSync(join(site, name)).isFile());

/// The name of the folder with the files of a version.
export const buildOf = (site) => filesOf(site).find((name) => basename(name) === 'version.js').split('/')[0];

const places = [];

/// Makes another version of the page. `change` returns another content for a file by its name and text, or nothing.
export function otherVersion(version, change = () => undefined) {
  const place = mkdtempSync(join(tmpdir(), 'quorin-site-'));
  places.push(place);
  const names = filesOf(Site).map((name) => basename(name)).filter((name) => name !== 'version.js');
  const given = names.map((name) => {
    const source = Sources.map((folder) => join(root, folder, name)).find((path) => existsSync(path));
    const changed = change(name, String(readFileSync(source)));
    if (changed === undefined) return source;
    writeFileSync(join(place, name), changed);
    return join(place, name);
  });
  execFileSync(join(root, 'script/web-site'), [join(place, 'site'), version, ...given]);
  return join(place, 'site');
}

export class SiteServer {
  /// `headers`: those of every answer.
  constructor({ site = Site, headers = Isolation } = {}) {
    Object.assign(this, { site, headers, asked: [], port: 0 });
    this.content = (name, bytes) => bytes; // null for a file that is missing
  }

  async start() {
    this.server = createServer((request, response) => this.answer(request, response));
    await new Promise((done) => this.server.listen(this.port, '127.0.0.1', done));
    this.port = this.server.address().port;
    this.address = `http://localhost:${this.port}/`;
    return this;
  }

  async stop() {
    this.server.closeAllConnections();
    await new Promise((done) => this.server.close(done));
  }

  answer(request, response) {
    const { pathname } = new URL(request.url, this.address);
    const name = pathname === '/' ? 'index.html' : pathname.slice(1);
    this.asked.push(name);
    const path = join(this.site, name);
    const bytes = existsSync(path) ? this.content(name, readFileSync(path)) : null;
    if (bytes === null) return response.writeHead(404).end();
    response.writeHead(200, { 'Content-Type': Types[extname(name)], ...this.headers }).end(bytes);
  }
}

export function removeVersions() {
  for (const place of places.splice(0)) rmSync(place, { recursive: true });
}
