// The editor page: opens SVG drawings, hands pointer and key gestures to the library's editor session
// (compiled to WebAssembly) and draws what the session's drawer recorded. No geometry is computed here.
'use strict';

const canvas = document.getElementById('canvas');
const ctx = canvas.getContext('2d');
const messageBox = document.getElementById('message');
const statusText = document.getElementById('status');
const hoverText = document.getElementById('hover');

// Two off-screen layers: the drawing at rest (redrawn after edits and view changes), and what stays put
// during a drag (drawn once when the drag starts). A frame copies one of them and draws on top.
const scene = document.createElement('canvas');
const background = document.createElement('canvas');

let Module = null;
let session = null;
// The open document: its name, its text as read, and where each path element's d attribute value sits
// in that text, so that saving rewrites only the paths that were edited and leaves every other byte.
let doc = null;
let dragging = false;
let panning = null;
let spaceDown = false;
let sceneDirty = true;
let slicing = false; // the next two clicks on curves cut the drawing between them

function setSlicing(on) {
  slicing = on;
  if (!on && session) session.cancelSlice();
  canvas.style.cursor = on ? 'crosshair' : '';
  document.getElementById('slice').classList.toggle('active', on);
}

const COLORS = { permanent: '#1b1b1b', kept: '#1b1b1b', rubber: '#d0342c', ghost: '#b8b8b8',
                 handle: '#5b8fd0', anchor: '#1b1b1b', selected: '#1f6fd6', hover: '#e07b00' };
const STYLE = [
  { stroke: COLORS.permanent, width: 1.25 }, // permanent
  { stroke: COLORS.kept, width: 1.25 },      // kept during a drag
  { stroke: COLORS.rubber, width: 1.5 },     // rubber band
  { stroke: COLORS.ghost, width: 1, dash: [4, 3] }, // the dragged path as it was
];

function showMessage(text, kind) {
  messageBox.textContent = text;
  messageBox.className = kind === 'info' ? 'info' : '';
  messageBox.hidden = !text;
}

// ---- Replaying the drawer's records onto a canvas ----

function records() {
  const address = session.recordsAddress();
  const length = session.recordsLength();
  return new Float64Array(Module.HEAPF64.buffer, address, length);
}

function anchorShape(c, mode, x, y, r) {
  if (mode === 0) { c.moveTo(x + r, y); c.arc(x, y, r, 0, 2 * Math.PI); }              // smooth: circle
  else if (mode === 2) { c.moveTo(x, y - r - 1); c.lineTo(x + r + 1, y); c.lineTo(x, y + r + 1); c.lineTo(x - r - 1, y); c.closePath(); } // symmetric: diamond
  else if (mode === 1) { c.rect(x - r, y - r, 2 * r, 2 * r); }                          // cusp: square
  else { c.moveTo(x + 2, y); c.arc(x, y, 2, 0, 2 * Math.PI); }                          // unknown: dot
}

// One cubic segment. A segment whose control polygon fits within half a pixel of its chord is drawn as
// the chord: the difference cannot show, and rasterising thousands of tiny curves is what makes a long
// path slow to draw.
function segment(c, x0, y0, x1, y1, x2, y2, x3, y3) {
  const dx = x3 - x0, dy = y3 - y0;
  const length = Math.hypot(dx, dy);
  if (length < 2) {
    const far = (x, y) => Math.abs((x - x0) * dy - (y - y0) * dx) > 0.5 * length || Math.abs(x - x0) + Math.abs(y - y0) > 2.5;
    if (!far(x1, y1) && !far(x2, y2)) { c.lineTo(x3, y3); return; }
  }
  c.bezierCurveTo(x1, y1, x2, y2, x3, y3);
}

