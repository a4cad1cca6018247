#include "model/cooling_loop.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "Vk_lib/Vk_fl_prop_lib/direct.h"
#include "model/child_blocks.h"
#include "model/columns.h"
#include "model/gas_network.h"
#include "model/inputs.h"
#include "model/liquid_volume.h"
#include "model/radiator.h"
#include "model/scalar_laws.h"
#include "model/signals.h"
#include "runtime/clock.h"

namespace {

CoolingSignals& cooling = Tessera_B.cooling;
CommandSignals& command = Tessera_B.command;

constexpr double kCoolantPressure = 200000.0;         // Pa, of every volume
constexpr double kSignBand = 1e-5;                    // kg/s, of the flows through the radiator
constexpr double kHotLimit = 50.0, kColdLimit = 5.0;  // degC, of the coolant at the stack outlet

/// The two brines at the concentration of the loop.
constexpr Vk_fl_prop_lib::BrineVector brine(Vk_fl_prop_lib::BrineVector vector, fluid::Index fluid) {
  vector.conc = kFluids[fluid].concentration;
  return vector;
}
constexpr auto kGlycerol = brine(Vk_fl_prop_lib::kGlycerol_Water, fluid::Glycerol_Water);
constexpr auto kGlycol = brine(Vk_fl_prop_lib::kEthylene_Glycol_Water, fluid::Ethylene_Glycol_Water);

/// What the property blocks of volumes that lie side by side say of their one liquid.
template <const Vk_fl_prop_lib::BrineVector& brine, liquid::Index first, liquid::Index last>
void evaluate_liquids(const std::array<double, kLiquidCount>& T) {
  std::array<double, last - first + 1> own_T;
  std::copy_n(T.begin() + first, own_T.size(), own_T.begin());
  const auto values = Vk_fl_prop_lib::direct::brine_values<brine>(own_T, kCoolantPressure);
  for (std::size_t i = 0; i < own_T.size(); ++i) {
    const auto& [v, h, u, Cp, alpha, kappa] = values[i];
    Tessera_B.liquid.set(first + i, LiquidPort{kCoolantPressure, own_T[i], v, h, u, Cp, alpha, kappa});
  }
}

LiquidPort port(liquid::Index volume) { return Tessera_B.liquid[volume]; }

/// Runs the flow laws of a restriction, which keep a sign from one major step to the next.
/// @return the quadratic one's mass flow [kg/s]
double run_flow_laws(liquid_restriction::Index r, const LiquidPort& first, const LiquidPort& second, double v) {
  Tessera_DTAQfCv(Tessera_DW.DTAQfCv[r], 0.0, 1.0, first.P, first.T, second.P, second.T, kFlowCoefficient,
                  is_major_step());
  return Tessera_aQB(Tessera_DW.aQB[r], 1.0, kLiquidRestrictions[r], first.P - second.P, v, is_major_step()).mdot;
}

/// Mass flow through a restriction [kg/s]. Its selector stands on the imposed flow, whatever its laws say, so that they
/// run in major steps only.
double restriction_flow(liquid_restriction::Index r, const LiquidPort& first, const LiquidPort& second,
                        double imposed) {
  const LiquidPort& up = imposed < 0.0 ? second : first;
  const double quadratic = is_major_step() ? run_flow_laws(r, first, second, up.v) : 0.0;
  return ModeNonReturnValve2(FlowSelector::imposed, imposed, quadratic, first.P - second.P, up.v).mdot;
}

double T_degC(state::Index T) { return Tessera_X[T] - 273.15; }

// ---- Supervision ---------------------------------------------------------------------------------------------------

void sample_temperatures() {
  cooling.T_out = T_degC(state::Water_Outlet_Stack_T);
  cooling.T_in = T_degC(state::Water_Inlet_Stack_T);
  cooling.T_amb = T_degC(state::ambient_temperature);
  cooling.T_set = Tessera_B.control.set.coolant_temperature;
}

void run_supervisor() {
  const MemoryValues& memory = Tessera_B.memory;
  const bool slow_tick = hits(Rate::tick_100ms);
  if (slow_tick) {
    cooling.T_set_slow = cooling.T_set;
    cooling.T_out_slow = cooling.T_out;
    cooling.T_amb_slow = cooling.T_amb;
    tick(Tessera_DW.coolant_condition, cooling.T_in, cooling.T_out, memory.thermal_mode, memory.thermal_enable);
  }
  ThermalSupervisor& chart = Tessera_DW.supervisor;
  const bool fault = coolant_fault(Tessera_DW.coolant_condition, memory.thermal_mode);
  tick(chart, Tessera_B.control.set.run, fault, cooling.T_out >= kHotLimit);
  Tessera_B.next.thermal_mode = chart.mode;
  Tessera_B.next.thermal_enable = chart.enable;
  if (slow_tick) {
    cooling.demand = thermal_demand(Tessera_DW.thermal_law, cooling.T_set_slow, cooling.T_out_slow, cooling.T_amb_slow);
  }

  const bool running = chart.state == ThermalSupervisor::Running;
  const double closure = running ? cooling.demand.closure : 0.0;
  command.fan_own = smaller(1.0, running ? cooling.demand.fan : 0.0);
  command.heater_own = running && cooling.T_out <= kColdLimit ? 1.0 : 0.0;
  command.radiator_own = saturated(1.0 - closure, 0.0, 1.0);
  command.pump_own = chart.state == ThermalSupervisor::Off ? 0.0 : 1.0;
}

void pass_gates() {
  command.fan = gated(input::fan_command, command.fan_own);
  command.heater = gated(input::heater_command, command.heater_own);
  command.radiator = gated(input::radiator_command, command.radiator_own);
  command.pump = gated(input::pump_command, command.pump_own);
}

}  // namespace

