#pragma once

/// Laws of the fuel cell stack: an algebraic fit of the voltage, the heat, and what the reaction takes from and gives
/// to the gases.

#include "model/moist_gas.h"

inline constexpr double kStackCells = 250.0;         ///< in series
inline constexpr double kFaradayConstant = 96484.6;  ///< C/mol, this figure everywhere in the model

/// The part of the voltage law that depends on the current alone.
struct StackLosses {
  double current_density;  ///< A/cm2
  double activation;       ///< V per cell
  double ohmic;            ///< V per cell
};

/// @param current  stack current [A]
StackLosses stack_losses(double current);

/// Loss of the whole stack [V]: activation, ohmic and concentration losses of 250 cells, of which each loses at most
/// its reference of 1.0 V, also where the sum is not a number.
/// @param oxygen_access  lagged oxygen signal, whose eighth power sets the limiting current
double stack_loss_voltage(const StackLosses& losses, double oxygen_access);

/// Voltage of the stack [V] from its loss: the open circuit's 250 V less the loss.
double stack_voltage(double loss_voltage);

/// What the oxygen signal follows: pressure of the oxygen in the cathode over the temperature ahead of it.
/// @param p_O2  Pa
/// @param T_in  temperature of the gas before the cathode [K]
double oxygen_access_signal(double p_O2, double T_in);

/// Heat that the stack gives to the coolant [W].
double stack_heat(double current, double loss_voltage);

/// A second heat law, by a table over the current [W].
double table_heat(double current);

/// The heat law in force, by the plant's fixed selector.
inline constexpr bool kHeatByTable = false;
inline double selected_stack_heat(double current, double loss_voltage) {
  return kHeatByTable ? table_heat(current) : stack_heat(current, loss_voltage);
}

/// Molar flows of the reaction [mol/s].
struct ReactionFlows {
  double H2_anode, O2_cathode;    ///< consumed
  double H2O_cathode, H2O_anode;  ///< produced
  double N2_cathode, N2_anode;    ///< crossing over: taken from the cathode, given to the anode
};

ReactionFlows reaction_flows(double current);

/// What the reaction gives to the gas of the cathode and of the anode. With the convertors' molar masses it conserves
/// mass; enthalpies are sensible only, at the state of the gas.
/// @param gas  reads T, h1 and h2
MoistGasFlow cathode_reaction(const ReactionFlows& flows, const MoistGas& gas);
MoistGasFlow anode_reaction(const ReactionFlows& flows, const MoistGas& gas);

/// Leaks between the gases and the share of the stack heat that a gas takes, all with gains of zero.
MoistGasFlow stack_gas_losses(const MoistGasState& gas, double heat);
