// Uses the viewer as readers do: with a pointer, with keys alone, without a script, on a small window.
// Runs under `node --test`; the environment says where programs, samples and modules are.

import assert from 'node:assert/strict';
import {execFile, spawn} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {after, before, test} from 'node:test';
import {promisify} from 'node:util';

const {VEXEL, VEXEL_SERVE, VEXEL_BROWSER, VEXEL_SAMPLES, VEXEL_MODULES} = process.env;
const require = createRequire(join(VEXEL_MODULES, 'package.json'));
const {chromium} = require('playwright-core');
const AXE = readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');

const work = mkdtempSync(join(tmpdir(), 'vexel-viewer-'));
let server, browser, origin;

// Squares in rows, which are regions; values are those of a slope with steps, some are missing.
function writeSquares(name, side) {
  const square = (x, y, width) => `[Polygon]\n${x} ${y}\n${x + width} ${y}\n${x + width} ${y + 1}\n${x} ${y + 1}\n`;
  const map = ['[Map]\nVersion=Ortex 3.2\nMapName=Squares\nLongLat=No\n[AreaLevels]\nName=Row\nName=Square\n'];
  const data = [`[MapDataFile]\nVersion=Ortex 3.2\nMapFile=${name}\nAreaLevels=2\nVariables=1\nThousands=Comma\nDecimal=Dot\nNoValue=N/A\nMapLabel=~\n[Data]\nRow\tSquare\tArea Name\tslope\n`];
  for (let row = 1; row <= side; ++row) {
    map.push(`[GeoGroup]\nName=Row ${row}\nAreaStructure=${row}\n`, square(0, row, side));
    for (let i = 1; i <= side; ++i) {
      map.push(`[GeoUnit]\nName=Square ${row}-${i}\nAreaStructure=${row}, ${i}\n`, square(i - 1, row, 1));
      data.push(`${row}\t${i}\t~\t${(row + i) % 37 === 0 ? 'N/A' : (row * 7 + i * 11) % 101}\n`);
    }
    map.push('[EndGroup]\n');
  }
  writeFileSync(join(work, name + '.map'), map.join(''));
  writeFileSync(join(work, name + '.mdf'), data.join(''));
}

before(async () => {
  writeSquares('many', 80);
  writeSquares('most', 317);
  server = spawn(VEXEL_SERVE, [VEXEL_SAMPLES, work, '--port', '0', '--log', 'none'], {stdio: ['ignore', 'pipe', 'inherit']});
  origin = await new Promise((resolve, reject) => {
    server.stdout.on('data', text => resolve(String(text).match(/http:\/\/[^/\s]+/)[0]));
    server.on('exit', () => reject(new Error('the server ended')));
  });
  browser = await chromium.launch({executablePath: VEXEL_BROWSER, args: ['--no-sandbox', '--disable-gpu',
    '--disable-background-networking', '--disable-component-update', '--disable-sync', '--no-first-run']});
});
after(async () => {
  await browser?.close();
  server?.kill();
  rmSync(work, {recursive: true, force: true});
});

// What the command line finds at a pixel; null for nothing.
async function locate(file, x, y) {
  const run = await promisify(execFile)(VEXEL, ['locate', join(work, file), x + ',' + y, '--level', '2', '--json']).catch(error => error);
  if (run.code === undefined) return JSON.parse(run.stdout);
  assert.match(run.stderr, /no area is there/);
  return null;
}
// The answers for all items, a few of them at a time.
async function inTurns(items, answer) {
  const answers = [], AT_ONCE = 3;
  let next = 0;
  const work = async () => {
    while (next < items.length) {
      const i = next++;
      answers[i] = await answer(items[i]);
    }
  };
  await Promise.all(Array.from({length: AT_ONCE}, work));
  return answers;
}

// A page on which nothing may go wrong unseen.
async function open(address, options = {}) {
  const context = await browser.newContext({viewport: {width: 1280, height: 900}, ...options});
  const page = await context.newPage();
  page.failures = [];
  page.on('pageerror', error => page.failures.push(String(error)));
  page.on('console', message => message.type() === 'error' && page.failures.push(message.text()));
  await page.goto(origin + address);
  if (options.javaScriptEnabled !== false) await settle(page);
  return page;
}
async function close(page) {
  assert.deepEqual(page.failures, []);
  await page.context().close();
}

// Asks the page until it says yes. (The driver's own way evaluates text there, which pages forbid.)
async function until(page, question, argument) {
  const PATIENCE = 20_000, PAUSE = 5;
  for (const end = Date.now() + PATIENCE; !await page.evaluate(question, argument);) {
    if (Date.now() > end) throw new Error('not in time: ' + question + ' ' + argument);
    await new Promise(resolve => setTimeout(resolve, PAUSE));
  }
}

