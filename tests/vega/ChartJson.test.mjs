// SPDX-License-Identifier: Apache-2.0
//
// What `chartbridge json` writes, against reality: schema, compiler, renderer, and the data.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { describe, test } from 'node:test';
import { ChartChecker, SCHEMA_URL } from './ChartChecker.mjs';
import { chartbridge, EXAMPLES, WorkFolder } from './Command.mjs';
import { CSV, OWN_SAMPLES, ROWS, SAMPLES, sumBy } from './samples.mjs';

const checker = new ChartChecker();
// Starting Java takes its time; the machine has more than one processor.
const TOGETHER = { concurrency: 2 };

const EXAMPLE_CHARTS = readdirSync(path.join(EXAMPLES, 'charts')).filter((name) => /\.(gpl|xml)$/.test(name));
assert.ok(EXAMPLE_CHARTS.length >= 16, 'the example charts are gone');

function exampleChart(name) {
  return path.join(EXAMPLES, 'charts', name);
}

/** titanic-classes.gpl shows titanic.csv. */
function exampleData(chart) {
  return path.join(EXAMPLES, 'data', `${chart.replace(/[-.].*/, '')}.csv`);
}

const MAPS = ['states.geojson', 'cities.geojson'].map((name) => path.join(EXAMPLES, 'maps', name));

/** Exports with these arguments and checks the result. */
async function exported(folder, args, rows) {
  const file = folder.file('chart.vl.json');
  await chartbridge('json', ...args, '-o', file);
  const chart = folder.readJson('chart.vl.json');
  return { chart, ...(await checker.check(file, rows)) };
}

/** Exports a sample. */
function exportedSample(folder, chart, ...options) {
  const file = folder.write(chart.startsWith('<') ? 'chart.xml' : 'chart.gpl', chart);
  return exported(folder, [file, '-d', folder.write('data.csv', CSV), ...options]);
}

/** The items of the marks of a type that stand for data. */
function itemsOf(marks, type) {
  return marks.filter((mark) => mark.type === type && mark.role === 'mark').flatMap(({ items }) => items);
}

/** Items with their tooltips as a map: the tooltip's text under `key` says which. */
function byTooltip(items, ...keys) {
  return new Map(items.map((item) => [keys.map((key) => item.tooltip[key]).join(' '), item]));
}

function groupBy(items, key) {
  const groups = new Map();
  for (const item of items) groups.set(key(item), [...(groups.get(key(item)) ?? []), item]);
  return groups;
}

function near(actual, expected, what) {
  assert.ok(Math.abs(actual - expected) <= 1e-6 * Math.max(1, Math.abs(expected)), `${what}: ${actual}, not ${expected}`);
}

/** What is drawn for the data, apart from where: a template scales its axes by itself. */
function kindsOf(marks) {
  return marks
    .filter(({ role }) => role === 'mark')
    .map(({ type, items }) => ({ type, colors: items.map(({ fill, stroke }) => `${fill} ${stroke}`).sort() }));
}

/** What the picture looks like, without what only interaction needs. */
function shapesOf(marks) {
  return marks
    .filter(({ role }) => role === 'mark')
    .map(({ type, items }) => ({ type, items: items.map(({ datum, tooltip, ...drawn }) => drawn) }));
}

/** SVG without the numbers that the renderer counts through. */
function withoutCounters(svg) {
  return svg.replace(/clip\d+/g, 'clip');
}

describe('examples, plain', TOGETHER, () => {
  for (const name of EXAMPLE_CHARTS) {
    test(name, async (t) => {
      const { chart, svg } = await exported(new WorkFolder(t), [exampleChart(name), '-d', exampleData(name)]);
      assert.equal(chart.$schema, SCHEMA_URL);
      assert.ok(Array.isArray(chart.data.values) && chart.data.values.length > 0, 'the data are in the chart');
      assert.equal(chart.params, undefined, 'a plain chart has no parameters');
      assert.match(svg, /<path/);
    });
  }
});

describe('examples, as templates', TOGETHER, () => {
  for (const name of ['virginia.gpl', 'co2.gpl', 'titanic-classes.gpl', 'nottingham.gpl', 'cars-weight.xml']) {
    test(name, async (t) => {
      const folder = new WorkFolder(t);
      const full = await exported(folder, [exampleChart(name), '-d', exampleData(name)]);
      const args = [exampleChart(name), '-d', exampleData(name), '--template'];
      const filled = await exported(folder, args, full.chart.data.values);
      assert.deepEqual(filled.chart.data, { ...filled.chart.data, name: 'data' });
      assert.equal(filled.chart.data.values, undefined, 'a template has no data');
      assert.deepEqual(kindsOf(filled.marks), kindsOf(full.marks));
    });
  }
});

