// What the web page around a publication page does; its script begins with kAreaSearch.

#ifndef VEXEL_KIT_REPORT_MAP_PAGE_SCRIPT_H_
#define VEXEL_KIT_REPORT_MAP_PAGE_SCRIPT_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kMapPageConduct = R"js(
const byId = id => document.getElementById(id);

// One entry for each area in keys, names, slots and outlines; in parents and values the place of
// its text in parentTexts and valueTexts. A missing value is null, the others stand in order.
const data = JSON.parse(byId('data').textContent);
const count = data.keys.length;
const {width: gridWidth, height: gridHeight} = byId('lines').viewBox.baseVal;
const {areaAt, centreOf, neighbour} = areaFinder(data.outlines, gridWidth, gridHeight);

const map = byId('map'), shown = byId('shown'), tip = byId('tip'), table = byId('table');
const ADVICE = 'Point at an area to see its name and value.';
let lit = null;       // the area that is shown
let pinned = null;    // the one that was clicked last
let current = 0;      // where the arrow keys stand
let litGroup = null;  // by its slot
let heldGroup = null;

const groups = new Map([...document.querySelectorAll('#legend tr[data-slot]')].map(row => [Number(row.dataset.slot), row]));
const valueOf = area => data.values[area] === null ? data.missing : data.valueTexts[data.values[area]];
const groupOf = area => groups.get(data.slots[area])?.querySelector('th').textContent ?? '';

// Names run their own way, whatever they stand among.
function isolated(name, element = 'bdi') {
  const part = document.createElement(element);
  part.dir = 'auto';
  part.textContent = name;
  return part;
}

function describe(element, area) {
  const parent = data.parentTexts[data.parents[area]];
  const strong = document.createElement('b');
  strong.append(isolated(data.names[area]));
  element.replaceChildren(strong, ...(parent === '' ? [] : [', ', isolated(parent)]), ': ' + valueOf(area));
}

function tell() {
  if (lit !== null) {
    describe(shown, lit);
    if (lit === pinned) shown.append(' (kept)');
  } else if (litGroup !== null) {
    const row = groups.get(litGroup);
    shown.textContent = [...row.cells].map(cell => cell.textContent).join(': ') + ' areas';
  } else {
    shown.textContent = ADVICE;
  }
}

// Where a place of the page is in the window, and the other way round.
function toWindow([x, y]) {
  const box = map.getBoundingClientRect();
  return [box.left + x * box.width / gridWidth, box.top + y * box.height / gridHeight];
}
function areaUnder(event) {
  const box = map.getBoundingClientRect();
  return areaAt((event.clientX - box.left) * gridWidth / box.width, (event.clientY - box.top) * gridHeight / box.height);
}

function showTip(area, place) {
  describe(tip, area);
  placeTip(tip, place);
}

function draw(kind, area) {
  const line = document.querySelector('#lines .' + kind);
  for (const path of [line.previousElementSibling, line]) path.setAttribute('d', area === null ? '' : data.outlines[area]);
}

// Shows an area; null shows the one that is kept, or none.
function light(area) {
  area ??= pinned;
  if (area !== lit) {
    if (lit !== null) {
      rowOf(lit)?.classList.remove('lit');
      groups.get(data.slots[lit])?.classList.remove('has');
    }
    if (area !== null) {
      rowOf(area)?.classList.add('lit');
      groups.get(data.slots[area])?.classList.add('has');
    }
    lit = area;
    draw('line', area === pinned ? null : area);
  }
  if (area === null) tip.hidden = true;
  tell();
}

function pin(area) {
  if (pinned !== null) rowOf(pinned)?.removeAttribute('aria-current');
  pinned = area;
  draw('pin', area);
  if (area !== null) {
    current = area;
    showRow(area);
    rowOf(area)?.setAttribute('aria-current', 'true');
  }
  lit = lit === area ? null : lit;
  light(null);
}

// All but the areas of a group pale; null for all areas as they are.
function lightGroup(slot) {
  slot ??= heldGroup;
  if (slot === litGroup) return;
  groups.get(litGroup)?.classList.remove('lit');
  groups.get(slot)?.classList.add('lit');
  litGroup = slot;
  byId('fade').classList.toggle('on', slot !== null);
  if (slot !== null) {
    byId('fade').classList.toggle('dim', groups.get(slot).dataset.veil === 'dim');
    const holes = byId('holes');
    const id = 'hole-' + slot;
    if (!byId(id)) {
      const hole = document.createElementNS('http://www.w3.org/2000/svg', 'path');
      hole.id = id;
      hole.setAttribute('d', data.outlines.filter((outline, area) => data.slots[area] === slot).join(''));
      holes.append(hole);
    }
    for (const hole of holes.children) hole.style.display = hole.id === id ? '' : 'none';
  }
  tell();
}

