// Browser tests of the editor: headless Chromium (the system's own, driven by playwright-core) on the built
// page, served from a small static server in this process. Each test drives the page with real pointer and
// key events, compares the edited path data with what the library gives on its own, saves a screenshot
// and checks pixels where the picture must show something.
//
//   node tests/run.mjs [--site DIR] [--shots DIR] [--only NAME] [--speed]
//
// The `big drawing` test opens a 1 MB drawing and drags a vertex of a 10,000-vertex path; with --speed it
// also reports how long that took against the editor's targets (build-web/test-shots/speed.json). Times
// are reported, never asserted: a busy machine makes them longer, not the editor wrong.
import { chromium } from 'playwright-core';
import fs from 'node:fs';
import http from 'node:http';
import os from 'node:os';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const args = process.argv.slice(2);
const option = (name, fallback) => { const k = args.indexOf(name); return k >= 0 ? args[k + 1] : fallback; };
const site = path.resolve(option('--site', path.join(here, '../../build-web/site')));
const shots = path.resolve(option('--shots', path.join(here, '../../build-web/test-shots')));
const only = option('--only', null);
const speed = args.includes('--speed');
const browserPath = process.env.CHROMIUM || '/usr/bin/chromium';
fs.mkdirSync(shots, { recursive: true });

// ---- A static server for the built page ----
const types = { '.html': 'text/html', '.js': 'text/javascript', '.css': 'text/css', '.wasm': 'application/wasm',
                '.svg': 'image/svg+xml', '.txt': 'text/plain' };
const server = http.createServer((req, res) => {
  const url = new URL(req.url, 'http://localhost');
  const file = path.join(site, decodeURIComponent(url.pathname === '/' ? '/index.html' : url.pathname));
  if (!file.startsWith(site) || !fs.existsSync(file) || fs.statSync(file).isDirectory()) { res.writeHead(404); res.end(); return; }
  res.writeHead(200, { 'content-type': types[path.extname(file)] || 'application/octet-stream', 'cache-control': 'no-store' });
  fs.createReadStream(file).pipe(res);
});
await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
const base = `http://127.0.0.1:${server.address().port}/`;

const userDir = fs.mkdtempSync(path.join(os.tmpdir(), 'simplepath-editor-'));
const context = await chromium.launchPersistentContext(userDir, {
  executablePath: browserPath, headless: true, acceptDownloads: true, viewport: { width: 1000, height: 700 },
  deviceScaleFactor: 1,
  args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
         '--disable-background-networking', '--disable-component-update', '--disable-sync'],
});

// ---- Helpers ----
class Failure extends Error {}
function check(condition, what) { if (!condition) throw new Failure(what); }
function equal(actual, expected, what) {
  if (actual !== expected) throw new Failure(`${what}\n      expected: ${String(expected).slice(0, 400)}\n      actual:   ${String(actual).slice(0, 400)}`);
}

async function openPage(sample = 'icon.svg') {
  const page = await context.newPage();
  const errors = [];
  page.on('pageerror', (e) => errors.push(String(e)));
  page.on('console', (m) => { if (m.type() === 'error') errors.push(m.text()); });
  await page.goto(`${base}?open=${encodeURIComponent(sample)}`);
  await page.evaluate(() => window.editor.ready);
  page.errors = errors;
  return page;
}