describe('samples of every kind', TOGETHER, () => {
  for (const [name, chart] of Object.entries(SAMPLES)) {
    test(name, async (t) => {
      const { marks } = await exportedSample(new WorkFolder(t), chart, '-i');
      const told = marks.flatMap(({ items }) => items).filter(({ tooltip }) => tooltip);
      assert.ok(told.length > 0, 'marks say what they are');
    });
  }
  for (const [name, chart] of Object.entries(OWN_SAMPLES)) {
    test(name, async (t) => {
      const folder = new WorkFolder(t);
      const file = folder.write('chart.xml', chart);
      await exported(folder, [file, '--interactive']);
      const { marks } = await exported(folder, [file]);
      assert.equal(itemsOf(marks, 'rect').length, name === 'own-bins' ? 3 : 2);
    });
  }
});

describe('numbers', TOGETHER, () => {
  test('bars are as high as the sums', async (t) => {
    const { marks } = await exportedSample(new WorkFolder(t), SAMPLES['grouped-bars'], '-i');
    const bars = byTooltip(itemsOf(marks, 'rect'), 'region', 'product');
    const sums = sumBy('revenue', (row) => `${row.region} ${row.product}`);
    assert.deepEqual([...bars.keys()].sort(), [...sums.keys()].sort());
    const scale = bars.get('North Tea').height / sums.get('North Tea');
    for (const [key, sum] of sums) near(bars.get(key).height / scale, sum, key);
  });

  test('stacked bars stand on each other', async (t) => {
    const { marks } = await exportedSample(new WorkFolder(t), SAMPLES['stacked-bars'], '-i');
    const stacks = groupBy(itemsOf(marks, 'rect'), ({ tooltip }) => tooltip.month);
    assert.equal(stacks.size, 3);
    for (const [month, bars] of stacks) {
      assert.equal(bars.length, 2, month);
      const [upper, lower] = bars.sort((a, b) => a.y - b.y);
      near(upper.y + upper.height, lower.y, month);
    }
  });

  test('filled bars fill the axis', async (t) => {
    const { marks } = await exportedSample(new WorkFolder(t), SAMPLES['filled-bars'], '-i');
    const stacks = groupBy(itemsOf(marks, 'rect'), ({ tooltip }) => tooltip.month);
    const heights = [...stacks.values()].map((bars) => bars.reduce((sum, { height }) => sum + height, 0));
    assert.equal(heights.length, 3);
    for (const height of heights) near(height, heights[0], 'a stack');
  });

  test('counted bars count', async (t) => {
    const { marks } = await exportedSample(new WorkFolder(t), SAMPLES['counted-bars'], '-i');
    const bars = itemsOf(marks, 'rect');
    assert.equal(bars.length, 2);
    for (const bar of bars) assert.ok(Object.values(bar.tooltip).includes('6'), JSON.stringify(bar.tooltip));
  });

  test('slices are as wide as their shares', async (t) => {
    const { marks } = await exportedSample(new WorkFolder(t), SAMPLES.pie, '-i');
    const slices = byTooltip(itemsOf(marks, 'arc'), 'product');
    const sums = sumBy('revenue', (row) => row.product);
    const whole = [...sums.values()].reduce((a, b) => a + b);
    assert.equal(slices.size, sums.size);
    for (const [product, sum] of sums) {
      const { startAngle, endAngle } = slices.get(product);
      near(Math.abs(endAngle - startAngle) / (2 * Math.PI), sum / whole, product);
    }
  });

  test('bins of a histogram count every value once', async (t) => {
    const { marks } = await exportedSample(new WorkFolder(t), SAMPLES.histogram);
    const bins = itemsOf(marks, 'rect').filter(({ height }) => height > 0);
    const values = ROWS.map((row) => row.revenue).filter((value) => value !== null);
    // Eleven values; bars of the same scale add up to them.
    const unit = Math.min(...bins.map(({ height }) => height));
    const counts = bins.map(({ height }) => height / unit);
    for (const count of counts) near(count, Math.round(count), 'a count');
    assert.equal(Math.round(counts.reduce((a, b) => a + b)), values.length);
  });

  test('points lie where the numbers are', async (t) => {
    const { marks } = await exportedSample(new WorkFolder(t), 'draw point: x units, y revenue');
    const points = itemsOf(marks, 'symbol');
    const rows = ROWS.filter((row) => row.units !== null && row.revenue !== null);
    assert.equal(points.length, rows.length);
    const sorted = [...points].sort((a, b) => a.datum.units - b.datum.units);
    const [first, last] = [sorted[0], sorted[sorted.length - 1]];
    const scale = (last.x - first.x) / (last.datum.units - first.datum.units);
    for (const point of points) near(first.x + (point.datum.units - first.datum.units) * scale, point.x, 'x');
  });

  test('a missing value breaks no line and makes no point', async (t) => {
    const { chart } = await exportedSample(new WorkFolder(t), SAMPLES.points);
    assert.equal(chart.data.values.length, ROWS.length);
    assert.equal(chart.data.values.filter(({ revenue }) => revenue === null).length, 1);
  });
});