// The page is what its address says, and knows its areas.
const settle = page => until(page,
  () => !byId('main').hasAttribute('aria-busy') && byId('picture')?.complete && source !== null);
async function gone(page, address) {
  await until(page, wanted => decodeURIComponent(location.pathname + location.search) === wanted, address);
  await settle(page);
}
async function placeOn(page, key) {
  return page.evaluate(wanted => {
    const area = source.withKey(wanted);
    return toWindow(area.middle);
  }, key);
}
async function clickOn(page, key) {
  await page.locator('#map').scrollIntoViewIfNeeded();
  await page.mouse.click(...await placeOn(page, key));
}
async function checkAccessible(page, what) {
  await page.evaluate(AXE);
  const found = await page.evaluate(async () => (await axe.run()).violations.map(
    each => each.id + ': ' + each.nodes.map(node => node.html.slice(0, 120)).slice(0, 3).join(' | ')));
  assert.deepEqual(found, [], what);
}
const sidewaysOf = page => page.evaluate(() => document.documentElement.scrollWidth - document.documentElement.clientWidth);

test('from the list of data sets to a county and back', async () => {
  const context = await browser.newContext();
  const list = await context.newPage();
  await list.goto(origin);
  await list.getByRole('link', {name: 'United States: states and counties', exact: true}).click();
  assert.equal(list.url(), origin + '/us-counties');
  await context.close();

  const page = await open('/us-counties?var=4');
  const before = await page.locator('#rows tbody tr').count();
  await clickOn(page, '48');
  await gone(page, '/us-counties/48?var=4');
  assert.match(await page.title(), /Texas/);
  assert.notEqual(await page.locator('#rows tbody tr').count(), before);
  await clickOn(page, '48,201');
  await gone(page, '/us-counties/48?var=4&area=48,201');
  assert.match(await page.locator('#kept').innerText(), /Harris/);
  assert.ok(await page.locator('#lines .pin').getAttribute('d'));
  await page.goBack();
  await gone(page, '/us-counties/48?var=4');
  await page.locator('.path a').click();
  await gone(page, '/us-counties?var=4');
  assert.equal(await page.locator('#rows tbody tr').count(), before);
  await page.goBack();
  await page.goForward();
  await gone(page, '/us-counties?var=4');
  await close(page);
});

test('what is chosen is in the address, and reads back', async () => {
  const page = await open('/us-counties');
  await page.locator('#var').selectOption({label: 'Unemployed 2009'});
  await gone(page, '/us-counties?var=Unemployed 2009');
  await page.locator('#groups').selectOption('3');
  await gone(page, '/us-counties?var=Unemployed 2009&groups=3');
  assert.equal(await page.locator('#map + .side tbody tr').count(), 3);
  await page.locator('#palettes summary').click();
  await page.getByLabel('Viridis').check();
  await gone(page, '/us-counties?var=Unemployed 2009&groups=3&palette=Viridis');
  assert.equal(await page.locator('#palettes').getAttribute('open'), '');
  await page.locator('#more summary').click();
  await page.locator('#bounds').fill('0, 150000, 525000');
  await page.locator('#bounds').press('Enter');
  await gone(page, '/us-counties?var=Unemployed 2009&bounds=0,150000,525000&palette=Viridis');
  await page.locator('#with').selectOption({label: 'Area km2'});
  await until(page, () => document.querySelectorAll('.sheet img').length === 2);
  await settle(page);
  const parts = ['h1', '#map + .side', '.other', '#rows', '#command'];
  const shown = await page.locator(parts.join()).allInnerTexts();
  assert.match(shown.at(-2), /Area km2/);
  await page.reload();
  await settle(page);
  assert.deepEqual(await page.locator(parts.join()).allInnerTexts(), shown);
  await close(page);
});

test('the table is searched, sorted and cut down', async () => {
  const page = await open('/us-counties?var=4&level=2');
  await page.locator('#find').pressSequentially('DONA A');
  await gone(page, '/us-counties?var=4&level=2&find=DONA A');
  assert.deepEqual(await page.locator('#rows tbody th').allInnerTexts(), ['Doña Ana']);
  assert.deepEqual(await page.evaluate(() => [document.activeElement.id, byId('find').selectionStart]), ['find', 6]);
  await page.locator('#show-all').click();
  await gone(page, '/us-counties?var=4&level=2');
  await page.locator('#by-value').click();
  await gone(page, '/us-counties?var=4&level=2&sort=value');
  await page.locator('#by-value').click();
  await gone(page, '/us-counties?var=4&level=2&sort=value&down=1');
  const values = (await page.locator('#rows tbody td.n').allInnerTexts()).map(Number);
  assert.deepEqual(values, [...values].sort((a, b) => b - a));
  await page.locator('#slot-7').click();
  await gone(page, '/us-counties?var=4&level=2&sort=value&down=1&in=7');
  assert.equal(await page.locator('#rows tbody tr').count(), 6);
  await page.locator('#rows tbody tr').first().hover();
  const key = await page.locator('#rows tbody tr').first().getAttribute('data-key');
  assert.equal(await page.locator('#lines .line').getAttribute('d'), await page.evaluate(wanted => source.withKey(wanted).outline, key));
  await page.locator('#map + .side tr[data-slot="0"]').hover();
  assert.ok((await page.locator('#fade path').getAttribute('d')).length > 1000);
  await close(page);
});

