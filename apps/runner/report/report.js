// The page of one or several runs.

const kDashes = [null, [7, 3], [2, 3], [9, 3, 2, 3]];
const kColors = 6;     // --series-1 and so on in the style sheet
const kAxisWidth = 62; // px, the same in every chart so that their times stand below each other

const runs = data.runs.map((run, index) => {
  const columns = new Map(run.columns.map((column) => [column.name, column]));
  const values = new Map();
  return {
    ...run, index, isShown: true, times: decoded(run.time, run.drawnRows),
    has: (name) => columns.has(name),
    values(name) {
      if (!values.has(name)) values.set(name, decoded(columns.get(name).values, run.drawnRows));
      return values.get(name);
    },
  };
});
const isComparison = runs.length > 1;

const signals = new Map();
for (const run of runs) {
  for (const {name, unit, description, values} of run.columns) {
    const known = signals.get(name);
    if (!known) signals.set(name, {name, unit, description, isConstant: 'constant' in values});
    else known.isConstant = known.isConstant && 'constant' in values;
  }
}
const groups = groupsOf([...signals.keys()]);

/** The value of a run at a time, linear between its rows; NaN outside of them. */
function valueAt(run, name, time) {
  const {times} = run;
  let low = 0, high = times.length - 1;
  if (!(time >= times[low] && time <= times[high])) return NaN;
  while (high - low > 1) {
    const middle = (low + high) >> 1;
    if (times[middle] <= time) low = middle; else high = middle;
  }
  const values = run.values(name);
  if (times[high] === time) return values[high];
  if (times[low] === time) return values[low];
  return values[low] + (values[high] - values[low]) * (time - times[low]) / (times[high] - times[low]);
}

const haveSameTimes = runs.every(({times}) =>
  times.length === runs[0].times.length && times.every((time, i) => time === runs[0].times[i]));
const unitedTimes = haveSameTimes ? runs[0].times
  : Float64Array.from(new Set(runs.flatMap(({times}) => [...times]))).sort();

/** The row of a run at each of the united times, -1 where it has none. */
for (const run of runs) {
  const rows = new Map(Array.from(run.times, (time, row) => [time, row]));
  run.unitedRows = Int32Array.from(unitedTimes, (time, row) => (haveSameTimes ? row : rows.get(time) ?? -1));
}

let isDifference = false;
let charts = [];

const seriesColor = (index) => themeColor(`--series-${index % kColors + 1}`);

/** A piece of a series' line. */
function lineSample({color, dash}) {
  const kSvg = 'http://www.w3.org/2000/svg';
  const sample = document.createElementNS(kSvg, 'svg');
  const line = document.createElementNS(kSvg, 'path');
  for (const [name, value] of [['class', 'line'], ['viewBox', '0 0 24 3'], ['aria-hidden', 'true']]) {
    sample.setAttribute(name, value);
  }
  sample.style.color = color;
  line.setAttribute('d', 'M0 1.5H24');
  if (dash) line.setAttribute('stroke-dasharray', dash.join(' '));
  sample.append(line);
  return sample;
}

// Charts

/** What is infinite would take the whole axis: it is a gap, like not-a-number. */
const drawable = (value) => (Math.abs(value) === Infinity ? NaN : value);

/** One chart: its card on the page, and the graph in it. */
class Chart {
  constructor(title, names) {
    this.title = title;
    this.names = names;
    this.legend = element('ul', {class: 'legend'});
    this.leftUnit = element('span', {});
    this.rightUnit = element('span', {});
    this.plot = element('div', {class: 'plot', tabindex: '0', role: 'group', onkeydown: (event) => this.onKey(event)});
    this.empty = element('p', {class: 'muted empty', hidden: true}, 'Nothing to draw: no shown run has these signals.');
    this.cursor = element('div', {class: 'cursor', hidden: true});
    this.heading = element('h3', {});
    this.card = element('article', {class: 'card chart'},
      element('header', {}, this.heading, element('button', {
        type: 'button', class: 'quiet', 'aria-label': `Remove the chart ${title}`, title: 'Remove this chart',
        onclick: () => removeChart(this)}, '×')),
      this.legend,
      element('div', {class: 'units muted small', 'aria-hidden': 'true'}, this.leftUnit, this.rightUnit),
      this.plot, this.empty);
    this.graph = null;
  }

