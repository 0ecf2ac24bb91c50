// Stands behind the script of a web page around a publication page, uses the page as a reader would,
// and leaves the outcome at the root element.
'use strict';

const failures = [];
function expect(what, found, wanted) {
  if (found !== wanted) failures.push(what + ': ' + found + ', not ' + wanted);
}

const said = () => shown.textContent;
const saidOf = area => said().startsWith(data.names[area]) && said().includes(valueOf(area));
const press = (key, at = map) => at.dispatchEvent(new KeyboardEvent('keydown', {key, bubbles: true, cancelable: true}));

// An event of the pointer at a place in steps of the drawing's grid.
function point(type, [x, y]) {
  const [clientX, clientY] = toWindow([x, y]);
  const Kind = type === 'click' ? MouseEvent : PointerEvent;
  map.dispatchEvent(new Kind(type, {clientX, clientY, bubbles: true, composed: true, pointerType: 'mouse'}));
}

// The browser's own word on what lies inside an outline.
const path = byId('lines').appendChild(document.createElementNS('http://www.w3.org/2000/svg', 'path'));
function isInside(area, x, y) {
  path.setAttribute('d', data.outlines[area]);
  return path.isPointInFill(new DOMPoint(x, y));
}

// Areas with a place inside each that is no vertex.
const places = new Map();
for (let area = 0; area < count; area += 7) {
  const [x, y] = centreOf(area).map(Math.floor);
  const place = [x + 0.37, y + 0.41];
  expect('inside ' + data.keys[area], holds(data.outlines[area], ...place), isInside(area, ...place));
  if (isInside(area, ...place)) places.set(area, place);
}
expect('most areas hold their middle', places.size > count / 14, true);
for (const [area, place] of places) expect('area at ' + place, areaAt(...place), area);
path.remove();
expect('beside all areas', areaAt(-1, -1), null);

const [[one, onePlace], [other, otherPlace]] = places;
point('pointermove', onePlace);
expect('pointed at', saidOf(one), true);
expect('outline', document.querySelector('#lines .line').getAttribute('d'), data.outlines[one]);
const box = tip.getBoundingClientRect();
expect('whole in the window', box.left >= 0 && box.top >= 0 && box.right <= innerWidth && box.bottom <= innerHeight, true);
point('click', onePlace);
point('pointermove', otherPlace);
expect('another one', saidOf(other), true);
point('pointerleave', otherPlace);
expect('kept', saidOf(one), true);
press('Escape', document.body);
expect('let go by Esc', said(), ADVICE);
point('click', onePlace);
document.querySelector('h1').click();
expect('let go beside the map', said(), ADVICE);

press('End');
expect('last', saidOf(count - 1), true);
press('Home');
expect('first', saidOf(0), true);
for (const [key, axis, sign] of [['ArrowRight', 0, 1], ['ArrowDown', 1, 1], ['ArrowLeft', 0, -1], ['ArrowUp', 1, -1]]) {
  const before = current;
  press(key);
  expect(key, current !== before && sign * (centreOf(current)[axis] - centreOf(before)[axis]) > 0, true);
}
press('Enter');
expect('kept by Enter', pinned, current);

for (const [slot, row] of groups) {
  row.dispatchEvent(new PointerEvent('pointerenter', {pointerType: 'mouse'}));
  expect('areas of a group', byId('hole-' + slot).getAttribute('d'), data.outlines.filter((each, area) => data.slots[area] === slot).join(''));
  row.dispatchEvent(new PointerEvent('pointerleave'));
}
expect('all as before', byId('fade').classList.contains('on'), false);

table.open = true;
refresh();
expect('row of the kept one', rowOf(pinned).getAttribute('aria-current'), 'true');
byId('by-value').querySelector('button').click();
const values = [...body.rows].map(row => data.values[row.dataset.area]);
expect('sorted', values.every((value, i) => i === 0 || value >= values[i - 1]), true);
byId('filter').value = data.names[one].toUpperCase();
refresh();
expect('found', [...rows.keys()].includes(one) && found.every(area => data.names[area].toLowerCase().includes(data.names[one].toLowerCase())), true);
rowOf(one).querySelector('button').click();
expect('kept from the table', pinned, one);
expect('its row', rowOf(one).getAttribute('aria-current'), 'true');

document.documentElement.dataset.outcome = failures.length === 0 ? 'good' : failures.slice(0, 20).join('; ');
