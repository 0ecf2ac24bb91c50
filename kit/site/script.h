// What pages about a view do, behind kAreaSearch. Without it they are links and a form.

#ifndef VEXEL_KIT_SITE_SCRIPT_H_
#define VEXEL_KIT_SITE_SCRIPT_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kSiteScript = R"js(
const byId = id => document.getElementById(id);

function made(kind, attributes = {}, ...parts) {
  const element = document.createElement(kind);
  Object.assign(element, attributes);
  element.append(...parts);
  return element;
}
function drawn(kind, attributes = {}) {
  const element = document.createElementNS('http://www.w3.org/2000/svg', kind);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  return element;
}
// Names run their own way, whatever they stand among.
const isolated = name => made('bdi', {dir: 'auto'}, name);

const tip = document.body.appendChild(made('div', {id: 'tip', hidden: true, ariaHidden: 'true'}));
const live = document.body.appendChild(made('div', {id: 'live', className: 'aside', role: 'status'}));
const main = byId('main');

// An area is an object: key, name, parent, value, compared if there is, slot, parts, outline, middle.
let source = null;    // that knows the areas of the map on show
let lit = null;       // the area under the pointer, the arrow keys, or a row
let current = null;   // the one that the arrow keys have come to
let asked = 0;        // numbers the questions, so that a late answer is none

const map = () => byId('map');
const rowOf = area => area && byId('rows')?.querySelector('tr[data-key="' + area.key + '"]');
const legendRow = slot => document.querySelector('#map + .side tr[data-slot="' + slot + '"]');
const pathOf = (pattern, key, between) => pattern.replace('{key}', key.replaceAll(',', between));
const placeOf = area => pathOf(map().dataset.place, area.key, '/');
const rowAddress = area => pathOf(map().dataset.row, area.key, ',');

// All areas are here: outlines are looked at for what is under the pointer.
class Outlines {
  constructor(data) {
    this.data = data;
    this.width = data.width;
    this.height = data.height;
    this.finder = areaFinder(data.outlines, data.width, data.height);
    this.numbers = new Map(data.keys.map((key, number) => [key, number]));
  }
  area(number) {
    const {data} = this;
    if (number === null || number === undefined) return null;
    return {key: data.keys[number], name: data.names[number], parent: data.parentTexts[data.parents[number]],
      value: data.values[number] === null ? data.missing : data.valueTexts[data.values[number]],
      compared: data.compared?.[number], slot: data.slots[number], parts: data.parts[number],
      outline: data.outlines[number], middle: this.finder.centreOf(number)};
  }
  at(x, y) { return this.area(this.finder.areaAt(x, y)); }
  withKey(key) { return this.area(this.numbers.get(key)); }
  neighbour(area, [x, y]) { return this.area(this.finder.neighbour(this.numbers.get(area.key), x, y)); }
  others(slot) { return this.data.outlines.filter((outline, number) => this.data.slots[number] !== slot).join(''); }
}

// The server knows them: it is asked, and what has been overtaken is given up.
class Questions {
  constructor(address, picture) {
    this.address = address;
    this.width = Number(picture.getAttribute('width'));
    this.height = Number(picture.getAttribute('height'));
    this.answers = new Map();
  }
  async ask(query) {
    if (this.answers.has(query)) return this.answers.get(query);
    this.running?.abort();
    const running = this.running = new AbortController();
    const response = await fetch(this.address + (this.address.includes('?') ? '&' : '?') + query, {signal: running.signal});
    const answer = response.ok ? await response.json() : null;
    const MOST = 20000;
    if (this.answers.size > MOST) this.answers.clear();
    this.answers.set(query, answer);
    return answer;
  }
  at(x, y) {
    const inside = (place, size) => Math.max(0, Math.min(size - 1, Math.floor(place)));
    return this.ask('x=' + inside(x, this.width) + '&y=' + inside(y, this.height));
  }
  withKey(key) { return this.ask('key=' + encodeURIComponent(key)); }
  neighbour(area, [x, y]) {
    const way = x < 0 ? 'left' : x > 0 ? 'right' : y < 0 ? 'up' : 'down';
    return this.ask('key=' + encodeURIComponent(area.key) + '&way=' + way);
  }
  others() { return ''; }
}