  /** A series a signal and run: its color and dash, its value at a row and at a time. */
  series() {
    const shown = runs.filter((run) => run.isShown && !(isDifference && run.index === 0));
    const byRun = isDifference ? runs.length > 2 : isComparison;
    return this.names.flatMap((name, position) => shown
      .filter((run) => run.has(name) && (!isDifference || runs[0].has(name)))
      .map((run) => {
        const values = run.values(name);
        const value = (time) => (isDifference ? valueAt(run, name, time) - valueAt(runs[0], name, time)
          : valueAt(run, name, time));
        // Where a run has no row of its own, null lets its line go on to the next.
        const own = (row) => (run.unitedRows[row] < 0 ? null : values[run.unitedRows[row]]);
        const atRow = isDifference ? (row, time) => value(time) : own;
        return {name, value, atRow,
          color: seriesColor(byRun ? run.index : position), dash: byRun ? kDashes[position % kDashes.length] : null};
      }));
  }

  draw(range) {
    this.graph?.destroy();
    this.graph = null;
    this.heading.textContent = isDifference ? `${this.title}: difference to ${runs[0].name}` : this.title;
    const series = this.series();
    const units = [...new Set(this.names.map((name) => signals.get(name).unit))];
    const onRight = ({name}) => units.indexOf(signals.get(name).unit) > 0;
    const hasRight = series.some(onRight) && !series.every(onRight);
    const isRight = (one) => hasRight && onRight(one);
    const axisText = (right) => [...new Set(series.filter((one) => isRight(one) === right)
      .map(({name}) => (signals.get(name).unit === '' ? '' : unitText(signals.get(name).unit) || '–')))].join(', ');
    this.leftUnit.textContent = axisText(false);
    this.rightUnit.textContent = axisText(true);
    this.fillLegend(series, isRight);
    this.plot.hidden = series.length === 0;
    this.empty.hidden = series.length > 0;
    this.plot.setAttribute('aria-label', `${this.heading.textContent}: ${this.names.join(', ')}. ` +
      'Arrow keys move the cursor, plus and minus zoom, 0 shows all.');
    if (series.length === 0) return;

    const labelOf = (one, i) => `series ${i}`;  // never shown; a signal's name may be one of the library's own words
    const times = isDifference ? runs[0].times : unitedTimes;
    const rows = Array.from(times, (time, row) => [time, ...series.map(({atRow}) => drawable(atRow(row, time)))]);
    const ticks = {axisLabelWidth: kAxisWidth - 8, axisLabelFormatter: (value) => numberText(value, 6), drawGrid: true,
      independentTicks: true, pixelsPerLabel: 36};
    this.graph = new Dygraph(this.plot, rows, {
      labels: ['time', ...series.map(labelOf)],
      colors: series.map(({color}) => color),
      series: Object.fromEntries(series.map((one, i) => [labelOf(one, i), {
        axis: isRight(one) ? 'y2' : 'y1', strokePattern: one.dash}])),
      axes: {
        x: {axisLabelFormatter: (value) => `${numberText(value, 7)}\u00a0s`, pixelsPerLabel: 84, axisLabelWidth: 76,
          drawGrid: true, ticker: Dygraph.numericTicks},
        y: ticks, y2: {...ticks, drawGrid: false}},
      dateWindow: range, legend: 'never', plugins: [this.readout()], connectSeparatedPoints: true, strokeWidth: 1.6,
      highlightCircleSize: 3.5, axisLabelFontSize: 11, gridLineWidth: 1, gridLineColor: themeColor('--grid'),
      axisLineColor: themeColor('--axis'), axisLineWidth: 1, rightGap: hasRight ? 0 : kAxisWidth - 2,
      drawCallback: () => showRange(), xRangePad: 2,
    });
    this.plot.append(this.cursor);
  }