void coolant_volumes() {
  std::array<double, kLiquidCount> T;
  for (std::size_t v = 0; v < kLiquidCount; ++v) {
    const LiquidVolumeRow& row = kLiquidVolumes[v];
    auto& sub_block = Tessera_DW.sub_block;
    T[v] = Tessera_dTdt(sub_block[row.T], Tessera_X[row.T], 1.0, kStates[row.T].start.value, is_major_step());
    Tessera_dPdt(sub_block[row.p], Tessera_X[row.p], 0.0, kStates[row.p].start.value, is_major_step());
  }
  evaluate_liquids<kGlycerol, liquid::Water_Inlet_Rad, liquid::Water_Inlet_Stack>(T);
  evaluate_liquids<kGlycol, liquid::CoolantVolume, liquid::CoolantVolume>(T);
}

void thermal_supervision() {
  if (hits(Rate::tick_10ms)) {
    sample_temperatures();
    run_supervisor();
  }
  if (is_major_step()) pass_gates();
  double& pump_flow = cooling.flow[coolant_flow::pump];
  if (hits(Rate::tick_10ms)) {
    pump_flow = pump_mass_flow(command.radiator, command.pump);
    cooling.heater_power = heater_power(command.heater);
  }
  if (hits(Rate::tick_100ms)) {
    estimate_coolant(Tessera_DW.thermal_law, command.fan, command.radiator, cooling.T_out_slow, cooling.T_amb_slow);
  }
  cooling.flow[coolant_flow::radiator] = pump_flow * command.radiator;
  cooling.flow[coolant_flow::bypass] = pump_flow - cooling.flow[coolant_flow::radiator];
}

