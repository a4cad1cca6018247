// The report's pages in a browser (CHROMIUM), made by TESSERA_PROGRAM from runs of TESSERA_FMU.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync, statSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {after, afterEach, before, beforeEach, test} from 'node:test';
import {chromium} from 'playwright-core';

const folder = mkdtempSync(join(tmpdir(), 'report-test-'));
const inFolder = (name) => join(folder, name);
const metaOf = (name) => JSON.parse(readFileSync(inFolder(`${name}.meta.json`), 'utf8'));
const tessera = (...args) => execFileSync(process.env.TESSERA_PROGRAM, args, {cwd: folder, stdio: 'pipe'});
const kFlags = ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
  '--disable-background-networking', '--disable-component-update', '--disable-sync'];
const complaints = [];
let browser, page;
/** The columns of a CSV file of numbers, by name. */
function columnsOf(file) {
  const [head, ...rows] = readFileSync(inFolder(file), 'utf8').trim().split('\n').map((line) => line.split(','));
  return Object.fromEntries(head.map((name, i) => [name.replaceAll('"', ''), rows.map((row) => Number(row[i]))]));
}

/** The number at the front of a text as the page writes it. */
const shownNumber = (text) => parseFloat(text.replaceAll('−', '-').replaceAll('\u202f', ''));

const expectClose = (shown, exact) =>  // five digits are shown
  assert.ok(Math.abs(shown - exact) <= 6e-5 * Math.abs(exact) + 1e-9, `${shown} instead of ${exact}`);

const open = (name) => page.goto(`file://${inFolder(name)}`);
const texts = (selector) => page.locator(selector).allTextContents();
const timesOnAxes = () => page.locator('.chart').evaluateAll((charts) => charts.map((chart) =>
  [...chart.querySelectorAll('.dygraph-axis-label-x')].map((label) => label.textContent).join(' ')));

/** The mouse over a chart, at a share of its width. */
async function hover(index, share) {
  await page.locator('.plot').nth(index).scrollIntoViewIfNeeded();
  const box = await page.locator('.plot').nth(index).boundingBox();
  await page.mouse.move(box.x + share * box.width, box.y + box.height / 2);
}

/** How many pixels of each chart have the color of one of its lines. */
const inkOfCharts = () => page.locator('.chart').evaluateAll((charts) => charts.map((chart) => {
  const colors = [...chart.querySelectorAll('.legend .line')].map((line) =>
    getComputedStyle(line).color.match(/\d+/g).map(Number));
  const canvas = chart.querySelector('canvas');
  const {data} = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
  let count = 0;
  const has = (i) => (color) => color.every((part, k) => Math.abs(part - data[i + k]) < 24);
  for (let i = 0; i < data.length; i += 4) count += data[i + 3] > 128 && colors.some(has(i));
  return count;
}));