  fillLegend(series, isRight) {
    this.entries = [];
    this.legend.replaceChildren(...this.names.filter((name) => series.some((one) => one.name === name)).map((name) => {
      const {unit, description} = signals.get(name);
      const item = element('li', {title: description || null});
      for (const one of series.filter((candidate) => candidate.name === name)) {
        const value = element('span', {class: 'value'});
        const line = lineSample(one);
        if (one === series.find((candidate) => candidate.name === name)) {
          item.append(element('span', {class: 'name'}, line, name, isRight(one)
            ? element('span', {class: 'muted side', title: 'on the right axis'}, ' ▸') : ''));
        } else {
          item.append(line);
        }
        item.append(value);
        this.entries.push({one, value, unit});
      }
      return item;
    }));
  }

  /** A plug-in of the graph that shows values and a line at the cursor. */
  readout() {
    return {
      activate: () => ({
        select: ({selectedX}) => (selectedX === undefined ? this.clearCursor() : this.showCursor(selectedX)),
        deselect: () => this.clearCursor(),
      }),
      toString: () => 'readout',
    };
  }

  showCursor(time) {
    for (const {one, value, unit} of this.entries) value.textContent = quantityText(one.value(time), unit);
    const area = this.graph.getArea();
    const left = this.graph.toDomXCoord(time);
    this.cursor.hidden = left < area.x - 1 || left > area.x + area.w + 1;
    this.cursor.style.transform = `translateX(${left}px)`;
    this.cursor.style.height = `${area.h}px`;
    this.cursor.dataset.time = String(time);
    toolbar.time.textContent = `${numberText(time, 7)}\u00a0s`;
  }

  clearCursor() {
    for (const {value} of this.entries) value.textContent = '';
    this.cursor.hidden = true;
    toolbar.time.textContent = '–';
  }

  onKey(event) {
    if (!this.graph) return;
    const graph = this.graph;
    const [first, last] = graph.xAxisRange();
    const selected = graph.getSelection();
    const step = {ArrowLeft: -1, ArrowRight: 1}[event.key];
    const factor = {'+': 0.5, '=': 0.5, '-': 2}[event.key];
    if (step) {
      const start = selected >= 0 ? selected + step * (event.shiftKey ? 10 : 1) : rowNear(graph, (first + last) / 2);
      const row = Math.min(Math.max(start, 0), graph.numRows() - 1);
      graph.setSelection(row, undefined, false, true);
    } else if (factor) {
      const center = selected >= 0 ? graph.getValue(selected, 0) : (first + last) / 2;
      const [least, most] = graph.xAxisExtremes();
      const from = Math.max(center + (first - center) * factor, least);
      const to = Math.min(center + (last - center) * factor, most);
      graph.updateOptions({dateWindow: from <= least && to >= most ? null : [from, to]});
    } else if (event.key === '0' || event.key === 'Escape') {
      showAll();
    } else {
      return;
    }
    event.preventDefault();
  }
}

function rowNear(graph, time) {
  let row = 0;
  while (row < graph.numRows() - 1 && graph.getValue(row, 0) < time) ++row;
  return row;
}

const drawnGraphs = () => charts.map(({graph}) => graph).filter(Boolean);

function currentRange() {
  const zoomed = drawnGraphs().find((graph) => graph.isZoomed('x'));
  return zoomed ? zoomed.xAxisRange() : null;
}

/** Draws all charts anew: they share the cursor, the zoom, the theme and the choice of runs. */
function drawAll(range = currentRange()) {
  charts.forEach((chart) => chart.draw(range));
  const graphs = drawnGraphs();
  if (graphs.length > 1) Dygraph.synchronize(graphs, {range: false});
  showRange();
}

function showAll() {
  drawnGraphs().forEach((graph) => graph.resetZoom());
}

function removeChart(chart) {
  const range = currentRange();
  chart.graph?.destroy();
  chart.card.remove();
  charts = charts.filter((other) => other !== chart);
  drawAll(range);
  showFound();
}

/** Adds a chart of one signal, or adds it to the last chart. */
function addSignal(name, toLast) {
  const last = charts[charts.length - 1];
  const units = new Set([...(last?.names ?? []), name].map((one) => signals.get(one).unit));
  if (toLast && last && units.size <= 2) {
    if (!last.names.includes(name)) last.names.push(name);
    last.title = last.names.join(', ');
  } else {
    charts.push(new Chart(name, [name]));
    byId('charts').append(charts[charts.length - 1].card);
  }
  drawAll();
  showFound();
  charts[charts.length - 1].card.scrollIntoView({block: 'nearest'});
}

