#pragma once

/// VapEchange1234, the exchange of vapour and heat between the two sides of the humidifier: effectiveness laws, driven
/// by the gases and flows that enter the sides.

#include "model/moist_gas.h"

/// What the exchange adds to the port sums of the two sides.
struct HumidifierExchange {
  MoistGasFlow E1, E2;
};

/// Vapour goes from the side of higher relative humidity to the other, driven by the difference of the humidity ratios
/// (none if that points the other way). Heat goes from the hot side to the cold one. Side 2 besides loses a share of
/// its heat to the surroundings, and 40 percent of the vapour that enters it as drained water.
/// @param S1, S2        gases ahead of the sides; read with x and Cp
/// @param F1, F2        flows into the sides
/// @param Psat1, Psat2  saturation pressures of water at their temperatures [Pa]
HumidifierExchange VapEchange1234(const MoistGas& S1, const MoistGas& S2, const MoistGasFlow& F1,
                                  const MoistGasFlow& F2, double Psat1, double Psat2);

/// Vapour [kg/s] that the exchange moves between a wet and a dry gas.
/// @param x_wet, x_dry  humidity ratios [kg/kg]
/// @param G_wet, G_dry  dry gas flows [kg/s]
double vapour_exchange(double x_wet, double x_dry, double G_wet, double G_dry);

/// Heat [W] that the exchange moves between a hot and a cold gas.
/// @param T_hot, T_cold  K
/// @param C_hot, C_cold  capacity flows [W/K], with the sign of their flows
double heat_exchange(double T_hot, double T_cold, double C_hot, double C_cold);
