#include "model/stack.h"

#include <cmath>

#include "model/scalar_laws.h"
#include "runtime/lookup.h"
#include "runtime/nonfinite.h"

namespace {

constexpr double kActiveArea = 200.0;              // cm2
constexpr double kOhmicSlope = 0.15;               // V per A/cm2
constexpr double kActivationGain = 0.03;           // V
constexpr double kExchangeCurrentDensity = 0.001;  // A/cm2
constexpr double kConcentrationGain = 0.3;         // V
constexpr double kConcentrationShape = 0.8;
constexpr double kLimitingCurrent = 0.00012, kLimitingCurrentScale = 10000.0;
constexpr double kLeastLossRatio = 1e-6, kLargestLossRatio = 0.999999;
constexpr double kReferenceCellVoltage = 1.0;  // V
constexpr double kOxygenSignalDivisor = 30.0;
constexpr double kHeatFactor = 1.2;

// Molar masses of the flow convertors [kg/mol].
constexpr double kM_H2 = 0.002, kM_O2 = 0.032, kM_N2 = 0.028, kM_H2O = 0.018;

constexpr double kN2FromCathode = 0.0, kN2ToAnode = 0.0;  // mol per mol H2
constexpr double kO2PerH2 = 0.5, kCathodeWaterPerH2 = 1.0, kAnodeWaterPerH2 = 0.0;

constexpr double kGasHeatShare = 0.0;
constexpr double kLeak = 0.0;  // kg/s

/// A flow of one species, in its slot.
MoistGasFlow single_gas_flow(int slot, double molar_flow, double molar_mass, double h) {
  const double m = molar_flow * molar_mass;
  const double m1 = slot == 1 ? m : 0.0 * m;
  const double m2 = slot == 2 ? m : 0.0 * m;
  const double m3 = slot == 3 ? m : 0.0 * m;
  return {m1 + m2 + m3, m1, m2, m3, m * h};
}

}  // namespace

StackLosses stack_losses(double current) {
  const double j = current / kActiveArea;
  return {j, kActivationGain * std::log(1.0 + j / kExchangeCurrentDensity), kOhmicSlope * j};
}

double stack_loss_voltage(const StackLosses& losses, double oxygen_access) {
  const double limiting = kLimitingCurrentScale * (kLimitingCurrent * rt_powd_snf(oxygen_access, 8.0));
  const double r = saturated(losses.current_density / limiting, kLeastLossRatio, kLargestLossRatio);
  const double concentration = kConcentrationGain * std::log((1.0 - kConcentrationShape * r) / (1.0 - r));
  const double sum = losses.ohmic + losses.activation + concentration;
  const double cell_loss = smaller(sum < 0.0 ? 0.0 : sum, kReferenceCellVoltage);
  return cell_loss * kStackCells;
}

double stack_voltage(double loss_voltage) { return kReferenceCellVoltage * kStackCells - loss_voltage; }

double oxygen_access_signal(double p_O2, double T_in) { return p_O2 / T_in / kOxygenSignalDivisor; }

double stack_heat(double current, double loss_voltage) { return current * loss_voltage * kHeatFactor; }

double table_heat(double current) {
  constexpr double kCurrent[] = {0.0, 100.0}, kHeat[] = {0.0, 10000.0};
  return look1_binlxpw(current, kCurrent, kHeat, 1);
}

ReactionFlows reaction_flows(double current) {
  const double hydrogen = kStackCells * current / kFaradayConstant / 2.0;
  return {.H2_anode = hydrogen,
          .O2_cathode = kO2PerH2 * hydrogen,
          .H2O_cathode = kCathodeWaterPerH2 * hydrogen,
          .H2O_anode = kAnodeWaterPerH2 * hydrogen,
          .N2_cathode = kN2FromCathode * hydrogen,
          .N2_anode = kN2ToAnode * hydrogen};
}

MoistGasFlow cathode_reaction(const ReactionFlows& flows, const MoistGas& gas) {
  const MoistGasFlow water = single_gas_flow(3, flows.H2O_cathode, kM_H2O, vapour_enthalpy_law(gas.state.T));
  const MoistGasFlow oxygen = single_gas_flow(1, flows.O2_cathode, kM_O2, gas.h1);
  const MoistGasFlow nitrogen = single_gas_flow(2, flows.N2_cathode, kM_N2, gas.h2);
  return water - oxygen - nitrogen;
}

MoistGasFlow anode_reaction(const ReactionFlows& flows, const MoistGas& gas) {
  const MoistGasFlow nitrogen = single_gas_flow(2, flows.N2_anode, kM_N2, gas.h2);
  const MoistGasFlow hydrogen = single_gas_flow(1, flows.H2_anode, kM_H2, gas.h1);
  const MoistGasFlow water = single_gas_flow(3, flows.H2O_anode, kM_H2O, vapour_enthalpy_law(gas.state.T));
  return nitrogen - hydrogen + water;
}

MoistGasFlow stack_gas_losses(const MoistGasState& gas, double heat) {
  return {0.0, kLeak * gas.X1, kLeak * gas.X2, kLeak * gas.X3, kGasHeatShare * heat};
}
