// SPDX-License-Identifier: MIT
// The page: it draws what the program in the worker shows, and tells it what a person does.
import { Boxes } from './boxes.js';
import { folderOfPage } from './data_folders.js';
import { changeOver, Demonstration, isDemo, simulatedPorts } from './demonstration.js';
import { Exchange } from './exchange.js';
import { Fields } from './fields.js';
import { measureFonts } from './fonts.js';
import { Keyboard } from './keyboard.js';
import { Link } from './link.js';
import { drawKeys, drawList, Menus, Popup } from './menus.js';
import { More } from './more.js';
import { Notices } from './notices.js';
import { drawGrid } from './painting.js';
import { drawBar, Pointer } from './pointer.js';
import { Ports } from './ports.js';
import { PortsDialog } from './ports_dialog.js';
import { Recovery } from './recovery.js';
import { makeRing, RingWriter } from './ring.js';
import { Sizes } from './sizes.js';
import { playTone } from './tones.js';
import { Upkeep } from './upkeep.js';

const of = (id) => document.getElementById(id);
const form = of('form');
const room = of('room');

const isTouched = matchMedia('(pointer: coarse)').matches;
const sizes = new Sizes(room, isTouched);
const view = { mirror: null, scale: 1, stageSince: 0 };
window.quorin = view; // the tests look at it
const acts = makeRing();
const portBytes = makeRing();
const ring = new RingWriter(acts);
let serial = 0;

/// Sends what a person has done, with what it was meant for. Returns its number.
function send(kind, more = {}) {
  serial += 1;
  ring.writeLine(JSON.stringify({ kind, serial, stage: view.mirror?.stage ?? 0, ...more }));
  return serial;
}

const popup = new Popup(of('popup'));
const fields = new Fields(send, (owner, texts, choose) =>
  popup.open(owner, texts.map((text) => ({ text, choose: () => choose(text) }))), of('field'));
const menus = new Menus(view, send, popup, [...document.querySelectorAll('#menus button')]);
const boxes = new Boxes(send, of('box'));
const recovery = new Recovery(of('recovery'), send);
const more = new More(of('more'), popup);
const exchange = new Exchange(send, more);
const ports = isDemo ? simulatedPorts : new Ports(navigator.serial, send, new RingWriter(portBytes, acts));
const portsDialog = new PortsDialog(of('ports'), ports, send);
const notices = new Notices(of('notice'), of('notices'), {
  confirm: (about) => upkeep.confirm(about) || send('notice', { words: about }),
  acts: { ports: () => portsDialog.open(), version: () => upkeep.startNewer(), ...exchange.acts() },
});
const link = new Link(of('link'), of('heard'), of('losses'), { choosePort: () => portsDialog.open(), send });
more.add('Ports…', () => portsDialog.open());
for (const [text, by] of [['Larger', 1], ['Smaller', -1]]) more.add(text, () => resize(by), (mirror) => mirror.resizable && sizes.can(by));
more.add(isDemo ? 'Leave the demonstration' : 'Demonstration', changeOver);
const demonstration = new Demonstration(of('demo'), of('afresh'), send);
const upkeep = new Upkeep(more, of('about'), draw);
new Pointer(view, send, { heading: of('heading'), grid: of('grid'), bar: of('bar') });
new Keyboard(view, send, fields, menus, popup);

// --- what is shown ---------------------------------------------------------------------------------------------------

/// The menus are where a thumb is: at the foot of a phone that is held upright, beside the form of one that is not.
function putMenus(mirror) {
  const isFlat = isTouched && innerHeight < 450;
  document.body.classList.toggle('side', isFlat);
  document.body.classList.toggle('foot', !isFlat && (mirror.softkeys || (isTouched && innerWidth < 600)));
}

/// A form of a fixed size is as large as the page has room for, in steps that keep it sharp.
function fit(mirror) {
  if (!mirror || mirror.resizable) {
    view.scale = sizes.scale();
    return;
  }
  const most = Math.min(room.clientWidth / mirror.form[0], room.clientHeight / mirror.form[1]);
  view.scale = most >= 1 ? Math.floor(most * 4) / 4 : most;
}

function show(mirror) {
  if (mirror.stage !== view.mirror?.stage) view.stageSince = performance.now();
  view.mirror = mirror;
  draw();
}

function draw() {
  const { mirror } = view;
  if (!mirror) return;
  putMenus(mirror);
  document.body.classList.toggle('fixed', !mirror.resizable);
  drawKeys(of('keys'), mirror.keys, send);
  fit(mirror);
  const { scale } = view;
  document.title = isDemo ? `${mirror.title} (demonstration)` : mirror.title;
  of('title').textContent = document.title;
  form.hidden = false;
  form.style.width = `${mirror.form[0] * scale}px`;
  form.style.height = `${mirror.form[1] * scale}px`;
  drawGrid(of('heading'), mirror.heading, scale);
  drawGrid(of('grid'), mirror.grid, scale);
  drawBar(of('bar'), of('thumb'), mirror.grid, scale);
  drawList(of('list'), mirror.list, scale, send);
  of('busy').hidden = mirror.status === null;
  of('busy').textContent = mirror.status ?? '';
  upkeep.see(mirror);
  notices.draw(upkeep.withNotices(mirror.notices));
  menus.draw(mirror);
  more.draw(mirror);
  const hadField = fields.isOpen();
  fields.draw(mirror, scale);
  boxes.draw(mirror.box);
  if (!fields.isOpen() && !mirror.box && (hadField || document.activeElement === document.body)) form.focus({ preventScroll: true });
  say((mirror.grid?.current ?? []).join(', '));
}

