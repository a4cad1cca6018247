#pragma once

/// Gas restrictions: the flow between two ports from the gases at both. They store nothing; back-flow is the same law
/// with the ports exchanged, so that composition and enthalpy are always those of the upstream gas.

#include "model/moist_gas.h"

/// Mass flow [kg/s] through an orifice: isentropic outflow (Saint-Venant and Wantzel) with the heat capacity ratio 1.4
/// for every gas, choked below the critical pressure ratio.
/// @param up       upstream gas; reads P [Pa] and rho [kg/m3]
/// @param P_D      downstream pressure [Pa]
/// @param A_0      area of the bore [m2]
/// @param opening  share of the area, held within 0 and 1
/// @return >= 0; 0 at equal pressures or without gas
double orifice_mass_flow(const MoistGasState& up, double P_D, double A_0, double opening);

/// Mass flow [kg/s] through a passage of low pressure drop: C sqrt(2 dP rho), blended around dP = 1000 Pa into a law
/// that is nearly linear in dP (0.05 of the root remain at 0).
/// @param up   upstream gas; reads P [Pa] and rho [kg/m3]
/// @param P_D  downstream pressure [Pa], at most up.P
/// @param C    flow coefficient [m2]
/// @return >= 0; 0 at equal pressures or without gas
double bernoulli_mass_flow(const MoistGasState& up, double P_D, double C);

/// What a restriction sends into the volumes at its ports.
struct RestrictionFlows {
  double dir;  ///< 1.0: port A is upstream, also at equal pressures; 2.0: port B is
  MoistGasFlow FlowA, FlowB;
};

/// Flows of a restriction between the gases at its ports.
/// @param opening  of an orifice; the Bernoulli law does not read it
RestrictionFlows restriction_flows(const RestrictionRow& row, const MoistGas& A, const MoistGas& B, double opening);

/// Speed [1/s] of a valve actuator: a lag towards the command, with one time constant for opening and one for closing.
/// @param command   0 to 1; one beyond moves the valve no faster than a distance of 1
/// @param position  0 to 1
double actuator_speed(const ActuatorRow& actuator, double command, double position);
