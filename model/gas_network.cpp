#include "model/gas_network.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "Vk_lib/Vk_fl_prop_lib/direct.h"
#include "model/air_compressor.h"
#include "model/columns.h"
#include "model/gas_restriction.h"
#include "model/humidifier.h"
#include "model/hydrogen_supply.h"
#include "model/scalar_laws.h"
#include "model/signals.h"
#include "runtime/clock.h"
#include "runtime/integrators.h"

namespace {

using gas_node::Index;

GasSignals& signals = Tessera_B.gas;

/// Holds the state within 0 and +Inf; a not-a-number stays one.
double limited_state(std::size_t i) { return Tessera_X[i] = Tessera_X[i] <= 0.0 ? 0.0 : Tessera_X[i]; }

// ---- The blocks ----------------------------------------------------------------------------------------------------

// What lies side by side is computed law by law: none waits for the divisions of another.

/// Completes the gases of neighbouring nodes, whose states are known, with what their property blocks say.
template <GasKind kind, std::size_t first, std::size_t n>
[[gnu::always_inline]] inline void evaluate_gases() {
  using namespace Vk_fl_prop_lib;
  constexpr const GasVector& slot1 = kind == GasKind::hydrogen ? kH2_IDG : kO2_IDG;
  constexpr std::size_t end = first + n;
  auto& [P, p1, p2, p3, T, rho, X1, X2, X3, x, Cp_dry, h1, h2, Cp, h] = signals.at.column;
  for (std::size_t i = first; i < end; ++i) x[i] = humidity_ratio(signals.at[i].state);
  for (std::size_t i = first; i < end; ++i) {
    Cp_dry[i] = kind == GasKind::hydrogen ? direct::gas_Cp(kH2_IDG, T[i]) : direct::air_Cp(x[i]);
  }
  for (std::size_t i = first; i < end; ++i) h1[i] = direct::gas_enthalpy(slot1, T[i]);
  for (std::size_t i = first; i < end; ++i) h2[i] = direct::gas_enthalpy(kN2_IDG, T[i]);
  for (std::size_t i = first; i < end; ++i) Cp[i] = Cp_dry[i] / (1.0 + x[i]);
  for (std::size_t i = first; i < end; ++i) {
    h[i] = mixture_enthalpy(signals.at[i].state, h1[i], h2[i], vapour_enthalpy_law(T[i]));
  }
}

/// The same for one gas.
template <GasKind kind, Index node>
void evaluate_gas(const MoistGasState& state) {
  signals.at.set(node, state);
  evaluate_gases<kind, node, 1>();
}

constexpr bool are_alike(const VolumeRow& a, const VolumeRow& b) {
  return a.gas == b.gas && a.FixedComposition == b.FixedComposition && a.FixedPressure == b.FixedPressure;
}

/// A volume like the first of a run, but with a size of its own: the compiler knows all else of it.
template <Index first>
constexpr GasVolume volume_like(double V) {
  constexpr const GasVolume& of_first = kVolumes[first];
  return {of_first.gas, V, of_first.P0, of_first.FixedComposition, of_first.FixedPressure};
}

/// Output pass of a run of volumes: their gas from the masses of their slots [g] and their temperatures.
template <Index first, std::size_t n>
void evaluate_volumes(const Columns<std::array<double, 3>, n>& mass_g, const std::array<double, n>& T) {
  static_assert(std::all_of(kVolumes.begin() + first, kVolumes.begin() + first + n,
                            [](const VolumeRow& row) { return are_alike(row, kVolumes[first]); }));
  std::array<double, n> V;
  for (std::size_t i = 0; i < n; ++i) V[i] = kVolumes[first + i].V;
  for (std::size_t i = 0; i < n; ++i) {
    signals.content.set(first + i, volume_content(volume_like<first>(V[i]), mass_g[i]));
  }
  for (std::size_t i = 0; i < n; ++i) {
    signals.at.set(first + i, volume_state(volume_like<first>(V[i]), signals.content[first + i], T[i]));
  }
  evaluate_gases<kVolumes[first].gas, first, n>();
}

/// The same with the masses and temperatures of their states.
template <Index first, Index last>
void evaluate_volumes() {
  constexpr std::size_t n = last - first + 1;
  Columns<std::array<double, 3>, n> mass_g;
  std::array<double, n> T;
  for (std::size_t i = 0; i < n; ++i) {
    const VolumeRow& volume = kVolumes[first + i];
    const std::size_t m = volume.m1;
    mass_g.set(i, std::array{0.001 * limited_state(m), 0.001 * limited_state(m + 1), 0.001 * limited_state(m + 2)});
    T[i] = limited_state(volume.T);
  }
  evaluate_volumes<first>(mass_g, T);
}

/// What enters a volume through its ports.
template <std::size_t node>
MoistGasFlow inflow_of() {
  constexpr const VolumePorts& ports = kVolumes[node].ports;
  MoistGasFlow inflow = signals.flow[ports.flows[0]];
  for (std::size_t i = 1; i < ports.count; ++i) inflow = inflow + signals.flow[ports.flows[i]];
  return inflow;
}

/// Vapour flow that the gas of a volume with a vapour limiter takes in [kg/s].
template <std::size_t node>
double limited_vapour_flow(double vapour_flow) {
  constexpr double kWaterMolarMass = 18.0;  // g/mol
  constexpr const VolumeRow& volume = kVolumes[node];
  PurgeBlock& purge = Tessera_DW.purge[node];
  const double vapour_start = (1.0 / kWaterMolarMass) * signals.content[node].m3;  // of kg: the model's own units
  Tessera_With_purge(purge, Tessera_DW.sub_block[volume.purge], Tessera_X[volume.purge], 1.0, kWaterMolarMass,
                     vapour_flow, volume.V, signals.at[node].state.T, kGasConstant, vapour_start, hits(Rate::tick_1ms));
  Tessera_B.u[volume.purge] = purge.dndt;
  return purge.W;
}

/// Balance pass of a run of volumes: what their integrators take in, from the flows at their ports.
template <Index first, Index last>
void balance_volumes() {
  constexpr std::size_t n = last - first + 1;
  static_assert(std::all_of(kVolumes.begin() + first, kVolumes.begin() + last + 1, [](const VolumeRow& row) {
    return row.FixedPressure == kVolumes[first].FixedPressure;  // the balance reads no more of the row
  }));
  Columns<MoistGasFlow, n> inflow;
  std::array<double, n> W;
  for_each_row<n>([&](auto i) {
    const MoistGasFlow flow = inflow_of<first + i>();
    inflow.set(i, flow);
    W[i] = flow.mdot3;
    if constexpr (kVolumes[first + i].WithPurge) W[i] = limited_vapour_flow<first + i>(flow.mdot3);
  });
  Columns<VolumeDerivatives, n> derivatives;
  for (std::size_t i = 0; i < n; ++i) {
    derivatives.set(i, volume_balance(volume_like<first>(kVolumes[first + i].V), signals.content[first + i],
                                      signals.at[first + i], inflow[i], W[i]));
  }
  for (std::size_t i = 0; i < n; ++i) {
    const VolumeRow& volume = kVolumes[first + i];
    for (std::size_t slot = 0; slot < 3; ++slot) Tessera_B.u[volume.m1 + slot] = derivatives[i].m_mg[slot];
    Tessera_B.u[volume.T] = derivatives[i].T;
  }
}

/// Flows of restrictions, out of the gas at the higher pressure, or at port A. Back-flow is the same law with the ports
/// exchanged, so that composition and enthalpy are always those of the upstream gas.
template <restriction::Index... ids>
void evaluate_restrictions() {
  const auto evaluate = []<restriction::Index id>() {
    constexpr const RestrictionRow& row = kRestrictions[id];
    const double P_A = signals.at[row.A].state.P, P_B = signals.at[row.B].state.P;
    const bool forward = P_A >= P_B;
    const MoistGas up = signals.at[forward ? row.A : row.B];
    const double w = restriction_mass_flow(row, up.state, forward ? P_B : P_A, Tessera_X[row.opening]);
    const MoistGasFlow flow = flow_of(up, w), FlowA = forward ? -flow : flow;
    signals.flow[row.FlowA] = FlowA;
    signals.flow[row.FlowB] = -FlowA;
  };
  (evaluate.template operator()<ids>(), ...);
}

/// For a comparison by bits: -0.0 is not 0.0, and a not-a-number equals itself.
std::array<std::uint64_t, 3> bits(const AmbientConditions& conditions) {
  return std::bit_cast<std::array<std::uint64_t, 3>>(conditions);
}

/// Position of a valve, which follows its command.
template <const ActuatorRow& actuator>
void move_actuator(double command) {
  double& position = Tessera_X[actuator.position];
  if (Tessera_DW.integrators_start) position = command;
  position = clamped(position, 0.0, 1.0);
  Tessera_B.u[actuator.position] = actuator_speed(actuator, command, position);
}

}  // namespace

