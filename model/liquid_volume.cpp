#include "model/liquid_volume.h"

LiquidDerivatives liquid_volume_balance(const LiquidPort& liquid, double V, double volume_rate,
                                        const LiquidFlow& inflow, double heat) {
  // Switches of the block's formulation.
  constexpr double kMassCarriesEnergy = 0.0;  // u leaves with the mass in the energy sum
  constexpr double kPressureForm = 0.0, kTemperatureForm = 1.0;

  const auto& [p, T, v, h, s, u, cp, cv, lambda, mu, b, k] = liquid;
  const double m = inflow.mdot;
  const double E = heat + inflow.Hdot - p * volume_rate - (kMassCarriesEnergy * m) * u;

  const double P_numerator =
      (1.0 / v - p * b / cp) * volume_rate + ((h * b / cp - 1.0) * m - (1.0 - kPressureForm) * (E * b / cp));
  const double P_denominator = (k / v + b * b * T / cp) * V;

  const double T_numerator =
      ((p * k) / (T * b) + 1.0) * volume_rate +
      (m * (-((h * k) / (T * b) + v)) * (1.0 - kTemperatureForm) + (k / (T * b)) * (E - (m * kTemperatureForm) * h));
  const double T_denominator = ((cp * k) / (b * T * v) + b) * V;
  return {T_numerator / T_denominator, P_numerator / P_denominator};
}

double liquid_volume_rate(double V_nominal, double V_state) {
  constexpr double kLag = 100.0;  // 1/s
  return (V_nominal - V_state) * kLag;
}

LiquidFlow liquid_flow(const LiquidPort& first, const LiquidPort& second, double mdot) {
  return {mdot, mdot * (mdot < 0.0 ? second.h : first.h)};
}
