// SPDX-License-Identifier: MIT
// The version of the page that the browser keeps, and the newer one that waits for its turn (service_worker.js).
import { Demo, lockOf, Own } from './data_folders.js';
import { readMark, writeMark } from './marks.js';

/// How long the page before this one, of the same tab, may take to go; and a version to take over.
const Patience = 3000; // milliseconds
const LoadedAgain = 'quorin loaded again';

const late = () => new Promise((done) => setTimeout(done, Patience, false));
const taken = (workers) =>
  new Promise((done) => workers.addEventListener('controllerchange', () => done(true), { once: true }));

/// Returns true when a worker has all its files, and false if it could not get them.
function works(worker) {
  return new Promise((done) => {
    const look = () => {
      if (worker.state === 'activated') done(true);
      if (worker.state === 'redundant') done(false);
    };
    worker.addEventListener('statechange', look);
    look();
  });
}

export class Versions {
  /// `changed` is called when a version is kept, or a newer one is ready. `workers`: navigator.serviceWorker, undefined in
  /// a browser without it.
  constructor(workers, changed) {
    Object.assign(this, { workers, changed });
    workers?.addEventListener('controllerchange', changed);
  }

  /// True if the page starts without its server.
  worksOffline() {
    return this.registration?.active?.state === 'activated';
  }

  /// The first version of all waits for a moment, too.
  newerIsReady() {
    return Boolean(this.registration?.waiting && this.registration.active);
  }

  /// Returns "start" if this page may start, "again" if it is loaded again instead: as the newer version that has waited
  /// for that, or as what the browser keeps, with the headers that the server does not send. "never" if that has not helped.
  async beforeStart(isIsolated) {
    this.registration = await this.workers?.getRegistration().catch(() => undefined);
    if (this.newerIsReady() && (await this.dataIsFree()) && (await this.startNewer())) return 'again';
    if (isIsolated) writeMark(LoadedAgain, false, 'sessionStorage');
    return isIsolated ? 'start' : this.withKeptHeaders();
  }

  /// Another tab may have a record open: it goes on with the version that it has begun with.
  async dataIsFree() {
    const signal = AbortSignal.timeout(Patience);
    const free = [Own, Demo].map((folder) => navigator.locks.request(lockOf(folder), { signal }, () => true).catch(() => false));
    return (await Promise.all(free)).every(Boolean);
  }

  async startNewer() {
    const done = Promise.race([taken(this.workers), late()]);
    this.registration.waiting.postMessage('start');
    if (await done) location.reload();
    return done;
  }

  async withKeptHeaders() {
    const isSecondTime = readMark(LoadedAgain, 'sessionStorage');
    await this.keep();
    const worker = this.registration?.active ?? this.registration?.installing ?? this.registration?.waiting;
    if (isSecondTime || !worker || !(await works(worker))) return 'never';
    writeMark(LoadedAgain, true, 'sessionStorage');
    if (!readMark(LoadedAgain, 'sessionStorage')) return 'never'; // it would be loaded again and again
    location.reload();
    return 'again';
  }

  /// Has the browser keep this version, and look for a newer one.
  async keep() {
    try {
      this.registration = await this.workers?.register('service_worker.js', { updateViaCache: 'none' });
    } catch {
      return; // "About this page" says that it needs its server
    }
    this.registration?.addEventListener('updatefound', () => this.follow());
    this.follow();
  }

  follow() {
    this.registration?.installing?.addEventListener('statechange', this.changed);
    this.changed();
  }
}