test('keys alone do it all', async () => {
  const page = await open('/us-counties?var=4');
  await page.keyboard.press('Tab');
  assert.equal(await page.evaluate(() => document.activeElement.className), 'skip');
  for (let i = 0; i < 40 && await page.evaluate(() => document.activeElement.id) !== 'map'; ++i) await page.keyboard.press('Tab');
  await until(page, () => !byId('tip').hidden);
  const first = await page.locator('#live').innerText();
  await page.keyboard.press('ArrowRight');
  await until(page, before => byId('live').innerText !== before, first);
  const key = await page.evaluate(() => current.key);
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('#tip').isVisible(), false);
  await page.keyboard.press('Enter');
  await gone(page, '/us-counties/' + key + '?var=4');
  assert.equal(await page.evaluate(() => document.activeElement.id), 'map');
  await page.keyboard.press('Backspace');
  await gone(page, '/us-counties?var=4');
  await page.keyboard.press('?');
  assert.equal(await page.locator('#help').isVisible(), true);
  await page.keyboard.press('Escape');
  await page.locator('#find').focus();
  await page.keyboard.type('x?');
  await page.keyboard.press('Backspace');
  assert.equal(await page.locator('#find').inputValue(), 'x');
  assert.equal(await page.locator('#help').isVisible(), false);
  await close(page);
});

