// Which charts a report opens on, and how the signals are grouped. For a unit with other signals than these, charts and
// groups come from the names: the part before the first dot.

/** The charts: signals of one unit on the left axis, of another on the right. */
const kOpeningCharts = [
  {title: 'Power and current', left: ['stack.power', 'power_balance.demand', 'power_balance.net_power'],
   right: ['stack.current']},
  {title: 'Air path', left: ['compressor.air_flow', 'compressor.air_flow_setpoint'],
   right: ['compressor_outlet.pressure', 'cathode_inlet.pressure']},
  {title: 'Hydrogen path', left: ['tank.outflow', 'recirculation.flow'],
   right: ['anode_inlet.pressure', 'anode_outlet.pressure']},
  {title: 'Coolant',
   left: ['coolant.stack_inlet_temperature', 'coolant.stack_outlet_temperature', 'coolant.temperature_setpoint'],
   right: ['fan.command', 'pump.command']},
  {title: 'Electrics', left: ['stack.voltage', 'hv_battery.voltage'], right: ['hv_battery.state_of_charge']},
  {title: 'Vehicle', left: ['inputs.vehicle_speed'], right: ['traction.power', 'hv_battery.power']},
];

/** The groups by the first part of a name. */
const kGroups = [
  {title: 'Stack', prefixes: ['stack', 'power_balance', 'monitor']},
  {title: 'Hydrogen', prefixes: ['tank', 'reducer_outlet', 'supply_valve', 'ejector_inlet', 'ejector', 'anode_inlet',
    'anode_outlet', 'recirculation', 'bleed_valve', 'bleed_outlet', 'hydrogen_line', 'hydrogen_account']},
  {title: 'Air', prefixes: ['ambient', 'compressor', 'compressor_outlet', 'cathode', 'cathode_inlet',
    'cathode_outlet', 'exhaust', 'back_pressure_valve']},
  {title: 'Coolant', prefixes: ['coolant', 'pump', 'radiator', 'bypass', 'fan', 'heater']},
  {title: 'Electrics', prefixes: ['fc_converter', 'lv_converter', 'compressor_converter', 'compressor_branch',
    'hv_battery', 'lv_battery', 'hv_auxiliary', 'lv_load']},
  {title: 'Vehicle and inputs', prefixes: ['vehicle', 'traction', 'inputs']},
];

const kMostOpeningCharts = 6;
const kMostSignals = 4;  // in a chart that is not in the list above

const prefixOf = (name) => (name.includes('.') ? name.slice(0, name.indexOf('.')) : 'other');

/** The group of each signal: those of the list if it knows any of the unit's prefixes, else the prefixes. */
function groupsOf(names) {
  const titles = new Map(kGroups.flatMap((group) => group.prefixes.map((prefix) => [prefix, group.title])));
  const isKnown = names.filter((name) => titles.has(prefixOf(name))).length > names.length / 2;
  return new Map(names.map((name) => [name, isKnown ? titles.get(prefixOf(name)) ?? 'Other' : prefixOf(name)]));
}

/** The charts that a report opens on, each {title, names}. */
function openingCharts(signals) {
  const charts = kOpeningCharts
    .map(({title, left, right}) => ({title, names: [...left, ...right].filter((name) => signals.has(name))}))
    .filter(({names}) => names.length > 0);
  if (charts.length > 0) return charts.slice(0, kMostOpeningCharts);

  const byPrefix = new Map();
  for (const signal of signals.values()) {
    const names = byPrefix.get(prefixOf(signal.name)) ?? [];
    byPrefix.set(prefixOf(signal.name), names);
    const units = new Set([...names, signal.name].map((name) => signals.get(name).unit));
    if (names.length < kMostSignals && units.size <= 2 && !signal.isConstant) names.push(signal.name);
  }
  return [...byPrefix].map(([title, names]) => ({title, names})).filter(({names}) => names.length > 0)
    .slice(0, kMostOpeningCharts);
}
