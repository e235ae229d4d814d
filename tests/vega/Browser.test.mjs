// SPDX-License-Identifier: Apache-2.0
//
// Pages of `chartbridge view` in a browser, as a person uses them, without a network.
import assert from 'node:assert/strict';
import { mkdirSync } from 'node:fs';
import path from 'node:path';
import { after, before, describe, test } from 'node:test';
import puppeteer from 'puppeteer-core';
import { chartbridge, EXAMPLES, PICTURES, WorkFolder } from './Command.mjs';
import { CSV, SAMPLES } from './samples.mjs';

const CHART = path.join(EXAMPLES, 'charts/states.gpl');
const DATA = path.join(EXAMPLES, 'data/states.csv');
const MAPS = ['states.geojson', 'cities.geojson'].map((name) => path.join(EXAMPLES, 'maps', name));
const TOOLTIP = '#vg-tooltip-element.visible';
/** Milliseconds that a busy machine may take. */
const PATIENCE = 180000;

let browser;

before(async () => {
  const executablePath = process.env.CHARTBRIDGE_CHROMIUM;
  assert.match(executablePath ?? '', /^\//, 'chromium is missing; scripts/setup installs it, then configure again');
  mkdirSync(PICTURES, { recursive: true });
  // The sandbox of the browser does not work for root.
  const args = process.getuid() === 0 ? ['--no-sandbox'] : [];
  browser = await puppeteer.launch({ executablePath, args, headless: true, timeout: PATIENCE });
});

after(() => browser?.close());

/** Opens a page of `chartbridge view` and sees that it loads nothing and that nothing goes wrong. */
async function open(t, file) {
  const page = await browser.newPage();
  page.setDefaultTimeout(PATIENCE);
  t.after(() => page.close());
  const complaints = [];
  page.on('console', (message) => complaints.push(message.text()));
  page.on('pageerror', (error) => complaints.push(error.message));
  page.on('dialog', (dialog) => complaints.push(`a dialog: ${dialog.message()}`));
  page.on('request', (request) => {
    const own = request.url() === `file://${file}` || /^(data|blob):/.test(request.url());
    if (!own) complaints.push(`loads ${request.url()}`);
  });
  await page.setOfflineMode(true);
  await page.setViewport({ width: 1000, height: 800 });
  await page.goto(`file://${file}`);
  await page.waitForFunction(
    () => document.getElementById('chart').vegaView || !document.getElementById('failure').hidden,
  );
  assert.equal(await page.$eval('#failure', (element) => element.textContent), '');
  page.complaints = complaints;
  return page;
}

/** Where the marks with these values in their tooltips are in the window. */
function findMark(page, values) {
  return page.$eval(
    '#chart',
    (place, wanted) => {
      const view = place.vegaView;
      const frame = place.querySelector('canvas, svg').getBoundingClientRect();
      const [left, top] = view.origin();
      const padding = view.padding();
      const search = (mark, x, y) => {
        for (const item of mark.items) {
          const told = item.tooltip && Object.values(item.tooltip).map(String);
          if (told && wanted.every((value) => told.includes(value))) {
            const middle = mark.marktype === 'rect' ? [item.width / 2, item.height / 2] : [0, 0];
            return { x: x + item.x + middle[0], y: y + item.y + middle[1] };
          }
          for (const child of item.items ?? []) {
            const found = search(child, x + (item.x ?? 0), y + (item.y ?? 0));
            if (found) return found;
          }
        }
        return null;
      };
      const found = search(view.scenegraph().root, frame.left + padding.left + left, frame.top + padding.top + top);
      return found ?? Promise.reject(new Error(`no mark says ${wanted}`));
    },
    values,
  );
}

async function tooltipAt(page, { x, y }) {
  await page.mouse.move(x - 30, y - 30);
  await page.mouse.move(x, y, { steps: 5 });
  await page.waitForSelector(TOOLTIP);
  return page.$eval(TOOLTIP, (element) => element.innerText);
}

/** The opacities of all bars of a chart that is drawn as SVG. */
function opacitiesOfBars(page) {
  return page.$$eval('#chart .mark-rect.role-mark path', (bars) => bars.map((bar) => Number(bar.getAttribute('opacity') ?? 1)));
}

describe('a map', () => {
  test('tells the values of a state under the pointer', async (t) => {
    const folder = new WorkFolder(t);
    const file = folder.file('states.html');
    await chartbridge('view', CHART, '-d', DATA, '-o', file, '--geo', ...MAPS);
    // For a look at both.
    await chartbridge('render', CHART, '-d', DATA, '-o', path.join(PICTURES, 'states.png'));
    const page = await open(t, file);
    assert.equal(await page.title(), 'Where people lived in the United States in 1975');
    const label = await page.$eval('[role=figure]', (figure) => figure.getAttribute('aria-label'));
    assert.match(label, /Where people lived/);

    const california = await findMark(page, ['21,198']);
    const text = await tooltipAt(page, california);
    for (const part of ['Population (thousands)', '21,198', 'Region', 'West', '36.5341']) {
      assert.ok(text.includes(part), `${part} in: ${text}`);
    }
    await page.screenshot({ path: path.join(PICTURES, 'states-map.png') });
    assert.deepEqual(page.complaints, []);
  });

  test('is drawn under the points, and zooms', async (t) => {
    const folder = new WorkFolder(t);
    const file = folder.file('states.html');
    await chartbridge('view', CHART, '-d', DATA, '-o', file, '--geo', MAPS[0]);
    const page = await open(t, file);
    const colorAt = ({ x, y }) =>
      page.$eval('#chart canvas', (canvas, at) => {
        const frame = canvas.getBoundingClientRect();
        const scale = canvas.width / frame.width;
        const copy = new OffscreenCanvas(1, 1).getContext('2d');
        copy.drawImage(canvas, -Math.round((at.x - frame.left) * scale), -Math.round((at.y - frame.top) * scale));
        return [...copy.getImageData(0, 0, 1, 1).data].slice(0, 3);
      }, { x, y });
    // Wyoming's point is small; beside it is land. West of Oregon is sea.
    const wyoming = await findMark(page, ['376']);
    const land = await colorAt({ x: wyoming.x + 12, y: wyoming.y });
    const oregon = await findMark(page, ['2,284']);
    const sea = await colorAt({ x: oregon.x - 70, y: oregon.y });
    assert.deepEqual(sea, [255, 255, 255]);
    assert.notDeepEqual(land, sea);

    const slider = await page.$('.vega-bind input[type=range]');
    assert.ok(slider, 'there is a control for the zoom');
    await slider.focus();
    await page.keyboard.press('End');
    await page.waitForFunction(
      (before) => {
        const marks = [];
        const walk = (mark) => mark.items.forEach((item) => {
          if (item.tooltip) marks.push(item);
          (item.items ?? []).forEach(walk);
        });
        walk(document.getElementById('chart').vegaView.scenegraph().root);
        return !marks.some((item) => Math.abs(item.x - before) < 1e-9);
      },
      {},
      wyoming.x,
    );
    assert.deepEqual(page.complaints, []);
  });
});

describe('a chart', () => {
  test('answers to pointer, click and wheel', async (t) => {
    const folder = new WorkFolder(t);
    const file = folder.file('sales.html');
    const chart = folder.write('sales.gpl', SAMPLES['grouped-bars']);
    await chartbridge('view', chart, '-d', folder.write('sales.csv', CSV), '-o', file, '--renderer', 'svg', '--title', 'Sales & "more"');
    const page = await open(t, file);
    assert.equal(await page.title(), 'Sales & "more"');

    const bar = await findMark(page, ['North', 'Tea']);
    const text = await tooltipAt(page, bar);
    for (const part of ['North', 'Tea', '3,600.5']) assert.ok(text.includes(part), `${part} in: ${text}`);

    assert.deepEqual(new Set(await opacitiesOfBars(page)), new Set([1]));
    await page.mouse.click(bar.x, bar.y);
    await page.waitForFunction(() =>
      [...document.querySelectorAll('#chart .mark-rect.role-mark path')].some((bar) => Number(bar.getAttribute('opacity') ?? 1) < 1));
    const picked = await opacitiesOfBars(page);
    assert.ok(picked.includes(1), 'what is picked stays');

    const labels = () => page.$$eval('#chart .role-axis-label text', (texts) => texts.map((text) => text.textContent).join(' '));
    const before = await labels();
    await page.mouse.wheel({ deltaY: -400 });
    await page.waitForFunction(
      (old) => [...document.querySelectorAll('#chart .role-axis-label text')].map((text) => text.textContent).join(' ') !== old,
      {},
      before,
    );
    await page.screenshot({ path: path.join(PICTURES, 'sales.png') });
    assert.deepEqual(page.complaints, []);
  });

  test('cannot break out of its page', async (t) => {
    const folder = new WorkFolder(t);
    const file = folder.file('evil.html');
    const evil = '</script><img src=x onerror=alert(1)><!--<script>';
    const chart = folder.write('evil.gpl', `title "${evil}"\ndraw bar: x name, y n`);
    const data = folder.write('evil.csv', `name,n\n${evil},1\nfriend & foe,2\n`);
    await chartbridge('view', chart, '-d', data, '-o', file, '--renderer', 'svg');
    const page = await open(t, file);
    assert.equal(await page.title(), evil);
    const text = await tooltipAt(page, await findMark(page, [evil]));
    assert.ok(text.includes(evil), text);
    assert.equal(await page.$('img'), null);
    const shown = await page.$eval('#chart svg', (svg) => svg.textContent);
    assert.ok(shown.includes('friend & foe'), shown);
    assert.deepEqual(page.complaints, []);
  });
});
