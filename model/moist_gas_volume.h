#pragma once

/// MoistGasVolume_v1: a rigid volume that holds three gas species at one temperature. Its laws are here; who feeds the
/// volumes stands in model/tables/gas_network.def.

#include <array>

#include "model/moist_gas.h"

/// Masses and mole counts of the slots.
struct GasContent {
  std::array<double, 3> m;  ///< kg
  std::array<double, 3> n;  ///< mol

  double mass() const { return m[2] + (m[1] + m[0]); }
  double moles() const { return n[2] + (n[1] + n[0]); }
};

/// Content of a volume.
/// @param mass_g  masses of the slots [g]; under FixedComposition only their sum counts
GasContent volume_content(const VolumeRow& volume, std::array<double, 3> mass_g);

/// State of the gas in a volume at T [K]; under FixedPressure its pressure is P0.
///
/// An empty volume has the pressure 0 and fractions that sum to 0.
MoistGasState volume_state(const VolumeRow& volume, const GasContent& content, double T);

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
VolumeDerivatives volume_balance(const VolumeRow& volume, const GasContent& content, const MoistGas& gas,
                                 const MoistGasFlow& inflow, double W);
