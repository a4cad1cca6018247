// What the pages share: the embedded data, elements, numbers and units, the theme, the circumstances.

const data = JSON.parse(document.getElementById('data').textContent);
const byId = (id) => document.getElementById(id);
const list = (value) => (Array.isArray(value) ? value : []);

/** An element with attributes (onX: a listener; null and false are left out) and children (elements or texts). */
function element(tag, attributes = {}, ...children) {
  const made = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (name.startsWith('on')) made.addEventListener(name.slice(2), value);
    else if (value !== null && value !== false) made.setAttribute(name, value === true ? '' : value);
  }
  made.append(...children.filter((child) => child !== null && child !== undefined));
  return made;
}

const kThinSpace = '\u202f';

/** Up to `digits` significant digits, thousands apart. */
function numberText(value, digits = 5) {
  if (value === null || value === undefined || Number.isNaN(value)) return '–';
  if (!Number.isFinite(value)) return value > 0 ? '∞' : '−∞';
  const size = Math.abs(value);
  if (size !== 0 && (size < 1e-4 || size >= 1e9)) {
    const [mantissa, exponent] = value.toExponential(Math.min(digits, 4) - 1).split('e');
    return `${String(Number(mantissa))}e${Number(exponent)}`.replace(/-/g, '−');
  }
  const rounded = Number(value.toPrecision(digits));
  const [whole, fraction] = String(Math.abs(rounded)).split('.');
  const grouped = whole.length > 4 ? whole.replace(/\B(?=(\d{3})+$)/g, kThinSpace) : whole;
  return (rounded < 0 ? '−' : '') + grouped + (fraction ? `.${fraction}` : '');
}

const kUnitTexts = {__proto__: null, degC: '°C', degF: '°F', 1: '', 'kW.h': 'kWh', 'm^3': 'm³', 'kg/m3': 'kg/m³'};
const unitText = (unit) => (unit in kUnitTexts ? kUnitTexts[unit] : unit || '');

function quantityText(value, unit, digits) {
  const shown = unitText(unit);
  return numberText(value, digits) + (shown ? `\u00a0${shown}` : '');
}

/** The value of a parameter, which may be a Boolean. */
const valueText = (value, unit) => (typeof value === 'boolean' ? String(value) : quantityText(value, unit, 7));

/** Values of a column, however they were embedded. */
function decoded(column, rows) {
  if ('constant' in column) return new Float64Array(rows).fill(column.constant === null ? NaN : column.constant);
  if ('text' in column) return Float64Array.from(column.text.split(','), Number);
  const bytes = Uint8Array.from(atob(column.float32), (character) => character.charCodeAt(0));
  const view = new DataView(bytes.buffer);
  return Float64Array.from({length: rows}, (_, i) => view.getFloat32(4 * i, true));
}

/** The parts of a text that may go onto lines of their own: behind dots and underscores. */
const breakable = (text) => text.split(/(?<=[._])(?=\p{L})/u)
  .flatMap((part, i) => (i === 0 ? [part] : [document.createElement('wbr'), part]));

/** A table of two or more columns with a head; cells are texts or elements. */
function table(head, rows, caption) {
  return element('table', {class: 'plain'},
    element('caption', {class: 'visually-hidden'}, caption),
    element('thead', {}, element('tr', {}, ...head.map((text) => element('th', {scope: 'col'}, text)))),
    element('tbody', {}, ...rows.map((row) => element('tr', {}, ...row.map(
      (cell, i) => element(i === 0 ? 'th' : 'td', i === 0 ? {scope: 'row'} : {}, cell))))));
}

function card(title, ...content) {
  return element('section', {class: 'card'}, element('h2', {}, title), ...content);
}

/** Pairs of a term and its text; empty texts are left out. */
function definitions(pairs) {
  return element('dl', {class: 'pairs'}, ...pairs
    .filter(([, text]) => text !== '' && text !== null && text !== undefined)
    .map(([term, text]) => element('div', {}, element('dt', {}, term), element('dd', {}, text))));
}

const kWarningsAtOnce = 6;

/** Fills the card of warnings; where they are many, the last ones fold. */
function showWarnings(title, items) {
  const part = (some) => element('ul', {class: 'warnings'}, ...some);
  const rest = items.slice(kWarningsAtOnce);
  byId('warnings').hidden = false;
  byId('warnings').append(element('h2', {}, title), part(items.slice(0, kWarningsAtOnce)),
    rest.length > 0 ? element('details', {}, element('summary', {}, `${rest.length} more`), part(rest)) : '');
}

/** Where a result comes from: the pairs that runs and studies have in common. */
function originPairs(meta) {
  const unit = meta?.unit ?? {};
  return [
    ['Unit', [unit.modelName, unit.version].filter(Boolean).join(' ')],
    ['File', unit.file],
    ['GUID', unit.guid],
    ['Made by', unit.generationTool],
    ['Played by', meta?.runner?.version ? `tessera ${meta.runner.version}` : ''],
  ];
}

const told = (...texts) => texts.filter(Boolean).join(', ');

/** How a result was played. */
function settingsPairs(meta) {
  const settings = meta?.settings ?? {};
  const seconds = (value) => (typeof value === 'number' ? `${numberText(value, 7)} s` : '');
  const given = ({time, name, value, unit}) =>
    `${time === undefined ? '' : `${numberText(time, 7)} s: `}${name} = ${valueText(value, unit)}`;
  return [
    ['Stop time', seconds(settings.stopTime)],
    ['Output interval', seconds(settings.outputInterval)],
    ['Recorded from', settings.recordFrom ? seconds(settings.recordFrom) : ''],
    ['Outputs', list(settings.outputVariables).join(', ')],
    ['Start values', list(settings.startValues).map(given).join('\n')],
    ['Changes', list(settings.changes).map(given).join('\n')],
    ['Options', told(settings.keepGates ? 'gates kept' : '',
      settings.allowNonFinite ? 'non-finite values allowed' : '')],
  ];
}

const instantText = (iso) => (typeof iso === 'string' ? iso.replace('T', ' ').replace(/(\.\d+)?Z$/, ' UTC') : '');

// The theme: as the system has it, until the reader switches it.
const kThemeKey = 'report-theme';
const systemIsDark = window.matchMedia('(prefers-color-scheme: dark)');
const themeListeners = [];

function rememberedTheme() {
  try { return localStorage.getItem(kThemeKey); } catch { return null; }  // a browser may refuse it to local files
}

function showTheme(theme) {
  document.documentElement.dataset.theme = theme;
  const other = theme === 'dark' ? 'light' : 'dark';
  byId('theme').textContent = other === 'dark' ? 'Dark' : 'Light';
  byId('theme').setAttribute('aria-label', `Switch to ${other} colours`);
  themeListeners.forEach((listener) => listener());
}

const wantedTheme = () => rememberedTheme() ?? (systemIsDark.matches ? 'dark' : 'light');
const themeColor = (name) => getComputedStyle(document.documentElement).getPropertyValue(name).trim();

byId('theme').addEventListener('click', () => {
  const theme = document.documentElement.dataset.theme === 'dark' ? 'light' : 'dark';
  try { localStorage.setItem(kThemeKey, theme); } catch { /* then it is not remembered */ }
  showTheme(theme);
});
systemIsDark.addEventListener('change', () => showTheme(wantedTheme()));
byId('print').addEventListener('click', () => window.print());
window.addEventListener('beforeprint', () => showTheme('light'));
window.addEventListener('afterprint', () => showTheme(wantedTheme()));
showTheme(wantedTheme());
