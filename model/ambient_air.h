#pragma once

/// Moist air of the surroundings from temperature, pressure and relative humidity.

#include <limits>

#include "model/moist_gas.h"

/// What decides the state of the ambient air; not-a-numbers before it is known.
struct AmbientConditions {
  double T = kUnknown;   ///< K
  double P = kUnknown;   ///< Pa
  double RH = kUnknown;  ///< relative humidity [percent]

  static constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
};

struct AmbientAir {
  MoistGasState state;
  double nitrogen_fraction, water_fraction;  ///< by mass, before normalising; oxygen's is 0.23
  double mole_per_gram;                      ///< mean inverse molar mass [mol/g]
};

/// @param T     K
/// @param P     Pa
/// @param RH    relative humidity [percent], held within 0 and 100
/// @param Psat  saturation pressure of water at T [Pa]
AmbientAir ambient_air(double T, double P, double RH, double Psat);

/// Density [kg/m3] of a gas of the mean inverse molar mass [mol/g], times T / P: M / R.
double density_factor(double mole_per_gram);

/// Masses [g] of the slots in the volume V [m3] behind the radiator, which always holds ambient air at 100000 Pa and
/// 313.15 K, whatever its own temperature.
std::array<double, 3> radiator_air_masses(const AmbientAir& air, double V);