// Does something with an answer, now or later, unless another question has come in the meantime.
function answered(answer, use) {
  const number = ++asked;
  if (!(answer instanceof Promise)) return use(answer);
  answer.then(area => number === asked && use(area), () => {});
}

function lines() {
  if (byId('lines')) return byId('lines');
  const box = {viewBox: '0 0 ' + source.width + ' ' + source.height, preserveAspectRatio: 'none', 'aria-hidden': 'true'};
  const fade = drawn('svg', {id: 'fade', ...box}), svg = drawn('svg', {id: 'lines', ...box});
  fade.append(drawn('path'));
  for (const kind of ['rim', 'pin', 'rim', 'line']) svg.append(drawn('path', {class: kind}));
  map().append(fade, svg);
  return svg;
}
function draw(kind, area) {
  if (source === null) return;
  const line = lines().querySelector('.' + kind);
  for (const path of [line.previousElementSibling, line]) path.setAttribute('d', area?.outline ?? '');
}

function describe(element, area) {
  const parts = [made('b', {}, isolated(area.name))];
  if (area.parent) parts.push(', ', isolated(area.parent));
  parts.push(made('br'), area.value);
  if (area.compared !== undefined) parts.push(made('br'), map().dataset.compared + ': ' + area.compared);
  const row = legendRow(area.slot);
  if (row) {
    const swatch = row.querySelector('.swatch').cloneNode(true);
    parts.push(made('br'), swatch, row.querySelector('span').textContent);
  }
  element.replaceChildren(...parts);
}

function showTip(area, place) {
  describe(tip, area);
  placeTip(tip, place);
}

function light(area, place = null) {
  rowOf(lit)?.classList.remove('lit');
  if (lit) legendRow(lit.slot)?.classList.remove('lit');
  lit = area;
  draw('line', area);
  map()?.classList.toggle('leads', Boolean(area?.parts));
  if (area) {
    rowOf(area)?.classList.add('lit');
    legendRow(area.slot)?.classList.add('lit');
  }
  if (area && place) showTip(area, place); else tip.hidden = true;
}

function lightGroup(slot) {
  if (source === null || !byId('lines') && slot === null) return;
  lines();
  const fade = byId('fade'), others = slot === null ? '' : source.others(slot);
  fade.classList.toggle('on', others !== '');
  if (others === '') return;
  fade.classList.toggle('dim', legendRow(slot)?.dataset.veil === 'dim');
  fade.firstChild.setAttribute('d', others);
}

// Pictures may be shown smaller than they are, or larger.
function fromWindow(event) {
  const box = byId('picture').getBoundingClientRect();
  return [(event.clientX - box.left) * source.width / box.width, (event.clientY - box.top) * source.height / box.height];
}
function toWindow([x, y]) {
  const box = byId('picture').getBoundingClientRect();
  return [box.left + x * box.width / source.width, box.top + y * box.height / source.height];
}

function follow(area) {
  if (area.parts) return go(placeOf(area));
  go(rowAddress(area));
}

function comeTo(area) {
  if (!area) return;
  const RIM = 100;
  current = area;
  const [, y] = toWindow(area.middle);
  if (y < RIM || y > window.innerHeight - RIM) window.scrollBy(0, y - window.innerHeight / 2);
  light(area, toWindow(area.middle));
  live.textContent = tip.innerText.replaceAll('\n', ', ');
}

const WAYS = {ArrowRight: [1, 0], ArrowLeft: [-1, 0], ArrowDown: [0, 1], ArrowUp: [0, -1]};

