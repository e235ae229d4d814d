// SPDX-License-Identifier: Apache-2.0
//
// Puts the viewer's scripts into its page:  node bundle.mjs PAGE NODE_MODULES OUTPUT_DIR
// writes OUTPUT_DIR/page.html, which lacks only the chart, and OUTPUT_DIR/LICENSES.txt.
import { existsSync, mkdirSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';

// In the order in which a page must run them.
const SCRIPTS = ['vega', 'vega-lite', 'vega-embed'];
// What the command fills in for each chart.
const BLANKS = ['@TITLE@', '@DESCRIPTION@', '@BACKGROUND@', '@FOREGROUND@', '@CHART@'];
const SCRIPTS_BLANK = '@SCRIPTS@';

function readPackage(folder) {
  return JSON.parse(readFileSync(path.join(folder, 'package.json'), 'utf8'));
}

/** The folder of a package, as a package in `from` finds it. */
function findPackage(name, from, root) {
  for (let folder = from; folder.startsWith(root); folder = path.dirname(folder)) {
    const candidate = path.join(folder, 'node_modules', name);
    if (existsSync(candidate)) return candidate;
  }
  throw new Error(`bundle: the package ${name} is not installed`);
}

/** The packages that the scripts are made of: they themselves and whatever they depend on. */
function collectPackages(root) {
  const folders = new Set();
  const waiting = SCRIPTS.map((name) => findPackage(name, root, root));
  while (waiting.length > 0) {
    const folder = waiting.pop();
    if (folders.has(folder)) continue;
    folders.add(folder);
    for (const name of Object.keys(readPackage(folder).dependencies ?? {})) {
      waiting.push(findPackage(name, folder, root));
    }
  }
  return [...folders];
}

function licenceText(folder) {
  const file = readdirSync(folder).find((name) => /^licen[cs]e(\.(md|txt))?$/i.test(name));
  if (file) return readFileSync(path.join(folder, file), 'utf8').trim();
  const { license, author } = readPackage(folder);
  return `License: ${license}\nAuthor: ${author?.name ?? author ?? 'see the package'}`;
}

/** All licence texts, each once, under the packages that it holds for. */
function collectLicences(root) {
  const holders = new Map();
  for (const folder of collectPackages(root)) {
    const { name, version } = readPackage(folder);
    const text = licenceText(folder);
    holders.set(text, [...(holders.get(text) ?? []), `${name} ${version}`]);
  }
  const sections = [...holders].map(([text, names]) => `${names.sort().join(', ')}\n\n${text}\n`);
  sections.sort();
  return `The scripts of this page are made of these packages.\n\n${sections.join(`\n${'-'.repeat(80)}\n\n`)}`;
}

/** A script or text as the content of a script element, which it must not end. */
function element(attributes, content, what) {
  if (/<\/script|<!--/i.test(content)) throw new Error(`bundle: ${what} would end its script element`);
  for (const blank of [...BLANKS, SCRIPTS_BLANK]) {
    if (content.includes(blank)) throw new Error(`bundle: ${what} holds ${blank}`);
  }
  return `<script${attributes}>\n${content.trim()}\n</script>`;
}

function scriptElement(name, root) {
  const folder = findPackage(name, root, root);
  const { version, license } = readPackage(folder);
  const code = readFileSync(path.join(folder, 'build', `${name}.min.js`), 'utf8');
  // The maps are not there; a browser's developer tools would ask for them.
  const plain = code.replace(/^\/\/# sourceMappingURL=.*$/m, '');
  return element('', `/* ${name} ${version}, ${license}; licences: see the end of the scripts */\n${plain}`, name);
}

const [pageFile, modules, output] = process.argv.slice(2);
const root = path.dirname(path.resolve(modules));
const licences = collectLicences(root);
const scripts = [
  ...SCRIPTS.map((name) => scriptElement(name, root)),
  element(' type="text/plain" id="licences"', licences, 'the licences'),
];
const page = readFileSync(pageFile, 'utf8');
for (const blank of [...BLANKS, SCRIPTS_BLANK]) {
  if (!page.includes(blank)) throw new Error(`bundle: ${pageFile} has no ${blank}`);
}
mkdirSync(output, { recursive: true });
writeFileSync(path.join(output, 'page.html'), page.replace(SCRIPTS_BLANK, () => scripts.join('\n')));
writeFileSync(path.join(output, 'LICENSES.txt'), licences);