void radiator() {
  const double coolant_mdot = cooling.flow[coolant_flow::radiator];
  cooling.air_speed = radiator_air_speed(Tessera_X[state::wind_speed], Tessera_X[state::vehicle_speed]);
  cooling.air_flow = radiator_air_flow(cooling.air_speed, command.fan, Tessera_B.gas.ambient.state.rho);
  if (hits(Rate::tick_1ms)) {
    Tessera_DW.air_sign = sign_with_hysteresis(cooling.air_flow, kSignBand, Tessera_DW.air_sign);
    Tessera_DW.coolant_sign = sign_with_hysteresis(coolant_mdot, kSignBand, Tessera_DW.coolant_sign);
  }
  const bool air_forward = Tessera_DW.air_sign >= 0.0, coolant_forward = Tessera_DW.coolant_sign >= 0.0;

  evaluate_air_behind_radiator();
  const MoistGas ambient = Tessera_B.gas.at[gas_node::ambient], behind = Tessera_B.gas.at[gas_node::Air_outRadia];
  const MoistGas air_inlet = Tessera_B.gas.at[air_forward ? gas_node::ambient : gas_node::Air_outRadia];
  const liquid::Index coolant_inlet = coolant_forward ? liquid::Water_Inlet_Rad : liquid::Water_Outlet_Rad;
  Tessera_B.gas.flow[gas_flow::radiator_air] = flow_of(air_inlet, cooling.air_flow);

  // The exchanger takes capacity flows as heat capacities of a flow of 1 kg/s.
  HeatExchangerSignals& exchanger = Tessera_B.heat_exchanger;
  exchanger.flow1 = exchanger.flow2 = 1.0;
  exchanger.Cp1 = 0.5 * (ambient.Cp + behind.Cp) * std::fabs(cooling.air_flow);
  exchanger.T1 = air_inlet.state.T;
  exchanger.UA = radiator_UA(cooling.air_flow, coolant_mdot);
  exchanger.Cp2 =
      0.5 * (port(liquid::Water_Inlet_Rad).Cp + port(liquid::Water_Outlet_Rad).Cp) * std::fabs(coolant_mdot);
  exchanger.T2 = port(coolant_inlet).T;
  run_heat_exchanger_child_block();
  cooling.radiator_heat = exchanger.Q;

  const double air_share = (1.0 + Tessera_DW.air_sign) / 2.0;
  Tessera_B.gas.flow[gas_flow::radiator_heat] = {0.0, 0.0, 0.0, 0.0, air_share * -cooling.radiator_heat};
}

void coolant_balances() {
  std::array<LiquidFlow, kLiquidCount> inflow{};
  for_each_row<std::size(kCoolantConnections)>([&](auto i) {
    constexpr CoolantConnection connection = kCoolantConnections[i];
    const LiquidPort first = port(connection.first), second = port(connection.second);
    const double imposed = cooling.flow[connection.flow];
    double mdot = imposed;
    if constexpr (connection.restriction != liquid_restriction::none) {
      mdot = restriction_flow(connection.restriction, first, second, imposed);
    }
    const LiquidFlow flow = liquid_flow(first, second, mdot);
    LiquidFlow &from = inflow[connection.first], &to = inflow[connection.second];
    from = {from.mdot - flow.mdot, from.Hdot - flow.Hdot};
    to = {to.mdot + flow.mdot, to.Hdot + flow.Hdot};
  });

  std::array<double, kLiquidCount> heat{};
  const double s = Tessera_DW.coolant_sign;
  heat[liquid::Water_Outlet_Rad] = (1.0 + s) / 2.0 * cooling.radiator_heat;
  heat[liquid::Water_Inlet_Rad] = (1.0 - s) / 2.0 * cooling.radiator_heat;
  heat[liquid::Water_Inlet_Stack] = Tessera_X[state::heater] / 3.0;
  heat[liquid::CoolantVolume] = Tessera_B.stack.heat;
  inflow[liquid::CoolantVolume].Hdot += 0.0 * port(liquid::CoolantVolume).h;
  Tessera_B.u[state::heater] = cooling.heater_power;

  std::array<double, kLiquidCount> volume_rate, T_rate;
  for_each_row<kLiquidCount>(
      [&](auto v) { volume_rate[v] = liquid_volume_rate(kLiquidVolumes[v].V0, Tessera_X[kLiquidVolumes[v].V]); });
  for (std::size_t v = 0; v < kLiquidCount; ++v) {
    T_rate[v] = liquid_volume_balance(Tessera_B.liquid[v], kLiquidVolumes[v].V0, volume_rate[v], inflow[v], heat[v]).T;
  }
  for_each_row<kLiquidCount>([&](auto v) {
    Tessera_B.u[kLiquidVolumes[v].V] = volume_rate[v];
    Tessera_B.u[kLiquidVolumes[v].T] = T_rate[v];
  });
}
