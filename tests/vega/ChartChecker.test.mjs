// SPDX-License-Identifier: Apache-2.0
//
// The checker finds what is wrong with a chart: a check that cannot fail shows nothing.
import assert from 'node:assert/strict';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { ChartChecker, ChartError, SCHEMA_URL } from './ChartChecker.mjs';

const folder = mkdtempSync(path.join(os.tmpdir(), 'chartbridge-test-'));
after(() => rmSync(folder, { recursive: true }));
const checker = new ChartChecker();

const ROWS = [{ region: 'North', sales: 3 }, { region: 'South', sales: 6 }];

/** A sound bar chart, with changes. */
function bars(changes) {
  return {
    $schema: SCHEMA_URL,
    data: { values: ROWS },
    mark: 'bar',
    encoding: {
      x: { field: 'region', type: 'nominal' },
      y: { field: 'sales', type: 'quantitative' },
    },
    ...changes,
  };
}

function check(chart, rows) {
  const file = path.join(folder, 'chart.vl.json');
  writeFileSync(file, typeof chart === 'string' ? chart : JSON.stringify(chart));
  return checker.check(file, rows);
}

function rejects(chart, message) {
  return assert.rejects(check(chart), (error) => {
    assert.ok(error instanceof ChartError, error.stack);
    assert.match(error.message, message);
    return true;
  });
}

function barsOf(marks) {
  return marks.filter(({ type, role }) => type === 'rect' && role === 'mark').flatMap(({ items }) => items);
}

test('a sound chart is drawn, and its marks are told', async () => {
  const { svg, marks } = await check(bars());
  assert.match(svg, /^<svg/);
  const items = barsOf(marks);
  assert.equal(items.length, 2);
  assert.equal(items[1].height, 2 * items[0].height);
  assert.equal(items[0].datum.region, 'North');
});

test('a template is drawn with rows', async () => {
  const template = bars({ data: { name: 'data' } });
  const { marks } = await check(template, [...ROWS, { region: 'West', sales: 1 }]);
  assert.equal(barsOf(marks).length, 3);
  await rejects(template, /^draw: Infinite extent/);
});

test('data are read from a file beside the chart, and from nowhere else', async () => {
  writeFileSync(path.join(folder, 'rows.json'), JSON.stringify(ROWS));
  assert.equal(barsOf((await check(bars({ data: { url: 'rows.json' } }))).marks).length, 2);
  await rejects(bars({ data: { url: 'none.json' } }), /none\.json/);
  await rejects(bars({ data: { url: path.join(folder, 'rows.json') } }), /does not lie beside/);
  await rejects(bars({ data: { url: 'https://example.org/rows.json' } }), /does not lie beside/);
});

test('what is no JSON is refused', () => rejects('{"mark":', /^read: /));

test('another schema is refused', () =>
  rejects(bars({ $schema: SCHEMA_URL.replace('v6', 'v5') }), /^schema: .*v5/));

test('a property that the schema lacks is refused by its name', () =>
  rejects(bars({ mark: { type: 'bar', colour: 'red' } }), /^schema: .*\/mark .*colour/));

test('a value that the schema lacks is refused by its place', () =>
  rejects(
    bars({ encoding: { x: { field: 'region', type: 'nominal' }, y: { field: 'sales', type: 'number' } } }),
    /^schema: .*\/encoding\/y\/type/,
  ));

test('a warning of the compiler is a failure', () =>
  rejects(bars({ encoding: { ...bars().encoding, theta: { field: 'sales', type: 'quantitative' } } }), /^compile: /));

test('a warning of the renderer is a failure', () =>
  rejects(bars({ data: { values: [] } }), /^draw: Infinite extent/));

test('a broken expression is a failure', () =>
  rejects(bars({ transform: [{ calculate: 'datum.sales +', as: 'more' }] }), /^(compile|draw): /));