const S = (page, method, ...a) => page.evaluate(([m, a]) => window.editor.session[m](...a), [method, a]);
const canvasBox = async (page) => page.locator('#canvas').boundingBox();
// A vertex's position on the page (role 0 incoming handle, 1 anchor, 2 outgoing handle).
async function vertexAt(page, element, p, triple, role) {
  const xy = await S(page, 'vertexScreen', element, p, triple, role);
  const box = await canvasBox(page);
  return xy && { x: xy[0], y: xy[1], pageX: box.x + xy[0], pageY: box.y + xy[1] };
}
// How many pixels within radius r of canvas point (x, y) satisfy the colour test.
async function pixelsNear(page, x, y, r, kind) {
  return page.evaluate(([x, y, r, kind]) => {
    const c = document.getElementById('canvas');
    const d = c.getContext('2d').getImageData(Math.round(x - r), Math.round(y - r), 2 * r + 1, 2 * r + 1).data;
    let n = 0;
    for (let i = 0; i < d.length; i += 4) {
      const [R, G, B, A] = [d[i], d[i + 1], d[i + 2], d[i + 3]];
      if (A < 128) continue;
      if (kind === 'dark' && R < 90 && G < 90 && B < 90) n++;
      else if (kind === 'red' && R > 160 && G < 110 && B < 110) n++;
      else if (kind === 'blue' && B > 150 && B - R > 50) n++;
      else if (kind === 'ink' && (R < 200 || G < 200 || B < 200)) n++;
    }
    return n;
  }, [x, y, r, kind]);
}
async function shot(page, name) { await page.screenshot({ path: path.join(shots, `${name}.png`) }); }
// The path data of an element, and the whole saved document.
const data = (page, element) => S(page, 'elementPathData', element);
const saved = (page) => page.evaluate(() => window.editor.savedText());
async function drag(page, from, to, { steps = 8, during, modifiers = [] } = {}) {
  await page.mouse.move(from.x, from.y);
  await page.mouse.down();
  for (const m of modifiers) await page.keyboard.down(m);
  for (let k = 1; k <= steps; k++) {
    await page.mouse.move(from.x + (to.x - from.x) * k / steps, from.y + (to.y - from.y) * k / steps);
    if (k === Math.ceil(steps / 2) && during) await during();
  }
  await page.mouse.up();
  for (const m of modifiers) await page.keyboard.up(m);
}
// The handle of an element that lies farthest from every anchor on the canvas, so a click there is
// unambiguous.
async function loneHandle(page, element) {
  return page.evaluate((element) => {
    const s = window.editor.session;
    let best = null;
    const anchors = [];
    for (let p = 0; ; p++) {
      if (!s.vertexScreen(element, p, 0, 1)) break;
      for (let t = 0; s.vertexScreen(element, p, t, 1); t++) anchors.push(s.vertexScreen(element, p, t, 1));
    }
    for (let p = 0; s.vertexScreen(element, p, 0, 1); p++) {
      for (let t = 0; s.vertexScreen(element, p, t, 1); t++) {
        for (const role of [0, 2]) {
          const h = s.vertexScreen(element, p, t, role);
          const gap = Math.min(...anchors.map((a) => Math.hypot(a[0] - h[0], a[1] - h[1])));
          if (!best || gap > best.gap) best = { p, t, role, gap, x: h[0], y: h[1] };
        }
      }
    }
    return best;
  }, element);
}

// ---- Tests ----
const tests = [];
const test = (name, body) => tests.push({ name, body });

test('load-sample', async (page) => {
  equal(await S(page, 'elementCount'), 4, 'icon.svg has four path elements');
  await shot(page, 'load-sample');
  // Every anchor is drawn where the path data puts it; far from the drawing the canvas is blank.
  for (const [e, p, t] of [[0, 0, 0], [1, 0, 1], [3, 1, 0]]) {
    const a = await vertexAt(page, e, p, t, 1);
    check(await pixelsNear(page, a.x, a.y, 4, 'dark') >= 6, `anchor ${e}/${p}/${t} is drawn at (${a.x}, ${a.y})`);
  }
  equal(await pixelsNear(page, 8, 8, 6, 'ink'), 0, 'the corner far from the drawing is blank');
  equal(await page.locator('#message').isHidden(), true, 'no message after opening a good drawing');
  // Every bundled drawing opens, including those exported by other editors (groups, transforms, styles).
  for (const file of fs.readdirSync(path.join(site, 'samples')).filter((f) => f.endsWith('.svg'))) {
    equal(await page.evaluate((f) => window.editor.openSample(f), file), true, `${file} opens`);
    check(await S(page, 'vertexCount') > 0, `${file} has vertices`);
    equal(await saved(page), fs.readFileSync(path.join(site, 'samples', file), 'utf8'), `${file} saves unchanged`);
  }
  // The file picker opens a drawing too.
  await page.setInputFiles('#file', path.join(site, 'samples', 'exported-logo.svg'));
  await page.waitForFunction(() => document.getElementById('docname').textContent === 'exported-logo.svg');
  await shot(page, 'file-picker');
});