function replay(c, rec) {
  let i = 0;
  const n = rec.length;
  const modePaths = [new Path2D(), new Path2D(), new Path2D(), new Path2D()];
  const handleLines = new Path2D();
  const handleDots = new Path2D();
  const rubberVertices = new Path2D();
  const rubberHandles = new Path2D();
  // Where vertices crowd closer than a marker's size (a long path seen whole), only the first marker in
  // each small cell of the canvas is drawn, and handles too short to grab are left out: the picture is
  // the same to the eye and costs a fraction to rasterise. The rubber band is always drawn whole.
  const taken = new Set();
  const free = (x, y) => {
    const key = Math.floor(x / 5) * 65536 + Math.floor(y / 5);
    if (taken.has(key)) return false;
    taken.add(key);
    return true;
  };
  const addVertex = (mode, bx, by, ax, ay, cx, cy, rubber) => {
    if (!rubber && !free(ax, ay)) return;
    const lines = rubber ? rubberHandles : handleLines;
    const shown = (hx, hy) => (rubber ? hx !== ax || hy !== ay : Math.abs(hx - ax) + Math.abs(hy - ay) >= 4);
    if (shown(bx, by)) { lines.moveTo(ax, ay); lines.lineTo(bx, by); handleDots.moveTo(bx + 2, by); handleDots.arc(bx, by, 2, 0, 2 * Math.PI); }
    if (shown(cx, cy)) { lines.moveTo(ax, ay); lines.lineTo(cx, cy); handleDots.moveTo(cx + 2, cy); handleDots.arc(cx, cy, 2, 0, 2 * Math.PI); }
    anchorShape(rubber ? rubberVertices : modePaths[mode >= 0 && mode <= 2 ? mode : 3], mode, ax, ay, 3);
  };
  while (i < n) {
    const op = rec[i];
    if (op === 1) { // curve
      const style = STYLE[rec[i + 1]] || STYLE[0];
      const closed = rec[i + 2] !== 0;
      const count = rec[i + 3];
      let k = i + 4;
      if (count > 0) {
        c.beginPath();
        c.moveTo(rec[k + 2], rec[k + 3]);
        for (let t = 1; t < count; t++) {
          const p = k + 6 * (t - 1), q = k + 6 * t;
          segment(c, rec[p + 2], rec[p + 3], rec[p + 4], rec[p + 5], rec[q], rec[q + 1], rec[q + 2], rec[q + 3]);
        }
        if (closed) {
          const p = k + 6 * (count - 1);
          segment(c, rec[p + 2], rec[p + 3], rec[p + 4], rec[p + 5], rec[k], rec[k + 1], rec[k + 2], rec[k + 3]);
          c.closePath();
        }
        c.strokeStyle = style.stroke; c.lineWidth = style.width; c.setLineDash(style.dash || []);
        c.stroke();
        c.setLineDash([]);
      }
      i = k + 6 * count;
    } else if (op === 2) { // vertices
      const rubber = rec[i + 1] === 2;
      const count = rec[i + 2];
      let k = i + 3;
      for (let t = 0; t < count; t++, k += 7) {
        addVertex(rec[k], rec[k + 1], rec[k + 2], rec[k + 3], rec[k + 4], rec[k + 5], rec[k + 6], rubber);
      }
      i = k;
    } else if (op === 3) { // edited triple
      addVertex(rec[i + 1], rec[i + 2], rec[i + 3], rec[i + 4], rec[i + 5], rec[i + 6], rec[i + 7], true);
      i += 8;
    } else if (op === 4) { // highlighted vertex: a ringed cross
      const x = rec[i + 1], y = rec[i + 2];
      c.beginPath(); c.arc(x, y, 6, 0, 2 * Math.PI); c.moveTo(x - 9, y); c.lineTo(x + 9, y); c.moveTo(x, y - 9); c.lineTo(x, y + 9);
      c.strokeStyle = COLORS.hover; c.lineWidth = 1; c.stroke();
      i += 3;
    } else if (op === 5) { // markers
      const kind = rec[i + 1], x = rec[i + 2], y = rec[i + 3];
      c.beginPath();
      if (kind === 1) { c.rect(x - 5, y - 5, 10, 10); c.fillStyle = COLORS.selected; c.fill(); }
      else if (kind === 2) { c.moveTo(x - 7, y - 7); c.lineTo(x + 7, y + 7); c.moveTo(x + 7, y - 7); c.lineTo(x - 7, y + 7); c.strokeStyle = COLORS.rubber; c.lineWidth = 2; c.stroke(); c.lineWidth = 1; }
      else { c.arc(x, y, 4, 0, 2 * Math.PI); c.fillStyle = COLORS.hover; c.fill(); }
      i += 4;
    } else if (op === 6) { // selection box
      c.setLineDash([5, 4]); c.strokeStyle = COLORS.selected; c.lineWidth = 1;
      c.strokeRect(rec[i + 1], rec[i + 2], rec[i + 3] - rec[i + 1], rec[i + 4] - rec[i + 2]);
      c.setLineDash([]);
      i += 5;
    } else {
      break; // an unknown record: stop rather than misread the rest
    }
  }
  c.lineWidth = 1;
  c.strokeStyle = COLORS.handle; c.stroke(handleLines);
  c.strokeStyle = COLORS.rubber; c.stroke(rubberHandles);
  c.fillStyle = '#fff'; c.fill(handleDots); c.strokeStyle = COLORS.handle; c.stroke(handleDots);
  for (let m = 0; m < 4; m++) {
    c.fillStyle = '#fff'; c.fill(modePaths[m]); c.strokeStyle = COLORS.anchor; c.stroke(modePaths[m]);
  }
  c.fillStyle = '#fff'; c.fill(rubberVertices); c.strokeStyle = COLORS.rubber; c.stroke(rubberVertices);
}

