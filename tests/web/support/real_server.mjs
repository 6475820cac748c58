// SPDX-License-Identifier: MIT
// nginx and Apache with their examples of packaging/web, on a port and with a certificate of their own.
import { execFileSync, spawn } from 'node:child_process';
import { chmodSync, cpSync, existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { root, Site } from './site.mjs';

const Servers = join(root, 'build/web-servers');
export const areThere = existsSync(join(Servers, 'complete'));

const ModulesOfApache = ['mpm_event', 'authz_core', 'dir', 'mime', 'socache_shmcb', 'ssl', 'http2', 'headers', 'filter',
  'brotli', 'deflate'];

function freePort() {
  return new Promise((done) => {
    const server = createServer().listen(0, '127.0.0.1', () => {
      const { port } = server.address();
      server.close(() => done(port));
    });
  });
}

/// Returns the example with the port, the files and the certificate of a test.
function prepared(name, place, port) {
  return readFileSync(join(root, 'packaging/web/examples', name), 'utf8')
    .replace(/^.*\[::\]:443.*\n/m, '')
    .replace(/listen 443/, `listen 127.0.0.1:${port}`)
    .replace(/\*:443/, `127.0.0.1:${port}`)
    .replace(/\/etc\/ssl\/\S*\.pem/, join(place, 'certificate'))
    .replace(/\/etc\/ssl\/\S*\.key/, join(place, 'key'))
    .replaceAll('/usr/share/quorin-web', join(place, 'site'));
}

/// What an installed server has around its example. Started by root, it gives up the rights of root.
const around = {
  'nginx.conf': (place, text) => {
    const temporary = ['client_body', 'proxy', 'fastcgi', 'uwsgi', 'scgi'].map((kind) => `${kind}_temp_path ${place};`);
    return `daemon off; pid ${place}/pid; events {}\nhttp {\naccess_log off;\n${temporary.join('\n')}\n${text}}\n`;
  },
  'apache.conf': (place, text, port) => {
    const modules = ModulesOfApache.map((name) => `LoadModule ${name}_module ${Servers}/usr/lib/apache2/modules/mod_${name}.so`);
    return `${modules.join('\n')}\nUser nobody\nGroup nogroup\nServerRoot ${place}\nServerName localhost\nPidFile ${place}/pid\n`
      + `DefaultRuntimeDir ${place}\nMutex file:${place}\nErrorLog ${place}/errors\nTypesConfig /dev/null\n`
      + `Listen 127.0.0.1:${port}\n${text}`;
  },
};

const commands = {
  'nginx.conf': (file) => [join(Servers, 'usr/sbin/nginx'), '-e', 'stderr', '-c', file],
  'apache.conf': (file) => [join(Servers, 'usr/sbin/apache2'), '-D', 'FOREGROUND', '-f', file],
};

/// Starts the server of an example, which it has to find without fault. Returns {address, stop}.
export async function startExample(name) {
  const place = mkdtempSync(join(tmpdir(), 'quorin-server-'));
  chmodSync(place, 0o755);
  cpSync(Site, join(place, 'site'), { recursive: true });
  execFileSync('openssl', ['req', '-x509', '-newkey', 'rsa:2048', '-nodes', '-subj', '/CN=localhost', '-days', '2',
    '-keyout', join(place, 'key'), '-out', join(place, 'certificate')], { stdio: 'ignore' });
  const port = await freePort();
  const file = join(place, 'conf');
  writeFileSync(file, around[name](place, prepared(name, place, port), port));
  const [program, ...words] = commands[name](file);
  const env = { ...process.env, LD_LIBRARY_PATH: join(Servers, 'usr/lib/x86_64-linux-gnu') };
  execFileSync(program, [...words, '-t'], { env, stdio: ['ignore', 'ignore', 'pipe'] });
  const server = spawn(program, words, { env, stdio: ['ignore', 'ignore', 'inherit'] });
  const ended = new Promise((done) => server.on('exit', done));
  return {
    address: `https://localhost:${port}/`,
    async stop() {
      server.kill('SIGTERM');
      await ended;
      rmSync(place, { recursive: true });
    },
  };
}