// ---- Volumes -------------------------------------------------------------------------------------------------------

void gas_volumes() {
  evaluate_volumes<gas_node::H2Tank, gas_node::anode>();
  evaluate_volumes<gas_node::GV01A1, gas_node::GV04A1>();
}

void gas_balances() {
  balance_volumes<gas_node::H2Tank, gas_node::GV04A1>();
  balance_volumes<gas_node::Air_outRadia, gas_node::Air_outRadia>();
}

// ---- Hydrogen ------------------------------------------------------------------------------------------------------

void pressure_reducer() {
  signals.flow[gas_flow::tank_heat] = tank_heat_input(signals.at[gas_node::H2Tank].state);
  evaluate_restrictions<restriction::H2_Detendor>();
  Tessera_B.u[state::H2_Detendor_x] =
      reducer_speed(Tessera_X[state::H2_Detendor_x], signals.at[gas_node::H2Tank].state.P,
                    signals.at[gas_node::GVMP1].state.P, signals.flow[gas_flow::H2_Detendor_B].mdot);
}

void hydrogen_loop() {
  const MoistGas primary = signals.at[gas_node::GV01H1], secondary = signals.at[gas_node::GV03H1];
  const EjectorFlows w = Ejecteur_v1(primary.state.P, secondary.state.P, signals.at[gas_node::GV02H].state.P);
  const MoistGasFlow drive = flow_of(primary, w.primary), drawn = flow_of(secondary, w.secondary);
  signals.flow[gas_flow::ejector_primary] = -drive;
  signals.flow[gas_flow::ejector_secondary] = -drawn;
  signals.flow[gas_flow::ejector_outlet] = drawn + drive;

  evaluate_restrictions<restriction::anode_inlet, restriction::anode_outlet>();
}