function holdGroup(slot) {
  heldGroup = slot;
  for (const [each, row] of groups) row.querySelector('button').setAttribute('aria-pressed', String(each === slot));
  lightGroup(null);
}

function letGo() {
  tip.hidden = true;
  holdGroup(null);
  pin(null);
}

// The map.
map.addEventListener('pointermove', event => {
  if (event.pointerType === 'touch') return;
  const area = areaUnder(event);
  light(area);
  if (area === null) tip.hidden = true; else showTip(area, [event.clientX, event.clientY]);
});
map.addEventListener('pointerleave', () => {
  tip.hidden = true;
  light(null);
});
map.addEventListener('click', event => {
  const area = areaUnder(event);
  if (area === null) letGo(); else pin(area);
});
function goTo(area) {
  const RIM = 100;
  current = area;
  light(area);
  const [, y] = toWindow(centreOf(area));
  if (y < RIM || y > window.innerHeight - RIM) window.scrollBy(0, y - window.innerHeight / 2);
  showTip(area, toWindow(centreOf(area)));
}
map.addEventListener('keydown', event => {
  if (event.altKey || event.ctrlKey || event.metaKey) return;
  const way = {ArrowRight: [1, 0], ArrowLeft: [-1, 0], ArrowDown: [0, 1], ArrowUp: [0, -1]}[event.key];
  if (way !== undefined) goTo(neighbour(current, ...way));
  else if (event.key === 'Home') goTo(ofOutlined(0, 1));
  else if (event.key === 'End') goTo(ofOutlined(count - 1, -1));
  else if (event.key === 'Enter' || event.key === ' ') pin(current);
  else return;
  event.preventDefault();
});
// The first area from there on that can be seen.
function ofOutlined(area, step) {
  while (data.outlines[area] === '' && area + step >= 0 && area + step < count) area += step;
  return area;
}
current = ofOutlined(0, 1);
map.addEventListener('focus', () => map.matches(':focus-visible') && goTo(current));
map.addEventListener('blur', () => {
  tip.hidden = true;
  light(null);
});
map.tabIndex = 0;
map.setAttribute('role', 'application');
map.setAttribute('aria-label', 'Areas of the map');
map.setAttribute('aria-describedby', 'help');
byId('help').hidden = false;
document.addEventListener('keydown', event => event.key === 'Escape' && letGo());
document.addEventListener('click', event => {
  const kept = [map, byId('legend'), byId('areas')];
  if (!event.composedPath().some(node => kept.includes(node))) letGo();
});
window.addEventListener('scroll', () => tip.hidden = true, {passive: true});

// The legend.
for (const [slot, row] of groups) {
  const head = row.querySelector('th');
  const button = document.createElement('button');
  button.type = 'button';
  button.append(...head.childNodes);
  head.append(button);
  row.addEventListener('pointerenter', event => event.pointerType !== 'touch' && lightGroup(slot));
  row.addEventListener('pointerleave', () => lightGroup(null));
  button.addEventListener('focus', () => button.matches(':focus-visible') && lightGroup(slot));
  button.addEventListener('blur', () => lightGroup(null));
  row.addEventListener('click', () => holdGroup(heldGroup === slot ? null : slot));
}

// The table: so many rows at a time as the page holds without a script.
const PAGE = Number(table.dataset.rows);
const body = table.querySelector('tbody');
let rows = new Map();     // by area, those that there are
let order = null;         // all areas as they are sorted
let found = null;         // those of them that the filter leaves
let first = 0;
let sorting = {by: null, isDown: false};
let searched = null;      // names as the filter looks at them
const sorted = new Map();  // orders that were made before

const rowOf = area => rows.get(area);

function cell(kind, ...parts) {
  const made = document.createElement(kind);
  made.append(...parts);
  return made;
}

