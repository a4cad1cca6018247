// The page of a parameter study: its points as a scatter and as a table.

const kRowsAtOnce = 200;
const kMark = 4;      // px, radius of a point
const kReach = 14;    // px, from where the mouse finds a point

const columns = data.columns.map((column, index) => ({...column, index, filter: ''}));
const column = (name) => columns.find((one) => one.name === name);
const tableColumns = columns.filter(({values}) => values.some((value) => value !== null && value !== ''));
const rowCount = data.rows;
const status = column('status');
const reason = column('reason');
const isFailed = (row) => status !== undefined && status.values[row] !== 'ok';
const titleOf = ({name, unit}) => (unitText(unit) ? `${name} [${unitText(unit)}]` : name);
const cellText = (one, row) =>
  (one.values[row] === null ? '' : one.isText ? one.values[row] : numberText(one.values[row], 7));

let sorting = {column: columns[0], sign: 1};
let shownRows = [];
let mostRows = kRowsAtOnce;
let marked = -1;

// Which rows are shown

/** What a filter box asks: a part of a text, or of a number >, >=, <, <=, = or from..to. */
function condition(one) {
  const text = one.filter.trim();
  if (text === '') return () => true;
  const range = /^(\S+)\s*\.\.\s*(\S+)$/.exec(text);
  const relation = /^(>=|<=|>|<|=)\s*(\S+)$/.exec(text);
  if (!one.isText && range && !Number.isNaN(+range[1]) && !Number.isNaN(+range[2])) {
    return (value) => value !== null && value >= +range[1] && value <= +range[2];
  }
  if (!one.isText && relation && !Number.isNaN(+relation[2])) {
    const bound = +relation[2];
    const tests = {'>': (v) => v > bound, '>=': (v) => v >= bound, '<': (v) => v < bound, '<=': (v) => v <= bound,
      '=': (v) => v === bound};
    return (value) => value !== null && tests[relation[1]](value);
  }
  return (value) => String(value ?? '').toLowerCase().includes(text.toLowerCase());
}

function chooseRows() {
  const conditions = columns.map((one) => [one.values, condition(one)]);
  shownRows = Array.from({length: rowCount}, (_, row) => row)
    .filter((row) => conditions.every(([values, holds]) => holds(values[row])));
  const {values, isText} = sorting.column;
  const isEmpty = (value) => value === null || value === '';
  shownRows.sort((a, b) => {
    if (isEmpty(values[a]) || isEmpty(values[b])) return isEmpty(values[a]) - isEmpty(values[b]);  // these go last
    return sorting.sign * (isText ? values[a].localeCompare(values[b]) : values[a] - values[b]);
  });
}

// The table

const body = element('tbody', {});

function headCell(one) {
  const button = element('button', {
    type: 'button', title: `Sort by ${one.name}`,
    onclick: () => {
      sorting = {column: one, sign: sorting.column === one ? -sorting.sign : 1};
      update();
    }});
  one.showSorting = () => {
    const isSorted = sorting.column === one;
    button.replaceChildren(...breakable(titleOf(one)), isSorted ? (sorting.sign > 0 ? ' ↑' : ' ↓') : '');
    cell.setAttribute('aria-sort', !isSorted ? 'none' : sorting.sign > 0 ? 'ascending' : 'descending');
  };
  const box = element('input', {
    type: 'text', 'aria-label': `Filter by ${one.name}`, spellcheck: 'false',
    placeholder: one.isText ? 'text' : 'e.g. >0',
    oninput: (event) => {
      one.filter = event.currentTarget.value;
      mostRows = kRowsAtOnce;
      update();
    }});
  const kind = one === reason ? 'text long' : one.isText ? 'text' : null;
  const cell = element('th', {scope: 'col', class: kind}, button, box);
  return cell;
}

function fillTable() {
  byId('points').append(element('table', {class: 'points'},
    element('caption', {class: 'visually-hidden'}, 'Points of the study'),
    element('thead', {}, element('tr', {}, ...tableColumns.map(headCell))), body));
  byId('more').addEventListener('click', () => {
    mostRows += kRowsAtOnce;
    showRows();
  });
}

