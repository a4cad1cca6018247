#include "model/gas_network.h"

#include <limits>

#include "model/air_compressor.h"
#include "model/child_blocks.h"
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

/// Holds the state within 0 and +Inf.
double limited_state(std::size_t i) {
  return Tessera_X[i] = clamped(Tessera_X[i], 0.0, std::numeric_limits<double>::infinity());
}

// ---- The blocks ----------------------------------------------------------------------------------------------------

/// Completes the gas at a node, whose state is known, with its specific values.
void evaluate_gas(Index node) {
  MoistGas& gas = signals.at[node];
  gas.x = humidity_ratio(gas.state);
  run_child_blocks(node);
  gas.Cp = gas.Cp_dry / (1.0 + gas.x);
  gas.h = mixture_enthalpy(gas.state, gas.h1, gas.h2, vapour_enthalpy_law(gas.state.T));
}

/// Output pass of a volume: its gas from the masses of its slots [g] and its temperature state.
void evaluate_volume(Index node, const std::array<double, 3>& mass_g) {
  const VolumeRow& volume = kVolumes[node];
  signals.content[node] = volume_content(volume, mass_g);
  signals.at[node].state = volume_state(volume, signals.content[node], limited_state(volume.T));
  evaluate_gas(node);
}

/// The same with the masses of its states.
void evaluate_volume(Index node) {
  const std::size_t m = kVolumes[node].m1;
  evaluate_volume(node, {0.001 * limited_state(m), 0.001 * limited_state(m + 1), 0.001 * limited_state(m + 2)});
}

/// Flows of a restriction.
void evaluate_restriction(restriction::Index id) {
  const RestrictionRow& row = kRestrictions[id];
  const RestrictionFlows flows = restriction_flows(row, signals.at[row.A], signals.at[row.B], Tessera_X[row.opening]);
  signals.flow[row.FlowA] = flows.FlowA;
  signals.flow[row.FlowB] = flows.FlowB;
}

/// Balance pass of a volume: what its integrators take in, from the flows at its ports.
void balance_volume(Index node) {
  const VolumeRow& volume = kVolumes[node];
  const auto ports = volume.ports.list();
  MoistGasFlow inflow = signals.flow[ports[0]];
  for (const gas_flow::Index port : ports.subspan(1)) inflow = inflow + signals.flow[port];

  PurgeBlock& purge = Tessera_DW.purge[node];
  const MoistGas& gas = signals.at[node];
  constexpr double kWaterMolarMass = 18.0;                                           // g/mol
  const double vapour_start = (1.0 / kWaterMolarMass) * signals.content[node].m[2];  // of kg: the model's own units
  Tessera_With_purge(purge, Tessera_DW.sub_block[volume.purge], Tessera_X[volume.purge], volume.WithPurge ? 1.0 : 0.0,
                     kWaterMolarMass, inflow.mdot3, volume.V, gas.state.T, kGasConstant, vapour_start,
                     hits(Rate::tick_1ms));
  const double W = volume.WithPurge ? purge.W : inflow.mdot3;

  const VolumeDerivatives derivatives = volume_balance(volume, signals.content[node], gas, inflow, W);
  for (std::size_t slot = 0; slot < 3; ++slot) Tessera_B.u[volume.m1 + slot] = derivatives.m_mg[slot];
  Tessera_B.u[volume.T] = derivatives.T;
  Tessera_B.u[volume.purge] = purge.dndt;
}

/// Position of a valve, which follows its command.
void move_actuator(const ActuatorRow& actuator, double command) {
  double& position = Tessera_X[actuator.position];
  if (Tessera_DW.integrators_start) position = command;
  position = clamped(position, 0.0, 1.0);
  Tessera_B.u[actuator.position] = actuator_speed(actuator, command, position);
}

}  // namespace

// ---- Hydrogen ------------------------------------------------------------------------------------------------------

void hydrogen_tank_and_line() {
  evaluate_volume(gas_node::H2Tank);
  evaluate_volume(gas_node::GVMP1);
  signals.flow[gas_flow::tank_heat] = tank_heat_input(signals.at[gas_node::H2Tank].state);
}

