#pragma once

/// OnePhaseVolume2: a liquid volume of the coolant loop. All are isobaric; flows are imposed on them.

#include "model/tables/coolant_loop.h"

/// The first ten values of a brine's property vector, and the state they belong to.
struct LiquidPort {
  double P, T;          ///< Pa, K
  double v;             ///< specific volume [m3/kg]
  double h, s, u;       ///< specific enthalpy [J/kg], entropy [J/(kg K)], internal energy [J/kg]
  double Cp, Cv;        ///< J/(kg K)
  double lambda, mu;    ///< conductivity [W/(m K)], viscosity [Pa s]
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
  double P;  ///< Pa/s; the plant holds its pressures and drops it
};

/// Balances of a liquid volume. The fluid's expansion coefficient must not be 0.
/// @param V            volume [m3]
/// @param volume_rate  m3/s
/// @param inflow       net flow in
/// @param heat         W
LiquidDerivatives liquid_volume_balance(const LiquidPort& liquid, double V, double volume_rate,
                                        const LiquidFlow& inflow, double heat);

/// Rate [m3/s] at which the volume state goes back to the nominal volume.
double liquid_volume_rate(double V_nominal, double V_state);

/// Flow of a connection from a first volume to a second: a negative one carries the second's enthalpy.
LiquidFlow liquid_flow(const LiquidPort& first, const LiquidPort& second, double mdot);
