// SPDX-License-Identifier: Apache-2.0
//
// Holds chart JSON against reality: the published schema, the compiler and the renderer.
import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { parseArgs } from 'node:util';
import { ChartChecker, ChartError } from './ChartChecker.mjs';

const USAGE = `Usage: node check.mjs [--rows FILE] [--svg DIR] [--marks DIR] CHART...

Validates each chart against the schema of vega-lite, compiles it and draws it without a window.
Any warning is a failure. Prints a line for each chart; exit code 1 when one of them is no good.

  --rows FILE   fill chart templates with the rows of this JSON array
  --svg DIR     keep the pictures, DIR/NAME.svg
  --marks DIR   keep what was drawn, DIR/NAME.json: the marks with their items, their places,
                colours and data`;

/** sales.vl.json -> sales */
function nameOf(file) {
  return path.basename(file).replace(/(\.vl)?\.json$/, '');
}

function keep(folder, name, content) {
  mkdirSync(folder, { recursive: true });
  writeFileSync(path.join(folder, name), content);
}

/** Such as "12 rect, 3 symbol": the marks that stand for data. */
function countMarks(marks) {
  const counts = new Map();
  for (const mark of marks.filter(({ role }) => role === 'mark')) {
    counts.set(mark.type, (counts.get(mark.type) ?? 0) + mark.items.length);
  }
  return [...counts].map(([type, count]) => `${count} ${type}`).join(', ') || 'no marks';
}

async function checkOne(checker, file, rows, options) {
  try {
    const { svg, marks } = await checker.check(file, rows);
    if (options.svg) keep(options.svg, `${nameOf(file)}.svg`, svg);
    if (options.marks) keep(options.marks, `${nameOf(file)}.json`, JSON.stringify(marks, null, 1));
    console.log(`ok   ${file}: ${countMarks(marks)}`);
    return true;
  } catch (error) {
    if (!(error instanceof ChartError)) throw error;
    console.log(`FAIL ${file}: ${error.message}`);
    return false;
  }
}

function readOptions() {
  try {
    return parseArgs({
      allowPositionals: true,
      options: { rows: { type: 'string' }, svg: { type: 'string' }, marks: { type: 'string' } },
    });
  } catch (error) {
    return { values: {}, positionals: [], error: error.message };
  }
}

const { values, positionals, error } = readOptions();
if (error || positionals.length === 0) {
  console.error(error ? `check: ${error}\n${USAGE}` : USAGE);
  process.exit(2);
}
const rows = values.rows && JSON.parse(readFileSync(values.rows, 'utf8'));
const checker = new ChartChecker();
let good = true;
for (const file of positionals) good = (await checkOne(checker, file, rows, values)) && good;
process.exit(good ? 0 : 1);