function showRows() {
  body.replaceChildren(...shownRows.slice(0, mostRows).map((row) => element('tr', {
    class: [isFailed(row) ? 'failed' : '', row === marked ? 'marked' : ''].join(' ').trim() || null,
    'data-row': String(row)},
    ...tableColumns.map((one) => element('td', {class: one.isText ? 'text' : null}, cellText(one, row))))));
  const left = shownRows.length - mostRows;
  byId('more').hidden = left <= 0;
  byId('more').textContent = `Show ${Math.min(left, kRowsAtOnce)} of ${left} more`;
  byId('found').textContent = shownRows.length === rowCount ? `${rowCount} points`
    : `${shownRows.length} of ${rowCount} points`;
}

// The scatter

const numeric = columns.filter(({isText}) => !isText);
const varied = numeric.filter(({name, values}) =>
  name !== 'point' && new Set(values.filter((value) => value !== null)).size > 1);
const inputs = varied.filter(({role}) => role === 'input');
const outputs = varied.filter(({role}) => role !== 'input');
const across = inputs[0] ?? varied[0] ?? numeric[0];
const axes = {x: across, y: outputs.find((one) => one !== across) ?? numeric[0], color: inputs[1] ?? null};
const canvas = byId('scatter');
let places = [];

/** About `count` round numbers from least to most. */
function roundTicks(least, most, count) {
  const raw = (most - least) / Math.max(count, 1);
  const power = 10 ** Math.floor(Math.log10(raw));
  const step = power * [1, 2, 5, 10].find((factor) => factor * power >= raw);
  const ticks = [];
  for (let i = Math.ceil(least / step - 1e-9); i * step <= most + 1e-9 * step; ++i) ticks.push(i * step);
  return ticks;
}

/** The least and the largest value: a column may have more values than a function takes arguments. */
const bounds = (values) => values.reduce(([least, most], value) => [Math.min(least, value), Math.max(most, value)],
  [Infinity, -Infinity]);

/** What an axis shows. */
function extent(values) {
  const [least, most] = bounds(values);
  if (!(least <= most)) return [0, 1];
  const size = Math.max(Math.abs(least), Math.abs(most));
  const margin = 0.05 * (most - least > 1e-9 * size ? most - least : size) || 1;  // no axis resolves mere round-off
  return [least - margin, most + margin];
}

const channels = (color) => [1, 3, 5].map((i) => parseInt(color.slice(i, i + 2), 16));

/** The colors of the theme's scale, a function of a share from 0 to 1. */
function colorScale() {
  const stops = ['--scale-low', '--scale-middle', '--scale-high'].map((name) => channels(themeColor(name)));
  return (share) => {
    const position = share * (stops.length - 1);
    const first = Math.min(Math.floor(position), stops.length - 2);
    const mix = (from, to) => Math.round(from + (to - from) * (position - first));
    return `rgb(${stops[first].map((from, i) => mix(from, stops[first + 1][i])).join(',')})`;
  };
}