test('drag-handle', async (page) => {
  const h = await loneHandle(page, 1);
  check(h && h.gap > 12, 'the drop has a handle away from its anchors');
  const box = await canvasBox(page);
  const from = { x: Math.round(h.x), y: Math.round(h.y) };
  const to = { x: from.x + 37, y: from.y - 23 };
  const expected = await S(page, 'libraryDragAnswer', 1, h.p, h.t, h.role, from.x, from.y, to.x, to.y, false);
  let red = 0;
  await drag(page, { x: box.x + from.x, y: box.y + from.y }, { x: box.x + to.x, y: box.y + to.y }, {
    during: async () => {
      await shot(page, 'drag-handle-during');
      red = await pixelsNear(page, (from.x + to.x) / 2, (from.y + to.y) / 2, 5, 'red'); // the pointer is halfway
    } });
  check(red > 0, 'the rubber band is drawn under the pointer during the drag');
  equal(await data(page, 1), expected, 'the dragged handle gives the library\'s path data');
  await shot(page, 'drag-handle');
  const moved = await vertexAt(page, 1, h.p, h.t, h.role);
  check(Math.abs(moved.x - h.x - (to.x - from.x)) < 1e-6 && Math.abs(moved.y - h.y - (to.y - from.y)) < 1e-6,
        'the handle moves with the pointer');
  check(await pixelsNear(page, moved.x, moved.y, 3, 'blue') > 0, 'the moved handle is drawn where the path data puts it');
});

test('drag-snapped', async (page) => {
  const h = await loneHandle(page, 1);
  const box = await canvasBox(page);
  const from = { x: Math.round(h.x), y: Math.round(h.y) };
  const to = { x: from.x + 41, y: from.y + 13 };
  const expected = await S(page, 'libraryDragAnswer', 1, h.p, h.t, h.role, from.x, from.y, to.x, to.y, true);
  const free = await S(page, 'libraryDragAnswer', 1, h.p, h.t, h.role, from.x, from.y, to.x, to.y, false);
  check(expected !== free, 'the snap changes this drag');
  await drag(page, { x: box.x + from.x, y: box.y + from.y }, { x: box.x + to.x, y: box.y + to.y }, { modifiers: ['Shift'] });
  equal(await data(page, 1), expected, 'Shift snaps the handle as the library does');
  await shot(page, 'drag-snapped');
  // The other modifier keeps the anchor on its horizontal line.
  const a = await vertexAt(page, 2, 0, 0, 1);
  await drag(page, { x: Math.round(a.pageX), y: Math.round(a.pageY) }, { x: Math.round(a.pageX) + 30, y: Math.round(a.pageY) + 4 }, { modifiers: ['Control'] });
  const b = await vertexAt(page, 2, 0, 0, 1);
  check(Math.abs(b.y - a.y) < 1e-9 && b.x > a.x + 20, `Control keeps the anchor on its axis (${a.x},${a.y} -> ${b.x},${b.y})`);
});

test('multi-select-drag', async (page) => {
  // Shift-click two anchors, then a box adds the rest of a path; drag them all by one anchor.
  const a0 = await vertexAt(page, 3, 0, 0, 1);
  const a1 = await vertexAt(page, 3, 0, 1, 1);
  await page.keyboard.down('Shift');
  await page.mouse.click(a0.pageX, a0.pageY);
  await page.mouse.click(a1.pageX, a1.pageY);
  await page.keyboard.up('Shift');
  equal(await S(page, 'selectionSize'), 2, 'Shift-click selects two anchors');
  const box = await canvasBox(page);
  const before = [];
  for (const t of [0, 1]) before.push(await vertexAt(page, 3, 0, t, 1));
  const untouched = await vertexAt(page, 1, 0, 0, 1);
  let red = 0;
  await drag(page, { x: a0.pageX, y: a0.pageY }, { x: a0.pageX + 30, y: a0.pageY + 20 }, {
    during: async () => {
      await shot(page, 'multi-select-during');
      red = await pixelsNear(page, a1.x + 15, a1.y + 10, 5, 'red'); // halfway: the other anchor follows
    } });
  check(red > 0, 'the moved selection is drawn as a rubber band during the drag');
  for (const t of [0, 1]) {
    const after = await vertexAt(page, 3, 0, t, 1);
    check(Math.abs(after.x - before[t].x - 30) < 1e-6 && Math.abs(after.y - before[t].y - 20) < 1e-6, `selected anchor ${t} moved with the drag`);
  }
  const still = await vertexAt(page, 1, 0, 0, 1);
  check(still.x === untouched.x && still.y === untouched.y, 'unselected vertices stay');
  await shot(page, 'multi-select-drag');
  // A box around the drop selects its anchors; the highlight inside it belongs to another element, and a
  // selection keeps to one element.
  await page.mouse.click(box.x + 5, box.y + 5);
  equal(await S(page, 'selectionSize'), 0, 'a click on empty canvas clears the selection');
  const drop = [];
  let anchors = 0;
  for (let t = 0; await S(page, 'vertexScreen', 1, 0, t, 1); t++, anchors++) {
    for (const role of [0, 1, 2]) drop.push(await S(page, 'vertexScreen', 1, 0, t, role));
  }
  // Corners beyond the pick tolerance from every vertex, so the press starts a box and not a drag.
  const lo = [Math.min(...drop.map((q) => q[0])) - 8, Math.min(...drop.map((q) => q[1])) - 8];
  const hi = [Math.max(...drop.map((q) => q[0])) + 8, Math.max(...drop.map((q) => q[1])) + 8];
  let boxShown = 0;
  await drag(page, { x: box.x + lo[0], y: box.y + lo[1] }, { x: box.x + hi[0], y: box.y + hi[1] }, { steps: 4,
    during: async () => { boxShown = await pixelsNear(page, lo[0], lo[1], 2, 'blue'); } });
  check(boxShown > 0, 'the selection box is drawn during the drag');
  equal(await S(page, 'selectionSize'), anchors, 'a box around the drop selects its anchors');
  await shot(page, 'box-select');
  equal(await S(page, 'undo'), true, 'the multiple drag undoes in one step');
  equal(await S(page, 'undo'), false, 'and it was the only step');
});

