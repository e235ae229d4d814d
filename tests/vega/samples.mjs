// SPDX-License-Identifier: Apache-2.0
//
// Small charts of every kind, for data that are easy to sum up by hand.

/** Revenue and units by region, product and month; one of each is missing. */
export const ROWS = [
  ['North', 'Tea', '2024-01', 1200.5, 12],
  ['North', 'Coffee', '2024-01', 2500, 30],
  ['South', 'Tea', '2024-01', 900, 9],
  ['South', 'Coffee', '2024-01', 1750.25, 18],
  ['North', 'Tea', '2024-02', 1100, 11],
  ['North', 'Coffee', '2024-02', 2600, 28],
  ['South', 'Tea', '2024-02', null, 8],
  ['South', 'Coffee', '2024-02', 1800, 20],
  ['North', 'Tea', '2024-03', 1300, 14],
  ['North', 'Coffee', '2024-03', 2450, null],
  ['South', 'Tea', '2024-03', 950, 10],
  ['South', 'Coffee', '2024-03', 1650.75, 17],
].map(([region, product, month, revenue, units]) => ({ region, product, month, revenue, units }));

export const CSV = ['region,product,month,revenue,units']
  .concat(ROWS.map((row) => Object.values(row).map((value) => value ?? '').join(',')))
  .join('\n');

/** The sums of a column by what `key` makes of a row. */
export function sumBy(column, key) {
  const sums = new Map();
  for (const row of ROWS) {
    if (row[column] !== null) sums.set(key(row), (sums.get(key(row)) ?? 0) + row[column]);
  }
  return sums;
}

const OWN_BINS = `<chart xmlns="urn:chartbridge:chart:2"><elements><histogram>
<bin from="0" to="5" value="12"/><bin from="5" to="10" value="7"/><bin from="10" to="20" value="3"/>
</histogram></elements></chart>`;

const OWN_DATA = `<chart xmlns="urn:chartbridge:chart:2"><titles title="Own data"/>
<elements><bar><x column="region"/><y column="sales"/></bar></elements>
<data>
region,sales
North,12
"South &amp; East",7
</data></chart>`;

/** Charts that show CSV. */
export const SAMPLES = {
  'grouped-bars': 'draw bar: x region, y sum of revenue, color product',
  'stacked-bars': 'draw stacked bar: x month, y sum of revenue, color product',
  'filled-bars': 'draw filled bar: x month, y sum of revenue, color product',
  'overlaid-bars': 'draw overlaid bar: x region, y max of revenue, color product, opacity 0.5',
  'lying-bars': 'draw bar: x mean of revenue, y region, color product, label mean of revenue',
  'counted-bars': 'draw bar: x region',
  'time-bars': 'column month: time\ndraw bar: x month, y median of units, fill #009e73',
  lines: 'column month: time\ndraw line: x month, y sum of revenue, color product',
  'line-of-categories': 'column month: category\ndraw line: x month, y min of units',
  'stacked-areas': 'column month: time\ndraw area: x month, y sum of revenue, color product',
  'filled-areas': 'column month: time\ndraw filled area: x month, y sum of revenue, color product',
  'overlaid-areas': 'column month: time\ndraw overlaid area: x month, y sum of revenue, color product',
  points: 'draw point: x units, y revenue, color region, size units, label product',
  'coloured-points': 'draw point: x units, y revenue, color revenue, opacity 0.8',
  histogram: 'draw histogram: x revenue, bins 4',
  'stacked-histogram': 'draw histogram: x revenue, color product, bins 5',
  'grouped-histogram': 'draw grouped histogram: x revenue, y sum of units, color region, bins 3',
  'lying-histogram': 'draw overlaid histogram: y units, color region, opacity 0.5',
  boxes: 'draw box: x region, y revenue, color product',
  'single-box': 'draw box: y revenue',
  'lying-boxes': 'draw box: x revenue, y region',
  pie: 'draw pie: x product, y sum of revenue, label product',
  'counted-pie': 'draw pie: x region',
  heatmap: 'draw heatmap: x month, y region, color sum of revenue, label sum of revenue',
  layers: 'draw point: x units, y revenue, opacity 0.3\ndraw line: x units, y mean of revenue, fill #d55e00',
  panels: 'draw point: x units, y revenue\npanels by product: rows of 2',
  'free-panels': 'draw bar: x region, y sum of revenue\npanels by product: free x, free y',
  'log-axis': 'draw point: x units, y revenue\naxis y: log, from 100 to 10000, title "Revenue, log"\naxis x: reversed',
  'time-axis':
    'column month: time\ndraw line: x month, y sum of revenue\n' +
    'axis x: time, from 2024-01-01 to 2024-04-30, format "MMM yyyy", no title\naxis y: from 0, format "#,##0", no grid',
  texts:
    'title "Größe & \\"Ertrag\\" </script><!--\\u{1F600}"\nsubtitle "it\'s {{datum.x}}"\ncaption "source \\\\ none"\n' +
    'column region: category "South" < "North" < "West", label "Ré\'gion [x] \\"y\\""\ndraw bar: x region, y sum of revenue',
  look:
    'style dark\npalette #e69f00, #56b4e9\nsize 500 by 300\ndraw bar: x region, y sum of revenue, color product\n' +
    'legend: bottom, title "Product sold"',
  'no-legend': 'draw bar: x region, y sum of revenue, color product\nlegend: none',
  'column-names': 'draw bar: x "region", y sum of "revenue"',
};

/** Charts that need no other data. */
export const OWN_SAMPLES = { 'own-bins': OWN_BINS, 'own-data': OWN_DATA };