function drawScatter() {
  const {x, y, color} = axes;
  const width = canvas.clientWidth, height = canvas.clientHeight, ratio = window.devicePixelRatio || 1;
  canvas.width = width * ratio;
  canvas.height = height * ratio;
  const draw = canvas.getContext('2d');
  draw.scale(ratio, ratio);
  const area = {left: 74, top: 14, right: width - (color ? 86 : 16), bottom: height - 46};

  const placed = shownRows.filter((row) => x.values[row] !== null && y.values[row] !== null);
  const fallen = shownRows.filter((row) => x.values[row] !== null && y.values[row] === null && isFailed(row));
  const [left, right] = extent([...placed, ...fallen].map((row) => x.values[row]));
  const [low, high] = extent(placed.map((row) => y.values[row]));
  const toX = (value) => area.left + (value - left) / (right - left) * (area.right - area.left);
  const toY = (value) => area.bottom - (value - low) / (high - low) * (area.bottom - area.top);

  draw.font = `11px ${getComputedStyle(document.body).fontFamily}`;
  draw.lineWidth = 1;
  draw.strokeStyle = themeColor('--grid');
  draw.fillStyle = themeColor('--muted');
  draw.textAlign = 'center';
  for (const tick of roundTicks(left, right, (area.right - area.left) / 90)) {
    line(draw, toX(tick), area.top, toX(tick), area.bottom);
    draw.fillText(numberText(tick, 6), toX(tick), area.bottom + 17);
  }
  draw.textAlign = 'right';
  for (const tick of roundTicks(low, high, (area.bottom - area.top) / 50)) {
    line(draw, area.left, toY(tick), area.right, toY(tick));
    draw.fillText(numberText(tick, 6), area.left - 9, toY(tick) + 4);
  }
  draw.strokeStyle = themeColor('--axis');
  line(draw, area.left, area.top, area.left, area.bottom);
  line(draw, area.left, area.bottom, area.right, area.bottom);
  draw.textAlign = 'center';
  draw.fillStyle = themeColor('--text');
  draw.fillText(titleOf(x), (area.left + area.right) / 2, height - 8);
  draw.save();
  draw.translate(13, (area.top + area.bottom) / 2);
  draw.rotate(-Math.PI / 2);
  draw.fillText(titleOf(y), 0, 0);
  draw.restore();

  const known = color ? placed.map((row) => color.values[row]).filter((value) => value !== null) : [];
  const [least, most] = bounds(known);
  const scale = colorScale();
  const colorOf = (row) => {
    if (!color) return themeColor('--series-1');
    if (color.values[row] === null) return themeColor('--axis');
    return scale(most > least ? (color.values[row] - least) / (most - least) : 0.5);
  };
  places = [...placed.map((row) => ({row, left: toX(x.values[row]), top: toY(y.values[row])})),
    ...fallen.map((row) => ({row, left: toX(x.values[row]), top: area.bottom - 2 * kMark}))];
  draw.globalAlpha = places.length > 500 ? 0.7 : 0.9;
  for (const place of places) {
    const size = place.row === marked ? kMark + 3 : kMark;
    draw.fillStyle = draw.strokeStyle = isFailed(place.row) ? themeColor('--error') : colorOf(place.row);
    if (isFailed(place.row)) {
      draw.lineWidth = 2;
      line(draw, place.left - size, place.top - size, place.left + size, place.top + size);
      line(draw, place.left - size, place.top + size, place.left + size, place.top - size);
    } else {
      draw.beginPath();
      draw.arc(place.left, place.top, size, 0, 2 * Math.PI);
      draw.fill();
    }
  }
  draw.globalAlpha = 1;
  if (color && known.length > 0) drawScale(draw, area, color, scale, least, most);

  const missing = shownRows.length - places.length;
  byId('unplaced').textContent = [
    fallen.length > 0 ? `Crosses at the lower edge: points that failed (${fallen.length}).` : '',
    missing > 0 ? `${missing} of ${shownRows.length} points are not drawn: they have no value here.` : '',
  ].join(' ').trim();
  canvas.setAttribute('aria-label', `Scatter of ${titleOf(y)} over ${titleOf(x)}` +
    `${color ? `, coloured by ${titleOf(color)}` : ''}: ${places.length} points. Arrow keys go from point to point.`);
}

function line(draw, x1, y1, x2, y2) {
  draw.beginPath();
  draw.moveTo(x1, y1);
  draw.lineTo(x2, y2);
  draw.stroke();
}

function drawScale(draw, area, color, scale, least, most) {
  const left = area.right + 16, top = area.top + 18, height = 150;
  for (let i = 0; i < height; ++i) {
    draw.fillStyle = scale(1 - i / height);
    draw.fillRect(left, top + i, 12, 1.5);
  }
  draw.fillStyle = themeColor('--muted');
  draw.textAlign = 'left';
  draw.fillText(numberText(most, 4), left + 18, top + 9);
  draw.fillText(numberText(least, 4), left + 18, top + height);
  draw.fillText(unitText(color.unit), left, top - 8);
}

function showTip(place) {
  const tip = byId('tip');
  tip.hidden = place === undefined;
  canvas.dataset.point = place === undefined ? '' : String(columns[0].values[place.row]);
  if (place === undefined) return;
  const told = [...new Set([columns[0], ...columns.filter(({role}) => role === 'input'), axes.x, axes.y, axes.color])]
    .filter(Boolean);
  const lines = told.map((one) => `${one.name}  ${one.isText ? cellText(one, place.row)
    : quantityText(one.values[place.row], one.unit, 6)}`);
  if (isFailed(place.row)) lines.push(`${status.values[place.row]}  ${reason?.values[place.row] ?? ''}`);
  tip.textContent = lines.join('\n');
  tip.style.left = `${Math.max(0, Math.min(place.left + 14, canvas.clientWidth - tip.offsetWidth))}px`;
  tip.style.top = `${Math.max(0, Math.min(place.top + 14, canvas.clientHeight - tip.offsetHeight))}px`;
}

