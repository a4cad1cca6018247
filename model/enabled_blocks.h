#pragma once

/// Sub-blocks with an enable input. The input counts in major steps only: above 0 it activates the sub-block, otherwise
/// it deactivates it. An inactive sub-block keeps what it has computed.

#include <array>

/// Whether a sub-block with a state is active, and whether it still has to load the state's start value.
struct StateSubBlock {
  bool active;
  bool start;
};

// ---- Saturation of water -------------------------------------------------------------------------------------------

/// Saturation pressure of water [Pa] at T [K]: Clausius-Clapeyron with a constant heat of vaporisation, through
/// 100000 Pa at 373.15 K.
double SaturationPressureLaw(double T);

/// Stages of a saturation law, the last of which is its result.
struct SaturationBlock {
  std::array<double, 6> stage;
  bool active;
};

void Tessera_PsatT_Init(SaturationBlock& block);  ///< result 100000
void Tessera_PsatT_Disable(SaturationBlock& block);
/// Saturation pressure [Pa] at T [K].
double Tessera_PsatT(SaturationBlock& block, double enable, double T, bool major_step);

void Tessera_TPsat_Init(SaturationBlock& block);  ///< result 100000
void Tessera_TPsat_Disable(SaturationBlock& block);
/// Temperature [K] of which P [Pa] is the saturation pressure. No block of the plant enables it.
double Tessera_TPsat(SaturationBlock& block, double enable, double P, bool major_step);

// ---- Integrators ---------------------------------------------------------------------------------------------------

/// Temperature of a liquid volume [K]: loads its start value when it is first active and answers the state x. The
/// state's derivative is its input while the sub-block is active and 0 otherwise.
double Tessera_dTdt(StateSubBlock& block, double& x, double enable, double start, bool major_step);

/// The same for its pressure [Pa].
double Tessera_dPdt(StateSubBlock& block, double& x, double enable, double start, bool major_step);

// ---- Vapour limiter ------------------------------------------------------------------------------------------------

/// Work of Tessera_With_purge.
struct PurgeBlock {
  double W;     ///< vapour flow that the gas keeps [kg/s]
  double C;     ///< condensate flow, which leaves the model [kg/s]
  double dndt;  ///< derivative of the vapour count [mol/s]
  SaturationBlock PsatT, TPsat;
};

void Tessera_With_purge_Init(PurgeBlock& block);

/// Limits the vapour of a gas channel to saturation: n, the vapour count [mol], takes in no more than what brings it to
/// saturation at 10 per second; what the inflow has beyond that condenses.
/// @param sub_block  activity and start of n
/// @param n          the state, held within 0 and +Inf
/// @param M          molar mass of water [g/mol]
/// @param W_in       net vapour flow into the channel [kg/s]
/// @param V          volume [m3]
/// @param T          temperature [K]
/// @param R          gas constant [J/(mol K)]
/// @param n_start    start value of n
void Tessera_With_purge(PurgeBlock& block, StateSubBlock& sub_block, double& n, double enable, double M, double W_in,
                        double V, double T, double R, double n_start, bool major_step);
