// What the scripts of pages share: how they find areas from outlines, and where a tip stands.

#ifndef VEXEL_KIT_REPORT_AREA_SEARCH_H_
#define VEXEL_KIT_REPORT_AREA_SEARCH_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kAreaSearch = R"js(
'use strict';

// Calls visit(x, y, isNew) for each vertex of an outline, with the marks of a path that it has.
function trace(outline, visit) {
  const [MOVE, MOVE_ON, LINE, ACROSS, DOWN] = [77, 109, 108, 104, 118];
  const BLANK = 32, MINUS = 45, ZERO = 48, NINE = 57, LETTERS = 65;
  let at = 0, command = 0, x = 0, y = 0, startX = 0, startY = 0;
  function number() {
    let code = outline.charCodeAt(at);
    if (code === BLANK) code = outline.charCodeAt(++at);
    const isNegative = code === MINUS;
    if (isNegative) code = outline.charCodeAt(++at);
    let value = 0;
    for (; code >= ZERO && code <= NINE; code = outline.charCodeAt(++at)) value = 10 * value + code - ZERO;
    return isNegative ? -value : value;
  }
  while (at < outline.length) {
    const code = outline.charCodeAt(at);
    if (code >= LETTERS) {
      command = code;
      ++at;
    }
    if (command === MOVE || command === MOVE_ON) {
      const isOn = command === MOVE_ON;
      x = startX = (isOn ? startX : 0) + number();
      y = startY = (isOn ? startY : 0) + number();
      visit(x, y, true);
      command = LINE;
    } else if (command === LINE || command === ACROSS || command === DOWN) {
      if (command !== DOWN) x += number();
      if (command !== ACROSS) y += number();
      visit(x, y, false);
    }
  }
}

// Whether a place lies inside an outline, by the rule of nonzero winding.
function holds(outline, x, y) {
  let winding = 0, lastX = 0, lastY = 0, startX = 0, startY = 0;
  function edge(fromX, fromY, toX, toY) {
    if (fromY <= y === toY <= y) return;
    const side = (toX - fromX) * (y - fromY) - (x - fromX) * (toY - fromY);
    if (fromY <= y ? side > 0 : side < 0) winding += fromY <= y ? 1 : -1;
  }
  trace(outline, (nextX, nextY, isNew) => {
    if (isNew) {
      edge(lastX, lastY, startX, startY);
      startX = nextX;
      startY = nextY;
    } else {
      edge(lastX, lastY, nextX, nextY);
    }
    lastX = nextX;
    lastY = nextY;
  });
  edge(lastX, lastY, startX, startY);
  return winding !== 0;
}

