#pragma once

/// MoistGasVolume_v1: a rigid volume that holds three gas species at one temperature. Its laws are here; who feeds the
/// volumes stands in model/tables/gas_network.def.

#include <array>
#include <cstddef>

#include "model/moist_gas.h"
#include "model/scalar_laws.h"

/// Masses and mole counts of the slots.
struct GasContent {
  double m1, m2, m3;  ///< kg
  double n1, n2, n3;  ///< mol

  constexpr double mass() const { return m3 + (m2 + m1); }
  constexpr double moles() const { return n3 + (n2 + n1); }
};

/// Content of a volume.
/// @param mass_g  masses of the slots [g]; under FixedComposition only their sum counts
constexpr GasContent volume_content(const GasVolume& volume, const std::array<double, 3>& mass_g) {
  auto [g1, g2, g3] = mass_g;
  if (volume.FixedComposition) {
    const double sum = g3 + (g2 + g1);
    const auto X0 = start_fractions(volume.gas);
    g1 = X0[0] * sum;
    g2 = X0[1] * sum;
    g3 = X0[2] * sum;
  }
  const auto M = molar_masses(volume.gas);
  const double m1 = 0.001 * g1, m2 = 0.001 * g2, m3 = 0.001 * g3;
  return {m1, m2, m3, (1000.0 * m1) / M[0], (1000.0 * m2) / M[1], (1000.0 * m3) / M[2]};
}

/// State of the gas in a volume at T [K]; under FixedPressure its pressure is P0.
///
/// An empty volume has the pressure 0 and fractions that sum to 0.
constexpr MoistGasState volume_state(const GasVolume& volume, const GasContent& content, double T) {
  const auto& [m1, m2, m3, n1, n2, n3] = content;
  double p1 = 0.0, p2 = 0.0, p3 = 0.0;
  if (volume.FixedPressure) {
    const double moles = content.moles();
    p1 = (n1 / moles) * volume.P0;
    p2 = (n2 / moles) * volume.P0;
    p3 = (n3 / moles) * volume.P0;
  } else {
    const double a = kGasConstant * T / volume.V;
    p1 = n1 * a;
    p2 = n2 * a;
    p3 = n3 * a;
  }
  const double mass = content.mass();
  auto X = start_fractions(volume.gas);
  if (!volume.FixedComposition) {
    const double per_mass = 1.0 / floored(mass, 1e-6);  // kg
    X = {per_mass * m1, per_mass * m2, per_mass * m3};
  }
  return {.P = p3 + (p2 + p1),
          .p1 = p1,
          .p2 = p2,
          .p3 = p3,
          .T = T,
          .rho = mass / volume.V,
          .X1 = X[0],
          .X2 = X[1],
          .X3 = X[2]};
}

/// What the integrators of a volume take in.
struct VolumeDerivatives {
  std::array<double, 3> m_mg;  ///< of the masses [mg/s]
  double T;                    ///< of the temperature [K/s]
};

/// Mass balances of the slots, and the energy balance of a rigid volume with the heat capacity Cp - R; under
/// FixedPressure without the flow work. Nothing is guarded: an empty volume divides by 0.
/// @param gas     state, Cp and h of the gas in the volume
/// @param inflow  sum of the flows at the ports
/// @param W       vapour flow that the gas takes in [kg/s], in place of inflow.mdot3
constexpr VolumeDerivatives volume_balance(const GasVolume& volume, const GasContent& content, const MoistGas& gas,
                                           const MoistGasFlow& inflow, double W) {
  const double net = inflow.mdot1 + inflow.mdot2 + W;
  const double mass = content.mass();
  const double R = kGasConstant * (content.moles() / mass);
  const double flow_work = volume.FixedPressure ? 0.0 : 1.0;
  return {.m_mg = {1000.0 * (1000.0 * inflow.mdot1), 1000.0 * (1000.0 * inflow.mdot2), 1000.0 * (1000.0 * W)},
          .T = (((gas.state.T * R * flow_work - gas.h) * net + inflow.Hdot) / mass) / (gas.Cp - R)};
}
