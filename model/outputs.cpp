#include "model/outputs.h"

#include "model/scalar_laws.h"
#include "model/signals.h"
#include "runtime/clock.h"

namespace {

// What the rows' formulas speak of.
constexpr const Signals& b = Tessera_B;
constexpr const StateVector& x = Tessera_X;
constexpr const MemoryValues& m = Tessera_B.memory;

// The factor stands first, as in the plant's own products.
constexpr double bar_from_Pa(double p) { return 1e-5 * p; }
constexpr double degC_from_K(double T) { return T - 273.15; }
constexpr double kWh_from_J(double energy) { return 2.7777777777777776e-7 * energy; }

// Displays of the gas at a node and of flows.
double p_bar(gas_node::Index node) { return bar_from_Pa(b.gas.at[node].state.P); }
double T_degC(gas_node::Index node) { return degC_from_K(b.gas.at[node].state.T); }
double g_per_s(gas_flow::Index flow) { return 1000.0 * b.gas.flow[flow].mdot; }
double l_per_min(coolant_flow::Index flow) { return 57.142857142857146 * b.cooling.flow[flow]; }  // 60 / 1.05
double humidity_percent(gas_node::Index node) {
  const MoistGasState gas = b.gas.at[node].state;
  return 100.0 * saturated(gas.p3 / SaturationPressureLaw(gas.T), 0.0, 1.0);
}

template <Rate rate, class Value>
void write_output(std::size_t vr, Value value) {
  if constexpr (rate == Rate::constant || rate == Rate::continuous) {
    Tessera_Y[vr] = value();
  } else {
    if (hits(rate)) Tessera_B.sample[vr] = value();
    Tessera_Y[vr] = Tessera_B.sample[vr];
  }
}

}  // namespace

void write_outputs() {
#define OUTPUT(component, quantity, group, rate, unit, value, text) \
  write_output<Rate::rate>(output::component##_##quantity, [] { return value; });
#include "model/tables/outputs.def"
}