const chartOfOnly = (name) => charts.find(({names}) => names.length === 1 && names[0] === name);

// The list of signals

const rowsOfList = [...signals.values()].map((signal) => ({
  signal,
  text: `${signal.name} ${signal.description} ${signal.unit} ${unitText(signal.unit)}`.toLowerCase(),
  button: element('button', {
    type: 'button', class: 'signal', title: signal.description || null,
    onclick: (event) => {
      const alone = chartOfOnly(signal.name);
      if (alone) removeChart(alone); else addSignal(signal.name, event.shiftKey);
    }},
    element('span', {class: 'signal-name'}, ...breakable(signal.name)),
    element('span', {class: 'muted small'}, unitText(signal.unit)),
    signal.description ? element('span', {class: 'muted small description'}, signal.description) : null),
}));

function showFound() {
  const words = byId('search').value.toLowerCase().split(/\s+/).filter(Boolean);
  const group = byId('group').value;
  const found = rowsOfList.filter(({signal, text}) =>
    (group === '' || groups.get(signal.name) === group) && words.every((word) => text.includes(word)));
  byId('found').textContent = found.length === signals.size ? `${signals.size} signals. A click adds a chart.`
    : `${found.length} of ${signals.size} signals`;
  const parts = [];
  let title = null;
  for (const {signal, button} of found) {
    const heading = group === '' ? groups.get(signal.name) : prefixOf(signal.name);
    if (heading !== title) parts.push(element('h3', {class: 'small'}, heading));
    title = heading;
    const isDrawn = charts.some(({names}) => names.includes(signal.name));
    button.setAttribute('aria-pressed', String(isDrawn));
    parts.push(button);
  }
  byId('signals').replaceChildren(...parts);
}

function fillExplorer() {
  const order = [...kGroups.map(({title}) => title), 'Other'];
  const titles = [...new Set(groups.values())];
  titles.sort((a, b) => order.indexOf(a) - order.indexOf(b));
  const count = (title) => [...groups.values()].filter((other) => other === title).length;
  byId('group').append(element('option', {value: ''}, 'All groups'),
    ...titles.map((title) => element('option', {value: title}, `${title} (${count(title)})`)));
  rowsOfList.sort((a, b) => titles.indexOf(groups.get(a.signal.name)) - titles.indexOf(groups.get(b.signal.name)));
  byId('search').addEventListener('input', showFound);
  byId('group').addEventListener('change', showFound);
  const drawer = window.matchMedia('(max-width: 900px)');
  const fold = () => { byId('drawer').open = !drawer.matches; };
  drawer.addEventListener('change', fold);
  fold();
}

// What stands above the charts

const toolbar = {time: element('output', {}, '–'), range: element('output', {})};

function showRange() {
  const graph = drawnGraphs()[0];
  if (!graph) return;
  const whole = [unitedTimes[0], unitedTimes[unitedTimes.length - 1]];
  const [first, last] = graph.isZoomed('x') ? graph.xAxisRange() : whole;
  toolbar.range.textContent = `${numberText(first)} to ${numberText(last)}\u00a0s`;
}

const runMark = (run) => {
  const mark = element('span', {class: 'mark'});
  mark.style.background = `var(--series-${run.index % kColors + 1})`;
  return mark;
};
const runTitle = (run) => element('span', {class: 'run-title'}, isComparison ? runMark(run) : null, run.name);

