// The fixed text of a web page. "$NAME$" marks what is filled in.

#ifndef VEXEL_KIT_REPORT_PAGE_PARTS_H_
#define VEXEL_KIT_REPORT_PAGE_PARTS_H_

#include <string_view>

namespace vexel {

inline constexpr std::string_view kPageHead = R"html(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>$TITLE$</title>
<style>
body{margin:0 auto;padding:1rem;max-width:max-content;font:1rem/1.5 system-ui,sans-serif;color:#1a1a1a;background:#fff}
h1{margin:0 0 .25rem;font-size:1.4rem;line-height:1.25}
h2{margin:2rem 0 .5rem;font-size:1.1rem}
.skip{position:absolute;left:-999rem}
.skip:focus{left:1rem;top:.5rem;z-index:2;padding:.25rem .75rem;background:#fff;outline:3px solid #a4005f}
#shown{position:sticky;top:0;z-index:1;margin:0 0 .5rem;padding:.4rem .75rem;min-height:1.5em;background:#f0f0f0;border-left:4px solid #a4005f}
#shown b{font-weight:600}
.scroll{overflow-x:auto}
.picture{position:relative}
.picture img{display:block}
.picture svg{position:absolute;left:0;top:0;pointer-events:none}
#halo,#line{fill:none;stroke-linejoin:round}
#halo{stroke:#fff;stroke-width:6}
#line{stroke:#a4005f;stroke-width:3}
table{border-collapse:collapse}
caption{text-align:left;padding-bottom:.25rem;color:#555}
th,td{padding:.2rem .9rem .2rem 0;text-align:left;font-weight:400;border-bottom:1px solid #e3e3e3}
thead th{font-weight:600;border-bottom:2px solid #888}
.n{text-align:right;font-variant-numeric:tabular-nums}
tr.lit>*{background:#fbe6f2}
td i,th i{display:inline-block;width:1em;height:1em;margin-right:.5em;border:1px solid #555;vertical-align:-.12em}
$SWATCHES$</style>
</head>
<body>
<a class="skip" href="#areas">Skip the map and go to the table</a>
<main>
<h1>$TITLE$</h1>
<p id="shown" role="status">All values stand in the table below the map.</p>
<div class="scroll"><div class="picture" style="width:$WIDTH$px">
<img src="$PICTURE$" width="$WIDTH$" height="$HEIGHT$" usemap="#map" alt="$ALTERNATIVE$">
<svg width="$WIDTH$" height="$HEIGHT$" aria-hidden="true"><path id="halo"/><path id="line"/></svg>
</div></div>
<map name="map" id="map">
)html";

// Up to the rows of the table.
inline constexpr std::string_view kPageTable = R"html(</map>
<h2>$LEGEND$</h2>
<table>
<thead><tr><th scope="col">Group</th><th scope="col" class="n">Areas</th></tr></thead>
<tbody>
$LEGENDROWS$</tbody>
</table>
<h2>Areas</h2>
<table id="areas" tabindex="-1">
<caption>$TITLE$</caption>
<thead><tr>$LEVELS$<th scope="col" class="n">$VARIABLE$</th><th scope="col">Group</th></tr></thead>
<tbody>
)html";

// Up to the list of the areas' values.
inline constexpr std::string_view kPageValues = R"html(</tbody>
</table>
</main>
<script type="application/json" id="values">{)html";

inline constexpr std::string_view kPageEnd = R"html(}</script>
<script>
'use strict';
const UNSET = -99999999;
const values = JSON.parse(document.getElementById('values').textContent);
const map = document.getElementById('map');
const shown = document.getElementById('shown');
const rows = new Map([...document.querySelectorAll('#areas tr[data-key]')].map(row => [row.dataset.key, row]));
const rings = new Map();  // the area elements of each key
let pinned = null;
let lit = null;

// The key of an area from the end of its link. A code that is left out there is 0.
function keyOf(link) {
  const codes = Array(8).fill(0);
  for (const [, at, code] of link.matchAll(/&A(\d)=(-?\d+)/g)) codes[at] = Number(code);
  while (codes.length > 0 && codes[codes.length - 1] === UNSET) codes.pop();
  return codes.join(',');
}

function outlineOf(element) {
  const numbers = element.coords.split(',').map(Number);
  let path = '';
  for (let i = 0; i + 1 < numbers.length; i += 2) path += (i ? 'L' : 'M') + numbers[i] + ' ' + numbers[i + 1];
  return path + 'Z';
}

// Shows an area by its key; null shows the one that was clicked last, or the advice.
function light(key) {
  key = key ?? pinned;
  if (key === lit) return;
  rows.get(lit)?.classList.remove('lit');
  rows.get(key)?.classList.add('lit');
  lit = key;
  const outline = (rings.get(key) ?? []).map(outlineOf).join('');
  for (const id of ['halo', 'line']) document.getElementById(id).setAttribute('d', outline);
  if (key === null) {
    shown.textContent = 'Point at an area to see its value; with the keyboard, tab to the map and use the arrow keys.';
    return;
  }
  const [name, value] = values[key];
  const strong = document.createElement('b');
  strong.textContent = name;
  shown.replaceChildren(strong, ': ' + value);
}

// What the links of the areas call.
function show(query) {
  pinned = keyOf(query);
  light(pinned);
}

for (const element of map.children) {
  const key = keyOf(element.getAttribute('href'));
  if (!rings.has(key)) rings.set(key, []);
  rings.get(key).push(element);
  element.alt = values[key].join(': ');
  element.title = element.alt;
  element.tabIndex = -1;
  element.dataset.key = key;
}

// One stop for the tab key; the arrow keys lead from area to area, in the order of the table.
const stops = [...rings.values()].map(list => list[0]);
let current = 0;
if (stops.length > 0) stops[0].tabIndex = 0;
function goTo(number) {
  const before = current;
  current = (number + stops.length) % stops.length;
  stops[current].tabIndex = 0;
  stops[current].focus();
  if (before !== current) stops[before].tabIndex = -1;
}
map.addEventListener('keydown', event => {
  const next = {ArrowRight: current + 1, ArrowDown: current + 1, ArrowLeft: current - 1,
                ArrowUp: current - 1, Home: 0, End: -1}[event.key];
  if (next === undefined) return;
  event.preventDefault();
  goTo(next);
});

// Browsers give a point to the first area that holds it, the picture shows the last.
map.append(...[...map.children].reverse());

for (const name of ['mouseover', 'focusin']) {
  map.addEventListener(name, event => {
    const key = event.target.dataset.key;
    if (key === undefined) return;
    if (name === 'focusin') {
      const stop = stops.indexOf(rings.get(key)[0]);
      // Touching the element that has the focus would take it away.
      if (stop !== current) {
        stops[current].tabIndex = -1;
        stops[current = stop].tabIndex = 0;
      }
    }
    light(key);
  });
}
for (const name of ['mouseout', 'focusout']) map.addEventListener(name, () => light(null));
document.getElementById('areas').addEventListener('mouseover', event => light(event.target.closest('tr')?.dataset.key ?? null));
document.getElementById('areas').addEventListener('mouseleave', () => light(null));
lit = undefined;
light(null);
</script>
</body>
</html>
)html";

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_PAGE_PARTS_H_
