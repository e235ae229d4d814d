// SPDX-License-Identifier: Apache-2.0
// The published schema of client templates takes what the examples hold and refuses what is wrong.
import assert from 'node:assert/strict';
import {readdirSync, readFileSync} from 'node:fs';
import {join} from 'node:path';
import test from 'node:test';

import Ajv from 'ajv';

const examples = join(process.env.CHARTBRIDGE_EXAMPLES, 'client-templates');
const schema = join(process.env.CHARTBRIDGE_EXAMPLES, '..', 'docs', 'client-template.schema.json');

const validate = new Ajv({allErrors: true}).compile(JSON.parse(readFileSync(schema, 'utf8')));

/** The smallest template, with something put over it. */
function template(more) {
  return {version: 1, chart: {elements: [{bar: {x: {column: 'a'}}}]}, ...more};
}

function expectValid(document) {
  assert.equal(validate(document), true, JSON.stringify(validate.errors));
}

test('the examples are valid', () => {
  const files = readdirSync(examples).filter((name) => name.endsWith('.json'));
  assert.ok(files.length >= 2, String(files));
  for (const name of files) expectValid(JSON.parse(readFileSync(join(examples, name), 'utf8')));
});

test('every kind of slot is valid', () => {
  expectValid(template({
    slots: [
      {name: 'a', kind: 'column', holds: 'time'},
      {name: 'b', kind: 'number', min: 1, max: 2, whole: true, default: 1},
      {name: 'c', kind: 'text', label: 'C', description: 'D', optional: true},
      {name: 'd', kind: 'boolean', default: false},
      {name: 'e', kind: 'color', default: '#0072b2'},
      {name: 'f', kind: 'choice', choices: ['x', 'y']}
    ],
    values: {a: 'when', b: '2', c: null}
  }));
});

test('slots and joined texts stand where values do', () => {
  expectValid(template({
    chart: {
      width: {slot: 'w'},
      titles: {title: ['Mean ', {slot: 'm'}]},
      elements: [{histogram: {bins: [{from: 0, to: {slot: 'm'}, value: 2}]}}],
      palette: [{slot: 'c'}, '#111111']
    }
  }));
});

for (const [what, document] of Object.entries({
  'no version': {chart: template().chart},
  'another version': template({version: 2}),
  'an unknown member': template({slot: []}),
  'an unknown kind': template({slots: [{name: 'a', kind: 'colour'}]}),
  'a range of a text': template({slots: [{name: 'a', kind: 'text', min: 1}]}),
  'no choices': template({slots: [{name: 'a', kind: 'choice'}]}),
  'unknown marks': template({chart: {elements: [{bra: {}}]}}),
  'two marks in one layer': template({chart: {elements: [{bar: {}, line: {}}]}}),
  'no elements': template({chart: {titles: {}}}),
  'an object for a value': template({chart: {width: {a: 1}, elements: [{bar: {}}]}})
})) {
  test(`${what} is refused`, () => assert.equal(validate(document), false));
}
