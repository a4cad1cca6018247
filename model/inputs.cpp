#include "model/inputs.h"

#include <algorithm>
#include <cstddef>

#include "model/signals.h"
#include "model/tables/scenario.h"
#include "runtime/clock.h"
#include "runtime/lookup.h"

namespace {

double apply(const Scale& scale, double value, double own) {
  switch (scale.operation) {
    case Scale::Operation::add:
      return value + scale.by;
    case Scale::Operation::multiply:
      return value * scale.by;
    case Scale::Operation::multiply_by_own_source:
      return value * own;
    case Scale::Operation::none:
      break;
  }
  return value;
}

struct TableInput {
  input::Index k;
  double InputsInForce::*in_force;
  const ScenarioTable* own_source;  // null: the controller's logic
};

constexpr std::nullptr_t logic = nullptr;
constexpr const ScenarioTable* table(const ScenarioTable& own_source) { return &own_source; }
constexpr const ScenarioTable* table(std::nullptr_t) { return nullptr; }

constexpr auto kTableInputs = std::to_array<TableInput>({
#define INPUT(component, quantity, unit, start, min, max, nominal, parameter_scale, own_source, own_scale, text) \
  {input::component##_##quantity, &InputsInForce::component##_##quantity, table(own_source)},
#include "model/tables/inputs.def"
});

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

double gated(input::Index k, double own) {
  return Tessera_P.boolean[k] != 0 ? apply(kInputs[k].parameter_scale, Tessera_P.real[k], own) : own;
}

void read_inputs() {
  const LookupPlace now = look1_binlcpw_place(model_time(), kScenarioTime_s.data(), kScenarioSamples - 1);
  for (const TableInput& row : kTableInputs) {
    if (row.own_source == nullptr) continue;
    const double own = look1_at(now, row.own_source->data());
    Tessera_B.in.*row.in_force = gated(row.k, apply(kInputs[row.k].own_scale, own, 0.0));
  }
  Tessera_B.in.power_demand = std::max(0.0, Tessera_B.in.power_demand);
  Tessera_B.in.stoichiometry = look1_at(now, kStoichiometry.data());
  if (Tessera_DW.integrators_start) {
    for (const InputLag& lag : kInputLags) Tessera_X[lag.state] = Tessera_B.in.*lag.in_force;
  }
}

void feed_input_lags() {
  for (const InputLag& lag : kInputLags) Tessera_B.u[lag.state] = Tessera_B.in.*lag.in_force - Tessera_X[lag.state];
  Tessera_B.u[state::distance] = 0.0002777777777777778 * Tessera_X[state::vehicle_speed];  // km/h to km/s
}
