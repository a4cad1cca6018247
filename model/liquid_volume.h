#pragma once

/// OnePhaseVolume2: a liquid volume of the coolant loop. All are isobaric; flows are imposed on them.

#include "model/tables/coolant_loop.h"

/// The state of a liquid and what its balances need of its property vector.
struct LiquidPort {
  double P, T;          ///< Pa, K
  double v;             ///< specific volume [m3/kg]
  double h, u;          ///< specific enthalpy and internal energy [J/kg]
  double Cp;            ///< J/(kg K)
  double alpha, kappa;  ///< expansion coefficient [1/K], compressibility (negative) [1/Pa]
};

/// What enters a liquid volume.
struct LiquidFlow {
  double mdot;  ///< kg/s
  double Hdot;  ///< W
};

/// Derivatives of a liquid volume.
struct LiquidDerivatives {
  double T;  ///< K/s
  double P;  ///< Pa/s; the plant holds its pressures and leaves it out
};

/// Balances of a liquid volume. The fluid's expansion coefficient must not be 0.
/// @param V            volume [m3]
/// @param volume_rate  m3/s
/// @param inflow       net flow in
/// @param heat         W
constexpr LiquidDerivatives liquid_volume_balance(const LiquidPort& liquid, double V, double volume_rate,
                                                  const LiquidFlow& inflow, double heat) {
  // Switches of the block's formulation.
  constexpr double kMassCarriesEnergy = 0.0;  // u leaves with the mass in the energy sum
  constexpr double kPressureForm = 0.0, kTemperatureForm = 1.0;

  const auto& [p, T, v, h, u, cp, b, k] = liquid;
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

/// Rate [m3/s] at which the volume state goes back to the nominal volume.
constexpr double liquid_volume_rate(double V_nominal, double V_state) {
  constexpr double kLag = 100.0;  // 1/s
  return (V_nominal - V_state) * kLag;
}

/// Flow of a connection from a first volume to a second: a negative one carries the second's enthalpy.
constexpr LiquidFlow liquid_flow(const LiquidPort& first, const LiquidPort& second, double mdot) {
  return {mdot, mdot * (mdot < 0.0 ? second.h : first.h)};
}