test('insert-delete-mode', async (page) => {
  const original = await saved(page);
  const count = await S(page, 'vertexCount');
  // Hover finds the closest point of a segment; a double-click there inserts a vertex.
  const a = await vertexAt(page, 1, 0, 0, 1);
  const b = await vertexAt(page, 1, 0, 1, 1);
  await page.mouse.move((a.pageX + b.pageX) / 2, (a.pageY + b.pageY) / 2);
  const hx = await S(page, 'hoverX'), hy = await S(page, 'hoverY');
  check(Number.isFinite(hx), 'hover finds the closest point of the curve');
  check((await page.locator('#hover').textContent()).startsWith('closest point'), 'the hover position is shown');
  const box = await canvasBox(page);
  await page.mouse.dblclick(box.x + hx, box.y + hy);
  equal(await S(page, 'vertexCount'), count + 1, 'double-click on a segment inserts a vertex');
  await shot(page, 'insert');
  // Click the new anchor, switch modes by key, delete it.
  const n = await vertexAt(page, 1, 0, 1, 1);
  check(Math.hypot(n.x - hx, n.y - hy) < 2, 'the new vertex lies where the pointer was');
  await page.mouse.click(n.pageX, n.pageY);
  equal(await S(page, 'selectionSize'), 1, 'a click selects the anchor');
  await page.keyboard.press('l');
  const h0 = await vertexAt(page, 1, 0, 1, 0);
  check(h0.x === n.x && h0.y === n.y, 'L makes the vertex straight: its handles retract onto the anchor');
  await shot(page, 'mode-straight');
  await page.keyboard.press('c');
  await page.keyboard.press('y');
  await page.keyboard.press('s');
  await page.keyboard.press('Delete');
  equal(await S(page, 'vertexCount'), count, 'Delete removes the selected vertex');
  equal(await S(page, 'undoDepth'), 6, 'six undoable steps');
  for (let k = 0; k < 6; k++) await page.keyboard.press('Control+z');
  equal(await saved(page), original, 'undoing everything gives back the original bytes');
  const steps = [];
  for (let k = 0; k < 6; k++) { await page.keyboard.press('Control+Shift+z'); steps.push(await S(page, 'vertexCount')); }
  equal(await S(page, 'vertexCount'), count, 'redo replays every step');
  equal(steps[0], count + 1, 'the first redo is the insertion');
});

test('split-join', async (page) => {
  await page.evaluate(() => window.editor.openSample('open-paths.svg'));
  const original = await saved(page);
  const before = await data(page, 0);
  const subpaths = (d) => (d.match(/M/g) || []).length;
  const a = await vertexAt(page, 0, 0, 1, 1);
  await page.mouse.click(a.pageX, a.pageY);
  await page.keyboard.press('x');
  const split = await data(page, 0);
  equal(subpaths(split), subpaths(before) + 1, 'X splits the path at the selected anchor');
  await shot(page, 'split');
  // Join the two new ends back together.
  const last = await page.evaluate(() => { const s = window.editor.session; let p = 0; while (s.vertexScreen(0, p + 1, 0, 1)) p++; return p; });
  let end = 0; while (await S(page, 'vertexScreen', 0, last - 1, end + 1, 1)) end++;
  await S(page, 'selectAnchor', 0, last - 1, end, false);
  await S(page, 'selectAnchor', 0, last, 0, true);
  await page.keyboard.press('j');
  equal(subpaths(await data(page, 0)), subpaths(before), 'J joins the two selected ends');
  await shot(page, 'join');
  await page.keyboard.press('Control+z');
  equal(await data(page, 0), split, 'undo of the join gives the split pieces back');
  await page.keyboard.press('Control+z');
  equal(await saved(page), original, 'undo of the split gives back the original bytes');
});