function makeRow(area) {
  const row = document.createElement('tr');
  row.dataset.area = area;
  const button = isolated(data.names[area], 'button');
  button.type = 'button';
  const name = cell('th', button), value = cell('td', valueOf(area)), swatch = document.createElement('i');
  name.scope = 'row';
  value.className = 'n';
  swatch.className = 'g' + data.slots[area];
  const parent = byId('within') ? [cell('td', isolated(data.parentTexts[data.parents[area]]))] : [];
  row.append(name, ...parent, value, cell('td', swatch, groupOf(area)));
  row.classList.toggle('lit', area === lit);
  if (area === pinned) row.setAttribute('aria-current', 'true');
  return row;
}

function fill(from) {
  first = from;
  const part = found.slice(first, first + PAGE);
  rows = new Map(part.map(area => [area, makeRow(area)]));
  body.replaceChildren(...rows.values());
  byId('rows').scrollTop = 0;
  byId('range').textContent = part.length === 0 ? 'No area has such a name.' :
      'Rows ' + (first + 1) + ' to ' + (first + part.length) + ' of ' + found.length;
  byId('previous').setAttribute('aria-disabled', String(first === 0));
  byId('next').setAttribute('aria-disabled', String(first + PAGE >= found.length));
}

function orderOf({by, isDown}) {
  const name = by + isDown;
  if (sorted.has(name)) return sorted.get(name);
  const all = Array.from({length: count}, (unused, area) => area);
  if (by === 'name') {
    const {compare} = new Intl.Collator(undefined, {numeric: true});
    const sign = isDown ? -1 : 1;
    all.sort((a, b) => sign * compare(data.names[a], data.names[b]));
  } else if (by === 'value') {
    // Missing ones come last either way.
    const rank = area => data.values[area] === null ? Infinity : isDown ? -data.values[area] : data.values[area];
    const ranks = all.map(rank);
    all.sort((a, b) => ranks[a] === ranks[b] ? a - b : ranks[a] - ranks[b]);
  }
  sorted.set(name, all);
  return all;
}

function refresh() {
  if (!table.open) return;
  order = orderOf(sorting);
  const wanted = byId('filter').value.trim().toLowerCase();
  if (wanted !== '') searched ??= data.names.map(name => name.toLowerCase());
  found = wanted === '' ? order : order.filter(area => searched[area].includes(wanted));
  fill(0);
  if (pinned !== null) showRow(pinned);
}

// Turns to the row of an area and brings it into its box, without moving the page.
function showRow(area) {
  if (!table.open || found === null) return;
  const at = found.indexOf(area);
  if (at < 0) return;
  if (!rows.has(area)) fill(at - at % PAGE);
  const box = byId('rows'), row = rows.get(area), head = table.querySelector('thead').offsetHeight;
  if (row.offsetTop - head < box.scrollTop) box.scrollTop = row.offsetTop - head;
  const below = row.offsetTop + row.offsetHeight - box.clientHeight;
  if (below > box.scrollTop) box.scrollTop = below;
}

for (const by of ['name', 'value']) {
  const head = byId('by-' + by);
  const button = document.createElement('button');
  button.type = 'button';
  button.append(...head.childNodes);
  head.append(button);
  button.addEventListener('click', () => {
    sorting = {by, isDown: sorting.by === by && !sorting.isDown};
    for (const other of table.querySelectorAll('[aria-sort]')) other.removeAttribute('aria-sort');
    head.setAttribute('aria-sort', sorting.isDown ? 'descending' : 'ascending');
    refresh();
  });
}
byId('filter').addEventListener('input', refresh);
byId('previous').addEventListener('click', () => first > 0 && fill(Math.max(0, first - PAGE)));
byId('next').addEventListener('click', () => first + PAGE < found.length && fill(first + PAGE));
const areaOf = event => {
  const row = event.target.closest('tr');
  return row === null ? null : Number(row.dataset.area);
};
body.addEventListener('pointerover', event => event.pointerType !== 'touch' && light(areaOf(event)));
body.addEventListener('pointerleave', () => light(null));
body.addEventListener('focusin', event => event.target.matches(':focus-visible') && light(areaOf(event)));
body.addEventListener('focusout', () => light(null));
body.addEventListener('click', event => areaOf(event) !== null && pin(areaOf(event)));
table.addEventListener('toggle', () => found === null && refresh());
byId('previous').hidden = byId('next').hidden = count <= PAGE;
byId('tools').hidden = false;
table.hidden = false;
refresh();
light(null);
)js";

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_MAP_PAGE_SCRIPT_H_