function fillToolbar() {
  const bar = byId('toolbar');
  if (isComparison) {
    const modes = ['Values', 'Difference'].map((text, i) => element('button', {
      type: 'button', 'aria-pressed': String(i === 0),
      title: i === 0 ? 'The runs over each other' : `Each run minus ${runs[0].name}, at the times of that`,
      onclick: () => {
        isDifference = i === 1;
        modes.forEach((mode, k) => mode.setAttribute('aria-pressed', String(k === i)));
        drawAll();
      }}, text));
    bar.append(
      element('div', {class: 'choices', role: 'group', 'aria-label': 'Runs'}, ...runs.map((run) => element('button', {
        type: 'button', class: 'run', 'aria-pressed': 'true',
        onclick: (event) => {
          run.isShown = !run.isShown;
          event.currentTarget.setAttribute('aria-pressed', String(run.isShown));
          drawAll();
        }}, runTitle(run)))),
      element('div', {class: 'segments', role: 'group', 'aria-label': 'What is drawn', id: 'modes'}, ...modes));
  }
  bar.append(
    element('span', {class: 'reading'}, element('span', {class: 'muted'}, 'Cursor '), toolbar.time),
    element('span', {class: 'reading'}, element('span', {class: 'muted'}, 'Shown '), toolbar.range),
    element('button', {type: 'button', id: 'reset', title: 'Show all times (or a double click on a chart)',
      onclick: showAll}, 'Show all'));
}