void pressure_reducer() {
  evaluate_restriction(restriction::H2_Detendor);
  Tessera_B.u[state::H2_Detendor_x] =
      reducer_speed(Tessera_X[state::H2_Detendor_x], signals.at[gas_node::H2Tank].state.P,
                    signals.at[gas_node::GVMP1].state.P, signals.flow[gas_flow::H2_Detendor_B].mdot);
}

void hydrogen_loop() {
  for (const Index node : {gas_node::GV01H1, gas_node::GV02H, gas_node::GV03H1, gas_node::anode}) evaluate_volume(node);

  const MoistGas &primary = signals.at[gas_node::GV01H1], &secondary = signals.at[gas_node::GV03H1];
  const EjectorFlows w = Ejecteur_v1(primary.state.P, secondary.state.P, signals.at[gas_node::GV02H].state.P);
  const MoistGasFlow drive = flow_of(primary, w.primary), drawn = flow_of(secondary, w.secondary);
  signals.flow[gas_flow::ejector_primary] = -drive;
  signals.flow[gas_flow::ejector_secondary] = -drawn;
  signals.flow[gas_flow::ejector_outlet] = drawn + drive;

  evaluate_restriction(restriction::anode_inlet);
  evaluate_restriction(restriction::anode_outlet);
}

void hydrogen_valves() {
  // The outside of the bleed valve: pure hydrogen at a fixed state, whatever the ambient is.
  if (Tessera_DW.integrators_start) {
    signals.at[gas_node::bleed_outlet].state = {.P = 100000.0,
                                                .p1 = 100000.0,
                                                .p2 = 0.0,
                                                .p3 = 0.0,
                                                .T = 313.15,
                                                .rho = 0.07681880721056662,
                                                .X1 = 1.0,
                                                .X2 = 0.0,
                                                .X3 = 0.0};
    evaluate_gas(gas_node::bleed_outlet);
  }
  move_actuator(kH2_Valve1Actuator, Tessera_B.command.supply_valve);
  move_actuator(kH2_Valve2Actuator, Tessera_B.command.bleed_valve);
  evaluate_restriction(restriction::H2_Valve1);
  evaluate_restriction(restriction::H2_Valve2);

  Tessera_B.hydrogen_mass = signals.content[gas_node::H2Tank].mass();
  if (hits(Rate::tick_10ms) && !Tessera_DW.hydrogen_latched) {
    Tessera_DW.hydrogen_at_start = Tessera_B.hydrogen_mass;
    Tessera_DW.hydrogen_latched = true;
  }
}

void hydrogen_balances() {
  for (const Index node : {gas_node::H2Tank, gas_node::GVMP1, gas_node::GV01H1, gas_node::GV02H, gas_node::GV03H1}) {
    balance_volume(node);
  }
}

// ---- Air -----------------------------------------------------------------------------------------------------------

void air_before_stack() {
  evaluate_volume(gas_node::GV02A1);

  const double T = Tessera_X[state::ambient_temperature];
  const double Psat = Tessera_PsatT(Tessera_DW.ambient_PsatT, 1.0, T, is_major_step());
  signals.ambient = ambient_air(T, Tessera_X[state::ambient_pressure], Tessera_X[state::ambient_humidity], Psat);
  signals.at[gas_node::ambient].state = signals.ambient.state;
  evaluate_gas(gas_node::ambient);

  evaluate_volume(gas_node::GV01A1);
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
  for (const Index node :
       {gas_node::humidifier1, gas_node::cathode, gas_node::GV03A, gas_node::humidifier2, gas_node::GV04A1}) {
    evaluate_volume(node);
  }
  move_actuator(kMoistGasValveActuator, Tessera_B.command.back_pressure_valve);
  for (const restriction::Index id :
       {restriction::humidifier1_inlet, restriction::humidifier1_outlet, restriction::cathode_inlet,
        restriction::cathode_outlet, restriction::humidifier2_inlet, restriction::humidifier2_outlet,
        restriction::MoistGasValve}) {
    evaluate_restriction(id);
  }
}

