// SPDX-License-Identifier: MIT
// Keeps one whole version of the page in the browser, and answers for the server from then on. A newer version is another
// worker with a cache of its own, which waits until no page of this one is open, or until a person starts it.
const Site = {}; // script/web-site writes here: build, policy, and the files by address with their hashes

const scope = self.registration.scope;
const OurCaches = `quorin ${scope} `; // an origin may have two of these pages, in different folders
const Cache = OurCaches + Site.build;

/// What the page needs is said here too: it works from a server that sends none of it.
function headersOf(answer, address) {
  const isProgram = address.endsWith('.wasm');
  return {
    'Content-Type': isProgram ? 'application/wasm' : answer.headers.get('Content-Type'),
    'Content-Security-Policy': `${Site.policy}; frame-ancestors 'none'`,
    'Cross-Origin-Opener-Policy': 'same-origin',
    'Cross-Origin-Embedder-Policy': 'require-corp',
  };
}

/// Returns a file of exactly this version: while a server is given new files, it may have those of two.
async function fetched([address, integrity]) {
  const answer = await fetch(new URL(address, scope), { integrity, cache: 'no-cache' });
  if (!answer.ok) throw new Error(`${address}: the server answers ${answer.status}`);
  return { address, kept: new Response(await answer.arrayBuffer(), { headers: headersOf(answer, address) }) };
}

/// All files or none: a version is kept when the last of them has come.
async function keepAll() {
  const files = await Promise.all(Object.entries(Site.files).map(fetched));
  try {
    const cache = await caches.open(Cache);
    await Promise.all(files.map(({ address, kept }) => cache.put(new URL(address, scope), kept)));
  } catch (why) {
    await caches.delete(Cache);
    throw why;
  }
}

async function removeOthers() {
  const names = await caches.keys();
  await Promise.all(names.filter((name) => name.startsWith(OurCaches) && name !== Cache).map((name) => caches.delete(name)));
}

/// The address of a file of this version in the cache; undefined for anything else. What stands behind a ? is for the page.
function keptAddress(request) {
  const url = new URL(request.url);
  const address = url.origin + url.pathname === scope ? 'index.html' : (url.origin + url.pathname).slice(scope.length);
  return request.method === 'GET' && url.href.startsWith(scope) && Object.hasOwn(Site.files, address)
    ? new URL(address, scope) : undefined;
}

/// A browser that has removed the cache alone is given the server's answer.
async function answered(request, address) {
  return (await caches.match(address, { cacheName: Cache })) ?? fetch(request);
}

addEventListener('install', (event) => event.waitUntil(keepAll()));
addEventListener('activate', (event) => event.waitUntil(removeOthers().then(() => clients.claim())));
addEventListener('message', ({ data }) => {
  if (data === 'start') skipWaiting();
});
addEventListener('fetch', (event) => {
  const address = keptAddress(event.request);
  if (address) event.respondWith(answered(event.request, address));
});