// ---- Frames ----

function clearLayer(c) { c.setTransform(1, 0, 0, 1, 0, 0); c.clearRect(0, 0, canvas.width, canvas.height); }

function redrawScene() {
  const c = scene.getContext('2d');
  clearLayer(c);
  if (session) { session.renderAll(); replay(c, records()); }
  sceneDirty = false;
}

function present(hover) {
  if (sceneDirty) redrawScene();
  clearLayer(ctx);
  ctx.drawImage(scene, 0, 0);
  if (hover && session) {
    const x = session.hoverX(), y = session.hoverY();
    if (Number.isFinite(x)) { ctx.beginPath(); ctx.arc(x, y, 4, 0, 2 * Math.PI); ctx.fillStyle = COLORS.hover; ctx.fill(); }
  }
  updateStatus();
}

// One frame of a drag: what stays put, then the rubber band the pick context draws.
function dragFrame() {
  clearLayer(ctx);
  ctx.drawImage(background, 0, 0);
  session.renderDrag();
  replay(ctx, records());
}

function startDragLayers() {
  const c = background.getContext('2d');
  clearLayer(c);
  session.renderBackground();
  replay(c, records());
}

function changed() { sceneDirty = true; present(false); }

function updateStatus() {
  if (!session) { statusText.textContent = ''; return; }
  statusText.textContent = `${session.elementCount()} paths · ${session.vertexCount()} vertices · ` +
    `${session.selectionSize()} selected · zoom ${(session.viewScale()).toPrecision(3)}`;
  document.getElementById('undo').disabled = session.undoDepth() === 0;
  document.getElementById('redo').disabled = session.redoDepth() === 0;
}

function resize() {
  const r = canvas.getBoundingClientRect();
  for (const c of [canvas, scene, background]) { c.width = Math.max(1, Math.round(r.width)); c.height = Math.max(1, Math.round(r.height)); }
  if (session) session.setViewport(canvas.width, canvas.height);
  changed();
}

// ---- Opening and saving ----

