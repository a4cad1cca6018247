#include "model/inputs.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "model/signals.h"
#include "model/tables/scenario.h"
#include "runtime/clock.h"

namespace {

/// The table of an input's own source. Whether there is one is told apart from the address, which a compiler need not
/// know to be one.
struct OwnTable {
  const ScenarioTable* table = nullptr;
  bool is_there = false;

  constexpr OwnTable() = default;
  constexpr OwnTable(const ScenarioTable& own_source) : table(&own_source), is_there(true) {}
};
constexpr OwnTable logic;  // the controller's

/// The inputs with a scenario table. Those of the controller's logic pass their gates where they are computed.
struct TableInput {
  input::Index k;
  double InputsInForce::*in_force;
  OwnTable own_source;
};

constexpr auto kTableInputs = [] {
  constexpr auto all = std::to_array<TableInput>({
#define INPUT(component, quantity, unit, start, min, max, nominal, parameter_scale, own_source, own_scale, text) \
  {input::component##_##quantity, &InputsInForce::component##_##quantity, own_source},
#include "model/tables/inputs.def"
  });
  constexpr auto has_table = [](const TableInput& row) { return row.own_source.is_there; };
  std::array<TableInput, std::ranges::count_if(all, has_table)> inputs{};
  std::ranges::copy_if(all, inputs.begin(), has_table);
  return inputs;
}();

/// One sample of all tables, side by side: those of the inputs, then the stoichiometry.
using ScenarioSample = std::array<double, kTableInputs.size() + 1>;

constexpr auto kScenario = [] {
  std::array<ScenarioSample, kScenarioSamples> samples{};
  for (std::size_t i = 0; i < kScenarioSamples; ++i) {
    for (std::size_t k = 0; k < kTableInputs.size(); ++k) samples[i][k] = (*kTableInputs[k].own_source.table)[i];
    samples[i].back() = kStoichiometry[i];
  }
  return samples;
}();

/// look1_binlcpw of every table at a time [s]. Sample i is that of second i: its place needs no search.
ScenarioSample scenario_at(double time) {
  constexpr auto kLast = static_cast<std::uint32_t>(kScenarioSamples - 1);
  std::uint32_t left = kLast - 1;
  double fraction = 1.0;  // from the last sample on, and for a not-a-number
  if (0.0 >= time) {
    left = 0;
    fraction = 0.0;
  } else if (kLast > time) {
    left = static_cast<std::uint32_t>(time);
    fraction = time - left;
  }
  const ScenarioSample &from = kScenario[left], &to = kScenario[left + 1];
  ScenarioSample sample;
  for (std::size_t k = 0; k < sample.size(); ++k) sample[k] = (to[k] - from[k]) * fraction + from[k];
  return sample;
}

/// The inputs with a table, each with its scales known to the compiler.
template <std::size_t... i>
void read_table_inputs(const ScenarioSample& own, std::index_sequence<i...>) {
  ((Tessera_B.in.*kTableInputs[i].in_force =
        gated(kTableInputs[i].k, scaled(kInputs[kTableInputs[i].k].own_scale, own[i], 0.0))),
   ...);
}

/// A 1 s lag of a signal that starts settled.
struct InputLag {
  state::Index state;
  double InputsInForce::*in_force;
};

constexpr InputLag kInputLags[] = {
    {state::power_demand, &InputsInForce::power_demand},
    {state::stoichiometry, &InputsInForce::stoichiometry},
    {state::cathode_pressure_setpoint, &InputsInForce::cathode_pressure},
    {state::coolant_temperature_setpoint, &InputsInForce::coolant_temperature},
    {state::ambient_temperature, &InputsInForce::ambient_temperature},
    {state::ambient_pressure, &InputsInForce::ambient_pressure},
    {state::ambient_humidity, &InputsInForce::ambient_humidity},
    {state::vehicle_speed, &InputsInForce::vehicle_speed},
    {state::wind_speed, &InputsInForce::wind_speed},
    {state::road_slope, &InputsInForce::road_slope},
};
static_assert(std::ranges::all_of(kInputLags, [](const InputLag& lag) { return kStates[lag.state].start.from_block; }));

}  // namespace

void read_inputs() {
  const ScenarioSample own = scenario_at(model_time());
  read_table_inputs(own, std::make_index_sequence<kTableInputs.size()>{});
  Tessera_B.in.power_demand = std::max(0.0, Tessera_B.in.power_demand);
  Tessera_B.in.stoichiometry = own.back();
  if (Tessera_DW.integrators_start) {
    for (const InputLag& lag : kInputLags) Tessera_X[lag.state] = Tessera_B.in.*lag.in_force;
  }
}

void feed_input_lags() {
  for (const InputLag& lag : kInputLags) Tessera_B.u[lag.state] = Tessera_B.in.*lag.in_force - Tessera_X[lag.state];
  Tessera_B.u[state::distance] = 0.0002777777777777778 * Tessera_X[state::vehicle_speed];  // km/h to km/s
}
