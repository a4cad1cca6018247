#pragma once

/// Gas restrictions: the mass flow out of an upstream gas to the pressure behind it, and the actuators of valves. They
/// store nothing.

#include <cmath>

#include "model/moist_gas.h"
#include "model/scalar_laws.h"
#include "runtime/lookup.h"
#include "runtime/nonfinite.h"

/// Below this pressure ratio an outflow of a heat capacity ratio of 1.4 is choked.
inline constexpr double kCriticalRatio = 0.5282817877171742;

/// The powers of a pressure ratio that an isentropic outflow needs.
struct OutflowPowers {
  double temperature, density;
};

inline OutflowPowers outflow_powers(double ratio) {
  // For k = 1.4: (k - 1)/k and 1/k, each with these digits.
  return {rt_powd_snf(ratio, 0.28571428571428564), rt_powd_snf(ratio, 0.7142857142857143)};
}

/// Those of the critical ratio, which most orifices of the plant are at. Computed at load, and by the function that
/// computes all others: a compiler's own constant might differ in the last digit.
extern const OutflowPowers kChokedPowers;

/// Mass flow [kg/s] through an orifice: isentropic outflow (Saint-Venant and Wantzel) with the heat capacity ratio 1.4
/// for every gas, choked below the critical pressure ratio.
/// @param up       upstream gas; reads P [Pa] and rho [kg/m3]
/// @param P_D      downstream pressure [Pa]
/// @param A_0      area of the bore [m2]
/// @param opening  share of the area, held within 0 and 1
/// @return >= 0; 0 at equal pressures or without gas
inline double orifice_mass_flow(const MoistGasState& up, double P_D, double A_0, double opening) {
  constexpr double kFactor = 7.000000000000002;  // 2k/(k - 1), with these digits

  const double pressure_times_density = up.P * up.rho;
  const double ratio = floored((1.0 / floored(up.P, 1.0)) * P_D, kCriticalRatio);
  const OutflowPowers powers = ratio == kCriticalRatio ? kChokedPowers : outflow_powers(ratio);
  const double drop = 1.0 - powers.temperature;
  const double root = std::sqrt(floored((pressure_times_density * kFactor) * drop, 0.0));
  const double flux = powers.density * root;  // kg/(s m2)
  return (A_0 * flux) * saturated(opening, 0.0, 1.0);
}

/// Mass flow [kg/s] through a passage of low pressure drop: C sqrt(2 dP rho), blended around dP = 1000 Pa into a law
/// that is nearly linear in dP (0.05 of the root remain at 0).
/// @param up   upstream gas; reads P [Pa] and rho [kg/m3]
/// @param P_D  downstream pressure [Pa], at most up.P
/// @param C    flow coefficient [m2]
/// @return >= 0; 0 at equal pressures or without gas
inline double bernoulli_mass_flow(const MoistGasState& up, double P_D, double C) {
  const double dP = up.P - P_D;
  const double half = dP * up.rho;
  const double turbulent = std::sqrt(half + half);
  // 0.95 at 0 Pa, 0.5 at 1000 Pa, 0.05 at 2000 Pa; 6.31.. is tan(81 degrees).
  const double laminar_share = 0.5 - std::atan((dP - 1000.0) * 6.313751514675041 / 1000.0) / 3.141592653589793;
  const double half_slope = up.rho / 2000.0;
  const double laminar = std::sqrt(half_slope + half_slope) * dP;
  return C * (turbulent - (turbulent - laminar) * laminar_share);
}

/// Mass flow [kg/s] of a restriction by the law of its row.
/// @param up       upstream gas; reads P [Pa] and rho [kg/m3]
/// @param P_D      downstream pressure [Pa], at most up.P
/// @param opening  of an orifice; the Bernoulli law does not read it
[[gnu::always_inline]] inline double restriction_mass_flow(const RestrictionRow& row, const MoistGasState& up,
                                                           double P_D, double opening) {
  return row.law == RestrictionLaw::orifice ? orifice_mass_flow(up, P_D, row.coefficient, opening)
                                            : bernoulli_mass_flow(up, P_D, row.coefficient);
}

/// Speed [1/s] of a valve actuator: a lag towards the command, with one time constant for opening and one for closing.
/// @param command   0 to 1; one beyond moves the valve no faster than a distance of 1
/// @param position  0 to 1
inline double actuator_speed(const ActuatorRow& actuator, double command, double position) {
  const double speeds[] = {-1.0 / actuator.closing_time, 0.0, 1.0 / actuator.opening_time};
  double speed = 0.0;
  LookUpEven_real_T_real_T(&speed, speeds, command - position, -1.0, 2, 1.0);
  return speed;
}