// Where each <path> element's d attribute value lies in the text, in document order; comments, CDATA
// sections, processing instructions and declarations are skipped so that text in them is not taken for
// markup. Null when the text does not scan as expected.
function scanPathAttributes(text) {
  const spans = [];
  let i = 0;
  const skipTo = (end, from) => { const k = text.indexOf(end, from); return k < 0 ? text.length : k + end.length; };
  while ((i = text.indexOf('<', i)) >= 0) {
    if (text.startsWith('<!--', i)) { i = skipTo('-->', i + 4); continue; }
    if (text.startsWith('<![CDATA[', i)) { i = skipTo(']]>', i + 9); continue; }
    if (text.startsWith('<?', i)) { i = skipTo('?>', i + 2); continue; }
    if (text.startsWith('<!', i)) { i = skipTo('>', i + 2); continue; }
    if (text[i + 1] === '/') { i = skipTo('>', i); continue; }
    const name = /^<([A-Za-z_][\w.:-]*)/.exec(text.slice(i, i + 200));
    if (!name) { i++; continue; }
    // The tag runs to the first '>' outside quotes.
    let k = i + name[0].length, quote = null, span = null;
    while (k < text.length) {
      const ch = text[k];
      if (quote) { if (ch === quote) quote = null; k++; continue; }
      if (ch === '"' || ch === "'") { quote = ch; k++; continue; }
      if (ch === '>') break;
      if (/\s/.test(ch)) {
        const m = /^\s+d\s*=\s*(["'])/.exec(text.slice(k, k + 64));
        if (m) {
          const start = k + m[0].length;
          const end = text.indexOf(m[1], start);
          if (end < 0) return null;
          span = { start, end };
          k = end + 1;
          continue;
        }
      }
      k++;
    }
    const local = name[1].split(':').pop();
    if (local === 'path') spans.push(span);
    i = k + 1;
  }
  return spans;
}

function transformListOf(element) {
  const lists = [];
  for (let e = element; e && e.nodeType === 1; e = e.parentNode) {
    const t = e.getAttribute('transform');
    if (t) lists.unshift(t);
  }
  return lists.join(' ');
}

// Opens a drawing. Anything wrong leaves the open drawing exactly as it was and says why on the page.
function openText(name, text) {
  const started = performance.now();
  const xml = new DOMParser().parseFromString(text, 'image/svg+xml');
  const error = xml.getElementsByTagName('parsererror')[0];
  if (error) {
    const detail = (error.textContent || '').replace(/\s+/g, ' ').trim().slice(0, 200);
    showMessage(`${name} is not a well-formed XML document, so it was not opened. ${detail}`);
    return false;
  }
  if (!xml.documentElement || xml.documentElement.localName !== 'svg') {
    showMessage(`${name} is not an SVG drawing (its root element is <${xml.documentElement.localName}>), so it was not opened.`);
    return false;
  }
  const elements = Array.from(xml.getElementsByTagNameNS('*', 'path'));
  if (elements.length === 0) {
    showMessage(`${name} holds no <path> elements: there is nothing to edit, so it was not opened.`);
    return false;
  }
  const next = new Module.EditorSession();
  for (let k = 0; k < elements.length; k++) {
    const e = elements[k];
    const problem = next.addElement(e.getAttribute('d') || '', transformListOf(e));
    if (problem) {
      next.delete();
      const id = e.getAttribute('id');
      showMessage(`${name}: path ${k + 1}${id ? ` (id "${id}")` : ''} has an error in its ${problem}. The drawing was not opened.`);
      return false;
    }
  }
  let spans = scanPathAttributes(text);
  if (!spans || spans.length !== elements.length) spans = null;
  setSlicing(false);
  if (session) session.delete();
  session = next;
  doc = { name, text, xml, elements, spans };
  session.setViewport(canvas.width, canvas.height);
  session.fitView();
  document.getElementById('docname').textContent = name;
  document.getElementById('sample').value = ''; // openSample names the sample again
  showMessage('');
  changed();
  window.lastOpenMs = performance.now() - started;
  return true;
}

function escapeAttribute(value) {
  return value.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/"/g, '&quot;').replace(/'/g, '&apos;');
}

// The drawing as SVG text: the text as read, with only the edited paths' d values replaced.
function savedText() {
  if (!doc) return '';
  if (doc.spans) {
    let out = doc.text;
    for (let k = doc.spans.length - 1; k >= 0; k--) {
      if (!session.elementChanged(k)) continue;
      const data = escapeAttribute(session.elementPathData(k));
      const span = doc.spans[k];
      if (span) out = out.slice(0, span.start) + data + out.slice(span.end);
      else {
        // A path without a d attribute that gained one: write it right after the element name.
        const open = out.lastIndexOf('<', doc.text.length); // not reached in practice; fall back below
        void open;
        return serializedText();
      }
    }
    return out;
  }
  return serializedText();
}

function serializedText() {
  doc.elements.forEach((e, k) => { if (session.elementChanged(k)) e.setAttribute('d', session.elementPathData(k)); });
  return new XMLSerializer().serializeToString(doc.xml);
}

function save() {
  if (!doc) { showMessage('Open a drawing first.'); return; }
  const blob = new Blob([savedText()], { type: 'image/svg+xml' });
  const a = document.createElement('a');
  a.href = URL.createObjectURL(blob);
  a.download = doc.name.replace(/(\.svg)?$/i, '-edited.svg');
  document.body.appendChild(a);
  a.click();
  a.remove();
  setTimeout(() => URL.revokeObjectURL(a.href), 1000);
}

async function openSample(file) {
  const response = await fetch('samples/' + file);
  if (!response.ok) { showMessage(`The sample ${file} could not be loaded.`); return false; }
  const opened = openText(file, await response.text());
  if (opened) document.getElementById('sample').value = file;
  return opened;
}

function openFile(file) {
  if (!file) return;
  const reader = new FileReader();
  reader.onload = () => openText(file.name, String(reader.result));
  reader.onerror = () => showMessage(`${file.name} could not be read.`);
  reader.readAsText(file);
}

// ---- Gestures ----

function pointerPos(event) {
  const r = canvas.getBoundingClientRect();
  return [event.clientX - r.left, event.clientY - r.top];
}

function snapOf(event) { return event.shiftKey ? 1 : (event.ctrlKey || event.metaKey || event.altKey) ? 2 : 0; }

canvas.addEventListener('pointerdown', (event) => {
  if (!session) return;
  canvas.setPointerCapture(event.pointerId);
  const [x, y] = pointerPos(event);
  if (event.button === 1 || (event.button === 0 && spaceDown)) { panning = [x, y]; return; }
  if (event.button !== 0) return;
  if (slicing) {
    const ok = session.slicePoint(x, y);
    const note = session.message();
    if (!session.slicePending()) setSlicing(false);
    showMessage(note, ok && session.slicePending() ? 'info' : ok ? '' : 'info');
    changed();
    return;
  }
  const kind = session.pointerDown(x, y, event.shiftKey);
  dragging = kind !== 0;
  if (kind === 1 || kind === 2) startDragLayers(); else if (kind === 3) background.getContext('2d').drawImage(scene, 0, 0);
  if (dragging) { sceneDirty = true; dragFrame(); }
});

canvas.addEventListener('pointermove', (event) => {
  if (!session) return;
  const [x, y] = pointerPos(event);
  if (panning) { session.panBy(x - panning[0], y - panning[1]); panning = [x, y]; changed(); return; }
  if (dragging) {
    const t0 = performance.now();
    session.pointerMove(x, y, snapOf(event));
    dragFrame();
    // Reading a pixel back waits until the canvas has really been drawn, so the figure includes the
    // rasterisation; only when measuring, as it stalls the pipeline.
    if (window.measureFrames) ctx.getImageData(0, 0, 1, 1);
    window.lastFrameMs = performance.now() - t0;
    return;
  }
  const where = session.hover(x, y);
  hoverText.textContent = where ? `closest point ${where}` : '';
  present(true);
});

function endPointer(event) {
  if (!session) return;
  if (panning) { panning = null; return; }
  if (!dragging) return;
  dragging = false;
  const [x, y] = pointerPos(event);
  session.pointerUp(x, y, event.shiftKey);
  const note = session.message();
  if (note) showMessage(note, 'info');
  changed();
}
canvas.addEventListener('pointerup', endPointer);
canvas.addEventListener('pointercancel', endPointer);

canvas.addEventListener('dblclick', (event) => {
  if (!session) return;
  const [x, y] = pointerPos(event);
  if (!session.insertAt(x, y)) showMessage('Double-click on a segment to insert a vertex there.', 'info');
  changed();
});

canvas.addEventListener('wheel', (event) => {
  if (!session) return;
  event.preventDefault();
  const [x, y] = pointerPos(event);
  session.zoomAt(Math.exp(-event.deltaY * 0.0015), x, y);
  changed();
}, { passive: false });

function act(result, fallback) {
  if (!result) { const note = session.message() || fallback; if (note) showMessage(note, 'info'); }
  else showMessage('');
  changed();
}

function command(name) {
  if (!session) return;
  switch (name) {
    case 'undo': act(session.undo(), 'Nothing to undo.'); break;
    case 'redo': act(session.redo(), 'Nothing to redo.'); break;
    case 'delete': act(session.deleteSelected(), ''); break;
    case 'split': act(session.splitSelected(), ''); break;
    case 'join': act(session.joinSelected(), ''); break;
    case 'close': act(session.closeSelected(), ''); break;
    case 'slice':
      setSlicing(!slicing);
      if (slicing) showMessage('Slice: click the first point on a curve, then the second (Esc cancels).', 'info');
      else { showMessage(''); changed(); }
      break;
    case 'fit': session.fitView(); changed(); break;
    default: if (name.startsWith('mode')) act(session.setModeSelected(Number(name.slice(4))), '');
  }
}

window.addEventListener('keydown', (event) => {
  if (event.target instanceof HTMLInputElement || event.target instanceof HTMLSelectElement) return;
  const key = event.key.toLowerCase();
  const ctrl = event.ctrlKey || event.metaKey;
  if (key === ' ') { spaceDown = true; event.preventDefault(); return; }
  let handled = true;
  if (ctrl && key === 'z') command(event.shiftKey ? 'redo' : 'undo');
  else if (ctrl && key === 'y') command('redo');
  else if (ctrl) handled = false;
  else if (key === 'delete' || key === 'backspace') command('delete');
  else if (key === 's') command('mode0');
  else if (key === 'c') command('mode1');
  else if (key === 'y') command('mode2');
  else if (key === 'l') command('mode3');
  else if (key === 'x') command('split');
  else if (key === 'j') command('join');
  else if (key === 'o') command('close');
  else if (key === 'k') command('slice');
  else if (key === 'escape') { setSlicing(false); showMessage(''); changed(); }
  else if (key === '0') command('fit');
  else if (key === '+' || key === '=') { session && session.zoomAt(1.25, canvas.width / 2, canvas.height / 2); changed(); }
  else if (key === '-') { session && session.zoomAt(0.8, canvas.width / 2, canvas.height / 2); changed(); }
  else handled = false;
  if (handled) event.preventDefault();
});
window.addEventListener('keyup', (event) => { if (event.key === ' ') spaceDown = false; });

// ---- Wiring ----

document.getElementById('file').addEventListener('change', (event) => openFile(event.target.files[0]));
document.getElementById('sample').addEventListener('change', (event) => { if (event.target.value) openSample(event.target.value); });
document.getElementById('save').addEventListener('click', save);
for (const [id, name] of [['undo', 'undo'], ['redo', 'redo'], ['delete', 'delete'], ['split', 'split'], ['join', 'join'],
                          ['close', 'close'], ['slice', 'slice'], ['fit', 'fit']]) {
  document.getElementById(id).addEventListener('click', () => command(name));
}
for (const b of document.querySelectorAll('[data-mode]')) b.addEventListener('click', () => command('mode' + b.dataset.mode));

const stage = document.getElementById('stage');
const dropHint = document.getElementById('drop');
stage.addEventListener('dragover', (event) => { event.preventDefault(); dropHint.hidden = false; });
stage.addEventListener('dragleave', () => { dropHint.hidden = true; });
stage.addEventListener('drop', (event) => {
  event.preventDefault();
  dropHint.hidden = true;
  openFile(event.dataTransfer.files[0]);
});
window.addEventListener('resize', resize);

// For scripts and the browser tests: the session and the document functions.
window.editor = {
  get session() { return session; }, openText, openSample, savedText, command,
  ready: null,
};

window.editorModule = () => Module;
window.editor.ready = createEditorModule().then(async (m) => {
  Module = m;
  resize();
  const list = await fetch('samples/index.txt').then((r) => (r.ok ? r.text() : '')).catch(() => '');
  const select = document.getElementById('sample');
  for (const file of list.split('\n').filter(Boolean)) {
    const option = document.createElement('option');
    option.value = option.textContent = file;
    select.appendChild(option);
  }
  const wanted = new URLSearchParams(location.search).get('open') ?? 'icon.svg';
  if (wanted) await openSample(wanted);
  return true;
});
