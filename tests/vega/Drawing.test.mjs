// SPDX-License-Identifier: Apache-2.0
//
// Chart JSON against the drawn picture of the same chart: the marks of both say the same values.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { ChartChecker } from './ChartChecker.mjs';
import { chartbridge, WorkFolder } from './Command.mjs';
import { CSV, SAMPLES } from './samples.mjs';

const checker = new ChartChecker();
/** Where marks lie beyond the ends of an axis, a picture does not count them. */
const BEYOND_ENDS = ['log-axis', 'time-axis'];

/** Values as one text; viewers write a real minus sign, and labels on one line. */
function told(values) {
  return Object.entries(values)
    .map((pair) => pair.join('=').replaceAll('\u2212', '-').replace(/\s+/g, ' '))
    .sort()
    .join(' | ');
}

/** What the marks of a drawn picture say, as its image map has it. */
async function drawn(folder, chart, data) {
  await chartbridge('render', chart, '-d', data, '--map', '-o', folder.file('chart.png'));
  return folder.readJson('chart.json').areas.map(({ values }) => told(values));
}

/** What the marks of the document say when they are pointed at. */
async function exported(folder, chart, data) {
  const file = folder.file('chart.vl.json');
  await chartbridge('json', chart, '-d', data, '--interactive', '-o', file);
  const { marks } = await checker.check(file);
  return marks
    .flatMap(({ items }) => items)
    .filter(({ tooltip }) => tooltip && typeof tooltip === 'object')
    .map(({ tooltip }) => told(tooltip));
}

describe('documents say what pictures say', { concurrency: 2 }, () => {
  for (const [name, text] of Object.entries(SAMPLES).filter(([name]) => !BEYOND_ENDS.includes(name))) {
    test(name, async (context) => {
      const folder = new WorkFolder(context);
      const chart = folder.write('chart.gpl', text);
      const data = folder.write('data.csv', CSV);
      const inPicture = await drawn(folder, chart, data);
      assert.ok(inPicture.length > 0, 'the picture has marks');
      assert.deepEqual((await exported(folder, chart, data)).sort(), inPicture.sort());
    });
  }
});