describe('maps', TOGETHER, () => {
  const args = [exampleChart('states.gpl'), '-d', exampleData('states.gpl'), '-i'];

  test('GeoJSON lies below the points', async (t) => {
    const { marks, svg } = await exported(new WorkFolder(t), [...args, '--geo', ...MAPS]);
    const types = marks.filter(({ role }) => role === 'mark').map(({ type }) => type);
    assert.ok(types.indexOf('shape') < types.indexOf('symbol'), types.join());
    assert.equal(itemsOf(marks, 'shape').length, 1 + 9);
    const points = itemsOf(marks, 'symbol').filter(({ tooltip }) => tooltip);
    assert.equal(points.length, 48);
    // Maine lies east of Nevada, and Washington north of Texas.
    const states = new Map(points.map((point) => [`${point.datum.longitude}`, point]));
    assert.ok(states.get('-68.9801').x > states.get('-116.851').x);
    assert.ok(states.get('-119.746').y < states.get('-98.7857').y);
    assert.match(svg, /<path[^>]* d="M/);
  });

  test('the winding of rings does not matter', async (t) => {
    const folder = new WorkFolder(t);
    const document = JSON.parse(readFileSync(MAPS[0], 'utf8'));
    for (const ring of document.features[0].geometry.coordinates) ring.reverse();
    const turned = folder.write('turned.geojson', JSON.stringify(document));
    const one = await exported(folder, [...args, '--geo', MAPS[0]]);
    const other = await exported(folder, [...args, '--geo', turned]);
    assert.equal(withoutCounters(other.svg), withoutCounters(one.svg));
    // A ring that is taken for its outside would fill the picture.
    const path = one.svg.match(/<path[^>]* d="(M[^"]{500,})"/)[1];
    const coordinates = path.match(/-?\d+(\.\d+)?/g).map(Number);
    assert.ok(Math.max(...coordinates) < 2000, 'the land has edges');
  });

  test('the projection can be chosen', async (t) => {
    const folder = new WorkFolder(t);
    const one = await exported(folder, [...args, '--geo', MAPS[0], '--projection', 'mercator']);
    const other = await exported(folder, [...args, '--geo', MAPS[0], '--projection', 'equirectangular']);
    assert.notEqual(one.svg, other.svg);
    assert.match(JSON.stringify(one.chart), /"type":"mercator"/);
  });
});

test('data in a file of their own', async (t) => {
  const folder = new WorkFolder(t);
  const inside = await exportedSample(folder, SAMPLES['grouped-bars'], '-i');
  const beside = await exportedSample(folder, SAMPLES['grouped-bars'], '-i', '--data-file', folder.file('rows of 2024.json'));
  assert.equal(beside.chart.data.values, undefined);
  assert.deepEqual(folder.readJson('rows of 2024.json'), inside.chart.data.values);
  assert.deepEqual(shapesOf(beside.marks), shapesOf(inside.marks));

  // The file can be replaced without a new chart.
  writeFileSync(folder.file('rows of 2024.json'), JSON.stringify(inside.chart.data.values.slice(0, 2)));
  const { marks } = await checker.check(folder.file('chart.vl.json'));
  assert.equal(itemsOf(marks, 'rect').length, 2);
});

test('the renderer is a wish of the chart', async (t) => {
  const folder = new WorkFolder(t);
  for (const renderer of ['svg', 'canvas']) {
    const { chart } = await exportedSample(folder, SAMPLES.lines, '--renderer', renderer);
    assert.equal(chart.usermeta.embedOptions.renderer, renderer);
  }
});

test('another charset loses nothing', async (t) => {
  const folder = new WorkFolder(t);
  await chartbridge('json', folder.write('chart.gpl', SAMPLES.texts), '-d', folder.write('data.csv', CSV),
    '--charset', 'US-ASCII', '-o', folder.file('chart.vl.json'));
  const bytes = readFileSync(folder.file('chart.vl.json'));
  assert.ok(bytes.every((byte) => byte < 128));
  assert.match(JSON.stringify(folder.readJson('chart.vl.json').title), /Größe & \\"Ertrag\\" <\/script><!--😀/);
});
