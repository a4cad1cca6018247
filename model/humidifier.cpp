#include "model/humidifier.h"

#include <cmath>

#include "model/scalar_laws.h"

namespace {

MoistGasFlow vapour_flow(double w, double T) { return {w, 0.0 * w, 0.0 * w, w, vapour_enthalpy_law(T) * w}; }
MoistGasFlow heat_flow(double Q) { return {0.0, 0.0, 0.0, 0.0, Q}; }

double dry_flow(const MoistGasFlow& flow) { return std::fabs(flow.mdot1 + flow.mdot2); }
double capacity_flow(const MoistGas& gas, const MoistGasFlow& flow) { return gas.Cp * flow.mdot; }

/// Heat [W] that a side loses to surroundings at 313.15 K.
double heat_loss(const MoistGas& gas, const MoistGasFlow& flow, double share) {
  return ((gas.state.T - 313.15) * capacity_flow(gas, flow)) * share;
}

}  // namespace

double vapour_exchange(double x_wet, double x_dry, double G_wet, double G_dry) {
  constexpr double kExchange = 0.004, kLeastFlow = 1e-6;  // kg/s
  constexpr double kLargestDifference = 3.0;              // kg/kg
  const double G = floored(smaller(G_dry, G_wet), kLeastFlow);
  const double NTU = (1.0 / G) * kExchange;
  const double effectiveness = saturated(1.0 - std::exp(-NTU), 0.0, 1.0);
  return (G * effectiveness) * saturated(x_wet - x_dry, 0.0, kLargestDifference);
}

double heat_exchange(double T_hot, double T_cold, double C_hot, double C_cold) {
  constexpr double kConductance = 5.0;  // W/K
  const double C_min = smaller(C_cold, C_hot);
  const double effectiveness = saturated(1.0 - std::exp(-(kConductance * safe_reciprocal(C_min))), 0.0, 1.0);
  return ((T_hot - T_cold) * C_min) * effectiveness;
}

HumidifierExchange VapEchange1234(const MoistGas& S1, const MoistGas& S2, const MoistGasFlow& F1,
                                  const MoistGasFlow& F2, double Psat1, double Psat2) {
  constexpr double kLossShare1 = 0.0, kLossShare2 = 0.1;
  constexpr double kDrainedShare = 0.4;

  const bool side1_is_wet = S1.state.p3 / Psat1 >= S2.state.p3 / Psat2;
  const double G1 = dry_flow(F1), G2 = dry_flow(F2);
  const double w = side1_is_wet ? vapour_exchange(S1.x, S2.x, G1, G2) : vapour_exchange(S2.x, S1.x, G2, G1);
  const MoistGasFlow vapour = vapour_flow(w, side1_is_wet ? S1.state.T : S2.state.T);

  const double T1 = S1.state.T, T2 = S2.state.T;
  const double C1 = capacity_flow(S1, F1), C2 = capacity_flow(S2, F2);
  const bool side1_is_hot = T1 >= T2;
  const MoistGasFlow heat = heat_flow(side1_is_hot ? heat_exchange(T1, T2, C1, C2) : heat_exchange(T2, T1, C2, C1));

  const MoistGasFlow into_side1 = (side1_is_wet ? -vapour : vapour) + (side1_is_hot ? -heat : heat);
  const MoistGasFlow loss1 = heat_flow(heat_loss(S1, F1, kLossShare1));
  const double drained = F2.mdot3 * kDrainedShare;
  const MoistGasFlow loss2 = {drained, 0.0, 0.0, drained,
                              vapour_enthalpy_law(T2) * drained + heat_loss(S2, F2, kLossShare2)};
  return {into_side1 - loss1, MoistGasFlow{} - into_side1 - loss2};
}