test('close-slice', async (page) => {
  await page.evaluate(() => window.editor.openSample('open-paths.svg'));
  const original = await saved(page);
  // O closes the open path of the selected anchor.
  const a = await vertexAt(page, 2, 0, 1, 1);
  await page.mouse.click(a.pageX, a.pageY);
  await page.keyboard.press('o');
  check((await data(page, 2)).endsWith('Z'), 'O closes the zigzag');
  await shot(page, 'close');
  await page.keyboard.press('Control+z');
  equal(await saved(page), original, 'undo of the close gives back the original bytes');
  // K, then two clicks on the wave's curve: the cut runs between them, one undoable step.
  const box = await canvasBox(page);
  const onCurve = async (segment) => {
    const [x, y] = await S(page, 'curveScreen', 0, 0, segment, 0.4);
    return { x: box.x + x, y: box.y + y };
  };
  const first = await onCurve(0);
  const second = await onCurve(2);
  const before = await data(page, 0);
  await page.keyboard.press('k');
  await page.mouse.click(first.x, first.y);
  equal(await S(page, 'slicePending'), true, 'the first click marks the start of the cut');
  check(await pixelsNear(page, first.x - box.x, first.y - box.y, 6, 'red') > 0, 'the first point is marked');
  await shot(page, 'slice-first-point');
  await page.mouse.click(second.x, second.y);
  const after = await data(page, 0);
  check(after !== before, `the slice changes the wave (${await page.locator('#message').textContent()})`);
  equal(await S(page, 'undoDepth'), 1, 'adding the two cut vertices and slicing is one undoable step');
  await shot(page, 'slice');
  await page.keyboard.press('Control+z');
  equal(await saved(page), original, 'one undo takes the whole slice back to the original bytes');
  await page.keyboard.press('Control+Shift+z');
  equal(await data(page, 0), after, 'redo makes the same slice');
});

test('save', async (page) => {
  await page.evaluate(() => window.editor.openSample('exported-drawing.svg'));
  const original = await saved(page);
  const a = await vertexAt(page, 0, 0, 0, 1);
  await drag(page, { x: a.pageX, y: a.pageY }, { x: a.pageX + 12, y: a.pageY + 9 });
  const [download] = await Promise.all([page.waitForEvent('download'), page.click('#save')]);
  const text = fs.readFileSync(await download.path(), 'utf8');
  equal(text, await saved(page), 'Save writes the document the page shows');
  check(text !== original, 'the saved drawing holds the edit');
  // Only the edited path's data differs: everything before it and after it is byte for byte the same.
  let head = 0; while (text[head] === original[head]) head++;
  let tail = 0; while (text[text.length - 1 - tail] === original[original.length - 1 - tail]) tail++;
  const changedSpan = original.slice(head, original.length - tail);
  check(!/[<>]/.test(changedSpan), `only attribute text changed, no markup (${changedSpan.slice(0, 80)})`);
  const reopened = await page.evaluate((t) => window.editor.openText('again.svg', t), text);
  equal(reopened, true, 'the saved drawing opens again');
});

test('bad-input', async (page) => {
  const before = await saved(page);
  const cases = [
    ['broken.svg', '<svg xmlns="http://www.w3.org/2000/svg"><path d="M0 0L1 1"</svg>', /not a well-formed XML/],
    ['empty.svg', '<svg xmlns="http://www.w3.org/2000/svg"><rect width="4" height="4"/></svg>', /no <path> elements/],
    ['bad-data.svg', '<svg xmlns="http://www.w3.org/2000/svg"><path id="p" d="M10 10 L20 x"/></svg>', /path 1 \(id "p"\).*offset/],
    ['text.svg', 'hello', /not a well-formed XML/],
  ];
  for (const [name, text, pattern] of cases) {
    equal(await page.evaluate(([n, t]) => window.editor.openText(n, t), [name, text]), false, `${name} is refused`);
    const message = await page.locator('#message').textContent();
    check(pattern.test(message) && await page.locator('#message').isVisible(), `${name}: a clear message (${message})`);
    equal(await saved(page), before, `${name}: the open drawing is untouched`);
  }
  await shot(page, 'bad-input');
  // The editor still works.
  const a = await vertexAt(page, 0, 0, 0, 1);
  await drag(page, { x: a.pageX, y: a.pageY }, { x: a.pageX + 10, y: a.pageY });
  check(await saved(page) !== before, 'editing goes on after refused files');
  equal(page.errors.length, 0, `no script errors (${page.errors.join('; ')})`);
});