void compressor_drive() {
  CompressorSignals& compressor = Tessera_B.compressor;
  const MoistGas &inlet = signals.at[gas_node::ambient], &outlet = signals.at[gas_node::GV01A1];

  double& first_lag = Tessera_X[state::compressor_first_lag];
  if (Tessera_DW.integrators_start) first_lag = Tessera_B.command.compressor_speed;
  Tessera_B.u[state::compressor_free_speed] = compressor_free_speed(compressor.bus_voltage);
  Tessera_B.u[state::compressor_first_lag] = Tessera_B.command.compressor_speed - first_lag;
  Tessera_B.u[state::compressor_second_lag] = first_lag;

  signals.flow[gas_flow::compressor_outlet] =
      compressor_outflow(inlet, outlet, inlet.Cv_dry / (1.0 + inlet.x), outlet.Cv_dry / (1.0 + outlet.x), compressor.w);

  compressor.T_enthalpy = compressor_enthalpy_temperature(inlet.state, outlet.state);
  run_compressed_air_child_blocks();
  const double power = compressor_power(outlet.state, inlet.h, compressor.h1, compressor.h2, compressor.w);
  Tessera_B.next.compressor_bus_current = compressor_current(compressor.bus_voltage, power);
}

void humidifier_exchange() {
  const MoistGas &S1 = signals.at[gas_node::GV01A1], &S2 = signals.at[gas_node::GV03A];
  const double Psat1 = Tessera_PsatT(Tessera_DW.exchange_PsatT1, 1.0, S1.state.T, is_major_step());
  const double Psat2 = Tessera_PsatT(Tessera_DW.exchange_PsatT2, 1.0, S2.state.T, is_major_step());
  const HumidifierExchange exchange = VapEchange1234(S1, S2, signals.flow[gas_flow::humidifier1_inlet_B],
                                                     signals.flow[gas_flow::humidifier2_inlet_B], Psat1, Psat2);
  signals.flow[gas_flow::exchange1] = exchange.E1;
  signals.flow[gas_flow::exchange2] = exchange.E2;
}

void air_balances() {
  for (const Index node : {gas_node::GV01A1, gas_node::humidifier1, gas_node::GV02A1, gas_node::GV03A,
                           gas_node::humidifier2, gas_node::GV04A1, gas_node::Air_outRadia}) {
    balance_volume(node);
  }
}

void evaluate_air_behind_radiator() {
  const VolumeRow& volume = kVolumes[gas_node::Air_outRadia];
  const auto mass_g = radiator_air_masses(signals.ambient, volume.V);
  if (Tessera_DW.integrators_start) {
    for (std::size_t slot = 0; slot < 3; ++slot) Tessera_X[volume.m1 + slot] = 1000.0 * mass_g[slot];
  }
  for (std::size_t slot = 0; slot < 3; ++slot) limited_state(volume.m1 + slot);  // read by nothing
  evaluate_volume(gas_node::Air_outRadia, mass_g);
}

// ---- Stack ---------------------------------------------------------------------------------------------------------

void stack_gas_balances() {
  const StackSignals& stack = Tessera_B.stack;
  const MoistGas &cathode = signals.at[gas_node::cathode], &anode = signals.at[gas_node::anode];
  signals.flow[gas_flow::cathode_reaction] = cathode_reaction(stack.flows, cathode);
  signals.flow[gas_flow::anode_reaction] = anode_reaction(stack.flows, anode);
  signals.flow[gas_flow::cathode_losses] = stack_gas_losses(cathode.state, stack.heat);
  signals.flow[gas_flow::anode_losses] = stack_gas_losses(anode.state, stack.heat);
  Tessera_B.u[state::oxygen_access_state] =
      oxygen_access_signal(cathode.state.p1, signals.at[gas_node::GV02A1].state.T);
  balance_volume(gas_node::cathode);
  balance_volume(gas_node::anode);
}