function attachMap() {
  const sheet = map();
  source = null;
  lit = current = null;
  tip.hidden = true;
  // The link around the picture is for those without a script.
  byId('go')?.replaceWith(byId('picture'));
  byId('picture').removeAttribute('ismap');
  sheet.tabIndex = 0;
  sheet.setAttribute('role', 'application');
  sheet.setAttribute('aria-label', 'Areas of the map; arrow keys go from one to the next, Enter into it');
  const kept = sheet.dataset.kept;
  const ready = found => {
    if (map() !== sheet) return;
    source = found;
    if (kept) answered(source.withKey(kept), area => {
      draw('pin', area);
      current = area;
    });
  };
  if (sheet.dataset.outlines) {
    fetch(sheet.dataset.outlines).then(response => response.json()).then(data => ready(new Outlines(data)), () => {});
  } else {
    ready(new Questions(sheet.dataset.at, byId('picture')));
  }

  let overtaken = 0;
  sheet.addEventListener('pointermove', event => {
    if (source === null || event.pointerType === 'touch') return;
    const place = [event.clientX, event.clientY];
    const look = () => source && answered(source.at(...fromWindow(event)), area => light(area, area && place));
    clearTimeout(overtaken);
    if (source instanceof Questions) overtaken = setTimeout(look, 12); else look();
  });
  sheet.addEventListener('pointerleave', () => {
    clearTimeout(overtaken);
    ++asked;
    light(null);
  });
  sheet.addEventListener('click', event => {
    if (source !== null) answered(source.at(...fromWindow(event)), area => area && follow(area));
  });
  sheet.addEventListener('keydown', event => {
    if (source === null || event.altKey || event.ctrlKey || event.metaKey) return;
    if (event.key in WAYS) {
      answered(current ? source.neighbour(current, WAYS[event.key]) : source.withKey(sheet.dataset.first), comeTo);
    } else if (event.key === 'Enter' && current) {
      follow(current);
    } else {
      return;
    }
    event.preventDefault();
  });
  sheet.addEventListener('focus', () => {
    if (source !== null && sheet.matches(':focus-visible')) answered(current ?? source.withKey(sheet.dataset.first), comeTo);
  });
  sheet.addEventListener('blur', () => light(null));
}

function attachRows() {
  const keyOf = event => event.target.closest('tr[data-key]')?.dataset.key;
  const show = event => {
    const key = keyOf(event);
    if (source === null || !key || lit?.key === key) return;
    answered(source.withKey(key), area => light(area));
  };
  const rows = byId('rows');
  rows.addEventListener('pointerover', event => event.pointerType !== 'touch' && show(event));
  rows.addEventListener('pointerleave', () => light(null));
  rows.addEventListener('focusin', show);
  rows.addEventListener('focusout', () => light(null));
  const kept = byId('kept');
  if (kept) rows.scrollTop = kept.offsetTop - rows.clientHeight / 2;
}

function attachLegend() {
  for (const row of document.querySelectorAll('#map + .side tr[data-slot]')) {
    const slot = Number(row.dataset.slot);
    row.addEventListener('pointerenter', event => event.pointerType !== 'touch' && lightGroup(slot));
    row.addEventListener('pointerleave', () => lightGroup(null));
    row.addEventListener('focusin', () => lightGroup(slot));
    row.addEventListener('focusout', () => lightGroup(null));
  }
}

function attachFiles() {
  const command = byId('command');
  const button = made('button', {type: 'button', id: 'copy'}, 'Copy');
  button.addEventListener('click', async () => {
    try {
      await navigator.clipboard.writeText(command.textContent);
      live.textContent = button.textContent = 'Copied';
    } catch {
      getSelection().selectAllChildren(command);
    }
  });
  command.after(button);
}

// The address of what the form says; what was left alone has no place in it.
function formAddress() {
  const form = byId('choices');
  const fields = [...new FormData(form)].filter(([, value]) => value !== '');
  const query = new URLSearchParams(fields).toString();
  return form.action + (query === '' ? '' : '?' + query);
}

function attachForm() {
  const form = byId('choices');
  form.addEventListener('submit', event => {
    event.preventDefault();
    go(formAddress());
  });
  form.addEventListener('change', event => {
    if (event.target.name === 'intervals' && event.target.value !== 'bounds') byId('bounds').value = '';
    if (event.target.name === 'bounds' && event.target.value !== '') byId('intervals').value = 'bounds';
    if (event.target.name === 'palette') byId('colors')?.remove();
    const isHalf = byId('calc').value !== '' && byId('var2').value === '';
    if (!isHalf || event.target.name !== 'calc') go(formAddress());
  });
  let later = 0;
  byId('find').addEventListener('input', () => {
    clearTimeout(later);
    later = setTimeout(() => go(formAddress(), {replaces: true}), 250);
  });
  byId('find').addEventListener('change', event => event.stopPropagation());
}

function attach() {
  attachMap();
  attachRows();
  attachLegend();
  attachFiles();
  attachForm();
}