/// The current row, for a screen reader: the form is a picture to it.
function say(text) {
  if (of('said').textContent !== text) of('said').textContent = text;
}

/// Tells in words why there is no form, or no longer.
function tell(text, look) {
  const message = of('message');
  message.className = look;
  message.textContent = text;
  const again = document.createElement('button');
  Object.assign(again, { type: 'button', textContent: 'Start again', onclick: () => location.reload() });
  message.append(again);
  boxes.draw(null);
  exchange.stop();
  view.mirror = null;
  form.hidden = true;
  popup.close();
  for (const dialog of document.querySelectorAll('dialog[open]:not(#losses)')) dialog.close(); // that one has to be read
  for (const button of document.querySelectorAll('#menus button, #keys button, #state button, #demo button')) button.disabled = true;
}

// --- the room for the form -------------------------------------------------------------------------------------------

const sizeOfRoom = () => ({
  width: Math.floor(room.clientWidth / view.scale),
  height: Math.floor(room.clientHeight / view.scale),
});

function resize(by) {
  sizes.change(by);
  tellSize();
}

let toldSize = '';
function tellSize() {
  fit(view.mirror);
  const size = sizeOfRoom();
  if (view.mirror?.resizable && toldSize !== JSON.stringify(size)) {
    toldSize = JSON.stringify(size);
    send('size', size);
  }
  draw();
}

function followDensity() {
  matchMedia(`(resolution: ${devicePixelRatio}dppx)`).addEventListener('change', () => { draw(); followDensity(); }, { once: true });
}

// --- the worker ------------------------------------------------------------------------------------------------------

/// The words of the program's command line, from the page's address: ?device=palm&os-version=5.4
function wordsOfAddress() {
  const known = ['device', 'os-version', 'user', 'screen'];
  const words = [...new URLSearchParams(location.search)].filter(([name]) => known.includes(name));
  const all = words.flatMap(([name, value]) => ['--' + name, value]);
  fit(null);
  const { width, height } = sizeOfRoom();
  const isDesktop = !words.some(([name]) => name === 'device' || name === 'screen');
  if (isDemo) all.push('--demo');
  return isDesktop ? [...all, '--screen', `${Math.max(160, width)}x${Math.max(160, height)}`] : all;
}

function hear({ data }) {
  if (data.mirror !== undefined) {
    const isFirst = view.mirror === null;
    of('message').textContent = '';
    show(JSON.parse(data.mirror));
    if (isFirst) tellSize();
  } else if (data.link !== undefined) {
    link.show(JSON.parse(data.link));
  } else if (data.recovery !== undefined) {
    recovery.show(JSON.parse(data.recovery));
  } else if (data.instrument !== undefined) {
    demonstration.show(JSON.parse(data.instrument));
  } else if (data.port) {
    ports.hear(data.port);
  } else if (data.exchange !== undefined || data.given !== undefined) {
    exchange.hear(data);
  } else if (data.files !== undefined) {
    upkeep.count(data.files);
  } else if (data.tone) {
    playTone(data.tone);
  } else if (data.over !== undefined) {
    tell(data.over ? `The program has stopped: ${data.over}` : 'The program has ended.', data.over ? 'bad' : 'over');
  } else if (data.failed !== undefined) {
    tell(`Quorin can't run here: ${data.failed}`, 'bad');
  } else if (data.ended !== undefined) {
    if (data.ended !== 0 && !of('message').className) tell(`The program could not start.\n${data.said}`, 'bad');
  }
}

function start() {
  const worker = new Worker(new URL('worker.js', import.meta.url), { type: 'module' });
  worker.addEventListener('message', hear);
  worker.addEventListener('error', (event) =>
    tell(`The program could not be loaded: ${event.message ?? 'a file is missing on the server'}`, 'bad'));
  worker.postMessage({ acts, portBytes, fonts: measureFonts(), folder: folderOfPage(), words: wordsOfAddress() });
  ports.start();
  new ResizeObserver(tellSize).observe(room);
  followDensity();
}

// What is on the screen is saved when the record is left: the browser asks before it closes the page.
addEventListener('beforeunload', (event) => {
  if (view.mirror?.unsaved) event.preventDefault();
});

const next = await upkeep.beforeStart();
if (next === 'start') start();
if (next === 'never') tell(window.isSecureContext
  ? 'This page needs two headers from its server: Cross-Origin-Opener-Policy: same-origin, and '
    + 'Cross-Origin-Embedder-Policy: require-corp.'
  : 'This page works by HTTPS alone: its address has to begin with https://.', 'bad');
