// SPDX-License-Identifier: Apache-2.0
import { readFileSync } from 'node:fs';
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import path from 'node:path';
import Ajv from 'ajv';
import addFormats from 'ajv-formats';
import * as vega from 'vega';
import * as vegaLite from 'vega-lite';

/** The schema that an exported chart must name: that of the installed vega-lite. */
export const SCHEMA_URL = `https://vega.github.io/schema/vega-lite/v${vegaLite.version.split('.')[0]}.json`;

/** The data source that a chart template leaves for its user to fill. */
const TEMPLATE_DATA = 'data';

/** Why a chart is no good; `message` is one line. */
export class ChartError extends Error {}

/** Collects every warning and error, so that none scrolls past. */
class Complaints {
  constructor() {
    const lines = [];
    const collect = (...words) => lines.push(words.join(' '));
    const ignore = () => {};
    this.lines = lines;
    // vega borrows these functions, so they must not need their object.
    this.logger = { level: ignore, error: collect, warn: collect, info: ignore, debug: ignore };
  }

  throwIfAny(stage) {
    if (this.lines.length === 0) return;
    throw new ChartError(`${stage}: ${[...new Set(this.lines)].join('; ')}`);
  }
}

// Interactive charts listen to the window, for the end of a drag outside of them. Here is none, and
// nobody drags; what listens must only find something to listen to.
globalThis.window ??= new EventTarget();

function createValidator() {
  const file = createRequire(import.meta.url).resolve('vega-lite/vega-lite-schema.json');
  // Unions of the schema are not strict in ajv's sense.
  const ajv = new Ajv({ strict: false, allErrors: true });
  addFormats(ajv);
  ajv.addFormat('color-hex', /^#([0-9a-f]{3}){1,2}$/i);
  return ajv.compile(JSON.parse(readFileSync(file, 'utf8')));
}

/**
 * A mistake fails every branch of a union. The deepest place is where the mistake is, apart from the
 * constants that tell the branches apart.
 */
function explain(errors) {
  const depth = (error) => error.instancePath.split('/').length;
  const telling = errors.filter(({ keyword }) => keyword !== 'const' && keyword !== 'anyOf');
  const candidates = telling.length > 0 ? telling : errors;
  const deepest = Math.max(...candidates.map(depth));
  const reasons = candidates
    .filter((error) => depth(error) === deepest)
    .map((error) => {
      const extra = error.params.additionalProperty ?? error.params.allowedValues ?? '';
      return `${error.instancePath || '/'} ${error.message} ${extra}`.trim();
    });
  return [...new Set(reasons)].slice(0, 4).join('; ');
}

/** Loads data files that lie beside the chart, and nothing else. */
function createLoader(folder) {
  const loader = vega.loader();
  loader.load = async (uri) => {
    if (/^[a-z]+:|^\//i.test(uri)) throw new Error(`${uri} does not lie beside the chart`);
    return readFile(path.join(folder, decodeURIComponent(uri)), 'utf8');
  };
  return loader;
}

/** All items of the drawn picture, grouped by the mark they belong to. */
function collectMarks(mark, found = []) {
  const own = { type: mark.marktype, name: mark.name ?? '', role: mark.role ?? '', items: [] };
  if (mark.marktype !== 'group') found.push(own);
  for (const item of mark.items) {
    if (mark.marktype === 'group') {
      for (const child of item.items ?? []) collectMarks(child, found);
    } else {
      own.items.push(describeItem(item));
    }
  }
  return found;
}

const ITEM_FIELDS = [
  'x', 'y', 'x2', 'y2', 'width', 'height', 'size', 'startAngle', 'endAngle', 'innerRadius', 'outerRadius',
  'fill', 'stroke', 'opacity', 'fillOpacity', 'strokeWidth', 'strokeDash', 'shape', 'text', 'tooltip',
  'path', 'defined',
];

function describeItem(item) {
  const described = {};
  for (const field of ITEM_FIELDS) {
    if (item[field] !== undefined && item[field] !== null) described[field] = item[field];
  }
  // A shape's path is computed from its datum; the picture holds it, the scenegraph does not.
  if (typeof described.shape === 'function') described.shape = 'geoshape';
  if (item.datum) {
    // What is no value belongs to the renderer.
    const isValue = (value) => value === null || value instanceof Date || !['object', 'function'].includes(typeof value);
    described.datum = Object.fromEntries(Object.entries(item.datum).filter(([, value]) => isValue(value)));
  }
  return described;
}

export class ChartChecker {
  constructor() {
    this.validate = createValidator();
  }

  /**
   * Validates, compiles and draws a chart file; throws ChartError for whatever is wrong with it.
   *
   * @param {string} file the chart
   * @param {object[]} [rows] the rows to put into a chart template
   * @returns {Promise<{svg: string, marks: object[]}>} the picture, and the marks that it is made of
   */
  async check(file, rows) {
    const chart = this.#read(file);
    if (rows) chart.datasets = { ...chart.datasets, [TEMPLATE_DATA]: rows };
    if (chart.$schema !== SCHEMA_URL) {
      throw new ChartError(`schema: $schema is ${chart.$schema}, not ${SCHEMA_URL}`);
    }
    if (!this.validate(chart)) throw new ChartError(`schema: ${explain(this.validate.errors)}`);
    return this.#draw(this.#compile(chart), path.dirname(file));
  }

  #read(file) {
    try {
      return JSON.parse(readFileSync(file, 'utf8'));
    } catch (error) {
      throw new ChartError(`read: ${error.message}`);
    }
  }

  #compile(chart) {
    const complaints = new Complaints();
    try {
      const { spec } = vegaLite.compile(chart, { logger: complaints.logger });
      complaints.throwIfAny('compile');
      return spec;
    } catch (error) {
      if (error instanceof ChartError) throw error;
      throw new ChartError(`compile: ${error.message}`);
    }
  }

  async #draw(spec, folder) {
    const complaints = new Complaints();
    try {
      const runtime = vega.parse(spec, null, { logger: complaints.logger });
      const view = new vega.View(runtime, {
        logger: complaints.logger,
        loader: createLoader(folder),
        renderer: 'none',
      });
      await view.runAsync();
      const svg = await view.toSVG();
      complaints.throwIfAny('draw');
      // Texts may say anything.
      const drawn = svg.replace(/<text.*?<\/text>/gs, '').replace(/ aria-label="[^"]*"/g, '');
      if (/\bNaN\b|\bInfinity\b/.test(drawn)) {
        throw new ChartError('draw: a coordinate of the picture is no number');
      }
      const marks = collectMarks(view.scenegraph().root);
      view.finalize();
      return { svg, marks };
    } catch (error) {
      if (error instanceof ChartError) throw error;
      throw new ChartError(`draw: ${error.message}`);
    }
  }
}