/** The figures in a line of the summary stand large, what is told with them small. */
const kFigures = [
  {pattern: /^(\S+) (\S+) at the start, (\S+) \2 at the end$/,
    parts: ([, first, unit, last]) => [`${first} → ${last}`, unit, 'from start to end']},
  {pattern: /^(\S+) (\S+) \((.+)\) to (\S+) \2 \((.+)\)$/,
    parts: ([, least, unit, where, largest, end]) => [`${least} … ${largest}`, unit, `${where}; ${end}`]},
  {pattern: /^(-?[\d.]+(?:e[-+]?\d+)?) (\S+?)(?:(?:, | (?=\())(.*))?$/,
    parts: ([, value, unit, rest]) => [value, unit, (rest ?? '').replace(/^\((.*)\)$/, '$1')]},
];

function figure({title, text}) {
  const kind = kFigures.find(({pattern}) => pattern.test(text));
  if (!kind) return element('div', {class: 'card tile'}, element('h2', {}, title), element('p', {}, text));
  const [value, unit, note] = kind.parts(kind.pattern.exec(text));
  return element('div', {class: 'card tile'}, element('h2', {}, title),
    element('p', {class: 'figure'}, value.replace(/(^| )-/g, '$1−'),
      element('span', {class: 'unit'}, ` ${unitText(unit)}`)),
    element('p', {class: 'muted small'}, ...breakable(note)));
}

function fillSummary() {
  const titles = [...new Set(runs.flatMap(({meta}) => list(meta?.summary).map(({title}) => title)))];
  if (titles.length === 0) return;
  if (!isComparison) {
    byId('summary').append(element('div', {class: 'tiles'}, ...runs[0].meta.summary.map(figure)));
    return;
  }
  const rows = titles.map((title) => [title[0].toUpperCase() + title.slice(1), ...runs.map(({meta}) =>
    (list(meta?.summary).find((line) => line.title === title)?.text ?? '–').replace(/\bdegC\b/g, '°C'))]);
  byId('summary').append(card('Summary', element('div', {class: 'table-scroll'},
    table(['', ...runs.map(runTitle)], rows, 'Summary of the runs'))));
}

function warningItem({run, severity, signal, text}) {
  const show = () => {
    const drawn = charts.find(({names}) => names.includes(signal));
    if (drawn) drawn.card.scrollIntoView({block: 'center'}); else addSignal(signal, false);
  };
  return element('li', {class: severity},
    element('span', {class: 'badge'}, severity === 'error' ? 'Error' : 'Check'),
    element('span', {}, isComparison ? element('strong', {}, `${run.name}: `) : null,
      signal ? element('button', {type: 'button', class: 'link', title: 'Show its chart', onclick: show}, signal) : '',
      (signal ? ` ${text}` : text).replace(/\bdegC\b/g, '°C').replace(/ -(?=\d)/g, ' −')));
}

function fillWarnings() {
  const lines = runs.flatMap((run) => run.warnings.map((warning) => ({run, ...warning})));
  if (lines.length === 0) return;
  lines.sort((a, b) => (b.severity === 'error') - (a.severity === 'error'));
  showWarnings(lines.length === 1 ? 'One warning' : `${lines.length} warnings`, lines.map(warningItem));
}

const gateText = (gate) => ({true: 'open', false: 'closed'}[gate] ?? '');

function inputsCard() {
  const names = [...new Set(runs.flatMap(({meta}) => list(meta?.inputs).map(({name}) => name)))];
  if (names.length === 0) return null;
  const find = (run, name) => list(run.meta?.inputs).find((input) => input.name === name);
  const cellText = (run, name) => {
    const input = find(run, name);
    if (!run.meta) return 'not known';
    if (!input) return 'default';
    const gate = gateText(input.gate);
    return valueText(input.value, input.unit) + (gate ? ` (gate ${gate})` : '');
  };
  const rows = names.map((name) => {
    const known = runs.map((run) => find(run, name)).find(Boolean);
    return [name, valueText(known.default, known.unit), ...runs.map((run) => cellText(run, name))];
  });
  const heads = isComparison ? runs.map(runTitle) : ['Value'];
  return card('Inputs that differ from their defaults', element('div', {class: 'table-scroll'},
    table(['Input', 'Default', ...heads], rows, 'Inputs that differ from their defaults')));
}

/** Where a run comes from and how it went, as pairs of a term and its text. */
function circumstances(run) {
  const {meta} = run;
  const counts = `${numberText(run.rows, 9)} rows, ${run.columns.length} signals, to ${numberText(run.end, 7)} s`;
  const played = meta?.run ?? {};
  const count = (value, noun) => {
    const many = Array.isArray(value) ? value.length : value;
    return many ? `${many} ${noun}${many === 1 ? '' : 's'}` : '';
  };
  return [
    ...originPairs(meta),
    ['Result', `${run.file}: ${counts}`],
    ['Inputs', meta && list(meta.inputs).length === 0 ? 'all have their defaults' : ''],
    ...settingsPairs(meta),
    ['Started', instantText(played.startedAt)],
    ['Wall time', told(typeof played.wallTime === 'number' ? `${numberText(played.wallTime, 4)} s` : '',
      typeof played.realTimeFactor === 'number' ? `${numberText(played.realTimeFactor, 3)} times real time` : '')],
    ['State', told(played.state, typeof played.exitCode === 'number' ? `exit code ${played.exitCode}` : '')],
    ['Messages', told(count(played.warnings, 'warning'), count(played.errors, 'error'))],
  ];
}

function circumstancesCard() {
  const notes = runs.flatMap((run) => run.notes.map((text) => element('p', {class: 'muted'},
    isComparison ? `${run.name}: ${text}` : text)));
  if (!isComparison) return card('Circumstances', ...notes, definitions(circumstances(runs[0])));
  const texts = runs.map((run) => new Map(circumstances(run)));
  const terms = [...texts[0].keys()];
  const isShared = (term) => texts.every((other) => other.get(term) === texts[0].get(term));
  return card('Circumstances', ...notes, definitions([...texts[0]].filter(([term]) => isShared(term))),
    element('div', {class: 'table-scroll'}, table(['', ...runs.map(runTitle)], terms.filter((term) => !isShared(term))
      .map((term) => [term, ...texts.map((other) => other.get(term) || '–')]), 'Circumstances of each run')));
}

function fillHead() {
  const first = runs[0].meta;
  byId('title').textContent = isComparison ? `${runs.length} runs compared` : runs[0].name;
  const unit = [first?.unit?.modelName, first?.unit?.version].filter(Boolean).join(' ');
  byId('subtitle').textContent = [unit, isComparison ? runs.map(({name}) => name).join(', ') : '',
    `${numberText(Math.max(...runs.map(({end}) => end)), 7)} s`, instantText(first?.run?.startedAt)]
    .filter(Boolean).join('  ·  ');
  byId('footer').textContent = `Made by tessera ${data.version}. Values on this page are rounded to about seven ` +
    'digits: it is for looking, the result files are for computing. Charts: dygraphs (MIT licence).';
}

fillHead();
fillWarnings();
fillSummary();
byId('facts').append(...[inputsCard(), circumstancesCard()].filter(Boolean));
fillToolbar();
fillExplorer();
charts = openingCharts(signals).map(({title, names}) => new Chart(title, names));
byId('charts').append(...charts.map((chart) => chart.card));
drawAll(null);
showFound();
themeListeners.push(() => drawAll());
document.documentElement.dataset.drawn = String(Math.round(performance.now()));