before(async () => {
  const run = (file, ...args) => tessera('run', process.env.TESSERA_FMU, '--quiet', '--output-file', file, ...args);
  run('base.csv');
  run('cold.csv', '--stop-time', '100', '--output-interval', '3', '--start-value', 'ambient.temperature_set=-10');
  tessera('report', 'base.csv', '-o', 'one.html');
  tessera('report', 'base.csv', 'cold.csv', '-o', 'two.html');
  browser = await chromium.launch({executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium', args: kFlags});
});
after(() => browser?.close().then(() => rmSync(folder, {recursive: true})));
beforeEach(async () => {
  page = await browser.newPage({viewport: {width: 1280, height: 900}});
  page.on('console', (message) => complaints.push(message.text()));
  page.on('pageerror', (error) => complaints.push(error.stack));
  page.on('request', (request) => {
    if (!/^(file|data):/.test(request.url())) complaints.push(`request for ${request.url()}`);
  });
});
afterEach(async () => {
  await page.setViewportSize({width: 600, height: 900});
  await page.waitForFunction(() => document.documentElement.scrollWidth <= 600, null, {timeout: 5000});  // fits in
  await page.close();
  assert.deepEqual(complaints.splice(0), []);
});

test('a full scenario is small, quickly drawn, and opens on at most six charts', async () => {
  const meta = metaOf('base');
  assert.deepEqual([meta.result.rows, meta.result.variables], [1999, 146]);
  await open('one.html');
  const {size} = statSync(inFolder('one.html'));
  const drawn = Number(await page.locator('html').getAttribute('data-drawn'));
  console.log(`page of ${size} bytes, drawn after ${drawn} ms`);
  assert.ok(size < 4e6 && drawn > 0 && drawn < 3000);
  const ink = await inkOfCharts();
  assert.ok(ink.length > 0 && ink.length <= 6, `${ink.length} charts`);
  ink.forEach((count) => assert.ok(count > 300, `pixels of lines: ${ink}`));
  assert.ok((await texts('.pairs dd')).includes(meta.unit.guid));
  assert.deepEqual(await texts('.tile h2'), meta.summary.map(({title}) => title));
});

test('search and groups choose signals, a click adds and removes a chart', async () => {
  const {outputs} = metaOf('base');
  await open('one.html');
  const charts = await page.locator('.chart').count();
  for (const word of ['HUMIDITY', 'ejector', 'km/h']) {  // in names, in texts, in units
    await page.fill('#search', word);
    const expected = outputs.filter((output) =>
      `${output.name} ${output.description} ${output.unit}`.toLowerCase().includes(word.toLowerCase()));
    assert.ok(expected.length > 0);
    assert.deepEqual((await texts('.signal-name')).sort(), expected.map(({name}) => name).sort());
  }
  await page.fill('#search', '');
  await page.selectOption('#group', 'Coolant');
  const names = await texts('.signal-name');
  assert.ok(names.includes('coolant.stack_outlet_temperature') && !names.includes('stack.voltage'));
  const signal = page.locator('.signal', {hasText: 'bypass.flow'});
  await signal.click();
  assert.equal(await page.locator('.chart').count(), charts + 1);
  assert.ok((await inkOfCharts()).pop() > 300);
  await signal.click();
  assert.equal(await page.locator('.chart').count(), charts);
});

test('cursor and zoom are one in all charts, values are those of the file', async () => {
  const columns = columnsOf('base.csv');
  await open('one.html');
  await hover(1, 0.4);
  const times = await page.locator('.cursor:not([hidden])').evaluateAll((all) => all.map(({dataset}) => dataset.time));
  const time = Number(times[0]);
  assert.ok(time > 100 && time < 1900);
  assert.deepEqual(times, Array(await page.locator('.chart').count()).fill(times[0]));
  const row = columns.time.indexOf(time);
  const legend = await texts('.legend li');  // name and value, the right axis marked between them
  assert.ok(legend.length >= 6);
  for (const [, name, value] of legend.map((text) => /^([a-z_.]+)(?: ▸)?(.+)$/.exec(text))) {
    expectClose(shownNumber(value), columns[name][row]);
  }
  const all = await timesOnAxes();
  await page.mouse.down();
  await hover(1, 0.5);
  await page.mouse.up();
  const zoomed = await timesOnAxes();
  assert.notEqual(zoomed[0], all[0]);
  assert.equal(new Set(zoomed).size, 1);
  await page.locator('.plot').nth(1).dblclick();
  assert.deepEqual(await timesOnAxes(), all);
  await page.locator('.plot').nth(2).press('+');
  assert.notEqual((await timesOnAxes())[0], all[0]);
  await page.click('#reset');
  assert.deepEqual(await timesOnAxes(), all);
});

test('runs lie over each other, and their difference is drawn', async () => {
  const [base, cold] = [columnsOf('base.csv'), columnsOf('cold.csv')];
  await open('two.html');
  assert.deepEqual(await texts('.run'), ['base', 'cold']);
  (await inkOfCharts()).forEach((count) => assert.ok(count > 300));
  const name = 'cathode_inlet.pressure';
  const values = () => page.locator('.legend li', {hasText: name}).locator('.value').allTextContents();
  const coldAt = (time) => {  // its rows are 3 s apart
    const row = Math.floor(time / 3), share = time / 3 - row;
    return (1 - share) * cold[name][row] + share * cold[name][row + 1];
  };
  await hover(1, 0.1);
  const cursor = async () => Number(await page.locator('.cursor').first().getAttribute('data-time'));
  const time = await cursor();
  assert.ok(time > 0 && time < 100);
  const [first, second] = (await values()).map(shownNumber);
  expectClose(first, base[name][time]);
  expectClose(second, coldAt(time));
  await page.click('#modes button >> nth=1');
  await hover(1, 0.1);
  const [difference] = (await values()).map(shownNumber);
  const exact = coldAt(await cursor()) - base[name][await cursor()];
  assert.ok(Math.abs(difference - exact) < 1e-6, `${difference} instead of ${exact}`);  // single precision of 1.4 bar
  assert.ok((await inkOfCharts())[3] > 20);
  await page.click('.run >> nth=1');  // nothing is left to draw
  assert.ok(await page.locator('.empty').first().isVisible());
});

test('light and dark follow the system, then the switch, which is remembered', async () => {
  const ground = () => page.evaluate(() => Number(getComputedStyle(document.body).backgroundColor.match(/\d+/)[0]));
  await open('one.html');
  assert.ok(await ground() > 200);
  await page.emulateMedia({colorScheme: 'dark'});
  await page.reload();
  assert.ok(await ground() < 60);
  await page.click('#theme');
  assert.ok(await ground() > 200);
  (await inkOfCharts()).forEach((count) => assert.ok(count > 300));
  await page.reload();
  assert.ok(await ground() > 200);
});

test('names are texts, whatever stands in them; without circumstances the page says so', async () => {
  const names = ['</script><img src=x>', '<!--<script>', 'a.b&amp;'];
  writeFileSync(inFolder('odd.csv'), `time,${names.join(',')}\n0,1,2,3\n1,2,nan,5\n2,5,inf,5\n`);
  tessera('report', 'odd.csv', '-o', 'odd.html');
  await open('odd.html');
  assert.deepEqual((await texts('.signal-name')).sort(), [...names].sort());
  assert.equal(await page.locator('img').count(), 0);
  assert.match((await texts('#facts')).join(), /no odd\.meta\.json/);
  assert.match((await texts('#warnings')).join(), /is not finite in 2 of 3 rows, first at 1 s/);
  assert.ok(await page.locator('.chart').first().locator('.dygraph-axis-label-y').count() > 1, 'infinity took the axis');
});

test('the points of a study: scatter, sorting, filters, reasons of failures', async () => {
  const rows = Array.from({length: 40}, (_, i) => (i % 10 === 3 ? `${i},time_out,"none, ""within"" 5 s",${i % 7},,`
    : `${i},ok,,${i % 7},${100 - i / 4},${i % 2 ? 1000 : 1000.0000000000001}`));
  writeFileSync(inFolder('study.csv'), `"point","status","reason","load","voltage","noise"\n${rows.join('\n')}\n`);
  tessera('report', 'study.csv', '-o', 'study.html');
  await open('study.html');
  assert.deepEqual(await texts('#axes option:checked'), ['load', 'voltage', 'nothing']);
  const points = () => texts('.points tbody td:first-child');
  await page.click('.points button:has-text("voltage")');
  assert.deepEqual((await points()).slice(0, 2), ['39', '38']);
  assert.deepEqual((await points()).slice(-4), ['3', '13', '23', '33']);  // without a value
  await page.fill('[aria-label="Filter by load"]', '2..3');
  assert.ok((await points()).every((point) => [2, 3].includes(point % 7)));
  await page.fill('[aria-label="Filter by status"]', 'out');
  assert.deepEqual(await points(), ['3', '23']);
  assert.match((await texts('#warnings')).join(), /time_out: none, "within" 5 s \(point 3, 13, 23, 33\)/);
  await page.fill('[aria-label="Filter by status"]', '');
  const picture = () => page.locator('#scatter').evaluate((canvas) => canvas.toDataURL());
  const uncolored = await picture();
  await page.selectOption('#axis-color', {label: 'voltage'});
  assert.notEqual(await picture(), uncolored);
  await page.selectOption('#axis-y', {label: 'noise'});  // of the last digit only
  await page.locator('#scatter').press('ArrowRight');
  assert.match((await texts('#tip')).join(), /^point {2}\d+/);
});