void hydrogen_valves() {
  // The outside of the bleed valve: pure hydrogen at a fixed state, whatever the ambient is.
  if (Tessera_DW.integrators_start) {
    evaluate_gas<GasKind::hydrogen, gas_node::bleed_outlet>({.P = 100000.0,
                                                             .p1 = 100000.0,
                                                             .p2 = 0.0,
                                                             .p3 = 0.0,
                                                             .T = 313.15,
                                                             .rho = 0.07681880721056662,
                                                             .X1 = 1.0,
                                                             .X2 = 0.0,
                                                             .X3 = 0.0});
  }
  move_actuator<kH2_Valve1Actuator>(Tessera_B.command.supply_valve);
  move_actuator<kH2_Valve2Actuator>(Tessera_B.command.bleed_valve);
  evaluate_restrictions<restriction::H2_Valve1, restriction::H2_Valve2>();

  Tessera_B.hydrogen_mass = signals.content[gas_node::H2Tank].mass();
  if (hits(Rate::tick_10ms) && !Tessera_DW.hydrogen_latched) {
    Tessera_DW.hydrogen_at_start = Tessera_B.hydrogen_mass;
    Tessera_DW.hydrogen_latched = true;
  }
}

// ---- Air -----------------------------------------------------------------------------------------------------------

void outside_air() {
  const AmbientConditions now = {Tessera_X[state::ambient_temperature], Tessera_X[state::ambient_pressure],
                                 Tessera_X[state::ambient_humidity]};
  signals.ambient_changes = Tessera_DW.integrators_start || bits(now) != bits(signals.ambient_conditions);
  if (!signals.ambient_changes) return;  // the same conditions, the same air: mostly they stand still
  signals.ambient_conditions = now;
  const double Psat = Tessera_PsatT(Tessera_DW.ambient_PsatT, 1.0, now.T, is_major_step());
  signals.ambient = ambient_air(now.T, now.P, now.RH, Psat);
  evaluate_gas<GasKind::air, gas_node::ambient>(signals.ambient.state);
}

void compressor_flow() {
  CompressorSignals& compressor = Tessera_B.compressor;
  const double free_speed = Tessera_X[state::compressor_free_speed];
  compressor.bus_voltage = Tessera_X[state::compressor_ratio] * Tessera_B.memory.hv_bus_voltage;
  compressor.duty = compressor_duty(Tessera_X[state::compressor_second_lag], free_speed);
  compressor.w = compressor_mass_flow(signals.ambient.state, signals.at[gas_node::GV01A1].state.P,
                                      compressor_speed(compressor.duty, free_speed));
}

void air_line() {
  move_actuator<kMoistGasValveActuator>(Tessera_B.command.back_pressure_valve);
  evaluate_restrictions<restriction::humidifier1_inlet, restriction::humidifier1_outlet, restriction::cathode_inlet,
                        restriction::cathode_outlet, restriction::humidifier2_inlet, restriction::humidifier2_outlet,
                        restriction::MoistGasValve>();
}