function nearest(event) {
  const box = canvas.getBoundingClientRect();
  const distance = ({left, top}) => Math.hypot(left - (event.clientX - box.left), top - (event.clientY - box.top));
  const best = places.reduce((a, b) => (a === undefined || distance(b) < distance(a) ? b : a), undefined);
  return best !== undefined && distance(best) <= kReach ? best : undefined;
}

function mark(row) {
  marked = row;
  const position = shownRows.indexOf(row);
  if (position >= mostRows) mostRows = position + 1;
  showRows();
  drawScatter();
  showTip(places.find((place) => place.row === row));
}

function fillScatter() {
  const choice = (title, key, options) => element('label', {}, title, element('select', {
    'aria-label': title, id: `axis-${key}`,
    onchange: (event) => {
      axes[key] = columns[Number(event.currentTarget.value)] ?? null;
      drawScatter();
    }}, ...options.map((one) => element('option', {
    value: one ? String(one.index) : '-', selected: one === axes[key]}, one ? titleOf(one) : 'nothing'))));
  byId('axes').append(choice('Across', 'x', numeric), choice('Up', 'y', numeric),
    choice('Colour', 'color', [null, ...numeric]));
  canvas.addEventListener('mousemove', (event) => showTip(nearest(event)));
  canvas.addEventListener('mouseleave', () => showTip(undefined));
  canvas.addEventListener('click', (event) => {
    mark(nearest(event)?.row ?? -1);
    body.querySelector('.marked')?.scrollIntoView({block: 'center'});
  });
  canvas.addEventListener('keydown', (event) => {
    const step = {ArrowLeft: -1, ArrowRight: 1, ArrowUp: 1, ArrowDown: -1}[event.key];
    if (!step || places.length === 0) return;
    const order = [...places].sort((a, b) => a.left - b.left || b.top - a.top);
    const position = order.findIndex(({row}) => row === marked);
    mark(order[Math.min(Math.max(position + step, 0), order.length - 1)].row);
    event.preventDefault();
  });
  window.addEventListener('resize', drawScatter);
}

function fillHead() {
  const {meta} = data;
  const failed = Array.from({length: rowCount}, (_, row) => row).filter(isFailed);
  byId('title').textContent = data.name || data.file;
  byId('subtitle').textContent = [[meta?.unit?.modelName, meta?.unit?.version].filter(Boolean).join(' '),
    `${rowCount} points`, failed.length > 0 ? `${failed.length} failed` : 'none failed', instantText(meta?.startedAt)]
    .filter(Boolean).join('  ·  ');
  byId('footer').textContent = `Made by tessera ${data.version} from ${data.file}. Values on this page are rounded: ` +
    'it is for looking, the table file is for computing.';

  if (failed.length > 0) {
    const reasons = new Map();
    for (const row of failed) {
      const text = [status.values[row], reason?.values[row]].filter(Boolean).join(': ');
      if (!reasons.has(text)) reasons.set(text, []);
      reasons.get(text).push(columns[0].values[row]);
    }
    showWarnings(failed.length === 1 ? 'One point failed' : `${failed.length} points failed`,
      [...reasons].sort(([, a], [, b]) => b.length - a.length).map(([text, points]) => element('li', {class: 'error'},
        element('span', {class: 'badge'}, String(points.length)), element('span', {}, text, element('span',
          {class: 'muted'}, ` (point ${points.slice(0, 12).join(', ')}${points.length > 12 ? ' …' : ''})`)))));
  }
  const note = meta ? [] : [element('p', {class: 'muted'},
    'There is no meta.json file beside the table: units and the unit played are not known.')];
  byId('facts').append(card('Circumstances', ...note, definitions([
    ...originPairs(meta),
    ['Table', `${data.file}: ${rowCount} points, ${columns.length} columns`],
    ['Inputs', columns.filter(({role}) => role === 'input').map(titleOf).join(', ')],
    ...settingsPairs(meta),
    ['Started', instantText(meta?.startedAt)],
  ])));
}

function update() {
  chooseRows();
  tableColumns.forEach((one) => one.showSorting());
  showRows();
  drawScatter();
}

fillHead();
fillTable();
fillScatter();
update();
themeListeners.push(drawScatter);
document.documentElement.dataset.drawn = String(Math.round(performance.now()));
