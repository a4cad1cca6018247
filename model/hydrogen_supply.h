#pragma once

/// Laws of the hydrogen supply: the heat that holds the tank warm, the pressure reducer, and the recirculation ejector.

#include "model/moist_gas.h"

/// What the tank's second port carries: no gas (a filling port at rest), and the heat that holds the tank near 313.15
/// K.
MoistGasFlow tank_heat_input(const MoistGasState& tank);

/// Pressure [bar] that the reducer aims at behind it: 15.5 bar at no flow, falling with the flow (the more the emptier
/// the tank, without a lower bound), and never above the tank's.
/// @param P_tank  Pa
/// @param flow    through the reducer, towards its outlet [g/s]
double reducer_setpoint_bar(double P_tank, double flow);

/// Speed [1/s] of the reducer's opening x: while x stays within 0 and 1 it integrates the pressure error at 20 per bar
/// and second.
/// @param P_tank, P_outlet  Pa
/// @param w                 flow through the reducer, towards its outlet [kg/s]
double reducer_speed(double x, double P_tank, double P_outlet, double w);

/// Mass flows of the ejector [kg/s].
struct EjectorFlows {
  double primary, secondary;
};

/// Flows of Ejecteur_v1, of which neither reverses. A nozzle law gives the primary flow. The secondary flow is the
/// larger of what the jet entrains and of what its own pressure pushes through the nozzle.
/// @param P1, Ps, Po  pressures at the primary inlet, at the secondary inlet and at the outlet [Pa]
EjectorFlows Ejecteur_v1(double P1, double Ps, double Po);

/// Entrainment ratio [kg secondary / kg primary]: 0 up to a threshold of the secondary pressure, then rising to a peak
/// and falling again.
/// @param P1, Ps, Po  as above; pressure ratios are taken to at least 100000 Pa at the outlet
double entrainment_ratio(double P1, double Ps, double Po);