test('big drawing', async (page) => {
  // A 10,000-vertex closed path of cubic segments, in a drawing of about 1 MB.
  const svg = await page.evaluate(() => {
    const parts = ['<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 2000 2000">\n'];
    let bytes = 0, paths = 0;
    while (bytes < 1_000_000) {
      let d = '';
      for (let i = 0; i < 10000; i++) {
        const t = (i / 10000) * 2 * Math.PI, r = 900 + 40 * Math.sin(37 * t) + paths * 3;
        const x = 1000 + r * Math.cos(t), y = 1000 + r * Math.sin(t);
        d += i === 0 ? `M${x.toFixed(3)} ${y.toFixed(3)}` : `C${(x + 0.2).toFixed(3)} ${(y - 0.3).toFixed(3)} ${(x - 0.2).toFixed(3)} ${(y + 0.1).toFixed(3)} ${x.toFixed(3)} ${y.toFixed(3)}`;
      }
      parts.push(`<path d="${d}Z"/>\n`);
      bytes += d.length; paths++;
    }
    parts.push('</svg>\n');
    return parts.join('');
  });
  const loads = [];
  for (let k = 0; k < 5; k++) {
    // From the text to the first frame on screen: parse, paths, first drawing, and the frame after.
    const [ok, ms] = await page.evaluate(async (t) => {
      const started = performance.now();
      const opened = window.editor.openText('big.svg', t);
      await new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve, 0)));
      return [opened, performance.now() - started];
    }, svg);
    check(ok, 'the big drawing opens');
    loads.push(ms);
  }
  // The least disturbed of five loads: the machine may be busy with other work, which only adds time.
  loads.sort((a, b) => a - b);
  const load = loads[0];
  // Drag one anchor of the first 10,000-vertex path and time each frame: move, rubber band, canvas.
  await page.evaluate(() => { window.measureFrames = true; });
  const a = await vertexAt(page, 0, 0, 5000, 1);
  const before = await saved(page);
  await page.mouse.move(a.pageX, a.pageY);
  await page.mouse.down();
  const frames = [];
  for (let k = 1; k <= 60; k++) {
    await page.mouse.move(a.pageX + k, a.pageY + (k % 7));
    frames.push(await page.evaluate(() => window.lastFrameMs));
  }
  await shot(page, 'speed-drag');
  await page.mouse.up();
  check(await saved(page) !== before, 'the drag changed the drawing');
  if (!speed) return;
  frames.sort((x, y) => x - y);
  const median = frames[frames.length >> 1];
  const report = { bytes: svg.length, vertices: await S(page, 'vertexCount'), loadMs: +load.toFixed(1),
                   loadMedianMs: +loads[2].toFixed(1),
                   dragFrameMedianMs: +median.toFixed(3), dragFrameMaxMs: +frames[frames.length - 1].toFixed(3) };
  fs.writeFileSync(path.join(shots, 'speed.json'), JSON.stringify(report, null, 2) + '\n');
  console.log(`    speed: ${JSON.stringify(report)}`);
  console.log(`    drag frame median ${median.toFixed(2)} ms (target: under 4 ms)`);
  console.log(`    loading ${svg.length} bytes: ${load.toFixed(0)} ms, best of 5 (target: under 300 ms)`);
});

// ---- Run ----
let failed = 0;
for (const { name, body } of tests) {
  if (only && name !== only) continue;
  const page = await openPage();
  const started = Date.now();
  try {
    await body(page);
    if (page.errors.length) throw new Failure(`script errors: ${page.errors.join('; ')}`);
    console.log(`ok   ${name} (${Date.now() - started} ms)`);
  } catch (e) {
    failed++;
    console.log(`FAIL ${name}: ${e instanceof Failure ? e.message : e.stack}`);
    await shot(page, `${name}-failure`).catch(() => {});
  } finally {
    await page.close();
  }
}
await context.close();
server.close();
fs.rmSync(userDir, { recursive: true, force: true });
console.log(failed ? `${failed} browser test(s) failed` : 'all browser tests passed');
process.exit(failed ? 1 : 0);