void compressor_drive() {
  CompressorSignals& compressor = Tessera_B.compressor;
  const MoistGas inlet = signals.at[gas_node::ambient], outlet = signals.at[gas_node::GV01A1];

  double& first_lag = Tessera_X[state::compressor_first_lag];
  if (Tessera_DW.integrators_start) first_lag = Tessera_B.command.compressor_speed;
  Tessera_B.u[state::compressor_free_speed] = compressor_free_speed(compressor.bus_voltage);
  Tessera_B.u[state::compressor_first_lag] = Tessera_B.command.compressor_speed - first_lag;
  Tessera_B.u[state::compressor_second_lag] = first_lag;

  double &Cv_inlet = signals.Cv_dry[gas_node::ambient], &Cv_outlet = signals.Cv_dry[gas_node::GV01A1];
  if (signals.ambient_changes) Cv_inlet = Vk_fl_prop_lib::direct::air_Cv(inlet.state.T, inlet.state.P, inlet.x);
  Cv_outlet = Vk_fl_prop_lib::direct::air_Cv(outlet.state.T, outlet.state.P, outlet.x);
  signals.flow[gas_flow::compressor_outlet] =
      compressor_outflow(inlet, outlet, Cv_inlet / (1.0 + inlet.x), Cv_outlet / (1.0 + outlet.x), compressor.w);
}

void compressor_memory() {
  CompressorSignals& compressor = Tessera_B.compressor;
  const MoistGas inlet = signals.at[gas_node::ambient], outlet = signals.at[gas_node::GV01A1];
  compressor.T_enthalpy = compressor_enthalpy_temperature(inlet.state, outlet.state);
  compressor.h1 = Vk_fl_prop_lib::direct::gas_enthalpy(Vk_fl_prop_lib::kO2_IDG, compressor.T_enthalpy);
  compressor.h2 = Vk_fl_prop_lib::direct::gas_enthalpy(Vk_fl_prop_lib::kN2_IDG, compressor.T_enthalpy);
  const double power = compressor_power(outlet.state, inlet.h, compressor.h1, compressor.h2, compressor.w);
  Tessera_B.next.compressor_bus_current = compressor_current(compressor.bus_voltage, power);
}

void humidifier_exchange() {
  const MoistGas S1 = signals.at[gas_node::GV01A1], S2 = signals.at[gas_node::GV03A];
  const double Psat1 = Tessera_PsatT(Tessera_DW.exchange_PsatT1, 1.0, S1.state.T, is_major_step());
  const double Psat2 = Tessera_PsatT(Tessera_DW.exchange_PsatT2, 1.0, S2.state.T, is_major_step());
  const HumidifierExchange exchange = VapEchange1234(S1, S2, signals.flow[gas_flow::humidifier1_inlet_B],
                                                     signals.flow[gas_flow::humidifier2_inlet_B], Psat1, Psat2);
  signals.flow[gas_flow::exchange1] = exchange.E1;
  signals.flow[gas_flow::exchange2] = exchange.E2;
}

void evaluate_air_behind_radiator() {
  const VolumeRow& volume = kVolumes[gas_node::Air_outRadia];
  const auto mass_g = radiator_air_masses(signals.ambient, volume.V);
  if (Tessera_DW.integrators_start) {
    for (std::size_t slot = 0; slot < 3; ++slot) Tessera_X[volume.m1 + slot] = 1000.0 * mass_g[slot];
  }
  for (std::size_t slot = 0; slot < 3; ++slot) limited_state(volume.m1 + slot);  // read by nothing
  Columns<std::array<double, 3>, 1> mass_column;
  mass_column.set(0, mass_g);
  evaluate_volumes<gas_node::Air_outRadia, 1>(mass_column, {limited_state(volume.T)});
}

// ---- Stack ---------------------------------------------------------------------------------------------------------

void stack_gases() {
  const StackSignals& stack = Tessera_B.stack;
  const MoistGas cathode = signals.at[gas_node::cathode], anode = signals.at[gas_node::anode];
  signals.flow[gas_flow::cathode_reaction] = cathode_reaction(stack.flows, cathode);
  signals.flow[gas_flow::anode_reaction] = anode_reaction(stack.flows, anode);
  signals.flow[gas_flow::cathode_losses] = stack_gas_losses(cathode.state, stack.heat);
  signals.flow[gas_flow::anode_losses] = stack_gas_losses(anode.state, stack.heat);
  Tessera_B.u[state::oxygen_access_state] =
      oxygen_access_signal(cathode.state.p1, signals.at[gas_node::GV02A1].state.T);
}