test('without a script', async () => {
  const page = await open('/us-counties?var=4', {javaScriptEnabled: false});
  const box = await page.locator('#picture').boundingBox();
  await page.mouse.click(box.x + box.width * 0.45, box.y + box.height * 0.65);
  await page.waitForURL(/\/us-counties\/48\?var=4$/);
  await page.locator('#picture').click({position: {x: 400, y: 300}});
  await page.waitForURL(/&area=48,\d+#kept$/);
  assert.equal(await page.locator('#kept').count(), 1);
  await page.locator('#groups').selectOption('2');
  await page.getByRole('button', {name: 'Show'}).click();
  await page.waitForURL(/groups=2/);
  assert.equal(await page.locator('#map + .side tbody tr').count(), 2);
  await page.locator('#find').fill('harris');
  await page.locator('#find').press('Enter');
  await page.waitForURL(/harris/);
  assert.equal(await page.locator('#rows tbody tr').count(), 2);
  await page.goto(origin + '/many?level=2');
  const pixels = await page.locator('#picture').boundingBox();
  await page.mouse.click(pixels.x + 401, pixels.y + 305);
  await page.waitForURL(/#kept$/);
  const {name} = await locate('many.mdf', 401, 305);
  assert.equal(await page.locator('#kept th').innerText(), name);
  await close(page);
});

test('nothing is found fault with, light or dark, wide or narrow', async () => {
  for (const [address, options] of [
    ['/', {}],
    ['/us-counties?var=5&level=2&palette=YlGnBu&in=7', {}],
    ['/us-counties?var=5&with=6&sort=value', {colorScheme: 'dark'}],
    ['/us-counties/48?var=4&nonsense=1', {viewport: {width: 375, height: 800}, colorScheme: 'dark'}],
    ['/us-counties?var=5&with=6&level=2', {viewport: {width: 375, height: 800}}],
    ['/us-counties?var=4&level=2', {viewport: {width: 2560, height: 1300}}],
    ['/names', {viewport: {width: 1000, height: 700}}],
  ]) {
    const context = await browser.newContext({viewport: {width: 1280, height: 900}, ...options});
    const page = await context.newPage();
    await page.goto(origin + address);
    if (address !== '/') await settle(page);
    await checkAccessible(page, address);
    assert.ok(await sidewaysOf(page) <= 0, address);
    if (address.includes('nonsense')) assert.match(await page.locator('#notes').innerText(), /nonsense/);
    if (address !== '/') {
      await page.locator('#palettes summary').click();
      await checkAccessible(page, address + ' with palettes');
      assert.ok(await sidewaysOf(page) <= 0, address + ' with palettes');
    }
    await context.close();
  }
});

// The colour of the picture at one of its pixels, and those of the legend by their texts.
const pixelReader = page => page.evaluate(() => {
  const picture = byId('picture');
  const canvas = document.createElement('canvas');
  [canvas.width, canvas.height] = [picture.getAttribute('width'), picture.getAttribute('height')].map(Number);
  const context = canvas.getContext('2d', {willReadFrequently: true});
  context.drawImage(picture, 0, 0, canvas.width, canvas.height);
  window.colorAt = (x, y) => '#' + [...context.getImageData(x, y, 1, 1).data.slice(0, 3)].map(each => each.toString(16).padStart(2, '0')).join('').toUpperCase();
  return Object.fromEntries([...document.querySelectorAll('#map + .side tr[data-slot]')].map(
    row => [row.querySelector('span').textContent, row.querySelector('path').getAttribute('fill')]));
});
function randomPoints(count, width, height) {
  let seed = 12345;
  const next = below => (seed = (seed * 1103515245 + 12345) % 2147483648) % below;
  const points = new Map();
  while (points.size < count) {
    const point = [next(width), next(height)];
    points.set(String(point), point);
  }
  return [...points.values()];
}
const tipLines = page => page.evaluate(() => byId('tip').hidden ? null : byId('tip').innerText.split('\n').map(line => line.trim()));

test('what the page says of 500 places is what is drawn there', async () => {
  const page = await open('/us-counties?var=4&level=2&palette=YlGnBu');
  const colors = await pixelReader(page);
  const box = await page.locator('#picture').boundingBox();
  let clear = 0;
  for (const [x, y] of randomPoints(500, 800, 600)) {
    await page.mouse.move(box.x + x + 0.5, box.y + y + 0.5);
    const said = await tipLines(page);
    const color = await page.evaluate(([column, row]) => colorAt(column, row), [x, y]);
    if (!Object.values(colors).includes(color) || color === colors['No data']) continue;
    assert.equal(said && colors[said.at(-1)], color, x + ',' + y);
    ++clear;
  }
  assert.ok(clear > 100, clear + ' places');
  await close(page);
});

test('the page, the command line and the picture agree on 500 pixels', async () => {
  const page = await open('/many?level=2&palette=YlOrRd');
  const colors = await pixelReader(page);
  const box = await page.locator('#picture').boundingBox();
  assert.equal(box.width, 800);
  const points = randomPoints(500, 800, 600);
  const located = await inTurns(points, ([x, y]) => locate('many.mdf', x, y));
  for (const [i, [x, y]] of points.entries()) {
    const found = located[i];
    const answer = page.waitForResponse(response => response.url().endsWith('x=' + x + '&y=' + y));
    await page.mouse.move(box.x + x + 0.5, box.y + y + 0.5);
    await (await answer).finished();
    await until(page, name => (byId('tip').hidden ? null : byId('tip').querySelector('b').textContent) === name, found?.name ?? null);
    if (found === null) continue;
    const said = await tipLines(page);
    const color = await page.evaluate(([column, row]) => colorAt(column, row), [x, y]);
    const isLine = color === '#000000';
    assert.ok(isLine || color === colors[said.at(-1)], x + ',' + y + ' ' + color + ' ' + said);
  }
  await close(page);
});

test('a hundred thousand areas stay light', async () => {
  const context = await browser.newContext({viewport: {width: 1280, height: 900}});
  const page = await context.newPage();
  await page.goto(origin + '/most?level=2');
  await settle(page);
  const bytes = await page.evaluate(() => [...performance.getEntriesByType('navigation'), ...performance.getEntriesByType('resource')].reduce((sum, each) => sum + each.decodedBodySize, 0));
  assert.ok(bytes < 400_000, bytes + ' bytes');
  const started = Date.now();
  await page.reload();
  await settle(page);
  const shown = Date.now() - started;
  const times = [];
  const box = await page.locator('#picture').boundingBox();
  for (let i = 0; i < 20; ++i) {
    const answer = page.waitForResponse(response => response.url().includes('at.json'));
    const asked = Date.now();
    await page.mouse.move(box.x + 250.5 + 11 * i, box.y + 200.5 + 7 * i);
    await answer;
    times.push(Date.now() - asked);
  }
  const middle = times.sort((a, b) => a - b)[10];
  console.log('picture after ' + shown + ' ms, answers after ' + middle + ' ms, ' + bytes + ' bytes');
  // What a page costs is measured elsewhere; here it may not grow out of all proportion.
  assert.ok(shown < 20000 && middle < 2000, shown + ' ms, ' + middle + ' ms');
  await page.locator('#map').focus();
  await page.keyboard.press('ArrowUp');
  await until(page, () => current !== null);
  await context.close();
});