// Answers questions on the areas of a page of that size, by their outlines in the order in which they
// are painted; areas go by their numbers.
function areaFinder(outlines, gridWidth, gridHeight) {
  const count = outlines.length;

  // The box of each area: left, top, right, bottom. That of an area without an outline is inside out.
  const boxes = new Int32Array(4 * count);
  let measured = 0;

  function measure(area) {
    const FAR = 0x7fffffff;
    let left = FAR, top = FAR, right = -FAR, bottom = -FAR;
    trace(outlines[area], (x, y) => {
      if (x < left) left = x;
      if (x > right) right = x;
      if (y < top) top = y;
      if (y > bottom) bottom = y;
    });
    boxes.set([left, top, right, bottom], 4 * area);
  }

  // The page in side x side cells; the areas whose boxes touch a cell stand in items from
  // starts[cell] on, in the order in which they are painted.
  let cells = null;

  function cellsOf(side) {
    const place = (at, size) => Math.max(0, Math.min(side - 1, Math.floor(at * side / size)));
    const starts = new Uint32Array(side * side + 1);
    function forEach(visit) {
      for (let area = 0; area < count; ++area) {
        const [left, top, right, bottom] = boxes.subarray(4 * area, 4 * area + 4);
        if (left > right) continue;
        const last = place(right, gridWidth);
        for (let row = place(top, gridHeight); row <= place(bottom, gridHeight); ++row) {
          for (let column = place(left, gridWidth); column <= last; ++column) visit(row * side + column, area);
        }
      }
    }
    // Areas that cover the page one over the other get by with fewer cells.
    const MOST = 16 * count + 1024;
    let total = 0;
    for (let area = 0; area < count; ++area) {
      const at = 4 * area;
      if (boxes[at] > boxes[at + 2]) continue;
      total += (place(boxes[at + 2], gridWidth) - place(boxes[at], gridWidth) + 1) *
          (place(boxes[at + 3], gridHeight) - place(boxes[at + 1], gridHeight) + 1);
    }
    if (total > MOST && side > 1) return cellsOf(side >> 1);
    forEach(cell => ++starts[cell + 1]);
    for (let cell = 0; cell < side * side; ++cell) starts[cell + 1] += starts[cell];
    const items = new Uint32Array(total);
    const ends = starts.slice();
    forEach((cell, area) => items[ends[cell]++] = area);
    return {starts, items, at: (x, y) => place(y, gridHeight) * side + place(x, gridWidth)};
  }

  function measureAll() {
    while (measured < count) measure(measured++);
    cells ??= cellsOf(Math.max(1, Math.min(512, Math.ceil(Math.sqrt(count)))));
  }

  // Before anybody asks, in slices that keep the page answering.
  const later = window.requestIdleCallback ?? (work => setTimeout(work, 1));
  later(function slice() {
    const SLICE = 8, ROUND = 256;
    const end = performance.now() + SLICE;
    while (measured < count && performance.now() < end) {
      for (let i = 0; i < ROUND && measured < count; ++i) measure(measured++);
    }
    if (measured < count) later(slice); else measureAll();
  });

  // The area at a place, the uppermost of several; null for none.
  function areaAt(x, y) {
    measureAll();
    const cell = cells.at(x, y);
    for (let i = cells.starts[cell + 1]; i-- > cells.starts[cell];) {
      const area = cells.items[i], at = 4 * area;
      if (x >= boxes[at] && x <= boxes[at + 2] && y >= boxes[at + 1] && y <= boxes[at + 3] &&
          holds(outlines[area], x, y)) return area;
    }
    return null;
  }

  function centreOf(area) {
    measureAll();
    const [left, top, right, bottom] = boxes.subarray(4 * area, 4 * area + 4);
    return [(left + right) / 2, (top + bottom) / 2];
  }

  // The nearest area that way, by the middles of the boxes: within 45 degrees where there is one.
  function neighbour(area, wayX, wayY) {
    const [x, y] = centreOf(area);
    let best = area, least = Infinity;
    for (let other = 0; other < count; ++other) {
      if (boxes[4 * other] > boxes[4 * other + 2]) continue;
      const dx = (boxes[4 * other] + boxes[4 * other + 2]) / 2 - x;
      const dy = (boxes[4 * other + 1] + boxes[4 * other + 3]) / 2 - y;
      const along = dx * wayX + dy * wayY, across = Math.abs(dx * wayY + dy * wayX);
      if (along <= 0) continue;
      const ASIDE = 1e9;  // more than any page is across
      const distance = Math.hypot(along, across) + (across > along ? ASIDE : 0);
      if (distance < least) {
        least = distance;
        best = other;
      }
    }
    return best;
  }

  return {areaAt, centreOf, neighbour};
}

// Beside a place, and always whole inside the window.
function placeTip(tip, [x, y]) {
  const GAP = 14, RIM = 4;
  tip.hidden = false;
  tip.style.left = tip.style.top = '0';
  const {width, height} = tip.getBoundingClientRect();
  const most = document.documentElement.clientWidth - width - RIM;
  const below = y + GAP, isBelow = below + height + RIM <= window.innerHeight;
  tip.style.left = Math.max(RIM, Math.min(x + GAP, most)) + 'px';
  tip.style.top = Math.max(RIM, isBelow ? below : y - GAP - height) + 'px';
}
)js";

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_AREA_SEARCH_H_