// How to find an element again in another state of the page.
function tokenOf(element) {
  if (!element || !main.contains(element)) return null;
  if (element.id) return '#' + CSS.escape(element.id);
  if (element.name) return '[name="' + CSS.escape(element.name) + '"][value="' + CSS.escape(element.value) + '"]';
  const row = element.closest('tr[data-key]');
  return row && 'tr[data-key="' + row.dataset.key + '"] a';
}

function swap(next) {
  const focused = document.activeElement;
  const token = tokenOf(focused);
  const typed = focused?.id === 'find' ? [focused.value, focused.selectionStart, focused.selectionEnd] : null;
  const open = [...main.querySelectorAll('details[open]')].map(each => each.id);
  const scrolled = byId('rows').scrollTop;
  for (const part of main.querySelectorAll('[data-part]')) {
    const other = next.querySelector('#' + part.id);
    if (other) part.replaceWith(other);
  }
  for (const id of open) if (byId(id)) byId(id).open = true;
  byId('rows').scrollTop = scrolled;
  attach();
  if (token === null) return;
  const again = main.querySelector(token) ?? (focused.closest?.('#map, tr') ? map() : main);
  again.focus({preventScroll: true, focusVisible: focused.matches(':focus-visible')});
  if (typed) [again.value] = typed;
  if (typed) again.setSelectionRange(typed[1], typed[2]);
}

let loading = null;

// Shows another state. Its pictures are here before the ones on show go.
async function go(address, {replaces = false, isBack = false} = {}) {
  loading?.abort();
  const mine = loading = new AbortController();
  const wanted = new URL(address, location.href);
  main.setAttribute('aria-busy', 'true');
  tip.hidden = true;
  try {
    const response = await fetch(wanted, {signal: mine.signal, headers: {Accept: 'text/html'}});
    const page = new DOMParser().parseFromString(await response.text(), 'text/html');
    const fresh = page.getElementById('main');
    if (!fresh?.querySelector('#map')) throw new Error('another kind of page');
    const next = document.importNode(fresh, true);
    await Promise.all([...next.querySelectorAll('img')].map(image => image.decode().catch(() => {})));
    if (mine.signal.aborted) return;
    const normal = page.querySelector('link[rel=canonical]')?.href ?? wanted.href;
    const shown = new URL(normal, location.href);
    const target = shown.pathname + shown.search;
    const isSame = target === location.pathname + location.search;
    if (!isBack) history[replaces || isSame ? 'replaceState' : 'pushState'](null, '', target);
    document.title = page.title;
    swap(next);
    live.textContent = page.title + ', ' + byId('areas-title').textContent + ', ' + (byId('areas').querySelector('.pager span')?.textContent ?? '');
    main.removeAttribute('aria-busy');
  } catch (error) {
    if (error.name === 'AbortError') return;
    location.assign(wanted);
  }
}

document.addEventListener('click', event => {
  const link = event.target.closest?.('a[href]');
  if (!link || !link.closest('[data-part]') || link.hasAttribute('download') || event.defaultPrevented) return;
  if (event.button !== 0 || event.altKey || event.ctrlKey || event.metaKey || event.shiftKey) return;
  if (link.origin !== location.origin) return;
  event.preventDefault();
  go(link.href);
});
document.addEventListener('click', event => {
  const palettes = byId('palettes');
  if (palettes?.open && !palettes.contains(event.target)) palettes.open = false;
});
window.addEventListener('popstate', () => go(location.href, {isBack: true}));
window.addEventListener('scroll', () => tip.hidden = true, {passive: true});

const help = byId('help');
const helpButton = made('button', {type: 'button', id: 'help-button'}, 'Keys');
helpButton.addEventListener('click', () => help.showModal());
document.querySelector('header.top').append(helpButton);
document.addEventListener('keydown', event => {
  if (event.key === 'Escape') {
    tip.hidden = true;
    const palettes = byId('palettes');
    if (palettes.open) {
      palettes.open = false;
      palettes.firstChild.focus();
    }
  }
  const isTyping = event.target.matches?.('input[type=text], input[type=search], select');
  if (isTyping || help.open || event.altKey || event.ctrlKey || event.metaKey) return;
  if (event.key === '?') {
    help.showModal();
  } else if (event.key === 'Backspace' && map().dataset.up) {
    event.preventDefault();
    go(map().dataset.up);
  }
});

attach();
)js";

}  // namespace vexel

#endif  // VEXEL_KIT_SITE_SCRIPT_H_
